#include "tests/contract/fake/Journal.h"

#include <algorithm>

#include "tests/contract/fake/PerThread.h"

namespace zu::fake {

Journal& Journal::OfThread() {
    return OfThisThread<Journal>();
}

void Journal::Clear() {
    calls_.clear();
    outcomes_.clear();
    countdown_ = 0;
    faultyOperation_.clear();
    lastNumber_.clear();
}

std::string Journal::Text() const {
    std::string text;
    for (const std::string& call : calls_)
        text += call + "\n";
    return text;
}

void Journal::FailAt(int n, HRESULT failure) {
    countdown_ = n;
    atCountdown_ = Outcome::kFails;
    failure_ = failure;
    faultyOperation_.clear();
}

void Journal::AnswerNothingAt(int n) {
    countdown_ = n;
    atCountdown_ = Outcome::kIsNothing;
    faultyOperation_.clear();
}

void Journal::FailOn(const std::string& operation, HRESULT failure) {
    outcomes_[operation] = Outcome::kFails;
    failure_ = failure;
}

void Journal::AnswerNothingOn(const std::string& operation) {
    outcomes_[operation] = Outcome::kIsNothing;
}

Outcome Journal::Enter(const std::string& operation, const std::string& arguments) {
    calls_.push_back(operation + "(" + arguments + ")");
    Outcome outcome = Outcome::kRuns;
    if (const auto found = outcomes_.find(operation); found != outcomes_.end()) outcome = found->second;
    if (countdown_ > 0 && --countdown_ == 0) outcome = atCountdown_;
    if (outcome != Outcome::kRuns) faultyOperation_ = operation;
    return outcome;
}

void Journal::Born(const void* identity, const std::string& kind) {
    labels_[identity] = kind + " " + std::to_string(++lastNumber_[kind]);
}

void Journal::Died(const void* identity) {
    labels_.erase(identity);
}

std::string Journal::LabelOf(const void* identity) const {
    const auto found = labels_.find(identity);
    return found == labels_.end() ? "stranger" : found->second;
}

std::size_t Journal::Live(const std::string& kind) const {
    return static_cast<std::size_t>(std::count_if(labels_.begin(), labels_.end(), [&](const auto& entry) {
        return entry.second.compare(0, kind.size() + 1, kind + " ") == 0;
    }));
}

std::string Journal::LiveText() const {
    std::string text;
    for (const auto& entry : labels_)
        text += entry.second + "\n";
    return text;
}

HRESULT Unexpected(const char* operation) {
    Journal::OfThread().Enter(std::string("unexpected ") + operation, "");
    return E_NOTIMPL;
}

}  // namespace zu::fake
