#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "portable/error/Error.h"
#include "portable/files/File.h"

namespace zu::files {

/// A file system for tests that lets another one fail at a chosen write.
///
/// Every change of a file or folder counts as one step: WriteAt, Truncate, Flush, Remove, Replace and an Open
/// that makes a file. Reading and locking never fail.
class FaultyFiles final : public FileSystem {
public:
    /// What happens at the chosen step.
    enum class Fault {
        Refuse,  ///< the step fails with the error kind and changes nothing; later steps work again
        Full,    ///< from this step on every write that makes a file longer is refused as DiskFull
        Filled,  ///< as Full, but the first half of the data of a WriteAt still arrives
        Crash,   ///< the step and all later ones change nothing: the process has ended
        Torn     ///< as Crash, but the first half of the data of a WriteAt still arrives
    };

    explicit FaultyFiles(FileSystem& inner);

    std::unique_ptr<File> Open(const std::string& path, const OpenOptions& options) override;
    bool Exists(const std::string& path) override { return inner_.Exists(path); }
    bool IsFolder(const std::string& path) override { return inner_.IsFolder(path); }
    void Remove(const std::string& path) override;
    void Replace(const std::string& from, const std::string& to) override;
    std::vector<std::string> List(const std::string& folder) override { return inner_.List(folder); }

    /// Lets the step with this number (from 1, counted from now) go wrong.
    void FailAt(std::size_t step, Fault fault, ErrorKind kind = ErrorKind::IoFailure);
    /// Everything works again, and the count starts anew.
    void Heal();
    /// Calls `watch` before every step that is still to be made; nothing: no more.
    void Watch(std::function<void()> watch) { state_->watch = std::move(watch); }
    /// Steps since the last FailAt or Heal.
    std::size_t steps() const noexcept { return state_->steps; }
    /// The chosen step was reached.
    bool fired() const noexcept { return state_->fired; }

    struct State {
        std::size_t steps = 0;
        std::optional<std::size_t> failAt;
        Fault fault = Fault::Refuse;
        ErrorKind kind = ErrorKind::IoFailure;
        bool fired = false;
        std::function<void()> watch{};

        /// Counts a step; throws when it must fail. Answers true when only half of it is to be done, after
        /// which the caller calls Fail.
        bool Step(bool grows);
        [[noreturn]] void Fail() const;
        [[noreturn]] static void Dead();
    };

private:
    FileSystem& inner_;
    std::shared_ptr<State> state_;
};

}  // namespace zu::files
