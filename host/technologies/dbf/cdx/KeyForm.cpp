#include "host/technologies/dbf/cdx/KeyForm.h"

#include <algorithm>

#include "host/technologies/dbf/cdx/MemoUse.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

using expression::Storage;
using expression::Type;

constexpr std::size_t kIntegerWidth = 4;
constexpr std::size_t kNumberWidth = 8;

const expression::FieldLayout* SingleField(const expression::Program& key,
                                           const expression::RecordLayout& layout) {
    const auto position = key.singleField();
    return position && *position < layout.fields.size() ? &layout.fields[*position] : nullptr;
}

// All forms of the type, the likeliest first; none when no index can hold it.
std::vector<KeyForm> FormsOf(const expression::Program& key, const expression::RecordLayout& layout) {
    const expression::FieldLayout* field = SingleField(key, layout);
    const bool nullable = field != nullptr && field->nullBit >= 0;
    if (field != nullptr && (field->storage == Storage::Memo || field->storage == Storage::Opaque)) return {};
    if (ReadsMemos(key, layout)) return {};
    switch (key.type()) {
        case Type::Text:
            return {{KeyEncoding::Text, key.textWidth(), nullable}};
        case Type::Number:
            if (field != nullptr && field->storage == Storage::Integer32) {
                return {{KeyEncoding::Integer32, kIntegerWidth, nullable},
                        {KeyEncoding::Double, kNumberWidth, nullable}};
            }
            if (field != nullptr && field->storage == Storage::Currency) {
                return {{KeyEncoding::Currency, kNumberWidth, nullable},
                        {KeyEncoding::Double, kNumberWidth, nullable}};
            }
            return {{KeyEncoding::Double, kNumberWidth, nullable}};
        case Type::Date:
            return {{KeyEncoding::Date, kNumberWidth, nullable}};
        case Type::DateTime:
            return {{KeyEncoding::DateTime, kNumberWidth, nullable}};
        case Type::Boolean:
            return {{KeyEncoding::Logical, 1, nullable}};
        case Type::Unknown:
            break;
    }
    return {};
}

}  // namespace

KeyForm KeyForm::ForNewTag(const expression::Program& key, const expression::RecordLayout& layout) {
    const std::vector<KeyForm> forms = FormsOf(key, layout);
    if (forms.empty()) {
        throw Error(
            ErrorKind::Unsupported,
            "an index key must be a text, a number, a date or a logical value of known type, and must not "
            "read memo fields");
    }
    const KeyForm& form = forms.front();
    if (form.width == 0) throw Error(ErrorKind::Unsupported, "the index key is always empty");
    if (form.length() > kMaxKeyLength) {
        throw Error(ErrorKind::Overflow, "the index key has " + std::to_string(form.length()) +
                                             " bytes; at most " + std::to_string(kMaxKeyLength) + " can be");
    }
    return form;
}

std::vector<KeyForm> KeyForm::ForTag(const expression::Program& key, const expression::RecordLayout& layout,
                                     std::size_t keyLength, bool nullable, std::string& reason) {
    std::vector<KeyForm> forms = FormsOf(key, layout);
    if (forms.empty()) {
        reason = ReadsMemos(key, layout) ? "the key reads memo fields"
                                         : "the type of the key is not known or cannot be in an index";
        return {};
    }
    const std::size_t width = keyLength - (nullable && keyLength > 0 ? 1 : 0);
    for (KeyForm& form : forms) {
        form.nullable = nullable;
        // The width of a text is fixed when the tag is made and may be that of another writer's reckoning.
        if (form.encoding == KeyEncoding::Text) form.width = width;
    }
    std::erase_if(forms, [&](const KeyForm& form) { return form.width != width || width == 0; });
    if (forms.empty()) {
        reason = "keys of " + std::to_string(keyLength) + " bytes do not fit the type of the key expression";
    }
    return forms;
}

}  // namespace zu::dbf::cdx
