#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Puts new files in the place of the files of a table, all of them or none.
///
/// The new files are written beside the old ones under other names. When all are complete, a note (NAME.zus)
/// lists them; from then on the swap is certain: a process that dies in the middle leaves a note, and whoever
/// opens the table next finishes what it says. Before that the old files are as they were.
///
/// The note: the line "ZUSWAP1", the name of each file that is replaced on a line of its own, the line "END".
class FileSwap {
public:
    FileSwap(files::FileSystem& files, std::string tablePath);
    /// Removes new files that were not put in place.
    ~FileSwap();
    FileSwap(const FileSwap&) = delete;
    FileSwap& operator=(const FileSwap&) = delete;

    /// Where to write what will take the place of the file at `target` (which need not exist).
    std::string Prepare(const std::string& target);
    /// Puts all prepared files in place. Nobody may have the old ones open. On an error before the first file
    /// was replaced nothing has changed; later the note stays, and the next one to open the table goes on.
    void Commit();

    /// Finishes a swap that was broken off, if there is one.
    static void Finish(files::FileSystem& files, const std::string& tablePath);

private:
    static std::string NotePath(const std::string& tablePath);
    static std::string NewPath(const std::string& target);
    void WriteNote();

    files::FileSystem& files_;
    std::string tablePath_;
    std::vector<std::string> targets_;
    bool committed_ = false;
};

}  // namespace zu::dbf::maintenance
