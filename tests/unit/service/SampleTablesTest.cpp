#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "EngineDll.h"
#include "LateBound.h"
#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SafeArray.h"
#include "idl/ZuDataViewInterface.h"
#include "idl/Zuengine.h"

namespace zu::test {
namespace {

std::string SampleFolder() {
    const char* folder = std::getenv("ZU_SAMPLES");
    return folder ? folder : "../shared/samples";
}

/// The record numbers that the file beside a table lists for a tag.
std::vector<LONG> StatedOrder(const std::string& table, const std::string& tag) {
    std::ifstream file(SampleFolder() + "/xbase/" + table + ".orders.txt");
    std::vector<LONG> order;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("tag " + tag + " ", 0) != 0) continue;
        std::getline(file, line);
        std::istringstream numbers(line.substr(6));
        for (LONG number = 0; numbers >> number;)
            order.push_back(number);
        return order;
    }
    return order;
}

/// The engine DLL over tables that another program made. What it cannot find it names, so that a machine
/// without the samples shows a clear failure.
class SampleTables : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(StatedOrder("orders", "ID").empty())
            << "the sample tables are needed in ../shared/samples or where ZU_SAMPLES says: "
            << SampleFolder();
        const com::ComPtr<ZuProject> project = dll_.Project();
        // Kept tables would keep the DLL too, for other tests to stumble over.
        const com::Bstr reuse(L"Data.ReuseTables");
        const com::Bstr none(L"0");
        ASSERT_EQ(project->put_Setting(reuse.get(), none.get()), S_OK);
        com::ComPtr<IDispatch> service;
        project->DatabaseService(service.put());
        service_ = service.as<ZuDatabaseService>();
    }
    void TearDown() override { service_.reset(); }

    com::ComPtr<DataTable> Open(std::wstring_view table) const {
        const auto folder = std::filesystem::absolute(SampleFolder() + "/xbase").lexically_normal();
        com::Bstr database(L"DBF|" + folder.wstring());
        com::Bstr name(table);
        com::ComPtr<IDispatch> opened;
        if (FAILED(service_->OpenTable(database.address(), name.address(), opened.put())))
            throw std::runtime_error("a sample table cannot be opened");
        return opened.as<DataTable>();
    }
    static com::ComPtr<ZuDataView> Select(DataTable& table, const com::Variant& condition, LONG flag = 0,
                                          const com::Variant& fields = com::Variant::Missing()) {
        com::ComPtr<IDispatch> view;
        if (FAILED(table.Select(condition, com::Variant::Missing(), flag, fields, view.put())))
            throw std::runtime_error("a sample table cannot be selected from");
        return view.as<ZuDataView>();
    }
    static bool OpenIndex(DataTable& table, std::wstring_view name) {
        com::Bstr text(name);
        VARIANT_BOOL done = VARIANT_FALSE;
        return SUCCEEDED(table.OpenIndex(text.address(), &done)) && done == VARIANT_TRUE;
    }
    static LONG Count(ZuDataView& view) {
        LONG count = -1;
        view.get_RecordCount(0, &count);
        return count;
    }
    static std::vector<LONG> Numbers(ZuDataView& view) {
        std::vector<LONG> numbers;
        com::ComPtr<ZuDataField> recordNumber;
        EXPECT_EQ(view.get_Item(Text(L"##RECNO"), recordNumber.put()), S_OK);
        view.MoveFirst(0);
        for (VARIANT_BOOL eof = VARIANT_FALSE; view.get_Eof(0, &eof), eof == VARIANT_FALSE;
             view.MoveNext(-1)) {
            com::Variant number;
            recordNumber->get_Value(number.put());
            numbers.push_back(number.ToLong());
        }
        return numbers;
    }

    // The apartment goes first: with it goes the thread's state, which calls into the DLL.
    EngineDll dll_;
    Apartment apartment_;
    com::ComPtr<ZuDatabaseService> service_;
};

TEST_F(SampleTables, ShowAllRecordsOrThoseThatAreNotDeleted) {
    const auto table = Open(L"orders");
    EXPECT_EQ(Count(*Select(*table, Text(L""))), 2850);
    EXPECT_EQ(Count(*Select(*table, Text(L""), 1)), 3000);
    EXPECT_EQ(Count(*Select(*table, Text(L""), 0, Number(0))), 2850);
}

