#include "com/ComError.h"

#include <gtest/gtest.h>

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "portable/error/Error.h"

namespace zu::com {
namespace {

/// What the thread's error information says; "<none>" when there is none.
std::wstring LastDescription() {
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK) return L"<none>";
    Bstr text;
    info->GetDescription(text.put());
    return text.str();
}

template <class Exception>
HRESULT CodeOf(const Exception& exception) {
    return Guard([&] { throw exception; });
}

TEST(Guard, AnswersSuccessWhenNothingIsThrown) {
    EXPECT_EQ(Guard([] {}), S_OK);
    int value = 7;
    EXPECT_EQ(GuardResult(&value, [] { return 8; }), S_OK);
    EXPECT_EQ(value, 8);
}

TEST(Guard, ClearsTheResultOfAFailingCall) {
    int value = 7;
    EXPECT_EQ(GuardResult(&value, []() -> int { throw ComError(E_FAIL); }), E_FAIL);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(GuardResult(static_cast<int*>(nullptr), [] { return 8; }), E_POINTER);
}

TEST(Guard, TranslatesAComError) {
    EXPECT_EQ(CodeOf(ComError(kDuplicateKey, L"Twice")), kDuplicateKey);
    EXPECT_EQ(LastDescription(), L"Twice");
}

TEST(Guard, ErrorsWithoutTextLeaveNoOlderText) {
    CodeOf(ComError(E_FAIL, L"old"));
    EXPECT_EQ(CodeOf(ComError(E_ACCESSDENIED)), E_ACCESSDENIED);
    EXPECT_EQ(LastDescription(), L"<none>");
}

TEST(Guard, NeverReportsSuccessForAnError) {
    EXPECT_EQ(CodeOf(ComError(S_OK)), E_UNEXPECTED);
    EXPECT_EQ(CodeOf(ComError(S_FALSE)), E_UNEXPECTED);
}

TEST(Guard, GivesEachKindOfErrorItsCode) {
    const std::pair<ErrorKind, HRESULT> cases[] = {
        {ErrorKind::InvalidArgument, E_INVALIDARG},
        {ErrorKind::NotFound, STG_E_FILENOTFOUND},
        {ErrorKind::AlreadyExists, STG_E_FILEALREADYEXISTS},
        {ErrorKind::AccessDenied, E_ACCESSDENIED},
        {ErrorKind::Locked, STG_E_LOCKVIOLATION},
        {ErrorKind::DiskFull, STG_E_MEDIUMFULL},
        {ErrorKind::IoFailure, STG_E_READFAULT},
        {ErrorKind::Damaged, STG_E_DOCFILECORRUPT},
        {ErrorKind::Unsupported, E_NOTIMPL},
        {ErrorKind::Syntax, static_cast<HRESULT>(0x80041017)},
        {ErrorKind::TypeMismatch, kTypeMismatch},
        {ErrorKind::Overflow, kOverflow},
        {ErrorKind::Conflict, STG_E_NOTCURRENT},
        {ErrorKind::Cancelled, E_ABORT},
        {ErrorKind::Internal, E_UNEXPECTED},
    };
    for (const auto& [kind, code] : cases) {
        EXPECT_EQ(CodeOf(Error(kind, "text \xC3\xBC")), code);
        EXPECT_EQ(LastDescription(), L"text \u00fc");
    }
}

TEST(Guard, TranslatesOtherExceptions) {
    EXPECT_EQ(CodeOf(std::bad_alloc()), E_OUTOFMEMORY);
    EXPECT_EQ(CodeOf(std::runtime_error("plain")), E_FAIL);
    EXPECT_EQ(LastDescription(), L"plain");
    EXPECT_EQ(CodeOf(5), E_UNEXPECTED);
}

TEST(Check, PassesSuccess) {
    EXPECT_NO_THROW(Check(S_OK));
    EXPECT_NO_THROW(Check(S_FALSE));
}

TEST(Check, TakesTheErrorInformationAlong) {
    CodeOf(ComError(E_FAIL, L"the reason", L"the source"));
    try {
        Check(E_FAIL);
        FAIL();
    } catch (const ComError& error) {
        EXPECT_EQ(error.code(), E_FAIL);
        EXPECT_EQ(error.description(), L"the reason");
        EXPECT_EQ(error.source(), L"the source");
    }
    EXPECT_EQ(LastDescription(), L"<none>") << "taken, not copied";
}

TEST(Required, RefusesANullPointer) {
    int value = 1;
    EXPECT_EQ(Required(&value), &value);
    try {
        Required(static_cast<int*>(nullptr));
        FAIL();
    } catch (const ComError& error) {
        EXPECT_EQ(error.code(), kObjectNotSet);
    }
}

}  // namespace
}  // namespace zu::com
