#pragma once

namespace zu::dbf {

/// Records that a batch holds back in memory. Whoever reads a table lets them be written first, so that
/// within a thread a batch does not show. Other threads and processes see the records when they are in the
/// file.
class UnwrittenRecords {
public:
    UnwrittenRecords() = default;
    UnwrittenRecords(const UnwrittenRecords&) = delete;
    UnwrittenRecords& operator=(const UnwrittenRecords&) = delete;

    /// Writes what all batches of this thread hold back. Failures stay with their batch.
    static void WriteAll() noexcept;

protected:
    ~UnwrittenRecords() { Withdraw(); }

    /// From here on there is something to write. Repeated calls do no harm.
    void Announce() noexcept;
    /// There is nothing to write any more.
    void Withdraw() noexcept;

    /// Writes everything and withdraws.
    virtual void WriteOut() noexcept = 0;

private:
    UnwrittenRecords* next_ = nullptr;
    bool announced_ = false;
};

}  // namespace zu::dbf
