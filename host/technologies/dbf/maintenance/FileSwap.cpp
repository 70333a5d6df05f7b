#include "host/technologies/dbf/maintenance/FileSwap.h"

#include <exception>
#include <span>
#include <utility>

#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::maintenance {
namespace {

constexpr std::string_view kFirstLine = "ZUSWAP1";
constexpr std::string_view kLastLine = "END";
constexpr char kReplaces = '+';
constexpr char kRemoves = '-';
// A note names a few files; anything longer is none.
constexpr std::size_t kMostBytes = 4096;

void RemoveQuietly(files::FileSystem& files, const std::string& path) noexcept {
    try {
        if (files.Exists(path)) files.Remove(path);
    } catch (...) {
        // A file that stays behind under a name of ours does no harm; the next swap replaces it.
        static_cast<void>(std::current_exception());
    }
}

}  // namespace

FileSwap::FileSwap(files::FileSystem& files, std::string tablePath)
    : files_(files), tablePath_(std::move(tablePath)) {}

FileSwap::~FileSwap() {
    if (certain_) return;
    for (const Step& step : steps_)
        if (!step.removes) RemoveQuietly(files_, NewPath(step.target));
}

std::string FileSwap::NotePath(const std::string& tablePath) {
    return files::WithExtension(tablePath, ".zus");
}

std::string FileSwap::NewPath(const std::string& target) {
    return target + ".zun";
}

std::string FileSwap::Prepare(const std::string& target) {
    steps_.push_back({target, false});
    return NewPath(target);
}

void FileSwap::Remove(const std::string& target) {
    steps_.push_back({target, true});
}

// The steps of a complete note; none of any other.
std::vector<FileSwap::Step> FileSwap::ReadNote(files::FileSystem& files, const std::string& tablePath) {
    std::string text(kMostBytes, '\0');
    const auto file = files.Open(NotePath(tablePath), {});
    text.resize(file->ReadAt(0, std::as_writable_bytes(std::span(text.data(), text.size()))));
    std::vector<std::string> lines;
    for (std::size_t start = 0, end = 0; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        lines.push_back(text.substr(start, end - start));
    if (lines.size() < 3 || lines.front() != kFirstLine || lines.back() != kLastLine) return {};
    std::vector<Step> steps;
    for (std::size_t i = 1; i + 1 < lines.size(); ++i) {
        // The note says which files beside the table are changed, and nothing else.
        const std::string name = lines[i].substr(lines[i].empty() ? 0 : 1);
        if (name.empty() || files::FileName(name) != name) return {};
        if (lines[i][0] != kReplaces && lines[i][0] != kRemoves) return {};
        steps.push_back({files::Join(files::Parent(tablePath), name), lines[i][0] == kRemoves});
    }
    return steps;
}

void FileSwap::WriteNote() {
    std::string text(kFirstLine);
    for (const Step& step : steps_)
        (text += '\n') += (step.removes ? kRemoves : kReplaces) + std::string(files::FileName(step.target));
    text += "\n" + std::string(kLastLine) + "\n";
    const auto file =
        files_.Open(NotePath(tablePath_), {files::Access::ReadWrite, files::Creation::CreateAlways, true});
    file->WriteAt(0, std::as_bytes(std::span(text.data(), text.size())));
    file->Flush();
}

void FileSwap::Take(files::FileSystem& files, const Step& step) {
    if (!step.removes)
        files.Replace(NewPath(step.target), step.target);
    else if (files.Exists(step.target))
        files.Remove(step.target);
}

void FileSwap::Commit() {
    for (const Step& step : steps_)
        if (!step.removes)
            files_
                .Open(NewPath(step.target), {files::Access::ReadWrite, files::Creation::OpenExisting, true})
                ->Flush();
    try {
        WriteNote();
    } catch (...) {
        RemoveQuietly(files_, NotePath(tablePath_));
        throw;
    }
    try {
        for (; done_ < steps_.size(); ++done_)
            Take(files_, steps_[done_]);
    } catch (...) {
        if (done_ == 0) RemoveQuietly(files_, NotePath(tablePath_));
        certain_ = done_ > 0;  // what is not in place yet is still needed
        throw;
    }
    certain_ = true;
    RemoveQuietly(files_, NotePath(tablePath_));
}

void FileSwap::CommitNew() {
    try {
        Commit();
    } catch (...) {
        RemoveQuietly(files_, NotePath(tablePath_));
        for (std::size_t i = 0; i < done_; ++i)
            if (!steps_[i].removes) RemoveQuietly(files_, steps_[i].target);
        certain_ = false;
        throw;
    }
}

void FileSwap::Finish(files::FileSystem& files, const std::string& tablePath) {
    if (!files.Exists(NotePath(tablePath))) return;
    for (const Step& step : ReadNote(files, tablePath))
        if (step.removes || files.Exists(NewPath(step.target))) Take(files, step);
    files.Remove(NotePath(tablePath));
}

void FileSwap::Discard(files::FileSystem& files, const std::string& tablePath) {
    if (!files.Exists(NotePath(tablePath))) return;
    const std::vector<Step> steps = ReadNote(files, tablePath);
    files.Remove(NotePath(tablePath));
    for (const Step& step : steps)
        if (!step.removes) RemoveQuietly(files, NewPath(step.target));
}

}  // namespace zu::dbf::maintenance
