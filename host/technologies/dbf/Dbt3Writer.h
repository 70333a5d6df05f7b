#pragma once

#include "host/technologies/dbf/BlockStream.h"
#include "host/technologies/dbf/MemoWriter.h"

namespace zu::dbf {

/// Writes memo files of dBASE III: blocks of 512 bytes, two 1A bytes behind each text. A content with a 1A
/// byte in it cannot be stored.
class Dbt3Writer final : public MemoWriter {
public:
    explicit Dbt3Writer(std::unique_ptr<files::File> file);
    std::uint32_t Append(std::string_view content, bool isText) override;
    void Close() override;

private:
    BlockStream stream_;
};

}  // namespace zu::dbf
