#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "runner/commands/TableName.h"

namespace zu::runner::commands {

/// The engine's database service, by the names of its members. Failures are com::ComErrors with the reason.
class TableService {
public:
    /// `project` is the engine's project object.
    explicit TableService(IDispatch* project);

    /// An open table.
    com::ComPtr<IDispatch> Open(const TableName& name) const;
    std::vector<std::wstring> TableNames(const std::wstring& database) const;
    /// The faults found; none when the table is sound.
    std::vector<std::wstring> Check(const TableName& name) const;
    void Repair(const TableName& name) const { Do(L"Repair", name); }
    void Pack(const TableName& name) const { Do(L"Pack", name); }
    void Reindex(const TableName& name) const { Do(L"Reindex", name); }
    /// Lets go the tables that the engine keeps for the next use.
    void CloseTables() const;

private:
    void Do(const std::wstring& member, const TableName& name) const;

    com::ComPtr<IDispatch> service_;
};

/// The elements of an array of texts as the service answers them.
std::vector<std::wstring> TextsOf(const VARIANT& array);

}  // namespace zu::runner::commands
