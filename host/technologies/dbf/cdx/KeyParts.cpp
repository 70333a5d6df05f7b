#include "host/technologies/dbf/cdx/KeyParts.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::dbf::cdx {

namespace {

using expression::FieldLayout;
using expression::Program;
using expression::RecordLayout;
using expression::Storage;
using technologies::FieldType;

constexpr std::size_t kDefaultStrWidth = 10;
constexpr std::size_t kMaxStrWidth = 40;

/// A call as it is written: the name in upper case and the texts of the arguments.
struct Call {
    std::string name;
    std::vector<std::string> arguments;
};

std::string Trimmed(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return std::string(text);
}

// "NAME(a, b)" when the text is one call and nothing else. Texts with quotes are left alone.
std::optional<Call> ParseCall(const std::string& source) {
    const std::string text = Trimmed(source);
    const std::size_t open = text.find('(');
    if (open == std::string::npos || text.back() != ')') return std::nullopt;
    if (text.find_first_of("\"'[{") != std::string::npos) return std::nullopt;
    Call call;
    call.name = Trimmed(std::string_view(text).substr(0, open));
    for (char& c : call.name)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    std::size_t depth = 0;
    std::size_t start = open + 1;
    for (std::size_t i = open; i < text.size(); ++i) {
        if (text[i] == '(') ++depth;
        if (text[i] == ')') --depth;
        const bool isEnd = depth == 0;
        if (isEnd && i + 1 != text.size()) return std::nullopt;
        if (isEnd || (depth == 1 && text[i] == ',')) {
            call.arguments.push_back(Trimmed(std::string_view(text).substr(start, i - start)));
            start = i + 1;
        }
    }
    return call;
}

std::optional<unsigned> SmallNumber(const std::string& text) {
    if (text.empty() || text.size() > 3) return std::nullopt;
    unsigned value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + static_cast<unsigned>(c - '0');
    }
    return value;
}

const FieldLayout* FieldOf(const Program& program, const RecordLayout& layout) {
    const auto position = program.singleField();
    return position && *position < layout.fields.size() ? &layout.fields[*position] : nullptr;
}

FieldType TypeOf(const FieldLayout& field) {
    switch (field.storage) {
        case Storage::NumberText:
            return FieldType::Decimal;
        case Storage::DateText:
        case Storage::DateTime:
            return FieldType::Date;
        case Storage::LogicalText:
            return FieldType::Boolean;
        case Storage::Integer32:
            return FieldType::Integer32;
        case Storage::Double:
            return FieldType::Double;
        case Storage::Currency:
            return FieldType::Currency;
        default:
            return FieldType::Text;
    }
}

FieldType TypeOf(expression::Type type) {
    switch (type) {
        case expression::Type::Boolean:
            return FieldType::Boolean;
        case expression::Type::Number:
            return FieldType::Double;
        case expression::Type::Date:
        case expression::Type::DateTime:
            return FieldType::Date;
        default:
            return FieldType::Text;
    }
}

// The field that a call is about, when its first argument is a field alone.
const FieldLayout* ArgumentField(const Call& call, const RecordLayout& layout) {
    if (call.arguments.empty()) return nullptr;
    try {
        return FieldOf(Program::Compile(text::ToUtf16(call.arguments.front()), layout), layout);
    } catch (const Error&) {
        return nullptr;
    }
}

bool IsNumeric(const FieldLayout& field) {
    return field.storage == Storage::NumberText || field.storage == Storage::Integer32 ||
           field.storage == Storage::Double || field.storage == Storage::Currency;
}

void RecogniseCall(const std::string& source, const RecordLayout& layout, PartForm& part) {
    const std::optional<Call> call = ParseCall(source);
    if (!call) return;
    const FieldLayout* field = ArgumentField(*call, layout);
    if (field == nullptr) return;
    const std::size_t arguments = call->arguments.size();
    if (call->name == "UPPER" && arguments == 1 && field->storage == Storage::Character) {
        part.kind = PartKind::Upper;
        part.fixedWidth = true;
    } else if (call->name == "DTOS" && arguments == 1 && TypeOf(*field) == FieldType::Date) {
        part.kind = PartKind::Dtos;
        part.fixedWidth = true;
    } else if (call->name == "STR" && arguments <= 3 && IsNumeric(*field)) {
        const auto width = arguments > 1 ? SmallNumber(call->arguments[1]) : kDefaultStrWidth;
        const auto decimals = arguments > 2 ? SmallNumber(call->arguments[2]) : 0U;
        if (!width || !decimals || *width == 0 || *width > kMaxStrWidth || *width != part.width) return;
        part.kind = PartKind::Str;
        part.fixedWidth = true;
        part.decimals = *decimals;
    } else {
        return;
    }
    part.description.name = field->name;
    part.description.type = TypeOf(*field);
}

PartForm Analyse(const std::string& source, const RecordLayout& layout, bool descending) {
    PartForm part{{}, PartKind::Expression, 0, false, 0, Program::Compile(text::ToUtf16(source), layout)};
    part.description.name = Trimmed(source);
    part.description.type = TypeOf(part.program.type());
    part.description.descending = descending;
    part.width = part.program.textWidth();
    if (const FieldLayout* field = FieldOf(part.program, layout)) {
        part.kind = PartKind::Field;
        part.fixedWidth = field->storage == Storage::Character;
        part.description.name = field->name;
        part.description.type = TypeOf(*field);
    } else {
        RecogniseCall(source, layout, part);
    }
    return part;
}

}  // namespace

std::vector<PartForm> AnalyseParts(const Program& key, const RecordLayout& layout, bool descending) {
    std::vector<PartForm> parts;
    for (const std::string& source : key.parts())
        parts.push_back(Analyse(source, layout, descending));
    return parts;
}

}  // namespace zu::dbf::cdx
