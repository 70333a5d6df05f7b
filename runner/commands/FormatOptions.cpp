#include "runner/commands/FormatOptions.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SameText.h"
#include "com/Variant.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "runner/DispatchCall.h"
#include "runner/EngineLink.h"

namespace zu::runner::commands {
namespace {

constexpr wchar_t kDelimited[] = L"Delimited";
constexpr wchar_t kFixed[] = L"Fixed";

[[noreturn]] void Refuse(std::wstring_view text) {
    throw Error(ErrorKind::InvalidArgument, text::ToUtf8(com::AsUtf16(text)));
}

std::wstring FormatName(const CommandWords& words) {
    const std::wstring stated = words.Value(L"--format").value_or(L"delimited");
    for (const wchar_t* name : {kDelimited, kFixed}) {
        if (com::SameText(stated, name)) return name;
    }
    Refuse(L"--format needs delimited or fixed, not \"" + stated + L"\"");
}

/// Tabs are hard to write on a command line.
std::wstring SeparatorText(const std::wstring& stated) {
    return stated == L"\\t" || stated == L"tab" ? std::wstring(L"\t") : stated;
}

/// What people write for truth values; other words are left to automation.
com::Variant TruthOf(const std::wstring& value) {
    if (com::SameText(value, L"yes")) return com::Variant(true);
    if (com::SameText(value, L"no")) return com::Variant(false);
    return com::Variant(value);
}

}  // namespace

FormatOptions::FormatOptions(const CommandWords& words, Direction direction)
    : control_(CreateByName(L"ZuDBFFunctions.ZuDbfControl")), name_(FormatName(words)) {
    const com::Variant formats =
        CallMember(control_.get(), direction == Direction::Export ? L"ExportFormats" : L"ImportFormats");
    format_ = com::ObjectOf<IDispatch>(
        CallMember(com::ObjectOf<IDispatch>(formats).get(), L"Item", {com::Variant(name_)}));
    Apply(words, direction);
}

bool FormatOptions::isFixed() const noexcept {
    return name_ == kFixed;
}

std::wstring FormatOptions::Separator() const {
    return CallMember(format_.get(), L"Separator").ToText().str();
}

std::wstring FormatOptions::Quote() const {
    const bool quoted = !FindMember(format_.get(), L"StringsQuoted") ||
                        CallMember(format_.get(), L"StringsQuoted").ToBoolean();
    return quoted ? CallMember(format_.get(), L"FieldQuoteChar").ToText().str() : std::wstring();
}

void FormatOptions::Apply(const CommandWords& words, Direction direction) {
    if (const auto separator = words.Value(L"--separator")) Set(L"Separator", SeparatorText(*separator));
    if (const auto quote = words.Value(L"--quote")) {
        if (quote->empty() && direction == Direction::Export) {
            Set(L"StringsQuoted", L"False");
        } else {
            Set(L"FieldQuoteChar", *quote);
        }
    }
    if (const auto mask = words.Value(L"--dates")) {
        Set(L"DateFormatMask", *mask);
        // Only now does the format take the length of the new mask.
        Set(L"DateSeparator", CallMember(format_.get(), L"DateSeparator").ToText().str());
        Set(L"DateFormatMask", *mask);
    }
    for (const std::wstring& setting : words.Values(L"--set")) {
        const std::size_t equals = setting.find(L'=');
        if (equals == std::wstring::npos || equals == 0)
            Refuse(L"--set needs NAME=VALUE, not \"" + setting + L"\"");
        Set(setting.substr(0, equals), setting.substr(equals + 1));
    }
}

void FormatOptions::Set(const std::wstring& property, const std::wstring& value) {
    if (!FindMember(format_.get(), property)) Refuse(L"text formats have no property " + property);
    const bool isTruth = CallMember(format_.get(), property).type() == VT_BOOL;
    try {
        PutMember(format_.get(), property, isTruth ? TruthOf(value) : com::Variant(value));
    } catch (const com::ComError&) {
        Refuse(L"the property " + property + L" of text formats does not take \"" + value + L"\"");
    }
}

}  // namespace zu::runner::commands
