#include "portable/files/Path.h"

#include <gtest/gtest.h>

namespace zu::files {
namespace {

TEST(Path, JoinsWithOneSeparator) {
    EXPECT_EQ(Join("", "b.dbf"), "b.dbf");
    EXPECT_EQ(Join("a/", "b.dbf"), "a/b.dbf");
#ifdef _WIN32
    EXPECT_EQ(Join("a", "b.dbf"), "a\\b.dbf");
    EXPECT_EQ(Join("a\\", "b.dbf"), "a\\b.dbf");
    EXPECT_EQ(Join("a", "C:\\b.dbf"), "C:\\b.dbf");
#else
    EXPECT_EQ(Join("a", "b.dbf"), "a/b.dbf");
    EXPECT_EQ(Join("a", "/b.dbf"), "/b.dbf");
#endif
}

TEST(Path, TakesPathsApart) {
    EXPECT_EQ(Parent("/a/b.dbf"), "/a");
    EXPECT_EQ(Parent("b.dbf"), "");
    EXPECT_EQ(Parent("/b.dbf"), "/");
    EXPECT_EQ(FileName("/a/b.dbf"), "b.dbf");
    EXPECT_EQ(FileName("/a/"), "");
    EXPECT_EQ(Stem("/a.x/b.c.dbf"), "b.c");
    EXPECT_EQ(Extension("/a.x/b.c.dbf"), ".dbf");
    EXPECT_EQ(Extension("/a.x/b"), "");
    EXPECT_EQ(Extension("/a/.hidden"), "");
    EXPECT_EQ(Stem("/a/.hidden"), ".hidden");
    EXPECT_EQ(WithExtension("/a.x/b", ".cdx"), "/a.x/b.cdx");
    EXPECT_EQ(WithExtension("/a.x/b.dbf", ".cdx"), "/a.x/b.cdx");
}

TEST(Path, KnowsRoots) {
    EXPECT_FALSE(IsAbsolute("a/b"));
    EXPECT_FALSE(IsAbsolute(""));
#ifdef _WIN32
    EXPECT_TRUE(IsAbsolute("C:\\a"));
    EXPECT_TRUE(IsAbsolute("c:/a"));
    EXPECT_TRUE(IsAbsolute("\\\\server\\share"));
    EXPECT_FALSE(IsAbsolute("C:a"));
    EXPECT_FALSE(IsAbsolute("\\a"));
    EXPECT_EQ(Parent("C:\\b.dbf"), "C:\\");
    EXPECT_EQ(Parent("C:\\a\\b.dbf"), "C:\\a");
    EXPECT_EQ(FileName("C:b.dbf"), "b.dbf");
    EXPECT_EQ(FileName("C:\\a\\b.dbf"), "b.dbf");
#else
    EXPECT_TRUE(IsAbsolute("/a"));
    EXPECT_EQ(FileName("a\\b.dbf"), "a\\b.dbf");
#endif
}

TEST(Path, ComparesNamesWithoutRegardToCase) {
    EXPECT_TRUE(SameName("Orders.DBF", "oRDERS.dbf"));
    EXPECT_TRUE(SameName("\xC3\x84.dbf", "\xC3\xA4.DBF"));
    EXPECT_FALSE(SameName("a", "ab"));
    EXPECT_FALSE(SameName("a", "b"));
}

}  // namespace
}  // namespace zu::files
