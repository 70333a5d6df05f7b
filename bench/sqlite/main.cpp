// zubenchsqlite JOB TIMES RECORDS COUNT FILE: sqlite in process, with prepared statements, TIMES times;
// prints the job's result. "{}" in the file's name stands for the number of the turn, from 0.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <map>
#include <string>

#include "bench/Keys.h"
#include "bench/sqlite/Statement.h"

namespace {

using namespace zu::bench;

struct Work {
    std::string path;
    std::uint32_t records;
    std::uint32_t count;
};

std::int64_t Lookup(Database& database, const Work& work) {
    Statement find(database, "SELECT qty FROM orders WHERE id = ? AND deleted = 0");
    Keys keys(work.records);
    std::int64_t sum = 0;
    for (std::uint32_t i = 0; i < work.count; ++i) {
        find.Bind(1, std::int64_t{keys.Next()});
        while (find.Step())
            sum += find.Number(0);
    }
    return sum;
}

std::int64_t Select(Database& database, const Work&) {
    Statement find(database,
                   "SELECT qty FROM orders WHERE deleted = 0 AND country = 'SE' AND amount > 15000");
    std::int64_t sum = 0;
    while (find.Step())
        sum += find.Number(0);
    return sum;
}

std::int64_t Add(Database& database, const Work& work) {
    Statement insert(database, "INSERT INTO orders VALUES (0,?,?,?,?,?,?,?,?,?,?)");
    for (std::uint32_t i = 0; i < work.count; ++i) {
        insert.Bind(1, std::int64_t{work.records} + 1 + i);
        insert.Bind(2, "Ada Newcomer");
        insert.Bind(3, "SE");
        insert.Bind(4, "2024-05-17");
        insert.Bind(5, i / 100.0);
        insert.Bind(6, std::int64_t{i % 500});
        insert.Bind(7, std::int64_t{1});
        insert.Bind(8, 1.25);
        insert.Bind(9, "Leave the parcel with the neighbours.");
        insert.Bind(10, "ABCDEFGH");
        insert.Step();
    }
    return work.count;
}

// Sets what the statement says for `count` orders, one by one; answers how many there were.
std::int64_t ForKeys(Database& database, const char* text, const Work& work) {
    Statement change(database, text);
    Keys keys(work.records);
    std::int64_t changed = 0;
    for (std::uint32_t i = 0; i < work.count; ++i) {
        change.Bind(1, std::int64_t{keys.Next()});
        change.Step();
        changed += sqlite3_changes(database.get());
    }
    return changed;
}

std::int64_t Update(Database& database, const Work& work) {
    return ForKeys(database, "UPDATE orders SET amount = 1234.56 WHERE id = ? AND deleted = 0", work);
}

std::int64_t Delete(Database& database, const Work& work) {
    return ForKeys(database, "UPDATE orders SET deleted = 1 WHERE id = ? AND deleted = 0", work);
}

std::int64_t DeleteMany(Database& database, const Work&) {
    database.Run("UPDATE orders SET deleted = 1 WHERE country = 'SE' AND deleted = 0");
    return sqlite3_changes(database.get());
}

const std::map<std::string, std::function<std::int64_t(Database&, const Work&)>> kJobs = {
    {"lookup", Lookup}, {"select", Select}, {"add", Add},
    {"update", Update}, {"delete", Delete}, {"delete-many", DeleteMany},
};

std::uint32_t Number(const char* word) {
    return static_cast<std::uint32_t>(std::strtoul(word, nullptr, 10));
}

std::string ForTurn(std::string path, std::uint32_t turn) {
    if (const auto place = path.find("{}"); place != std::string::npos)
        path.replace(place, 2, std::to_string(turn));
    return path;
}

}  // namespace

int main(int count, char** arguments) {
    const auto job = count == 6 ? kJobs.find(arguments[1]) : kJobs.end();
    if (job == kJobs.end()) {
        std::fprintf(stderr, "usage: zubenchsqlite JOB TIMES RECORDS COUNT FILE\n");
        return 64;
    }
    try {
        std::int64_t result = 0;
        for (std::uint32_t turn = 0; turn < Number(arguments[2]); ++turn) {
            const Work work{ForTurn(arguments[5], turn), Number(arguments[3]), Number(arguments[4])};
            Database database(work.path);
            result = job->second(database, work);
        }
        std::printf("%lld\n", static_cast<long long>(result));
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
