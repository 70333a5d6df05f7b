// zuwritebench FOLDER RECORDS: the same writes to a table of ours and to an sqlite file, by turns; prints
// wall seconds and their ratios. Both must survive the end of the process at any moment, not a power cut.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>

#include "bench/write/SqliteOrders.h"
#include "bench/write/TableOrders.h"

namespace {

double SecondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Compare(const char* job, const std::function<void()>& ours, const std::function<void()>& theirs) {
    const double table = SecondsOf(ours);
    const double sqlite = SecondsOf(theirs);
    std::printf("%-58s%10.2f%10.2f%10.2f\n", job, table, sqlite, sqlite / table);
    std::fflush(stdout);
}

void Measure(const std::string& folder, std::uint32_t records) {
    using namespace zu::bench;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    TableOrders table(folder);
    SqliteOrders sqlite(folder + "/orders.sqlite");
    const std::uint32_t single = records / 10;
    const std::uint32_t updates = records / 10;
    std::printf("%u records of ten fields\n%-58s%10s%10s%10s\n", records, "", "table s", "sqlite s", "ratio");
    Compare(
        "append a tenth, each record confirmed", [&] { table.Append(1, single, false); },
        [&] { sqlite.Append(1, single, false); });
    Compare(
        "append the rest as a batch / in one transaction", [&] { table.Append(single + 1, records, true); },
        [&] { sqlite.Append(single + 1, records, true); });
    Compare(
        "build an index on 30 characters", [&] { table.BuildIndex(); }, [&] { sqlite.BuildIndex(); });
    Compare(
        "update a tenth by key, each confirmed", [&] { table.Update(updates, records, false); },
        [&] { sqlite.Update(updates, records, false); });
    Compare(
        "update a tenth by key, as a batch / in one transaction",
        [&] { table.Update(updates, records, true); }, [&] { sqlite.Update(updates, records, true); });
    table.Require(records);
    Compare(
        "pack", [&] { table.Pack(); }, [&] { sqlite.Pack(); });
}

}  // namespace

int main(int count, char** arguments) {
    const long records = count == 3 ? std::atol(arguments[2]) : 0;
    if (records < 100 || records > 100000000) {
        std::fprintf(stderr, "usage: zuwritebench FOLDER RECORDS\n");
        return 64;
    }
    try {
        Measure(arguments[1], static_cast<std::uint32_t>(records));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
