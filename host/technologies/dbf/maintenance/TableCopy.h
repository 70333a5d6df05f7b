#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/technologies/ProgressMeter.h"
#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/FieldEncoder.h"
#include "host/technologies/dbf/MemoWriter.h"
#include "host/technologies/dbf/maintenance/FileSwap.h"
#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Writes the records of a table that stay into a new table file, and their memos into a new memo file, both
/// beside the old ones.
class TableCopy {
public:
    /// Which records stay.
    enum class Kept { Live, All, None };

    TableCopy(files::FileSystem& files, const DbfTable::Content& content, FileSwap& swap,
              technologies::ProgressMeter& meter)
        : files_(files), content_(content), swap_(swap), meter_(meter), encoder_(content_.layout) {}

    /// From here on nothing in the records is refused: deletion marks that are none become blanks, memos that
    /// cannot be read are left out. `report` gets a sentence about each kind of mending. It must outlive the
    /// copy.
    void Mend(std::vector<std::string>& report) noexcept { report_ = &report; }
    /// What the new header says of a production index; by default what the old one says.
    void AnnounceIndex(bool present) noexcept { announcesIndex_ = present; }

    /// Writes the files and answers how many records they have. Damaged when a memo cannot be read.
    std::uint32_t Write(Kept kept);
    /// The path of the new table, once written.
    const std::string& path() const noexcept { return path_; }

private:
    std::vector<std::byte> MakeHead(Kept kept) const;
    void BeginMemos();
    void MoveMemos(std::uint32_t number, std::byte* record);
    void MendUnreadable(std::uint32_t number, std::size_t field, std::byte* record);
    void RestartNumbers(std::vector<std::byte>& head) const;
    void Report() const;

    files::FileSystem& files_;
    DbfTable::Content content_;
    FileSwap& swap_;
    technologies::ProgressMeter& meter_;
    FieldEncoder encoder_;
    std::vector<std::string>* report_ = nullptr;
    std::optional<bool> announcesIndex_;
    std::string path_;
    std::unique_ptr<MemoWriter> memos_;
    std::string memo_;
    std::uint32_t mendedMarks_ = 0;
    std::uint32_t lostMemos_ = 0;
};

/// The field's content lies in the memo file.
bool IsMemo(FieldKind kind) noexcept;

}  // namespace zu::dbf::maintenance
