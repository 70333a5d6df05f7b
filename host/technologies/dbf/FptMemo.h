#pragma once

#include "host/technologies/dbf/MemoFile.h"
#include "host/technologies/dbf/MemoSource.h"

namespace zu::dbf {

/// The fixed numbers of FPT files. All integers are big-endian.
namespace fpt {
inline constexpr std::size_t kHeaderSize = 512;
inline constexpr std::size_t kNextFree = 0;     ///< number of the next free block
inline constexpr std::size_t kBlockSize = 6;    ///< 16 bits
inline constexpr std::size_t kBlockHeader = 8;  ///< kind of content, then its length
inline constexpr std::uint32_t kText = 1;
inline constexpr std::uint32_t kHighestKind = 2;  ///< 0 picture or bytes, 1 text, 2 object
}  // namespace fpt

/// Memos of FoxPro and Visual FoxPro.
class FptMemo final : public MemoFile {
public:
    FptMemo(MemoSource source, std::uint32_t blockSize) : source_(std::move(source)), blockSize_(blockSize) {}
    MemoOutcome Read(std::uint32_t block, std::string& out) override;

private:
    MemoSource source_;
    std::uint32_t blockSize_;
};

}  // namespace zu::dbf
