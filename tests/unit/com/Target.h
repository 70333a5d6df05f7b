#pragma once

#include <array>
#include <string>

#include "DispatchTarget.h"
#include "com/Object.h"

namespace zu::com::test {

/// An object with a name and a content per index.
class Named final : public DualObject<Named, INamed> {
public:
    explicit Named(std::wstring name) : name_(std::move(name)) {}
    Named() : Named(L"made by class object") {}
    static CLSID classId() { return __uuidof(NamedObject); }

    STDMETHODIMP get_Name(BSTR* Result) override;
    STDMETHODIMP get_Content(VARIANT Index, VARIANT* Result) override;
    STDMETHODIMP put_Content(VARIANT Index, VARIANT Value) override;

private:
    std::wstring name_;
    Variant content_;
    std::wstring index_;
};

/// Answers in text what arrived at the vtable.
class Target final : public DualObject<Target, ITarget, IExtra> {
public:
    static CLSID classId() { return __uuidof(TargetObject); }
    static DispatchOptions dispatchOptions() noexcept;

    STDMETHODIMP Echo(VARIANT Value, VARIANT* Result) override;
    STDMETHODIMP Add(LONG Left, LONG Right, LONG* Result) override;
    STDMETHODIMP Texts(BSTR First, BSTR Second, BSTR* Result) override;
    STDMETHODIMP Flag(VARIANT_BOOL Value, VARIANT_BOOL* Result) override;
    STDMETHODIMP Describe(VARIANT* Value, BSTR* Result) override;
    STDMETHODIMP SetVariant(VARIANT* Value) override;
    STDMETHODIMP ChangeText(BSTR* Text, BSTR* Result) override;
    STDMETHODIMP ChangeLong(LONG* Number, LONG* Result) override;
    STDMETHODIMP KeepLong(LONG* Number, LONG* Result) override;
    STDMETHODIMP Join(SAFEARRAY** Values, BSTR* Result) override;
    STDMETHODIMP JoinAfter(VARIANT Head, VARIANT* Key, SAFEARRAY** Values, BSTR* Result) override;
    STDMETHODIMP FillFirst(SAFEARRAY** Values) override;
    STDMETHODIMP DropArray(SAFEARRAY** Values) override;
    STDMETHODIMP NameOf(INamed* Object, BSTR* Result) override;
    STDMETHODIMP SwapObject(INamed** Object, BSTR* Result) override;
    STDMETHODIMP Mix(Colour Value, Colour* Result) override;
    STDMETHODIMP Fail(LONG Code, BSTR Text) override;
    STDMETHODIMP Mixed(LONG A, double B, VARIANT C, BSTR D, double E, VARIANT_BOOL F, CURRENCY G, DATE H,
                       BSTR* Result) override;
    STDMETHODIMP get_Cell(LONG Index, VARIANT* Result) override;
    STDMETHODIMP put_Cell(LONG Index, VARIANT Value) override;
    STDMETHODIMP get_Holder(IDispatch** Result) override;
    STDMETHODIMP putref_Holder(IDispatch* Value) override;
    STDMETHODIMP get_Child(INamed** Result) override;
    STDMETHODIMP get_Nothing(IDispatch** Result) override;
    STDMETHODIMP Hidden() override;
    STDMETHODIMP get_Item(VARIANT Index, INamed** Result) override;
    STDMETHODIMP get__NewEnum(IUnknown** Result) override;
    STDMETHODIMP Defaults(VARIANT Exact, VARIANT Width, BSTR* Result) override;
    STDMETHODIMP Order(BSTR First, BSTR Second, BSTR Third, BSTR* Result) override;
    STDMETHODIMP Nop() override;

    STDMETHODIMP Extra(LONG* Result) override;
    STDMETHODIMP Nop(LONG* Result) override;

private:
    std::array<Variant, 8> cells_;
    ComPtr<IDispatch> holder_;
    ComPtr<Named> child_ = MakeObject<Named>(L"child");
};

/// Type and content of a VARIANT as text, e.g. "8 abc", "missing".
std::wstring Describe(const VARIANT& value);

}  // namespace zu::com::test
