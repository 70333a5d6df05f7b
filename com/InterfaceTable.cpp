#include "com/InterfaceTable.h"

#include <algorithm>

#include "com/ComError.h"
#include "com/TypeLibrary.h"

namespace zu::com {
namespace {

/// Frees what a type info handed out.
class FunctionDescription {
public:
    FunctionDescription(ITypeInfo& info, UINT index) : info_(info) {
        Check(info.GetFuncDesc(index, &description_));
    }
    ~FunctionDescription() { info_.ReleaseFuncDesc(description_); }
    FunctionDescription(const FunctionDescription&) = delete;
    FunctionDescription& operator=(const FunctionDescription&) = delete;
    const FUNCDESC* operator->() const noexcept { return description_; }

private:
    ITypeInfo& info_;
    FUNCDESC* description_ = nullptr;
};

class TypeAttributes {
public:
    explicit TypeAttributes(ITypeInfo& info) : info_(info) { Check(info.GetTypeAttr(&attributes_)); }
    ~TypeAttributes() { info_.ReleaseTypeAttr(attributes_); }
    TypeAttributes(const TypeAttributes&) = delete;
    TypeAttributes& operator=(const TypeAttributes&) = delete;
    const TYPEATTR* operator->() const noexcept { return attributes_; }

private:
    ITypeInfo& info_;
    TYPEATTR* attributes_ = nullptr;
};

/// The vtable view of a dual interface: there the results are parameters and every call answers an HRESULT.
ComPtr<ITypeInfo> VtableView(REFIID id) {
    ComPtr<ITypeInfo> info = TypeLibrary::Find(id);
    const TypeAttributes attributes(*info.get());
    if (attributes->typekind == TKIND_INTERFACE) return info;
    HREFTYPE reference = 0;
    Check(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    ComPtr<ITypeInfo> view;
    Check(info->GetRefTypeInfo(reference, view.put()));
    return view;
}

/// Turns the nested type descriptions of a library into the flat form of a Parameter.
class TypeReader {
public:
    TypeReader(ITypeInfo& info, std::span<const ForeignType> foreign) : info_(info), foreign_(foreign) {}

    void Read(const TYPEDESC& type, Parameter& parameter) {
        switch (type.vt) {
            case VT_PTR:
                ReadPointer(*type.lptdesc, parameter);
                return;
            case VT_SAFEARRAY:
                parameter.type = static_cast<VARTYPE>(VT_ARRAY | type.lptdesc->vt);
                return;
            case VT_USERDEFINED:
                ReadReference(type.hreftype, parameter);
                return;
            case VT_INT:
                parameter.type = VT_I4;
                return;
            case VT_UINT:
                parameter.type = VT_UI4;
                return;
            default:
                parameter.type = type.vt;
                return;
        }
    }

private:
    /// A pointer to an interface is an object by value; any other pointer is a value by reference.
    void ReadPointer(const TYPEDESC& target, Parameter& parameter) {
        Parameter inner;
        inner.name = parameter.name;
        Read(target, inner);
        parameter.type = inner.type;
        parameter.interfaceId = inner.interfaceId;
        const bool interfaceItself = target.vt == VT_USERDEFINED && inner.type == VT_DISPATCH;
        parameter.byReference = !interfaceItself;
    }

    void ReadReference(HREFTYPE reference, Parameter& parameter) {
        for (const ForeignType& known : foreign_) {
            if (SameName(known.parameter, parameter.name)) {
                parameter.type = VT_DISPATCH;
                parameter.interfaceId = known.interfaceId;
                return;
            }
        }
        ComPtr<ITypeInfo> target;
        if (FAILED(info_.GetRefTypeInfo(reference, target.put()))) {
            // The other library is not registered here. Enumerations never come from another library.
            parameter.type = VT_DISPATCH;
            return;
        }
        const TypeAttributes attributes(*target.get());
        switch (attributes->typekind) {
            case TKIND_ENUM:
                parameter.type = VT_I4;
                return;
            case TKIND_ALIAS:
                TypeReader(*target.get(), foreign_).Read(attributes->tdescAlias, parameter);
                return;
            default:
                parameter.type = VT_DISPATCH;
                parameter.interfaceId = attributes->guid;
                return;
        }
    }

    ITypeInfo& info_;
    std::span<const ForeignType> foreign_;
};

Parameter ReadParameter(ITypeInfo& info, const ELEMDESC& element, std::wstring name,
                        std::span<const ForeignType> foreign) {
    Parameter parameter;
    parameter.name = std::move(name);
    TypeReader(info, foreign).Read(element.tdesc, parameter);
    // Plain object pointers carry no reference to a type: `IDispatch**` is a pointer to VT_DISPATCH.
    if ((parameter.type == VT_DISPATCH || parameter.type == VT_UNKNOWN) &&
        IsEqualIID(parameter.interfaceId, IID_NULL) && element.tdesc.vt != VT_USERDEFINED) {
        const TYPEDESC* inner = &element.tdesc;
        while (inner->vt == VT_PTR)
            inner = inner->lptdesc;
        if (inner->vt == VT_DISPATCH) parameter.interfaceId = IID_IDispatch;
        if (inner->vt == VT_UNKNOWN) parameter.interfaceId = IID_IUnknown;
    }
    const USHORT flags = element.paramdesc.wParamFlags;
    parameter.optional = (flags & PARAMFLAG_FOPT) != 0;
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0 && element.paramdesc.pparamdescex) {
        parameter.optional = true;
        if (parameter.type != VT_VARIANT) {
            parameter.omitted = Convert(element.paramdesc.pparamdescex->varDefaultValue, parameter.type);
        }
    }
    return parameter;
}

Member ReadMember(ITypeInfo& info, const FunctionDescription& function,
                  std::span<const ForeignType> foreign) {
    Member member;
    member.id = function->memid;
    member.kind = function->invkind;
    member.offset = static_cast<std::size_t>(function->oVft);
    member.restricted = (function->wFuncFlags & FUNCFLAG_FRESTRICTED) != 0;

    std::vector<BSTR> texts(static_cast<std::size_t>(function->cParams) + 1, nullptr);
    UINT named = 0;
    Check(info.GetNames(function->memid, texts.data(), static_cast<UINT>(texts.size()), &named));
    std::vector<Bstr> names;
    names.reserve(texts.size());
    for (BSTR text : texts)
        names.push_back(Bstr::Adopt(text));
    member.name = names[0].str();

    for (SHORT index = 0; index < function->cParams; ++index) {
        const ELEMDESC& element = function->lprgelemdescParam[index];
        // The assigned value of a property has no name of its own in a type library.
        Parameter parameter =
            ReadParameter(info, element, names[static_cast<std::size_t>(index) + 1].str(), foreign);
        if ((element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) {
            member.result = std::move(parameter);
        } else {
            member.parameters.push_back(std::move(parameter));
        }
    }
    return member;
}

wchar_t FoldCharacter(wchar_t character) noexcept {
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + (L'a' - L'A'))
                                                  : character;
}

}  // namespace

std::size_t Member::required() const noexcept {
    return static_cast<std::size_t>(
        std::count_if(parameters.begin(), parameters.end(), [](const Parameter& p) { return !p.optional; }));
}

bool Member::gathersTrailing() const noexcept {
    return kind == INVOKE_FUNC && !parameters.empty() && (parameters.back().type & VT_ARRAY) != 0;
}

InterfaceTable::InterfaceTable(REFIID id, std::span<const ForeignType> foreign) {
    const ComPtr<ITypeInfo> info = VtableView(id);
    const TypeAttributes attributes(*info.get());
    for (UINT index = 0; index < attributes->cFuncs; ++index) {
        const FunctionDescription function(*info.get(), index);
        // A library may list the operations of IDispatch itself; they are not for callers by name.
        if (function->memid >= 0x60000000 && function->memid < 0x60020000) continue;
        members_.push_back(ReadMember(*info.get(), function, foreign));
    }
    std::stable_sort(members_.begin(), members_.end(),
                     [](const Member& left, const Member& right) { return left.id < right.id; });
}

std::span<const Member> InterfaceTable::Find(DISPID id) const noexcept {
    const auto first =
        std::lower_bound(members_.begin(), members_.end(), id,
                         [](const Member& member, DISPID wanted) { return member.id < wanted; });
    auto last = first;
    while (last != members_.end() && last->id == id)
        ++last;
    return {first, last};
}

std::wstring Fold(std::wstring_view name) {
    std::wstring folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), FoldCharacter);
    return folded;
}

bool SameName(std::wstring_view left, std::wstring_view right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return FoldCharacter(a) == FoldCharacter(b); });
}

bool ComesBefore(std::wstring_view left, std::wstring_view right) noexcept {
    return std::lexicographical_compare(
        left.begin(), left.end(), right.begin(), right.end(),
        [](wchar_t a, wchar_t b) { return FoldCharacter(a) < FoldCharacter(b); });
}

}  // namespace zu::com
