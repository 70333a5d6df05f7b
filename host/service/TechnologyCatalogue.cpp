#include "host/service/TechnologyCatalogue.h"

#include <utility>

#include "host/technologies/dbf/DbfTechnology.h"

namespace zu::host {
namespace {

std::unique_ptr<technologies::Technology> MakeDbf(files::FileSystem& files,
                                                  const technologies::TechnologySettings& settings) {
    return std::make_unique<dbf::DbfTechnology>(files, settings);
}

struct Row {
    std::string name;
    TechnologyCatalogue::Maker maker;
};

std::vector<Row>& Rows() {
    static std::vector<Row> rows = {{"DBF", &MakeDbf}};
    return rows;
}

char Upper(char character) noexcept {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

bool SameName(std::string_view left, std::string_view right) noexcept {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i)
        if (Upper(left[i]) != Upper(right[i])) return false;
    return true;
}

}  // namespace

std::vector<std::string> TechnologyCatalogue::Names() {
    std::vector<std::string> names;
    for (const Row& row : Rows())
        names.push_back(row.name);
    return names;
}

std::unique_ptr<technologies::Technology> TechnologyCatalogue::Make(
    std::string_view name, files::FileSystem& files, const technologies::TechnologySettings& settings) {
    for (const Row& row : Rows())
        if (SameName(row.name, name)) return row.maker(files, settings);
    return nullptr;
}

void TechnologyCatalogue::Add(std::string name, Maker maker) {
    Rows().push_back({std::move(name), maker});
}

}  // namespace zu::host
