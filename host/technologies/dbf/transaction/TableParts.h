#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "portable/files/File.h"

namespace zu::dbf::transaction {

/// The files that make up one table. A change to a record may touch all of them.
enum class Part : std::uint8_t { Table, Memo, Index };

inline constexpr std::size_t kPartCount = 3;

/// In this order the parts are written: a record never points at a memo that is not there yet, and a key
/// never at a record that is not.
inline constexpr std::array<Part, kPartCount> kWriteOrder{Part::Memo, Part::Table, Part::Index};

/// The open files of a table; null where the table has no such part.
struct PartFiles {
    std::array<files::File*, kPartCount> files{};

    files::File* operator[](Part part) const noexcept { return files[static_cast<std::size_t>(part)]; }
    files::File*& operator[](Part part) noexcept { return files[static_cast<std::size_t>(part)]; }
};

}  // namespace zu::dbf::transaction
