// What people are told of a table and its files.
#include <array>
#include <cstdio>

#include "host/technologies/dbf/DbfTable.h"

namespace zu::dbf {

namespace {

using technologies::TableFact;

constexpr unsigned kUtf8 = 65001;

std::string CodePageName(unsigned number) {
    if (number == kUtf8) return "UTF-8";
    return std::to_string(number);
}

/// Year, month and day with dashes.
std::string DateText(const calendar::Date& date) {
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", static_cast<int>(date.year),
                                     static_cast<int>(date.month), static_cast<int>(date.day));
    return {text.data(), static_cast<std::size_t>(length)};
}

/// The file and its size; a file that has gone meanwhile, or that cannot be opened, has no size.
void AddFile(files::FileSystem& files, const char* what, const std::string& path,
             std::vector<TableFact>& facts) {
    facts.push_back({std::string(what) + " file", path});
    try {
        facts.push_back({std::string(what) + " size", std::to_string(files.Open(path, {})->Size())});
    } catch (const Error&) {
        return;
    }
}

}  // namespace

std::vector<TableFact> DbfTable::Facts() {
    std::vector<TableFact> facts = {{"Format", header_.version.name},
                                    {"Code page", CodePageName(codePage().number())}};
    if (header_.lastChange) facts.push_back({"Last change", DateText(*header_.lastChange)});
    AddFile(files_, "Table", path_, facts);
    if (paths_.memo) AddFile(files_, "Memo", *paths_.memo, facts);
    if (paths_.index) AddFile(files_, "Index", *paths_.index, facts);
    return facts;
}

}  // namespace zu::dbf
