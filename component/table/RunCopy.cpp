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

/// What failed is done in another way.
void Unreported() noexcept {
    SetErrorInfo(0, nullptr);
}
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
    if (runs_) MatchStored();
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

void RunCopy::MatchStored() {
    const textio::StoredField* fields = nullptr;
    ULONG count = 0;
    if (FAILED(runs_->DescribeStored(rows_.codePage(), &fields, &count))) return Unreported();
    if (places_.empty()) {
        takesStored_ = rows_.MatchStored({fields, copied_}, nullptr);
        return;
    }
    std::vector<textio::StoredField> stored;
    for (const std::size_t position : cells_)
        stored.push_back(fields[position]);
    takesStored_ = rows_.MatchStored(stored, places_.data());
}

bool RunCopy::Pays(std::size_t refused, std::size_t added) noexcept {
    return refused <= kRefusalsAllowed + added / kRun;
}

void RunCopy::ForgetRun() noexcept {
    kind_ = Run::None;
    next_ = 0;
    count_ = 0;
}

bool RunCopy::Next() {
    if (next_ < count_) return true;
    if (!runs_) return false;
    ForgetRun();
    first_ = source_.AbsolutePosition();
    takesStored_ = takesStored_ && Pays(storedRefused_, storedAdded_);
    if (takesStored_) LocateRun();
    if (count_ == 0) ReadRun(Pays(refused_, added_) ? kRun : 0);
    if (count_ == 0) runs_.reset();
    return count_ > 0;
}

void RunCopy::LocateRun() {
    if (FAILED(runs_->LocateRun(kRun, &stored_, &count_))) {
        Unreported();
        count_ = 0;
    }
    if (count_ > 0) kind_ = Run::Stored;
}

void RunCopy::ReadRun(ULONG most) {
    // Errors come up again where the record is read field by field.
    if (FAILED(runs_->ReadRun(rows_.codePage(), most, &run_, &count_))) {
        Unreported();
        count_ = 0;
    }
    if (count_ > 0) kind_ = Run::Cells;
}

bool RunCopy::AddRow() {
    if (next_ == count_) return false;
    if (kind_ == Run::Stored) {
        if (AddStored()) return true;
        // The same record by its values; the source then stands behind it.
        ReadRun(1);
    }
    if (next_ < count_ && AddCells()) return true;
    ++refused_;
    source_.Move(first_ + static_cast<LONG>(next_));
    ForgetRun();
    return false;
}

bool RunCopy::AddStored() {
    if (rows_.AddStored(stored_[next_])) {
        ++next_;
        ++storedAdded_;
        return true;
    }
    ++storedRefused_;
    first_ += static_cast<LONG>(next_);
    source_.Move(first_);
    ForgetRun();
    return false;
}

bool RunCopy::AddCells() {
    const textio::Cell* const record = run_ + next_ * width_;
    bool added = false;
    if (places_.empty()) {
        added = rows_.Add(rows_.codePage(), {record, copied_});
    } else {
        std::transform(cells_.begin(), cells_.end(), row_.begin(),
                       [record](std::size_t position) { return record[position]; });
        added = rows_.Add(rows_.codePage(), row_, places_.data());
    }
    if (!added) return false;
    ++next_;
    ++added_;
    return true;
}

}  // namespace zu::component
