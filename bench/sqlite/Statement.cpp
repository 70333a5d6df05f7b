#include "bench/sqlite/Statement.h"

#include <stdexcept>

namespace zu::bench {
namespace {

[[noreturn]] void Fail(sqlite3* base) {
    throw std::runtime_error(sqlite3_errmsg(base));
}

}  // namespace

Database::Database(const std::string& path) {
    if (sqlite3_open(path.c_str(), &base_) != SQLITE_OK) throw std::runtime_error(path + " cannot be opened");
    // The cheapest settings under which a change outlives the process, though not a power cut.
    Run("PRAGMA journal_mode=WAL");
    Run("PRAGMA synchronous=OFF");
}

Database::~Database() {
    sqlite3_close(base_);
}

void Database::Run(const char* text) {
    if (sqlite3_exec(base_, text, nullptr, nullptr, nullptr) != SQLITE_OK) Fail(base_);
}

Statement::Statement(Database& database, const char* text) : database_(database) {
    if (sqlite3_prepare_v2(database.get(), text, -1, &statement_, nullptr) != SQLITE_OK) Fail(database.get());
}

Statement::~Statement() {
    sqlite3_finalize(statement_);
}

void Statement::Bind(int place, std::int64_t value) {
    if (sqlite3_bind_int64(statement_, place, value) != SQLITE_OK) Fail(database_.get());
}

void Statement::Bind(int place, double value) {
    if (sqlite3_bind_double(statement_, place, value) != SQLITE_OK) Fail(database_.get());
}

void Statement::Bind(int place, std::string_view text) {
    if (sqlite3_bind_text(statement_, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC) !=
        SQLITE_OK)
        Fail(database_.get());
}

bool Statement::Step() {
    const int result = sqlite3_step(statement_);
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE) Fail(database_.get());
    sqlite3_reset(statement_);
    return false;
}

}  // namespace zu::bench
