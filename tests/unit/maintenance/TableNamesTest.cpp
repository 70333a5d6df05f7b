#include <gtest/gtest.h>

#include "host/technologies/dbf/TablePath.h"
#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"
#include "portable/files/Path.h"

namespace zu::dbf::test {
namespace {

class NewTables : public ::testing::Test {
protected:
    NewTables() {
        for (const char* name :
             {"/data/b.dbf", "/data/A.DBF", "/data/c.txt", "/data/b.fpt", "/data/sub/d.dbf"})
            files.Put(name, {});
    }
    ErrorKind KindOf(std::string_view database, std::string_view table) {
        try {
            PathOfNewTable(files, "/data", database, table);
        } catch (const Error& error) {
            return error.kind();
        }
        return ErrorKind::Internal;
    }
    files::MemoryFiles files;
};

TEST_F(NewTables, TheNamesOfAFolderAreSortedWithoutRegardToCase) {
    EXPECT_EQ(TableNames(files, "/data", ""), (std::vector<std::string>{"A", "b"}));
    EXPECT_EQ(TableNames(files, "/data", "sub"), (std::vector<std::string>{"d"}));
}

TEST_F(NewTables, ADatabaseThatIsOneFileHasOneTable) {
    EXPECT_EQ(TableNames(files, "/data", "b"), (std::vector<std::string>{"b"}));
    EXPECT_EQ(TableNames(files, "/data", "B.dbf"), (std::vector<std::string>{"b"}));
}

TEST_F(NewTables, ADatabaseThatIsNotThereIsReported) {
    EXPECT_THROW(TableNames(files, "/data", "none"), Error);
}

TEST_F(NewTables, ANewTableLiesInTheFolderOfItsDatabase) {
    // Windows joins names with a backslash.
    const std::string sub = files::Join("/data", "sub");
    EXPECT_EQ(PathOfNewTable(files, "/data", "", "new"), files::Join("/data", "new.dbf"));
    EXPECT_EQ(PathOfNewTable(files, "/data", "sub", " new.DBF "), files::Join(sub, "new.DBF"));
    EXPECT_EQ(PathOfNewTable(files, "/data", "new.dbf", ""), files::Join("/data", "new.dbf"));
    EXPECT_EQ(PathOfNewTable(files, "/data", "sub/new", "1"), files::Join("/data", "sub/new") + ".dbf");
}

TEST_F(NewTables, NamesThatLeadElsewhereOrThatWindowsForbidsAreRefused) {
    for (const char* name : {"", "../x", "con", "NUL.dbf", "lpt1", "a*b", "a?", "x<", ".hidden", "end. "})
        EXPECT_EQ(KindOf("", name), ErrorKind::InvalidArgument) << name;
    EXPECT_EQ(KindOf("", std::string(300, 'x')), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf("none", "x"), ErrorKind::NotFound);
    EXPECT_EQ(KindOf("", "none/x"), ErrorKind::NotFound);
}

}  // namespace
}  // namespace zu::dbf::test
