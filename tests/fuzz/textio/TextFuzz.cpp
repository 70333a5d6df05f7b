// Reads arbitrary bytes as a text file under arbitrary settings, and writes what was read.
//
// Input: eight bytes of settings, a separator up to a zero byte, a date mask up to a zero byte, then the
// file.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"
#include "portable/textio/FieldRenderer.h"
#include "portable/textio/LineCutter.h"
#include "portable/textio/LineReader.h"
#include "portable/textio/ValueReader.h"

namespace {

using namespace zu;
using namespace zu::textio;

constexpr std::size_t kSettings = 8;
constexpr int kTypes[] = {2, 3, 4, 5, 6, 7, 8, 11, 14, 17, 100, 12};

std::string_view Take(std::string_view& input) {
    const std::size_t end = input.find('\0');
    const std::string_view taken = input.substr(0, end);
    input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
    return taken.substr(0, 40);
}

std::u16string Wide(std::string_view text) {
    std::u16string wide;
    text::CodePage::Default().Decode(text, wide);
    return wide;
}

Cell CellOf(const ReadValue<char>& value) {
    using Kind = ReadValue<char>::Kind;
    switch (value.kind) {
        case Kind::Integer16:
        case Kind::Integer32:
            return Cell::OfInteger(value.integer);
        case Kind::Single:
            return Cell::OfNumber(value.number, Cell::Kind::Single);
        case Kind::Double:
            return Cell::OfNumber(value.number);
        case Kind::Date:
            return Cell::OfInteger(value.integer, Cell::Kind::Date);
        case Kind::NoDate:
        case Kind::BadDate:
        case Kind::OtherNumber:
            return Cell();
        case Kind::Truth:
            return Cell::OfBoolean(value.text == "T");
        case Kind::Text:
            break;
    }
    return Cell::OfBytes(value.text);
}

/// Numbers and dates that were read once must read the same when they are written and read again.
void Require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < kSettings) return 0;
    std::string_view input(reinterpret_cast<const char*>(data) + kSettings, size - kSettings);
    const std::string_view separator = Take(input);
    const std::string_view mask = Take(input);

    ImportFormat in;
    in.ApplyPreset(data[0] % 3);
    in.SetSeparator(Wide(separator));
    in.SetDateForm(data[1] % 10);
    if (data[2] % 2 == 1) in.SetDateMask(Wide(mask));
    if (data[2] % 4 == 3) in.SetDateSeparator(Wide(mask.substr(0, 1)));
    in.SetQuote(std::u16string(data[3] % 3 == 0 ? 0 : 1, u'"'));
    ExportFormat out;
    out.ApplyPreset(data[4] % 3);
    out.SetDateForm(data[1] % 8);
    out.plainOptions().signPosition = data[5] % 4;
    out.plainOptions().numbersQuoted = data[5] % 8 > 3;
    out.plainOptions().omitDecimalPoint = data[5] % 16 > 7;
    out.SetLengthOfDouble(data[6]);
    out.SetDecimalsForDouble(data[6] % 20);

    files::MemoryFiles memory;
    auto file = memory.Open("text", {files::Access::ReadWrite, files::Creation::CreateAlways});
    file->WriteAt(0, std::as_bytes(std::span(input)));
    const Encoding encoding(text::CodePage::Default());
    LineCutter<char> cutter(in.preset(), std::string(separator), encoding.Encode(in.quote()));
    LineCutter<char16_t> wideCutter(in.preset(), Wide(separator), in.quote());
    ValueReader reader(in);
    std::vector<ExportField> fields;
    for (const int type : kTypes)
        fields.push_back({"F", type, data[7] % 32, data[7] % 7});
    FieldRenderer<char> renderer(out, fields, encoding);
    FieldRenderer<char16_t> wideRenderer(out, fields, encoding);

    LineReader lines(std::move(file), 1 + data[7]);
    std::string_view line;
    while (lines.Next(line)) {
        cutter.Start(line);
        const std::u16string wideLine = Wide(line);
        wideCutter.Start(wideLine);
        for (std::size_t field = 0; field < fields.size() && !cutter.isAtEnd(); ++field) {
            const ImportField target{fields[field].type, fields[field].size};
            const auto value = reader.Read<char>(target, cutter.Next(reader.WidthOf(target)));
            const std::u16string token = Wide(value.text);
            const auto wide = reader.Read<char16_t>(target, wideCutter.Next(reader.WidthOf(target)));
            Require(static_cast<int>(wide.kind) == static_cast<int>(value.kind) &&
                    wide.integer == value.integer && wide.text == token);
            TextBuffer<char> text;
            TextBuffer<char16_t> wideText;
            try {
                renderer.Render(field, CellOf(value), text);
                wideRenderer.Render(field, CellOf(value), wideText);
                Require(encoding.Encode(wideText.view()) == text.view());
            } catch (const Error&) {
                continue;  // no value, where one is needed
            }
        }
        Require(cutter.isAtEnd() == wideCutter.isAtEnd());
    }
    return 0;
}
