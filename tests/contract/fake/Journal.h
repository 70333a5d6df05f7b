#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace zu::fake {

/// What happens to one recorded call.
enum class Outcome {
    kRuns,      ///< the fake answers as its scenario says
    kFails,     ///< the call fails with Journal::failure()
    kIsNothing  ///< the call succeeds with no object, an empty text, 0 or Empty
};

/// The record that the fake engine of one thread keeps: every call with its arguments in the order in which
/// it came, and the objects that are alive. It also plays the faults that a test asks for.
class Journal {
public:
    static Journal& OfThread();

    /// Forgets the calls and the faults; the count of live objects stays.
    void Clear();

    const std::vector<std::string>& calls() const { return calls_; }
    /// The calls without the interface names' lead and joined, one a line, for failure texts.
    std::string Text() const;

    /// The n-th call from now on fails (n counts from 1; 0 for none).
    void FailAt(int n, HRESULT failure = E_FAIL);
    /// The n-th call from now on answers nothing.
    void AnswerNothingAt(int n);
    /// Every call of one operation fails, or answers nothing.
    void FailOn(const std::string& operation, HRESULT failure = E_FAIL);
    void AnswerNothingOn(const std::string& operation);
    /// Whether a fault was played since it was asked for.
    bool faultPlayed() const { return !faultyOperation_.empty(); }
    /// The operation that the last fault was played on.
    const std::string& faultyOperation() const { return faultyOperation_; }
    HRESULT failure() const { return failure_; }

    /// Records a call, and says what is to become of it.
    Outcome Enter(const std::string& operation, const std::string& arguments);

    /// Objects by their label ("view 1"), as long as they live.
    void Born(const void* identity, const std::string& kind);
    void Died(const void* identity);
    std::string LabelOf(const void* identity) const;
    /// How many objects are alive: all, or those of one kind.
    std::size_t Live() const { return labels_.size(); }
    std::size_t Live(const std::string& kind) const;
    std::string LiveText() const;

private:
    std::vector<std::string> calls_;
    std::map<std::string, Outcome> outcomes_;
    int countdown_ = 0;
    Outcome atCountdown_ = Outcome::kRuns;
    HRESULT failure_ = E_FAIL;
    std::string faultyOperation_;
    std::map<const void*, std::string> labels_;
    std::map<std::string, int> lastNumber_;
};

/// Records a call that the component is not meant to make.
HRESULT Unexpected(const char* operation);

}  // namespace zu::fake
