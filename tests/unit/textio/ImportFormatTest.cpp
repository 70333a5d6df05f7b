#include "portable/textio/ImportFormat.h"

#include <gtest/gtest.h>

namespace zu::textio {
namespace {

ImportFormat Preset(int preset) {
    ImportFormat format;
    format.ApplyPreset(preset);
    return format;
}

TEST(ImportFormat, WithoutPresetChangesNothingAtAll) {
    for (const int preset : {0, 3, -1}) {
        const ImportFormat format = Preset(preset);
        EXPECT_EQ(format.preset(), kNoPreset);
        EXPECT_EQ(format.booleanLength(), 0);
        EXPECT_EQ(format.dateForm(), DateForm::Ansi);
        EXPECT_EQ(format.dateSeparator(), u"");
        EXPECT_EQ(format.dateMask(), u"");
        EXPECT_EQ(format.maskLength(), 0U);
        EXPECT_FALSE(format.stringsTrimmed());
        EXPECT_EQ(format.quote(), u"");
        EXPECT_EQ(format.lengthOfSingle(), 20);
        EXPECT_EQ(format.lengthOfDouble(), 20);
        EXPECT_EQ(format.lengthOfCurrency(), 21);
        EXPECT_EQ(format.separator(), u"");
    }
}

TEST(ImportFormat, DelimitedPresetHasQuoteAndComma) {
    const ImportFormat format = Preset(kDelimited);
    EXPECT_EQ(format.booleanLength(), 0);
    EXPECT_EQ(format.dateForm(), DateForm::YearMonthDay);
    EXPECT_EQ(format.dateMask(), u"yyyymmdd");
    EXPECT_EQ(format.maskLength(), 8U);
    EXPECT_FALSE(format.stringsTrimmed());
    EXPECT_EQ(format.quote(), u"\"");
    EXPECT_EQ(format.separator(), u",");
}

TEST(ImportFormat, FixedPresetTrimsAndDoesNotQuote) {
    const ImportFormat format = Preset(kFixed);
    EXPECT_EQ(format.booleanLength(), 1);
    EXPECT_EQ(format.dateMask(), u"yyyymmdd");
    EXPECT_EQ(format.maskLength(), 8U);
    EXPECT_TRUE(format.stringsTrimmed());
    EXPECT_EQ(format.quote(), u"");
    EXPECT_EQ(format.separator(), u"");
}

TEST(ImportFormat, LengthsMustBeGreaterThanZero) {
    ImportFormat format = Preset(kFixed);
    for (const int length : {0, -5}) {
        format.SetBooleanLength(length);
        format.SetLengthOfSingle(length);
        format.SetLengthOfDouble(length);
        format.SetLengthOfCurrency(length);
    }
    EXPECT_EQ(format.booleanLength(), 1);
    EXPECT_EQ(format.lengthOfSingle(), 20);
    EXPECT_EQ(format.lengthOfDouble(), 20);
    EXPECT_EQ(format.lengthOfCurrency(), 21);
    format.SetBooleanLength(5);
    format.SetLengthOfSingle(6);
    format.SetLengthOfDouble(7);
    format.SetLengthOfCurrency(8);
    EXPECT_EQ(format.booleanLength(), 5);
    EXPECT_EQ(format.lengthOfSingle(), 6);
    EXPECT_EQ(format.lengthOfDouble(), 7);
    EXPECT_EQ(format.lengthOfCurrency(), 8);
}

TEST(ImportFormat, ArrangementsOutOfRangeAreIgnored) {
    ImportFormat format = Preset(kDelimited);
    format.SetDateForm(8);
    format.SetDateForm(-1);
    EXPECT_EQ(format.dateForm(), DateForm::YearMonthDay);
    EXPECT_EQ(format.dateMask(), u"yyyymmdd");
}

TEST(ImportFormat, ArrangementAndSeparatorRebuildMaskAndLength) {
    ImportFormat format = Preset(kDelimited);
    format.SetDateForm(1);
    format.SetDateSeparator(u".");
    EXPECT_EQ(format.dateMask(), u"dd.mm.yyyy");
    EXPECT_EQ(format.maskLength(), 10U);
    format.SetDateForm(0);
    EXPECT_EQ(format.dateMask(), u"yyyy.mm.dd");
    EXPECT_EQ(format.dateSeparator(), u".");
}

TEST(ImportFormat, AMaskOfItsOwnKeepsTheLengthOfTheOneBefore) {
    ImportFormat format = Preset(kDelimited);
    format.SetDateMask(u"dd/mmm/yyyy");
    EXPECT_EQ(format.dateForm(), DateForm::Custom);
    EXPECT_EQ(format.maskLength(), 8U);
    format.SetDateSeparator(u"/");
    EXPECT_EQ(format.dateMask(), u"dd/mmm/yyyy");
    EXPECT_EQ(format.maskLength(), 11U);
}

TEST(ImportFormat, AnEmptySeparatorKeepsTheOneBefore) {
    ImportFormat format = Preset(kDelimited);
    format.SetSeparator(u"");
    EXPECT_EQ(format.separator(), u",");
    format.SetSeparator(u";;");
    EXPECT_EQ(format.separator(), u";;");
}

TEST(ImportFormat, AnEmptyQuoteTurnsQuotingOff) {
    ImportFormat format = Preset(kDelimited);
    format.SetQuote(u"");
    EXPECT_EQ(format.quote(), u"");
    format.SetQuote(u"'\"");
    EXPECT_EQ(format.quote(), u"'");
}

}  // namespace
}  // namespace zu::textio
