#include "portable/files/FaultyFiles.h"

#include <utility>

namespace zu::files {
namespace {

class FaultyFile final : public File {
public:
    FaultyFile(std::unique_ptr<File> inner, std::shared_ptr<FaultyFiles::State> state)
        : inner_(std::move(inner)), state_(std::move(state)) {}

    const std::string& path() const noexcept override { return inner_->path(); }
    std::uint64_t Size() const override { return inner_->Size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override {
        return inner_->ReadAt(offset, buffer);
    }
    void WriteAt(std::uint64_t offset, std::span<const std::byte> data) override {
        if (state_->Step(offset + data.size() > inner_->Size())) {
            inner_->WriteAt(offset, data.first(data.size() / 2));
            state_->Fail();
        }
        inner_->WriteAt(offset, data);
    }
    void Truncate(std::uint64_t size) override {
        if (state_->Step(size > inner_->Size())) state_->Fail();
        inner_->Truncate(size);
    }
    void Flush() override {
        if (state_->Step(false)) state_->Fail();
        inner_->Flush();
    }
    std::unique_ptr<Mapping> Map() const override { return inner_->Map(); }
    bool TryLock(std::uint64_t offset, std::uint64_t length, LockMode mode) override {
        return inner_->TryLock(offset, length, mode);
    }
    void Unlock(std::uint64_t offset, std::uint64_t length) override { inner_->Unlock(offset, length); }

private:
    std::unique_ptr<File> inner_;
    std::shared_ptr<FaultyFiles::State> state_;
};

}  // namespace

void FaultyFiles::State::Fail() const {
    if (fault == Fault::Filled) throw Error(ErrorKind::DiskFull, "the disk is full");
    Dead();
}

void FaultyFiles::State::Dead() {
    throw Error(ErrorKind::Internal, "the process has ended");
}

bool FaultyFiles::State::Step(bool grows) {
    if (watch) watch();
    ++steps;
    if (!failAt || steps < *failAt) return false;
    switch (fault) {
        case Fault::Refuse:
            if (steps != *failAt) return false;
            fired = true;
            throw Error(kind, "the write is refused");
        case Fault::Full:
            if (!grows) return false;
            fired = true;
            throw Error(ErrorKind::DiskFull, "the disk is full");
        case Fault::Filled:
            fired = fired || grows;
            return grows;
        case Fault::Torn:
            if (steps == *failAt) {
                fired = true;
                return true;
            }
            Dead();
        case Fault::Crash:
            fired = true;
            Dead();
    }
    return false;
}

FaultyFiles::FaultyFiles(FileSystem& inner) : inner_(inner), state_(std::make_shared<State>()) {}

std::unique_ptr<File> FaultyFiles::Open(const std::string& path, const OpenOptions& options) {
    const bool makes = options.creation == Creation::CreateAlways ||
                       (options.creation == Creation::CreateNew && !inner_.Exists(path));
    if (makes && state_->Step(true)) state_->Fail();
    return std::make_unique<FaultyFile>(inner_.Open(path, options), state_);
}

void FaultyFiles::Remove(const std::string& path) {
    if (state_->Step(false)) state_->Fail();
    inner_.Remove(path);
}

void FaultyFiles::Replace(const std::string& from, const std::string& to) {
    if (state_->Step(false)) state_->Fail();
    inner_.Replace(from, to);
}

void FaultyFiles::FailAt(std::size_t step, Fault fault, ErrorKind kind) {
    *state_ = State{0, step, fault, kind, false};
}

void FaultyFiles::Heal() {
    *state_ = State{};
}

}  // namespace zu::files
