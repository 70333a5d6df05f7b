#include "host/technologies/dbf/cdx/CdxChecker.h"

#include <optional>
#include <string_view>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/FindingList.h"
#include "host/technologies/dbf/cdx/KeyChecker.h"
#include "host/technologies/dbf/cdx/PageUse.h"
#include "host/technologies/dbf/cdx/TagDirectory.h"
#include "host/technologies/dbf/cdx/TreeChecker.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

bool TakeHeader(PageUse& use, std::uint32_t offset) {
    const bool first = use.Take(offset);
    return use.Take(static_cast<std::uint32_t>(offset + kPageSize)) && first;
}

void CheckFreePages(CdxFile& file, PageUse& use, std::uint32_t first, FindingList& findings) {
    // Each page of the chain is taken once, so the chain ends at the latest with the pages of the file.
    std::uint32_t offset = first;
    while (offset != 0 && offset != kNoPage) {
        if (!use.Take(offset)) {
            findings.Fault(offset, "the list of unused pages leads to no page of the file, or to a used one");
            return;
        }
        offset = LoadLittle<std::uint32_t>(file.Page(offset).data());
    }
}

// The structure alone, of a tag whose key cannot be computed. What stands for the bytes that leaves leave out
// follows from the type, which is not known then: the fill byte that contradicts less is taken.
void CheckStructure(CdxFile& file, const TagHeader& header, PageUse& use, FindingList& findings) {
    struct Trial {
        std::vector<Finding> findings;
        PageUse use;
    };
    std::vector<Trial> trials;
    for (const std::byte fill : {std::byte{' '}, std::byte{0}}) {
        trials.push_back({{}, use});
        FindingList list(trials.back().findings, "");
        TreeChecker(file, trials.back().use, list, KeyShape{header.keyLength, fill},
                    [](const std::byte*, std::uint32_t, std::uint32_t) {})
            .Check(header.root);
    }
    const Trial& better = trials[trials[1].findings.size() < trials[0].findings.size() ? 1 : 0];
    for (const Finding& finding : better.findings)
        findings.Fault(finding.page, finding.text);
    use = better.use;
}

void CheckTag(CdxFile& file, const DirectoryEntry& entry, const IndexContext& context, PageUse& use,
              FindingList& findings) {
    if (!TakeHeader(use, entry.header)) {
        findings.Fault(entry.header,
                       "the tag's header is not inside the file, or its pages are used already");
        return;
    }
    const TagHeader header = file.Header(entry.header);
    if (header.keyLength == 0 || header.keyLength > kMaxKeyLength) {
        findings.Fault(entry.header, "states keys of " + std::to_string(header.keyLength) + " bytes");
        return;
    }
    const auto structureOnly = [&](const std::string& reason) {
        findings.Remark(entry.header, "the keys are not compared with the table: " + reason);
        CheckStructure(file, header, use, findings);
    };
    if (!header.isByteOrder()) {
        structureOnly("they are in the order of the collation " + header.collation);
        return;
    }
    std::optional<KeyChecker> keys;
    try {
        keys.emplace(header, context, findings);
    } catch (const Error& error) {
        if (error.kind() == ErrorKind::IoFailure) throw;
        structureOnly(error.what());
        return;
    }
    TreeChecker(file, use, findings, keys->shape(),
                [&](const std::byte* key, std::uint32_t record, std::uint32_t page) {
                    keys->Take(key, record, page);
                })
        .Check(header.root);
    keys->Finish(entry.header);
}

void CheckDirectory(CdxFile& file, const TagHeader& header, PageUse& use, FindingList& findings,
                    std::vector<DirectoryEntry>& tags) {
    if (header.keyLength == 0 || header.keyLength > kMaxKeyLength) {
        findings.Fault(0, "the tag directory states names of " + std::to_string(header.keyLength) + " bytes");
        return;
    }
    const KeyShape shape{header.keyLength, std::byte{' '}};
    TreeChecker(file, use, findings, shape, [&](const std::byte* key, std::uint32_t record, std::uint32_t) {
        std::string_view name(reinterpret_cast<const char*>(key), header.keyLength);
        while (!name.empty() && (name.back() == ' ' || name.back() == '\0'))
            name.remove_suffix(1);
        tags.push_back({std::string(name), record});
    }).Check(header.root);
}

}  // namespace

std::vector<Finding> CheckCdx(CdxFile& file, const IndexContext& context) {
    std::vector<Finding> all;
    FindingList whole(all, "");
    PageUse use(file.pageCount());
    try {
        if (file.size() % kPageSize != 0) {
            whole.Remark(0, "the file of " + std::to_string(file.size()) + " bytes ends within a page");
        }
        const TagHeader header = file.Header(0);
        std::vector<DirectoryEntry> tags;
        if ((header.options & kCompound) == 0) {
            tags = ReadTagDirectory(file);
        } else {
            TakeHeader(use, 0);
            CheckDirectory(file, header, use, whole, tags);
        }
        for (const DirectoryEntry& entry : tags) {
            FindingList findings(all, entry.name.empty() ? context.tableName : entry.name);
            CheckTag(file, entry, context, use, findings);
        }
        CheckFreePages(file, use, header.freeList, whole);
        if (use.unused() > 0) {
            whole.Remark(
                0, std::to_string(use.unused()) + " pages are neither used nor in the list of unused pages");
        }
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::Damaged && error.kind() != ErrorKind::Unsupported) throw;
        whole.Fault(0, error.what());
    }
    return all;
}

}  // namespace zu::dbf::cdx
