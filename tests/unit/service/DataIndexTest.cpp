#include "ServiceTest.h"
#include "com/ComError.h"

namespace zu::test {
namespace {

class DataIndexTest : public ServiceTest {
protected:
    static MemoryData& Data() { return MemoryTechnology::Table("PEOPLE"); }
    static bool OpenIndex(::DataTable& table, std::wstring_view name) {
        com::Bstr text(name);
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(table.OpenIndex(text.address(), &done), S_OK);
        return done == VARIANT_TRUE;
    }
    static com::ComPtr<::DataIndex> Index(::DataTable& table) {
        com::ComPtr<::DataIndex> index;
        EXPECT_EQ(table.CurrentIndex(0, index.put()), S_OK);
        return index;
    }
    static com::ComPtr<::DataKeyField> KeyField(::DataIndex& index, const com::Variant& which) {
        com::ComPtr<::DataKeyFields> fields;
        EXPECT_EQ(index.KeyFields(fields.put()), S_OK);
        com::ComPtr<::DataKeyField> field;
        keyResult_ = fields->Item(which, field.put());
        return field;
    }
    static com::ComPtr<ZuDataView> Seek(::DataTable& table, ::DataIndex* index, LONG limit = 0,
                                        LONG flag = 0) {
        com::ComPtr<IDispatch> view;
        seekResult_ = table.Seek(index, 0, limit, flag, com::Variant::Missing(), view.put());
        return view ? view.as<ZuDataView>() : nullptr;
    }
    static LONG Count(const com::ComPtr<ZuDataView>& view) {
        LONG count = -1;
        if (view) view->get_RecordCount(0, &count);
        return count;
    }
    static inline HRESULT keyResult_ = S_OK;
    static inline HRESULT seekResult_ = S_OK;
};

TEST_F(DataIndexTest, NoIndexIsOpenAtFirst) {
    const auto table = Open();
    EXPECT_FALSE(Index(*table));
    Select(*table, Text(L""));
    EXPECT_FALSE(Data().lastSelection.index);
}

TEST_F(DataIndexTest, AnEmptyNameOpensTheDefaultIndexAndSelectionsFollowIt) {
    const auto table = Open();
    EXPECT_TRUE(OpenIndex(*table, L"  "));
    Select(*table, Text(L""));
    EXPECT_EQ(Data().lastSelection.index, 0u);
    EXPECT_TRUE(OpenIndex(*table, L"BOTH"));
    Select(*table, Text(L""));
    EXPECT_EQ(Data().lastSelection.index, 1u);
}

TEST_F(DataIndexTest, ATableWithoutIndexAnswersFalseAndKeepsRecordOrder) {
    Data().indexes.clear();
    const auto table = Open();
    EXPECT_FALSE(OpenIndex(*table, L""));
    EXPECT_FALSE(Index(*table));
    EXPECT_EQ(LastError().text, L"");
}

TEST_F(DataIndexTest, AnUnknownIndexAnswersFalseAndIsReported) {
    const auto table = Open();
    EXPECT_FALSE(OpenIndex(*table, L"COLOUR"));
    EXPECT_EQ(LastError().text, L"Table PEOPLE has no index \"COLOUR\"");
}

TEST_F(DataIndexTest, ADamagedIndexAnswersFalseWithItsReason) {
    Data().indexes[1].usable = false;
    Data().indexes[1].reason = "it is older than the table";
    const auto table = Open();
    EXPECT_FALSE(OpenIndex(*table, L"BOTH"));
    EXPECT_EQ(LastError().text, L"Index BOTH of table PEOPLE cannot be used: it is older than the table");
    com::ComPtr<::DataIndex> index;
    EXPECT_EQ(table->Index(Text(L"BOTH"), index.put()), S_OK);
    VARIANT_BOOL usable = VARIANT_TRUE;
    index->get_Usable(&usable);
    EXPECT_EQ(usable, VARIANT_FALSE);
    com::Bstr reason;
    index->get_Reason(reason.put());
    EXPECT_EQ(reason.view(), L"it is older than the table");
}

TEST_F(DataIndexTest, AnIndexObjectTellsHowTheIndexStoodWhenItWasMade) {
    const auto usable = [](::DataIndex& index) {
        VARIANT_BOOL answer = VARIANT_FALSE;
        EXPECT_EQ(index.get_Usable(&answer), S_OK);
        return answer != VARIANT_FALSE;
    };
    const auto table = Open();
    com::ComPtr<::DataIndex> before;
    EXPECT_EQ(table->Index(Text(L"BOTH"), before.put()), S_OK);
    Data().indexes[1].usable = false;
    com::ComPtr<::DataIndex> after;
    EXPECT_EQ(table->Index(Text(L"BOTH"), after.put()), S_OK);
    EXPECT_TRUE(usable(*before));
    EXPECT_FALSE(usable(*after));
    Data().indexes[1].usable = true;
    EXPECT_EQ(table->Index(Text(L"BOTH"), after.put()), S_OK);
    EXPECT_TRUE(usable(*after));
}

TEST_F(DataIndexTest, ACandidateIndexSaysSo) {
    Data().indexes[1].candidate = true;
    const auto table = Open();
    for (const auto& [name, expected] :
         {std::pair(L"BOTH", VARIANT_TRUE), std::pair(L"DAY", VARIANT_FALSE)}) {
        com::ComPtr<::DataIndex> index;
        EXPECT_EQ(table->Index(Text(name), index.put()), S_OK);
        VARIANT_BOOL candidate = VARIANT_FALSE;
        EXPECT_EQ(index->get_Candidate(&candidate), S_OK);
        EXPECT_EQ(candidate, expected) << name;
    }
}

TEST_F(DataIndexTest, IndexesAreFoundByNameAndNumber) {
    const auto table = Open();
    com::ComPtr<::DataIndex> index;
    EXPECT_EQ(table->Index(Number(2), index.put()), S_OK);
    com::Bstr name;
    index->get_Name(name.put());
    EXPECT_EQ(name.view(), L"DAY");
    EXPECT_TRUE(FAILED(table->Index(Number(3), index.put())));
    EXPECT_EQ(ErrorText(), L"Table PEOPLE has no index 3, there are 3 counted from 0");
    EXPECT_TRUE(FAILED(table->Index(Text(L"COLOUR"), index.put())));
    EXPECT_EQ(table->Index(com::Variant(true), index.put()), com::kTypeMismatch);
}

TEST_F(DataIndexTest, KeyFieldsTellNameTypeAndDirection) {
    const auto table = Open();
    OpenIndex(*table, L"BOTH");
    const auto index = Index(*table);
    com::ComPtr<::DataKeyFields> fields;
    index->KeyFields(fields.put());
    LONG count = 0;
    fields->Count(&count);
    EXPECT_EQ(count, 2);
    const auto age = KeyField(*index, Number(1));
    com::Bstr name;
    age->get_Name(name.put());
    EXPECT_EQ(name.view(), L"AGE");
    LONG type = 0;
    age->get_Type(&type);
    EXPECT_EQ(type, 14);
    VARIANT_BOOL flag = VARIANT_FALSE;
    age->get_Descending(&flag);
    EXPECT_EQ(flag, VARIANT_TRUE);
    age->get_Exact(&flag);
    EXPECT_EQ(flag, VARIANT_TRUE);
    com::Variant value;
    age->get_Value(value.put());
    EXPECT_EQ(value.type(), VT_EMPTY);
    EXPECT_TRUE(KeyField(*index, Text(L"age")));
    EXPECT_FALSE(KeyField(*index, Number(2)));
    EXPECT_EQ(ErrorText(), L"Index BOTH of table PEOPLE has no key field 2, there are 2 counted from 0");
    EXPECT_FALSE(KeyField(*index, Text(L"PAY")));
    EXPECT_FALSE(KeyField(*index, com::Variant(true)));
    EXPECT_EQ(keyResult_, com::kTypeMismatch);
}

TEST_F(DataIndexTest, SeekHandsTheLoadedKeyToTheTable) {
    const auto table = Open();
    OpenIndex(*table, L"BOTH");
    const auto index = Index(*table);
    KeyField(*index, Number(0))->put_Value(Text(L"Bert"));
    KeyField(*index, Number(0))->put_Exact(VARIANT_FALSE);
    KeyField(*index, Number(1))->put_Value(Number(44));
    EXPECT_EQ(Count(Seek(*table, index.get(), 7, 1)), 1);
    EXPECT_EQ(Data().lastIndex, 1u);
    EXPECT_EQ(Data().lastLimit, 7u);
    EXPECT_TRUE(Data().lastDeletedWanted);
    ASSERT_EQ(Data().lastCriteria.size(), 2u);
    EXPECT_EQ(Data().lastCriteria[0].value.text, u"Bert");
    EXPECT_FALSE(Data().lastCriteria[0].exact);
    EXPECT_EQ(Data().lastCriteria[1].value.decimal.low, 44u);
    EXPECT_TRUE(Data().lastCriteria[1].exact);
}

TEST_F(DataIndexTest, KeyFieldsAfterOneThatIsNotLoadedDoNotRestrict) {
    const auto table = Open();
    OpenIndex(*table, L"BOTH");
    const auto index = Index(*table);
    KeyField(*index, Number(1))->put_Value(Number(44));
    EXPECT_EQ(Count(Seek(*table, index.get())), 4);
    KeyField(*index, Number(0))->put_Value(Text(L"Bert"));
    Seek(*table, index.get());
    EXPECT_EQ(Data().lastCriteria.size(), 2u);
}

TEST_F(DataIndexTest, AnEmptyTextInTheFirstKeyFieldRestrictsNothing) {
    const auto table = Open();
    OpenIndex(*table, L"BOTH");
    for (const com::Variant& blank : {Text(L""), Text(L"  "), com::Variant(), com::Variant::Missing()}) {
        const auto index = Index(*table);
        KeyField(*index, Number(0))->put_Value(blank);
        KeyField(*index, Number(1))->put_Value(Number(44));
        EXPECT_EQ(Count(Seek(*table, index.get(), 3)), 3);
        EXPECT_EQ(Data().lastSelection.index, 1u);
    }
}

TEST_F(DataIndexTest, AnEmptyTextInALaterKeyFieldIsAValue) {
    Data().indexes[1].parts[1].type = technologies::FieldType::Text;
    const auto table = Open();
    OpenIndex(*table, L"BOTH");
    const auto index = Index(*table);
    KeyField(*index, Number(0))->put_Value(Text(L"Bert"));
    KeyField(*index, Number(1))->put_Value(Text(L""));
    Seek(*table, index.get());
    EXPECT_EQ(Data().lastCriteria.size(), 2u);
}

TEST_F(DataIndexTest, ANullKeyFindsNothing) {
    const auto table = Open();
    OpenIndex(*table, L"NAME");
    const auto index = Index(*table);
    KeyField(*index, Number(0))->put_Value(com::Variant::Null());
    EXPECT_EQ(Count(Seek(*table, index.get())), 0);
}

TEST_F(DataIndexTest, ADateMeetsATextKeyAsTheKeyHoldsIt) {
    const auto table = Open();
    OpenIndex(*table, L"DAY");
    const auto index = Index(*table);
    com::Variant date;
    date.put()->vt = VT_DATE;
    date.address()->date = 25569;
    KeyField(*index, Number(0))->put_Value(date);
    Seek(*table, index.get());
    EXPECT_EQ(Data().lastCriteria.at(0).value.text, u"19700101");
}

TEST_F(DataIndexTest, AKeyOfTheWrongTypeIsNamed) {
    const auto table = Open();
    OpenIndex(*table, L"BOTH");
    const auto index = Index(*table);
    KeyField(*index, Number(0))->put_Value(Text(L"Bert"));
    KeyField(*index, Number(1))->put_Value(Text(L"old"));
    EXPECT_FALSE(Seek(*table, index.get()));
    EXPECT_TRUE(FAILED(seekResult_));
    EXPECT_TRUE(ErrorText().starts_with(L"Key field AGE of index BOTH of table PEOPLE takes a number, not "));
}

TEST_F(DataIndexTest, EachIndexObjectStartsWithAKeyThatIsNotLoaded) {
    const auto table = Open();
    OpenIndex(*table, L"NAME");
    KeyField(*Index(*table), Number(0))->put_Value(Text(L"Bert"));
    EXPECT_EQ(Count(Seek(*table, Index(*table).get())), 4);
}

TEST_F(DataIndexTest, SeekRefusesAnIndexOfAnotherTableAndNone) {
    const auto table = Open();
    const auto other = Open(L"OTHER");
    OpenIndex(*other, L"NAME");
    EXPECT_FALSE(Seek(*table, Index(*other).get()));
    EXPECT_EQ(seekResult_, com::kTypeMismatch);
    EXPECT_FALSE(Seek(*table, nullptr));
    EXPECT_EQ(seekResult_, com::kTypeMismatch);
}

TEST_F(DataIndexTest, KeyFieldsOutliveTheirTable) {
    com::ComPtr<::DataKeyField> field;
    {
        const auto table = Open();
        OpenIndex(*table, L"NAME");
        field = KeyField(*Index(*table), Number(0));
    }
    com::Bstr name;
    EXPECT_EQ(field->get_Name(name.put()), S_OK);
    EXPECT_EQ(name.view(), L"NAME");
}

}  // namespace
}  // namespace zu::test
