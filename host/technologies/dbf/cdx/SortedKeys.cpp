#include "host/technologies/dbf/cdx/SortedKeys.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "host/expression/Program.h"
#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/KeyEncoder.h"
#include "host/technologies/dbf/cdx/KeyOrder.h"
#include "portable/error/Error.h"
#include "portable/threads/RunBeside.h"

namespace zu::dbf::cdx {

namespace {

/// What the sorter needs besides the key.
constexpr std::size_t kBytesBesideKey = 20;
/// So many keys for each part show where the parts are to be cut.
constexpr std::size_t kSamplesOfPart = 256;
constexpr std::uint32_t kStopInterval = 1024;
/// So far ahead of the one in hand entries are fetched into the processor's cache.
constexpr std::size_t kAhead = 12;

/// As CompareEntries compares keys, without a call for the short way to the first difference.
bool IsBefore(const std::byte* left, const std::byte* right, std::size_t length) noexcept {
    for (; length >= 8; left += 8, right += 8, length -= 8) {
        const std::uint64_t leftPart = LoadBig64(left);
        const std::uint64_t rightPart = LoadBig64(right);
        if (leftPart != rightPart) return leftPart < rightPart;
    }
    return std::lexicographical_compare(left, left + length, right, right + length);
}

}  // namespace

/// Makes keys, with programs of its own: those belong to one thread at a time.
class SortedKeys::Scan {
public:
    Scan(const TagDefinition& definition, const IndexContext& context, const KeyForm& form)
        : context_(context),
          key_(expression::Program::CompileBytes(definition.key, context.layout)),
          encoder_(key_, context.layout, form),
          bytes_(form.length()) {
        if (!definition.filter.empty())
            filter_.emplace(expression::Program::CompileBytes(definition.filter, context.layout));
        row_.memos = context.records.memos();
    }

