#include "host/technologies/dbf/maintenance/FileBackup.h"

#include <exception>

#include "portable/error/Error.h"

namespace zu::dbf::maintenance {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 20;
constexpr int kMostCopies = 1000;

}  // namespace

FileBackup::~FileBackup() {
    for (const std::string& copy : copies_) {
        try {
            files_.Remove(copy);
        } catch (...) {
            // A copy too many does no harm.
            static_cast<void>(std::current_exception());
        }
    }
}

std::string FileBackup::FreeName(const std::string& path) {
    for (int number = 1; number <= kMostCopies; ++number) {
        std::string name = path + ".bak" + (number > 1 ? std::to_string(number) : "");
        if (!files_.Exists(name)) return name;
    }
    throw Error(ErrorKind::AlreadyExists,
                "There are " + std::to_string(kMostCopies) + " old copies of " + path + " already.");
}

std::string FileBackup::Copy(const std::string& path) {
    const auto source = files_.Open(path, {});
    std::string name = FreeName(path);
    const auto target = files_.Open(name, {files::Access::ReadWrite, files::Creation::CreateNew, true});
    copies_.push_back(name);
    std::vector<std::byte> block(kBlock);
    for (std::uint64_t offset = 0;;) {
        const std::size_t got = source->ReadAt(offset, block);
        if (got == 0) break;
        target->WriteAt(offset, std::span(block).first(got));
        offset += got;
    }
    target->Flush();
    return name;
}

}  // namespace zu::dbf::maintenance
