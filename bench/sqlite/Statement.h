#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace zu::bench {

/// A database file. Changes survive the end of the process at any moment, as those of our tables do.
class Database {
public:
    explicit Database(const std::string& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Run(const char* text);
    sqlite3* get() const noexcept { return base_; }

private:
    sqlite3* base_ = nullptr;
};

/// A prepared statement. Places of values are counted from 1, columns from 0.
class Statement {
public:
    Statement(Database& database, const char* text);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void Bind(int place, std::int64_t value);
    void Bind(int place, double value);
    void Bind(int place, std::string_view text);
    /// True while there is a row; at the end the statement is ready for the next run.
    bool Step();
    std::int64_t Number(int column) const { return sqlite3_column_int64(statement_, column); }

private:
    Database& database_;
    sqlite3_stmt* statement_ = nullptr;
};

}  // namespace zu::bench
