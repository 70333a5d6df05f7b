// What only the component's own classes can reach: linked in, not called through the DLL.
#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/NumericConversion.h"
#include "component/table/ArrayElements.h"
#include "component/table/DataView.h"
#include "component/table/KeyCondition.h"
#include "component/table/TableReference.h"
#include "component/table/clsDatabaseDefn.h"
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComError;
using com::ComPtr;
using com::Variant;
using component::clsDatabaseDefn;
using component::SelectionLimits;
using component::TableReference;
using fake::Journal;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

template <class Body>
HRESULT CodeOf(Body&& body) {
    try {
        body();
    } catch (const ComError& error) {
        return error.code();
    }
    return S_OK;
}

class Internal : public ContractTest {
protected:
    void SetUp() override {
        ContractTest::SetUp();
        component::Engine();  // the copy that this program carries starts too
        TakeCalls();
    }
};

TEST_F(Internal, DefinitionKeepsItsArgumentEvenWhenItIsNone) {
    clsDatabaseDefn definition;
    EXPECT_EQ(definition.Definition().type(), VT_EMPTY);
    EXPECT_TRUE(definition.DataBaseName().empty());
    EXPECT_TRUE(definition.TableName().empty());
    EXPECT_FALSE(definition.Define(Variant(LONG{5})));
    EXPECT_EQ(definition.Definition().ToLong(), 5);
    EXPECT_TRUE(definition.Define(Variant(L"X|a>b")));
    EXPECT_EQ(definition.Definition().ToText().view(), L"X|a>b");
}

TEST_F(Internal, DefinitionThatIsNoneKeepsTheEarlierNames) {
    clsDatabaseDefn definition;
    ASSERT_TRUE(definition.Define(Variant(L"X|a>b")));
    for (const Variant& none : {Variant(LONG{5}), Variant(), Variant::Null(), Variant::Missing(),
                                UndimensionedArray(), Array(std::vector<Variant>())}) {
        EXPECT_FALSE(definition.Define(none));
        EXPECT_EQ(definition.DataBaseName().view(), L"X|a");
        EXPECT_EQ(definition.TableName().view(), L"b");
    }
}

TEST_F(Internal, FailingTechnologyStillAnswersTrue) {
    Journal::OfThread().FailOn("ZuEngineData.DefaultTechnology");
    clsDatabaseDefn definition;
    EXPECT_TRUE(definition.Define(Variant(L"a>b")));
    EXPECT_EQ(definition.DataBaseName().view(), L"a");
    EXPECT_EQ(definition.TableName().view(), L"b");
}

TEST_F(Internal, FailingDefinitionKeepsTheTableOpen) {
    TableReference table;
    ASSERT_TRUE(table.Open(Variant(L"X|a>b")));
    EXPECT_FALSE(table.Open(Variant(LONG{5})));
    EXPECT_TRUE(table.Table());
    EXPECT_EQ(table.DataBaseName().view(), L"X|a");
    EXPECT_FALSE(table.SetDefinition(Variant::Null()));
    EXPECT_EQ(table.TableName().view(), L"b");
}

TEST_F(Internal, OpenOnAnOpenTableReplacesIt) {
    TableReference table;
    ASSERT_TRUE(table.Open(Variant(L"X|a>b")));
    ASSERT_TRUE(table.Open(Variant(L"X|c>d")));
    EXPECT_EQ(TakeCalls(), Opened("X|a", "b") + Opened("X|c", "d"));
    EXPECT_EQ(Journal::OfThread().Live("table"), 1u);
    Scene().opensTable = false;
    EXPECT_FALSE(table.Open(Variant(L"X|e>f")));
    EXPECT_FALSE(table.Table());
}

TEST_F(Internal, OpenWithoutDefinitionUsesTheNamesHeld) {
    TableReference table;
    table.SetDataBaseName(Bstr(L"X|a"));
    table.SetTableName(Bstr(L"b"));
    EXPECT_TRUE(table.Open(Variant::Missing()));
    EXPECT_EQ(TakeCalls(), Opened("X|a", "b"));
}

TEST_F(Internal, FlagGoesToTheTable) {
    TableReference table;
    ASSERT_TRUE(table.Open(Variant(L"X|a>b")));
    table.OpenDefaultIndex();
    TakeCalls();
    const SelectionLimits limits{7, 1, Variant(L"NAME")};
    EXPECT_TRUE(table.FilterFlagged(Variant::Null(), limits));
    EXPECT_TRUE(table.LookupFlagged(Variant(L"A"), Variant(true), limits));
    const Calls calls = TakeCalls();
    EXPECT_EQ(calls.front(), "DataTable.Select(Null, I4 7, 1, \"NAME\")");
    EXPECT_EQ(calls.back(), "DataTable.Seek(<index 1>, 0, 7, 1, \"NAME\")");
    EXPECT_TRUE(table.CurrentIndex());
}

