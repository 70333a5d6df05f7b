#include "host/service/ValueConversion.h"

#include <gtest/gtest.h>

#include <limits>

#include "LateBound.h"
#include "ScriptObject.h"
#include "com/Bstr.h"
#include "com/ComError.h"
#include "portable/error/Error.h"

namespace zu::host {
namespace {

using technologies::FieldType;
using technologies::Value;

constexpr std::int32_t kNewYear1970 = 2440588;

Value Make(Value::Kind kind) {
    Value value;
    value.kind = kind;
    return value;
}

com::Variant DateOf(double date) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_DATE;
    value.date = date;
    return com::Variant::Adopt(value);
}

com::Variant DecimalOf(ULONGLONG units, BYTE scale, bool negative = false, ULONG high = 0) {
    com::Variant result;
    DECIMAL& decimal = result.address()->decVal;
    decimal.Hi32 = high;
    decimal.Lo64 = units;
    decimal.scale = scale;
    decimal.sign = negative ? DECIMAL_NEG : 0;
    result.address()->vt = VT_DECIMAL;
    return result;
}

std::u16string TextFrom(const VARIANT& value) {
    return FromVariant(value, FieldType::Text).text;
}

technologies::FieldDescription Field(FieldType type, int size, int decimals = 0) {
    technologies::FieldDescription field;
    field.name = "F";
    field.type = type;
    field.size = size;
    field.decimals = decimals;
    return field;
}

TEST(ValueToVariant, EachKindHasItsAutomationType) {
    EXPECT_EQ(ToVariant(Value(), FieldType::Text).type(), VT_NULL);
    Value value = Make(Value::Kind::Integer);
    value.integer = -7;
    EXPECT_EQ(ToVariant(value, FieldType::Integer32).type(), VT_I4);
    EXPECT_EQ(ToVariant(value, FieldType::Integer16).type(), VT_I2);
    EXPECT_EQ(ToVariant(value, FieldType::Integer32).get().lVal, -7);
    value.integer = 200;
    EXPECT_EQ(ToVariant(value, FieldType::Byte).type(), VT_UI1);
    value.integer = 1LL << 40;
    EXPECT_EQ(ToVariant(value, FieldType::Integer32).get().dblVal, 1099511627776.0);
    value = Make(Value::Kind::Double);
    value.number = 2.5;
    EXPECT_EQ(ToVariant(value, FieldType::Double).type(), VT_R8);
    EXPECT_EQ(ToVariant(value, FieldType::Single).type(), VT_R4);
    value = Make(Value::Kind::Currency);
    value.integer = 12345;
    EXPECT_EQ(ToVariant(value, FieldType::Currency).type(), VT_CY);
    EXPECT_EQ(ToVariant(value, FieldType::Currency).get().cyVal.int64, 12345);
    value = Make(Value::Kind::Boolean);
    value.boolean = true;
    EXPECT_EQ(ToVariant(value, FieldType::Boolean).get().boolVal, VARIANT_TRUE);
}

TEST(ValueToVariant, DecimalsStayExact) {
    Value value = Make(Value::Kind::Decimal);
    value.decimal = {0xFFFFFFFFFFFFFFFFULL, 0x1234, 7, true};
    const com::Variant result = ToVariant(value, FieldType::Decimal);
    ASSERT_EQ(result.type(), VT_DECIMAL);
    EXPECT_EQ(result.get().decVal.Lo64, 0xFFFFFFFFFFFFFFFFULL);
    EXPECT_EQ(result.get().decVal.Hi32, 0x1234u);
    EXPECT_EQ(result.get().decVal.scale, 7);
    EXPECT_EQ(result.get().decVal.sign, DECIMAL_NEG);
}

TEST(ValueToVariant, DatesCarryTheirTimeAndTextsTheirCharacters) {
    Value value = Make(Value::Kind::DateTime);
    value.julianDay = kNewYear1970;
    value.milliseconds = 6 * 3600 * 1000;
    EXPECT_EQ(ToVariant(value, FieldType::Date).type(), VT_DATE);
    EXPECT_DOUBLE_EQ(ToVariant(value, FieldType::Date).get().date, 25569.25);
    value = Make(Value::Kind::Text);
    value.text = std::u16string(u"a\0b\u20AC", 4);
    EXPECT_EQ(com::View(ToVariant(value, FieldType::Text).get().bstrVal),
              std::wstring_view(L"a\0b\u20AC", 4));
}

TEST(ValueToVariant, DatesThatAutomationCannotHoldAreNull) {
    Value value = Make(Value::Kind::DateTime);
    value.julianDay = 1757584;  // 31 December 99
    EXPECT_EQ(ToVariant(value, FieldType::Date).type(), VT_NULL);
    value.julianDay = 1757585;
    EXPECT_EQ(ToVariant(value, FieldType::Date).type(), VT_DATE);
}

TEST(ValueToVariant, BytesBecomeAnArray) {
    Value value = Make(Value::Kind::Binary);
    EXPECT_EQ(ToVariant(value, FieldType::Binary).type(), VT_ARRAY | VT_UI1);
    value.binary = {1, 2, 255};
    const com::Variant result = ToVariant(value, FieldType::Binary);
    EXPECT_EQ(FromVariant(result, FieldType::Binary).binary, value.binary);
}

TEST(ValueFromVariant, NothingGivesNoValue) {
    for (const FieldType type : {FieldType::Text, FieldType::Decimal, FieldType::Date, FieldType::Boolean}) {
        EXPECT_EQ(FromVariant(com::Variant(), type).kind, Value::Kind::Null);
        EXPECT_EQ(FromVariant(com::Variant::Null(), type).kind, Value::Kind::Null);
        EXPECT_EQ(FromVariant(com::Variant::Missing(), type).kind, Value::Kind::Null);
    }
}

TEST(ValueFromVariant, BlankTextGivesNoValueExceptForTexts) {
    for (const FieldType type : {FieldType::Decimal, FieldType::Double, FieldType::Integer32, FieldType::Date,
                                 FieldType::Boolean, FieldType::Currency})
        EXPECT_EQ(FromVariant(test::Text(L"  "), type).kind, Value::Kind::Null);
    EXPECT_EQ(FromVariant(test::Text(L""), FieldType::Text).kind, Value::Kind::Text);
}

TEST(ValueFromVariant, ValuesBecomeTextInAnUnambiguousForm) {
    EXPECT_EQ(TextFrom(com::Variant(true)), u"True");
    EXPECT_EQ(TextFrom(com::Variant(false)), u"False");
    EXPECT_EQ(TextFrom(com::Variant(LONG{-12})), u"-12");
    EXPECT_EQ(TextFrom(com::Variant(2.5)), u"2.5");
    EXPECT_EQ(TextFrom(DateOf(25569)), u"1970-01-01");
    EXPECT_EQ(TextFrom(DateOf(25569.5)), u"1970-01-01 12:00:00");
    EXPECT_EQ(TextFrom(DecimalOf(12345, 2)), u"123.45");
}

TEST(ValueFromVariant, TextsBecomeTheTypeOfTheField) {
    EXPECT_EQ(FromVariant(test::Text(L" 42 "), FieldType::Integer32).integer, 42);
    EXPECT_EQ(FromVariant(test::Text(L"2.5"), FieldType::Double).number, 2.5);
    EXPECT_EQ(FromVariant(test::Text(L"2.5"), FieldType::Currency).integer, 25000);
    const Value decimal = FromVariant(test::Text(L"-1.25"), FieldType::Decimal);
    EXPECT_EQ(decimal.decimal, (technologies::Decimal{125, 0, 2, true}));
    EXPECT_EQ(FromVariant(test::Text(L"1970-01-01"), FieldType::Date).julianDay, kNewYear1970);
    EXPECT_TRUE(FromVariant(test::Text(L"yes"), FieldType::Boolean).boolean);
}

TEST(ValueFromVariant, WhatDoesNotFitIsATypeMismatchOrAnOverflow) {
    EXPECT_THROW(FromVariant(test::Text(L"abc"), FieldType::Decimal), com::ComError);
    EXPECT_THROW(FromVariant(test::Text(L"abc"), FieldType::Date), com::ComError);
    EXPECT_THROW(FromVariant(test::Text(L"perhaps"), FieldType::Boolean), com::ComError);
    EXPECT_THROW(FromVariant(com::Variant(70000.0), FieldType::Integer16), com::ComError);
    EXPECT_THROW(FromVariant(com::Variant(300.0), FieldType::Byte), com::ComError);
    EXPECT_THROW(FromVariant(test::Text(L"x"), FieldType::Binary), com::ComError);
    EXPECT_THROW(FromVariant(test::Text(L"x"), static_cast<FieldType>(9)), com::ComError);
}

TEST(ValueFromVariant, AScriptsDateObjectIsADate) {
    const com::ComPtr<test::ScriptObject> date = test::ScriptObject::Make();
    date->Add(L"getVarDate", [](auto&, VARIANT* result, EXCEPINFO*) {
        result->vt = VT_DATE;
        result->date = 25569;
        return S_OK;
    });
    EXPECT_EQ(FromVariant(com::Variant(date.get()), FieldType::Date).julianDay, kNewYear1970);
    EXPECT_EQ(TextFrom(com::Variant(date.get())), u"1970-01-01");
}

TEST(ValueFromVariant, AnObjectWithoutAValueIsRefused) {
    const com::ComPtr<test::ScriptObject> object = test::ScriptObject::Make();
    EXPECT_THROW(FromVariant(com::Variant(object.get()), FieldType::Text), com::ComError);
    EXPECT_THROW(FromVariant(com::Variant(static_cast<IDispatch*>(nullptr)), FieldType::Text), com::ComError);
}

TEST(KeyFromVariant, DatesBecomeTheTextThatKeysHold) {
    EXPECT_EQ(KeyFromVariant(DateOf(25569.75), FieldType::Text).text, u"19700101");
    EXPECT_EQ(KeyFromVariant(DateOf(25569), FieldType::Date).julianDay, kNewYear1970);
    EXPECT_EQ(KeyFromVariant(com::Variant(LONG{12}), FieldType::Text).text, u"12");
}

TEST(FitToField, CutsTrailingBlanksAndRefusesWiderTexts) {
    Value value = FromVariant(test::Text(L"abc   "), FieldType::Text);
    FitToField(value, Field(FieldType::Text, 3), "PEOPLE");
    EXPECT_EQ(value.text, u"abc");
    value = FromVariant(test::Text(L"abcd"), FieldType::Text);
    try {
        FitToField(value, Field(FieldType::Text, 3), "PEOPLE");
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Overflow);
        EXPECT_STREQ(error.what(),
                     "Field F of table PEOPLE (width 3, 0 decimals) cannot hold a text of 4 characters");
    }
}

