#include "component/ui/TypedValue.h"

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/ui/CellText.h"
#include "tests/contract/ContractTest.h"
#include "tests/contract/fake/Rendering.h"

namespace zu::contract {

using com::Variant;
using component::CellText;
using component::ToTypedValue;

namespace {

class TypedValues : public ContractTest {
protected:
    void SetUp() override {
        ContractTest::SetUp();
        component::Engine();
        TakeCalls();
    }
    static std::string Typed(std::wstring_view text, LONG type) {
        return fake::Show(ToTypedValue(text, type).value);
    }
    static VARTYPE TypeOf(std::wstring_view text, LONG type) { return ToTypedValue(text, type).value.type(); }
};

TEST_F(TypedValues, TypeOneIsNullForTheEmptyTextOnly) {
    EXPECT_EQ(TypeOf(L"", 1), VT_NULL);
    EXPECT_EQ(TypeOf(L"x", 1), VT_EMPTY);
}

TEST_F(TypedValues, IntegersAndRealsTakeTheLeadingNumber) {
    EXPECT_EQ(Typed(L"12 apples", 2), "I2 12");
    EXPECT_EQ(Typed(L"-7", 3), "I4 -7");
    EXPECT_EQ(Typed(L"abc", 3), "I4 0");
    EXPECT_EQ(ToTypedValue(L"2.5", 4).value->fltVal, 2.5F);
    EXPECT_EQ(ToTypedValue(L"2.5x", 5).value->dblVal, 2.5);
}

TEST_F(TypedValues, NumbersOutOfTheTypesRangeRaise) {
    EXPECT_THROW(ToTypedValue(L"40000", 2), com::ComError);
    EXPECT_THROW(ToTypedValue(L"3000000000", 3), com::ComError);
    EXPECT_THROW(ToTypedValue(L"1e300", 4), com::ComError);
    EXPECT_THROW(ToTypedValue(L"1e999", 5), com::ComError);
}

TEST_F(TypedValues, CurrencyAndDecimalAreZeroForBlanks) {
    EXPECT_EQ(ToTypedValue(L"  ", 6).value->cyVal.int64, 0);
    EXPECT_EQ(ToTypedValue(L"12.5", 6).value->cyVal.int64, 125000);
    EXPECT_EQ(TypeOf(L"", 14), VT_DECIMAL);
    EXPECT_EQ(CellText(ToTypedValue(L"12.5", 14).value, L"0.00"), L"12.50");
    EXPECT_THROW(ToTypedValue(L"apples", 14), com::ComError);
}

TEST_F(TypedValues, ATextThatIsNoDateIsNull) {
    EXPECT_EQ(TypeOf(L"2024-02-29", 7), VT_DATE);
    EXPECT_EQ(ToTypedValue(L"2024-02-29", 7).value->date, 45351.0);
    EXPECT_EQ(TypeOf(L"soon", 7), VT_NULL);
    EXPECT_NE(ToTypedValue(L"soon", 7).note, L"");
    EXPECT_EQ(TypeOf(L"", 7), VT_NULL);
    EXPECT_EQ(ToTypedValue(L"", 7).note, L"");
}

TEST_F(TypedValues, TextsAreTakenAsTheyAre) {
    EXPECT_EQ(Typed(L" a ", 8), "\" a \"");
    EXPECT_EQ(Typed(L"long", 100), "\"long\"");
}

TEST_F(TypedValues, TruthValuesAreTheEngines) {
    EXPECT_EQ(Typed(L"True", 11), "True");
    EXPECT_THAT(TakeCalls(), ::testing::ElementsAre("ZuEngineData.ToBoolean(\"True\")"));
}

TEST_F(TypedValues, BytesGoFromZeroTo255) {
    EXPECT_EQ(ToTypedValue(L"0", 17).value->bVal, 0);
    EXPECT_EQ(ToTypedValue(L"255.9", 17).value->bVal, 255);
    EXPECT_EQ(ToTypedValue(L"-0.5", 17).value->bVal, 0);
    EXPECT_EQ(TypeOf(L"12", 17), VT_UI1);
    for (const wchar_t* text : {L"256", L"-1", L"x", L"", L"12x"})
        EXPECT_EQ(TypeOf(text, 17), VT_EMPTY) << text;
}

TEST_F(TypedValues, OtherTypesAreEmpty) {
    for (const LONG type : {0, 9, 10, 12, 13, 99, 101, -5, 8209})
        EXPECT_EQ(TypeOf(L"1", type), VT_EMPTY) << type;
}

TEST_F(TypedValues, CellsShowNumbersInTheirFormats) {
    EXPECT_EQ(CellText(Variant(1234.5), L"0.00"), L"1234.50");
    EXPECT_EQ(CellText(Variant(-0.005), L"0.00"), L"-0.01");
    EXPECT_EQ(CellText(Variant(1e300), L"0.00").size(), 304u);
    EXPECT_EQ(CellText(Variant(7.0), L"0."), L"7");
    EXPECT_EQ(CellText(Variant::Null(), L"0.00"), L"");
    EXPECT_EQ(CellText(Variant(), L""), L"");
    EXPECT_EQ(CellText(Variant(L"text"), L""), L"text");
}

}  // namespace
}  // namespace zu::contract
