#include "host/technologies/dbf/maintenance/FileSwap.h"

#include <exception>
#include <optional>
#include <span>
#include <utility>

#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::maintenance {
namespace {

constexpr std::string_view kFirstLine = "ZUSWAP1";
constexpr std::string_view kLastLine = "END";
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

// The names in a complete note.
std::optional<std::vector<std::string>> ReadNote(files::FileSystem& files, const std::string& path) {
    std::string text(kMostBytes, '\0');
    const auto file = files.Open(path, {});
    text.resize(file->ReadAt(0, std::as_writable_bytes(std::span(text.data(), text.size()))));
    std::vector<std::string> lines;
    for (std::size_t start = 0, end = 0; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        lines.push_back(text.substr(start, end - start));
    if (lines.size() < 3 || lines.front() != kFirstLine || lines.back() != kLastLine) return std::nullopt;
    std::vector<std::string> names(lines.begin() + 1, lines.end() - 1);
    // The note says which files beside the table are replaced, and nothing else.
    for (const std::string& name : names)
        if (name.empty() || files::FileName(name) != name) return std::nullopt;
    return names;
}

}  // namespace

FileSwap::FileSwap(files::FileSystem& files, std::string tablePath)
    : files_(files), tablePath_(std::move(tablePath)) {}

FileSwap::~FileSwap() {
    if (committed_) return;
    for (const std::string& target : targets_)
        RemoveQuietly(files_, NewPath(target));
}

std::string FileSwap::NotePath(const std::string& tablePath) {
    return files::WithExtension(tablePath, ".zus");
}

std::string FileSwap::NewPath(const std::string& target) {
    return target + ".zun";
}

std::string FileSwap::Prepare(const std::string& target) {
    targets_.push_back(target);
    return NewPath(target);
}

void FileSwap::WriteNote() {
    std::string text(kFirstLine);
    for (const std::string& target : targets_)
        text += "\n" + std::string(files::FileName(target));
    text += "\n" + std::string(kLastLine) + "\n";
    const auto file =
        files_.Open(NotePath(tablePath_), {files::Access::ReadWrite, files::Creation::CreateAlways, true});
    file->WriteAt(0, std::as_bytes(std::span(text.data(), text.size())));
    file->Flush();
}

void FileSwap::Commit() {
    for (const std::string& target : targets_)
        files_.Open(NewPath(target), {files::Access::ReadWrite, files::Creation::OpenExisting, true})
            ->Flush();
    try {
        WriteNote();
    } catch (...) {
        RemoveQuietly(files_, NotePath(tablePath_));
        throw;
    }
    std::size_t replaced = 0;
    try {
        for (; replaced < targets_.size(); ++replaced)
            files_.Replace(NewPath(targets_[replaced]), targets_[replaced]);
    } catch (...) {
        if (replaced == 0)
            RemoveQuietly(files_, NotePath(tablePath_));
        else
            committed_ = true;  // the new files are still needed
        throw;
    }
    committed_ = true;
    RemoveQuietly(files_, NotePath(tablePath_));
}

void FileSwap::Finish(files::FileSystem& files, const std::string& tablePath) {
    const std::string note = NotePath(tablePath);
    if (!files.Exists(note)) return;
    const auto names = ReadNote(files, note);
    if (names) {
        for (const std::string& name : *names) {
            const std::string target = files::Join(files::Parent(tablePath), name);
            if (files.Exists(NewPath(target))) files.Replace(NewPath(target), target);
        }
    }
    files.Remove(note);
}

}  // namespace zu::dbf::maintenance
