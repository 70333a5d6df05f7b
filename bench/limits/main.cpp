// zubenchlimit JOB TIMES [COUNT] FILES...: the least that a job can cost on this machine, TIMES times; prints
// its result.
// "{}" in a file's name stands for the number of the turn, from 0.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bench/limits/MappedTable.h"
#include "bench/limits/RecordFile.h"
#include "bench/limits/Scan.h"
#include "bench/limits/TextPass.h"

namespace {

using namespace zu::bench;
using Words = std::vector<std::string>;

std::uint32_t Count(const std::string& word) {
    return static_cast<std::uint32_t>(std::strtoul(word.c_str(), nullptr, 10));
}

// For jobs that only read: the table is mapped once for all turns.
const MappedTable& KeptOpen(const std::string& path) {
    static const MappedTable table(path);
    return table;
}

const std::map<std::string, std::function<std::uint64_t(const Words&)>> kJobs = {
    {"count", [](const Words& words) { return CountSelected(KeptOpen(words.at(0))); }},
    {"select", [](const Words& words) { return SumSelected(KeptOpen(words.at(0))); }},
    {"lookup", [](const Words& words) { return SumLookups(KeptOpen(words.at(1)), Count(words.at(0))); }},
    {"export-delimited", [](const Words& words) { return ExportDelimited(words.at(0), words.at(1)); }},
    {"export-fixed", [](const Words& words) { return ExportFixed(words.at(0), words.at(1)); }},
    {"import-delimited",
     [](const Words& words) { return ImportDelimited(words.at(0), words.at(1), words.at(2)); }},
    {"import-fixed", [](const Words& words) { return ImportFixed(words.at(0), words.at(1), words.at(2)); }},
    {"copy", [](const Words& words) { return CopyBytes(words.at(0), words.at(1)); }},
    {"pack", [](const Words& words) { return CopyLiving(words.at(0), words.at(1)); }},
    {"index", [](const Words& words) { return SortKeys(words.at(0), words.at(1)); }},
    {"add", [](const Words& words) { return AppendOneByOne(words.at(1), Count(words.at(0))); }},
    {"update", [](const Words& words) { return UpdateOneByOne(words.at(1), Count(words.at(0))); }},
    {"delete", [](const Words& words) { return MarkOneByOne(words.at(1), Count(words.at(0))); }},
    {"delete-many", [](const Words& words) { return MarkSelected(words.at(0)); }},
};

Words ForTurn(Words words, std::uint32_t turn) {
    for (std::string& word : words)
        if (const auto place = word.find("{}"); place != std::string::npos)
            word.replace(place, 2, std::to_string(turn));
    return words;
}

}  // namespace

int main(int count, char** arguments) {
    const auto job = count > 3 ? kJobs.find(arguments[1]) : kJobs.end();
    if (job == kJobs.end()) {
        std::fprintf(stderr, "usage: zubenchlimit JOB TIMES [COUNT] FILES...\n");
        return 64;
    }
    try {
        const Words words(arguments + 3, arguments + count);
        std::uint64_t result = 0;
        for (std::uint32_t turn = 0; turn < Count(arguments[2]); ++turn)
            result = job->second(ForTurn(words, turn));
        std::printf("%llu\n", static_cast<unsigned long long>(result));
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