TEST_F(Internal, FlagGoesToTheTableWithoutAnIndexToo) {
    TableReference table;
    ASSERT_TRUE(table.Open(Variant(L"X|a>b")));
    EXPECT_TRUE(table.LookupFlagged(Variant(L"A"), Variant(true), {7, 1, Variant(L"NAME")}));
    EXPECT_EQ(TakeCalls().back(), "DataTable.Select(\"\", I4 7, 1, \"NAME\")");
    EXPECT_FALSE(table.CurrentIndex());
}

TEST_F(Internal, CurrentIndexOfAClosedTableIsAnError) {
    TableReference table;
    EXPECT_EQ(CodeOf([&] { table.CurrentIndex(); }), com::kObjectNotSet);
}

TEST_F(Internal, TableOperationsParseTheirDefinitionFirst) {
    TableReference table;
    EXPECT_FALSE(table.CreateTable(Variant(LONG{5}), nullptr, nullptr));
    EXPECT_FALSE(table.DropTable(Variant::Null()));
    EXPECT_THAT(TakeCalls(), IsEmpty());
    const ComPtr<ZuDataView> layout = Select();
    TakeCalls();
    Scene().answers = true;
    EXPECT_TRUE(table.CreateTable(Variant(L"X|a>b"), layout.get(), nullptr));
    EXPECT_TRUE(table.DropTable(Variant::Missing()));
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuEngineData.DatabaseService()",
                            "ZuDatabaseService.CreateTable(\"X|a\", \"b\", <view 1>, Nothing)",
                            "ZuEngineData.DatabaseService()", "ZuDatabaseService.DropTable(\"X|a\", \"b\")"));
    Scene().answers = false;
    EXPECT_FALSE(table.CreateTable(Variant::Missing(), layout.get(), nullptr));
    EXPECT_FALSE(table.DropTable(Variant(L"X|c>d")));
    EXPECT_EQ(TakeCalls().back(), "ZuDatabaseService.DropTable(\"X|c\", \"d\")");
}

TEST_F(Internal, DataViewsAreToldFromOtherObjects) {
    const ComPtr<ZuDataView> view = Select();
    EXPECT_TRUE(component::IsDataView(Variant(view.get())));
    EXPECT_FALSE(component::IsDataView(Variant(functions_.get())));
    EXPECT_FALSE(component::IsDataView(Variant(static_cast<IDispatch*>(nullptr))));
    EXPECT_FALSE(component::IsDataView(Variant(LONG{5})));
    EXPECT_FALSE(component::IsDataView(Variant::Missing()));
}

TEST_F(Internal, FieldsAreFetchedOncePerView) {
    Scene().fields = {{L"A", VT_I4, Variant(LONG{1})}, {L"B", VT_I4, Variant(LONG{2})}};
    component::DataView view(Select());
    TakeCalls();
    EXPECT_EQ(view.Value(L"A").ToLong(), 1);
    EXPECT_EQ(view.Value(L"B").ToLong(), 2);
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuDataView.Fields()", "ZuDataFields.Item(\"A\")", "ZuDataField.Value()",
                            "ZuDataFields.Item(\"B\")", "ZuDataField.Value()"));
}

TEST_F(Internal, NoViewIsAnError) {
    EXPECT_EQ(CodeOf([] { component::DataView view(nullptr); }), com::kObjectNotSet);
    EXPECT_FALSE(component::IsDataView(Variant(LONG{5})));
    EXPECT_FALSE(component::IsDataView(Variant(functions_.get())));
}

TEST(KeyRule, TextWithOneOfFourCharactersIsACondition) {
    for (const wchar_t* text : {L"A=B", L"A<B", L"A>B", L"F(B", L"("}) {
        EXPECT_TRUE(component::IsCondition(Variant(text)));
    }
    for (const wchar_t* text : {L"", L"AB", L"A)B", L"A!B"}) {
        EXPECT_FALSE(component::IsCondition(Variant(text)));
    }
    EXPECT_FALSE(component::IsCondition(Variant(LONG{12})));
    EXPECT_FALSE(component::IsCondition(Variant::Missing()));
    EXPECT_FALSE(component::IsCondition(Array({L"A=B"})));
}

