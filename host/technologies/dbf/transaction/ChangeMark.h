#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "portable/files/File.h"

namespace zu::dbf::transaction {

/// A byte in the reserved part of an index file's header that is set while the journal of the table says
/// something: from before the first byte of a change is overwritten until the journal is empty again. Readers
/// that have the index in memory see from it without any call of the system that there is nothing to wait for
/// and nothing to undo.
///
/// A process that dies leaves it set, and whoever undoes the change, or makes the next one, clears it. Where
/// another program has put a value of its own into this place it is never written; such a file is read as if
/// the mark were always set.
class ChangeMark {
public:
    /// Behind the options and the signature (see cdx/CdxFormat.h), in a part that other programs leave as it
    /// is.
    static constexpr std::uint64_t kOffset = 16;
    static constexpr std::byte kClear{0};
    static constexpr std::byte kSet{0xC3};

    /// `index` is open for writing and must outlive the mark; null: there is nothing to mark.
    void Use(files::File* index) noexcept { index_ = index; }

    /// Errors are those of the file.
    void Set();
    /// A mark that cannot be cleared costs readers time, nothing else.
    void Clear() noexcept;
    /// As Clear, for the mark of a process that has died.
    void ClearLeft() noexcept;

    /// `bytes` are to be written at `offset` of the index file, or to be put back there, while the mark is
    /// set: it stays set in them.
    void KeepIn(std::uint64_t offset, std::span<std::byte> bytes) const noexcept;
    static bool LiesIn(std::uint64_t offset, std::size_t length) noexcept {
        return offset <= kOffset && kOffset - offset < length;
    }

private:
    std::byte Read() const;

    files::File* index_ = nullptr;
    bool isSet_ = false;
};

}  // namespace zu::dbf::transaction
