#include "portable/text/CodePage.h"

#include <gtest/gtest.h>

namespace zu::text {
namespace {

std::u16string Decoded(const CodePage& set, std::string_view bytes) {
    std::u16string text;
    set.Decode(bytes, text);
    return text;
}

class EverySingleByteSet : public testing::TestWithParam<unsigned> {};

TEST_P(EverySingleByteSet, GivesEveryDefinedByteBack) {
    const CodePage* set = CodePage::Find(GetParam());
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->number(), GetParam());
    EXPECT_TRUE(set->isSingleByte());
    int defined = 0;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::string bytes(1, static_cast<char>(byte));
        const std::u16string text = Decoded(*set, bytes);
        ASSERT_EQ(text.size(), 1U);
        if (byte < 0x80) {
            EXPECT_EQ(text[0], byte);
        }
        if (text[0] == u'\uFFFD') continue;
        ++defined;
        EXPECT_EQ(set->Encode(text), bytes) << byte;
    }
    EXPECT_GE(defined, 128 + 90);
}

TEST_P(EverySingleByteSet, ChangesCaseThereAndBackWithinTheSet) {
    const CodePage& set = *CodePage::Find(GetParam());
    for (unsigned byte = 0; byte < 128; ++byte) {
        const bool small = byte >= 'a' && byte <= 'z';
        const bool capital = byte >= 'A' && byte <= 'Z';
        EXPECT_EQ(set.upper()[byte], small ? byte - 32 : byte);
        EXPECT_EQ(set.lower()[byte], capital ? byte + 32 : byte);
    }
    for (unsigned byte = 128; byte < 256; ++byte) {
        // Upper of upper and lower of lower change nothing more.
        EXPECT_EQ(set.upper()[set.upper()[byte]], set.upper()[byte]) << byte;
        EXPECT_EQ(set.lower()[set.lower()[byte]], set.lower()[byte]) << byte;
    }
}

INSTANTIATE_TEST_SUITE_P(CodePage, EverySingleByteSet,
                         testing::Values(437, 620, 737, 850, 852, 857, 860, 861, 863, 865, 866, 874, 895,
                                         1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 10000, 10006, 10007,
                                         10029, 28591, 28592, 28605),
                         [](const auto& set) { return std::to_string(set.param); });

TEST(CodePage, ReadsTheLettersOfEachRegion) {
    EXPECT_EQ(Decoded(*CodePage::Find(437), "\x81\x9A\xE1"), u"\u00FC\u00DC\u00DF");
    EXPECT_EQ(Decoded(*CodePage::Find(850), "\x81\xE1\xD0"), u"\u00FC\u00DF\u00F0");
    EXPECT_EQ(Decoded(*CodePage::Find(852), "\x86\xAC"), u"\u0107\u010C");
    EXPECT_EQ(Decoded(*CodePage::Find(866), "\x8F\xE0\xA8"), u"\u041F\u0440\u0438");
    EXPECT_EQ(Decoded(*CodePage::Find(895), "\x9B\xA9\x8F"), u"\u0160\u0159\u00C1");
    EXPECT_EQ(Decoded(*CodePage::Find(620), "\x86\xA7\x92\xA6"), u"\u0105\u017C\u0142\u017A");
    EXPECT_EQ(Decoded(*CodePage::Find(1250), "\x8A\xE8"), u"\u0160\u010D");
    EXPECT_EQ(Decoded(*CodePage::Find(1251), "\xCF\xF0\xE8"), u"\u041F\u0440\u0438");
    EXPECT_EQ(Decoded(*CodePage::Find(1252), "\x80\xE4\xFF"), u"\u20AC\u00E4\u00FF");
    EXPECT_EQ(Decoded(*CodePage::Find(1253), "\xC1\xE1"), u"\u0391\u03B1");
    EXPECT_EQ(Decoded(*CodePage::Find(1255), "\xE0"), u"\u05D0");
    EXPECT_EQ(Decoded(*CodePage::Find(1257), "\xC0"), u"\u0104");
    EXPECT_EQ(Decoded(*CodePage::Find(874), "\xA1"), u"\u0E01");
    EXPECT_EQ(Decoded(*CodePage::Find(10000), "\x80\xDB"), u"\u00C4\u20AC");
    EXPECT_EQ(Decoded(*CodePage::Find(10007), "\x80"), u"\u0410");
    EXPECT_EQ(Decoded(*CodePage::Find(28591), "\x80\xFC"), u"\u0080\u00FC");
}

TEST(CodePage, AppendsToWhatIsThere) {
    std::u16string text = u"x";
    CodePage::Default().Decode("y", text);
    EXPECT_EQ(text, u"xy");
}

TEST(CodePage, ReplacesUndefinedBytes) {
    EXPECT_EQ(Decoded(*CodePage::Find(1253), "a\xAA"), u"a\uFFFD");
    EXPECT_EQ(Decoded(*CodePage::Find(874), "\xDB"), u"\uFFFD");
}

TEST(CodePage, KeepsTheControlCharactersOfWindowsSets) {
    EXPECT_EQ(Decoded(CodePage::Default(), "\x81\x8D"), (std::u16string{char16_t{0x81}, char16_t{0x8D}}));
}

TEST(CodePage, NamesTheFirstCharacterThatIsMissing) {
    std::size_t bad = 99;
    EXPECT_FALSE(CodePage::Default().Encode(u"ab\u0416x", &bad));
    EXPECT_EQ(bad, 2U);
    EXPECT_FALSE(CodePage::Default().Encode(u"\uFFFD"));
    EXPECT_EQ(CodePage::Default().Encode(std::u16string_view(u"a\0b", 3)), std::string("a\0b", 3));
}

