#include "bench/write/TableOrders.h"

#include <stdexcept>
#include <vector>

#include "bench/write/Order.h"
#include "host/technologies/dbf/DbfTechnology.h"
#include "host/technologies/dbf/maintenance/TableRebuild.h"
#include "portable/files/File.h"

namespace zu::bench {
namespace {

using technologies::FieldType;
using technologies::Value;

technologies::FieldDescription Field(const char* name, FieldType type, int size, int decimals = 0) {
    technologies::FieldDescription field;
    field.name = name;
    field.type = type;
    field.size = size;
    field.decimals = decimals;
    return field;
}

technologies::TechnologySettings In(const std::string& folder) {
    technologies::TechnologySettings settings;
    settings.dataFolder = folder;
    return settings;
}

void SetUnits(Value& value, std::int64_t units, std::uint8_t scale) {
    value.kind = Value::Kind::Decimal;
    value.decimal = {static_cast<std::uint64_t>(units), 0, scale, false};
}

void SetText(Value& value, const std::string& text) {
    value.kind = Value::Kind::Text;
    value.text.assign(text.begin(), text.end());
}

}  // namespace

TableOrders::TableOrders(const std::string& folder)
    : path_(folder + "/orders.dbf"),
      technology_(std::make_unique<dbf::DbfTechnology>(files::SystemFiles(), In(folder))) {
    technology_->CreateTable("", "orders",
                             {Field("ID", FieldType::Decimal, 10), Field("CUSTOMER", FieldType::Text, 30),
                              Field("COUNTRY", FieldType::Text, 2), Field("ORDERED", FieldType::Date, 8),
                              Field("AMOUNT", FieldType::Decimal, 12, 2), Field("QTY", FieldType::Decimal, 6),
                              Field("PAID", FieldType::Boolean, 1), Field("RATE", FieldType::Decimal, 10, 4),
                              Field("NOTE", FieldType::Text, 60), Field("CODE", FieldType::Text, 8)},
                             {{"ID", false}});
    table_ = technology_->OpenTable("", "orders");
}

TableOrders::~TableOrders() = default;

void TableOrders::Append(std::uint32_t first, std::uint32_t last, bool inOne) {
    std::unique_ptr<technologies::Batch> batch;
    if (inOne) batch = table_->BeginBatch();
    Value value;
    for (std::uint32_t number = first; number <= last; ++number) {
        const Order order = Order::Make(number);
        const auto edit = table_->NewRecord();
        value.kind = Value::Kind::Integer;
        value.integer = order.id;
        edit->Set(0, value);
        SetText(value, order.customer);
        edit->Set(1, value);
        SetText(value, order.country);
        edit->Set(2, value);
        value.kind = Value::Kind::DateTime;
        value.julianDay = order.day;
        value.milliseconds = 0;
        edit->Set(3, value);
        SetUnits(value, order.cents, 2);
        edit->Set(4, value);
        value.kind = Value::Kind::Integer;
        value.integer = order.quantity;
        edit->Set(5, value);
        value.kind = Value::Kind::Boolean;
        value.boolean = order.paid;
        edit->Set(6, value);
        SetUnits(value, order.rate, 4);
        edit->Set(7, value);
        SetText(value, order.note);
        edit->Set(8, value);
        SetText(value, order.code);
        edit->Set(9, value);
        if (order.deleted) edit->SetDeleted(true);
        if (!edit->Save()) throw std::runtime_error("a record was not saved");
    }
    if (batch) batch->Finish();
}

void TableOrders::BuildIndex() {
    table_.reset();
    dbf::maintenance::CreateTag(files::SystemFiles(), path_, {}, {"CUSTOMER", "CUSTOMER"});
    table_ = technology_->OpenTable("", "orders");
}

void TableOrders::Update(std::uint32_t count, std::uint32_t total, bool inOne) {
    std::unique_ptr<technologies::Batch> batch;
    if (inOne) batch = table_->BeginBatch();
    const auto index = table_->FindIndex("ORDERS");
    std::vector<technologies::KeyCriterion> key(1);
    key[0].value.kind = Value::Kind::Integer;
    Value value;
    for (std::uint32_t i = 0; i < count; ++i) {
        key[0].value.integer = 1 + static_cast<std::int64_t>((std::uint64_t{i} * 7919) % total);
        const auto found = table_->Seek(*index, key, 1, true);
        if (found.size() != 1) throw std::runtime_error("a record was not found");
        const auto edit = table_->EditRecord(found[0]);
        SetUnits(value, i, 2);
        edit->Set(4, value);
        if (!edit->Save()) throw std::runtime_error("a record was not saved");
    }
    if (batch) batch->Finish();
}

void TableOrders::Pack() {
    table_.reset();
    technology_->Pack("", "orders", nullptr);
    table_ = technology_->OpenTable("", "orders");
}

void TableOrders::Require(std::uint32_t records) {
    if (table_->RecordCount() != records) throw std::runtime_error("records are missing");
    table_.reset();
    const auto report = technology_->Check("", "orders", nullptr);
    if (!report.findings.empty()) throw std::runtime_error(report.findings.front());
    table_ = technology_->OpenTable("", "orders");
}

}  // namespace zu::bench
