#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/dbf/BlockStream.h"
#include "host/technologies/dbf/FieldDefinition.h"
#include "host/technologies/dbf/FieldEncoder.h"
#include "host/technologies/dbf/MemoWriter.h"
#include "host/technologies/dbf/TableLayout.h"
#include "host/technologies/dbf/cdx/TagDefinition.h"
#include "portable/calendar/Calendar.h"
#include "portable/files/File.h"

namespace zu::dbf {

/// Makes a new table, record by record, in large blocks; its memo file and its production index with it.
///
/// Set the fields of a record by position, then Append; fields that were not set stay blank. The table is
/// complete after Close only. A file of the same name is replaced; nobody else may use it meanwhile.
class TableWriter {
public:
    /// Begins the table. `codePageMark` is a language driver byte (0x03: Windows-1252); 0 or an unknown one
    /// means Windows-1252 without a mark. `lastChange` goes into the header; by default it is today (UTC).
    /// Errors: those of MakeHeader and of the file system.
    TableWriter(files::FileSystem& files, std::string path, Format format, std::uint8_t codePageMark,
                const std::vector<FieldDefinition>& fields);
    TableWriter(files::FileSystem& files, std::string path, Format format, std::uint8_t codePageMark,
                const std::vector<FieldDefinition>& fields, const calendar::Date& lastChange);

    /// See FieldEncoder for types and errors.
    void SetText(std::size_t field, std::u16string_view text) {
        encoder_.SetText(record_.data(), field, text);
    }
    void SetBytes(std::size_t field, std::string_view bytes) {
        encoder_.SetBytes(record_.data(), field, bytes);
    }
    void SetInteger(std::size_t field, std::int32_t value) {
        encoder_.SetNumber(record_.data(), field, value);
    }
    void SetNumber(std::size_t field, double value) { encoder_.SetNumber(record_.data(), field, value); }
    void SetDecimal(std::size_t field, std::int64_t units) {
        encoder_.SetDecimal(record_.data(), field, units);
    }
    void SetDate(std::size_t field, const calendar::Date& date) {
        encoder_.SetDate(record_.data(), field, date);
    }
    void SetDateTime(std::size_t field, std::int32_t julianDay, std::int32_t milliseconds) {
        encoder_.SetDateTime(record_.data(), field, julianDay, milliseconds);
    }
    void SetBoolean(std::size_t field, bool value) { encoder_.SetBoolean(record_.data(), field, value); }
    /// An empty content leaves the field without a memo.
    void SetMemo(std::size_t field, std::u16string_view text);
    void SetMemoBytes(std::size_t field, std::string_view bytes);
    void SetNull(std::size_t field) { encoder_.SetNull(record_.data(), field); }

    /// Writes the record and begins a blank one.
    void Append(bool deleted = false);
    std::uint32_t count() const noexcept { return count_; }

    /// Completes header and memo file and builds the production index when `tags` are given.
    void Close(const std::vector<cdx::TagDefinition>& tags = {});

private:
    void StoreMemo(std::size_t field, std::string_view content, bool isText);
    void BuildIndex(const std::vector<cdx::TagDefinition>& tags);

    files::FileSystem& files_;
    std::string path_;
    std::unique_ptr<BlockStream> stream_;
    std::unique_ptr<MemoWriter> memos_;
    TableLayout layout_;
    FieldEncoder encoder_;
    std::vector<std::byte> blank_;
    std::vector<std::byte> record_;
    std::uint32_t count_ = 0;
};

}  // namespace zu::dbf
