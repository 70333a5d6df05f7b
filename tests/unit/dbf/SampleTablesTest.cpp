// Tables that other programs wrote: dBASE III and IV, FoxPro, Visual FoxPro and others.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "host/technologies/dbf/DbfTable.h"
#include "portable/calendar/Calendar.h"
#include "portable/files/Path.h"
#include "portable/text/Utf.h"
#include "tests/unit/dbf/ErrorExpectation.h"

namespace zu::dbf {
namespace {

using technologies::Value;

std::string SampleFolder() {
    const char* folder = std::getenv("ZU_SAMPLES");
    return folder ? folder : "../shared/samples";
}

class SampleTablesTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(files::SystemFiles().IsFolder(SampleFolder()))
            << "The folder with the sample tables, " << SampleFolder()
            << ", is not there. The environment variable ZU_SAMPLES names another one.";
    }
    DbfTable& Open(const std::string& name) {
        table_ = DbfTable::Open(files::SystemFiles(), SampleFolder() + "/" + name, {});
        return *table_;
    }
    std::size_t Field(const std::string& name) {
        const auto& fields = table_->fields();
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (files::SameName(fields[i].name, name)) return i;
        }
        ADD_FAILURE() << "no field " << name;
        return 0;
    }
    Value Read(std::uint32_t record, const std::string& field) {
        Value value;
        table_->ReadValue(record, Field(field), value);
        return value;
    }
    std::string Text(std::uint32_t record, const std::string& field) {
        return text::ToUtf8(Read(record, field).text);
    }
    calendar::Date Date(std::uint32_t record, const std::string& field) {
        return calendar::FromJulianDay(Read(record, field).julianDay);
    }

    std::unique_ptr<DbfTable> table_;
};

TEST_F(SampleTablesTest, DBase3) {
    DbfTable& table = Open("public/dbase_03.dbf");
    EXPECT_EQ(table.RecordCount(), 14U);
    EXPECT_EQ(table.fields().size(), 31U);
    EXPECT_TRUE(table.warnings().empty());
    EXPECT_EQ(Text(1, "Point_ID"), "0507121");
    EXPECT_EQ(Text(14, "Type"), "CMP");
    EXPECT_EQ(Read(1, "Max_PDOP").decimal.scale, 1);
}

TEST_F(SampleTablesTest, DBase3WithMemo) {
    DbfTable& table = Open("public/dbase_83.dbf");
    EXPECT_EQ(table.RecordCount(), 67U);
    EXPECT_TRUE(table.warnings().empty());
    EXPECT_EQ(Read(1, "ID").decimal.low, 87U);
    EXPECT_EQ(Text(1, "NAME"), "Assorted Petits Fours");
    EXPECT_EQ(Text(1, "DESC").substr(0, 15), "Our Original as");
    for (std::uint32_t record = 1; record <= 67; ++record) {
        EXPECT_EQ(Text(record, "DESC").find('\x1A'), std::string::npos);
    }
    EXPECT_TRUE(table.warnings().empty());
}

TEST_F(SampleTablesTest, DBase4WithMemo) {
    DbfTable& table = Open("public/dbase_8b.dbf");
    EXPECT_EQ(table.RecordCount(), 10U);
    EXPECT_EQ(Text(1, "MEMO"), "First memo\r\n");
    EXPECT_EQ(Text(10, "MEMO"), "");
    EXPECT_EQ(Read(1, "NUMERICAL").decimal, (technologies::Decimal{100, 0, 2, false}));
    EXPECT_DOUBLE_EQ(Read(1, "FLOAT").number, 1.23456789012346);
    EXPECT_EQ(Date(1, "DATE"), (calendar::Date{1970, 1, 1}));
    EXPECT_EQ(Read(10, "DATE").kind, Value::Kind::Null);
    EXPECT_EQ(Read(10, "LOGICAL").kind, Value::Kind::Null);
    EXPECT_TRUE(Read(1, "LOGICAL").boolean);
    EXPECT_TRUE(table.warnings().empty());
}

TEST_F(SampleTablesTest, VisualFoxProWithManyMemos) {
    DbfTable& table = Open("public/dbase_30.dbf");
    EXPECT_EQ(table.RecordCount(), 34U);
    EXPECT_EQ(table.fields().size(), 145U);
    ASSERT_EQ(table.warnings().size(), 1U);
    EXPECT_TRUE(Mentions(table.warnings(), "index file"));
    EXPECT_EQ(Text(1, "ACCESSNO"), "1999.1");
    EXPECT_EQ(Text(1, "CAPTION"), "Ear & Ernie Wedding 1942");
    Value value;
    for (std::uint32_t record = 1; record <= 34; ++record) {
        for (std::size_t field = 0; field < table.fields().size(); ++field)
            table.ReadValue(record, field, value);
    }
    EXPECT_EQ(table.warnings().size(), 1U);
}

TEST_F(SampleTablesTest, VisualFoxProWithAutoIncrementAndNulls) {
    DbfTable& table = Open("public/dbase_31.dbf");
    EXPECT_EQ(table.RecordCount(), 77U);
    EXPECT_EQ(table.fields().size(), 10U);  // the hidden column is left out
    EXPECT_TRUE(table.fields()[0].readOnly);
    EXPECT_EQ(table.header().fields[0].nextNumber, 78U);
    EXPECT_EQ(Text(77, "PRODUCTNAM"),
              "Original Frankfurter gr\xC3\xBCne So\xC3\xA1"
              "e");
    EXPECT_EQ(Read(1, "UNITPRICE").integer, 180000);
}

