#pragma once

#include "host/technologies/dbf/MemoFile.h"
#include "host/technologies/dbf/MemoSource.h"

namespace zu::dbf {

/// Memos of dBASE IV and later: a used block begins with FF FF 08 00 and a length that counts these eight
/// bytes. The block size stands at offset 20 of the file.
class Dbt4Memo final : public MemoFile {
public:
    Dbt4Memo(MemoSource source, std::uint32_t blockSize)
        : source_(std::move(source)), blockSize_(blockSize) {}
    MemoOutcome Read(std::uint32_t block, std::string& out) override;

    static constexpr std::size_t kBlockSizeOffset = 20;
    static constexpr std::uint32_t kUsualBlockSize = 512;

private:
    MemoSource source_;
    std::uint32_t blockSize_;
};

}  // namespace zu::dbf