TEST_F(SampleTables, ComeInTheOrderOfEveryIndexOfOrders) {
    for (const char* tag : {"ID", "CUSTOMER", "UCUST", "ORDERED", "AMOUNT", "PAID", "CTRYDATE", "CUSTDESC"}) {
        const auto table = Open(L"orders");
        const std::string name = tag;
        ASSERT_TRUE(OpenIndex(*table, std::wstring(name.begin(), name.end()))) << tag;
        EXPECT_EQ(Numbers(*Select(*table, Text(L""), 1)), StatedOrder("orders", tag)) << tag;
    }
}

TEST_F(SampleTables, AreCountedByConditionsAsByWalking) {
    const auto table = Open(L"orders");
    const auto all = Select(*table, Text(L""));
    com::ComPtr<ZuDataField> amount;
    all->get_Item(Text(L"AMOUNT"), amount.put());
    LONG expected = 0;
    for (VARIANT_BOOL eof = VARIANT_FALSE; all->get_Eof(0, &eof), eof == VARIANT_FALSE; all->MoveNext(-1)) {
        com::Variant value;
        amount->get_Value(value.put());
        if (value.ToDouble() > 100) ++expected;
    }
    EXPECT_GT(expected, 100);
    EXPECT_EQ(Count(*Select(*table, Text(L"AMOUNT > 100"))), expected);
}

TEST_F(SampleTables, AreFoundByKey) {
    const auto table = Open(L"orders");
    ASSERT_TRUE(OpenIndex(*table, L"ID"));
    const std::vector<LONG> order = StatedOrder("orders", "ID");
    com::ComPtr<DataIndex> index;
    table->CurrentIndex(0, index.put());
    com::ComPtr<DataKeyFields> keys;
    index->KeyFields(keys.put());
    com::ComPtr<DataKeyField> key;
    ASSERT_EQ(keys->Item(Number(0), key.put()), S_OK);
    const auto all = Select(*table, Text(L""));
    all->Move(1234, 0);
    com::ComPtr<ZuDataField> id;
    all->get_Item(Text(L"ID"), id.put());
    com::Variant value;
    id->get_Value(value.put());
    key->put_Value(value);
    com::ComPtr<IDispatch> found;
    ASSERT_EQ(table->Seek(index.get(), 0, 0, 0, com::Variant::Missing(), found.put()), S_OK);
    LONG expected = 0;
    all->get_RecordNumber(&expected);
    EXPECT_EQ(Numbers(*found.as<ZuDataView>()), std::vector<LONG>{expected});
}

TEST_F(SampleTables, AFaultyConditionNamesItsPositionAndGivesNoView) {
    const auto table = Open(L"orders");
    com::ComPtr<IDispatch> view;
    EXPECT_EQ(
        table->Select(Text(L"AMOUNT >"), com::Variant::Missing(), 0, com::Variant::Missing(), view.put()),
        static_cast<HRESULT>(0x80041017));
    EXPECT_FALSE(view);
    EXPECT_TRUE(ErrorText().starts_with(L"The condition cannot be understood at position 9: "))
        << com::Bstr(ErrorText()).get();
    EXPECT_EQ(
        table->Select(Text(L"COLOUR = 1"), com::Variant::Missing(), 0, com::Variant::Missing(), view.put()),
        static_cast<HRESULT>(0x80041017));
    EXPECT_NE(ErrorText().find(L"COLOUR"), std::wstring::npos);
}

TEST_F(SampleTables, MissingAndForeignFilesAreRefusedWithAReason) {
    com::Bstr folder(L"DBF|C:\\no such folder");
    com::Bstr table(L"orders");
    com::ComPtr<IDispatch> opened;
    EXPECT_TRUE(FAILED(service_->OpenTable(folder.address(), table.address(), opened.put())));
    EXPECT_NE(ErrorText().find(L"no such folder"), std::wstring::npos);
}

TEST_F(SampleTables, AreReadByScriptsFieldByField) {
    const auto table = Open(L"vfp");
    const auto made = Select(*table, Text(L""));
    const LateBound view(made.get());
    const LateBound fields = view.Object(L"Fields");
    const LONG count = fields.Get(L"Count").ToLong();
    EXPECT_GT(count, 0);
    for (LONG i = 0; i < count; ++i) {
        const LateBound field = fields.Object(L"Item", {Number(i)});
        const com::Variant value = field.Default();
        EXPECT_EQ(field.result(), S_OK) << com::Bstr(field.error()).get();
        EXPECT_NE(value.type(), VT_DECIMAL);
    }
}

}  // namespace
}  // namespace zu::test
