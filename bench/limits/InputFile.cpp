#include "bench/limits/InputFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>

namespace zu::bench {

InputFile::InputFile(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (file < 0 || fstat(file, &status) != 0) throw std::runtime_error(path + " cannot be opened");
    length_ = static_cast<std::size_t>(status.st_size);
    void* mapped = mmap(nullptr, length_, PROT_READ, MAP_SHARED | MAP_POPULATE, file, 0);
    close(file);
    if (mapped == MAP_FAILED) throw std::runtime_error(path + " cannot be mapped");
    bytes_ = static_cast<const char*>(mapped);
}

InputFile::~InputFile() {
    munmap(const_cast<char*>(bytes_), length_);
}

}  // namespace zu::bench
