#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/ZuDBFFunctions.h"
#include "idl/Zuengine.h"
#include "tests/contract/fake/FakeServer.h"
#include "tests/contract/fake/Journal.h"
#include "tests/contract/fake/Scenario.h"

namespace zu::contract {

using Calls = std::vector<std::string>;

/// The calls by which a table is opened on a definition that states its technology.
Calls Opened(const std::string& database, const std::string& table);
/// The same for the definition that most tests use, X|d>t, and what follows.
Calls OpenedThen(const Calls& rest);
Calls operator+(Calls first, const Calls& second);

/// An object of the component, created by its name.
com::ComPtr<IUnknown> Create(const wchar_t* name);

/// Whether the component's DLL may be unloaded: nothing of it is alive.
HRESULT ComponentCanUnload();

/// Calls the component's functions against the fake engine, on a thread with an apartment of its own. At the
/// end of each test nothing may be left: no object of the engine, none of the component.
class ContractTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The Functions object; the journal is empty after its creation.
    _Functions& functions() { return *functions_; }
    /// Calls since the last ask.
    Calls TakeCalls();
    /// Objects of the engine that are alive, the engine object itself not counted.
    static std::size_t LiveObjects();

    com::ComPtr<_ZuDbRef> Open(const VARIANT& tableDefn);
    com::ComPtr<_ZuDbRef> Open(std::wstring_view tableDefn = L"X|d>t") {
        return Open(com::Variant(tableDefn));
    }
    com::ComPtr<ZuDataView> Select(std::wstring_view tableDefn = L"X|d>t",
                                   const wchar_t* condition = nullptr);
    com::ComPtr<ZuDataView> Lookup(const VARIANT& key, const VARIANT& exact = com::Variant::Missing());
    LONG Count(std::wstring_view tableDefn = L"X|d>t", const wchar_t* condition = nullptr);

    com::ComPtr<_Functions> functions_;
};

}  // namespace zu::contract
