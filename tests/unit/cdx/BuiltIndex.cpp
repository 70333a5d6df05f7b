#include "tests/unit/cdx/BuiltIndex.h"

#include <stdexcept>
#include <utility>

#include "host/technologies/dbf/cdx/TagDirectory.h"

namespace zu::dbf::cdx {

using technologies::Value;

std::uint32_t BuiltIndex::HeaderOf(const std::string& tag) {
    CdxFile file(memory.Open("test.cdx", {}));
    for (const DirectoryEntry& entry : ReadTagDirectory(file)) {
        if (entry.name == tag) return entry.header;
    }
    throw std::runtime_error("no tag " + tag);
}

Value TextValue(std::u16string text) {
    Value value;
    value.kind = Value::Kind::Text;
    value.text = std::move(text);
    return value;
}

Value IntegerValue(std::int64_t integer) {
    Value value;
    value.kind = Value::Kind::Integer;
    value.integer = integer;
    return value;
}

Value NumberValue(double number) {
    Value value;
    value.kind = Value::Kind::Double;
    value.number = number;
    return value;
}

Value DateValue(std::int32_t julianDay, std::int32_t milliseconds) {
    Value value;
    value.kind = Value::Kind::DateTime;
    value.julianDay = julianDay;
    value.milliseconds = milliseconds;
    return value;
}

Value TruthValue(bool truth) {
    Value value;
    value.kind = Value::Kind::Boolean;
    value.boolean = truth;
    return value;
}

}  // namespace zu::dbf::cdx
