#include "host/service/TableReuse.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <utility>

namespace zu::host {
namespace {

/// Nobody but the keeper holds the table. The fence makes what its last user did to it visible here.
bool IsIdle(const std::shared_ptr<OpenTable>& table) noexcept {
    if (table.use_count() != 1) return false;
    std::atomic_thread_fence(std::memory_order_acquire);
    return true;
}

void SetTimer(PTP_TIMER timer, unsigned milliseconds) noexcept {
    // Negative: from now on, in units of 100 nanoseconds.
    ULARGE_INTEGER due;
    due.QuadPart = static_cast<ULONGLONG>(-static_cast<LONGLONG>(milliseconds) * 10'000);
    FILETIME time{due.LowPart, due.HighPart};
    SetThreadpoolTimer(timer, &time, 0, milliseconds / 4);
}

}  // namespace

TableReuse& TableReuse::Instance() {
    // Never destroyed: at the end of a process its timer thread may have been stopped while it held the lock.
    static auto* const reuse = new TableReuse;
    return *reuse;
}

template <class Predicate>
std::vector<TableReuse::Kept> TableReuse::TakeOut(Predicate&& leaves) {
    std::vector<Kept> out;
    const auto first = std::partition(kept_.begin(), kept_.end(), [&](Kept& kept) { return !leaves(kept); });
    std::move(first, kept_.end(), std::back_inserter(out));
    kept_.erase(first, kept_.end());
    return out;
}

std::shared_ptr<OpenTable> TableReuse::Open(const std::string& name, unsigned period, const Opener& open) {
    if (period == 0) return open().table;
    const DWORD thread = GetCurrentThreadId();
    if (Opened kept = TakeKept(thread, name); kept.table) {
        if (kept.isUnchanged()) return kept.table;
        const std::lock_guard lock(mutex_);
        TakeOut([&](const Kept& each) { return each.opened.table == kept.table; });
    }
    Opened opened = open();
    if (WasSeen(thread, name, period)) Keep(thread, name, opened, period);
    return opened.table;
}

TableReuse::Opened TableReuse::TakeKept(DWORD thread, const std::string& name) {
    const std::lock_guard lock(mutex_);
    for (Kept& kept : kept_) {
        if (kept.thread == thread && kept.name == name) {
            kept.lastUse = GetTickCount64();
            return kept.opened;
        }
    }
    return {};
}

bool TableReuse::WasSeen(DWORD thread, const std::string& name, unsigned period) {
    const std::lock_guard lock(mutex_);
    const std::uint64_t now = GetTickCount64();
    for (Seen& seen : seen_) {
        if (seen.thread == thread && seen.name == name) {
            const bool recently = now - seen.when <= period;
            seen.when = now;
            return recently;
        }
    }
    if (seen_.size() < kSeen) {
        seen_.push_back({thread, name, now});
    } else {
        seen_[nextSeen_] = {thread, name, now};
        nextSeen_ = (nextSeen_ + 1) % kSeen;
    }
    return false;
}

void TableReuse::Keep(DWORD thread, const std::string& name, const Opened& opened, unsigned period) {
    const std::lock_guard lock(mutex_);
    if (kept_.size() >= kMostKept) return;
    kept_.push_back({thread, name, opened, GetTickCount64(), period});
    StartTimer(period);
}

void TableReuse::StartTimer(unsigned period) {
    if (timer_) {
        if (period < armed_) SetTimer(timer_, armed_ = period);
        return;
    }
    // Without a timer nothing would close the tables, so none are kept then.
    timer_ = CreateThreadpoolTimer(&TableReuse::OnTimer, this, nullptr);
    if (!timer_) return kept_.clear();
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&TableReuse::OnTimer), &module_);
    SetTimer(timer_, armed_ = period);
}

void TableReuse::CloseIdle() {
    std::vector<Kept> closing;  // closed after the lock is gone
    const std::lock_guard lock(mutex_);
    closing = TakeOut([](const Kept& kept) { return IsIdle(kept.opened.table); });
}

std::size_t TableReuse::kept() const {
    const std::lock_guard lock(mutex_);
    return kept_.size();
}

void CALLBACK TableReuse::OnTimer(PTP_CALLBACK_INSTANCE instance, void* self, PTP_TIMER) noexcept {
    static_cast<TableReuse*>(self)->Sweep(instance);
}

void TableReuse::Sweep(PTP_CALLBACK_INSTANCE instance) {
    std::vector<Kept> closing;  // closed after the lock is gone
    const std::lock_guard lock(mutex_);
    const std::uint64_t now = GetTickCount64();
    unsigned shortest = 0;
    closing = TakeOut([&](Kept& kept) {
        if (!IsIdle(kept.opened.table)) kept.lastUse = now;
        if (now - kept.lastUse >= kept.period) return true;
        shortest = shortest ? std::min(shortest, kept.period) : kept.period;
        return false;
    });
    armed_ = shortest;
    if (shortest) return SetTimer(timer_, shortest);
    CloseThreadpoolTimer(std::exchange(timer_, nullptr));
    if (module_) FreeLibraryWhenCallbackReturns(instance, std::exchange(module_, nullptr));
}

}  // namespace zu::host
