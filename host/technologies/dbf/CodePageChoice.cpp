#include "host/technologies/dbf/CodePageChoice.h"

namespace zu::dbf {

namespace {

/// "DBWINUS0", "DB437US0", "DB850..." are the drivers of dBASE 7.
const text::CodePage* FindByDriver(std::string_view driver) noexcept {
    if (driver.starts_with("DBWIN")) return &text::CodePage::Default();
    if (driver.size() >= 5 && driver.starts_with("DB"))
        return text::CodePage::FindByName(driver.substr(2, 3));
    return nullptr;
}

std::string Printable(std::string_view name) {
    std::string shown;
    for (const char c : name.substr(0, 40)) {
        if (c >= 0x20 && c < 0x7F) shown.push_back(c);
    }
    return shown;
}

}  // namespace

const text::CodePage& ChooseCodePage(const DbfHeader& header, std::string_view sideFile, unsigned fallback,
                                     std::vector<std::string>& warnings) {
    if (!sideFile.empty()) {
        if (const auto* set = text::CodePage::FindByName(sideFile)) return *set;
        warnings.push_back("the character set \"" + Printable(sideFile) +
                           "\" that the .cpg file names is not known and is passed over.");
    }
    if (const auto* set = text::CodePage::FindByDbfMark(header.codePageMark)) return *set;
    if (const auto* set = FindByDriver(header.driverName)) return *set;
    const auto* set = text::CodePage::Find(fallback);
    if (!set) set = &text::CodePage::Default();
    if (header.codePageMark != 0) {
        warnings.push_back("the code page mark " + std::to_string(header.codePageMark) +
                           " is not known; code page " + std::to_string(set->number()) + " is taken.");
    }
    return *set;
}

}  // namespace zu::dbf
