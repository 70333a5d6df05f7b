#include "portable/grid/PlainText.h"

#include <gtest/gtest.h>

namespace zu::grid {
namespace {

TEST(ShownText, ShowsLineEndsAsBlanks) {
    EXPECT_EQ(ShownText(u"one\r\ntwo\nthree\tfour"), u"one two three four");
}

TEST(ShownText, CutsLongTextsWithoutSplittingACharacter) {
    EXPECT_EQ(ShownText(std::u16string(100'000, u'x')).size(), 512u);
    EXPECT_EQ(ShownText(u"ab\U0001F600", 3), u"ab");
    EXPECT_EQ(ShownText(u"ab\U0001F600", 4), u"ab\U0001F600");
}

TEST(ClipboardLine, SeparatesCellsByTabs) {
    EXPECT_EQ(ClipboardLine({u"a", u"", u"c"}), u"a\t\tc");
    EXPECT_EQ(ClipboardLine({}), u"");
}

TEST(ClipboardLine, QuotesOnlyWhatNeedsIt) {
    EXPECT_EQ(ClipboardLine({u"a b", u"say \"hi\"", u"x\ty", u"1\r\n2"}),
              u"a b\t\"say \"\"hi\"\"\"\t\"x\ty\"\t\"1\r\n2\"");
}

TEST(PastedText, LosesTheLineEndBehindACopiedCell) {
    EXPECT_EQ(WithoutFinalLineEnd(u"abc\r\n"), u"abc");
    EXPECT_EQ(WithoutFinalLineEnd(u"abc\n"), u"abc");
    EXPECT_EQ(WithoutFinalLineEnd(u"abc"), u"abc");
    EXPECT_EQ(WithoutFinalLineEnd(u"a\r\nb\r\n"), u"a\r\nb");
    EXPECT_EQ(WithoutFinalLineEnd(u""), u"");
}

TEST(SystemLineEnds, ComeOutAlikeWhateverTheyWere) {
    EXPECT_EQ(WithSystemLineEnds(u"a\nb\rc\r\nd"), u"a\r\nb\r\nc\r\nd");
    EXPECT_EQ(WithSystemLineEnds(u"\n\n"), u"\r\n\r\n");
    EXPECT_EQ(WithSystemLineEnds(u"plain"), u"plain");
}

}  // namespace
}  // namespace zu::grid
