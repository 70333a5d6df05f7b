#include "portable/textio/Encoding.h"

#include <gtest/gtest.h>

namespace zu::textio {
namespace {

TEST(Encoding, WritesTheBytesOfTheCodePage) {
    const Encoding western(*text::CodePage::Find(1252));
    EXPECT_EQ(western.Encode(u"Z\u00FCrich \u20AC"), "Z\xFCrich \x80");
    const Encoding cyrillic(*text::CodePage::Find(1251));
    EXPECT_EQ(cyrillic.Encode(u"\u0416"), "\xC6");
}

TEST(Encoding, WritesMissingCharactersAsQuestionMarksAndCountsThem) {
    const Encoding encoding(*text::CodePage::Find(1252));
    std::string bytes;
    EXPECT_EQ(encoding.Append(u"a\u0416\u4E2Db", bytes), 2U);
    EXPECT_EQ(bytes, "a??b");
}

TEST(Encoding, KeepsNulAndControlCharacters) {
    const Encoding encoding(*text::CodePage::Find(1252));
    using namespace std::string_literals;
    EXPECT_EQ(encoding.Encode(u"a\0b\x1A"s), "a\0b\x1A"s);
}

TEST(Encoding, WritesPagesOfSeveralBytes) {
    const Encoding encoding(*text::CodePage::Find(65001));
    EXPECT_FALSE(encoding.isSingleByte());
    EXPECT_EQ(encoding.Encode(u"\u00FC\U0001F600"), "\xC3\xBC\xF0\x9F\x98\x80");
}

TEST(Encoding, CountsMissingCharactersOfDoubleBytePages) {
    const text::CodePage* page = text::CodePage::Find(932);
    ASSERT_NE(page, nullptr);
    const Encoding encoding(*page);
    std::string bytes;
    EXPECT_EQ(encoding.Append(u"\u3042\u0E01\U0001F600x", bytes), 2U);
    EXPECT_EQ(bytes, "\x82\xA0??x");
}

}  // namespace
}  // namespace zu::textio
