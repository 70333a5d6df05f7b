#include "runner/TextEncoding.h"

#include <gtest/gtest.h>

namespace zu::runner {
namespace {

using namespace std::string_literals;

TEST(TextEncoding, ReadsUtf8WithAndWithoutMark) {
    EXPECT_EQ(DecodeFile("\xC3\xA9\xE2\x82\xAC"), L"\u00E9\u20AC");
    EXPECT_EQ(DecodeFile("\xEF\xBB\xBF\xC3\xA9"), L"\u00E9");
    EXPECT_EQ(DecodeFile("\xF0\x9F\x98\x80"), L"\xD83D\xDE00");
}

TEST(TextEncoding, ReadsUtf16WithMark) {
    EXPECT_EQ(DecodeFile("\xFF\xFE\x41\x00\xAC\x20"s), L"A\u20AC");
    EXPECT_EQ(DecodeFile("\xFE\xFF\x00\x41\x20\xAC"s), L"A\u20AC");
}

TEST(TextEncoding, RecognisesUtf16WithoutMark) {
    EXPECT_EQ(DecodeFile("A\0B\0"s), L"AB");
    EXPECT_EQ(DecodeFile("\0A\0B"s), L"AB");
}

TEST(TextEncoding, FallsBackToAnsi) {
    EXPECT_EQ(DecodeFile("caf\xE9"), L"caf\u00E9");
}

TEST(TextEncoding, ReadsTheEmptyFileAndLoneMarks) {
    EXPECT_EQ(DecodeFile(""), L"");
    EXPECT_EQ(DecodeFile("\xEF\xBB\xBF"), L"");
    EXPECT_EQ(DecodeFile("\xFF\xFE"), L"");
    EXPECT_EQ(DecodeFile("A"), L"A");
}

TEST(TextEncoding, DropsTheOddByteOfACutUtf16File) {
    EXPECT_EQ(DecodeFile("\xFF\xFE\x41\x00\x42"s), L"A");
}

}  // namespace
}  // namespace zu::runner
