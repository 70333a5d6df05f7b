#include "host/technologies/dbf/cdx/OpenTag.h"

#include <string_view>
#include <utility>

#include "host/technologies/dbf/cdx/MemoUse.h"
#include "host/technologies/dbf/cdx/StalenessProbe.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::dbf::cdx {

namespace {

std::string Utf8Of(std::string_view bytes, const text::CodePage& codePage) {
    std::u16string characters;
    codePage.Decode(bytes, characters);
    return text::ToUtf8(characters);
}

}  // namespace

OpenTag::OpenTag(CdxFile& file, const DirectoryEntry& entry, const IndexContext& context) : file_(file) {
    description_.name = entry.name.empty() ? context.tableName : Utf8Of(entry.name, context.codePage);
    try {
        Load(context, entry.header);
    } catch (const Error& error) {
        if (error.kind() == ErrorKind::IoFailure) throw;
        Reject(error.what());
    }
}

void OpenTag::Reject(const std::string& reason) {
    description_.usable = false;
    description_.reason = reason;
}

void OpenTag::Load(const IndexContext& context, std::uint32_t offset) {
    header_ = file_.Header(offset);
    description_.expression = Utf8Of(header_.key, context.codePage);
    description_.filter = Utf8Of(header_.filter, context.codePage);
    description_.unique = (header_.options & kUnique) != 0;
    description_.candidate = (header_.options & kCandidate) != 0;
    description_.descending = header_.descending;

    if (header_.key.empty()) {
        Reject("the tag has no key expression");
        return;
    }
    key_.emplace(expression::Program::CompileBytes(header_.key, context.layout));
    parts_ = AnalyseParts(*key_, context.layout, header_.descending);
    for (const PartForm& part : parts_)
        description_.parts.push_back(part.description);
    if (!header_.filter.empty()) {
        filter_.emplace(expression::Program::CompileBytes(header_.filter, context.layout));
        if (ReadsMemos(*filter_, context.layout)) {
            Reject("the FOR condition reads memo fields");
            return;
        }
    }

    if (!header_.isByteOrder()) {
        Reject("the tag is in the order of the collation " + header_.collation + ", which is not supported");
        return;
    }
    if (header_.keyLength == 0 || header_.keyLength > kMaxKeyLength) {
        Reject("the tag states keys of " + std::to_string(header_.keyLength) + " bytes");
        return;
    }
    ChooseForm(context);
}

// Where writers disagree about the bytes of a key, the table's own records tell which form it is.
void OpenTag::ChooseForm(const IndexContext& context) {
    std::string reason;
    const bool nullable = (header_.options & kNullableKey) != 0;
    const std::vector<KeyForm> forms =
        KeyForm::ForTag(*key_, context.layout, header_.keyLength, nullable, reason);
    for (const KeyForm& form : forms) {
        encoder_.emplace(*key_, context.layout, form);
        reason = FindStaleness(file_, *this, context.records);
        if (reason.empty()) return;
    }
    Reject(reason);
}

}  // namespace zu::dbf::cdx
