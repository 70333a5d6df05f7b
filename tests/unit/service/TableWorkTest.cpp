#include "ServiceTest.h"
#include "com/ComError.h"
#include "com/SafeArray.h"

namespace zu::test {
namespace {

using Work = HRESULT (STDMETHODCALLTYPE ZuDatabaseService::*)(BSTR, BSTR, VARIANT_BOOL*);

/// Work on tables as a whole, as the service hands it to a technology.
class TableWorkTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        MemoryTechnology::lastWork.clear();
        MemoryTechnology::lastKey.clear();
        MemoryTechnology::lastFields.clear();
        MemoryTechnology::report = {};
    }
    HRESULT Run(Work work, const wchar_t* table = L"PEOPLE") {
        const com::Bstr name(table);
        return (*Service().*work)(database_.get(), name.get(), &done_);
    }
    HRESULT CreateTable(IDispatch* layout, ::DataFieldList* key) {
        return Service()->CreateTable(database_.address(), table_.address(), layout, key, &done_);
    }
    static com::ComPtr<::DataFieldList> List(const std::vector<std::pair<com::Variant, bool>>& entries) {
        com::ComPtr<::DataFieldList> list;
        EXPECT_EQ(Service()->NewFieldList(list.put()), S_OK);
        for (const auto& [field, descending] : entries)
            EXPECT_EQ(list->Add(field, com::ToVariantBool(descending)), S_OK);
        return list;
    }
    static std::vector<std::wstring> Texts(const com::Variant& array) {
        std::vector<std::wstring> texts;
        for (const com::Variant& each : com::ReadArguments(array.get().parray))
            texts.push_back(each.ToText().str());
        return texts;
    }
    static MemoryData& Data() { return MemoryTechnology::Table("PEOPLE"); }

    com::Bstr database_{L"MEM|folder"};
    com::Bstr table_{L"PEOPLE"};
    VARIANT_BOOL done_ = 7;
};

TEST_F(TableWorkTest, EachOperationReachesTheTechnologyWithBothNames) {
    EXPECT_EQ(Run(&ZuDatabaseService::Pack), S_OK);
    EXPECT_EQ(done_, VARIANT_TRUE);
    EXPECT_EQ(MemoryTechnology::lastWork, "Pack folder PEOPLE");
    EXPECT_EQ(Run(&ZuDatabaseService::Zap), S_OK);
    EXPECT_EQ(MemoryTechnology::lastWork, "Zap folder PEOPLE");
    EXPECT_EQ(Run(&ZuDatabaseService::Reindex), S_OK);
    EXPECT_EQ(MemoryTechnology::lastWork, "Reindex folder PEOPLE");
    EXPECT_EQ(Run(&ZuDatabaseService::Repair), S_OK);
    EXPECT_EQ(MemoryTechnology::lastWork, "Repair folder PEOPLE");
    EXPECT_EQ(done_, VARIANT_TRUE);
}

TEST_F(TableWorkTest, ATableThatIsOpenIsLockedAndTheTextSaysWhatIsInTheWay) {
    const auto held = Open();
    for (const Work work : {&ZuDatabaseService::Pack, &ZuDatabaseService::Zap, &ZuDatabaseService::Reindex,
                            &ZuDatabaseService::Repair}) {
        done_ = VARIANT_TRUE;
        EXPECT_EQ(Run(work), STG_E_LOCKVIOLATION);
        EXPECT_EQ(done_, VARIANT_FALSE);
    }
    EXPECT_EQ(Run(&ZuDatabaseService::Pack), STG_E_LOCKVIOLATION);
    EXPECT_EQ(
        ErrorText(),
        L"Cannot pack table \"PEOPLE\" of database \"MEM|folder\": the table is in use. Tables and views "
        L"that this program still holds are in the way too.");
    EXPECT_EQ(LastError().code, STG_E_LOCKVIOLATION);
}

TEST_F(TableWorkTest, TablesThatAreOnlyKeptForTheNextUseAreNotInTheWay) {
    host::SettingsStore::Instance().Put(L"Data.ReuseTables", L"60000", nullptr);
    // Any file that stays as it is will do to have the table kept.
    Data().file = "C:\\windows\\system32\\kernel32.dll";
    Open();
    Open();
    EXPECT_EQ(Data().open, 1);
    EXPECT_EQ(Run(&ZuDatabaseService::Pack), S_OK);
    EXPECT_EQ(Data().open, 0);
}

TEST_F(TableWorkTest, AMissingTableIsAnErrorThatNamesIt) {
    EXPECT_EQ(Run(&ZuDatabaseService::Pack, L"MISSING"), STG_E_FILENOTFOUND);
    EXPECT_EQ(ErrorText(),
              L"Cannot pack table \"MISSING\" of database \"MEM|folder\": there is no such table");
}

TEST_F(TableWorkTest, AnUnknownTechnologyIsNamed) {
    const com::Bstr database(L"XYZ|folder");
    EXPECT_TRUE(FAILED(Service()->Pack(database.get(), table_.get(), &done_)));
    EXPECT_NE(ErrorText().find(L"XYZ"), std::wstring::npos);
}

