// Loading and unloading, and that many uses leave no memory behind.
#include "tests/contract/ContractTest.h"
#include "tests/contract/MemoryBlocks.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;

class Lifetime : public ContractTest {
protected:
    using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);

    static GetClassObject ClassObjects() {
        const HMODULE module = GetModuleHandleW(L"ZuDBFFunctions.dll");
        return reinterpret_cast<GetClassObject>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    }
};

TEST_F(Lifetime, ModuleStaysAsLongAsAnyObjectLives) {
    EXPECT_EQ(ComponentCanUnload(), S_FALSE);
    ComPtr<_ZuDbRef> table = Open();
    ComPtr<ZuDataView> view = Select();
    functions_.reset();
    EXPECT_EQ(ComponentCanUnload(), S_FALSE);
    table.reset();
    view.reset();
    CoUninitialize();
    EXPECT_EQ(ComponentCanUnload(), S_OK);
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
}

TEST_F(Lifetime, ClassObjectsAndLocksKeepTheModule) {
    functions_.reset();
    CoUninitialize();
    ASSERT_EQ(ComponentCanUnload(), S_OK);
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(ClassObjects()(__uuidof(::Functions), IID_IClassFactory, factory.putVoid()), S_OK);
    EXPECT_EQ(ComponentCanUnload(), S_FALSE);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory.reset();
    EXPECT_EQ(ComponentCanUnload(), S_FALSE);
    ASSERT_EQ(ClassObjects()(__uuidof(::Functions), IID_IClassFactory, factory.putVoid()), S_OK);
    factory->LockServer(FALSE);
    factory.reset();
    EXPECT_EQ(ComponentCanUnload(), S_OK);
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
}

TEST_F(Lifetime, ClassObjectRefusesWhatItCannotDo) {
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(ClassObjects()(__uuidof(::Functions), IID_IClassFactory, factory.putVoid()), S_OK);
    ComPtr<IUnknown> object;
    EXPECT_EQ(factory->CreateInstance(functions_.get(), IID_IUnknown, object.putVoid()),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, __uuidof(ZuDataView), object.putVoid()), E_NOINTERFACE);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(ClassObjects()(__uuidof(ZuDataView), IID_IClassFactory, object.putVoid()),
              CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(ClassObjects()(__uuidof(::Functions), IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_FALSE(object);
}

TEST_F(Lifetime, TenThousandObjectsLeaveNothing) {
    CLSID id{};
    ASSERT_EQ(CLSIDFromProgID(L"ZuDBFFunctions.Functions", &id), S_OK);
    const auto round = [&] {
        ComPtr<_Functions> object;
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Functions),
                         reinterpret_cast<void**>(object.put()));
        LONG count = 0;
        object->DbfCount(Variant(L"d>t"), nullptr, &count);
        Journal::OfThread().Clear();
        return count == 3;
    };
    for (int warmUp = 0; warmUp < 200; ++warmUp)
        ASSERT_TRUE(round());
    const MemoryBlocks before;
    for (int rounds = 0; rounds < 10000; ++rounds)
        ASSERT_TRUE(round());
    const MemoryBlocks after;
    EXPECT_EQ(LiveObjects(), 0u);
    EXPECT_EQ(Journal::OfThread().Live("engine"), 1u);
    // Some caches of the system come and go; a leak of one block per round would be 10,000.
    EXPECT_LT(after.count(), before.count() + 100);
}

TEST_F(Lifetime, FailingCallsLeaveNothingEither) {
    const auto round = [&](int n) {
        Journal::OfThread().Clear();
        Journal::OfThread().FailAt(1 + n % 12);
        Variant key(L"SMITH");
        ComPtr<ZuDataView> view;
        functions().DbfLookup(Variant(L"d>t"), key.address(), Variant::Missing(), nullptr, 1, view.put());
        functions().DbfVarDeclare(Variant(L"d>t"), view.put());
    };
    for (int warmUp = 0; warmUp < 120; ++warmUp)
        round(warmUp);
    Journal::OfThread().Clear();
    const MemoryBlocks before;
    for (int rounds = 0; rounds < 6000; ++rounds)
        round(rounds);
    Journal::OfThread().Clear();
    const MemoryBlocks after;
    EXPECT_LT(after.count(), before.count() + 100);
}

TEST_F(Lifetime, ApartmentsThatComeAndGoLeaveNothing) {
    functions_.reset();
    CoUninitialize();
    const auto round = [] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        {
            const auto object = Create(L"ZuDBFFunctions.Functions");
            EXPECT_TRUE(object);
        }
        CoUninitialize();
        Journal::OfThread().Clear();
    };
    for (int warmUp = 0; warmUp < 20; ++warmUp)
        round();
    const MemoryBlocks before;
    for (int rounds = 0; rounds < 500; ++rounds)
        round();
    const MemoryBlocks after;
    EXPECT_EQ(Journal::OfThread().Live(), 0u);
    EXPECT_LT(after.count(), before.count() + 100);
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
}

/// Memory that COM hands out, counted block by block.
TEST_F(Lifetime, TextsAndValuesAreAllFreed) {
    const ComPtr<_ZuDbRef> table = Open();
    const auto round = [&] {
        Variant key(L"SMITH");
        Variant result;
        Bstr name(L"BYNAME");
        VARIANT_BOOL opened = VARIANT_FALSE;
        ComPtr<ZuDataView> view;
        LONG processed = 0;
        functions().Descend(key.address(), nullptr, result.put());
        table->OpenIndex(name.address(), &opened);
        table->Lookup(key.address(), Variant(L"True"), 0, nullptr, view.put());
        table->Process(name.get(), name.get(), Variant::Missing(), 0, key.address(), key.address(), nullptr,
                       nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &processed);
        Scene().contextItems.clear();
        Journal::OfThread().Clear();
    };
    round();
    ComBlocks blocks;
    for (int rounds = 0; rounds < 100; ++rounds)
        round();
    EXPECT_GT(blocks.allocated(), 100) << "the count is not at work";
    EXPECT_EQ(blocks.alive(), 0);
}

}  // namespace zu::contract
