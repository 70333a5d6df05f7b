#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zu::runner::commands {

/// A table as the engine's service takes it, and as the user named it.
struct TableName {
    std::wstring database;
    std::wstring table;
    std::wstring shown;

    /// The form in which the component's functions take it.
    std::wstring definition() const { return table.empty() ? database : database + L">" + table; }
};

/// Answers the tables of a database, sorted.
using ListTables = std::function<std::vector<std::wstring>(const std::wstring& database)>;

/// What a word on the command line means: the path of a table file, with or without ".dbf", or DATABASE>TABLE
/// as functions take it. Relative paths start at `folder`. Nothing is opened, and nothing need exist.
TableName TableOf(std::wstring_view word, const std::wstring& folder);

/// As TableOf, for commands that take several tables: wildcards in the last part of a path or in the table
/// behind ">" stand for the tables that match, a folder for all of its tables. Throws zu::Error (NotFound)
/// when there are none.
std::vector<TableName> TablesOf(std::wstring_view word, const std::wstring& folder, const ListTables& list);

}  // namespace zu::runner::commands
