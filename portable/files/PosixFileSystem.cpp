#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "portable/files/Path.h"
#include "portable/files/PosixFile.h"

namespace zu::files {

namespace {

class PosixFileSystem final : public FileSystem {
public:
    std::unique_ptr<File> Open(const std::string& path, const OpenOptions& options) override {
        return std::make_unique<PosixFile>(path, options);
    }

    bool Exists(const std::string& path) override {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
    }

    bool IsFolder(const std::string& path) override {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    }

    void Remove(const std::string& path) override {
        if (unlink(path.c_str()) != 0) ThrowPosixError(errno, path, "deleted");
    }

    void Replace(const std::string& from, const std::string& to) override {
        if (rename(from.c_str(), to.c_str()) != 0) ThrowPosixError(errno, from, "renamed");
    }

    std::vector<std::string> List(const std::string& folder) override {
        const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.c_str()), &closedir);
        if (!directory) ThrowPosixError(errno, folder, "listed");
        std::vector<std::string> names;
        while (const dirent* entry = readdir(directory.get())) {
            if (entry->d_type == DT_DIR) continue;
            std::string name = entry->d_name;
            // File systems that do not tell the kind, and links, are asked.
            if ((entry->d_type == DT_UNKNOWN || entry->d_type == DT_LNK) && IsFolder(Join(folder, name)))
                continue;
            names.push_back(std::move(name));
        }
        return names;
    }
};

}  // namespace

FileSystem& SystemFiles() {
    static PosixFileSystem files;
    return files;
}

}  // namespace zu::files
