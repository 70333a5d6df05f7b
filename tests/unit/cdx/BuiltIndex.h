#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "host/technologies/dbf/cdx/CdxChecker.h"
#include "host/technologies/dbf/cdx/IndexSet.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/cdx/TestTable.h"

namespace zu::dbf::cdx {

using Records = std::vector<std::uint32_t>;

/// An index built in memory for a test table.
class BuiltIndex {
public:
    BuiltIndex(TestTable& table, const std::vector<TagDefinition>& tags) : table_(table) {
        const auto file = memory.Open("test.cdx", {files::Access::ReadWrite, files::Creation::CreateNew});
        BuildCdx(*file, tags, table.Context());
    }

    /// Opened anew with each call, as a table does.
    IndexSet& Open() {
        indexes_ = IndexSet::Open(memory.Open("test.cdx", {files::Access::ReadWrite}), table_.Context());
        return *indexes_;
    }

    Records Order(const std::string& tag) {
        Records order;
        Open().Walk(indexes_->Find(tag).value(), [&](std::uint32_t record) {
            order.push_back(record);
            return true;
        });
        return order;
    }

    Records Seek(const std::string& tag, const std::vector<technologies::KeyCriterion>& criteria) {
        Records found;
        if (!indexes_) Open();
        indexes_->Seek(indexes_->Find(tag).value(), criteria, [&](std::uint32_t record) {
            found.push_back(record);
            return true;
        });
        return found;
    }

    /// The candidates for a condition; nothing when no tag narrows it.
    std::optional<Records> Candidates(std::u16string_view condition) {
        if (!indexes_) Open();
        Records records;
        const auto program = expression::Program::Compile(condition, table_.layout);
        if (!indexes_->Candidates(program, records)) return std::nullopt;
        return records;
    }

    /// The findings of the checker, one a line; empty for a sound index.
    std::string Findings() {
        CdxFile file(memory.Open("test.cdx", {}));
        std::string text;
        for (const Finding& finding : CheckCdx(file, table_.Context()))
            text += finding.Describe() + "\n";
        return text;
    }

    void Patch(std::uint64_t offset, const std::string& bytes) {
        memory.Open("test.cdx", {files::Access::ReadWrite})
            ->WriteAt(offset, std::as_bytes(std::span(bytes.data(), bytes.size())));
    }
    /// The offset of a tag's header.
    std::uint32_t HeaderOf(const std::string& tag);
    /// The header of a tag.
    TagHeader Header(const std::string& tag) {
        CdxFile file(memory.Open("test.cdx", {}));
        return file.Header(HeaderOf(tag));
    }

    files::MemoryFiles memory;

private:
    TestTable& table_;
    std::unique_ptr<IndexSet> indexes_;
};

// Values to search for.
technologies::Value TextValue(std::u16string text);
technologies::Value IntegerValue(std::int64_t value);
technologies::Value NumberValue(double value);
technologies::Value DateValue(std::int32_t julianDay, std::int32_t milliseconds = 0);
technologies::Value TruthValue(bool value);

}  // namespace zu::dbf::cdx