TEST(FitToField, LongTextHasNoLimit) {
    Value value = FromVariant(test::Text(std::wstring(5000, L'x')), FieldType::LongText);
    FitToField(value, Field(FieldType::LongText, 10), "PEOPLE");
    EXPECT_EQ(value.text.size(), 5000u);
}

TEST(FitToField, RoundsDecimalsAndRefusesWiderNumbers) {
    Value value = FromVariant(test::Text(L"12.345"), FieldType::Decimal);
    FitToField(value, Field(FieldType::Decimal, 5, 2), "PEOPLE");
    EXPECT_EQ(value.decimal, (technologies::Decimal{1235, 0, 2, false}));
    value = FromVariant(test::Text(L"-1.005"), FieldType::Decimal);
    FitToField(value, Field(FieldType::Decimal, 5, 2), "PEOPLE");
    EXPECT_EQ(value.decimal, (technologies::Decimal{101, 0, 2, true}));
    for (const wchar_t* text : {L"100", L"-10.5", L"99.996"}) {
        value = FromVariant(test::Text(text), FieldType::Decimal);
        EXPECT_THROW(FitToField(value, Field(FieldType::Decimal, 5, 2), "PEOPLE"), Error) << text;
    }
    for (const wchar_t* text : {L"99.99", L"-9.99", L"0"}) {
        value = FromVariant(test::Text(text), FieldType::Decimal);
        EXPECT_NO_THROW(FitToField(value, Field(FieldType::Decimal, 5, 2), "PEOPLE")) << text;
    }
    value = FromVariant(test::Text(L"79228162514264337593543950335"), FieldType::Decimal);
    EXPECT_THROW(FitToField(value, Field(FieldType::Decimal, 20, 2), "PEOPLE"), Error);
    value = FromVariant(test::Text(L"-0.5"), FieldType::Decimal);
    EXPECT_THROW(FitToField(value, Field(FieldType::Decimal, 3, 1), "PEOPLE"), Error);
    EXPECT_NO_THROW(FitToField(value, Field(FieldType::Decimal, 4, 1), "PEOPLE"));
}

