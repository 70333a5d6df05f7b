#include "host/service/TableWork.h"

#include "com/Bstr.h"
#include "host/service/TableReuse.h"
#include "portable/text/Utf.h"

namespace zu::host {

TableWork::TableWork(std::string what, std::wstring_view database, std::wstring_view table)
    : what_(std::move(what)),
      name_(SplitDatabaseName(database)),
      table_(text::ToUtf8(com::AsUtf16(table))),
      technology_(MakeTechnology(name_.technology)),
      report_(std::wstring(what_.begin(), what_.end()) + L" " + std::wstring(table)) {}

void TableWork::LetGoIdleTables() {
    TableReuse::Instance().CloseIdle();
}

void TableWork::Explain(const Error& error) const {
    std::string text =
        "Cannot " + what_ + (table_.empty() ? " of " : " ") + ShownName(name_, table_) + ": " + error.what();
    if (error.kind() == ErrorKind::Locked)
        text += std::string(text.ends_with('.') ? "" : ".") +
                " Tables and views that this program still holds are in the way too.";
    throw Error(error.kind(), text, error.position());
}

}  // namespace zu::host
