#include "component/textio/ZuImportFormats.h"

namespace zu::component {

const IID ZuImportFormats::kInternals = {
    0x5b7f21e8, 0x0d39, 0x4c57, {0xa2, 0x68, 0x91, 0x3c, 0x4d, 0xe7, 0x05, 0x1f}};

HRESULT ZuImportFormats::QueryMore(REFIID iid, void** object) noexcept {
    if (!IsEqualIID(iid, kInternals)) return E_NOINTERFACE;
    *object = com::ComPtr(this).detach();
    return S_OK;
}

STDMETHODIMP ZuImportFormats::get_Count(LONG* Result) {
    return com::GuardResult(Result, [&] { return formats_.count(); });
}

STDMETHODIMP ZuImportFormats::get_Item(VARIANT ItemReference, _ZuImportFormat** Result) {
    return com::GuardResult(Result, [&] { return formats_.At(ItemReference).detach(); });
}

STDMETHODIMP ZuImportFormats::get_NewEnum(IUnknown** Result) {
    return com::GuardResult(Result, [&] { return formats_.Enumerate(this).detach(); });
}

STDMETHODIMP ZuImportFormats::AddFormat(BSTR* Name, LONG* DefaultSetup, VARIANT_BOOL* Result) {
    return com::GuardResult(Result, [&] {
        formats_.Add(Name ? com::View(*Name) : std::wstring_view(), DefaultSetup ? *DefaultSetup : 0);
        return VARIANT_BOOL{VARIANT_TRUE};
    });
}

}  // namespace zu::component
