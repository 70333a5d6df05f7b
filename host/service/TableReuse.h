#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "host/service/OpenTable.h"

namespace zu::host {

/// Keeps tables open for a moment after their last use, so that a script that looks something up record by
/// record does not open the same files each time.
///
/// A table is kept only when it is opened a second time within the period, only for the thread that opened
/// it, and handed out again only while its files are unchanged. A timer closes what has not been used for the
/// period. The files are open without denying others anything.
class TableReuse {
public:
    /// An open table and how to ask whether its files are as they were when it was opened.
    struct Opened {
        std::shared_ptr<OpenTable> table;
        std::function<bool()> isUnchanged;
    };
    using Opener = std::function<Opened()>;

    /// The one of this process.
    static TableReuse& Instance();

    /// The table that `name` (technology, database and table in a form of the caller's) stands for: one that
    /// is still open, else what `open` answers. `period` in milliseconds; 0: always a new one.
    std::shared_ptr<OpenTable> Open(const std::string& name, unsigned period, const Opener& open);

    /// Closes all tables that nobody uses.
    void CloseIdle();
    /// Tables that are kept now, used or not.
    std::size_t kept() const;

private:
    struct Kept {
        DWORD thread;
        std::string name;
        Opened opened;
        std::uint64_t lastUse;
        unsigned period;
    };
    struct Seen {
        DWORD thread = 0;
        std::string name;
        std::uint64_t when = 0;
    };
    static constexpr std::size_t kSeen = 8;
    static constexpr std::size_t kMostKept = 32;

    Opened TakeKept(DWORD thread, const std::string& name);
    bool WasSeen(DWORD thread, const std::string& name, unsigned period);
    void Keep(DWORD thread, const std::string& name, const Opened& opened, unsigned period);
    void StartTimer(unsigned period);
    /// Takes what meets the predicate out of kept_, for the caller to close.
    template <class Predicate>
    std::vector<Kept> TakeOut(Predicate&& leaves);
    void Sweep(PTP_CALLBACK_INSTANCE instance);
    static void CALLBACK OnTimer(PTP_CALLBACK_INSTANCE instance, void* self, PTP_TIMER timer) noexcept;

    mutable std::mutex mutex_;
    std::vector<Kept> kept_;
    std::vector<Seen> seen_;
    std::size_t nextSeen_ = 0;
    PTP_TIMER timer_ = nullptr;
    unsigned armed_ = 0;        ///< milliseconds that the timer was set to
    HMODULE module_ = nullptr;  ///< keeps this module loaded while the timer runs
};

}  // namespace zu::host
