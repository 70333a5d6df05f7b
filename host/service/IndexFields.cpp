#include "host/service/IndexFields.h"

#include <optional>
#include <string>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/Variant.h"
#include "host/service/FieldSelection.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

LONG CountOf(::DataFieldList& list) {
    LONG count = 0;
    com::Check(list.Count(&count));
    return count;
}

com::Variant EntryOf(::DataFieldList& list, LONG number) {
    com::Variant entry;
    com::Check(list.Item(number, entry.put()));
    return entry;
}

std::string TextOfEntry(const com::Variant& entry, const ViewFields& fields) {
    if (const auto text = com::TextOf(entry)) return text::ToUtf8(com::AsUtf16(*text));
    const std::optional<LONG> number = WholeNumber(entry);
    if (!number)
        throw Error(ErrorKind::TypeMismatch, "An index is made from field names, expressions and numbers.");
    if (*number < 0 || static_cast<std::size_t>(*number) >= fields.size())
        throw Error(ErrorKind::NotFound, "There is no field " + std::to_string(*number) +
                                             " for the index, there are " + std::to_string(fields.size()) +
                                             " counted from 0");
    return fields[static_cast<std::size_t>(*number)].description.name;
}

}  // namespace

std::vector<technologies::IndexField> IndexFieldsOf(::DataFieldList* list, const ViewFields& fields) {
    std::vector<technologies::IndexField> result;
    if (!list) return result;
    const LONG count = CountOf(*list);
    for (LONG i = 0; i < count; ++i) {
        VARIANT_BOOL descending = VARIANT_FALSE;
        com::Check(list->Descending(i, &descending));
        result.push_back({TextOfEntry(EntryOf(*list, i), fields), descending != VARIANT_FALSE});
    }
    return result;
}

bool NamesFieldsByNumber(::DataFieldList* list) {
    if (!list) return false;
    const LONG count = CountOf(*list);
    for (LONG i = 0; i < count; ++i)
        if (WholeNumber(EntryOf(*list, i))) return true;
    return false;
}

std::vector<technologies::FieldDescription> DescriptionsOf(const ViewFields& fields) {
    std::vector<technologies::FieldDescription> descriptions;
    descriptions.reserve(fields.size());
    for (const ViewField& field : fields)
        descriptions.push_back(field.description);
    return descriptions;
}

}  // namespace zu::host
