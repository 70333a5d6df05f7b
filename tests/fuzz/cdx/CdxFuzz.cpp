// Reads arbitrary bytes as the production index of a small table: opening, walking, searching and checking
// may refuse them, but never read outside the file, run on for ever or crash.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "host/technologies/dbf/cdx/CdxChecker.h"
#include "host/technologies/dbf/cdx/IndexSet.h"
#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"
#include "tests/fuzz/cdx/FuzzTable.h"

namespace {

using namespace zu;

technologies::KeyCriterion TextCriterion(const char16_t* text, bool exact) {
    technologies::KeyCriterion criterion;
    criterion.value.kind = technologies::Value::Kind::Text;
    criterion.value.text = text;
    criterion.exact = exact;
    return criterion;
}

// Everything that a table asks of its index.
void Use(dbf::cdx::IndexSet& indexes, std::uint32_t records, const expression::Program& condition) {
    std::uint64_t left = 100000;
    const auto take = [&](std::uint32_t record) {
        if (record == 0 || record > records || --left == 0) __builtin_trap();
        return true;
    };
    for (std::size_t i = 0; i < indexes.descriptions().size() && i < 8; ++i) {
        try {
            indexes.Walk(i, take);
            indexes.Seek(i, {TextCriterion(u"name", false)}, take);
            indexes.Seek(i, {TextCriterion(u"3", true)}, take);
        } catch (const Error&) {
            continue;
        }
    }
    std::vector<std::uint32_t> candidates;
    indexes.Candidates(condition, candidates);
    indexes.Default();
    indexes.warnings();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::unique_ptr<dbf::cdx::TestTable> table = dbf::cdx::MakeFuzzTable();
    static const expression::Program condition =
        expression::Program::Compile(u"NUM = 7 .AND. NAME = 'name3'", table->layout);

    files::MemoryFiles memory;
    memory.Put("fuzz.cdx", std::as_bytes(std::span(data, size)));
    memory.AllowMapping(size % 2 == 0);
    try {
        const auto indexes = dbf::cdx::IndexSet::Open(memory.Open("fuzz.cdx", {}), table->Context());
        Use(*indexes, table->Count(), condition);
        dbf::cdx::CdxFile file(memory.Open("fuzz.cdx", {}));
        dbf::cdx::CheckCdx(file, table->Context());
    } catch (const Error&) {
        return 0;
    }
    return 0;
}
