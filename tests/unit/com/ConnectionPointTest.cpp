#include "com/ConnectionPoint.h"

#include <gtest/gtest.h>
#include <olectl.h>

#include "Caller.h"

namespace zu::com::test {
namespace {

class Source final : public IConnectionPointContainer {
public:
    ConnectionPoint point{*this, __uuidof(ITarget)};
    ULONG references = 1;

    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** found) override {
        return point.Find(events, found);
    }
};

/// A client of the events by name only, as scripts are.
class Sink final : public IDispatch {
public:
    std::vector<std::wstring> calls;
    std::function<void()> whenCalled;
    HRESULT answer = S_OK;
    ULONG references = 1;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch);
        *object = known ? this : nullptr;
        if (known) ++references;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        std::wstring text = std::to_wstring(id);
        for (UINT index = parameters->cArgs; index-- > 0;) {
            VARIANT& argument = parameters->rgvarg[index];
            text += L" " + Describe(Variant(argument));
            if (argument.vt == (VT_BYREF | VT_VARIANT)) *argument.pvarVal = Variant(L"answer").detach();
        }
        calls.push_back(text);
        if (whenCalled) whenCalled();
        return answer;
    }
};

TEST(ConnectionPoint, IsFoundUnderItsEvents) {
    Source source;
    {
        ComPtr<IConnectionPoint> point;
        EXPECT_EQ(source.FindConnectionPoint(__uuidof(ITarget), point.put()), S_OK);
        EXPECT_EQ(source.references, 2u) << "the point holds its source";
        IID events{};
        EXPECT_EQ(point->GetConnectionInterface(&events), S_OK);
        EXPECT_TRUE(IsEqualIID(events, __uuidof(ITarget)));
        ComPtr<IConnectionPointContainer> container;
        EXPECT_EQ(point->GetConnectionPointContainer(container.put()), S_OK);
        EXPECT_EQ(container.get(), &source);
    }
    EXPECT_EQ(source.references, 1u);
    ComPtr<IConnectionPoint> none;
    EXPECT_EQ(source.FindConnectionPoint(__uuidof(INamed), none.put()), CONNECT_E_NOCONNECTION);
}

TEST(ConnectionPoint, CallsItsClientsWithArgumentsInOrder) {
    Source source;
    Sink first;
    Sink second;
    DWORD cookies[2] = {};
    ASSERT_EQ(source.point.Advise(&first, &cookies[0]), S_OK);
    ASSERT_EQ(source.point.Advise(&second, &cookies[1]), S_OK);
    EXPECT_NE(cookies[0], cookies[1]);
    first.answer = E_FAIL;
    const Variant name(L"FIELD");
    const VARIANT arguments[] = {name.get(), Variant(LONG{5}).get()};
    source.point.Fire(1, arguments);
    EXPECT_EQ(first.calls, std::vector<std::wstring>{L"1 8 FIELD 3 5"});
    EXPECT_EQ(second.calls, first.calls) << "a client that fails does not silence the others";
    EXPECT_EQ(source.point.Unadvise(cookies[0]), S_OK);
    EXPECT_EQ(source.point.Unadvise(cookies[0]), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(first.references, 1u);
    source.point.Fire(2, {});
    EXPECT_EQ(first.calls.size(), 1u);
    EXPECT_EQ(second.calls.size(), 2u);
}

TEST(ConnectionPoint, BringsAnswersBack) {
    Source source;
    Sink sink;
    DWORD cookie = 0;
    ASSERT_EQ(source.point.Advise(&sink, &cookie), S_OK);
    Variant value(L"question");
    const VARIANT arguments[] = {ByReference(value)};
    source.point.Fire(1, arguments);
    EXPECT_EQ(Describe(value), L"8 answer");
}

TEST(ConnectionPoint, AClientMayLeaveWhileItIsCalled) {
    Source source;
    Sink sink;
    Sink other;
    DWORD cookie = 0;
    DWORD otherCookie = 0;
    ASSERT_EQ(source.point.Advise(&sink, &cookie), S_OK);
    ASSERT_EQ(source.point.Advise(&other, &otherCookie), S_OK);
    sink.whenCalled = [&] { source.point.Unadvise(cookie); };
    source.point.Fire(1, {});
    source.point.Fire(1, {});
    EXPECT_EQ(sink.calls.size(), 1u);
    EXPECT_EQ(other.calls.size(), 2u);
    EXPECT_EQ(source.point.clients(), 1u);
}

TEST(ConnectionPoint, RefusesNoClient) {
    Source source;
    DWORD cookie = 0;
    EXPECT_EQ(source.point.Advise(nullptr, &cookie), E_POINTER);
    ComPtr<IConnectionPoint> none;
    IEnumConnections* connections = nullptr;
    EXPECT_EQ(source.point.EnumConnections(&connections), E_NOTIMPL);
}

}  // namespace
}  // namespace zu::com::test
