#include "component/textio/ZuExportFormats.h"

namespace zu::component {

const IID ZuExportFormats::kInternals = {
    0x2a3d7a51, 0x94c6, 0x4e0b, {0x8d, 0x13, 0x6f, 0x0e, 0x52, 0x7b, 0x90, 0xc4}};

HRESULT ZuExportFormats::QueryMore(REFIID iid, void** object) noexcept {
    if (!IsEqualIID(iid, kInternals)) return E_NOINTERFACE;
    *object = com::ComPtr(this).detach();
    return S_OK;
}

STDMETHODIMP ZuExportFormats::get_Count(LONG* Result) {
    return com::GuardResult(Result, [&] { return formats_.count(); });
}

STDMETHODIMP ZuExportFormats::get_Item(VARIANT ItemReference, _ZuExportFormat** Result) {
    return com::GuardResult(Result, [&] { return formats_.At(ItemReference).detach(); });
}

STDMETHODIMP ZuExportFormats::get_NewEnum(IUnknown** Result) {
    return com::GuardResult(Result, [&] { return formats_.Enumerate(this).detach(); });
}

STDMETHODIMP ZuExportFormats::AddFormat(BSTR* Name, LONG* DefaultSetup, VARIANT_BOOL* Result) {
    return com::GuardResult(Result, [&] {
        formats_.Add(Name ? com::View(*Name) : std::wstring_view(), DefaultSetup ? *DefaultSetup : 0);
        return VARIANT_BOOL{VARIANT_TRUE};
    });
}

}  // namespace zu::component
