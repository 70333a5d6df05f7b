#pragma once

#include <cstdint>

#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/PageStore.h"
#include "host/technologies/dbf/transaction/ChangeSet.h"

namespace zu::dbf::cdx {

/// The pages of an index file as they will be when the writes of a change set are made.
class ChangedPages final : public PageStore {
public:
    /// Both must outlive the object; `file` must be as the file is now.
    ChangedPages(CdxFile& file, transaction::ChangeSet& changes) noexcept : file_(file), changes_(changes) {}

    PageBytes Read(std::uint32_t offset) override;
    void Write(std::uint32_t offset, PageBytes bytes) override;
    /// Overflow when the file would grow beyond 4 GB.
    std::uint32_t Allocate() override;
    void Release(std::uint32_t offset) override;

    /// Steps the change counter of the file, from which other processes see that their copies of pages are
    /// old.
    void CountChange();

private:
    /// The first unused page; kNoPage when there is none, or none that is surely unused.
    std::uint32_t FirstFree();
    void SetFirstFree(std::uint32_t offset);

    CdxFile& file_;
    transaction::ChangeSet& changes_;
};

}  // namespace zu::dbf::cdx