TEST_F(SampleTablesTest, VisualFoxProWithVarchar) {
    DbfTable& table = Open("public/dbase_32.dbf");
    EXPECT_EQ(table.RecordCount(), 1U);
    EXPECT_EQ(Text(1, "NAME"), "Bad Meets Evil");
}

TEST_F(SampleTablesTest, CyrillicByItsMark) {
    Open("public/cp1251.dbf");
    EXPECT_EQ(Text(1, "NAME").substr(0, 20),
              "\xD0\xB0\xD0\xBC\xD0\xB1\xD1\x83\xD0\xBB\xD0\xB0\xD1\x82\xD0\xBE\xD1\x80\xD0\xBD");
}

TEST_F(SampleTablesTest, VisualFoxProWithMemosDatesAndMoney) {
    DbfTable& table = Open("public/expense reports.dbf");
    EXPECT_EQ(table.RecordCount(), 3U);
    EXPECT_EQ(Text(1, "EXPENSERP2"), "Expenses during sales trip.");
    EXPECT_EQ(Date(1, "DATESUBMIT"), (calendar::Date{1995, 3, 1}));
    EXPECT_EQ(Read(1, "DATESUBMIT").milliseconds, 0);
    EXPECT_EQ(Read(1, "ADVANCEAMO").kind, Value::Kind::Currency);
}

TEST_F(SampleTablesTest, VisualFoxProContacts) {
    DbfTable& table = Open("public/contacts.dbf");
    EXPECT_EQ(table.RecordCount(), 5U);
    EXPECT_EQ(Text(1, "ADDRESS"), "507 - 20th Ave. E.\r\nApt. 2A");
    EXPECT_EQ(Read(5, "CONTACT_ID").integer, 5);
}

TEST_F(SampleTablesTest, FoxProFieldTypesInAFoxPro2Table) {
    DbfTable& table = Open("xbase/vfp.dbf");
    EXPECT_EQ(table.RecordCount(), 200U);
    EXPECT_TRUE(table.warnings().empty());
    bool hasInteger = false;
    bool hasDouble = false;
    bool hasTime = false;
    for (const auto& field : table.fields()) {
        hasInteger = hasInteger || field.type == technologies::FieldType::Integer32;
        hasDouble = hasDouble || field.type == technologies::FieldType::Double;
        hasTime = hasTime || (field.type == technologies::FieldType::Date && field.size == 14);
    }
    EXPECT_TRUE(hasInteger && hasDouble && hasTime);
}

/// The order that each tag yields, as listed beside the table.
class SampleOrdersTest : public SampleTablesTest, public testing::WithParamInterface<const char*> {
protected:
    static std::string ReadText(const std::string& path) {
        const auto file = files::SystemFiles().Open(path, {});
        std::string text(static_cast<std::size_t>(file->Size()), '\0');
        text.resize(file->ReadAt(0, std::as_writable_bytes(std::span(text))));
        return text;
    }
};

TEST_P(SampleOrdersTest, SelectFollowsEveryTag) {
    const std::string name = GetParam();
    DbfTable& table = Open("xbase/" + name + ".dbf");
    EXPECT_TRUE(table.warnings().empty());
    std::istringstream lines(ReadText(SampleFolder() + "/xbase/" + name + ".orders.txt"));
    std::string line;
    std::string tag;
    std::size_t tags = 0;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "tag") words >> tag;
        if (word != "order") continue;
        std::vector<std::uint32_t> expected;
        for (std::uint32_t record = 0; words >> record;)
            expected.push_back(record);
        technologies::Selection selection;
        selection.index = table.FindIndex(tag);
        selection.includeDeleted = true;
        ASSERT_TRUE(selection.index) << tag;
        EXPECT_EQ(table.Select(selection), expected) << tag;
        ++tags;
    }
    EXPECT_EQ(tags, table.indexes().size());
}

INSTANTIATE_TEST_SUITE_P(Tables, SampleOrdersTest, testing::Values("orders", "deep", "vfp"),
                         [](const auto& name) { return std::string(name.param); });

TEST_F(SampleTablesTest, SelectionsAgreeWithAndWithoutTags) {
    DbfTable& table = Open("xbase/orders.dbf");
    Value value;
    for (const char16_t* condition : {u"ID = 700", u"COUNTRY = 'AT' AND AMOUNT > 5000", u"CUSTOMER = 'M'",
                                      u"QTY < 20", u"ORDERED > CTOD('2015-01-01')"}) {
        technologies::Selection selection;
        selection.condition = condition;
        selection.includeDeleted = true;
        const auto found = table.Select(selection);
        // The same condition in a form that no tag answers.
        selection.condition = std::u16string(u"NOT NOT (") + condition + u") AND RECNO() > 0";
        EXPECT_EQ(table.Select(selection), found) << text::ToUtf8(condition);
    }
}

}  // namespace
}  // namespace zu::dbf
