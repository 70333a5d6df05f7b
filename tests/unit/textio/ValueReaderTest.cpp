#include "portable/textio/ValueReader.h"

#include <gtest/gtest.h>

#include "portable/calendar/Calendar.h"

namespace zu::textio {
namespace {

using Value = ReadValue<char>;
using Kind = Value::Kind;

ImportFormat Preset(int preset) {
    ImportFormat format;
    format.ApplyPreset(preset);
    return format;
}

Value Read(int type, std::string_view token, int preset = kDelimited) {
    ValueReader reader(Preset(preset));
    return reader.Read<char>({type, 10}, token);
}

TEST(ValueReader, TakesItsWidthsFromTypeAndFormat) {
    ImportFormat format = Preset(kFixed);
    format.SetLengthOfSingle(5);
    format.SetLengthOfDouble(6);
    format.SetLengthOfCurrency(7);
    format.SetBooleanLength(4);
    const ValueReader reader(format);
    EXPECT_EQ(reader.WidthOf({2, 99}), 6U);
    EXPECT_EQ(reader.WidthOf({3, 99}), 11U);
    EXPECT_EQ(reader.WidthOf({4, 99}), 5U);
    EXPECT_EQ(reader.WidthOf({5, 99}), 6U);
    EXPECT_EQ(reader.WidthOf({6, 99}), 7U);
    EXPECT_EQ(reader.WidthOf({7, 99}), 8U);
    EXPECT_EQ(reader.WidthOf({8, 99}), 99U);
    EXPECT_EQ(reader.WidthOf({11, 99}), 4U);
    EXPECT_EQ(reader.WidthOf({14, 99}), 99U);
    EXPECT_EQ(reader.WidthOf({17, 99}), 3U);
    EXPECT_EQ(reader.WidthOf({100, 99}), 255U);
    EXPECT_EQ(reader.WidthOf({8, -1}), 0U);
}

TEST(ValueReader, ReadsIntegersOfSixteenBits) {
    for (const int type : {2, 17}) {
        EXPECT_EQ(Read(type, " -32768 ").kind, Kind::Integer16);
        EXPECT_EQ(Read(type, "-32768").integer, -32768);
        EXPECT_EQ(Read(type, "+7").integer, 7);
        EXPECT_EQ(Read(type, "32768").kind, Kind::OtherNumber);
    }
}

TEST(ValueReader, ReadsIntegersOfThirtyTwoBits) {
    EXPECT_EQ(Read(3, "2147483647").integer, 2147483647);
    EXPECT_EQ(Read(3, "-2147483648").kind, Kind::Integer32);
    EXPECT_EQ(Read(3, "2147483648").kind, Kind::OtherNumber);
    EXPECT_EQ(Read(3, "99999999999999999999").kind, Kind::OtherNumber);
}

TEST(ValueReader, TakesBlankNumbersForZero) {
    for (const int type : {2, 3, 17})
        EXPECT_EQ(Read(type, "   ").integer, 0);
    for (const int type : {4, 5, 6, 14}) {
        EXPECT_EQ(Read(type, "").number, 0);
        EXPECT_NE(Read(type, "").kind, Kind::OtherNumber);
    }
}

TEST(ValueReader, ReadsFloatingPointNumbers) {
    for (const int type : {5, 6, 14}) {
        EXPECT_EQ(Read(type, " -12.50").kind, Kind::Double);
        EXPECT_EQ(Read(type, " -12.50").number, -12.5);
        EXPECT_EQ(Read(type, "1.5E+20").number, 1.5e20);
        EXPECT_EQ(Read(type, ".5").number, 0.5);
        EXPECT_EQ(Read(type, "5.").number, 5);
    }
    EXPECT_EQ(Read(4, "0.1").kind, Kind::Single);
    EXPECT_EQ(Read(4, "0.1").number, static_cast<double>(0.1F));
    EXPECT_EQ(Read(4, "1e39").kind, Kind::OtherNumber);
}

TEST(ValueReader, LeavesOtherNumbersToThePlatform) {
    for (const char* token : {"abc", "1,5", "(5)", "&H10", "1 2", "-", ".", "1e", "1e400", "--1", "12\xFC"}) {
        EXPECT_EQ(Read(5, token).kind, Kind::OtherNumber) << token;
        EXPECT_EQ(Read(5, token).text, token);
        EXPECT_EQ(Read(3, token).kind, Kind::OtherNumber) << token;
    }
    EXPECT_EQ(Read(3, "2.5").kind, Kind::OtherNumber);
    EXPECT_EQ(Read(5, std::string(300, '9')).kind, Kind::OtherNumber);
}

TEST(ValueReader, ReadsDatesUnderTheMask) {
    EXPECT_EQ(Read(7, "20240131").kind, Kind::Date);
    EXPECT_EQ(Read(7, "20240131").integer, calendar::ToJulianDay({2024, 1, 31}));
    EXPECT_EQ(Read(7, "  ").kind, Kind::NoDate);
    EXPECT_EQ(Read(7, "").kind, Kind::NoDate);
    EXPECT_EQ(Read(7, "20240199").kind, Kind::BadDate);
    EXPECT_EQ(Read(7, "20240199").text, "20240199");
}

TEST(ValueReader, TrimsTextsOnTheRightWhenTheFormatSaysSo) {
    for (const int type : {8, 100}) {
        EXPECT_EQ(Read(type, " a b  ", kDelimited).text, " a b  ");
        EXPECT_EQ(Read(type, " a b  ", kFixed).text, " a b");
        EXPECT_EQ(Read(type, "   ", kFixed).text, "");
    }
}

TEST(ValueReader, HandsTruthValuesOn) {
    EXPECT_EQ(Read(11, "T").kind, Kind::Truth);
    EXPECT_EQ(Read(11, " x ").text, " x ");
}

TEST(ValueReader, TakesOtherTypesAsText) {
    EXPECT_EQ(Read(12, "x ", kFixed).kind, Kind::Text);
    EXPECT_EQ(Read(12, "x ", kFixed).text, "x ");
}

TEST(ValueReader, ReadsWideCharactersTheSameWay) {
    ValueReader reader(Preset(kDelimited));
    EXPECT_EQ(reader.Read<char16_t>({3, 0}, u" 42 ").integer, 42);
    EXPECT_EQ(reader.Read<char16_t>({7, 0}, u"20240131").integer, calendar::ToJulianDay({2024, 1, 31}));
    EXPECT_EQ(reader.Read<char16_t>({5, 0}, u"\uFF11").kind, ReadValue<char16_t>::Kind::OtherNumber);
}

}  // namespace
}  // namespace zu::textio
