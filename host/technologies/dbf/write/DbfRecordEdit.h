#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/technologies/RecordEdit.h"
#include "host/technologies/dbf/write/Change.h"
#include "host/technologies/dbf/write/EditedTable.h"
#include "host/technologies/dbf/write/ValueEncoder.h"

namespace zu::dbf::write {

/// A record of a DBF table that is being changed. Record, memos and every tag change together, under the
/// locks that other programs know.
class DbfRecordEdit final : public technologies::RecordEdit {
public:
    /// Begins a new, blank record.
    explicit DbfRecordEdit(const EditedTable& table);
    /// Begins to change record `number`, which holds `bytes` now.
    DbfRecordEdit(const EditedTable& table, std::uint32_t number, const std::byte* bytes);

    std::uint32_t record() const noexcept override { return number_; }
    void Set(std::size_t field, const technologies::Value& value) override;
    void Get(std::size_t field, technologies::Value& out) override;
    bool isDeleted() const noexcept override;
    void SetDeleted(bool deleted) override;
    bool isChanged() const noexcept override;
    bool Save() override;

private:
    /// A memo that was given a new content.
    struct PendingMemo {
        std::string content;
        std::string before;  ///< what the field held when the edit began
    };

    bool SaveChanged();
    void SaveNew();
    void SaveInBatch();
    bool ChangedByOther(std::size_t field, const std::byte* now);
    void CopyField(std::size_t field, const std::byte* from, std::byte* to) const;
    void StoreMemos(Change& change, std::byte* record);
    void StoreMemos(MemoUpdater& updater, transaction::ChangeSet& writes, std::byte* record);
    void UpdateIndex(Change& change, const std::byte* before, const std::byte* after, std::uint32_t number);
    void DrawNumbers(transaction::ChangeSet& writes, std::byte* record);
    std::uint64_t OffsetOf(std::uint32_t number) const noexcept;
    void Settle(std::uint32_t number, std::vector<std::byte> bytes);
    void RequireField(std::size_t field) const;

    EditedTable table_;
    ValueEncoder encoder_;
    std::uint32_t number_ = 0;
    std::vector<std::byte> original_;
    std::vector<std::byte> current_;
    std::vector<bool> changed_;  ///< by field
    bool markChanged_ = false;
    std::map<std::size_t, PendingMemo> memos_;
};

}  // namespace zu::dbf::write