TEST_F(TableWorkTest, NullPointersAreRefused) {
    EXPECT_EQ(Service()->Pack(database_.get(), table_.get(), nullptr), E_POINTER);
    EXPECT_EQ(Service()->Check(database_.get(), table_.get(), nullptr), E_POINTER);
}

TEST_F(TableWorkTest, CheckAnswersTheFindings) {
    com::Variant result;
    EXPECT_EQ(Service()->Check(database_.get(), table_.get(), result.put()), S_OK);
    EXPECT_TRUE(Texts(result).empty());
    MemoryTechnology::report.findings = {"a page is torn", "a count is wrong"};
    EXPECT_EQ(Service()->Check(database_.get(), table_.get(), result.put()), S_OK);
    EXPECT_EQ(Texts(result), (std::vector<std::wstring>{L"a page is torn", L"a count is wrong"}));
}

TEST_F(TableWorkTest, TableNamesAreListed) {
    com::Variant result;
    EXPECT_EQ(Service()->TableNames(database_.get(), result.put()), S_OK);
    EXPECT_EQ(Texts(result), (std::vector<std::wstring>{L"ORDERS", L"PEOPLE"}));
    EXPECT_EQ(MemoryTechnology::lastWork, "TableNames folder ");
}

TEST_F(TableWorkTest, UndeleteTakesTheMarkOffWhatMeetsTheCondition) {
    Data().writable = true;
    Data().deleted = {true, true, true, false, true};
    com::Bstr condition(L"even");
    EXPECT_EQ(Service()->Undelete(database_.get(), table_.get(), condition.get(), &done_), S_OK);
    EXPECT_EQ(done_, VARIANT_TRUE);
    EXPECT_EQ(Data().deleted, (std::vector<bool>{true, false, true, false, true}));
    for (const wchar_t* blank : {L"", L"  "}) {
        Data().deleted = {true, true, true, false, true};
        EXPECT_EQ(Service()->Undelete(database_.get(), table_.get(), com::Bstr(blank).get(), &done_), S_OK);
        EXPECT_EQ(Data().deleted, std::vector<bool>(5, false));
    }
    Data().deleted[0] = true;
    EXPECT_EQ(Service()->Undelete(database_.get(), table_.get(), nullptr, &done_), S_OK);
    EXPECT_FALSE(Data().deleted[0]);
}

TEST_F(TableWorkTest, UndeleteWritesNothingWhereNothingIsMarked) {
    Data().writable = true;
    Data().deleted.assign(5, false);
    EXPECT_EQ(Service()->Undelete(database_.get(), table_.get(), nullptr, &done_), S_OK);
    EXPECT_EQ(done_, VARIANT_TRUE);
    EXPECT_EQ(Data().saves, 0);
}

TEST_F(TableWorkTest, UndeleteWorksWhileViewsAreOpen) {
    Data().writable = true;
    const auto view = Everything();
    EXPECT_EQ(Service()->Undelete(database_.get(), table_.get(), nullptr, &done_), S_OK);
    EXPECT_FALSE(Data().deleted[2]);
}

TEST_F(TableWorkTest, AFaultyConditionOfUndeleteNamesItsPosition) {
    Data().writable = true;
    com::Bstr condition(L"broken");
    EXPECT_EQ(Service()->Undelete(database_.get(), table_.get(), condition.get(), &done_),
              static_cast<HRESULT>(0x80041017));
    EXPECT_EQ(done_, VARIANT_FALSE);
    EXPECT_TRUE(Data().deleted[2]);
}

TEST_F(TableWorkTest, ATableIsMadeFromTheFieldsOfAView) {
    const auto view = Select(*Open(), Text(L""), com::Variant::Missing(), 0, Text(L"PAY,NAME"));
    EXPECT_EQ(CreateTable(view.get(), nullptr), STG_E_LOCKVIOLATION) << "the table in memory is open";
    table_ = com::Bstr(L"NEW");
    EXPECT_EQ(CreateTable(view.get(), nullptr), S_OK);
    EXPECT_EQ(done_, VARIANT_TRUE);
    EXPECT_EQ(MemoryTechnology::lastWork, "CreateTable folder NEW");
    ASSERT_EQ(MemoryTechnology::lastFields.size(), 2u);
    EXPECT_EQ(MemoryTechnology::lastFields[0].name, "PAY");
    EXPECT_EQ(MemoryTechnology::lastFields[0].type, technologies::FieldType::Decimal);
    EXPECT_EQ(MemoryTechnology::lastFields[0].size, 10);
    EXPECT_EQ(MemoryTechnology::lastFields[0].decimals, 2);
    EXPECT_FALSE(MemoryTechnology::lastFields[0].nullable);
    EXPECT_EQ(MemoryTechnology::lastFields[1].name, "NAME");
    EXPECT_TRUE(MemoryTechnology::lastKey.empty());
}

