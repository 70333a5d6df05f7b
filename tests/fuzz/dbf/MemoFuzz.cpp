// Any bytes as a memo file. The first byte chooses the format and the way of access, then come four block
// numbers; the rest is the file. No content may be longer than the file.

#include <array>
#include <cstdlib>
#include <cstring>

#include "host/technologies/dbf/MemoFile.h"
#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"

namespace {

using zu::dbf::MemoFormat;

constexpr MemoFormat kFormats[] = {MemoFormat::Dbt3, MemoFormat::Dbt4, MemoFormat::Fpt, MemoFormat::Smt};
constexpr std::size_t kBlocks = 4;
constexpr std::size_t kPrefix = 1 + kBlocks * sizeof(std::uint32_t);

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < kPrefix) return 0;
    zu::files::MemoryFiles files;
    files.AllowMapping((data[0] & 4) != 0);
    std::array<std::uint32_t, kBlocks> blocks{};
    std::memcpy(blocks.data(), data + 1, sizeof blocks);
    files.Put("m", std::as_bytes(std::span(data + kPrefix, size - kPrefix)));
    std::vector<std::string> warnings;
    const auto memos = zu::dbf::MemoFile::Open(files.Open("m", {}), kFormats[data[0] & 3], warnings);
    if (!memos) {
        if (warnings.empty()) std::abort();
        return 0;
    }
    std::string content;
    for (const std::uint32_t block : blocks) {
        const auto outcome = memos->Read(block, content);
        if (outcome == zu::dbf::MemoOutcome::Found && content.size() > size) std::abort();
    }
    for (std::uint32_t block = 1; block < 20; ++block)
        memos->Read(block, content);
    return 0;
}
