#include "host/technologies/dbf/cdx/IndexSet.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <utility>

#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/KeyBounds.h"
#include "host/technologies/dbf/cdx/KeyOrder.h"
#include "host/technologies/dbf/cdx/LeafPage.h"
#include "host/technologies/dbf/cdx/LeafSearch.h"
#include "host/technologies/dbf/cdx/OpenTag.h"
#include "host/technologies/dbf/cdx/SeekPlan.h"
#include "host/technologies/dbf/cdx/TagDirectory.h"
#include "host/technologies/dbf/transaction/ChangeMark.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

// Beyond this share of a table, reading all of it is faster than fetching single records.
constexpr double kWorthwhileShare = 1.0 / 16;

bool EqualNames(std::string_view left, std::string_view right) noexcept {
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char a, char b) { return lower(a) == lower(b); });
}

/// Makes sure that a walk hands out only records of the table, and each once.
class RecordGuard {
public:
    explicit RecordGuard(std::uint32_t count) : count_(count), seen_(std::size_t{count} / 8 + 1) {}

    void Check(std::uint32_t record) {
        if (record == 0 || record > count_) {
            throw Error(ErrorKind::Damaged, "it leads to record " + std::to_string(record) +
                                                ", the table has " + std::to_string(count_) + " records");
        }
        std::uint8_t& bits = seen_[record / 8];
        const auto bit = static_cast<std::uint8_t>(1U << (record % 8));
        if ((bits & bit) != 0) {
            throw Error(ErrorKind::Damaged, "it leads to record " + std::to_string(record) + " twice");
        }
        bits |= bit;
        ++checked_;
    }
    std::uint32_t checked() const noexcept { return checked_; }

private:
    std::uint32_t count_;
    std::uint32_t checked_ = 0;
    std::vector<std::uint8_t> seen_;
};

}  // namespace

class IndexSet::Implementation {
public:
    Implementation(std::unique_ptr<files::File> file, const IndexContext& context)
        : file_(std::move(file)), context_(context) {
        Load();
    }

    files::File& file() noexcept { return file_.file(); }

    void Refresh() {
        file_.Refresh();
        Load();
    }

    bool IsOutdated() {
        file_.Refresh();
        return Counter() != counter_;
    }

    std::unique_ptr<IndexUpdate> BeginUpdate(StaleTags staleTags, transaction::ChangeSet& changes) {
        return std::make_unique<IndexUpdate>(file_, tags_, context_.tableName, staleTags, changes);
    }

    void RequireUpdatable(StaleTags staleTags) const {
        IndexUpdate::RequireUpdatable(tags_, context_.tableName, staleTags);
    }

    std::unique_ptr<NewKeys> CollectKeys() { return std::make_unique<NewKeys>(tags_); }

    // The tags are what they were: only pages changed, and the counter with them.
    void TakeOwnChange() {
        file_.Refresh();
        counter_ = Counter();
    }

    const std::vector<technologies::IndexDescription>& descriptions() const noexcept { return descriptions_; }

    void Walk(std::size_t index, const Take& take) {
        Guarded(index, [&](OpenTag& tag) { WalkTag(tag, take); });
    }

    void Seek(std::size_t index, const std::vector<technologies::KeyCriterion>& criteria, const Take& take) {
        Guarded(index, [&](OpenTag& tag) {
            SeekPlan plan(criteria, tag.parts(), tag.encoder(), context_.codePage);
            if (plan.isEmpty()) return;
            expression::Row row;
            row.memos = context_.records.memos();
            const std::uint32_t count = context_.records.Count();
            ForEachWithin(tag, plan.bounds(), [&](std::uint32_t record) {
                CheckRecord(record, count);
                if (plan.hasTests()) {
                    row.record = context_.records.Record(record);
                    row.number = record;
                    if (row.record == nullptr || !plan.Test(row)) return true;
                }
                return take(record);
            });
        });
    }

    bool isUnmarked() const noexcept {
        const auto state = file_.changeState();
        return state && state->mark == transaction::ChangeMark::kClear;
    }

    // Nobody has changed the file since the tags were loaded, and nobody is about it.
    bool IsSettled() const noexcept {
        const auto state = file_.changeState();
        return state && state->mark == transaction::ChangeMark::kClear && state->counter == counter_;
    }

