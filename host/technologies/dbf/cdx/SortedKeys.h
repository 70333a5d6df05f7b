#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "host/technologies/ProgressMeter.h"
#include "host/technologies/dbf/cdx/IndexContext.h"
#include "host/technologies/dbf/cdx/KeyForm.h"
#include "host/technologies/dbf/cdx/KeySorter.h"
#include "host/technologies/dbf/cdx/TagDefinition.h"

namespace zu::dbf::cdx {

/// The keys that a tag has for the present records of a table, in the order of the tree.
///
/// They are collected and sorted in memory. Where that would take too much of it, the records are read
/// several times, each time for the keys of a part of the order. Of great tables a second thread collects and
/// sorts the keys of the second half of the records.
class SortedKeys {
public:
    struct Limits {
        std::size_t bytes = std::size_t{64} << 20;  ///< of keys in memory, about
        std::uint32_t recordsForTwo = 50'000;       ///< from so many records on there are two threads
    };
    struct Entry {
        const std::byte* key = nullptr;
        std::uint32_t record = 0;
    };

    /// The first three must outlive the object. `meter` may be null; it hears a step for each record.
    SortedKeys(const TagDefinition& definition, const IndexContext& context, const KeyForm& form,
               technologies::ProgressMeter* meter);
    SortedKeys(const TagDefinition& definition, const IndexContext& context, const KeyForm& form,
               technologies::ProgressMeter* meter, const Limits& limits);
    ~SortedKeys();
    SortedKeys(const SortedKeys&) = delete;
    SortedKeys& operator=(const SortedKeys&) = delete;

    /// The next entry, valid until the next call; false after the last one. Damaged when a record cannot be
    /// read; what the meter throws comes through.
    bool Next(Entry& entry);

private:
    class Scan;

    /// The sorted keys of some records in hand.
    struct Half {
        std::unique_ptr<Scan> scan;
        std::uint32_t first = 1;  ///< record
        std::uint32_t last = 0;
        std::optional<KeySorter> keys;
        std::size_t next = 0;

        bool isEmpty() const noexcept { return !keys || next == keys->size(); }
        const std::byte* key() const noexcept { return keys->key(next); }
        std::uint32_t record() const noexcept { return keys->record(next); }
    };

    void Divide(std::size_t most);
    bool CollectPart();
    void CollectOwn();
    void Collect(Half& half, bool tells);
    bool IsInPart(const std::byte* key, std::uint32_t record) const noexcept;
    void Tell(std::uint32_t record);

    const IndexContext& context_;
    KeyForm form_;
    technologies::ProgressMeter* meter_;
    std::uint32_t count_;
    std::array<Half, 2> halves_;
    std::vector<std::byte> boundKeys_;  ///< with boundRecords_: the first entry of each part but the first
    std::vector<std::uint32_t> boundRecords_;
    std::size_t parts_ = 1;
    std::size_t part_ = 0;  ///< the next one
    std::atomic<bool> stop_{false};
};

}  // namespace zu::dbf::cdx
