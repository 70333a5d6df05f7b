#include "host/technologies/dbf/TablePath.h"

#include <gtest/gtest.h>

#include "portable/files/Path.h"
#include "tests/unit/dbf/ErrorExpectation.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::dbf {
namespace {

/// Paths with "/" whatever the platform joins with.
std::string Slashes(std::string path) {
    for (char& c : path) {
        if (files::IsSeparator(c)) c = '/';
    }
    return path;
}

#ifdef _WIN32
constexpr const char* kRoot = "C:/";
#else
constexpr const char* kRoot = "/";
#endif

class TablePathTest : public testing::Test {
protected:
    TablePathTest() {
        for (const char* name : {"data/orders.dbf", "data/Customers.DBF", "data/sub/lines.dbf",
                                 "data/a.b.dbf", "data/forms.scx", "other/orders.dbf"}) {
            Put(system_, kRoot + std::string(name), "x");
        }
    }
    std::string Find(std::string_view database, std::string_view table) {
        const std::string path = Slashes(FindTable(system_, kRoot + std::string("data"), database, table));
        EXPECT_EQ(path.find(kRoot), 0U);
        return path.substr(std::string_view(kRoot).size());
    }
    void ExpectRefused(std::string_view database, std::string_view table) {
        ExpectError(ErrorKind::InvalidArgument, {"leads out of its folder"}, [&] { Find(database, table); });
    }
    void ExpectMissing(std::string_view database, std::string_view table) {
        ExpectError(ErrorKind::NotFound, {"data"}, [&] { Find(database, table); });
    }

    files::MemoryFiles system_;
};

TEST_F(TablePathTest, TakesTheExtensionAsOptional) {
    EXPECT_EQ(Find("", "orders"), "data/orders.dbf");
    EXPECT_EQ(Find("", "orders.dbf"), "data/orders.dbf");
    EXPECT_EQ(Find("", "a.b"), "data/a.b.dbf");
    EXPECT_EQ(Find("", "forms.scx"), "data/forms.scx");
}

TEST_F(TablePathTest, FindsTablesWithoutRegardToCase) {
    EXPECT_EQ(Find("", "ORDERS"), "data/orders.dbf");
    EXPECT_EQ(Find("", "customers"), "data/Customers.DBF");
    EXPECT_EQ(Find("", "CUSTOMERS.dbf"), "data/Customers.DBF");
}

TEST_F(TablePathTest, StartsInTheDataFolderOrAtTheRoot) {
    EXPECT_EQ(Find("sub", "lines"), "data/sub/lines.dbf");
    EXPECT_EQ(Find("sub/", "lines"), "data/sub/lines.dbf");
    EXPECT_EQ(Find(" sub ", " lines "), "data/sub/lines.dbf");
    EXPECT_EQ(Find(kRoot + std::string("other"), "orders"), "other/orders.dbf");
    EXPECT_EQ(Find("", "sub/lines"), "data/sub/lines.dbf");
}

TEST_F(TablePathTest, TakesADatabaseThatIsASingleTable) {
    for (const char* database : {"orders", "orders.dbf", "ORDERS", "Orders.Dbf"}) {
        for (const char* table : {"", "1", "2", "orders", "ORDERS.DBF"}) {
            EXPECT_EQ(Find(database, table), "data/orders.dbf") << database << " " << table;
        }
    }
    ExpectError(ErrorKind::NotFound, {"single table", "\"3\""}, [&] { Find("orders", "3"); });
    ExpectError(ErrorKind::NotFound, {"single table"}, [&] { Find("orders.dbf", "customers"); });
}

TEST_F(TablePathTest, RefusesNamesThatLeaveTheirFolder) {
    for (const char* name : {"../other/orders", "sub/../../other/orders", "..", "../data/orders",
                             "/etc/passwd", ".. /other/orders", ".../other/orders"}) {
        ExpectRefused("", name);
    }
    ExpectRefused("../other", "orders");
    ExpectRefused("sub/../..", "orders");
    ExpectRefused("sub", "../orders");
    ExpectError(ErrorKind::InvalidArgument, {"NUL"}, [&] { Find("", std::string_view("orders\0.dbf", 11)); });
#ifdef _WIN32
    ExpectRefused("", "..\\other\\orders");
    ExpectRefused("", "C:\\other\\orders");
    ExpectRefused("", "C:orders");
    ExpectRefused("", "orders:stream");
    ExpectRefused("", "\\other\\orders");
#endif
}

TEST_F(TablePathTest, SaysWhatDoesNotExist) {
    ExpectMissing("", "nothing");
    ExpectMissing("nowhere", "orders");
    ExpectError(ErrorKind::NotFound, {"\"nothing\"", "folder"}, [&] { Find("sub", "nothing"); });
    ExpectError(ErrorKind::InvalidArgument, {"folder", "table name is needed"}, [&] { Find("sub", ""); });
    ExpectError(ErrorKind::InvalidArgument, {"table name is needed"}, [&] { Find("", "  "); });
}

}  // namespace
}  // namespace zu::dbf