TEST(NumericConversion, BlankTextIsZeroOfEveryType) {
    for (const wchar_t* text : {L"", L" ", L"     "}) {
        const Variant blank(text);
        EXPECT_EQ(component::ToDouble(blank), 0.0);
        EXPECT_EQ(component::ToSingle(blank), 0.0f);
        EXPECT_EQ(component::ToLong(blank), 0);
        EXPECT_EQ(component::ToInteger(blank), 0);
        EXPECT_EQ(component::ToCurrency(blank).int64, 0);
        EXPECT_EQ(component::ToDecimal(blank).Lo64, 0u);
    }
}

TEST(NumericConversion, NumbersInTextUseTheDecimalPoint) {
    EXPECT_EQ(component::ToDouble(Variant(L" 12.5 ")), 12.5);
    EXPECT_EQ(component::ToSingle(Variant(L"-0.25")), -0.25f);
    EXPECT_EQ(component::ToLong(Variant(L"123456")), 123456);
    EXPECT_EQ(component::ToInteger(Variant(L"-7")), -7);
    EXPECT_EQ(component::ToCurrency(Variant(L"1.2345")).int64, 12345);
    const DECIMAL decimal = component::ToDecimal(Variant(L"1.25"));
    EXPECT_EQ(decimal.Lo64, 125u);
    EXPECT_EQ(decimal.scale, 2);
    EXPECT_EQ(decimal.wReserved, 0);
}

TEST(NumericConversion, HalvesRoundToEven) {
    EXPECT_EQ(component::ToLong(Variant(2.5)), 2);
    EXPECT_EQ(component::ToLong(Variant(3.5)), 4);
    EXPECT_EQ(component::ToInteger(Variant(-2.5)), -2);
}

TEST(NumericConversion, OtherTypesConvertAsEverywhereInAutomation) {
    EXPECT_EQ(component::ToLong(Variant(true)), -1);
    EXPECT_EQ(component::ToDouble(Variant()), 0.0);
    Variant text(L"42");
    EXPECT_EQ(component::ToLong(ReferenceTo(text)), 42);
}

TEST(NumericConversion, WhatIsNoNumberOrTooLargeIsAnError) {
    EXPECT_EQ(CodeOf([] { component::ToDouble(Variant(L"twelve")); }), com::kTypeMismatch);
    EXPECT_EQ(CodeOf([] { component::ToLong(Variant::Null()); }), com::kTypeMismatch);
    EXPECT_EQ(CodeOf([] { component::ToInteger(Variant(LONG{40000})); }), com::kOverflow);
    EXPECT_EQ(CodeOf([] { component::ToLong(Variant(3e9)); }), com::kOverflow);
    EXPECT_EQ(CodeOf([] { component::ToCurrency(Variant(1e30)); }), com::kOverflow);
}

TEST(ArrayElements, ReadsEveryElementTypeByTheScriptsIndex) {
    const Variant texts = TextArray({L"a", L"b"}, 5);
    const component::ArrayElements elements(component::ArrayOf(texts));
    EXPECT_EQ(elements.upperBound(), 6);
    EXPECT_EQ(elements.At(5).ToText().view(), L"a");
    EXPECT_EQ(elements.At(6).ToText().view(), L"b");
    for (const LONG outside : {4, 7, -1, 0}) {
        EXPECT_EQ(CodeOf([&] { elements.At(outside); }), com::kSubscriptOutOfRange) << outside;
    }
}

TEST(ArrayElements, ReadsDecimalsAndDates) {
    SAFEARRAYBOUND bounds{1, 0};
    LONG index = 0;
    VARIANT decimals{};
    decimals.vt = VT_ARRAY | VT_DECIMAL;
    decimals.parray = SafeArrayCreate(VT_DECIMAL, 1, &bounds);
    DECIMAL decimal = component::ToDecimal(Variant(L"1.25"));
    SafeArrayPutElement(decimals.parray, &index, &decimal);
    const Variant owner = Variant::Adopt(decimals);
    EXPECT_EQ(component::ArrayElements(component::ArrayOf(owner)).At(0).ToText().view(), L"1.25");
}

TEST(ArrayElements, ArrayWithoutBoundsHasNone) {
    const Variant none = UndimensionedArray();
    EXPECT_TRUE(component::IsArray(none));
    EXPECT_EQ(CodeOf([&] { component::ArrayElements(component::ArrayOf(none)).upperBound(); }),
              com::kSubscriptOutOfRange);
    const Variant table = TwoDimensionalArray();
    EXPECT_EQ(CodeOf([&] { component::ArrayElements(component::ArrayOf(table)).At(0); }),
              com::kSubscriptOutOfRange);
}

}  // namespace zu::contract
