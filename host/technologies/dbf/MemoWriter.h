#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "host/technologies/dbf/DbfVersion.h"
#include "portable/files/File.h"

namespace zu::dbf {

/// Fills a new memo file from front to back.
class MemoWriter {
public:
    virtual ~MemoWriter() = default;

    /// Stores a content that is not empty and answers its block number. Overflow when the file is full,
    /// InvalidArgument for content that the format cannot hold.
    virtual std::uint32_t Append(std::string_view content, bool isText) = 0;
    /// Completes the file.
    virtual void Close() = 0;

    /// Begins a file of FoxPro (Fpt), dBASE III (Dbt3) or dBASE IV (Dbt4). Unsupported for other formats.
    static std::unique_ptr<MemoWriter> Make(std::unique_ptr<files::File> file, MemoFormat format);
};

}  // namespace zu::dbf