    bool SeekUnlocked(std::size_t index, const std::vector<technologies::KeyCriterion>& criteria,
                      const Take& take) {
        if (index >= tags_.size() || !tags_[index]->isUsable() || criteria.empty() || !IsSettled())
            return false;
        try {
            return SeekInLeaf(*tags_[index], criteria, take) && IsSettled();
        } catch (const Error&) {
            return false;  // it comes up again with the lock, or was half a change
        }
    }

    bool Candidates(const expression::Program& condition, std::vector<std::uint32_t>& records) {
        std::optional<std::size_t> best;
        KeyBounds bestBounds;
        double bestShare = kWorthwhileShare;
        for (std::size_t i = 0; i < tags_.size(); ++i) {
            OpenTag& tag = *tags_[i];
            if (!tag.isUsable() || !tag.holdsAllRecords()) continue;
            const auto range = condition.RangeOf(tag.key());
            if (!range) continue;
            auto bounds = KeyBounds::FromRange(tag.encoder(), *range, tag.parts().size() > 1);
            if (!bounds) continue;
            const std::optional<double> share = ShareOf(i, *bounds);
            if (!share || *share > bestShare || (best && *share >= bestShare)) continue;
            best = i;
            bestShare = *share;
            bestBounds = std::move(*bounds);
        }
        if (!best) return false;
        records.clear();
        try {
            Guarded(*best, [&](OpenTag& tag) {
                const std::uint32_t count = context_.records.Count();
                ForEachWithin(tag, bestBounds, [&](std::uint32_t record) {
                    CheckRecord(record, count);
                    records.push_back(record);
                    return true;
                });
            });
        } catch (const Error& error) {
            // The tag is rejected by now; the table is read instead.
            if (error.kind() != ErrorKind::Damaged) throw;
            records.clear();
            return false;
        }
        std::sort(records.begin(), records.end());
        records.erase(std::unique(records.begin(), records.end()), records.end());
        return true;
    }

    std::vector<std::string> warnings() const {
        std::vector<std::string> texts;
        if (!fileWarning_.empty()) texts.push_back("index file \"" + file_.path() + "\": " + fileWarning_);
        for (const technologies::IndexDescription& description : descriptions_) {
            if (!description.usable) {
                texts.push_back(TagName(description) + " is not used: " + description.reason);
            }
        }
        return texts;
    }

    const std::string& tableName() const noexcept { return context_.tableName; }

private:
    std::string TagName(const technologies::IndexDescription& description) const {
        return "index \"" + description.name + "\" of table \"" + context_.tableName + "\"";
    }

    // What other writers step with every change; zero in a file that is too short to be an index.
    std::uint32_t Counter() { return file_.size() < kHeaderSize ? 0 : file_.Header(0).counter; }

    void Load() {
        tags_.clear();
        fileWarning_.clear();
        counter_ = Counter();
        try {
            for (const DirectoryEntry& entry : ReadTagDirectory(file_)) {
                tags_.push_back(std::make_unique<OpenTag>(file_, entry, context_));
            }
        } catch (const Error& error) {
            if (error.kind() != ErrorKind::Damaged && error.kind() != ErrorKind::Unsupported) throw;
            tags_.clear();
            fileWarning_ = error.what();
        }
        descriptions_.clear();
        for (const auto& tag : tags_)
            descriptions_.push_back(tag->description());
    }

    // The one place where a fault in a tag turns into its rejection and a text that names it.
    template <typename Work>
    void Guarded(std::size_t index, Work work) {
        OpenTag& tag = *tags_.at(index);
        if (!tag.isUsable()) {
            throw Error(ErrorKind::Unsupported,
                        TagName(tag.description()) + " cannot be used: " + tag.description().reason);
        }
        try {
            work(tag);
        } catch (const Error& error) {
            if (error.kind() == ErrorKind::Damaged) {
                tag.Reject(error.what());
                descriptions_[index] = tag.description();
            }
            if (error.kind() != ErrorKind::Damaged && error.kind() != ErrorKind::TypeMismatch &&
                error.kind() != ErrorKind::InvalidArgument) {
                throw;
            }
            throw Error(error.kind(), TagName(tag.description()) + ": " + error.what());
        }
    }