    /// The key of a record, valid until the next call; null when it has none in the tag.
    const std::byte* KeyOf(std::uint32_t number) {
        return IsWanted(number) ? Encode(bytes_.data()) : nullptr;
    }
    /// Whether a record has a key, which Encode then makes.
    bool IsWanted(std::uint32_t number) {
        row_.record = context_.records.Record(number);
        if (row_.record == nullptr) {
            throw Error(ErrorKind::Damaged, "record " + std::to_string(number) + " of table \"" +
                                                context_.tableName + "\" cannot be read");
        }
        row_.number = number;
        return !filter_ || filter_->Test(row_);
    }
    const std::byte* Encode(std::byte* out) {
        encoder_.Encode(row_, out);
        return out;
    }
    bool hasFilter() const noexcept { return filter_.has_value(); }

private:
    const IndexContext& context_;
    expression::Program key_;
    std::optional<expression::Program> filter_;
    KeyEncoder encoder_;
    expression::Row row_;
    std::vector<std::byte> bytes_;
};

SortedKeys::SortedKeys(const TagDefinition& definition, const IndexContext& context, const KeyForm& form,
                       technologies::ProgressMeter* meter)
    : SortedKeys(definition, context, form, meter, Limits()) {}

SortedKeys::SortedKeys(const TagDefinition& definition, const IndexContext& context, const KeyForm& form,
                       technologies::ProgressMeter* meter, const Limits& limits)
    : context_(context), form_(form), meter_(meter), count_(context.records.Count()) {
    halves_[0].scan = std::make_unique<Scan>(definition, context, form);
    halves_[0].last = count_;
    if (count_ >= std::max(limits.recordsForTwo, 2U) && context.records.areStable() &&
        threads::HaveSecondProcessor()) {
        halves_[1].scan = std::make_unique<Scan>(definition, context, form);
        halves_[1].last = count_;
        halves_[0].last = count_ - count_ / 2;
        halves_[1].first = halves_[0].last + 1;
    }
    Divide(limits.bytes / (form.length() + kBytesBesideKey));
}

SortedKeys::~SortedKeys() = default;

/// Cuts the order into parts of about `most` keys.
void SortedKeys::Divide(std::size_t most) {
    most = std::max<std::size_t>(most, 1);
    if (count_ <= most) return;
    const std::size_t wanted = (count_ + most - 1) / most;
    const std::uint64_t stride = std::max<std::uint64_t>(count_ / (wanted * kSamplesOfPart), 1);
    KeySorter sample(form_.length());
    for (std::uint64_t number = 1; number <= count_; number += stride) {
        const auto record = static_cast<std::uint32_t>(number);
        const std::byte* const key = halves_[0].scan->KeyOf(record);
        if (key != nullptr) std::memcpy(sample.Add(record), key, form_.length());
    }
    sample.Sort();
    parts_ = std::clamp<std::size_t>(wanted, 1, std::max<std::size_t>(sample.size(), 1));
    for (std::size_t part = 1; part < parts_; ++part) {
        const std::size_t at = sample.size() * part / parts_;
        boundKeys_.insert(boundKeys_.end(), sample.key(at), sample.key(at) + form_.length());
        boundRecords_.push_back(sample.record(at));
    }
}

bool SortedKeys::IsInPart(const std::byte* key, std::uint32_t record) const noexcept {
    const auto isBefore = [&](std::size_t bound) {
        return CompareEntries(key, record, boundKeys_.data() + bound * form_.length(), boundRecords_[bound],
                              form_.length()) < 0;
    };
    return (part_ == 0 || !isBefore(part_ - 1)) && (part_ + 1 == parts_ || isBefore(part_));
}

/// Each record counts once, in one of the parts.
void SortedKeys::Tell(std::uint32_t record) {
    if (meter_ != nullptr && (parts_ == 1 || record % parts_ == part_)) meter_->Step();
}

void SortedKeys::Collect(Half& half, bool tells) {
    half.next = 0;
    half.keys.emplace(form_.length());
    if (parts_ == 1 && !half.scan->hasFilter()) half.keys->Reserve(half.last - half.first + 1);
    for (std::uint32_t number = half.first; number <= half.last; ++number) {
        if (tells) {
            Tell(number);
            // The other thread is as far as this one, and only this one may call the listener.
            const std::uint32_t beside = halves_[1].first + (number - half.first);
            if (halves_[1].scan && beside <= halves_[1].last) Tell(beside);
        } else if (number % kStopInterval == 0 && stop_) {
            return;
        }
        if (parts_ == 1) {
            if (half.scan->IsWanted(number)) half.scan->Encode(half.keys->Add(number));
            continue;
        }
        const std::byte* const key = half.scan->KeyOf(number);
        if (key != nullptr && IsInPart(key, number)) std::memcpy(half.keys->Add(number), key, form_.length());
    }
    half.keys->Sort();
}

/// Collects the keys of the first half; where that fails, those of the other one are not wanted any more.
void SortedKeys::CollectOwn() {
    try {
        Collect(halves_[0], true);
    } catch (...) {
        stop_ = true;
        throw;
    }
}

/// Collects the keys of the next part; false when there is none.
bool SortedKeys::CollectPart() {
    if (part_ == parts_) return false;
    if (halves_[1].scan)
        threads::RunBeside([&] { CollectOwn(); }, [&] { Collect(halves_[1], false); });
    else
        CollectOwn();
    ++part_;
    return true;
}

bool SortedKeys::Next(Entry& entry) {
    while (halves_[0].isEmpty() && halves_[1].isEmpty())
        if (!CollectPart()) return false;
    // Of equal keys that of the lower record comes first, which is in the first half.
    const bool second =
        halves_[0].isEmpty() ||
        (!halves_[1].isEmpty() && IsBefore(halves_[1].key(), halves_[0].key(), form_.length()));
    Half& half = halves_[second ? 1 : 0];
    entry = {half.key(), half.record()};
    ++half.next;
    half.keys->Expect(half.next + kAhead);
    return true;
}

}  // namespace zu::dbf::cdx
