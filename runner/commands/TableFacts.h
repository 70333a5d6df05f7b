#pragma once

#include <windows.h>

#include <oaidl.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "runner/commands/TableName.h"
#include "runner/commands/TableService.h"

namespace zu::runner::commands {

struct FieldFacts {
    std::wstring name;
    std::wstring type;
    long width = 0;
    long decimals = 0;
    bool nullable = false;
    bool readOnly = false;
};

struct TagFacts {
    std::wstring name;
    std::wstring key;
    std::wstring condition;  ///< of the records in the tag; empty for all
    bool unique = false;
    bool candidate = false;
    bool descending = false;
    bool usable = true;
    std::wstring reason;  ///< why it is not usable
};

/// What is to be known of a table without reading all of it.
struct TableFacts {
    std::wstring name;
    long records = 0;             ///< deleted ones included
    std::optional<long> deleted;  ///< nothing when the technology cannot tell them apart
    bool writable = false;
    std::vector<std::pair<std::wstring, std::wstring>> technology;  ///< as the technology names them
    std::vector<FieldFacts> fields;
    std::vector<TagFacts> tags;
    /// What had to be tolerated when the table was opened; nothing: the table looks sound.
    std::vector<std::wstring> warnings;

    /// A fact of the technology; empty when it has none of that name.
    std::wstring Fact(std::wstring_view name) const;
};

/// Opens the table and gathers its facts. Throws com::ComError.
TableFacts ReadTableFacts(const TableService& service, const TableName& name);

/// What mends a table with these warnings, as advice for people; empty when nothing needs mending.
std::wstring AdviceFor(const TableFacts& facts, const std::wstring& table);

}  // namespace zu::runner::commands
