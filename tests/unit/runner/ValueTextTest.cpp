#include "runner/ValueText.h"

#include <gtest/gtest.h>

#include "com/ComError.h"
#include "com/Variant.h"
#include "runner/NamedMembers.h"

namespace zu::runner {
namespace {

using com::Variant;

VARIANT Raw(VARTYPE type) {
    VARIANT value;
    VariantInit(&value);
    value.vt = type;
    return value;
}

Variant ArrayOf(VARTYPE type, std::initializer_list<LONG> numbers) {
    SAFEARRAY* array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(numbers.size()));
    LONG index = 0;
    for (const LONG number : numbers) {
        if (type == VT_VARIANT) {
            VARIANT element = Variant(number).detach();
            SafeArrayPutElement(array, &index, &element);
        } else {
            LONG element = number;
            SafeArrayPutElement(array, &index, &element);
        }
        ++index;
    }
    VARIANT value = Raw(static_cast<VARTYPE>(VT_ARRAY | type));
    value.parray = array;
    return Variant::Adopt(value);
}

TEST(ValueText, ShowsPlainValuesAsVBScriptDoes) {
    EXPECT_EQ(ValueText(Variant(std::wstring_view(L"caf\u00E9"))), L"caf\u00E9");
    EXPECT_EQ(ValueText(Variant(LONG{-7})), L"-7");
    EXPECT_EQ(ValueText(Variant(0.5)), L"0.5");
    EXPECT_EQ(ValueText(Variant(true)), L"True");
    EXPECT_EQ(ValueText(Variant(false)), L"False");
}

TEST(ValueText, ShowsTheSpecialValues) {
    EXPECT_EQ(ValueText(Variant()), L"");
    EXPECT_EQ(ValueText(Variant::Null()), L"Null");
    EXPECT_EQ(ValueText(Variant::Missing()), L"");
    EXPECT_EQ(ValueText(Variant(static_cast<IDispatch*>(nullptr))), L"Nothing");
    VARIANT error = Raw(VT_ERROR);
    error.scode = E_FAIL;
    EXPECT_EQ(ValueText(error), L"Error 0x80004005");
}

TEST(ValueText, ShowsDecimalsCurrencyAndDates) {
    VARIANT decimal = Raw(VT_EMPTY);
    VarDecFromR8(12.25, &decimal.decVal);
    decimal.vt = VT_DECIMAL;
    EXPECT_EQ(ValueText(decimal), L"12.25");
    VARIANT currency = Raw(VT_CY);
    currency.cyVal.int64 = 12500;
    EXPECT_EQ(ValueText(currency), L"1.25");
    VARIANT date = Raw(VT_DATE);
    date.date = 46347;  // 21 November 2026
    EXPECT_NE(ValueText(date).find(L"2026"), std::wstring::npos);
}

TEST(ValueText, LooksThroughReferences) {
    Variant text(std::wstring_view(L"x"));
    VARIANT reference = Raw(VT_BYREF | VT_VARIANT);
    reference.pvarVal = text.address();
    EXPECT_EQ(ValueText(reference), L"x");
    LONG number = 5;
    VARIANT direct = Raw(VT_BYREF | VT_I4);
    direct.plVal = &number;
    EXPECT_EQ(ValueText(direct), L"5");
}

TEST(ValueText, ShowsTheElementsOfArrays) {
    EXPECT_EQ(ValueText(ArrayOf(VT_VARIANT, {1, 2, 3})), L"(1, 2, 3)");
    EXPECT_EQ(ValueText(ArrayOf(VT_I4, {4, 5})), L"(4, 5)");
    EXPECT_EQ(ValueText(ArrayOf(VT_VARIANT, {})), L"()");
}

TEST(ValueText, DoesNotReadElementsThatAreNoPlainValues) {
    VARIANT value = Raw(VT_ARRAY | VT_DECIMAL);
    value.parray = SafeArrayCreateVector(VT_DECIMAL, 0, 2);
    EXPECT_EQ(ValueText(Variant::Adopt(value)), L"[Array]");
}

TEST(ValueText, CutsLongArrays) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1'000'000);
    VARIANT value = Raw(VT_ARRAY | VT_I4);
    value.parray = array;
    const Variant owner = Variant::Adopt(value);
    EXPECT_TRUE(ValueText(owner).ends_with(L"...)"));
    EXPECT_LT(ValueText(owner).size(), 1000U);
}

TEST(ValueText, EndsInAnArrayThatIsManyLevelsDeep) {
    Variant value(LONG{1});
    for (int level = 0; level < 50; ++level) {
        SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 1);
        LONG index = 0;
        VARIANT element = value.get();
        SafeArrayPutElement(array, &index, &element);
        VARIANT outer = Raw(VT_ARRAY | VT_VARIANT);
        outer.parray = array;
        value = Variant::Adopt(outer);
    }
    EXPECT_NE(ValueText(value).find(L"[Array]"), std::wstring::npos);
}

TEST(ValueText, ShowsAnObjectByItsDefaultValueElseByItsType) {
    const auto object = MakeUnknown<NamedMembers>();
    EXPECT_EQ(ValueText(Variant(object.get())), L"[Object]");
    object->AddProperty(L"Value", [] { return Variant(LONG{42}); });
    object->MakeDefault(L"Value");
    EXPECT_EQ(ValueText(Variant(object.get())), L"42");
}

TEST(ValueText, EndsWithAnObjectThatIsItsOwnDefaultValue) {
    const auto object = MakeUnknown<NamedMembers>();
    object->AddProperty(L"Self", [raw = object.get()] { return Variant(static_cast<IDispatch*>(raw)); });
    object->MakeDefault(L"Self");
    EXPECT_EQ(ValueText(Variant(object.get())), L"[Object]");
}

TEST(HostText, WritesTruthValuesAsNumbersAndNullInSmallLetters) {
    EXPECT_EQ(HostText(Variant(true)), L"-1");
    EXPECT_EQ(HostText(Variant(false)), L"0");
    EXPECT_EQ(HostText(Variant::Null()), L"null");
    EXPECT_EQ(HostText(Variant()), L"");
}

TEST(HostText, RefusesAValueWithoutAText) {
    EXPECT_THROW(HostText(ArrayOf(VT_VARIANT, {1})), com::ComError);
}

}  // namespace
}  // namespace zu::runner
