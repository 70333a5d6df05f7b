#include "ServiceTest.h"
#include "com/ComError.h"
#include "com/SafeArray.h"

namespace zu::test {
namespace {

class DataTableTest : public ServiceTest {
protected:
    static LONG Count(ZuDataView* view) {
        LONG count = -1;
        if (view) view->get_RecordCount(0, &count);
        return count;
    }
    static MemoryData& Data() { return MemoryTechnology::Table("PEOPLE"); }
    static std::vector<std::wstring> Texts(const com::Variant& array) {
        std::vector<std::wstring> texts;
        EXPECT_EQ(array.type(), VT_ARRAY | VT_VARIANT);
        for (const com::Variant& each : com::ReadArguments(array.get().parray))
            texts.push_back(each.ToText().str());
        return texts;
    }
};

TEST_F(DataTableTest, AnEmptyOrOmittedConditionSelectsAllRecords) {
    const auto table = Open();
    EXPECT_EQ(Count(Select(*table, Text(L"")).get()), 4);
    EXPECT_EQ(Count(Select(*table, com::Variant::Missing()).get()), 4);
    EXPECT_EQ(Count(Select(*table, com::Variant()).get()), 4);
}

TEST_F(DataTableTest, ANullConditionSelectsNone) {
    const auto view = Select(*Open(), com::Variant::Null());
    EXPECT_EQ(Count(view.get()), 0);
    com::ComPtr<ZuDataFields> fields;
    view->get_Fields(fields.put());
    LONG count = 0;
    fields->get_Count(&count);
    EXPECT_EQ(count, 5);
}

TEST_F(DataTableTest, TheConditionReachesTheTableAsItIs) {
    const auto table = Open();
    EXPECT_EQ(Count(Select(*table, Text(L"even")).get()), 2);
    EXPECT_EQ(Data().lastSelection.condition, u"even");
    com::Variant inner = Text(L"odd");
    VARIANT reference;
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = inner.address();
    com::ComPtr<IDispatch> view;
    EXPECT_EQ(table->Select(reference, com::Variant::Missing(), 0, com::Variant::Missing(), view.put()),
              S_OK);
    EXPECT_EQ(Data().lastSelection.condition, u"odd");
}

TEST_F(DataTableTest, AConditionOfAnotherTypeIsAMismatch) {
    const auto table = Open();
    EXPECT_FALSE(Select(*table, Number(1)));
    EXPECT_EQ(selected_, com::kTypeMismatch);
}

TEST_F(DataTableTest, TheLimitAndTheFlagReachTheTable) {
    const auto table = Open();
    EXPECT_EQ(Count(Select(*table, Text(L""), Number(2)).get()), 2);
    EXPECT_EQ(Data().lastSelection.maxRecords, 2u);
    EXPECT_FALSE(Data().lastSelection.includeDeleted);
    Select(*table, Text(L""), Text(L"3"), 1);
    EXPECT_EQ(Data().lastSelection.maxRecords, 3u);
    EXPECT_TRUE(Data().lastSelection.includeDeleted);
    for (const com::Variant& none : {Number(0), Number(-5), com::Variant(), com::Variant::Missing()}) {
        Select(*table, Text(L""), none);
        EXPECT_EQ(Data().lastSelection.maxRecords, 0u);
    }
    EXPECT_FALSE(Select(*table, Text(L""), Text(L"many")));
}

TEST_F(DataTableTest, ViewsCarryTheFieldsThatAreAskedFor) {
    const auto view = Select(*Open(), Text(L""), com::Variant::Missing(), 0, Text(L"pay, name"));
    EXPECT_EQ(Value(*view, Number(1)).ToText().view(), L"Anna");
    EXPECT_EQ(Value(*view, Number(0)).ToDouble(), 1234.5);
    com::ComPtr<ZuDataField> field;
    EXPECT_TRUE(FAILED(view->get_Item(Text(L"AGE"), field.put())));
}

TEST_F(DataTableTest, AFieldThatDoesNotExistFailsTheSelectionAndIsReported) {
    EXPECT_FALSE(Select(*Open(), Text(L""), com::Variant::Missing(), 0, Text(L"COLOUR")));
    EXPECT_TRUE(FAILED(selected_));
    EXPECT_EQ(LastError().text, L"Table PEOPLE has no field \"COLOUR\"");
}

TEST_F(DataTableTest, AFaultyConditionIsTheEnginesErrorWithItsPosition) {
    EXPECT_FALSE(Select(*Open(), Text(L"broken")));
    EXPECT_EQ(selected_, static_cast<HRESULT>(0x80041017));
    EXPECT_EQ(ErrorText(),
              L"The condition cannot be understood at position 5: expected a value, in \"broken\" for table "
              L"PEOPLE");
    EXPECT_EQ(LastError().code, static_cast<LONG>(0x80041017));
    EXPECT_EQ(LastError().text,
              L"The condition cannot be understood at position 5: expected a value, in \"broken\" for table "
              L"PEOPLE");
}

TEST_F(DataTableTest, AnotherFailureKeepsItsReason) {
    EXPECT_FALSE(Select(*Open(), Text(L"unreadable")));
    EXPECT_EQ(selected_, STG_E_READFAULT);
    EXPECT_EQ(ErrorText(), L"the disk has a scratch");
}

TEST_F(DataTableTest, TheLayoutIsAViewWithAllFieldsAndNoRecords) {
    com::ComPtr<IDispatch> layout;
    ASSERT_EQ(Open()->Layout(layout.put()), S_OK);
    const auto view = layout.as<ZuDataView>();
    EXPECT_EQ(Count(view.get()), 0);
    com::ComPtr<ZuDataField> field;
    EXPECT_EQ(view->get_Item(Text(L"PAY"), field.put()), S_OK);
    LONG type = 0;
    field->get_Type(&type);
    EXPECT_EQ(type, 14);
    com::Bstr name;
    view->get_TableName(name.put());
    EXPECT_EQ(name.view(), L"PEOPLE");
}

TEST_F(DataTableTest, TellsItsNameCountIndexesAndWarnings) {
    Data().warnings = {"the memo file is missing"};
    const auto table = Open();
    com::Bstr name;
    table->get_Name(name.put());
    EXPECT_EQ(name.view(), L"PEOPLE");
    LONG count = 0;
    table->get_RecordCount(&count);
    EXPECT_EQ(count, 5);
    com::Variant names;
    table->IndexNames(names.put());
    EXPECT_EQ(Texts(names), (std::vector<std::wstring>{L"NAME", L"BOTH", L"DAY"}));
    com::Variant warnings;
    table->Warnings(warnings.put());
    EXPECT_EQ(Texts(warnings), std::vector<std::wstring>{L"the memo file is missing"});
    VARIANT_BOOL updateable = VARIANT_TRUE;
    table->get_Updateable(&updateable);
    EXPECT_EQ(updateable, VARIANT_FALSE);
}

TEST_F(DataTableTest, TellsTheFactsOfItsTechnologyAsNamesAndValues) {
    com::Variant facts;
    EXPECT_EQ(Open()->Facts(facts.put()), S_OK);
    EXPECT_EQ(Texts(facts), (std::vector<std::wstring>{L"Format", L"memory", L"Note", L"\u00E4"}));
}

TEST_F(DataTableTest, ScriptsCanUseItByName) {
    const LateBound table(Open().get());
    const LateBound view = table.Object(L"Select", {Text(L"even"), Number(0), Number(0), Text(L"NAME")});
    ASSERT_TRUE(view) << com::Bstr(table.error()).get();
    EXPECT_EQ(view.Get(L"RecordCount").ToLong(), 2);
    EXPECT_TRUE(table.Get(L"OpenIndex", {Text(L"")}).ToBoolean());
    EXPECT_EQ(table.Object(L"CurrentIndex").Get(L"Name").ToText().view(), L"NAME");
    EXPECT_EQ(table.Object(L"Index", {Number(1)}).Get(L"Name").ToText().view(), L"BOTH");
}

TEST_F(DataTableTest, NullPointersAreRefused) {
    const auto table = Open();
    EXPECT_EQ(table->Select(com::Variant(), com::Variant(), 0, com::Variant(), nullptr), E_POINTER);
    EXPECT_EQ(table->Layout(nullptr), E_POINTER);
    EXPECT_EQ(table->OpenIndex(nullptr, nullptr), E_POINTER);
}

}  // namespace
}  // namespace zu::test
