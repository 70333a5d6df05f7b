#include "host/technologies/dbf/cdx/SortedKeys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>

#include "host/expression/Program.h"
#include "portable/error/Error.h"
#include "tests/unit/cdx/TestTable.h"

namespace zu::dbf::cdx {
namespace {

using Entries = std::vector<std::pair<std::string, std::uint32_t>>;

constexpr std::uint32_t kNever = 0xFFFFFFFF;

/// A table that several threads may read, with records that cannot be read.
class Shared final : public RecordAccess {
public:
    explicit Shared(TestTable& table) : table_(table), count_(table.Count()) {}

    std::uint32_t Count() override { return count_; }
    const std::byte* Record(std::uint32_t number) override {
        const bool lost = std::find(lost_.begin(), lost_.end(), number) != lost_.end();
        return lost ? nullptr : table_.Record(number);
    }
    expression::MemoReader* memos() override { return nullptr; }
    bool areStable() const noexcept override { return true; }
    void Lose(std::uint32_t number) { lost_.push_back(number); }

    IndexContext Context() { return {table_.layout, *this, "TEST", *table_.layout.codePage}; }

private:
    TestTable& table_;
    std::uint32_t count_;
    std::vector<std::uint32_t> lost_;
};

class Listener final : public technologies::Progress {
public:
    explicit Listener(std::uint64_t last = ~std::uint64_t{0}) : last_(last) {}
    void Report(std::uint64_t done, std::uint64_t) override {
        if (done >= last_) throw Error(ErrorKind::Cancelled, "enough");
        told = done;
    }
    std::uint64_t told = 0;

private:
    std::uint64_t last_;
};

class SortedKeysTest : public ::testing::Test {
protected:
    static constexpr int kRecords = 5001;

    SortedKeysTest() {
        table_.Field("NAME", expression::Storage::Character, 12)
            .Field("PART", expression::Storage::NumberText, 3);
        std::mt19937 numbers(11);
        for (int i = 0; i < kRecords; ++i) {
            // Many keys are equal, and many differ behind their eighth byte alone.
            std::string name = numbers() % 2 == 0 ? "sameprefix" : "other";
            name += static_cast<char>('a' + numbers() % 20);
            table_.Add({name, std::to_string(numbers() % 10)});
        }
    }
    KeyForm Form() {
        const auto key = expression::Program::CompileBytes(definition_.key, table_.layout);
        return KeyForm::ForNewTag(key, table_.layout);
    }
    Entries Collect(Shared& shared, const SortedKeys::Limits& limits,
                    technologies::ProgressMeter* meter = nullptr) {
        const IndexContext context = shared.Context();
        const KeyForm form = Form();
        SortedKeys keys(definition_, context, form, meter, limits);
        Entries entries;
        for (SortedKeys::Entry entry; keys.Next(entry);)
            entries.emplace_back(std::string(reinterpret_cast<const char*>(entry.key), form.length()),
                                 entry.record);
        return entries;
    }
    Entries PlainSort(bool filtered) {
        Entries entries;
        for (std::uint32_t number = 1; number <= table_.Count(); ++number) {
            const char* const record = reinterpret_cast<const char*>(table_.Record(number));
            // The last digit of the second field.
            if (!filtered || record[table_.layout.recordLength - 1] > '4')
                entries.emplace_back(std::string(record + table_.layout.fields[0].offset, 12), number);
        }
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    TestTable table_;
    TagDefinition definition_{"NAME", "NAME", ""};
    static constexpr SortedKeys::Limits kLimits[] = {{1U << 20, kNever}, {1U << 20, 2}, {20'000, kNever},
                                                     {20'000, 2},        {700, 2},      {1, kNever}};
};

TEST_F(SortedKeysTest, ComeInTheOrderOfAPlainSort) {
    Shared shared(table_);
    for (const bool filtered : {false, true}) {
        definition_.filter = filtered ? "PART > 4" : "";
        const Entries expected = PlainSort(filtered);
        for (const SortedKeys::Limits& limits : kLimits) {
            if (limits.bytes == 1) continue;
            EXPECT_TRUE(Collect(shared, limits) == expected)
                << limits.bytes << " bytes, two threads from " << limits.recordsForTwo << " records";
        }
    }
}

TEST_F(SortedKeysTest, ComeInPartsOfOneKeyToo) {
    TestTable few;
    few.Field("NAME", expression::Storage::Character, 4);
    few.Add({"b"}).Add({"a"}).Add({"b"}).Add({"c"}).Add({"a"});
    std::swap(few, table_);
    Shared shared(table_);
    const Entries entries = Collect(shared, {1, kNever});
    EXPECT_EQ(entries, (Entries{{"a   ", 2}, {"a   ", 5}, {"b   ", 1}, {"b   ", 3}, {"c   ", 4}}));
}

TEST_F(SortedKeysTest, AreNoneForNoRecords) {
    TestTable none;
    none.Field("NAME", expression::Storage::Character, 4);
    std::swap(none, table_);
    Shared shared(table_);
    EXPECT_TRUE(Collect(shared, {}).empty());
    EXPECT_TRUE(Collect(shared, {1, 0}).empty());
}

TEST_F(SortedKeysTest, TellEachRecordOnce) {
    Shared shared(table_);
    for (const SortedKeys::Limits& limits : kLimits) {
        if (limits.bytes == 1) continue;
        Listener listener;
        technologies::ProgressMeter meter(&listener, kRecords);
        Collect(shared, limits, &meter);
        meter.Tell();
        EXPECT_EQ(listener.told, static_cast<std::uint64_t>(kRecords))
            << limits.bytes << " " << limits.recordsForTwo;
    }
}

TEST_F(SortedKeysTest, EndWhenTheListenerSaysSo) {
    Shared shared(table_);
    for (const SortedKeys::Limits& limits : kLimits) {
        if (limits.bytes == 1) continue;
        Listener listener(2000);
        technologies::ProgressMeter meter(&listener, kRecords);
        EXPECT_THROW(Collect(shared, limits, &meter), Error);
    }
}

TEST_F(SortedKeysTest, NameTheFirstRecordThatCannotBeRead) {
    for (const SortedKeys::Limits& limits : kLimits) {
        if (limits.bytes < 20'000) continue;  // there any record may be the first that is met
        for (const std::uint32_t lost : {7U, 4001U}) {
            Shared shared(table_);
            shared.Lose(lost);
            shared.Lose(4999);
            try {
                Collect(shared, limits);
                ADD_FAILURE() << "no error";
            } catch (const Error& error) {
                EXPECT_EQ(error.kind(), ErrorKind::Damaged);
                EXPECT_NE(std::string(error.what()).find("record " + std::to_string(lost) + " "),
                          std::string::npos)
                    << error.what();
            }
        }
    }
}

}  // namespace
}  // namespace zu::dbf::cdx
