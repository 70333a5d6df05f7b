#include "portable/textio/ExportFormat.h"

#include <gtest/gtest.h>

namespace zu::textio {
namespace {

ExportFormat Preset(int preset) {
    ExportFormat format;
    format.ApplyPreset(preset);
    return format;
}

TEST(ExportFormat, HasNoMaskBeforeAPresetIsApplied) {
    const ExportFormat format;
    EXPECT_EQ(format.options().dateMask, u"");
    EXPECT_EQ(format.options().dateSeparator, u"");
}

TEST(ExportFormat, WithoutPresetHasTheCreatedValuesAndTheAnsiMask) {
    const ExportFormat format = Preset(0);
    const ExportOptions& options = format.options();
    EXPECT_EQ(options.dateForm, DateForm::Ansi);
    EXPECT_EQ(options.dateSeparator, u".");
    EXPECT_EQ(options.dateMask, u"yyyy.mm.dd");
    EXPECT_EQ(options.trueValue, u"");
    EXPECT_EQ(options.falseValue, u"");
    EXPECT_FALSE(options.stringsTrimmed);
    EXPECT_FALSE(options.stringsPadded);
    EXPECT_EQ(options.stringPad, u"");
    EXPECT_FALSE(options.stringsQuoted);
    EXPECT_FALSE(options.numbersTrimmed);
    EXPECT_FALSE(options.numbersPadded);
    EXPECT_EQ(options.numberPad, u"");
    EXPECT_FALSE(options.numbersQuoted);
    EXPECT_EQ(options.positiveSymbol, u"");
    EXPECT_EQ(options.negativeSymbol, u"");
    EXPECT_EQ(options.signPosition, 0);
    EXPECT_EQ(options.currencySignPosition, 0);
    EXPECT_EQ(options.currencySymbol, u"");
    EXPECT_EQ(options.currencySymbolPosition, 0);
    EXPECT_EQ(options.currencyPrecision, 4);
    EXPECT_EQ(options.separator, u"");
    EXPECT_EQ(options.quote, u"\"");
    EXPECT_EQ(options.lengthOfSingle, 20);
    EXPECT_EQ(options.lengthOfDouble, 20);
    EXPECT_EQ(options.decimalsForSingle, 7);
    EXPECT_EQ(options.decimalsForDouble, 7);
    EXPECT_EQ(options.lengthOfCurrency, 21);
    EXPECT_FALSE(options.omitDecimalPoint);
}

TEST(ExportFormat, DelimitedPresetQuotesAndTrimsTexts) {
    const ExportFormat format = Preset(kDelimited);
    const ExportOptions& options = format.options();
    EXPECT_EQ(options.dateForm, DateForm::YearMonthDay);
    EXPECT_EQ(options.dateMask, u"yyyymmdd");
    EXPECT_EQ(options.trueValue, u"T");
    EXPECT_EQ(options.falseValue, u"F");
    EXPECT_TRUE(options.stringsTrimmed);
    EXPECT_FALSE(options.stringsPadded);
    EXPECT_EQ(options.stringPad, u" ");
    EXPECT_TRUE(options.stringsQuoted);
    EXPECT_FALSE(options.numbersPadded);
    EXPECT_EQ(options.numberPad, u" ");
    EXPECT_EQ(options.negativeSymbol, u"-");
    EXPECT_EQ(options.separator, u",");
}

TEST(ExportFormat, FixedPresetPads) {
    const ExportFormat format = Preset(kFixed);
    const ExportOptions& options = format.options();
    EXPECT_EQ(options.dateMask, u"yyyymmdd");
    EXPECT_FALSE(options.stringsTrimmed);
    EXPECT_TRUE(options.stringsPadded);
    EXPECT_FALSE(options.stringsQuoted);
    EXPECT_TRUE(options.numbersPadded);
    EXPECT_EQ(options.separator, u"");
}

TEST(ExportFormat, SaysWhetherThePresetIsOne) {
    ExportFormat format;
    EXPECT_TRUE(format.ApplyPreset(1));
    EXPECT_TRUE(format.ApplyPreset(2));
    EXPECT_FALSE(format.ApplyPreset(3));
    EXPECT_EQ(format.preset(), 3);
}

TEST(ExportFormat, SeparatorAndArrangementRebuildTheMask) {
    ExportFormat format = Preset(kDelimited);
    format.SetDateSeparator(u"-");
    EXPECT_EQ(format.options().dateMask, u"yyyy-mm-dd");
    format.SetDateForm(0);
    EXPECT_EQ(format.options().dateMask, u"yyyy.mm.dd");
    EXPECT_EQ(format.options().dateSeparator, u".");
}

TEST(ExportFormat, AnsiKeepsItsPoint) {
    ExportFormat format = Preset(0);
    format.SetDateSeparator(u"/");
    EXPECT_EQ(format.options().dateSeparator, u".");
    EXPECT_EQ(format.options().dateMask, u"yyyy.mm.dd");
}

TEST(ExportFormat, BuildsEveryArrangement) {
    const char16_t* const masks[] = {u"yyyy.mm.dd",     u"dd--mm--yyyy",  u"mm--dd--yyyy",
                                     u"yyyy--mm--dd",   u"dd--mmm--yyyy", u"yyyy--mmm--dd",
                                     u"dd--mmmm--yyyy", u"yyyy--mmmm--dd"};
    for (int form = 0; form < 8; ++form) {
        ExportFormat format = Preset(kFixed);
        format.SetDateForm(form);
        if (form != 0) format.SetDateSeparator(u"--");
        EXPECT_EQ(format.options().dateMask, masks[form]) << form;
    }
}

TEST(ExportFormat, AMaskOfItsOwnMakesTheFormatCustomAndStays) {
    ExportFormat format = Preset(kDelimited);
    format.SetDateMask(u"dd of mmmm");
    EXPECT_EQ(format.options().dateForm, DateForm::Custom);
    format.SetDateSeparator(u"-");
    EXPECT_EQ(format.options().dateMask, u"dd of mmmm");
    EXPECT_EQ(format.options().dateSeparator, u"-");
}

TEST(ExportFormat, IgnoresArrangementsOutOfRange) {
    for (const int form : {8, -1, 9, -2, 1000}) {
        ExportFormat format = Preset(kDelimited);
        format.SetDateForm(form);
        EXPECT_EQ(format.options().dateForm, DateForm::YearMonthDay);
        EXPECT_EQ(format.options().dateMask, u"yyyymmdd");
    }
}

TEST(ExportFormat, KeepsTheFirstCharacterOfPadsAndQuote) {
    ExportFormat format = Preset(kDelimited);
    format.SetStringPad(u"abc");
    format.SetNumberPad(u"012");
    format.SetQuote(u"'x");
    EXPECT_EQ(format.options().stringPad, u"a");
    EXPECT_EQ(format.options().numberPad, u"0");
    EXPECT_EQ(format.options().quote, u"'");
    format.SetStringPad(u"");
    format.SetNumberPad(u"");
    format.SetQuote(u"");
    EXPECT_EQ(format.options().stringPad, u"");
    EXPECT_EQ(format.options().numberPad, u"");
    EXPECT_EQ(format.options().quote, u"");
}

TEST(ExportFormat, LengthsMustBeGreaterThanZero) {
    ExportFormat format = Preset(kFixed);
    for (const int length : {0, -1}) {
        format.SetLengthOfSingle(length);
        format.SetLengthOfDouble(length);
        format.SetLengthOfCurrency(length);
    }
    EXPECT_EQ(format.options().lengthOfSingle, 20);
    EXPECT_EQ(format.options().lengthOfDouble, 20);
    EXPECT_EQ(format.options().lengthOfCurrency, 21);
    format.SetLengthOfSingle(1);
    format.SetLengthOfDouble(2);
    format.SetLengthOfCurrency(3);
    EXPECT_EQ(format.options().lengthOfSingle, 1);
    EXPECT_EQ(format.options().lengthOfDouble, 2);
    EXPECT_EQ(format.options().lengthOfCurrency, 3);
}

TEST(ExportFormat, DecimalsMayBeZeroButNotLess) {
    ExportFormat format = Preset(kFixed);
    format.SetDecimalsForSingle(-1);
    format.SetDecimalsForDouble(-1);
    EXPECT_EQ(format.options().decimalsForSingle, 7);
    EXPECT_EQ(format.options().decimalsForDouble, 7);
    format.SetDecimalsForSingle(0);
    format.SetDecimalsForDouble(0);
    EXPECT_EQ(format.options().decimalsForSingle, 0);
    EXPECT_EQ(format.options().decimalsForDouble, 0);
}

}  // namespace
}  // namespace zu::textio
