#include "host/engine/TruthValue.h"

#include <gtest/gtest.h>

#include "LateBound.h"
#include "ScriptObject.h"
#include "com/ComError.h"
#include "com/Variant.h"

namespace zu::host {
namespace {

VARIANT OfType(VARTYPE type, LONGLONG number) {
    VARIANT value;
    VariantInit(&value);
    value.vt = type;
    value.llVal = number;
    return value;
}

TEST(TruthValue, TextsThatMeanTrue) {
    for (const wchar_t* text :
         {L"T", L"true", L"Y", L"Yes", L".T.", L".y.", L"on", L"  yes\t", L"1", L"-0.5", L" 7 "})
        EXPECT_TRUE(ToTruthValue(com::Variant(std::wstring_view(text)))) << text;
}

TEST(TruthValue, TextsThatMeanFalse) {
    for (const wchar_t* text :
         {L"F", L"FALSE", L"n", L"no", L".F.", L".N.", L"Off", L"0", L"0.00", L"", L"   "})
        EXPECT_FALSE(ToTruthValue(com::Variant(std::wstring_view(text)))) << text;
}

TEST(TruthValue, OtherTextsAreTypeMismatches) {
    for (const wchar_t* text : {L"maybe", L"TRUEE", L".T", L"1 2"}) {
        try {
            ToTruthValue(com::Variant(std::wstring_view(text)));
            ADD_FAILURE() << text;
        } catch (const com::ComError& error) {
            EXPECT_EQ(error.code(), com::kTypeMismatch);
            EXPECT_NE(error.description().find(text), std::wstring::npos);
        }
    }
}

TEST(TruthValue, NumbersAreTrueWhenTheyAreNotZero) {
    for (const VARTYPE type :
         {VT_I1, VT_I2, VT_I4, VT_I8, VT_INT, VT_UI1, VT_UI2, VT_UI4, VT_UI8, VT_UINT, VT_CY}) {
        EXPECT_TRUE(ToTruthValue(OfType(type, 1))) << type;
        EXPECT_FALSE(ToTruthValue(OfType(type, 0))) << type;
    }
    EXPECT_TRUE(ToTruthValue(com::Variant(0.25)));
    EXPECT_FALSE(ToTruthValue(com::Variant(0.0)));
    VARIANT decimal = OfType(VT_EMPTY, 0);
    decimal.decVal.Lo64 = 3;
    decimal.vt = VT_DECIMAL;
    EXPECT_TRUE(ToTruthValue(decimal));
}

TEST(TruthValue, BooleansStayAndDatesAreTrue) {
    EXPECT_TRUE(ToTruthValue(com::Variant(true)));
    EXPECT_FALSE(ToTruthValue(com::Variant(false)));
    EXPECT_TRUE(ToTruthValue(OfType(VT_DATE, 0)));
}

TEST(TruthValue, NullEmptyAndMissingAreFalse) {
    EXPECT_FALSE(ToTruthValue(com::Variant()));
    EXPECT_FALSE(ToTruthValue(com::Variant::Null()));
    EXPECT_FALSE(ToTruthValue(com::Variant::Missing()));
}

TEST(TruthValue, ReferencesAreLookedThrough) {
    com::Variant text(std::wstring_view(L"yes"));
    VARIANT reference;
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = text.address();
    EXPECT_TRUE(ToTruthValue(reference));
    VARIANT_BOOL flag = VARIANT_TRUE;
    VARIANT byRef;
    byRef.vt = VT_BYREF | VT_BOOL;
    byRef.pboolVal = &flag;
    EXPECT_TRUE(ToTruthValue(byRef));
}

TEST(TruthValue, ArraysErrorsAndNoObjectAreRefused) {
    VARIANT array = OfType(VT_EMPTY, 0);
    array.vt = VT_ARRAY | VT_VARIANT;
    array.parray = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    EXPECT_THROW(ToTruthValue(array), com::ComError);
    VariantClear(&array);
    EXPECT_THROW(ToTruthValue(OfType(VT_ERROR, 5)), com::ComError);
    EXPECT_THROW(ToTruthValue(com::Variant(static_cast<IDispatch*>(nullptr))), com::ComError);
}

}  // namespace
}  // namespace zu::host