    static void CheckRecord(std::uint32_t record, std::uint32_t count) {
        if (record >= 1 && record <= count) return;
        throw Error(ErrorKind::Damaged, "it leads to record " + std::to_string(record) + ", the table has " +
                                            std::to_string(count) + " records");
    }

    void WalkTag(OpenTag& tag, const Take& take) {
        RecordGuard guard(context_.records.Count());
        LeafPath path = tag.MakePath();
        std::vector<std::uint32_t> records;
        const bool backward = tag.header().descending;
        backward ? path.ToLast() : path.ToFirst();
        do {
            records.clear();
            LeafPage::ReadRecords(file_.Page(path.leaf()), path.leaf(), records);
            if (backward) std::reverse(records.begin(), records.end());
            for (const std::uint32_t record : records) {
                guard.Check(record);
                if (!take(record)) return;
            }
        } while (backward ? path.ToPrevious() : path.ToNext());
        if (tag.holdsAllRecords() && guard.checked() != context_.records.Count()) {
            throw Error(ErrorKind::Damaged, "it has " + std::to_string(guard.checked()) + " keys for " +
                                                std::to_string(context_.records.Count()) + " records");
        }
    }

    template <typename TakeRecord>
    static void ForEachWithin(const OpenTag& tag, const KeyBounds& bounds, TakeRecord takeRecord) {
        TagCursor cursor = tag.MakeCursor();
        const std::size_t length = bounds.low.size();
        if (tag.header().descending) {
            for (bool more = cursor.SeekBefore(bounds.high.data(), kNoPage); more; more = cursor.Previous()) {
                if (CompareKeys(cursor.key(), bounds.low.data(), length) < 0) return;
                if (!takeRecord(cursor.record())) return;
            }
            return;
        }
        for (bool more = cursor.Seek(bounds.low.data(), 0); more; more = cursor.Next()) {
            if (CompareKeys(cursor.key(), bounds.high.data(), length) > 0) return;
            if (!takeRecord(cursor.record())) return;
        }
    }

    bool SeekInLeaf(OpenTag& tag, const std::vector<technologies::KeyCriterion>& criteria, const Take& take) {
        SeekPlan plan(criteria, tag.parts(), tag.encoder(), context_.codePage);
        if (plan.isEmpty()) return true;
        const KeyBounds& bounds = plan.bounds();
        LeafSearch leaf(file_, tag.header().root, tag.encoder().form().shape());
        leaf.Find(bounds, hits_);
        const bool backward = tag.header().descending;
        if (backward ? !leaf.isWholeAbove() : !leaf.isWholeBelow()) return false;
        bool isFull = false;
        for (std::size_t i = 0; i < hits_.size() && !isFull; ++i) {
            const std::uint32_t record = hits_[backward ? hits_.size() - 1 - i : i];
            if (Compare(tag, record, bounds) != 0) return false;
            if (plan.hasTests() && !plan.Test(RowOf(record))) continue;
            isFull = !take(record);
        }
        if (!isFull && !(backward ? leaf.isWholeBelow() : leaf.isWholeAbove())) return false;
        if (hits_.empty()) {
            // No record shows that the page belongs to this tag; its neighbours do.
            if (leaf.below() != LeafSearch::kNoRecord && Compare(tag, leaf.below(), bounds) >= 0)
                return false;
            if (leaf.above() != LeafSearch::kNoRecord && Compare(tag, leaf.above(), bounds) <= 0)
                return false;
        }
        return leaf.IsUnchanged();
    }

    expression::Row RowOf(std::uint32_t record) {
        return {context_.records.Record(record), record, context_.records.memos()};
    }

    // Whether the key that the record has now lies below, within or above the bounds. Damaged for a record
    // that the table does not have.
    int Compare(OpenTag& tag, std::uint32_t record, const KeyBounds& bounds) {
        CheckRecord(record, context_.records.Count());
        std::array<std::byte, kMaxKeyLength> key;  // written as far as keys of the tag go
        tag.encoder().Encode(RowOf(record), key.data());
        if (CompareKeys(key.data(), bounds.low.data(), bounds.low.size()) < 0) return -1;
        return CompareKeys(key.data(), bounds.high.data(), bounds.high.size()) > 0 ? 1 : 0;
    }

