#pragma once

#include <gtest/gtest.h>

#include <string>

#include "LateBound.h"
#include "MemoryTechnology.h"
#include "com/Bstr.h"
#include "com/Module.h"
#include "host/engine/EngineState.h"
#include "host/engine/SettingsStore.h"
#include "host/service/DatabaseService.h"
#include "host/service/TableReuse.h"
#include "idl/ZuDataViewInterface.h"
#include "idl/Zuengine.h"

namespace zu::test {

/// A test over tables in memory, through the service as clients use it. At its end no object may be left.
class ServiceTest : public testing::Test {
protected:
    void SetUp() override {
        // Each test opens its tables itself; what an earlier one left open would show the earlier one's
        // records.
        host::SettingsStore::Instance().Put(L"Data.ReuseTables", L"0", nullptr);
        host::TableReuse::Instance().CloseIdle();
        MemoryTechnology::Install();
        host::EngineState::Current().messages.Forget();
        before_ = com::Module::objects();
    }
    void TearDown() override { EXPECT_EQ(com::Module::objects(), before_); }

    static com::ComPtr<ZuDatabaseService> Service() {
        return com::ComPtr<ZuDatabaseService>::Adopt(com::MakeObject<host::DatabaseService>().detach());
    }
    /// A table of the technology in memory.
    static com::ComPtr<::DataTable> Open(std::wstring_view name = L"PEOPLE") {
        com::Bstr database(L"MEM|folder");
        com::Bstr table(name);
        com::ComPtr<IDispatch> opened;
        EXPECT_EQ(Service()->OpenTable(database.address(), table.address(), opened.put()), S_OK);
        return opened.as<::DataTable>();
    }
    static com::ComPtr<ZuDataView> Select(::DataTable& table, const com::Variant& condition,
                                          const com::Variant& limit = com::Variant::Missing(), LONG flag = 0,
                                          const com::Variant& fields = com::Variant::Missing()) {
        com::ComPtr<IDispatch> view;
        selected_ = table.Select(condition, limit, flag, fields, view.put());
        return view ? view.as<ZuDataView>() : nullptr;
    }
    static com::ComPtr<ZuDataView> Everything(std::wstring_view name = L"PEOPLE") {
        return Select(*Open(name), Text(L""));
    }
    static com::Variant Value(ZuDataView& view, const com::Variant& field) {
        com::ComPtr<ZuDataField> found;
        com::Variant value;
        if (SUCCEEDED(view.get_Item(field, found.put()))) found->get_Value(value.put());
        return value;
    }
    static std::wstring TextValue(ZuDataView& view, std::wstring_view field) {
        return Value(view, Text(field)).ToText().str();
    }
    static const host::LastError& LastError() { return host::EngineState::Current().messages.lastError(); }

    static inline HRESULT selected_ = S_OK;

private:
    Apartment apartment_;
    LONG before_ = 0;
};

}  // namespace zu::test