TEST_F(TableWorkTest, ATableIsMadeWithAnIndex) {
    com::ComPtr<IDispatch> layout;
    Open()->Layout(layout.put());
    table_ = com::Bstr(L"NEW");
    const auto key = List({{Text(L"NAME"), false}, {Number(1), true}, {Text(L"RecNo"), false}});
    EXPECT_EQ(CreateTable(layout.get(), key.get()), S_OK);
    ASSERT_EQ(MemoryTechnology::lastKey.size(), 3u);
    EXPECT_EQ(MemoryTechnology::lastKey[0].text, "NAME");
    EXPECT_FALSE(MemoryTechnology::lastKey[0].descending);
    EXPECT_EQ(MemoryTechnology::lastKey[1].text, "AGE");
    EXPECT_TRUE(MemoryTechnology::lastKey[1].descending);
    EXPECT_EQ(MemoryTechnology::lastKey[2].text, "RecNo");
}

TEST_F(TableWorkTest, ATableNeedsAViewForItsFields) {
    table_ = com::Bstr(L"NEW");
    EXPECT_EQ(CreateTable(nullptr, nullptr), com::kObjectNotSet);
    const auto service = Service();
    EXPECT_EQ(CreateTable(service.get(), nullptr), com::kTypeMismatch);
    EXPECT_EQ(MemoryTechnology::lastWork, "");
}

TEST_F(TableWorkTest, DropTableAnswersFalseWithoutAReportWhenThereIsNoTable) {
    EXPECT_EQ(Service()->DropTable(database_.address(), table_.address(), &done_), S_OK);
    EXPECT_EQ(done_, VARIANT_TRUE);
    EXPECT_EQ(database_.view(), L"MEM|folder");
    EXPECT_EQ(table_.view(), L"PEOPLE");
    table_ = com::Bstr(L"MISSING");
    EXPECT_EQ(Service()->DropTable(database_.address(), table_.address(), &done_), S_OK);
    EXPECT_EQ(done_, VARIANT_FALSE);
}

TEST_F(TableWorkTest, AnIndexIsMadeFromNamesExpressionsAndNumbers) {
    const auto key = List({{Text(L"UPPER(NAME)"), true}, {Number(1), false}});
    EXPECT_EQ(Service()->CreateIndex(database_.get(), table_.get(), key.get(), &done_), S_OK);
    EXPECT_EQ(done_, VARIANT_TRUE);
    EXPECT_EQ(MemoryTechnology::lastWork, "CreateIndex folder PEOPLE");
    ASSERT_EQ(MemoryTechnology::lastKey.size(), 2u);
    EXPECT_EQ(MemoryTechnology::lastKey[0].text, "UPPER(NAME)");
    EXPECT_TRUE(MemoryTechnology::lastKey[0].descending);
    EXPECT_EQ(MemoryTechnology::lastKey[1].text, "AGE");
}

TEST_F(TableWorkTest, AnIndexOfAFieldThatIsNotThereIsRefused) {
    const auto key = List({{Number(9), false}});
    EXPECT_EQ(Service()->CreateIndex(database_.get(), table_.get(), key.get(), &done_), STG_E_FILENOTFOUND);
    EXPECT_EQ(done_, VARIANT_FALSE);
    EXPECT_EQ(MemoryTechnology::lastWork, "");
    const auto flag = List({{com::Variant(true), false}});
    EXPECT_EQ(Service()->CreateIndex(database_.get(), table_.get(), flag.get(), &done_), com::kTypeMismatch);
}

TEST_F(TableWorkTest, DropIndexAnswersFalseAndSaysWhichIndexIsMissing) {
    EXPECT_EQ(Service()->DropIndex(database_.get(), table_.get(), com::Bstr(L"NAME").get(), &done_), S_OK);
    EXPECT_EQ(done_, VARIANT_TRUE);
    EXPECT_EQ(Service()->DropIndex(database_.get(), table_.get(), com::Bstr(L"OTHER").get(), &done_), S_OK);
    EXPECT_EQ(done_, VARIANT_FALSE);
    EXPECT_NE(LastError().text.find(L"OTHER"), std::wstring::npos);
}

TEST_F(TableWorkTest, ScriptsWorkOnTablesByName) {
    const auto made = Service();
    const LateBound service(made.get());
    EXPECT_EQ(service.Get(L"Pack", {Text(L"MEM|folder"), Text(L"PEOPLE")}).get().boolVal, VARIANT_TRUE);
    const LateBound list = service.Object(L"NewFieldList");
    list.Get(L"Add", {Text(L"NAME")});
    EXPECT_EQ(service.Get(L"CreateIndex", {Text(L"MEM|folder"), Text(L"PEOPLE"), com::Variant(list.get())})
                  .get()
                  .boolVal,
              VARIANT_TRUE)
        << com::Bstr(service.error()).get();
    EXPECT_EQ(MemoryTechnology::lastKey.size(), 1u);
    EXPECT_EQ(service.Get(L"DropTable", {Text(L"MEM|folder"), Text(L"PEOPLE")}).get().boolVal, VARIANT_TRUE);
}

}  // namespace
}  // namespace zu::test
