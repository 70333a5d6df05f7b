#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Puts new files in the place of the files of a table, and takes files away, all of them or none.
///
/// The new files are written beside the old ones under other names. When all are complete, a note (NAME.zus)
/// lists them; from then on the swap is certain: a process that dies in the middle leaves a note, and whoever
/// opens the table next finishes what it says. Before that the old files are as they were.
///
/// The note: the line "ZUSWAP1", for each file a line "+" or "-" and the name of the file that is replaced or
/// removed, the line "END".
class FileSwap {
public:
    FileSwap(files::FileSystem& files, std::string tablePath);
    /// Removes new files that were not put in place.
    ~FileSwap();
    FileSwap(const FileSwap&) = delete;
    FileSwap& operator=(const FileSwap&) = delete;

    /// Where to write what will take the place of the file at `target` (which need not exist).
    std::string Prepare(const std::string& target);
    /// The file at `target` goes away with the swap, if it is there then.
    void Remove(const std::string& target);
    /// Makes all changes, in the order in which they were asked for. Nobody may have the old files open. On
    /// an error before the first change nothing has changed; later the note stays, and the next one to open
    /// the table goes on.
    void Commit();
    /// The same for a table that is not there yet: on any error nothing stays behind.
    void CommitNew();

    /// Finishes a swap that was broken off, if there is one.
    static void Finish(files::FileSystem& files, const std::string& tablePath);
    /// Forgets a broken-off swap that was to make a table, of which nothing is in place yet.
    static void Discard(files::FileSystem& files, const std::string& tablePath);

private:
    struct Step {
        std::string target;
        bool removes = false;
    };

    static std::string NotePath(const std::string& tablePath);
    static std::string NewPath(const std::string& target);
    static void Take(files::FileSystem& files, const Step& step);
    static std::vector<Step> ReadNote(files::FileSystem& files, const std::string& tablePath);
    void WriteNote();

    files::FileSystem& files_;
    std::string tablePath_;
    std::vector<Step> steps_;
    std::size_t done_ = 0;
    bool certain_ = false;  ///< the new files are in place, or will be put there by the next one who comes
};

}  // namespace zu::dbf::maintenance
