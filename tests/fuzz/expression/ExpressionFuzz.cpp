// Compiles arbitrary text as a condition and uses it in every way: with a layout over records of arbitrary
// bytes (one by one and in batches, which must agree), for the range of a key, and without a layout.
//
// Input: the source in UTF-8 up to a NUL byte, then the bytes that the records are filled with.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "host/expression/Program.h"
#include "portable/error/Error.h"
#include "portable/text/CodePage.h"
#include "portable/text/Utf.h"

namespace {

using namespace zu::expression;

constexpr std::size_t kRecords = 5;

RecordLayout MakeLayout() {
    RecordLayout layout;
    layout.codePage = &zu::text::CodePage::Default();
    layout.tableName = "T";
    layout.recordLength = 1;
    const auto add = [&layout](const char* name, Storage storage, std::uint32_t width,
                               std::uint8_t decimals = 0) {
        FieldLayout field;
        field.name = name;
        field.storage = storage;
        field.offset = layout.recordLength;
        field.width = width;
        field.decimals = decimals;
        layout.fields.push_back(field);
        layout.recordLength += width;
    };
    add("N", Storage::NumberText, 8, 2);
    add("K", Storage::NumberText, 19);
    add("C", Storage::Character, 6);
    add("D", Storage::DateText, 8);
    add("L", Storage::LogicalText, 1);
    add("V", Storage::Varchar, 5);
    layout.fields.back().lengthBit = 0;
    add("I", Storage::Integer32, 4);
    layout.fields.back().nullBit = 1;
    add("B", Storage::Double, 8);
    add("Y", Storage::Currency, 8, 4);
    add("S", Storage::DateTime, 8);
    add("M", Storage::Memo, 4);
    layout.nullFlagsOffset = layout.recordLength++;
    return layout;
}

class Memos : public MemoReader {
public:
    bool Read(std::size_t, const std::byte* record, std::string& out) override {
        out.assign(reinterpret_cast<const char*>(record), 20);
        return record[0] != std::byte{'x'};
    }
};

class Names : public NameSource {
public:
    bool Provide(std::string_view name, Result& out) override {
        if (name.empty()) return false;
        out.isNull = false;
        switch (name[0] % 6) {
            case 0:
                out.type = Type::Number;
                out.number = 42;
                break;
            case 1:
                out.type = Type::Text;
                out.text = "text \xC3\xA4";
                break;
            case 2:
                out.type = Type::Date;
                out.julianDay = 2460341;
                break;
            case 3:
                out.type = Type::Boolean;
                out.boolean = true;
                break;
            case 4:
                out.isNull = true;
                break;
            default:
                return false;
        }
        return true;
    }
};

void Check(bool holds) {
    if (!holds) std::abort();
}

void UseRecords(const Program& program, const RecordLayout& layout, const std::string& records) {
    Memos memos;
    RecordRun run;
    run.first = reinterpret_cast<const std::byte*>(records.data());
    run.stride = layout.recordLength;
    run.firstNumber = 1;
    run.count = kRecords;
    run.memos = &memos;
    Result value;
    std::vector<std::uint32_t> one;
    for (std::size_t i = 0; i < kRecords; ++i) {
        const Row row{run.first + i * run.stride, static_cast<std::uint32_t>(i + 1), &memos};
        program.Evaluate(row, value);
        if (value.type == Type::Text && !value.isNull) Check(value.text.size() <= program.textWidth());
        if (program.type() == Type::Boolean && program.Test(row)) one.push_back(row.number);
    }
    if (program.type() != Type::Boolean) return;
    std::vector<std::uint32_t> many;
    program.Filter(run, true, 0, many);
    Check(one == many);
    Check(program.Count(run, true) == many.size());
}

void UseAsCondition(const Program& program, const RecordLayout& layout) {
    static constexpr const char16_t* kKeys[] = {u"C", u"UPPER(C)", u"C+DTOS(D)+STR(N,4)",
                                                u"N", u"D",        u"TRIM(C)+C"};
    for (const auto* key : kKeys)
        static_cast<void>(program.RangeOf(Program::Compile(key, layout)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::u16string source = zu::text::ToUtf16(input.substr(0, end));
    const RecordLayout layout = MakeLayout();
    std::string records = input.substr(std::min(end + 1, input.size()));
    records.resize(layout.recordLength * kRecords, ' ');
    try {
        const Program program = Program::Compile(source, layout);
        UseRecords(program, layout, records);
        UseAsCondition(program, layout);
        Check(Program::Compile(zu::text::ToUtf16(program.canonical()), layout).type() == program.type());
        for (const std::string& part : program.parts()) {
            static_cast<void>(Program::Compile(zu::text::ToUtf16(part), layout));
        }
    } catch (const zu::Error& error) {
        Check(error.kind() != zu::ErrorKind::Internal);
    }
    try {
        Names names;
        Result value;
        Program::CompileDynamic(source).EvaluateDynamic(names, value);
    } catch (const zu::Error& error) {
        Check(error.kind() != zu::ErrorKind::Internal);
    }
    return 0;
}
