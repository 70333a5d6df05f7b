#include "host/service/IndexKey.h"

#include <utility>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SameText.h"
#include "host/service/FieldSelection.h"
#include "host/service/RefusedValue.h"
#include "host/service/ValueConversion.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

bool IsBlank(std::wstring_view text) noexcept {
    return text.find_first_not_of(L' ') == std::wstring_view::npos;
}

}  // namespace

IndexKey::IndexKey(std::shared_ptr<OpenTable> table, std::size_t index)
    : table_(std::move(table)),
      index_(index),
      facts_(table_->Index(index)),
      parts_(facts_->partNames.size()) {}

std::string IndexKey::Name() const {
    return description().name + " of table " + table()->name();
}

std::size_t IndexKey::Locate(const VARIANT& index) const {
    if (const auto name = com::TextOf(index)) {
        for (std::size_t i = 0; i < parts_.size(); ++i)
            if (com::SameText(PartName(i), *name)) return i;
        throw Error(ErrorKind::NotFound,
                    "Index " + Name() + " has no key field \"" + text::ToUtf8(com::AsUtf16(*name)) + "\"");
    }
    const auto number = WholeNumber(index);
    if (!number)
        throw com::ComError(com::kTypeMismatch, L"A key field is asked for by its name or its number");
    if (*number < 0 || static_cast<std::size_t>(*number) >= parts_.size())
        throw Error(ErrorKind::NotFound, "Index " + Name() + " has no key field " + std::to_string(*number) +
                                             ", there are " + std::to_string(parts_.size()) +
                                             " counted from 0");
    return static_cast<std::size_t>(*number);
}

void IndexKey::SetPartValue(std::size_t part, const VARIANT& value) {
    Part& target = parts_.at(part);
    target.value = com::Variant(value);
    target.loaded = true;
}

std::optional<std::vector<technologies::KeyCriterion>> IndexKey::Criteria() const {
    std::vector<technologies::KeyCriterion> criteria;
    for (std::size_t i = 0; i < parts_.size() && parts_[i].loaded; ++i) {
        const Part& part = parts_[i];
        const bool isFirst = i == 0;
        const auto text = com::TextOf(part.value);
        if (isFirst &&
            (part.value.type() == VT_EMPTY || com::IsMissing(part.value) || (text && IsBlank(*text))))
            return criteria;
        try {
            criteria.push_back({KeyFromVariant(part.value, PartType(i)), part.exact});
        } catch (const com::ComError& error) {
            throw RefusedValue(error,
                               L"Key field " + PartName(i) + L" of index " +
                                   std::wstring(com::AsWide(text::ToUtf16(Name()))),
                               PartType(i), part.value);
        }
        if (criteria.back().value.kind == technologies::Value::Kind::Null) return std::nullopt;
    }
    return criteria;
}

}  // namespace zu::host
