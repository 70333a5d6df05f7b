#include "WorkTable.h"

#include <windows.h>

#include <filesystem>

#include "WorkView.h"
#include "com/Bstr.h"
#include "host/technologies/dbf/TableWriter.h"
#include "portable/text/Utf.h"

namespace zu::test {

WorkTable::WorkTable() {
    static int made = 0;
    folder_ = (std::filesystem::temp_directory_path() /
               (L"zu-processes-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++made)))
                  .wstring();
    std::filesystem::create_directories(folder_);
    const std::wstring path = folder_ + L"\\" + kWorkTable + L".dbf";
    const std::vector<dbf::FieldDefinition> fields{{"ID", 'N', 8, 0, false},      {"NAME", 'C', 20, 0, false},
                                                   {"AMOUNT", 'N', 12, 2, false}, {"BORN", 'D', 8, 0, false},
                                                   {"PAID", 'L', 1, 0, false},    {"NOTE", 'M', 10, 0, false},
                                                   {"CODE", 'C', 6, 0, false}};
    dbf::TableWriter writer(files::SystemFiles(), text::ToUtf8(com::AsUtf16(path)), dbf::Format::FoxPro2,
                            0x03, fields);
    writer.Close({{"ID", "ID", "", false, false, false},
                  {"NAME", "UPPER(NAME)", "", false, false, false},
                  {"NAMEDATE", "NAME+DTOS(BORN)", "", false, false, true},
                  {"LIVING", "BORN", "PAID .AND. .NOT. DELETED()", false, false, false},
                  {"CODE", "CODE", "", true, false, false}});
}

WorkTable::~WorkTable() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

}  // namespace zu::test
