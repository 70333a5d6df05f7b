#include "component/table/RunCopy.h"

#include <algorithm>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "component/engine/Trapped.h"

namespace zu::component {

using com::Check;
using com::Variant;

namespace {
/// Records that are read at once.
constexpr ULONG kRun = 64;
constexpr std::size_t kRefusalsAllowed = 256;
}  // namespace

RunCopy::RunCopy(DataView& source, DataView& destination, FieldMatch match, const GatheredRows& rows)
    : source_(source), rows_(rows), width_(0) {
    if (!rows.isOpen()) return;
    runs_ = com::Share(source.get()).tryAs<RecordRuns>();
    if (!runs_) return;
    width_ = static_cast<std::size_t>(source.FieldCount());
    if (match == FieldMatch::kPosition) {
        copied_ = std::min(width_, static_cast<std::size_t>(destination.FieldCount()));
    } else {
        MatchNames(source, destination);
        if (places_.empty()) runs_.reset();
    }
}

void RunCopy::MatchNames(DataView& source, DataView& destination) {
    for (std::size_t position = 0; position < width_; ++position) {
        Trap([&] {
            com::Bstr name;
            Check(source.Field(Variant(static_cast<LONG>(position)))->get_Name(name.put()));
            LONG place = -1;
            Check(destination.Field(Variant(name.view()))->get_Index(&place));
            if (place < 0) return;
            places_.push_back(static_cast<ULONG>(place));
            cells_.push_back(position);
        });
    }
    row_.resize(cells_.size());
}

bool RunCopy::Pays() const noexcept {
    return refused_ <= kRefusalsAllowed + added_ / kRun;
}

bool RunCopy::Next() {
    if (next_ < count_) return true;
    if (!runs_) return false;
    next_ = 0;
    count_ = 0;
    first_ = source_.AbsolutePosition();
    const HRESULT read = runs_->ReadRun(rows_.codePage(), Pays() ? kRun : 0, &run_, &count_);
    // Errors come up again where the record is read field by field.
    if (FAILED(read)) SetErrorInfo(0, nullptr);
    if (FAILED(read) || count_ == 0) {
        runs_.reset();
        count_ = 0;
    }
    return count_ > 0;
}

bool RunCopy::AddRow() {
    if (next_ == count_) return false;
    const textio::Cell* const record = run_ + next_ * width_;
    bool added = false;
    if (places_.empty()) {
        added = rows_.Add(rows_.codePage(), {record, copied_});
    } else {
        std::transform(cells_.begin(), cells_.end(), row_.begin(),
                       [record](std::size_t position) { return record[position]; });
        added = rows_.Add(rows_.codePage(), row_, places_.data());
    }
    if (added) {
        ++next_;
        ++added_;
        return true;
    }
    ++refused_;
    source_.Move(first_ + static_cast<LONG>(next_));
    next_ = 0;
    count_ = 0;
    return false;
}

}  // namespace zu::component
