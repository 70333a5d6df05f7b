#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;

namespace {

HMODULE ComponentModule() {
    static const HMODULE module = LoadLibraryW(L"ZuDBFFunctions.dll");
    return module;
}

}  // namespace

Calls Opened(const std::string& database, const std::string& table) {
    return {"ZuEngineData.DatabaseService()",
            "ZuDatabaseService.OpenTable(\"" + database + "\", \"" + table + "\")"};
}

Calls OpenedThen(const Calls& rest) {
    return Opened("X|d", "t") + rest;
}

Calls operator+(Calls first, const Calls& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

ComPtr<IUnknown> Create(const wchar_t* name) {
    CLSID id{};
    ComPtr<IUnknown> object;
    if (SUCCEEDED(CLSIDFromProgID(name, &id))) {
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.putVoid());
    }
    return object;
}

HRESULT ComponentCanUnload() {
    using Function = HRESULT(STDMETHODCALLTYPE*)();
    const auto function = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(ComponentModule(), "DllCanUnloadNow")));
    return function ? function() : E_NOINTERFACE;
}

void ContractTest::SetUp() {
    ASSERT_NE(ComponentModule(), nullptr);
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    fake::Scene() = fake::Scenario();
    fake::FakeServer::OfThread() = fake::FakeServer();
    Journal::OfThread().Clear();
    functions_ = Create(L"ZuDBFFunctions.Functions").tryAs<_Functions>();
    ASSERT_TRUE(functions_);
    Journal::OfThread().Clear();
}

void ContractTest::TearDown() {
    for (const std::string& call : Journal::OfThread().calls()) {
        EXPECT_NE(call.compare(0, 10, "unexpected"), 0) << call;
    }
    fake::Scene() = fake::Scenario();  // it may hold objects
    functions_.reset();
    ComPtr<IErrorInfo> left;
    EXPECT_EQ(GetErrorInfo(0, left.put()), S_FALSE) << "error information is left behind";
    left.reset();
    EXPECT_EQ(LiveObjects(), 0u) << Journal::OfThread().LiveText();
    CoUninitialize();
    EXPECT_EQ(Journal::OfThread().Live(), 0u) << Journal::OfThread().LiveText();
    EXPECT_EQ(ComponentCanUnload(), S_OK);
}

Calls ContractTest::TakeCalls() {
    Calls calls = Journal::OfThread().calls();
    Journal::OfThread().Clear();
    return calls;
}

std::size_t ContractTest::LiveObjects() {
    const Journal& journal = Journal::OfThread();
    return journal.Live() - journal.Live("engine");
}

ComPtr<_ZuDbRef> ContractTest::Open(const VARIANT& tableDefn) {
    ComPtr<_ZuDbRef> table;
    EXPECT_EQ(functions().DbfOpen(tableDefn, table.put()), S_OK);
    return table;
}

ComPtr<ZuDataView> ContractTest::Select(std::wstring_view tableDefn, const wchar_t* condition) {
    const Bstr text = condition ? Bstr(condition) : Bstr();
    ComPtr<ZuDataView> view;
    EXPECT_EQ(functions().DbfSelect(Variant(tableDefn), text.get(), nullptr, 0, view.put()), S_OK);
    return view;
}

ComPtr<ZuDataView> ContractTest::Lookup(const VARIANT& key, const VARIANT& exact) {
    VARIANT argument = key;
    ComPtr<ZuDataView> view;
    EXPECT_EQ(functions().DbfLookup(Variant(L"X|d>t"), &argument, exact, nullptr, 1, view.put()), S_OK);
    return view;
}

LONG ContractTest::Count(std::wstring_view tableDefn, const wchar_t* condition) {
    const Bstr text = condition ? Bstr(condition) : Bstr();
    LONG count = 12345;
    EXPECT_EQ(functions().DbfCount(Variant(tableDefn), text.get(), &count), S_OK);
    return count;
}

}  // namespace zu::contract
