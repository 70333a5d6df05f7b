#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/service/OpenTable.h"
#include "host/technologies/Technology.h"

namespace zu::host {

/// A database name "technology|database" taken apart, UTF-8. Without "|", or with nothing before it, the
/// default technology of the settings is meant.
struct DatabaseName {
    std::string technology;
    std::string database;
};
DatabaseName SplitDatabaseName(std::wstring_view name);

/// `table "orders" of database "DBF|C:\sales"`; without a table the database alone.
std::string ShownName(const DatabaseName& name, const std::string& table);

/// The technology `name` with the settings that count now. NotFound (zu::Error) when there is none of that
/// name.
std::unique_ptr<technologies::Technology> MakeTechnology(const std::string& name);

/// Opens a table by the names that functions pass, or hands out one that is still open (see TableReuse). What
/// had to be tolerated goes to the log; failures are zu::Errors that name database and table.
std::shared_ptr<OpenTable> OpenTableByName(std::wstring_view database, std::wstring_view table);

}  // namespace zu::host
