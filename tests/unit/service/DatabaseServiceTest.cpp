#include "ServiceTest.h"
#include "com/ComError.h"
#include "com/SafeArray.h"
#include "host/engine/SettingsStore.h"

namespace zu::test {
namespace {

class DatabaseServiceTest : public ServiceTest {
protected:
    static HRESULT OpenTable(std::wstring_view database, std::wstring_view table) {
        com::Bstr databaseName(database);
        com::Bstr tableName(table);
        com::ComPtr<IDispatch> opened;
        return Service()->OpenTable(databaseName.address(), tableName.address(), opened.put());
    }
    static com::Variant Descend(const com::Variant& value, const wchar_t* technology = L"MEM") {
        com::Variant result;
        const com::Bstr name = technology ? com::Bstr(technology) : com::Bstr();
        descended_ = Service()->Descend(value, name.get(), result.put());
        return result;
    }
    static inline HRESULT descended_ = S_OK;
};

TEST_F(DatabaseServiceTest, OpensATableOfTheTechnologyInFrontOfTheBar) {
    EXPECT_EQ(OpenTable(L"mem|some|folder", L"PEOPLE"), S_OK);
    EXPECT_EQ(MemoryTechnology::lastDatabase, "some|folder");
}

TEST_F(DatabaseServiceTest, UsesTheDefaultTechnologyWhereNoneIsNamed) {
    host::SettingsStore::Instance().Put(L"Data.DefaultTechnology", L"MEM", nullptr);
    EXPECT_EQ(OpenTable(L"folder", L"PEOPLE"), S_OK);
    EXPECT_EQ(OpenTable(L"|folder", L"PEOPLE"), S_OK);
    EXPECT_EQ(MemoryTechnology::lastDatabase, "folder");
    EXPECT_EQ(Descend(Number(3), nullptr).ToLong(), -3);
    host::SettingsStore::Instance().Put(L"Data.DefaultTechnology", L"DBF", nullptr);
}

TEST_F(DatabaseServiceTest, AnUnknownTechnologyIsNamedWithThoseThatExist) {
    EXPECT_TRUE(FAILED(OpenTable(L"XYZ|folder", L"PEOPLE")));
    EXPECT_EQ(
        LastError().text,
        L"Cannot open table \"PEOPLE\" of database \"XYZ|folder\": There is no database technology \"XYZ\", "
        L"known are: DBF, MEM");
}

TEST_F(DatabaseServiceTest, ATableThatCannotBeOpenedIsNamedWithTheReason) {
    EXPECT_EQ(OpenTable(L"MEM|folder", L"MISSING"), STG_E_FILENOTFOUND);
    EXPECT_EQ(ErrorText(),
              L"Cannot open table \"MISSING\" of database \"MEM|folder\": there is no such table");
    EXPECT_EQ(LastError().code, STG_E_FILENOTFOUND);
}

TEST_F(DatabaseServiceTest, NullNamesAreEmptyNames) {
    com::ComPtr<IDispatch> opened;
    EXPECT_TRUE(FAILED(Service()->OpenTable(nullptr, nullptr, opened.put())));
    EXPECT_FALSE(opened);
}

TEST_F(DatabaseServiceTest, TechnologiesGetTheSettings) {
    auto& store = host::SettingsStore::Instance();
    store.Put(L"Data.Folder", L"C:\\tables", nullptr);
    store.Put(L"Data.ShowDeleted", L"yes", nullptr);
    OpenTable(L"MEM|", L"PEOPLE");
    EXPECT_EQ(MemoryTechnology::lastSettings.dataFolder, "C:\\tables");
    EXPECT_TRUE(MemoryTechnology::lastSettings.showDeleted);
    EXPECT_FALSE(MemoryTechnology::lastSettings.survivePowerCut);
    store.Put(L"Data.Durability", L"safe", nullptr);
    OpenTable(L"MEM|", L"PEOPLE");
    EXPECT_TRUE(MemoryTechnology::lastSettings.survivePowerCut);
    EXPECT_EQ(MemoryTechnology::lastSettings.lockWait, 5000u);
    EXPECT_FALSE(MemoryTechnology::lastSettings.clipperLocks);
    EXPECT_FALSE(MemoryTechnology::lastSettings.allowStaleIndexes);
    EXPECT_EQ(MemoryTechnology::lastSettings.newTableFormat, "");
    store.Put(L"Data.LockWait", L"20", nullptr);
    store.Put(L"Data.Locks", L"clipper", nullptr);
    store.Put(L"Data.AllowStaleIndexes", L"yes", nullptr);
    store.Put(L"Data.NewTableFormat", L"foxpro 2", nullptr);
    OpenTable(L"MEM|", L"PEOPLE");
    EXPECT_EQ(MemoryTechnology::lastSettings.lockWait, 20u);
    EXPECT_TRUE(MemoryTechnology::lastSettings.clipperLocks);
    EXPECT_TRUE(MemoryTechnology::lastSettings.allowStaleIndexes);
    EXPECT_EQ(MemoryTechnology::lastSettings.newTableFormat, "FoxPro 2");
    store.Put(L"Data.LockWait", L"5000", nullptr);
    store.Put(L"Data.Locks", L"FoxPro", nullptr);
    store.Put(L"Data.AllowStaleIndexes", L"no", nullptr);
    store.Put(L"Data.NewTableFormat", L"auto", nullptr);
    store.Put(L"Data.Durability", L"fast", nullptr);
    store.Put(L"Data.ShowDeleted", L"no", nullptr);
    store.Put(L"Data.Folder", L"", nullptr);
    OpenTable(L"MEM|", L"PEOPLE");
    EXPECT_FALSE(MemoryTechnology::lastSettings.dataFolder.empty());
}

TEST_F(DatabaseServiceTest, DescendTurnsValuesRound) {
    EXPECT_EQ(Descend(Number(3)).ToLong(), -3);
    EXPECT_EQ(Descend(com::Variant(2.5)).ToDouble(), -2.5);
    EXPECT_EQ(Descend(Text(L"ab")).ToText().view(), L"~ab");
    EXPECT_EQ(Descend(Text(L"")).ToText().view(), L"~");
    EXPECT_EQ(Descend(com::Variant::Null()).type(), VT_NULL);
    EXPECT_EQ(Descend(com::Variant()).type(), VT_EMPTY);
}

TEST_F(DatabaseServiceTest, DescendRefusesArraysAndUnknownTechnologies) {
    Descend(com::SafeArray::Of({Number(1)}).ToVariant());
    EXPECT_EQ(descended_, com::kTypeMismatch);
    Descend(Number(1), L"XYZ");
    EXPECT_TRUE(FAILED(descended_));
}

TEST_F(DatabaseServiceTest, TellsWhetherATableExists) {
    const com::Bstr database(L"MEM|folder");
    const com::Bstr table(L"PEOPLE");
    const com::Bstr missing(L"MISSING");
    VARIANT_BOOL exists = VARIANT_FALSE;
    EXPECT_EQ(Service()->TableExists(database.get(), table.get(), &exists), S_OK);
    EXPECT_EQ(exists, VARIANT_TRUE);
    EXPECT_EQ(Service()->TableExists(database.get(), missing.get(), &exists), S_OK);
    EXPECT_EQ(exists, VARIANT_FALSE);
}

TEST_F(DatabaseServiceTest, ListsItsTechnologies) {
    com::Variant names;
    EXPECT_EQ(Service()->Technologies(names.put()), S_OK);
    const auto texts = com::ReadArguments(names.get().parray);
    ASSERT_GE(texts.size(), 1u);
    EXPECT_EQ(texts[0].ToText().view(), L"DBF");
}

TEST_F(DatabaseServiceTest, ScriptsCanUseItByName) {
    const auto made = Service();
    const LateBound service(made.get());
    const LateBound table = service.Object(L"OpenTable", {Text(L"MEM|x"), Text(L"PEOPLE")});
    ASSERT_TRUE(table) << com::Bstr(service.error()).get();
    EXPECT_EQ(table.Get(L"RecordCount").ToLong(), 5);
    service.Object(L"OpenTable", {Text(L"MEM|x"), Text(L"MISSING")});
    EXPECT_EQ(service.result(), STG_E_FILENOTFOUND);
    EXPECT_FALSE(service.error().empty());
}

}  // namespace
}  // namespace zu::test
