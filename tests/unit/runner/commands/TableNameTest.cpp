#include "runner/commands/TableName.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "portable/error/Error.h"
#include "runner/commands/WildcardMatch.h"

namespace zu::runner::commands {
namespace {

using Words = std::vector<std::wstring>;

std::wstring CurrentFolder() {
    wchar_t folder[MAX_PATH + 1] = {};
    GetCurrentDirectoryW(MAX_PATH, folder);
    return folder;
}

/// A service that knows three tables, and what it was asked.
struct Database {
    std::wstring asked;
    ListTables List() {
        return [this](const std::wstring& database) {
            asked = database;
            return Words{L"customers", L"Orders", L"orders2"};
        };
    }
    Words Shown(std::wstring_view word, const std::wstring& folder = {}) {
        Words shown;
        for (const TableName& name : TablesOf(word, folder, List()))
            shown.push_back(name.shown);
        return shown;
    }
};

ErrorKind RefusalOf(std::wstring_view word) {
    Database database;
    try {
        TablesOf(word, {}, database.List());
    } catch (const Error& error) {
        return error.kind();
    }
    return ErrorKind::Internal;
}

TEST(WildcardMatch, StarsAndQuestionMarksMatchWithoutRegardToCase) {
    EXPECT_TRUE(WildcardMatch(L"*", L""));
    EXPECT_TRUE(WildcardMatch(L"o*S", L"Orders"));
    EXPECT_TRUE(WildcardMatch(L"*d*r*", L"orders"));
    EXPECT_TRUE(WildcardMatch(L"?rders", L"Orders"));
    EXPECT_TRUE(WildcardMatch(L"\u00C4*", L"\u00E4rger"));
    EXPECT_FALSE(WildcardMatch(L"o?", L"orders"));
    EXPECT_FALSE(WildcardMatch(L"*x", L"orders"));
    EXPECT_FALSE(WildcardMatch(L"", L"orders"));
}

TEST(WildcardMatch, ManyStarsDoNotTakeForever) {
    EXPECT_FALSE(WildcardMatch(L"*a*a*a*a*a*a*a*a*a*a*a*b", std::wstring(5000, L'a')));
}

TEST(TableName, APathIsAFolderAndAFile) {
    const TableName name = TableOf(L"C:\\data\\orders.dbf", {});
    EXPECT_EQ(name.database, L"C:\\data\\");
    EXPECT_EQ(name.table, L"orders.dbf");
    EXPECT_EQ(name.shown, L"C:\\data\\orders.dbf");
    EXPECT_EQ(name.definition(), L"C:\\data\\>orders.dbf");
}

TEST(TableName, RelativePathsStartAtTheFolderOrWhereTheUserIs) {
    EXPECT_EQ(TableOf(L"sub/orders", L"C:\\data").database, L"C:\\data\\sub\\");
    EXPECT_EQ(TableOf(L"C:\\x\\orders", L"C:\\data").database, L"C:\\x\\");
    const std::wstring here = CurrentFolder();
    EXPECT_EQ(TableOf(L"orders", {}).database, here.ends_with(L'\\') ? here : here + L"\\");
}

TEST(TableName, TheFormOfTheFunctionsIsTakenAsItIs) {
    const TableName name = TableOf(L"sales>orders", L"C:\\data");
    EXPECT_EQ(name.database, L"sales");
    EXPECT_EQ(name.table, L"orders");
    EXPECT_EQ(name.definition(), L"sales>orders");
    EXPECT_EQ(TableOf(L"DBF|C:\\data\\orders", {}).definition(), L"DBF|C:\\data\\orders");
}

TEST(TableName, OneTableIsNoWildcardNoFolderAndNotNothing) {
    for (const std::wstring& word : {std::wstring(L"o*"), std::wstring(), CurrentFolder()})
        EXPECT_THROW(TableOf(word, {}), Error) << word;
}

TEST(TableName, WildcardsStandForTheTablesThatMatch) {
    Database database;
    EXPECT_EQ(database.Shown(L"C:\\data\\o*.dbf"), (Words{L"C:\\data\\Orders", L"C:\\data\\orders2"}));
    EXPECT_EQ(database.asked, L"C:\\data\\");
    EXPECT_EQ(database.Shown(L"*", L"C:\\data"), (Words{L"customers", L"Orders", L"orders2"}));
    EXPECT_EQ(database.asked, L"C:\\data");
    EXPECT_EQ(database.Shown(L"sub/*.*"), (Words{L"sub/customers", L"sub/Orders", L"sub/orders2"}));
    EXPECT_EQ(database.Shown(L"C:\\data\\orders.*"), Words{L"C:\\data\\Orders"});
    EXPECT_EQ(database.Shown(L"sales>orders?"), Words{L"sales>orders2"});
    EXPECT_EQ(database.asked, L"sales");
}

TEST(TableName, AFolderStandsForAllOfItsTables) {
    Database database;
    const std::wstring here = CurrentFolder();
    EXPECT_EQ(database.Shown(here).size(), 3U);
    EXPECT_EQ(database.asked, here);
    EXPECT_EQ(database.Shown(L".")[0], L".\\customers");
    EXPECT_EQ(database.Shown(L"./")[0], L"./customers");
}

TEST(TableName, APatternThatMatchesNothingIsAFailure) {
    EXPECT_EQ(RefusalOf(L"C:\\data\\x*"), ErrorKind::NotFound);
    EXPECT_EQ(RefusalOf(L"sales>x*"), ErrorKind::NotFound);
}

TEST(TableName, WildcardsStandInTheLastPartOnly) {
    EXPECT_EQ(RefusalOf(L"C:\\d*\\orders"), ErrorKind::InvalidArgument);
    EXPECT_EQ(RefusalOf(L""), ErrorKind::InvalidArgument);
}

}  // namespace
}  // namespace zu::runner::commands
