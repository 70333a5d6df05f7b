#include "bench/write/SqliteOrders.h"

#include <sqlite3.h>

#include <stdexcept>

#include "bench/write/Order.h"

namespace zu::bench {

SqliteOrders::SqliteOrders(const std::string& path) {
    if (sqlite3_open(path.c_str(), &base_) != SQLITE_OK) throw std::runtime_error("sqlite3_open");
    Run("PRAGMA synchronous=OFF");
    Run("CREATE TABLE orders (deleted INTEGER, id INTEGER, customer TEXT, country TEXT, ordered INTEGER, "
        "amount REAL, qty INTEGER, paid INTEGER, rate REAL, note TEXT, code TEXT)");
    Run("CREATE INDEX by_id ON orders (id)");
}

SqliteOrders::~SqliteOrders() {
    sqlite3_close(base_);
}

void SqliteOrders::Run(const char* text) {
    if (sqlite3_exec(base_, text, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(base_));
}

sqlite3_stmt* SqliteOrders::Prepare(const char* text) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(base_, text, -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(base_));
    return statement;
}

void SqliteOrders::Step(sqlite3_stmt* statement) {
    if (sqlite3_step(statement) != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(base_));
    sqlite3_reset(statement);
}

void SqliteOrders::Append(std::uint32_t first, std::uint32_t last, bool inOne) {
    sqlite3_stmt* insert = Prepare("INSERT INTO orders VALUES (?,?,?,?,?,?,?,?,?,?,?)");
    const auto text = [insert](int place, const std::string& value) {
        sqlite3_bind_text(insert, place, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
    };
    if (inOne) Run("BEGIN");
    for (std::uint32_t number = first; number <= last; ++number) {
        const Order order = Order::Make(number);
        sqlite3_bind_int(insert, 1, order.deleted ? 1 : 0);
        sqlite3_bind_int64(insert, 2, order.id);
        text(3, order.customer);
        text(4, order.country);
        sqlite3_bind_int(insert, 5, order.day);
        sqlite3_bind_double(insert, 6, static_cast<double>(order.cents) / 100);
        sqlite3_bind_int64(insert, 7, order.quantity);
        sqlite3_bind_int(insert, 8, order.paid ? 1 : 0);
        sqlite3_bind_double(insert, 9, static_cast<double>(order.rate) / 10000);
        text(10, order.note);
        text(11, order.code);
        Step(insert);
    }
    if (inOne) Run("COMMIT");
    sqlite3_finalize(insert);
}

void SqliteOrders::BuildIndex() {
    Run("CREATE INDEX by_customer ON orders (customer)");
}

void SqliteOrders::Update(std::uint32_t count, std::uint32_t total, bool inOne) {
    sqlite3_stmt* update = Prepare("UPDATE orders SET amount = ? WHERE id = ?");
    if (inOne) Run("BEGIN");
    for (std::uint32_t i = 0; i < count; ++i) {
        sqlite3_bind_double(update, 1, i / 100.0);
        sqlite3_bind_int64(update, 2, 1 + (std::uint64_t{i} * 7919) % total);
        Step(update);
    }
    if (inOne) Run("COMMIT");
    sqlite3_finalize(update);
}

void SqliteOrders::Pack() {
    Run("DELETE FROM orders WHERE deleted = 1");
    Run("VACUUM");
}

}  // namespace zu::bench
