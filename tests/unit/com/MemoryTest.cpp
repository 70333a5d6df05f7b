#include <objidl.h>

#include <functional>
#include <set>

#include "Caller.h"
#include "com/SafeArray.h"

// Texts, arrays and objects that cross a call are all freed: COM's own allocator is watched.
namespace zu::com::test {
namespace {

/// Notes the blocks of COM's allocator that are taken while it is told to, until they are freed.
class Watch final : public IMallocSpy {
public:
    /// Registered once and for ever: COM holds on to a spy as long as a block that it saw is in use.
    static Watch& Instance() {
        static Watch& instance = [&]() -> Watch& {
            auto* watch = new Watch;
            EXPECT_EQ(CoRegisterMallocSpy(watch), S_OK);
            return *watch;
        }();
        return instance;
    }

    std::set<void*> blocks;
    bool noting = false;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IMallocSpy);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
    STDMETHODIMP_(void*) PostAlloc(void* block) override {
        if (noting) blocks.insert(block);
        return block;
    }
    STDMETHODIMP_(void*) PreFree(void* block, BOOL) override {
        blocks.erase(block);
        return block;
    }
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** newBlock, BOOL) override {
        blocks.erase(block);
        *newBlock = block;
        return size;
    }
    STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override {
        if (noting) blocks.insert(block);
        return block;
    }
    STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int answer) override { return answer; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}
};

class Memory : public ::testing::Test {
protected:
    void SetUp() override {
        // Automation keeps freed texts for reuse, which would count as lost.
        const HMODULE automation = GetModuleHandleW(L"oleaut32.dll");
        auto* const stopCaching =
            reinterpret_cast<void (*)()>(reinterpret_cast<void*>(GetProcAddress(automation, "SetOaNoCache")));
        if (stopCaching) stopCaching();
    }

    /// The blocks that rounds of `body` leave behind.
    static std::size_t Lost(const std::function<void()>& body) {
        body();  // what is made once and kept
        Watch& watch = Watch::Instance();
        watch.blocks.clear();
        watch.noting = true;
        for (int round = 0; round < 10; ++round)
            body();
        watch.noting = false;
        return watch.blocks.size();
    }

    Caller target{MakeObject<Target>().as<IDispatch>()};
};

TEST_F(Memory, TheWatchSeesALostText) {
    std::vector<Bstr> kept;
    kept.reserve(11);
    EXPECT_EQ(Lost([&] { kept.emplace_back(L"text"); }), 10u);
}

TEST_F(Memory, IsFreedAfterEveryFormOfCall) {
    EXPECT_EQ(Lost([&] { target.Call(L"Echo", {Variant(L"text")}); }), 0u);
    EXPECT_EQ(Lost([&] { target.Call(L"Texts", {Variant(LONG{12}), Variant(true)}); }), 0u);
    EXPECT_EQ(Lost([&] { target.Call(L"Order", {Variant(L"a"), Variant::Missing(), Variant(1.5)}); }), 0u);
    EXPECT_EQ(Lost([&] { target.Call(L"ChangeText"); }), 0u);
    EXPECT_EQ(Lost([&] { target.Call(L"ChangeText", {Variant(L"literal")}); }), 0u);
    EXPECT_EQ(Lost([&] { target.Call(L"ChangeLong"); }), 0u);
    EXPECT_EQ(Lost([&] {
                  Variant text(L"variable");
                  target.Call(L"ChangeText", {ByReference(text)});
              }),
              0u);
    EXPECT_EQ(Lost([&] {
                  Variant text(L"variable");
                  target.Call(L"SetVariant", {ByReference(text)});
                  target.Call(L"SetVariant", {text});
              }),
              0u);
    EXPECT_EQ(Lost([&] {
                  BSTR raw = Bstr(L"typed").detach();
                  target.Call(L"SetVariant", {ByReference(raw)});
                  target.Call(L"ChangeText", {ByReference(raw)});
                  SysFreeString(raw);
              }),
              0u);
    EXPECT_EQ(Lost([&] { target.Call(L"Join", {Variant(L"A"), Variant(L"B")}); }), 0u);
    EXPECT_EQ(Lost([&] {
                  Variant list = SafeArray::Of({Variant(L"A"), Variant(L"B")}).ToVariant();
                  target.Call(L"Join", {list});
                  target.Call(L"FillFirst", {ByReference(list)});
                  target.Call(L"DropArray", {list});
              }),
              0u);
    EXPECT_EQ(Lost([&] {
                  const auto list = MakeScriptArray({Variant(L"A"), Variant(L"B")});
                  target.Call(L"Join", {Variant(list.get())});
              }),
              0u);
    EXPECT_EQ(Lost([&] {
                  Variant object = Variant(MakeObject<Named>(L"n").as<IDispatch>().get());
                  target.Call(L"SwapObject", {ByReference(object)});
                  target.Call(L"SwapObject", {object});
              }),
              0u);
}

TEST_F(Memory, IsFreedAfterFailures) {
    EXPECT_EQ(Lost([&] { target.Call(L"Fail", {Variant(LONG{E_FAIL}), Variant(L"text")}); }), 0u);
    EXPECT_EQ(Lost([&] { target.Call(L"Add", {Variant(L"text"), Variant(L"more")}); }), 0u);
    EXPECT_EQ(Lost([&] { target.Call(L"Mixed", {Variant(LONG{1}), Variant(L"x")}); }), 0u);
    EXPECT_EQ(Lost([&] { target.Call(L"Secret"); }), 0u);
}

}  // namespace
}  // namespace zu::com::test
