#include "portable/text/Utf.h"

#include <gtest/gtest.h>

namespace zu::text {
namespace {

TEST(Utf, RoundTripsEveryLengthOfCharacter) {
    const std::u16string text = u"a\u00E4\u20AC\U0001F600z";
    EXPECT_EQ(ToUtf8(text), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z");
    EXPECT_EQ(ToUtf16(ToUtf8(text)), text);
}

TEST(Utf, RoundTripsEveryCharacter) {
    for (char32_t point = 0; point <= 0x10FFFF; point += point < 0x3000 ? 1 : 37) {
        if (point >= 0xD800 && point <= 0xDFFF) continue;
        std::u16string text;
        if (point < 0x10000) {
            text.push_back(static_cast<char16_t>(point));
        } else {
            text.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
            text.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
        }
        ASSERT_EQ(ToUtf16(ToUtf8(text)), text) << std::hex << static_cast<unsigned>(point);
    }
}

TEST(Utf, ReplacesLoneSurrogates) {
    EXPECT_EQ(ToUtf8(std::u16string{u'a', char16_t{0xD800}, u'b'}),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xDC00}}), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xD800}}), "\xEF\xBF\xBD");
}

TEST(Utf, ReplacesIllFormedBytesAndReadsOn) {
    EXPECT_EQ(ToUtf16("a\x80"
                      "b"),
              u"a\uFFFD"
              u"b");  // continuation without a start
    EXPECT_EQ(ToUtf16("\xC3"
                      "b"),
              u"\uFFFD"
              u"b");                                                      // cut short
    EXPECT_EQ(ToUtf16("\xE2\x82"), u"\uFFFD");                            // cut short at the end
    EXPECT_EQ(ToUtf16("\xC0\xAF"), u"\uFFFD\uFFFD");                      // overlong
    EXPECT_EQ(ToUtf16("\xE0\x80\xAF"), u"\uFFFD\uFFFD\uFFFD");            // overlong
    EXPECT_EQ(ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");            // a surrogate
    EXPECT_EQ(ToUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");  // beyond U+10FFFF
    EXPECT_EQ(ToUtf16("\xFF"), u"\uFFFD");
}

TEST(Utf, KeepsNulCharacters) {
    EXPECT_EQ(ToUtf16(std::string_view("a\0b", 3)), std::u16string(u"a\0b", 3));
    EXPECT_EQ(ToUtf8(std::u16string_view(u"a\0b", 3)), std::string("a\0b", 3));
}

}  // namespace
}  // namespace zu::text
