#include "tests/unit/cdx/SampleTable.h"

#include <cstdlib>
#include <stdexcept>

#include "host/technologies/dbf/CodePageChoice.h"

namespace zu::dbf::cdx {

std::string SampleFolder() {
    const char* folder = std::getenv("ZU_SAMPLES");
    return folder != nullptr ? folder : "../shared/samples";
}

std::unique_ptr<files::File> OpenSample(const std::string& name) {
    const std::string path = SampleFolder() + "/" + name;
    try {
        return files::SystemFiles().Open(path, {});
    } catch (const std::exception& error) {
        throw std::runtime_error(
            "the sample tables are needed in ../shared/samples or where ZU_SAMPLES says: " +
            std::string(error.what()));
    }
}

SampleTable::SampleTable(const std::string& name) {
    auto file = OpenSample(name);
    const DbfHeader header = DbfHeader::Read(*file);
    std::vector<std::string> warnings;
    codePage_ = &ChooseCodePage(header, "", 1252, warnings);
    const std::size_t slash = name.find('/');
    tableName_ = name.substr(slash + 1, name.rfind('.') - slash - 1);
    layout_ = TableLayout::Make(header, *codePage_, tableName_);
    records_ = std::make_unique<RecordFile>(std::move(file), header);
}

}  // namespace zu::dbf::cdx
