#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/Bstr.h"
#include "com/Variant.h"

namespace zu::component {

/// Turns a table definition (a text, or an array) into the two names by which the database service opens a
/// table. With T as the engine's default technology:
///
///     definition              database    table
///     "orders"                T|orders    ""
///     "sales>orders"          T|sales     orders
///     "X|sales>orders"        X|sales     orders
///     (sales)                 T|sales     ""
///     (sales, orders)         T|sales     1
///     (X, sales, orders)      X|sales     2
class clsDatabaseDefn {
public:
    /// The argument of the last Define, as it was given (references looked through).
    const com::Variant& Definition() const noexcept { return definition_; }

    /// True when the definition was recognised; the names are set then. Any other content, and an automation
    /// error on the way, answers what was reached: False and the names as they were, or, when only the
    /// default technology could not be fetched, True and the database name without it.
    bool Define(const VARIANT& definition) noexcept;

    /// technology|database
    const com::Bstr& DataBaseName() const noexcept { return dataBaseName_; }
    const com::Bstr& TableName() const noexcept { return tableName_; }

private:
    bool Parse();
    bool ParseArray(SAFEARRAY* parts);
    void ParseText(std::wstring_view text);
    void AddDefaultTechnology();

    com::Variant definition_;
    com::Bstr dataBaseName_;
    com::Bstr tableName_;
};

}  // namespace zu::component
