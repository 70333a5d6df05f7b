#include "host/technologies/dbf/cdx/KeySorter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/unit/cdx/Bytes.h"

namespace zu::dbf::cdx {
namespace {

using Entries = std::vector<std::pair<std::string, std::uint32_t>>;

Entries Sorted(const std::vector<std::string>& keys, std::size_t length) {
    KeySorter sorter(length);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        std::memcpy(sorter.Add(static_cast<std::uint32_t>(i + 1)), keys[i].data(), length);
    }
    sorter.Sort();
    Entries entries;
    for (std::size_t i = 0; i < sorter.size(); ++i) {
        entries.emplace_back(AsText(sorter.key(i), length), sorter.record(i));
    }
    return entries;
}

TEST(KeySorter, SortsNothing) {
    EXPECT_TRUE(Sorted({}, 3).empty());
}

TEST(KeySorter, ComparesBytesAsUnsigned) {
    EXPECT_EQ(Sorted({"\xFF", "a", "\x80", " "}, 1), (Entries{{" ", 4}, {"a", 2}, {"\x80", 3}, {"\xFF", 1}}));
}

TEST(KeySorter, KeepsTheOrderOfRecordsWithEqualKeys) {
    EXPECT_EQ(Sorted({"B", "A", "B", "A", "B"}, 1),
              (Entries{{"A", 2}, {"A", 4}, {"B", 1}, {"B", 3}, {"B", 5}}));
}

TEST(KeySorter, SortsLikeAPlainSortAtEveryKeyLength) {
    std::mt19937 random(1);
    for (const std::size_t length : {1, 7, 8, 9, 15, 16, 17, 30, 240}) {
        std::vector<std::string> keys;
        for (int i = 0; i < 500; ++i) {
            // Few different bytes and a common beginning: ties reach far into the keys.
            std::string key(length, 'A');
            for (std::size_t at = length / 2; at < length; ++at) {
                key[at] = static_cast<char>("A\x7F\x80"[random() % 3]);
            }
            if (random() % 4 == 0 && !keys.empty()) key = keys[random() % keys.size()];
            keys.push_back(key);
        }
        Entries expected;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            expected.emplace_back(keys[i], static_cast<std::uint32_t>(i + 1));
        }
        std::sort(expected.begin(), expected.end());  // char_traits compares unsigned
        EXPECT_EQ(Sorted(keys, length), expected) << length;
    }
}

}  // namespace
}  // namespace zu::dbf::cdx
