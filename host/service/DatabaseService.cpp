#include "host/service/DatabaseService.h"

#include <string>
#include <utility>
#include <vector>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/Variant.h"
#include "host/engine/Reporting.h"
#include "host/service/DataFieldList.h"
#include "host/service/DataTable.h"
#include "host/service/DescendingValue.h"
#include "host/service/TableOpener.h"
#include "host/service/TableReuse.h"
#include "host/service/TechnologyCatalogue.h"
#include "host/service/TextArray.h"
#include "portable/error/Error.h"

namespace zu::host {
namespace {

std::wstring_view TextAt(BSTR* text) noexcept {
    return text ? com::View(*text) : std::wstring_view();
}

/// What the engine cannot do yet: the caller gets E_NOTIMPL and a text, the user a report.
template <class T>
HRESULT NotProvided(T* result, const wchar_t* operation, std::wstring_view database,
                    std::wstring_view table) noexcept {
    return GuardedResult(
        result,
        [&]() -> T {
            throw com::ComError(E_NOTIMPL, std::wstring(operation) + L" is not available (database \"" +
                                               std::wstring(database) + L"\", table \"" +
                                               std::wstring(table) + L"\")");
        },
        Audience::User);
}

}  // namespace

HRESULT DatabaseService::Technologies(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return TextArray(TechnologyCatalogue::Names()).detach(); });
}

HRESULT DatabaseService::TableNames(BSTR Database, VARIANT* Result) noexcept {
    return NotProvided(Result, L"Listing tables", com::View(Database), {});
}

HRESULT DatabaseService::TableExists(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] {
        try {
            OpenTableByName(com::View(Database), com::View(Table));
            return VARIANT_TRUE;
        } catch (const Error& error) {
            if (error.kind() == ErrorKind::NotFound) return VARIANT_FALSE;
            throw;
        }
    });
}

HRESULT DatabaseService::CloseTables() noexcept {
    return Guarded([&] { TableReuse::Instance().CloseIdle(); });
}

HRESULT DatabaseService::OpenTable(BSTR* Database, BSTR* Table, IDispatch** Result) noexcept {
    return GuardedResult(
        Result,
        [&] { return com::MakeObject<DataTable>(OpenTableByName(TextAt(Database), TextAt(Table))).detach(); },
        Audience::User);
}

HRESULT DatabaseService::Descend(VARIANT Value, BSTR Technology, VARIANT* Result) noexcept {
    return GuardedResult(
        Result,
        [&] {
            // Only the technology's name counts here, whatever database stands behind it.
            const DatabaseName name = SplitDatabaseName(std::wstring(com::View(Technology)) + L"|");
            return DescendingValue(Value, *MakeTechnology(name.technology)).detach();
        },
        Audience::User);
}

HRESULT DatabaseService::Pack(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"Pack", com::View(Database), com::View(Table));
}

HRESULT DatabaseService::Undelete(BSTR Database, BSTR Table, BSTR, VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"Undelete", com::View(Database), com::View(Table));
}

HRESULT DatabaseService::CreateTable(BSTR* Database, BSTR* Table, IDispatch*, ::DataFieldList*,
                                     VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"CreateTable", TextAt(Database), TextAt(Table));
}

HRESULT DatabaseService::DropTable(BSTR* Database, BSTR* Table, VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"DropTable", TextAt(Database), TextAt(Table));
}

HRESULT DatabaseService::NewFieldList(::DataFieldList** Result) noexcept {
    return GuardedResult(Result, [&] { return com::MakeObject<DataFieldList>().detach(); });
}

HRESULT DatabaseService::CreateIndex(BSTR Database, BSTR Table, ::DataFieldList*,
                                     VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"CreateIndex", com::View(Database), com::View(Table));
}

HRESULT DatabaseService::DropIndex(BSTR Database, BSTR Table, BSTR, VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"DropIndex", com::View(Database), com::View(Table));
}

HRESULT DatabaseService::Reindex(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"Reindex", com::View(Database), com::View(Table));
}

HRESULT DatabaseService::Zap(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"Zap", com::View(Database), com::View(Table));
}

HRESULT DatabaseService::Check(BSTR Database, BSTR Table, VARIANT* Result) noexcept {
    return NotProvided(Result, L"Check", com::View(Database), com::View(Table));
}

HRESULT DatabaseService::Repair(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return NotProvided(Result, L"Repair", com::View(Database), com::View(Table));
}

}  // namespace zu::host
