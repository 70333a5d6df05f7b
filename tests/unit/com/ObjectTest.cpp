#include <thread>

#include "Caller.h"

namespace zu::com::test {
namespace {

TEST(Object, StartsWithOneReferenceAndGoesWithTheLast) {
    const LONG before = Module::objects();
    auto object = MakeObject<Named>(L"n");
    EXPECT_EQ(Module::objects(), before + 1);
    EXPECT_EQ(object->AddRef(), 2u);
    EXPECT_EQ(object->Release(), 1u);
    EXPECT_EQ(object.detach()->Release(), 0u);
    EXPECT_EQ(Module::objects(), before);
}

TEST(Object, AnswersItsInterfaces) {
    const auto object = MakeObject<Target>();
    EXPECT_TRUE(object.tryAs<IUnknown>());
    EXPECT_TRUE(object.tryAs<IDispatch>());
    EXPECT_TRUE(object.tryAs<ITarget>());
    EXPECT_TRUE(object.tryAs<IExtra>());
    EXPECT_TRUE(object.tryAs<ISupportErrorInfo>());
    EXPECT_TRUE(object.tryAs<IProvideClassInfo>());
    EXPECT_FALSE(object.tryAs<INamed>());
    void* nothing = &nothing;
    EXPECT_EQ(object->QueryInterface(__uuidof(INamed), &nothing), E_NOINTERFACE);
    EXPECT_EQ(nothing, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST(Object, HasOneIdentity) {
    const auto object = MakeObject<Target>();
    EXPECT_EQ(object.tryAs<IUnknown>().get(), object.tryAs<IExtra>().tryAs<IUnknown>().get());
    EXPECT_EQ(static_cast<void*>(object.tryAs<IDispatch>().get()),
              static_cast<void*>(object.tryAs<ITarget>().get()));
}

TEST(Object, TellsWhichInterfacesExplainTheirErrors) {
    const auto errors = MakeObject<Target>().tryAs<ISupportErrorInfo>();
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(__uuidof(ITarget)), S_OK);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(__uuidof(IExtra)), S_OK);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(__uuidof(INamed)), S_FALSE);
}

TEST(Object, ProvidesItsClass) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(MakeObject<Target>().tryAs<IProvideClassInfo>()->GetClassInfo(info.put()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(IsEqualCLSID(attributes->guid, __uuidof(TargetObject)));
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    info->ReleaseTypeAttr(attributes);
}

TEST(Object, AConstructorThatThrowsLeavesNothing) {
    class Failing final : public DualObject<Failing, INamed> {
    public:
        Failing() { throw ComError(E_FAIL); }
        STDMETHODIMP get_Name(BSTR*) override { return E_NOTIMPL; }
        STDMETHODIMP get_Content(VARIANT, VARIANT*) override { return E_NOTIMPL; }
        STDMETHODIMP put_Content(VARIANT, VARIANT) override { return E_NOTIMPL; }
    };
    const LONG before = Module::objects();
    EXPECT_THROW(MakeObject<Failing>(), ComError);
    EXPECT_EQ(Module::objects(), before);
}

TEST(Object, SurvivesBeingHandedAroundWhileItIsDestroyed) {
    class Clingy final : public DualObject<Clingy, INamed> {
    public:
        ~Clingy() override { const ComPtr<INamed> again(this); }
        STDMETHODIMP get_Name(BSTR*) override { return E_NOTIMPL; }
        STDMETHODIMP get_Content(VARIANT, VARIANT*) override { return E_NOTIMPL; }
        STDMETHODIMP put_Content(VARIANT, VARIANT) override { return E_NOTIMPL; }
    };
    const LONG before = Module::objects();
    MakeObject<Clingy>();
    EXPECT_EQ(Module::objects(), before);
}

TEST(Object, IsNotDestroyedWhileItIsCalledByName) {
    // The routine of a script may let go of the object that is calling it.
    class Leaving final : public DualObject<Leaving, INamed> {
    public:
        STDMETHODIMP get_Name(BSTR* Result) override {
            Release();  // the caller's only reference
            return GuardResult(Result, [] { return NewBstr(L"still here"); });
        }
        STDMETHODIMP get_Content(VARIANT, VARIANT*) override { return E_NOTIMPL; }
        STDMETHODIMP put_Content(VARIANT, VARIANT) override { return E_NOTIMPL; }
    };
    const LONG before = Module::objects();
    IDispatch* object = MakeObject<Leaving>().as<IDispatch>().detach();
    DISPPARAMS none{};
    Variant result;
    EXPECT_EQ(object->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, result.put(), nullptr, nullptr),
              S_OK);
    EXPECT_EQ(Describe(result), L"8 still here");
    EXPECT_EQ(Module::objects(), before);
}

TEST(Object, FirstCallsByNameOnSeveralThreadsAgree) {
    class Fresh final : public DualObject<Fresh, INamed> {
    public:
        STDMETHODIMP get_Name(BSTR* Result) override {
            return GuardResult(Result, [] { return NewBstr(L"fresh"); });
        }
        STDMETHODIMP get_Content(VARIANT, VARIANT*) override { return E_NOTIMPL; }
        STDMETHODIMP put_Content(VARIANT, VARIANT) override { return E_NOTIMPL; }
    };
    std::vector<std::thread> threads;
    threads.reserve(8);
    std::atomic<int> right{0};
    for (int number = 0; number < 8; ++number) {
        threads.emplace_back([&] {
            const Caller caller(MakeObject<Fresh>().as<IDispatch>());
            for (int round = 0; round < 100; ++round) {
                if (caller.Call(L"Name").text() == L"8 fresh") ++right;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, 800);
}

TEST(Object, ThousandsOfRoundsLeaveNothing) {
    const LONG before = Module::objects();
    for (int round = 0; round < 10000; ++round) {
        const Caller caller(MakeObject<Target>().as<IDispatch>());
        ASSERT_EQ(caller.Call(L"Child").code, S_OK);
    }
    EXPECT_EQ(Module::objects(), before);
}

}  // namespace
}  // namespace zu::com::test
