#pragma once

#include "host/technologies/dbf/BlockStream.h"
#include "host/technologies/dbf/MemoWriter.h"

namespace zu::dbf {

/// Writes memo files of dBASE IV with blocks of 512 bytes, its usual size.
class Dbt4Writer final : public MemoWriter {
public:
    explicit Dbt4Writer(std::unique_ptr<files::File> file);
    std::uint32_t Append(std::string_view content, bool isText) override;
    void Close() override;

private:
    BlockStream stream_;
};

}  // namespace zu::dbf
