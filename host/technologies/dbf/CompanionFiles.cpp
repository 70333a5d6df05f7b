#include "host/technologies/dbf/CompanionFiles.h"

#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf {

namespace {

std::string FolderOrHere(std::string_view folder) {
    return folder.empty() ? std::string(".") : std::string(folder);
}

std::vector<std::string> ListIfPossible(files::FileSystem& files, std::string_view folder) {
    try {
        return files.List(FolderOrHere(folder));
    } catch (const Error&) {
        return {};  // a folder whose files may be opened but not listed
    }
}

}  // namespace

std::optional<std::string> CompanionFiles::Find(std::string_view extension) {
    const std::string exact = files::WithExtension(tablePath_, extension);
    if (files_.Exists(exact)) return exact;
    const std::string_view folder = files::Parent(tablePath_);
    if (!names_) names_ = ListIfPossible(files_, folder);
    const std::string sought = std::string(files::Stem(tablePath_)) + std::string(extension);
    for (const std::string& name : *names_) {
        if (files::SameName(name, sought)) return files::Join(folder, name);
    }
    return std::nullopt;
}

std::optional<std::string> FindFile(files::FileSystem& files, std::string_view folder,
                                    std::string_view name) {
    std::string exact = files::Join(folder, name);
    if (files.Exists(exact)) return exact;
    for (const std::string& present : ListIfPossible(files, folder)) {
        if (files::SameName(present, name)) return files::Join(folder, present);
    }
    return std::nullopt;
}

}  // namespace zu::dbf
