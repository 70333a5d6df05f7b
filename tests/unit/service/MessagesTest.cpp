#include "host/engine/Messages.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LateBound.h"
#include "ScriptObject.h"
#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SafeArray.h"

namespace zu::host {
namespace {

using test::ScriptObject;

class MessagesTest : public testing::Test {
protected:
    void Listen() {
        listener_->Add(L"Report", [this](std::vector<VARIANT*>& arguments, VARIANT*, EXCEPINFO*) {
            told_.push_back(L"report " + std::to_wstring(arguments.at(0)->lVal) + L" " +
                            std::wstring(com::View(arguments.at(1)->bstrVal)));
            if (onReport_) onReport_();
            return S_OK;
        });
        listener_->Add(L"Trace", [this](std::vector<VARIANT*>& arguments, VARIANT*, EXCEPINFO*) {
            told_.push_back(L"trace " + std::wstring(com::View(arguments.at(0)->bstrVal)));
            return S_OK;
        });
        messages_.SetListener(listener_.get());
    }

    com::ComPtr<ScriptObject> listener_ = ScriptObject::Make();
    std::vector<std::wstring> told_;
    std::function<void()> onReport_;
    Messages messages_;
};

TEST_F(MessagesTest, AReportBecomesTheLastErrorAndIsTold) {
    Listen();
    messages_.Report(7, L"seven");
    EXPECT_EQ(messages_.lastError().code, 7);
    EXPECT_EQ(messages_.lastError().text, L"seven");
    EXPECT_EQ(told_, std::vector<std::wstring>{L"report 7 seven"});
}

TEST_F(MessagesTest, ANoteBecomesTheLastErrorAndIsNotTold) {
    Listen();
    messages_.Note(8, L"eight");
    EXPECT_EQ(messages_.lastError().text, L"eight");
    EXPECT_TRUE(told_.empty());
}

TEST_F(MessagesTest, TracesAreToldWhileTracingIsOn) {
    Listen();
    messages_.Trace(L"one");
    messages_.SetTracing(true);
    messages_.Trace(L"two");
    messages_.Warn(L"three");
    EXPECT_EQ(told_, (std::vector<std::wstring>{L"trace two", L"trace three"}));
    EXPECT_EQ(messages_.lastError().code, 0);
}

TEST_F(MessagesTest, ForgettingClearsTheLastError) {
    messages_.Report(7, L"seven");
    messages_.Forget();
    EXPECT_EQ(messages_.lastError().code, 0);
    EXPECT_EQ(messages_.lastError().text, L"");
}

TEST_F(MessagesTest, WhatWasToleratedIsForgottenAndWhatWasToldOrKeptIsNot) {
    Listen();
    messages_.Note(7, L"tolerated");
    messages_.ForgetTolerated();
    EXPECT_EQ(messages_.lastError().code, 0);
    messages_.Keep(8, L"a row");
    messages_.ForgetTolerated();
    EXPECT_EQ(messages_.lastError().text, L"a row");
    EXPECT_TRUE(told_.empty());
    messages_.Report(9, L"nine");
    messages_.ForgetTolerated();
    EXPECT_EQ(messages_.lastError().text, L"nine");
}

TEST_F(MessagesTest, AListenerThatCausesReportsIsNotToldAboutThem) {
    Listen();
    onReport_ = [this] { messages_.Report(9, L"from within"); };
    messages_.Report(7, L"seven");
    EXPECT_EQ(told_.size(), 1u);
    EXPECT_EQ(messages_.lastError().code, 9);
}

TEST_F(MessagesTest, AListenerThatLeavesWhileItIsToldDoesNoHarm) {
    Listen();
    onReport_ = [this] { messages_.SetListener(nullptr); };
    messages_.Report(7, L"seven");
    messages_.Report(8, L"eight");
    EXPECT_EQ(told_.size(), 1u);
    EXPECT_EQ(listener_->references(), 1u);
}

TEST_F(MessagesTest, AListenerWithoutMethodsIsLeftAlone) {
    messages_.SetListener(listener_.get());
    messages_.Report(7, L"seven");
    EXPECT_EQ(messages_.lastError().code, 7);
}

TEST(Insertions, AreTextsOfAnyValue) {
    com::Variant inner(std::wstring_view(L"by reference"));
    VARIANT reference;
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = inner.address();
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 4);
    const com::Variant number(LONG{42});
    const com::Variant null = com::Variant::Null();
    VARIANT* data = nullptr;
    SafeArrayAccessData(array, reinterpret_cast<void**>(&data));
    data[0] = number.get();
    data[1] = null.get();
    data[2] = reference;
    SafeArrayUnaccessData(array);
    EXPECT_EQ(InsertionsOf(array), (std::vector<std::wstring>{L"42", L"", L"by reference", L""}));
    SafeArrayDestroy(array);
    EXPECT_TRUE(InsertionsOf(nullptr).empty());
    EXPECT_TRUE(InsertionsOf(com::SafeArray::NoArguments().get()).empty());
}

TEST(Insertions, MustBeAnArrayOfValues) {
    SAFEARRAY* longs = SafeArrayCreateVector(VT_I4, 0, 2);
    EXPECT_THROW(InsertionsOf(longs), com::ComError);
    SafeArrayDestroy(longs);
}

}  // namespace
}  // namespace zu::host
