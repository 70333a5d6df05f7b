#include "host/service/TableReuse.h"

#include "ServiceTest.h"
#include "TemporaryFolder.h"
#include "host/engine/SettingsStore.h"
#include "portable/text/Utf.h"

namespace zu::test {
namespace {

/// Ends with no table kept, whatever a test left.
class TableReuseTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        host::SettingsStore::Instance().Put(L"Data.ReuseTables", L"60000", nullptr);
        Service()->CloseTables();
        name_ = L"T" + std::to_wstring(++number_);
        WriteFile("as it was");
        const std::wstring path = folder_.path() + L"\\table";
        Data().file = text::ToUtf8(com::AsUtf16(path));
    }
    void TearDown() override {
        host::SettingsStore::Instance().Put(L"Data.ReuseTables", L"0", nullptr);
        Service()->CloseTables();
        ServiceTest::TearDown();
    }
    MemoryData& Data() const { return MemoryTechnology::Table(std::string(name_.begin(), name_.end())); }

    void WriteFile(std::string_view content) const { folder_.Write(L"table", content); }

    TemporaryFolder folder_;
    std::wstring name_;
    static inline int number_ = 0;
};

TEST_F(TableReuseTest, ATableThatIsOpenedOnceIsClosedAtOnce) {
    Open(name_);
    EXPECT_EQ(Data().open, 0);
}

TEST_F(TableReuseTest, ATableThatIsOpenedAgainAndAgainIsKept) {
    for (int i = 0; i < 50; ++i)
        Open(name_);
    EXPECT_EQ(Data().opened, 2);
    EXPECT_EQ(Data().open, 1);
}

TEST_F(TableReuseTest, AChangedTableIsOpenedAnew) {
    for (int i = 0; i < 3; ++i)
        Open(name_);
    WriteFile("changed");
    Open(name_);
    EXPECT_EQ(Data().opened, 3);
}

TEST_F(TableReuseTest, ATableWhoseFileIsGoneIsOpenedAnew) {
    for (int i = 0; i < 3; ++i)
        Open(name_);
    DeleteFileW((folder_.path() + L"\\table").c_str());
    Data().file.clear();
    Open(name_);
    EXPECT_EQ(Data().opened, 3);
}

TEST_F(TableReuseTest, ATableOfATechnologyWithoutFilesIsOpenedAnew) {
    Data().file.clear();
    for (int i = 0; i < 5; ++i)
        Open(name_);
    EXPECT_EQ(Data().opened, 5);
}

TEST_F(TableReuseTest, CloseTablesClosesWhatNobodyUses) {
    for (int i = 0; i < 3; ++i)
        Open(name_);
    const auto used = Open(name_);
    Service()->CloseTables();
    EXPECT_EQ(Data().open, 1);
    EXPECT_EQ(host::TableReuse::Instance().kept(), 1u);
}

TEST_F(TableReuseTest, NothingIsKeptWhenItIsSwitchedOff) {
    host::SettingsStore::Instance().Put(L"Data.ReuseTables", L"0", nullptr);
    for (int i = 0; i < 5; ++i)
        Open(name_);
    EXPECT_EQ(Data().opened, 5);
    EXPECT_EQ(Data().open, 0);
}

TEST_F(TableReuseTest, OtherSettingsAreAnotherTable) {
    for (int i = 0; i < 3; ++i)
        Open(name_);
    host::SettingsStore::Instance().Put(L"Data.ShowDeleted", L"yes", nullptr);
    Open(name_);
    host::SettingsStore::Instance().Put(L"Data.ShowDeleted", L"no", nullptr);
    EXPECT_EQ(Data().opened, 3);
}

TEST_F(TableReuseTest, AnotherThreadGetsATableOfItsOwn) {
    for (int i = 0; i < 3; ++i)
        Open(name_);
    HANDLE thread = CreateThread(
        nullptr, 0,
        [](void* name) -> DWORD {
            const Apartment apartment;
            Open(*static_cast<std::wstring*>(name));
            return 0;
        },
        &name_, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    EXPECT_EQ(Data().opened, 3);
}

TEST_F(TableReuseTest, AnIdleTableIsClosedByItself) {
    host::SettingsStore::Instance().Put(L"Data.ReuseTables", L"20", nullptr);
    while (Data().open == 0)
        Open(name_);
    // The timer closes it; the limit only ends a test that fails.
    const ULONGLONG limit = GetTickCount64() + 20'000;
    while (host::TableReuse::Instance().kept() > 0 && GetTickCount64() < limit)
        SwitchToThread();
    EXPECT_EQ(host::TableReuse::Instance().kept(), 0u);
}

TEST_F(TableReuseTest, AFailedOpenKeepsNothing) {
    com::Bstr database(L"MEM|folder");
    com::Bstr table(L"MISSING");
    for (int i = 0; i < 3; ++i) {
        com::ComPtr<IDispatch> opened;
        EXPECT_TRUE(FAILED(Service()->OpenTable(database.address(), table.address(), opened.put())));
    }
    EXPECT_EQ(host::TableReuse::Instance().kept(), 0u);
}

}  // namespace
}  // namespace zu::test