TEST(FitToField, ADayHasNoTime) {
    Value value = FromVariant(DateOf(25569.5), FieldType::Date);
    Value both = value;
    FitToField(value, Field(FieldType::Date, 8), "PEOPLE");
    FitToField(both, Field(FieldType::Date, 14), "PEOPLE");
    EXPECT_EQ(value.milliseconds, 0);
    EXPECT_EQ(both.milliseconds, 12 * 3600 * 1000);
}

TEST(ScriptNumbers, DecimalsOfFifteenDigitsBecomeDoubles) {
    com::Variant value = DecimalOf(999999999999999ULL, 4, true);
    MakeUsableForScripts(*value.address());
    ASSERT_EQ(value.type(), VT_R8);
    EXPECT_EQ(value.get().dblVal, -99999999999.9999);
}

TEST(ScriptNumbers, LongerDecimalsAndOtherValuesStay) {
    com::Variant sixteen = DecimalOf(1000000000000000ULL, 0);
    MakeUsableForScripts(*sixteen.address());
    EXPECT_EQ(sixteen.type(), VT_DECIMAL);
    com::Variant high = DecimalOf(1, 0, false, 1);
    MakeUsableForScripts(*high.address());
    EXPECT_EQ(high.type(), VT_DECIMAL);
    com::Variant text = test::Text(L"1");
    MakeUsableForScripts(*text.address());
    EXPECT_EQ(text.type(), VT_BSTR);
}

}  // namespace
}  // namespace zu::host
