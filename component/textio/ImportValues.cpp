#include "component/textio/ImportValues.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/NumericConversion.h"
#include "component/engine/RunTimeError.h"
#include "portable/calendar/Calendar.h"
#include "portable/textio/Cell.h"

namespace zu::component {

using com::Variant;
using textio::FieldType;

namespace {

Variant FromSingle(float number) {
    VARIANT value{};
    value.vt = VT_R4;
    value.fltVal = number;
    return Variant::Adopt(value);
}

Variant FromDay(std::int32_t julianDay) {
    VARIANT value{};
    value.vt = VT_DATE;
    value.date = calendar::ToAutomationDate(julianDay, 0);
    return Variant::Adopt(value);
}

/// A number that is not written plainly, by the rules of automation.
Variant OtherNumber(const Variant& text, int type) {
    switch (static_cast<FieldType>(type)) {
        case FieldType::Integer16:
        case FieldType::Byte:
            return Variant(ToInteger(text));
        case FieldType::Integer32:
            return Variant(ToLong(text));
        case FieldType::Single:
            return FromSingle(ToSingle(text));
        default:
            return Variant(ToDouble(text));
    }
}

const wchar_t* ExpectedNumber(int type) noexcept {
    switch (static_cast<FieldType>(type)) {
        case FieldType::Integer16:
        case FieldType::Byte:
            return L"a whole number from -32768 to 32767";
        case FieldType::Integer32:
            return L"a whole number from -2147483648 to 2147483647";
        default:
            return L"a number";
    }
}

}  // namespace

std::wstring_view ImportValues::Wide(std::string_view bytes) {
    wide_.clear();
    page_.Decode(bytes, wide_);
    return com::AsWide(wide_);
}

std::wstring_view ImportValues::Wide(std::u16string_view characters) {
    return com::AsWide(characters);
}

Variant ImportValues::NoDate(std::wstring_view token, FieldNotes& notes) const {
    const std::wstring mask(com::AsWide(mask_));
    notes.Add(token, L"a date under the mask " + mask);
    const com::ComError mismatch(com::kTypeMismatch);
    Engine().messages().Trace(RunTimeErrorText(mismatch, L"ScanDate ") + std::wstring(token) + L" [" + mask +
                              L"]");
    return Variant();
}

std::optional<bool> ImportValues::Truth(std::string_view token) {
    constexpr std::size_t kMostAnswers = 16;
    for (const Answer& answer : answers_)
        if (answer.token == token) return answer.truth;
    try {
        const bool truth = Engine().data().ToBoolean(Variant(Wide(token)));
        if (answers_.size() < kMostAnswers) answers_.push_back({std::string(token), truth});
        return truth;
    } catch (const com::ComError&) {
        SetErrorInfo(0, nullptr);
        return std::nullopt;
    }
}

template <class Char>
Variant ImportValues::ConvertAny(const textio::ReadValue<Char>& value, int type, FieldNotes& notes) {
    using Kind = typename textio::ReadValue<Char>::Kind;
    switch (value.kind) {
        case Kind::Integer16:
            return Variant(static_cast<SHORT>(value.integer));
        case Kind::Integer32:
            return Variant(LONG{value.integer});
        case Kind::Single:
            return FromSingle(static_cast<float>(value.number));
        case Kind::Double:
            return Variant(value.number);
        case Kind::Date:
            return FromDay(value.integer);
        case Kind::NoDate:
            return Variant(L"");
        default:
            break;
    }
    const std::wstring_view token = Wide(value.text);
    try {
        if (value.kind == Kind::BadDate) return NoDate(token, notes);
        Variant text(token);
        if (value.kind == Kind::Truth) return Variant(Engine().data().ToBoolean(text));
        return value.kind == Kind::OtherNumber ? OtherNumber(text, type) : text;
    } catch (const com::ComError&) {
        SetErrorInfo(0, nullptr);
        notes.Add(token, value.kind == Kind::Truth ? L"True or False" : ExpectedNumber(type));
        return Variant();
    }
}

Variant ImportValues::Convert(const textio::ReadValue<char>& value, int type, FieldNotes& notes) {
    return ConvertAny(value, type, notes);
}

Variant ImportValues::Convert(const textio::ReadValue<char16_t>& value, int type, FieldNotes& notes) {
    return ConvertAny(value, type, notes);
}

}  // namespace zu::component
