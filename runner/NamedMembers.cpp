#include "runner/NamedMembers.h"

#include <utility>

#include "com/ComError.h"
#include "com/EnumVariant.h"
#include "com/SameText.h"
#include "runner/DispatchCall.h"
#include "runner/ExceptionInfo.h"

namespace zu::runner {
NamedMembers::Entry* NamedMembers::Find(std::wstring_view name) noexcept {
    for (Entry& entry : entries_) {
        if (com::SameText(entry.name, name)) return &entry;
    }
    return nullptr;
}

void NamedMembers::AddMethod(std::wstring_view name, Member member) {
    entries_.push_back({std::wstring(name), std::move(member), {}, {}});
}

void NamedMembers::AddProperty(std::wstring_view name, Getter get, Putter put) {
    entries_.push_back({std::wstring(name), {}, std::move(get), std::move(put)});
}

void NamedMembers::MakeDefault(std::wstring_view name) {
    default_ = static_cast<DISPID>(Find(name) - entries_.data() + 1);
}

void NamedMembers::SetElements(std::function<std::vector<com::Variant>()> elements) {
    elements_ = std::move(elements);
}

HRESULT NamedMembers::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT NamedMembers::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT NamedMembers::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    for (UINT i = 0; i < count; ++i)
        ids[i] = DISPID_UNKNOWN;
    const Entry* entry = Find(names[0]);
    if (!entry) return DISP_E_UNKNOWNNAME;
    ids[0] = static_cast<DISPID>(entry - entries_.data() + 1);
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;  // members have no named arguments
}

HRESULT NamedMembers::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                             EXCEPINFO* exception, UINT*) {
    if (!parameters) return E_INVALIDARG;
    if (result) VariantInit(result);
    return DispatchGuard(exception, [&] {
        com::Variant value = Call(id, flags, CallArguments(*parameters));
        if (result) *result = value.detach();
    });
}

com::Variant NamedMembers::Call(DISPID id, WORD flags, const CallArguments& arguments) {
    if (id == DISPID_NEWENUM) return Enumerate();
    if (id == DISPID_VALUE) id = default_;
    if (id < 1 || static_cast<std::size_t>(id) > entries_.size()) throw com::ComError(DISP_E_MEMBERNOTFOUND);

    const Entry& entry = entries_[static_cast<std::size_t>(id) - 1];
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        if (!entry.put) throw com::ComError(DISP_E_MEMBERNOTFOUND);
        arguments.RequireCount(1, 1);
        entry.put(arguments[0]);
        return com::Variant();
    }
    if (entry.method) return entry.method(arguments);

    com::Variant value = entry.get();
    if (arguments.count() == 0) return value;
    const com::ComPtr<IDispatch> object = com::ObjectOf<IDispatch>(value);
    if (!object) throw com::ComError(DISP_E_BADPARAMCOUNT);
    return InvokeMember(object.get(), DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        arguments.parameters());
}

com::Variant NamedMembers::Enumerate() const {
    if (!elements_) throw com::ComError(DISP_E_MEMBERNOTFOUND);
    com::Sequence sequence = [elements = elements_()](ULONG position) {
        return position < elements.size() ? std::optional(elements[position]) : std::nullopt;
    };
    VARIANT result;
    VariantInit(&result);
    result.vt = VT_UNKNOWN;
    result.punkVal = com::EnumVariant::Make(std::move(sequence)).detach();
    return com::Variant::Adopt(result);
}

}  // namespace zu::runner
