#include "bench/limits/Scan.h"

#include "bench/Keys.h"

namespace zu::bench {
namespace {

constexpr std::int64_t kAmount = 1500000;  // hundredths

template <class Found>
void ForEachSelected(const MappedTable& table, Found found) {
    const Column& country = table.column("COUNTRY");
    const Column& amount = table.column("AMOUNT");
    const char* at = table.record(0);
    for (const char* end = table.record(table.count()); at != end; at += table.recordLength()) {
        if (at[country.offset] != 'S' || at[country.offset + 1] != 'E' || *at == '*') continue;
        if (Digits(at + amount.offset, amount.width) > kAmount) found(at);
    }
}

}  // namespace

std::uint64_t CountSelected(const MappedTable& table) {
    std::uint64_t count = 0;
    ForEachSelected(table, [&](const char*) { ++count; });
    return count;
}

std::uint64_t SumSelected(const MappedTable& table) {
    const Column& quantity = table.column("QTY");
    std::uint64_t sum = 0;
    ForEachSelected(table, [&](const char* record) {
        sum += static_cast<std::uint64_t>(Digits(record + quantity.offset, quantity.width));
    });
    return sum;
}

std::uint64_t SumLookups(const MappedTable& table, std::uint32_t count) {
    const Column& id = table.column("ID");
    const Column& quantity = table.column("QTY");
    Keys keys(table.count());
    std::uint64_t sum = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::int64_t key = keys.Next();
        std::uint32_t first = 0;
        std::uint32_t last = table.count();
        while (first < last) {
            const std::uint32_t middle = first + (last - first) / 2;
            if (Digits(table.record(middle) + id.offset, id.width) < key)
                first = middle + 1;
            else
                last = middle;
        }
        const char* record = table.record(first);
        if (*record != '*')
            sum += static_cast<std::uint64_t>(Digits(record + quantity.offset, quantity.width));
    }
    return sum;
}

}  // namespace zu::bench
