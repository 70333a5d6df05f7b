#include "component/textio/UnfinishedFiles.h"

#include <vector>

#include "com/ThreadState.h"

namespace zu::component {

namespace {

struct UnfinishedFiles {
    std::vector<std::unique_ptr<textio::LineReader>> files;
};

}  // namespace

void KeepOpen(std::unique_ptr<textio::LineReader> file) {
    com::ThreadState<UnfinishedFiles>::Current().files.push_back(std::move(file));
}

}  // namespace zu::component
