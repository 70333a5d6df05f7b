#include "host/service/ViewField.h"

#include <utility>

#include "com/Bstr.h"
#include "com/SameText.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

std::wstring_view Trimmed(std::wstring_view name) noexcept {
    const auto first = name.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return name.substr(first, name.find_last_not_of(L' ') - first + 1);
}

}  // namespace

ViewField::ViewField(technologies::FieldDescription field)
    : description(std::move(field)), name(com::AsWide(text::ToUtf16(description.name))) {}

std::size_t FindField(const ViewFields& fields, std::wstring_view name) noexcept {
    const std::wstring_view wanted = Trimmed(name);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (com::SameText(fields[i].name, wanted)) return i;
    }
    return kNoField;
}

int AlignmentOf(const technologies::FieldDescription& field) noexcept {
    if (field.type == technologies::FieldType::Boolean) return 2;
    return field.rightAligned ? 1 : 0;
}

std::wstring_view TypeNameOf(technologies::FieldType type) noexcept {
    using technologies::FieldType;
    switch (type) {
        case FieldType::Integer16:
        case FieldType::Integer32:
            return L"Integer";
        case FieldType::Single:
            return L"Single";
        case FieldType::Double:
            return L"Double";
        case FieldType::Currency:
            return L"Currency";
        case FieldType::Date:
            return L"Date";
        case FieldType::Text:
            return L"Text";
        case FieldType::Boolean:
            return L"Boolean";
        case FieldType::Decimal:
            return L"Decimal";
        case FieldType::Byte:
            return L"Byte";
        case FieldType::LongText:
            return L"Long text";
        case FieldType::Binary:
            return L"Binary";
    }
    return L"Unknown";
}

}  // namespace zu::host
