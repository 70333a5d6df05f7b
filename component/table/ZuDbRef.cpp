#include "component/table/ZuDbRef.h"

#include <string>

#include "component/engine/Trapped.h"
#include "component/table/OptionalArgument.h"
#include "component/table/ProcessTable.h"

namespace zu::component {

using com::Variant;

namespace {

/// Internal operations that scripts of old know by name; only the component itself may call them.
constexpr const wchar_t* kFriends[] = {L"DataBaseName", L"TableName",    L"SetDefinition", L"Open",
                                       L"Table",        L"CurrentIndex", L"FilterFlagged", L"LookupFlagged",
                                       L"CreateTable",  L"DropTable"};

bool IsBlank(const BSTR* name) noexcept {
    return !name || com::View(*name).find_first_not_of(L' ') == std::wstring_view::npos;
}

/// The service says itself why an index that was named cannot be opened.
void TellNoIndex(const TableReference& table) {
    const std::wstring_view name =
        table.TableName().empty() ? table.DataBaseName().view() : table.TableName().view();
    TellReason(STG_E_FILENOTFOUND,
               L"Table \"" + std::wstring(name) + L"\" has no index that could be its default one",
               ReasonFor::Asking);
}

}  // namespace

com::DispatchOptions ZuDbRef::dispatchOptions() noexcept {
    return {kFriends, {}};
}

STDMETHODIMP ZuDbRef::OpenIndex(BSTR* Indexname, VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        const bool opened =
            Indexname && *Indexname ? reference_.OpenIndex(Indexname) : reference_.OpenDefaultIndex();
        if (!opened && reference_.Table() && IsBlank(Indexname)) TellNoIndex(reference_);
        return opened;
    });
}

STDMETHODIMP ZuDbRef::CloseTable() {
    reference_.CloseTable();
    return S_OK;
}

STDMETHODIMP ZuDbRef::Filter(VARIANT Condition, LONG MaxRecords, VARIANT* FieldNames, ZuDataView** Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        return reference_.FilterFlagged(Condition, {MaxRecords, 0, Given(FieldNames)});
    });
}

STDMETHODIMP ZuDbRef::Process(BSTR RoutineName, BSTR Condition, VARIANT FieldNames, LONG MaxRecords,
                              VARIANT* Argument0, VARIANT* Argument1, VARIANT* Argument2, VARIANT* Argument3,
                              VARIANT* Argument4, VARIANT* Argument5, VARIANT* Argument6, VARIANT* Argument7,
                              VARIANT* Argument8, VARIANT* Argument9, LONG* Result) {
    const FunctionCall call;
    if (!Result) return E_POINTER;
    *Result = 0;
    TrapAndTell([&] {
        const ArgumentList arguments = {Argument0, Argument1, Argument2, Argument3, Argument4,
                                        Argument5, Argument6, Argument7, Argument8, Argument9};
        ProcessTable(reference_, RoutineName, GivenText(Condition), {MaxRecords, 0, Given(&FieldNames)},
                     arguments, *Result);
    });
    return S_OK;
}

STDMETHODIMP ZuDbRef::Lookup(VARIANT* IndexKeyValue, VARIANT Exact, LONG MaxRecords, VARIANT* FieldNames,
                             ZuDataView** Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        return reference_.LookupFlagged(Given(IndexKeyValue), GivenOr(&Exact, Variant(true)),
                                        {MaxRecords, 0, Given(FieldNames)});
    });
}

}  // namespace zu::component