TEST(CodePage, ChangesCaseBeyondAscii) {
    const CodePage& ansi = CodePage::Default();
    EXPECT_EQ(ansi.upper()[0xE4], 0xC4);
    EXPECT_EQ(ansi.lower()[0xC4], 0xE4);
    EXPECT_EQ(ansi.upper()[0xFF], 0x9F);
    EXPECT_EQ(ansi.upper()[0xDF], 0xDF);  // no single capital
    EXPECT_EQ(CodePage::Find(866)->upper()[0xE0], 0x90);
    EXPECT_EQ(CodePage::Find(437)->upper()[0x81], 0x9A);
    EXPECT_EQ(CodePage::Find(437)->upper()[0x85], 0x85);  // its capital is not in the set
}

TEST(CodePage, FindsSetsByTheMarkOfATable) {
    const std::pair<int, unsigned> marks[] = {
        {0x01, 437},   {0x02, 850},   {0x03, 1252},  {0x04, 10000}, {0x57, 1252}, {0x64, 852},  {0x65, 866},
        {0x66, 865},   {0x67, 861},   {0x68, 895},   {0x69, 620},   {0x6A, 737},  {0x6B, 857},  {0x6C, 863},
        {0x78, 950},   {0x79, 949},   {0x7A, 936},   {0x7B, 932},   {0x7C, 874},  {0x7D, 1255}, {0x7E, 1256},
        {0x96, 10007}, {0x97, 10029}, {0x98, 10006}, {0xC8, 1250},  {0xC9, 1251}, {0xCA, 1254}, {0xCB, 1253},
        {0xCC, 1257},  {0x26, 866},   {0x24, 860},   {0x13, 932},   {0x88, 857}};
    for (const auto& [mark, number] : marks) {
        const CodePage* set = CodePage::FindByDbfMark(static_cast<std::uint8_t>(mark));
        ASSERT_NE(set, nullptr) << mark;
        EXPECT_EQ(set->number(), number) << mark;
    }
    EXPECT_EQ(CodePage::FindByDbfMark(0), nullptr);
    EXPECT_EQ(CodePage::FindByDbfMark(0xEE), nullptr);
}

TEST(CodePage, FindsSetsByTheirNames) {
    const std::pair<const char*, unsigned> names[] = {
        {"1252", 1252},        {"CP1252", 1252}, {"cp 850", 850},        {"ANSI 1251", 1251},
        {"OEM 866", 866},      {"UTF-8", 65001}, {"utf8", 65001},        {"ISO-8859-1", 28591},
        {"iso 8859-2", 28592}, {"88591", 28591}, {"windows-1250", 1250}, {"65001", 65001},
        {"Big5", 950},         {"GBK", 936},     {"Shift_JIS", 932},     {" 437\r", 437}};
    for (const auto& [name, number] : names) {
        const CodePage* set = CodePage::FindByName(name);
        ASSERT_NE(set, nullptr) << name;
        EXPECT_EQ(set->number(), number) << name;
    }
    for (const char* name : {"", "nonsense", "99999", "123456789012", "CP"}) {
        EXPECT_EQ(CodePage::FindByName(name), nullptr) << name;
    }
}

TEST(CodePage, KnowsUtf8AsASet) {
    const CodePage& set = *CodePage::Find(65001);
    EXPECT_FALSE(set.isSingleByte());
    EXPECT_EQ(Decoded(set, "\xC3\xA4"), u"\u00E4");
    EXPECT_EQ(set.Encode(u"\u00E4"), "\xC3\xA4");
    std::size_t bad = 0;
    EXPECT_FALSE(set.Encode(std::u16string{u'a', char16_t{0xD801}}, &bad));
    EXPECT_EQ(bad, 1U);
    EXPECT_EQ(set.upper()['a'], 'A');
    EXPECT_EQ(set.upper()[0xE4], 0xE4);
}

TEST(CodePage, ConvertsDoubleByteSets) {
    const CodePage& japanese = *CodePage::Find(932);
    EXPECT_FALSE(japanese.isSingleByte());
    EXPECT_EQ(Decoded(japanese, "A\x82\xA0Z"), u"A\u3042Z");
    EXPECT_EQ(japanese.Encode(u"A\u3042Z"), "A\x82\xA0Z");
    EXPECT_EQ(Decoded(*CodePage::Find(936), "\xC4\xE3"), u"\u4F60");
    EXPECT_EQ(Decoded(*CodePage::Find(949), "\xB0\xA1"), u"\uAC00");
    EXPECT_EQ(Decoded(*CodePage::Find(950), "\xA4\xA4"), u"\u4E2D");
    EXPECT_EQ(CodePage::Find(950)->Encode(u"\u4E2D"), "\xA4\xA4");
    std::size_t bad = 0;
    EXPECT_FALSE(japanese.Encode(u"ab\u00C4", &bad));
    EXPECT_EQ(bad, 2U);
}

TEST(CodePage, SurvivesALeadByteAtTheEndOfADoubleByteText) {
    const std::u16string text = Decoded(*CodePage::Find(932), "A\x82");
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text[0], u'A');
    EXPECT_LE(text.size(), 2U);
}

TEST(CodePage, AnswersNullForUnknownNumbers) {
    EXPECT_EQ(CodePage::Find(4711), nullptr);
}

}  // namespace
}  // namespace zu::text
