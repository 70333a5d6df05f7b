#include "samples/generator/Orders.h"

#include "host/technologies/dbf/TableWriter.h"
#include "portable/calendar/Calendar.h"
#include "samples/generator/LastChange.h"
#include "samples/generator/Random.h"
#include "samples/generator/Words.h"

namespace zu::samples {

namespace {

enum Column : std::size_t {
    kId,
    kCustomer,
    kCountry,
    kOrdered,
    kShipped,
    kGoods,
    kQuantity,
    kAmount,
    kDiscount,
    kWeight,
    kPaid,
    kChanged,
    kNote
};

constexpr std::int32_t kMillisecondsOfADay = 86400000;

/// One to four sentences; the longest notes fill several blocks of the memo file.
std::u16string Note(Random& random) {
    std::u16string note;
    for (std::uint32_t sentences = 1 + random.Below(4); sentences > 0; --sentences) {
        if (!note.empty()) note += u"\r\n";
        note += random.Pick(NoteSentences());
    }
    return note;
}

}  // namespace

void WriteOrders(files::FileSystem& system, const std::string& folder, std::uint32_t count,
                 std::uint32_t customers) {
    dbf::TableWriter table(system, folder + "/orders.dbf", dbf::Format::VisualFoxPro, 0x03,
                           {{"ID", 'I', 4, 0},
                            {"CUSTOMER", 'N', 8, 0},
                            {"COUNTRY", 'C', 2, 0},
                            {"ORDERED", 'D', 8, 0},
                            {"SHIPPED", 'D', 8, 0},
                            {"GOODS", 'C', 20, 0},
                            {"QTY", 'N', 6, 0},
                            {"AMOUNT", 'N', 12, 2},
                            {"DISCOUNT", 'N', 5, 2, true},
                            {"WEIGHT", 'B', 8, 3},
                            {"PAID", 'L', 1, 0},
                            {"CHANGED", 'T', 8, 0},
                            {"NOTE", 'M', 4, 0}},
                           kLastChange);
    const std::int32_t opening = calendar::ToJulianDay({2019, 1, 2});
    constexpr std::int32_t kDays = 2550;

    Random random(20190102);
    for (std::uint32_t id = 1; id <= count; ++id) {
        table.SetInteger(kId, static_cast<std::int32_t>(id));
        table.SetNumber(kCustomer, 1 + random.Below(customers));
        table.SetText(kCountry, random.Pick(Countries()).code);
        const auto day =
            opening + static_cast<std::int32_t>(static_cast<std::uint64_t>(id) * kDays / (count + 1));
        table.SetDate(kOrdered, calendar::FromJulianDay(day));
        // What was ordered last has not been sent yet.
        const bool shipped = id + count / 100 < count && !random.Chance(2);
        if (shipped) table.SetDate(kShipped, calendar::FromJulianDay(day + random.Between(1, 9)));
        table.SetText(kGoods, random.Pick(Goods()));
        const std::int32_t quantity = random.Between(1, 40);
        table.SetNumber(kQuantity, quantity);
        table.SetDecimal(kAmount, static_cast<std::int64_t>(quantity) * random.Between(195, 24900));
        // Without an agreement about a discount there is none to be 0.
        if (random.Chance(30)) {
            table.SetDecimal(kDiscount, static_cast<std::int64_t>(random.Between(1, 6)) * 250);
        } else {
            table.SetNull(kDiscount);
        }
        table.SetNumber(kWeight, quantity * random.Between(50, 4000) / 1000.0);
        table.SetBoolean(kPaid, shipped && random.Chance(93));
        table.SetDateTime(kChanged, day + random.Between(0, 30),
                          random.Between(0, kMillisecondsOfADay / 1000 - 1) * 1000);
        if (random.Chance(20)) table.SetMemo(kNote, Note(random));
        table.Append(random.Chance(4));
    }
    table.Close({{"ID", "ID"},
                 {"CUSTOMER", "CUSTOMER"},
                 {"ORDERED", "ORDERED"},
                 {"AMOUNT", "AMOUNT"},
                 {"COUNTRY", "COUNTRY+DTOS(ORDERED)"},
                 {.name = "LATEST", .key = "ORDERED", .descending = true},
                 {.name = "OPEN", .key = "ORDERED", .filter = ".NOT. PAID"}});
}

}  // namespace zu::samples
