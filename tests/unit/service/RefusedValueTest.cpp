#include "host/service/RefusedValue.h"

#include <gtest/gtest.h>

#include "com/Variant.h"

namespace zu::host {
namespace {

using technologies::FieldType;

std::wstring TextFor(HRESULT code, FieldType type, const VARIANT& value) {
    return RefusedValue(com::ComError(code, L"its own text"), L"Field F", type, value).description();
}

TEST(RefusedValue, SaysWhatTheFieldTakesAndWhatItWasGiven) {
    EXPECT_EQ(TextFor(com::kTypeMismatch, FieldType::Date, com::Variant(L"some day")),
              L"Field F takes a date, not \"some day\"");
    EXPECT_EQ(TextFor(DISP_E_TYPEMISMATCH, FieldType::Double, com::Variant(true)),
              L"Field F takes a number, not True");
    EXPECT_EQ(
        TextFor(com::kObjectNotSet, FieldType::Integer32, com::Variant(static_cast<IDispatch*>(nullptr))),
        L"Field F takes a whole number, not no object");
}

TEST(RefusedValue, SaysThatANumberIsTooGreat) {
    EXPECT_EQ(TextFor(DISP_E_OVERFLOW, FieldType::Integer16, com::Variant(LONG{99999})),
              L"Field F cannot hold 99999: the number is too great");
}

TEST(RefusedValue, ShortensLongTexts) {
    EXPECT_EQ(TextFor(com::kTypeMismatch, FieldType::Boolean, com::Variant(std::wstring(100, L'x'))),
              L"Field F takes True or False, not \"" + std::wstring(60, L'x') + L"...\"");
}

TEST(RefusedValue, KeepsTheTextOfOtherErrors) {
    EXPECT_EQ(TextFor(E_ACCESSDENIED, FieldType::Text, com::Variant(L"x")), L"Field F: its own text");
}

}  // namespace
}  // namespace zu::host
