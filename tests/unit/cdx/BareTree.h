#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/TreeWriter.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/cdx/Bytes.h"

namespace zu::dbf::cdx {

/// A file that holds the pages of one tree and nothing else.
class BareTree {
public:
    using Entries = std::vector<std::pair<std::string, std::uint32_t>>;

    BareTree(const Entries& entries, const KeyShape& keys, Filling filling = Filling::Roomy) : shape(keys) {
        std::uint32_t greatest = 0;
        for (const auto& entry : entries)
            greatest = std::max(greatest, entry.second);
        {
            const auto out = memory.Open("tree.cdx", {files::Access::ReadWrite, files::Creation::CreateNew});
            PageStream stream(*out, 0);
            TreeWriter writer(stream, shape, greatest, filling);
            for (const auto& [key, record] : entries)
                writer.Add(AsBytes(Padded(key, shape.length)), record);
            root = writer.Finish();
            stream.Flush();
        }
    }

    CdxFile& Open() {
        file = std::make_unique<CdxFile>(memory.Open("tree.cdx", {files::Access::ReadWrite}));
        return *file;
    }

    /// Overwrites bytes of the file.
    void Patch(std::uint64_t offset, const std::string& bytes) {
        memory.Open("tree.cdx", {files::Access::ReadWrite})
            ->WriteAt(offset, std::as_bytes(std::span(bytes.data(), bytes.size())));
    }

    KeyShape shape;
    std::uint32_t root = 0;
    zu::files::MemoryFiles memory;
    std::unique_ptr<CdxFile> file;
};

}  // namespace zu::dbf::cdx
