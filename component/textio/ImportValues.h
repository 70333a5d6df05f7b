#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/Variant.h"
#include "component/textio/FieldNotes.h"
#include "portable/text/CodePage.h"
#include "portable/textio/ImportFormat.h"
#include "portable/textio/ValueReader.h"

namespace zu::component {

/// Makes what a token was read as into the value that a field takes. Nothing here fails: a token that cannot
/// be converted becomes Empty, and a note says why, for the case that the record is not saved.
class ImportValues {
public:
    /// `page` is that of the file and of tokens of bytes.
    ImportValues(const textio::ImportFormat& format, const text::CodePage& page)
        : mask_(format.dateMask()), page_(page) {}

    /// `type` is the field's type code.
    com::Variant Convert(const textio::ReadValue<char>& value, int type, FieldNotes& notes);
    com::Variant Convert(const textio::ReadValue<char16_t>& value, int type, FieldNotes& notes);

    /// What the engine takes the token of a Boolean field for; nothing when it has no answer.
    std::optional<bool> Truth(std::string_view token);

private:
    struct Answer {
        std::string token;
        bool truth;
    };

    template <class Char>
    com::Variant ConvertAny(const textio::ReadValue<Char>& value, int type, FieldNotes& notes);
    /// Valid until the next call.
    std::wstring_view Wide(std::string_view bytes);
    std::wstring_view Wide(std::u16string_view characters);
    com::Variant NoDate(std::wstring_view token, FieldNotes& notes) const;

    std::u16string mask_;
    const text::CodePage& page_;
    std::u16string wide_;
    std::vector<Answer> answers_;  ///< of the engine, for the words that come again and again
};

}  // namespace zu::component
