// Writes the sound indexes that the kept corpus began with: write_cdx_corpus FOLDER

#include <cstdio>
#include <exception>
#include <string>

#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "portable/files/File.h"
#include "tests/fuzz/cdx/FuzzTable.h"

int main(int count, char** arguments) {
    using namespace zu;
    using dbf::cdx::TagDefinition;
    if (count != 2) return 2;
    try {
        const auto table = dbf::cdx::MakeFuzzTable();
        const auto write = [&](const std::string& name, const std::vector<TagDefinition>& tags) {
            const auto file =
                files::SystemFiles().Open(std::string(arguments[1]) + "/" + name,
                                          {files::Access::ReadWrite, files::Creation::CreateAlways});
            BuildCdx(*file, tags, table->Context());
        };
        write("name", {{"NAME", "NAME", ""}});
        write("unique", {{"NUM", "NUM", "", true}, {"DAY", "DAY", "", false, false, true}});
        write("mixed", {{"N", "N", ""}, {"LIVE", "UPPER(NAME)+DTOS(DAY)", ".NOT.DELETED()"}});
        write("none", {});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
