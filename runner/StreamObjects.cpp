#include "runner/StreamObjects.h"

#include "com/ComError.h"
#include "runner/TextInput.h"
#include "runner/TextOutput.h"
#include "runner/ValueText.h"

namespace zu::runner {
namespace {

constexpr HRESULT kInvalidCall = static_cast<HRESULT>(0x800A0005);
constexpr HRESULT kInvalidUseOfNull = static_cast<HRESULT>(0x800A005E);
constexpr LONG kMostBlankLines = 1'000'000;

std::wstring TextArgument(const CallArguments& call) {
    if (!call.Has(0)) return {};
    if (call[0].vt == VT_NULL) throw com::ComError(kInvalidUseOfNull, L"Invalid use of Null");
    return ValueText(call[0]);
}

std::size_t CountArgument(const CallArguments& call) {
    call.RequireCount(1, 1);
    const LONG count = call.Long(0);
    if (count < 0) throw com::ComError(kInvalidCall, L"a number of characters is at least 0");
    return static_cast<std::size_t>(count);
}

com::Variant Nothing(const CallArguments& call) {
    call.RequireCount(0, 0);
    return com::Variant();
}

}  // namespace

OutputObject::OutputObject(TextOutput& stream) {
    AddMethod(L"Write", [&stream](const CallArguments& call) {
        call.RequireCount(1, 1);
        stream.Write(TextArgument(call));
        return com::Variant();
    });
    AddMethod(L"WriteLine", [&stream](const CallArguments& call) {
        call.RequireCount(0, 1);
        stream.WriteLine(TextArgument(call));
        return com::Variant();
    });
    AddMethod(L"WriteBlankLines", [&stream](const CallArguments& call) {
        call.RequireCount(1, 1);
        const LONG lines = call.Long(0);
        if (lines < 0 || lines > kMostBlankLines)
            throw com::ComError(kInvalidCall, L"an impossible number of lines");
        for (LONG line = 0; line < lines; ++line)
            stream.WriteLine(L"");
        return com::Variant();
    });
    AddMethod(L"Close", Nothing);
}

InputObject::InputObject(TextInput& stream) {
    AddProperty(L"AtEndOfStream", [&stream] { return com::Variant(stream.AtEnd()); });
    AddProperty(L"AtEndOfLine", [&stream] { return com::Variant(stream.AtEndOfLine()); });
    AddMethod(L"Read", [&stream](const CallArguments& call) {
        return com::Variant(stream.Read(CountArgument(call)));
    });
    AddMethod(L"Skip", [&stream](const CallArguments& call) {
        stream.Read(CountArgument(call));
        return com::Variant();
    });
    AddMethod(L"ReadLine", [&stream](const CallArguments& call) {
        call.RequireCount(0, 0);
        return com::Variant(stream.ReadLine());
    });
    AddMethod(L"ReadAll", [&stream](const CallArguments& call) {
        call.RequireCount(0, 0);
        return com::Variant(stream.ReadAll());
    });
    AddMethod(L"SkipLine", [&stream](const CallArguments& call) {
        call.RequireCount(0, 0);
        stream.SkipLine();
        return com::Variant();
    });
    AddMethod(L"Close", Nothing);
}

}  // namespace zu::runner
