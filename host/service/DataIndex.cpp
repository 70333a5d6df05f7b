#include "host/service/DataIndex.h"

#include "com/Bstr.h"
#include "host/engine/Reporting.h"
#include "host/service/DataKeyFields.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

/// Under this identifier the object answers with its own address, so that a table can tell its index objects
/// from those of others. It never leaves this module.
// {5C0D9E5E-2B7B-4E63-9C9A-1F8B6B0E6D21}
constexpr IID kOwnIndex = {0x5c0d9e5e, 0x2b7b, 0x4e63, {0x9c, 0x9a, 0x1f, 0x8b, 0x6b, 0x0e, 0x6d, 0x21}};

BSTR TextOf(const std::string& utf8) {
    return com::NewBstr(com::AsWide(text::ToUtf16(utf8)));
}

}  // namespace

HRESULT DataIndex::QueryMore(REFIID iid, void** object) noexcept {
    if (!IsEqualIID(iid, kOwnIndex)) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<::DataIndex*>(this);
    return S_OK;
}

std::shared_ptr<IndexKey> DataIndex::KeyOf(::DataIndex* index) {
    if (!index) return nullptr;
    com::ComPtr<::DataIndex> own;
    if (FAILED(index->QueryInterface(kOwnIndex, own.putVoid()))) return nullptr;
    return static_cast<DataIndex*>(own.get())->key_;
}

HRESULT DataIndex::get_Name(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return TextOf(key_->description().name); });
}

HRESULT DataIndex::get_Expression(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return TextOf(key_->description().expression); });
}

HRESULT DataIndex::get_Filter(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return TextOf(key_->description().filter); });
}

HRESULT DataIndex::get_Unique(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(key_->description().unique); });
}

HRESULT DataIndex::get_Descending(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(key_->description().descending); });
}

HRESULT DataIndex::KeyFields(::DataKeyFields** Result) noexcept {
    return GuardedResult(Result, [&] { return com::MakeObject<DataKeyFields>(key_).detach(); });
}

HRESULT DataIndex::get_Usable(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(key_->description().usable); });
}

HRESULT DataIndex::get_Reason(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return TextOf(key_->description().reason); });
}

HRESULT DataIndex::get_Candidate(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(key_->description().candidate); });
}

}  // namespace zu::host
