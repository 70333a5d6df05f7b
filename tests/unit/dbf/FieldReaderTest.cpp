#include "host/technologies/dbf/FieldReader.h"

#include <gtest/gtest.h>

#include <limits>

#include "host/technologies/dbf/MemoFields.h"
#include "portable/calendar/Calendar.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::dbf {
namespace {

using technologies::FieldType;
using technologies::Value;

/// One table with one record whose fields are read.
class OneRecord {
public:
    explicit OneRecord(const TableImage& image, unsigned codePage = 1252, bool blankNumbersAreNull = false)
        : image_(image.Bytes()) {
        files::MemoryFiles files;
        Put(files, "t.dbf", image_);
        header_ = DbfHeader::Read(*files.Open("t.dbf", {}));
        layout_ = TableLayout::Make(header_, *text::CodePage::Find(codePage), "T");
        blankNumbersAreNull_ = blankNumbersAreNull;
    }

    Value Read(std::size_t field) const {
        Value value;
        const auto* record = reinterpret_cast<const std::byte*>(image_.data()) + header_.headerLength;
        FieldReader(layout_, nullptr, blankNumbersAreNull_).Read(record, field, value);
        return value;
    }
    const TableLayout& layout() const { return layout_; }

private:
    std::string image_;
    DbfHeader header_;
    TableLayout layout_;
    bool blankNumbersAreNull_;
};

Value ReadOne(char type, std::string_view bytes, int decimals = 0, std::uint8_t version = 0x30) {
    TableImage image(version);
    image.Field("X", type, static_cast<int>(bytes.size()), decimals).Record(bytes);
    return OneRecord(image).Read(0);
}

void ExpectDecimal(const Value& value, std::uint64_t low, int scale, bool negative = false) {
    ASSERT_EQ(value.kind, Value::Kind::Decimal);
    EXPECT_EQ(value.decimal, (technologies::Decimal{low, 0, static_cast<std::uint8_t>(scale), negative}));
}

TEST(FieldReader, TakesThePaddingOffTexts) {
    EXPECT_EQ(ReadOne('C', "abc  ").text, u"abc");
    EXPECT_EQ(ReadOne('C', std::string_view("abc\0\0", 5)).text, u"abc");
    EXPECT_EQ(ReadOne('C', std::string_view("ab \0 ", 5)).text, u"ab");
    EXPECT_EQ(ReadOne('C', std::string_view("a\0b  ", 5)).text, std::u16string(u"a\0b", 3));
    EXPECT_EQ(ReadOne('C', "  abc").text, u"  abc");
    const Value blank = ReadOne('C', "     ");
    EXPECT_EQ(blank.kind, Value::Kind::Text);
    EXPECT_EQ(blank.text, u"");
}

TEST(FieldReader, DecodesTextsWithTheCodePage) {
    TableImage image;
    image.Field("X", 'C', 2).Record("\xCF\xF0");
    EXPECT_EQ(OneRecord(image, 1251).Read(0).text, u"\u041F\u0440");
    EXPECT_EQ(OneRecord(image, 1252).Read(0).text, u"\u00CF\u00F0");
}

TEST(FieldReader, ReadsNumbersWithTheFieldsScale) {
    ExpectDecimal(ReadOne('N', "   12.50", 2), 1250, 2);
    ExpectDecimal(ReadOne('N', "   12.5 ", 2), 1250, 2);
    ExpectDecimal(ReadOne('N', "      -5", 2), 500, 2, true);
    ExpectDecimal(ReadOne('N', "     1e3", 1), 10000, 1);
    ExpectDecimal(ReadOne('N', "  1.2345", 2), 12345, 4);  // nothing is rounded away
}

TEST(FieldReader, ReadsTwentyDigitsExactly) {
    const Value value = ReadOne('N', "12345678901234567890");
    EXPECT_EQ(value.decimal, (technologies::Decimal{12345678901234567890ULL, 0, 0, false}));
    const Value scaled = ReadOne('N', "1234567890123456789.", 4);
    EXPECT_EQ(scaled.decimal.scale, 4);
    EXPECT_EQ(scaled.decimal.high, 669U);  // 12345678901234567890000 = 669 * 2^64 + ...
}

TEST(FieldReader, ReadsBlankAndUnreadableNumbersAsZeroOrNull) {
    const std::string_view blanks[] = {"     ", "*****", "  .  ", "12A  ", std::string_view("\0\0\0\0\0", 5)};
    for (const std::string_view bytes : blanks) {
        ExpectDecimal(ReadOne('N', bytes, 2), 0, 2);
        EXPECT_EQ(ReadOne('F', bytes, 2).kind, Value::Kind::Double);
        EXPECT_EQ(ReadOne('F', bytes, 2).number, 0);
        for (const char type : {'N', 'F'}) {
            TableImage image;
            image.Field("X", type, 5, 2).Record(bytes);
            EXPECT_EQ(OneRecord(image, 1252, true).Read(0).kind, Value::Kind::Null);
        }
    }
}

TEST(FieldReader, ReadsFloats) {
    EXPECT_EQ(ReadOne('F', " 1.5e+10").number, 1.5e10);
    EXPECT_EQ(ReadOne('F', "  -3.25 ").number, -3.25);
}

TEST(FieldReader, ReadsDatesAndTakesImpossibleOnesAsNone) {
    const Value date = ReadOne('D', "20240229");
    ASSERT_EQ(date.kind, Value::Kind::DateTime);
    EXPECT_EQ(date.julianDay, calendar::ToJulianDay({2024, 2, 29}));
    EXPECT_EQ(date.milliseconds, 0);
    const std::string_view none[] = {"        ", "00000000", std::string_view("\0\0\0\0\0\0\0\0", 8),
                                     "   0  0 ", "0       ", "20230230",
                                     "20231301", "2023010A", "00000101"};
    for (const std::string_view bytes : none)
        EXPECT_EQ(ReadOne('D', bytes).kind, Value::Kind::Null) << bytes;
}

TEST(FieldReader, ReadsLogicals) {
    for (const char c : {'T', 't', 'Y', 'y'}) {
        EXPECT_EQ(ReadOne('L', std::string(1, c)).kind, Value::Kind::Boolean);
        EXPECT_TRUE(ReadOne('L', std::string(1, c)).boolean);
    }
    for (const char c : {'F', 'f', 'N', 'n'}) {
        EXPECT_EQ(ReadOne('L', std::string(1, c)).kind, Value::Kind::Boolean);
        EXPECT_FALSE(ReadOne('L', std::string(1, c)).boolean);
    }
    for (const char c : {'?', ' ', '\0', 'X'})
        EXPECT_EQ(ReadOne('L', std::string(1, c)).kind, Value::Kind::Null);
}

TEST(FieldReader, ReadsBinaryNumbers) {
    EXPECT_EQ(ReadOne('I', Little(0xFFFFFFFE, 4)).integer, -2);
    EXPECT_EQ(ReadOne('I', Little(0, 4)).kind, Value::Kind::Integer);
    EXPECT_EQ(ReadOne('B', DoubleBytes(-1.25), 2).number, -1.25);
    const Value money = ReadOne('Y', Little(static_cast<std::uint64_t>(-12345), 8));
    EXPECT_EQ(money.kind, Value::Kind::Currency);
    EXPECT_EQ(money.integer, -12345);
}

TEST(FieldReader, ReadsDateTimesToTheSecond) {
    const auto at = [](std::int32_t day, std::int32_t milliseconds) {
        return ReadOne('T', Little(static_cast<std::uint32_t>(day), 4) +
                                Little(static_cast<std::uint32_t>(milliseconds), 4));
    };
    const Value noon = at(2440588, 43'200'000);
    EXPECT_EQ(noon.julianDay, 2440588);
    EXPECT_EQ(noon.milliseconds, 43'200'000);
    EXPECT_EQ(at(2440588, 43'199'999).milliseconds, 43'200'000);
    EXPECT_EQ(at(2440588, 43'200'001).milliseconds, 43'200'000);
    EXPECT_EQ(at(2440588, 43'200'500).milliseconds, 43'200'500);
    EXPECT_EQ(at(2440588, 86'399'999).julianDay, 2440589);
    EXPECT_EQ(at(2440588, 86'399'999).milliseconds, 0);
    EXPECT_EQ(at(2440588, -5).milliseconds, 0);
    EXPECT_EQ(at(2440588, std::numeric_limits<std::int32_t>::max()).milliseconds, 0);
    EXPECT_EQ(at(0, 500).kind, Value::Kind::Null);
    EXPECT_EQ(at(-1, 0).kind, Value::Kind::Null);
    EXPECT_EQ(at(std::numeric_limits<std::int32_t>::max(), 86'399'999).kind, Value::Kind::Null);
}

TEST(FieldReader, ReadsTheNumbersOfDBase7) {
    // The image is built with 32-byte descriptors: only the meaning of types is tested here.
    DbfHeader header;
    header.version.dBase7 = true;
    header.recordLength = 17;
    header.fields = {{"A", '+', 1, 4}, {"B", 'I', 5, 4}, {"C", 'O', 9, 8}};
    const TableLayout layout = TableLayout::Make(header, text::CodePage::Default(), "T");
    const auto read = [&](const std::string& record, std::size_t field) {
        Value value;
        FieldReader(layout, nullptr, false)
            .Read(reinterpret_cast<const std::byte*>(record.data()), field, value);
        return value;
    };
    const std::string record = " " + Big(0x80000001, 4) + Big(0x7FFFFFFF, 4) + Big(0xBFF8000000000000ULL, 8);
    EXPECT_EQ(read(record, 0).integer, 1);
    EXPECT_EQ(read(record, 1).integer, -1);
    EXPECT_EQ(read(record, 2).number, 1.5);
    const std::string negative = " " + Big(0, 4) + Big(0, 4) + Big(~0xBFF8000000000000ULL, 8);
    EXPECT_EQ(read(negative, 0).kind, Value::Kind::Null);
    EXPECT_EQ(read(negative, 2).number, -1.5);
}

TEST(FieldReader, ReadsVariableLengthsAndNulls) {
    // Bits: A length, A null, B null, C length.
    TableImage image(0x32);
    image.Field("A", 'V', 6, 0, 2)
        .Field("B", 'I', 4, 0, 6)
        .Field("C", 'Q', 4)
        .Field("_NullFlags", '0', 1, 0, 5);
    const auto read = [&](std::string_view a, std::string_view c, int flags, std::size_t field) {
        TableImage copy = image;
        copy.Record(std::string(a) + Little(7, 4) + std::string(c) + Little(static_cast<unsigned>(flags), 1));
        return OneRecord(copy).Read(field);
    };
    EXPECT_EQ(read("abcdef", "wxyz", 0, 0).text, u"abcdef");
    EXPECT_EQ(read("abc  \x03", "wxyz", 1, 0).text, u"abc");
    EXPECT_EQ(read("abc  \xFF", "wxyz", 1, 0).text, u"abc");  // a length beyond the slot
    EXPECT_EQ(read("abcdef", "wxyz", 2, 0).kind, Value::Kind::Null);
    EXPECT_EQ(read("abcdef", "wxyz", 4, 1).kind, Value::Kind::Null);
    EXPECT_EQ(read("abcdef", "wxyz", 0, 1).integer, 7);
    EXPECT_EQ(read("abcdef", "wxyz", 0, 2).binary.size(), 4U);
    EXPECT_EQ(read("abcdef", "wx \x02", 8, 2).binary, (std::vector<std::uint8_t>{'w', 'x'}));
    EXPECT_EQ(OneRecord(TableImage(image).Record(std::string(15, ' '))).layout().descriptions.size(), 3U);
}

TEST(FieldReader, ReadsNothingAsNullWithoutTheHiddenColumn) {
    TableImage image(0x30);
    image.Field("A", 'C', 3, 0, 2).Record("abc");
    const OneRecord record(image);
    EXPECT_EQ(record.Read(0).text, u"abc");
    EXPECT_EQ(record.layout().warnings.size(), 1U);
}

TEST(FieldReader, ShowsUnknownTypesAsBytes) {
    const Value value = ReadOne('Z', "ab ");
    EXPECT_EQ(value.kind, Value::Kind::Binary);
    EXPECT_EQ(value.binary, (std::vector<std::uint8_t>{'a', 'b', ' '}));
    EXPECT_EQ(ReadOne('D', "2024").kind, Value::Kind::Binary);  // an odd width
    EXPECT_EQ(ReadOne('T', "1234").kind, Value::Kind::Binary);
    EXPECT_EQ(ReadOne('V', "abcd", 0, 0xF5).kind, Value::Kind::Binary);
    EXPECT_EQ(ReadOne('@', "12345678", 0, 0xF5).kind, Value::Kind::Null);  // a time stamp there
}

TEST(FieldReader, DescribesEveryType) {
    TableImage image(0x32);
    image.Field("C", 'C', 7)
        .Field("N", 'N', 9, 3)
        .Field("F", 'F', 8, 1)
        .Field("D", 'D', 8)
        .Field("L", 'L', 1);
    image.Field("I", 'I', 4)
        .Field("B", 'B', 8, 4)
        .Field("Y", 'Y', 8, 4)
        .Field("T", 'T', 8)
        .Field("M", 'M', 4);
    image.Field("G", 'G', 4).Field("P", 'P', 4).Field("W", 'W', 4).Field("V", 'V', 20).Field("Q", 'Q', 12);
    image.Field("MB", 'M', 4, 0, 4)
        .Field("Z", 'Z', 3)
        .Field("AUTO", 'I', 4, 0, 0x0C)
        .Field("_NullFlags", '0', 1, 0, 5);
    const OneRecord record(image.Record(std::string(150, ' ')));
    struct Expected {
        const char* name;
        FieldType type;
        int size;
        int decimals;
        bool rightAligned;
        bool readOnly;
    };
    const Expected expected[] = {
        {"C", FieldType::Text, 7, 0, false, false},    {"N", FieldType::Decimal, 9, 3, true, false},
        {"F", FieldType::Double, 8, 1, true, false},   {"D", FieldType::Date, 8, 0, false, false},
        {"L", FieldType::Boolean, 1, 0, false, false}, {"I", FieldType::Integer32, 11, 0, true, false},
        {"B", FieldType::Double, 20, 4, true, false},  {"Y", FieldType::Currency, 21, 4, true, false},
        {"T", FieldType::Date, 14, 0, false, false},   {"M", FieldType::LongText, 10, 0, false, false},
        {"G", FieldType::Binary, 10, 0, false, true},  {"P", FieldType::Binary, 10, 0, false, true},
        {"W", FieldType::Binary, 10, 0, false, true},  {"V", FieldType::Text, 20, 0, false, false},
        {"Q", FieldType::Binary, 12, 0, false, true},  {"MB", FieldType::Binary, 10, 0, false, true},
        {"Z", FieldType::Binary, 3, 0, false, true},   {"AUTO", FieldType::Integer32, 11, 0, true, true}};
    const auto& fields = record.layout().descriptions;
    ASSERT_EQ(fields.size(), std::size(expected));
    for (std::size_t i = 0; i < fields.size(); ++i) {
        EXPECT_EQ(fields[i].name, expected[i].name);
        EXPECT_EQ(static_cast<int>(fields[i].type), static_cast<int>(expected[i].type)) << fields[i].name;
        EXPECT_EQ(fields[i].size, expected[i].size) << fields[i].name;
        EXPECT_EQ(fields[i].decimals, expected[i].decimals) << fields[i].name;
        EXPECT_EQ(fields[i].rightAligned, expected[i].rightAligned) << fields[i].name;
        EXPECT_EQ(fields[i].readOnly, expected[i].readOnly) << fields[i].name;
    }
}

TEST(FieldReader, TellsPointersFromDoublesByTheWidthOfB) {
    TableImage image(0x05);
    image.Field("B", 'B', 10).Field("M", 'M', 10).Record(std::string(20, ' '));
    EXPECT_EQ(OneRecord(image).layout().kinds[0], FieldKind::MemoBinary);
    EXPECT_EQ(OneRecord(image).layout().kinds[1], FieldKind::MemoText);
}

TEST(FieldNames, AreDecodedUniqueAndNeverEmpty) {
    TableImage image(0x03);
    image.Field("NAME", 'C', 1).Field("name", 'C', 1).Field("", 'C', 1).Field("  A B ", 'C', 1);
    image.Field("\xC4", 'C', 1).Field("\xC3\x84x", 'C', 1);
    // An empty name would end the list; a blank one does not.
    image.Byte(32 + 2 * 32, ' ');
    const OneRecord record(image.Record("123456"));
    const auto& fields = record.layout().descriptions;
    ASSERT_EQ(fields.size(), 6U);
    EXPECT_EQ(fields[0].name, "NAME");
    EXPECT_EQ(fields[1].name, "name_2");
    EXPECT_EQ(fields[2].name, "FIELD3");
    EXPECT_EQ(fields[3].name, "A B");
    EXPECT_EQ(fields[4].name, "\xC3\x84");
    EXPECT_EQ(fields[5].name, "\xC3\x84x");  // UTF-8 in a file without a mark
}

}  // namespace
}  // namespace zu::dbf
