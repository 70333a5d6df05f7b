#include "samples/generator/BenchOrders.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <span>

#include "host/technologies/dbf/TableWriter.h"
#include "portable/calendar/Calendar.h"
#include "portable/text/Utf.h"
#include "samples/generator/LastChange.h"
#include "samples/generator/Random.h"
#include "samples/generator/Words.h"

namespace zu::samples {

namespace {

struct Order {
    std::uint32_t id = 0;
    std::u16string customer;
    std::u16string_view country;
    calendar::Date ordered;
    std::int64_t amount = 0;  ///< hundredths
    std::int32_t quantity = 0;
    bool paid = false;
    std::int64_t rate = 0;  ///< ten-thousandths
    std::u16string note;
    std::u16string code;
    bool deleted = false;
};

class OrderSource {
public:
    const Order& Next() {
        ++order_.id;
        const CountryWords& words = random_.Pick(Countries());
        order_.customer = random_.Pick(words.givenNames);
        order_.customer += u' ';
        order_.customer += random_.Pick(words.familyNames);
        order_.country = words.code;
        order_.ordered = calendar::FromJulianDay(kFirstDay + static_cast<std::int32_t>(random_.Below(3650)));
        order_.amount = random_.Between(100, 2000000);
        order_.quantity = random_.Between(1, 500);
        order_.paid = random_.Chance(70);
        order_.rate = random_.Between(5000, 20000);
        order_.note = random_.Pick(NoteSentences()).substr(0, 60);
        order_.code.assign(8, u'0');
        for (char16_t& digit : order_.code)
            digit = static_cast<char16_t>(u'A' + random_.Below(26));
        order_.deleted = random_.Chance(5);
        return order_;
    }

private:
    static constexpr std::int32_t kFirstDay = 2456294;  // 2013-01-01
    Random random_{1000000};
    Order order_;
};

class TextFile {
public:
    TextFile(files::FileSystem& system, const std::string& path)
        : file_(system.Open(path, {files::Access::ReadWrite, files::Creation::CreateAlways, true})) {
        block_.reserve(kBlock + 512);
    }

    void Write(const Order& order) {
        char line[256];
        const int length = std::snprintf(
            line, sizeof line, "%d,%u,%s,%s,%04d-%02d-%02d,%lld.%02d,%d,%d,%lld.%04d,\"",
            order.deleted ? 1 : 0, static_cast<unsigned>(order.id), text::ToUtf8(order.customer).c_str(),
            text::ToUtf8(order.country).c_str(), order.ordered.year, order.ordered.month, order.ordered.day,
            static_cast<long long>(order.amount / 100), static_cast<int>(order.amount % 100),
            static_cast<int>(order.quantity), order.paid ? 1 : 0, static_cast<long long>(order.rate / 10000),
            static_cast<int>(order.rate % 10000));
        block_.append(line, static_cast<std::size_t>(length));
        block_ += text::ToUtf8(order.note);
        block_ += "\",";
        block_ += text::ToUtf8(order.code);
        block_ += '\n';
        if (block_.size() >= kBlock) Flush();
    }

    void Flush() {
        file_->WriteAt(offset_, std::as_bytes(std::span(block_)));
        offset_ += block_.size();
        block_.clear();
    }

private:
    static constexpr std::size_t kBlock = 1 << 20;
    std::unique_ptr<files::File> file_;
    std::string block_;
    std::uint64_t offset_ = 0;
};

}  // namespace

void WriteBenchOrders(files::FileSystem& system, const std::string& folder, std::uint32_t count,
                      bool asText) {
    dbf::TableWriter table(system, folder + "/orders.dbf", dbf::Format::DBase3, 0x03,
                           {{"ID", 'N', 10, 0},
                            {"CUSTOMER", 'C', 30, 0},
                            {"COUNTRY", 'C', 2, 0},
                            {"ORDERED", 'D', 8, 0},
                            {"AMOUNT", 'N', 12, 2},
                            {"QTY", 'N', 6, 0},
                            {"PAID", 'L', 1, 0},
                            {"RATE", 'N', 10, 4},
                            {"NOTE", 'C', 60, 0},
                            {"CODE", 'C', 8, 0}},
                           kLastChange);
    std::unique_ptr<TextFile> text;
    if (asText) text = std::make_unique<TextFile>(system, folder + "/orders.csv");

    OrderSource source;
    for (std::uint32_t record = 0; record < count; ++record) {
        const Order& order = source.Next();
        table.SetNumber(0, order.id);
        table.SetText(1, order.customer);
        table.SetText(2, order.country);
        table.SetDate(3, order.ordered);
        table.SetDecimal(4, order.amount);
        table.SetNumber(5, order.quantity);
        table.SetBoolean(6, order.paid);
        table.SetDecimal(7, order.rate);
        table.SetText(8, order.note);
        table.SetText(9, order.code);
        table.Append(order.deleted);
        if (text) text->Write(order);
    }
    table.Close();
    if (text) text->Flush();
}

}  // namespace zu::samples
