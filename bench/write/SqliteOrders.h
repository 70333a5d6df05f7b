#pragma once

#include <cstdint>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace zu::bench {

/// The orders in an sqlite file that need not survive a power cut, only the end of the process.
class SqliteOrders {
public:
    explicit SqliteOrders(const std::string& path);
    ~SqliteOrders();
    SqliteOrders(const SqliteOrders&) = delete;
    SqliteOrders& operator=(const SqliteOrders&) = delete;

    /// Adds orders `first` to `last`, each in a transaction of its own or all in one.
    void Append(std::uint32_t first, std::uint32_t last, bool inOne);
    void BuildIndex();
    /// Gives `count` orders, spread over `total`, another amount.
    void Update(std::uint32_t count, std::uint32_t total, bool inOne);
    void Pack();

private:
    void Run(const char* text);
    sqlite3_stmt* Prepare(const char* text);
    void Step(sqlite3_stmt* statement);

    sqlite3* base_ = nullptr;
};

}  // namespace zu::bench
