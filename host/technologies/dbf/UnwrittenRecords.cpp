#include "host/technologies/dbf/UnwrittenRecords.h"

#include <utility>

namespace zu::dbf {

namespace {
// Tables belong to one thread, and so do their batches.
thread_local UnwrittenRecords* announced = nullptr;
}  // namespace

void UnwrittenRecords::Announce() noexcept {
    if (std::exchange(announced_, true)) return;
    next_ = std::exchange(announced, this);
}

void UnwrittenRecords::Withdraw() noexcept {
    if (!std::exchange(announced_, false)) return;
    UnwrittenRecords** link = &announced;
    while (*link != this)
        link = &(*link)->next_;
    *link = std::exchange(next_, nullptr);
}

void UnwrittenRecords::WriteAll() noexcept {
    while (announced != nullptr) {
        UnwrittenRecords& records = *announced;
        records.Withdraw();  // whatever happens, the next turn finds another one
        records.WriteOut();
    }
}

}  // namespace zu::dbf
