#include "tests/unit/dbfwrite/TableModel.h"

#include <gtest/gtest.h>

#include "portable/text/Utf.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

std::string Padded(int value) {
    return value < 10 ? "0" + std::to_string(value) : std::to_string(value);
}

std::string Amount(std::int64_t cents) {
    return text::ToUtf8([&] {
        std::string digits = std::to_string(cents / 100);
        const auto rest = static_cast<int>(cents % 100);
        if (rest) digits += "." + (rest % 10 ? Padded(rest) : std::to_string(rest / 10));
        return text::ToUtf16(digits);
    }());
}

}  // namespace

std::string TableModel::Word(std::size_t longest) {
    std::string word;
    const std::size_t length = Below(static_cast<std::uint32_t>(longest) + 1);
    while (word.size() < length)
        word += static_cast<char>('a' + Below(6));
    return word;
}

void TableModel::Vary(Record& record) {
    const auto chosen = [this] { return Below(3) == 0; };
    if (chosen()) record.id = Below(1000);
    if (chosen()) record.name = Word(20);
    if (chosen()) record.cents = Below(100000);
    if (chosen()) record.note = Word(Below(8) ? 100 : 2000);
    if (chosen()) record.code = Word(2);
    if (chosen()) record.day = static_cast<int>(Below(29));
}

void TableModel::Put(technologies::RecordEdit& edit, const Record& before, const Record& after) {
    if (after.id != before.id) edit.Set(kId, Integer(after.id));
    if (after.name != before.name) edit.Set(kName, Text(text::ToUtf16(after.name)));
    if (after.cents != before.cents)
        edit.Set(kAmount, DecimalValue(static_cast<std::uint64_t>(after.cents), 2));
    if (after.note != before.note) edit.Set(kNote, Text(text::ToUtf16(after.note)));
    if (after.code != before.code) edit.Set(kCode, Text(text::ToUtf16(after.code)));
    if (after.day != before.day) edit.Set(kBorn, after.day ? Day(2024, 1, after.day) : NoValue());
    edit.SetDeleted(after.deleted);
}

std::string TableModel::Shown(const Record& record) {
    return (record.deleted ? "*" : "") + std::to_string(record.id) + "|" + record.name + "|" +
           Amount(record.cents) + "|" + (record.day ? "2024-01-" + Padded(record.day) : "(null)") +
           "|(null)|" + record.note + "|" + record.code;
}

void TableModel::Change(DbfTable& table) {
    intended_ = records_;
    if (records_.empty() || Below(3) == 0) {
        Record record;
        Vary(record);
        intended_.push_back(record);
        const auto edit = table.NewRecord();
        Put(*edit, Record{}, record);
        ASSERT_TRUE(edit->Save());
    } else {
        const std::size_t at = Below(static_cast<std::uint32_t>(records_.size()));
        Record record = records_[at];
        if (Below(4) == 0)
            record.deleted = !record.deleted;
        else
            Vary(record);
        intended_[at] = record;
        const auto edit = table.EditRecord(static_cast<std::uint32_t>(at + 1));
        Put(*edit, records_[at], record);
        ASSERT_TRUE(edit->Save());
    }
    records_ = intended_;
}

void TableModel::ExpectEqual() const {
    const auto table = OpenTable(files_);
    EXPECT_TRUE(table->warnings().empty()) << table->warnings().front();
    ASSERT_EQ(table->RecordCount(), records_.size());
    for (std::size_t i = 0; i < records_.size(); ++i)
        ASSERT_EQ(ShownRecord(*table, static_cast<std::uint32_t>(i + 1)), Shown(records_[i]))
            << "record " << i + 1;
    ExpectSoundIndex(files_);
}

void TableModel::ExpectBeforeOrAfter() {
    const auto table = OpenTable(files_);
    if (table->RecordCount() == intended_.size()) {
        bool after = true;
        for (std::size_t i = 0; i < intended_.size() && after; ++i)
            after = ShownRecord(*table, static_cast<std::uint32_t>(i + 1)) == Shown(intended_[i]);
        if (after) records_ = intended_;
    }
    ExpectEqual();
}

}  // namespace zu::dbf::test
