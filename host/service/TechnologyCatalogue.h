#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Technology.h"
#include "portable/files/File.h"

namespace zu::host {

/// The technologies that the database service knows, by name. A new technology is one more row in the table
/// of TechnologyCatalogue.cpp.
class TechnologyCatalogue {
public:
    /// Makes a technology that reaches its files through `files`, which outlives it.
    using Maker = std::unique_ptr<technologies::Technology> (*)(
        files::FileSystem& files, const technologies::TechnologySettings& settings);

    static std::vector<std::string> Names();
    /// The technology `name` (in any case); null when there is none.
    static std::unique_ptr<technologies::Technology> Make(std::string_view name, files::FileSystem& files,
                                                          const technologies::TechnologySettings& settings);
    /// Adds a technology to this process. Not for use while other threads use the catalogue.
    static void Add(std::string name, Maker maker);
};

}  // namespace zu::host
