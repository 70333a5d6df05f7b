#include "samples/generator/Folder.h"

#include <cstddef>

#ifdef _WIN32
#include <direct.h>
#else
#include <sys/stat.h>
#endif

namespace zu::samples {

// Not std::filesystem, which would make the program twice as big for this one call.
void MakeFolder(const std::string& path) {
    for (std::size_t end = path.find_first_of("/\\", 1);; end = path.find_first_of("/\\", end + 1)) {
        const std::string part = path.substr(0, end);
#ifdef _WIN32
        _mkdir(part.c_str());
#else
        mkdir(part.c_str(), 0777);
#endif
        if (end == std::string::npos) return;
    }
}

}  // namespace zu::samples
