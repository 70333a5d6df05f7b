#include "host/technologies/dbf/RecordSelector.h"

#include <numeric>

#include "host/technologies/dbf/DbfFormat.h"
#include "portable/error/Error.h"
#include "portable/threads/RunBeside.h"

namespace zu::dbf {

namespace {

/// Candidates no farther apart are tested as one run: testing a few records more costs less than a new start.
constexpr std::uint32_t kGap = 8;

/// From so many records on a scan is shared out to two threads: it takes milliseconds then, a thread's start
/// some tenths of one.
constexpr std::uint32_t kEnoughForTwo = 200'000;

/// With a limit, this many records are tested along the index before all records are read: the first matches
/// are often near its beginning.
constexpr std::size_t kTestsAlongIndex = 2000;

/// A set of record numbers.
class RecordSet {
public:
    RecordSet(std::uint32_t count, const std::vector<std::uint32_t>& records)
        : bits_(count + std::size_t{1}) {
        for (const std::uint32_t record : records)
            bits_[record] = true;
        left_ = records.size();
    }
    /// True for a member, once: a damaged index may name a record twice.
    bool Remove(std::uint32_t record) {
        if (record >= bits_.size() || !bits_[record]) return false;
        bits_[record] = false;
        --left_;
        return true;
    }
    bool isEmpty() const noexcept { return left_ == 0; }

private:
    std::vector<bool> bits_;
    std::size_t left_;
};

}  // namespace

bool RecordSelector::IsWanted(const std::byte* record) const noexcept {
    return record && (includeDeleted_ || *record != std::byte{kDeletedMark});
}

bool RecordSelector::Take(std::uint32_t record, std::vector<std::uint32_t>& found) {
    if (IsWanted(records_.Record(record))) found.push_back(record);
    return !IsFull(found);
}

std::vector<std::uint32_t> RecordSelector::Find(const expression::Program* condition,
                                                std::optional<std::size_t> index) {
    if (index) return condition ? WalkMatching(*condition, *index) : Walk(*index);
    return condition ? Matching(*condition, limit_) : All();
}

std::vector<std::uint32_t> RecordSelector::All() {
    const std::uint32_t count = records_.Count();
    std::vector<std::uint32_t> found;
    if (includeDeleted_) {
        found.resize(limit_ != 0 && limit_ < count ? limit_ : count);
        std::iota(found.begin(), found.end(), 1U);
        return found;
    }
    found.reserve(limit_ != 0 && limit_ < count ? limit_ : count);
    for (std::uint32_t first = 1; first <= count;) {
        const expression::RecordRun run = records_.Run(first, count - first + 1);
        const std::byte* mark = run.first;
        for (std::size_t i = 0; i < run.count; ++i, mark += run.stride) {
            if (*mark == std::byte{kDeletedMark}) continue;
            found.push_back(first + static_cast<std::uint32_t>(i));
            if (IsFull(found)) return found;
        }
        first += static_cast<std::uint32_t>(run.count);
    }
    return found;
}

std::vector<std::uint32_t> RecordSelector::Matching(const expression::Program& condition, std::size_t limit) {
    std::vector<std::uint32_t> candidates;
    const bool isNarrowed = Candidates(condition, candidates);
    lock_.Release();
    return isNarrowed ? Check(condition, candidates, limit) : Scan(condition, limit);
}

std::vector<std::uint32_t> RecordSelector::Scan(const expression::Program& condition, std::size_t limit) {
    const std::uint32_t count = records_.Count();
    if (limit == 0 && count >= kEnoughForTwo && records_.areStable() && !condition.usesMemos() &&
        threads::HaveSecondProcessor()) {
        return ScanInHalves(condition);
    }
    std::vector<std::uint32_t> found;
    for (std::uint32_t first = 1; first <= count;) {
        const expression::RecordRun run = records_.Run(first, count - first + 1);
        condition.Filter(run, includeDeleted_, limit, found);
        if (limit != 0 && found.size() >= limit) break;
        first += static_cast<std::uint32_t>(run.count);
    }
    return found;
}

std::vector<std::uint32_t> RecordSelector::ScanInHalves(const expression::Program& condition) {
    const std::uint32_t count = records_.Count();
    const std::uint32_t half = count / 2;
    const expression::RecordRun lower = records_.Run(1, half);
    const expression::RecordRun upper = records_.Run(half + 1, count - half);
    const expression::Program again = condition.Again();
    std::vector<std::uint32_t> found, rest;
    threads::RunBeside([&] { condition.Filter(lower, includeDeleted_, 0, found); },
                       [&] { again.Filter(upper, includeDeleted_, 0, rest); });
    found.insert(found.end(), rest.begin(), rest.end());
    return found;
}

bool RecordSelector::Candidates(const expression::Program& condition,
                                std::vector<std::uint32_t>& candidates) {
    if (!indexes_) return false;
    try {
        return indexes_->Candidates(condition, candidates);
    } catch (const Error& error) {
        // A tag that turns out to be damaged costs time, not results.
        if (error.kind() != ErrorKind::Damaged) throw;
        return false;
    }
}

std::vector<std::uint32_t> RecordSelector::Check(const expression::Program& condition,
                                                 const std::vector<std::uint32_t>& candidates,
                                                 std::size_t limit) {
    std::vector<std::uint32_t> found;
    const std::uint32_t count = records_.Count();
    for (std::size_t i = 0; i < candidates.size();) {
        const std::uint32_t first = candidates[i];
        if (first == 0 || first > count) {
            ++i;
            continue;
        }
        std::uint32_t last = first;
        while (++i < candidates.size() && candidates[i] <= count && candidates[i] - last <= kGap)
            last = candidates[i];
        for (std::uint32_t at = first; at <= last;) {
            const expression::RecordRun run = records_.Run(at, last - at + 1);
            condition.Filter(run, includeDeleted_, limit, found);
            if (limit != 0 && found.size() >= limit) return found;
            at += static_cast<std::uint32_t>(run.count);
        }
    }
    return found;
}

std::vector<std::uint32_t> RecordSelector::Walk(std::size_t index) {
    std::vector<std::uint32_t> found;
    indexes_->Walk(index, [&](std::uint32_t record) { return Take(record, found); });
    return found;
}

std::vector<std::uint32_t> RecordSelector::WalkMatching(const expression::Program& condition,
                                                        std::size_t index) {
    std::vector<std::uint32_t> found;
    std::optional<RecordSet> matches;
    std::vector<std::uint32_t> candidates;
    if (Candidates(condition, candidates)) {
        matches.emplace(records_.Count(), Check(condition, candidates, 0));
    } else if (limit_ == 0) {
        matches.emplace(records_.Count(), Scan(condition, 0));
    }
    if (matches && matches->isEmpty()) return found;

    std::size_t tests = 0;
    indexes_->Walk(index, [&](std::uint32_t record) {
        if (!matches) {
            if (tests++ < kTestsAlongIndex) {
                const std::byte* bytes = records_.Record(record);
                if (IsWanted(bytes) && condition.Test({bytes, record, records_.memos()}))
                    found.push_back(record);
                return !IsFull(found);
            }
            matches.emplace(records_.Count(), Scan(condition, 0));
            for (const std::uint32_t earlier : found)
                matches->Remove(earlier);
        }
        if (matches->Remove(record)) found.push_back(record);
        return !IsFull(found) && !matches->isEmpty();
    });
    return found;
}

}  // namespace zu::dbf