    // Roughly how much of the tree the bounds take in; nothing when the tree is damaged (and rejected now).
    std::optional<double> ShareOf(std::size_t index, const KeyBounds& bounds) {
        double share = 1;
        try {
            Guarded(index, [&](OpenTag& tag) {
                LeafPath path = tag.MakePath();
                path.To(bounds.low.data(), 0);
                const double low = path.Fraction();
                path.To(bounds.high.data(), kNoPage);
                share = path.Fraction() - low;
            });
        } catch (const Error& error) {
            if (error.kind() != ErrorKind::Damaged) throw;
            return std::nullopt;
        }
        return share;
    }

    CdxFile file_;
    IndexContext context_;
    std::vector<std::unique_ptr<OpenTag>> tags_;
    std::vector<technologies::IndexDescription> descriptions_;
    std::string fileWarning_;
    std::vector<std::uint32_t> hits_;  ///< kept for its memory
    std::uint32_t counter_ = 0;        ///< of the file as the tags were read
};

std::unique_ptr<IndexSet> IndexSet::Open(std::unique_ptr<files::File> file, const IndexContext& context) {
    return std::unique_ptr<IndexSet>(
        new IndexSet(std::make_unique<Implementation>(std::move(file), context)));
}

IndexSet::IndexSet(std::unique_ptr<Implementation> implementation) noexcept
    : implementation_(std::move(implementation)) {}

IndexSet::~IndexSet() = default;

const std::vector<technologies::IndexDescription>& IndexSet::descriptions() const noexcept {
    return implementation_->descriptions();
}

std::optional<std::size_t> IndexSet::Find(std::string_view name) const noexcept {
    const auto& all = descriptions();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (EqualNames(all[i].name, name)) return i;
    }
    return std::nullopt;
}

std::optional<std::size_t> IndexSet::Default() const noexcept {
    const auto& all = descriptions();
    // A tag's name has ten characters, a table's may have more.
    const std::string_view table = std::string_view(implementation_->tableName()).substr(0, kTagNameLength);
    const auto named = Find(table);
    if (named && all[*named].usable) return named;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].usable) return i;
    }
    return std::nullopt;
}

void IndexSet::Walk(std::size_t index, const Take& take) {
    implementation_->Walk(index, take);
}

void IndexSet::Seek(std::size_t index, const std::vector<technologies::KeyCriterion>& criteria,
                    const Take& take) {
    implementation_->Seek(index, criteria, take);
}

bool IndexSet::SeekUnlocked(std::size_t index, const std::vector<technologies::KeyCriterion>& criteria,
                            const Take& take) {
    return implementation_->SeekUnlocked(index, criteria, take);
}

bool IndexSet::isUnmarked() const noexcept {
    return implementation_->isUnmarked();
}

bool IndexSet::Candidates(const expression::Program& condition, std::vector<std::uint32_t>& records) {
    return implementation_->Candidates(condition, records);
}

void IndexSet::Refresh() {
    implementation_->Refresh();
}

bool IndexSet::areUsable() const noexcept {
    const auto& all = descriptions();
    return std::all_of(all.begin(), all.end(), [](const auto& tag) { return tag.usable; });
}

files::File& IndexSet::file() noexcept {
    return implementation_->file();
}

bool IndexSet::IsOutdated() {
    return implementation_->IsOutdated();
}

std::unique_ptr<IndexUpdate> IndexSet::BeginUpdate(StaleTags staleTags, transaction::ChangeSet& changes) {
    return implementation_->BeginUpdate(staleTags, changes);
}

void IndexSet::RequireUpdatable(StaleTags staleTags) const {
    implementation_->RequireUpdatable(staleTags);
}

std::unique_ptr<NewKeys> IndexSet::CollectKeys() {
    return implementation_->CollectKeys();
}

bool IndexSet::refusesEqualKeys() const noexcept {
    return std::any_of(descriptions().begin(), descriptions().end(),
                       [](const technologies::IndexDescription& tag) { return tag.usable && tag.candidate; });
}

void IndexSet::TakeOwnChange() {
    implementation_->TakeOwnChange();
}

std::vector<std::string> IndexSet::warnings() const {
    return implementation_->warnings();
}

}  // namespace zu::dbf::cdx
