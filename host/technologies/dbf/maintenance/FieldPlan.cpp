#include "host/technologies/dbf/maintenance/FieldPlan.h"

#include <algorithm>
#include <optional>

#include "portable/error/Error.h"
#include "portable/files/Path.h"
#include "portable/text/Utf.h"

namespace zu::dbf::maintenance {
namespace {

using technologies::FieldDescription;
using technologies::FieldType;

constexpr int kWidestText = 254;
constexpr int kWidestNumber = 20;
constexpr int kDoubleSize = 20;  // what a field of doubles is described with
constexpr int kDateSize = 10;    // yyyy-mm-dd; anything wider shows a time too
constexpr int kMemoSize = 10;    // what memo fields are described with
constexpr int kDefaultDecimalPlaces = 18;

struct FormatName {
    const char* name;
    Format format;
};
constexpr FormatName kFormatNames[] = {
    {"dbaseiii", Format::DBase3}, {"foxpro2", Format::FoxPro2}, {"visualfoxpro", Format::VisualFoxPro}};

std::optional<Format> FormatOf(std::string_view wanted) {
    std::string name;
    for (const char c : wanted)
        if (c != ' ') name += c;
    if (name.empty()) return std::nullopt;
    for (const FormatName& known : kFormatNames)
        if (files::SameName(name, known.name)) return known.format;
    throw Error(ErrorKind::InvalidArgument,
                "The format \"" + std::string(wanted) +
                    "\" for new tables is not known; possible are dBASE III, FoxPro 2 and Visual FoxPro.");
}

bool IsLongBinary(const FieldDescription& field) {
    return field.size <= 0 || field.size == kMemoSize || field.size > kWidestText;
}

bool IsStoredDouble(const FieldDescription& field) {
    return field.size <= 0 || field.size == kDoubleSize;
}

// The oldest format that has a field of this kind.
Format NeededFor(const FieldDescription& field) {
    if (field.nullable) return Format::VisualFoxPro;
    switch (field.type) {
        case FieldType::Integer16:
        case FieldType::Integer32:
        case FieldType::Byte:
        case FieldType::Currency:
            return Format::VisualFoxPro;
        case FieldType::Single:
        case FieldType::Double:
            return IsStoredDouble(field) ? Format::VisualFoxPro : Format::DBase3;
        case FieldType::Date:
            return field.size > kDateSize ? Format::VisualFoxPro : Format::DBase3;
        case FieldType::Binary:
            return IsLongBinary(field) ? Format::FoxPro2 : Format::VisualFoxPro;
        default:
            return Format::DBase3;
    }
}

[[noreturn]] void Fail(ErrorKind kind, const FieldDescription& field, const std::string& reason) {
    throw Error(kind, "The field \"" + field.name + "\" cannot be made: " + reason + ".");
}

std::string NameOf(const FieldDescription& field, const text::CodePage& codePage) {
    auto bytes = codePage.Encode(text::ToUtf16(field.name));
    if (!bytes)
        Fail(ErrorKind::InvalidArgument, field,
             "its name has characters that are not in code page " + std::to_string(codePage.number()));
    return *bytes;
}

// Makes one field at a time for a format.
class FieldMaker {
public:
    FieldMaker(Format format, const text::CodePage& codePage) : format_(format), codePage_(codePage) {}

    FieldDefinition Make(const FieldDescription& field) const {
        FieldDefinition made;
        made.name = NameOf(field, codePage_);
        made.nullable = field.nullable;
        switch (field.type) {
            case FieldType::Text:
                MakeText(field, made);
                break;
            case FieldType::LongText:
                made.type = 'M';
                break;
            case FieldType::Decimal:
                MakeDigits(field, 'N', made);
                break;
            case FieldType::Single:
            case FieldType::Double:
                MakeDouble(field, made);
                break;
            case FieldType::Byte:
                MakeInteger(3, made);
                break;
            case FieldType::Integer16:
                MakeInteger(6, made);
                break;
            case FieldType::Integer32:
                MakeInteger(11, made);
                break;
            case FieldType::Currency:
                RequireVisualFoxPro(field, "amounts of currency");
                made.type = 'Y';
                break;
            case FieldType::Date:
                if (field.size > kDateSize) RequireVisualFoxPro(field, "dates with a time");
                made.type = field.size > kDateSize ? 'T' : 'D';
                break;
            case FieldType::Boolean:
                made.type = 'L';
                break;
            case FieldType::Binary:
                MakeBinary(field, made);
                break;
            default:
                Fail(ErrorKind::InvalidArgument, field,
                     "the field type " + std::to_string(static_cast<int>(field.type)) + " is not known");
        }
        return made;
    }

private:
    bool isVisualFoxPro() const noexcept { return format_ == Format::VisualFoxPro; }

    void RequireVisualFoxPro(const FieldDescription& field, const std::string& what) const {
        if (!isVisualFoxPro())
            Fail(ErrorKind::Unsupported, field, what + " are kept in tables of Visual FoxPro only");
    }

    static void MakeText(const FieldDescription& field, FieldDefinition& made) {
        made.type = field.size > kWidestText ? 'M' : 'C';
        made.width = field.size;
    }

    static void MakeDigits(const FieldDescription& field, char type, FieldDefinition& made) {
        made.type = type;
        made.width = field.size > 0 ? field.size : kWidestNumber;
        made.decimals = field.decimals;
    }

    void MakeDouble(const FieldDescription& field, FieldDefinition& made) const {
        if (!IsStoredDouble(field)) {
            MakeDigits(field, 'F', made);
            return;
        }
        RequireVisualFoxPro(field, "floating-point numbers without a fixed width");
        made.type = 'B';
        made.decimals = std::clamp(field.decimals, 0, kDefaultDecimalPlaces);
    }

    void MakeInteger(int digits, FieldDefinition& made) const {
        made.type = isVisualFoxPro() ? 'I' : 'N';
        made.width = digits;
    }

    void MakeBinary(const FieldDescription& field, FieldDefinition& made) const {
        if (format_ == Format::DBase3) Fail(ErrorKind::Unsupported, field, "dBASE III has no binary fields");
        made.width = field.size;
        if (!IsLongBinary(field)) {
            RequireVisualFoxPro(field, "short binary contents");
            made.type = 'Q';
        } else {
            made.type = isVisualFoxPro() ? 'W' : 'G';
        }
    }

    Format format_;
    const text::CodePage& codePage_;
};

}  // namespace

FieldPlan PlanFields(const std::vector<FieldDescription>& fields, std::string_view wanted,
                     const text::CodePage& codePage) {
    FieldPlan plan;
    if (const auto format = FormatOf(wanted)) {
        plan.format = *format;
    } else {
        for (const FieldDescription& field : fields)
            plan.format = std::max(plan.format, NeededFor(field));
        const bool hasMemo = std::any_of(fields.begin(), fields.end(), [](const FieldDescription& field) {
            return field.type == FieldType::LongText ||
                   (field.type == FieldType::Text && field.size > kWidestText);
        });
        // Memos of dBASE III cannot hold every text.
        if (hasMemo) plan.format = std::max(plan.format, Format::FoxPro2);
    }
    const FieldMaker maker(plan.format, codePage);
    plan.fields.reserve(fields.size());
    for (const FieldDescription& field : fields)
        plan.fields.push_back(maker.Make(field));
    return plan;
}

}  // namespace zu::dbf::maintenance
