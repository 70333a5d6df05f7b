#include "runner/EventBindings.h"

#include <memory>
#include <utility>

#include "com/ComError.h"
#include "runner/EventSink.h"

namespace zu::runner {
namespace {

constexpr int kDefaultSource = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;

// The attributes of a type for as long as this lives.
class TypeAttributes {
public:
    explicit TypeAttributes(ITypeInfo& type) : type_(type) { com::Check(type.GetTypeAttr(&attributes_)); }
    ~TypeAttributes() { type_.ReleaseTypeAttr(attributes_); }
    TypeAttributes(const TypeAttributes&) = delete;
    TypeAttributes& operator=(const TypeAttributes&) = delete;
    const TYPEATTR* operator->() const noexcept { return attributes_; }

private:
    ITypeInfo& type_;
    TYPEATTR* attributes_ = nullptr;
};

// The class's implemented type whose flags, as far as the mask goes, are `flags`.
com::ComPtr<ITypeInfo> ImplementedType(ITypeInfo& coclass, int flags) {
    const TypeAttributes attributes(coclass);
    for (UINT i = 0; i < attributes->cImplTypes; ++i) {
        int actual = 0;
        HREFTYPE reference = 0;
        com::ComPtr<ITypeInfo> type;
        if (SUCCEEDED(coclass.GetImplTypeFlags(i, &actual)) && (actual & kDefaultSource) == flags &&
            SUCCEEDED(coclass.GetRefTypeOfImplType(i, &reference)) &&
            SUCCEEDED(coclass.GetRefTypeInfo(reference, type.put()))) {
            return type;
        }
    }
    return {};
}

bool IsSameType(ITypeInfo& left, ITypeInfo& right) {
    return TypeAttributes(left)->guid == TypeAttributes(right)->guid;
}

// Objects that do not tell their class: the class of their library whose default interface is the object's.
com::ComPtr<ITypeInfo> ClassByDefaultInterface(IDispatch* object) {
    com::ComPtr<ITypeInfo> type;
    com::ComPtr<ITypeLib> library;
    UINT index = 0;
    if (FAILED(object->GetTypeInfo(0, LOCALE_NEUTRAL, type.put())) || !type) return {};
    if (FAILED(type->GetContainingTypeLib(library.put(), &index))) return {};
    const UINT count = library->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
        TYPEKIND kind{};
        com::ComPtr<ITypeInfo> coclass;
        if (FAILED(library->GetTypeInfoType(i, &kind)) || kind != TKIND_COCLASS) continue;
        if (FAILED(library->GetTypeInfo(i, coclass.put()))) continue;
        const com::ComPtr<ITypeInfo> main = ImplementedType(*coclass, IMPLTYPEFLAG_FDEFAULT);
        if (main && IsSameType(*main, *type)) return coclass;
    }
    return {};
}

com::ComPtr<ITypeInfo> EventInterface(IDispatch* object) {
    com::ComPtr<ITypeInfo> coclass;
    if (const auto provider = com::Share(object).tryAs<IProvideClassInfo>())
        provider->GetClassInfo(coclass.put());
    if (!coclass) coclass = ClassByDefaultInterface(object);
    return coclass ? ImplementedType(*coclass, kDefaultSource) : com::ComPtr<ITypeInfo>();
}

}  // namespace

void EventBindings::Connect(IDispatch* object, const std::wstring& prefix, com::ComPtr<IDispatch> routines) {
    const com::ComPtr<IDispatch> source = com::Share(com::Required(object));
    const auto container = source.tryAs<IConnectionPointContainer>();
    const com::ComPtr<ITypeInfo> events = container ? EventInterface(object) : com::ComPtr<ITypeInfo>();
    if (!events) throw com::ComError(E_NOINTERFACE, L"the object has no events");

    const IID id = TypeAttributes(*events)->guid;
    Binding binding;
    binding.identity = source.as<IUnknown>();
    com::Check(container->FindConnectionPoint(id, binding.point.put()));
    const auto sink = MakeUnknown<EventSink>(id, *events, prefix, std::move(routines));
    com::Check(binding.point->Advise(sink.get(), &binding.cookie));
    bindings_.push_back(std::move(binding));
}

void EventBindings::Disconnect(IDispatch* object) noexcept {
    const auto identity = com::Share(object).tryAs<IUnknown>();
    for (std::size_t i = bindings_.size(); i-- > 0;) {
        if (bindings_[i].identity.get() != identity.get()) continue;
        const Binding binding = std::move(bindings_[i]);
        bindings_.erase(bindings_.begin() + static_cast<std::ptrdiff_t>(i));
        binding.point->Unadvise(binding.cookie);
    }
}

void EventBindings::DisconnectAll() noexcept {
    const std::vector<Binding> bindings = std::exchange(bindings_, {});
    for (const Binding& binding : bindings)
        binding.point->Unadvise(binding.cookie);
}

}  // namespace zu::runner
