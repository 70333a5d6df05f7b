#include "tests/typelib/LibraryReader.h"

#include <algorithm>
#include <cstdio>

#include "com/Bstr.h"
#include "com/ComError.h"

namespace zu::typelib {
namespace {

using com::Bstr;
using com::Check;
using com::ComPtr;

constexpr int kOperationsOfDispatch = 7;

std::string Narrow(std::wstring_view text) {
    std::string result;
    for (wchar_t character : text)
        result += character < 128 ? static_cast<char>(character) : '?';
    return result;
}

std::string Text(REFGUID id) {
    wchar_t text[40] = {};
    StringFromGUID2(id, text, 40);
    return Narrow(text);
}

struct Attributes {
    explicit Attributes(ITypeInfo& info) {
        TYPEATTR* attributes = nullptr;
        Check(info.GetTypeAttr(&attributes));
        value = *attributes;
        info.ReleaseTypeAttr(attributes);
    }
    TYPEATTR value{};
};

std::string NameOf(ITypeInfo& info) {
    Bstr name;
    Check(info.GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr));
    return Narrow(name.view());
}

/// A type's text; an object is a pointer already, so one pointer to an interface shows no star.
std::string TypeText(ITypeInfo& info, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_I2:
            return "Integer";
        case VT_I4:
            return "Long";
        case VT_R4:
            return "Single";
        case VT_R8:
            return "Double";
        case VT_CY:
            return "Currency";
        case VT_DATE:
            return "Date";
        case VT_BSTR:
            return "BSTR";
        case VT_BOOL:
            return "Boolean";
        case VT_VARIANT:
            return "VARIANT";
        case VT_DISPATCH:
            return "IDispatch";
        case VT_UNKNOWN:
            return "IUnknown";
        case VT_VOID:
            return "void";
        case VT_HRESULT:
            return "HRESULT";
        case VT_SAFEARRAY:
            return "SAFEARRAY(" + TypeText(info, *type.lptdesc) + ")";
        case VT_USERDEFINED: {
            ComPtr<ITypeInfo> target;
            Check(info.GetRefTypeInfo(type.hreftype, target.put()));
            return NameOf(*target);
        }
        case VT_PTR: {
            const TYPEDESC& inner = *type.lptdesc;
            if (inner.vt == VT_USERDEFINED) {
                ComPtr<ITypeInfo> target;
                Check(info.GetRefTypeInfo(inner.hreftype, target.put()));
                const TYPEKIND kind = Attributes(*target).value.typekind;
                if (kind == TKIND_INTERFACE || kind == TKIND_DISPATCH) return NameOf(*target);
            }
            return TypeText(info, inner) + "*";
        }
        default:
            return "type " + std::to_string(type.vt);
    }
}

std::string DefaultText(const VARIANT& value) {
    switch (value.vt) {
        case VT_I2:
            return std::to_string(value.iVal);
        case VT_I4:
            return std::to_string(value.lVal);
        case VT_BOOL:
            return value.boolVal ? "True" : "False";
        default:
            return "default of type " + std::to_string(value.vt);
    }
}

std::string ParameterText(ITypeInfo& info, const ELEMDESC& element, const std::string& name) {
    const USHORT flags = element.paramdesc.wParamFlags;
    std::string text;
    if ((flags & PARAMFLAG_FOPT) != 0) text += "optional ";
    if ((flags & PARAMFLAG_FIN) != 0 && (flags & PARAMFLAG_FOUT) != 0) {
        text += "inout ";
    } else if ((flags & PARAMFLAG_FOUT) != 0) {
        text += "out ";
    } else if ((flags & PARAMFLAG_FIN) == 0) {
        text += "undirected ";
    }
    text += name + ": " + TypeText(info, element.tdesc);
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0) {
        text += " = " + DefaultText(element.paramdesc.pparamdescex->varDefaultValue);
    }
    return text;
}

const char* KindText(INVOKEKIND kind) {
    switch (kind) {
        case INVOKE_FUNC:
            return "method";
        case INVOKE_PROPERTYGET:
            return "get";
        case INVOKE_PROPERTYPUT:
            return "put";
        default:
            return "putref";
    }
}

std::string IdText(MEMBERID id) {
    char text[16];
    std::snprintf(text, sizeof(text), id > 0xFFFF ? "0x%08lx" : "%ld", id);
    return text;
}

struct Operation {
    int position = 0;
    std::string name;
    std::string text;
    std::string help;
};

Operation ReadOperation(ITypeInfo& info, const FUNCDESC& function) {
    std::vector<BSTR> names(static_cast<std::size_t>(function.cParams) + 1, nullptr);
    UINT count = 0;
    Check(info.GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &count));
    Operation operation;
    operation.position = function.oVft / static_cast<int>(sizeof(void*)) - kOperationsOfDispatch + 1;
    operation.name = Narrow(com::View(names[0]));
    operation.text = operation.name + " " + KindText(function.invkind) + " " + IdText(function.memid) + " (";
    std::string value;
    for (SHORT index = 0; index < function.cParams; ++index) {
        const ELEMDESC& element = function.lprgelemdescParam[index];
        BSTR given = names[static_cast<std::size_t>(index) + 1];
        if ((element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) {
            value = " -> " + TypeText(info, *element.tdesc.lptdesc);
            continue;
        }
        if (operation.text.back() != '(') operation.text += ", ";
        // The assigned value of a property has no name in a type library.
        const bool assigned =
            (function.invkind == INVOKE_PROPERTYPUT || function.invkind == INVOKE_PROPERTYPUTREF) &&
            index + 1 == function.cParams;
        operation.text += ParameterText(info, element, assigned ? "value" : Narrow(com::View(given)));
    }
    for (BSTR name : names)
        SysFreeString(name);
    operation.text += ")" + value;
    if ((function.wFuncFlags & FUNCFLAG_FRESTRICTED) != 0) operation.text += " restricted";
    if ((function.wFuncFlags & FUNCFLAG_FHIDDEN) != 0) operation.text += " hidden";
    Bstr help;
    info.GetDocumentation(function.memid, nullptr, help.put(), nullptr, nullptr);
    operation.help = Narrow(help.view());
    return operation;
}

std::vector<Operation> ReadOperations(ITypeInfo& info) {
    std::vector<Operation> operations;
    const Attributes attributes(info);
    for (UINT index = 0; index < attributes.value.cFuncs; ++index) {
        FUNCDESC* function = nullptr;
        Check(info.GetFuncDesc(index, &function));
        operations.push_back(ReadOperation(info, *function));
        info.ReleaseFuncDesc(function);
    }
    return operations;
}

/// The vtable half of a dual interface, which is listed in its dispatch form.
ComPtr<ITypeInfo> VtableHalf(const ComPtr<ITypeInfo>& info) {
    HREFTYPE reference = 0;
    Check(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    ComPtr<ITypeInfo> half;
    Check(info->GetRefTypeInfo(reference, half.put()));
    return half;
}

std::string BaseOf(ITypeInfo& info) {
    HREFTYPE reference = 0;
    if (FAILED(info.GetRefTypeOfImplType(0, &reference))) return "none";
    ComPtr<ITypeInfo> base;
    Check(info.GetRefTypeInfo(reference, base.put()));
    return NameOf(*base);
}

}  // namespace

LibraryReader::LibraryReader(const std::wstring& place) {
    Check(LoadTypeLibEx(place.c_str(), REGKIND_NONE, library_.put()));
}

std::string LibraryReader::Identity() const {
    TLIBATTR* attributes = nullptr;
    Check(library_->GetLibAttr(&attributes));
    Bstr name;
    Bstr helpFile;
    Check(library_->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, helpFile.put()));
    std::string text = Narrow(name.view()) + " " + Text(attributes->guid) + " " +
                       std::to_string(attributes->wMajorVerNum) + "." +
                       std::to_string(attributes->wMinorVerNum);
    library_->ReleaseTLibAttr(attributes);
    // A help file is answered with the folder of the library before it.
    std::string file = Narrow(helpFile.view());
    file.erase(0, file.find_last_of("\\/") + 1);
    if (!file.empty()) text += " \"" + file + "\"";
    return text;
}

std::vector<std::string> LibraryReader::Types() const {
    std::vector<std::string> names;
    for (UINT index = 0; index < library_->GetTypeInfoCount(); ++index) {
        ComPtr<ITypeInfo> info;
        Check(library_->GetTypeInfo(index, info.put()));
        const TYPEATTR attributes = Attributes(*info).value;
        std::string kind = "type";
        if (attributes.typekind == TKIND_ENUM) kind = "enum";
        if (attributes.typekind == TKIND_COCLASS) kind = "coclass";
        if (attributes.typekind == TKIND_INTERFACE) kind = "vtable interface";
        if (attributes.typekind == TKIND_DISPATCH) {
            kind = (attributes.wTypeFlags & TYPEFLAG_FDUAL) != 0 ? "interface" : "dispinterface";
        }
        names.push_back(kind + " " + NameOf(*info));
    }
    std::sort(names.begin(), names.end());
    return names;
}

ComPtr<ITypeInfo> LibraryReader::Find(const wchar_t* name, TYPEKIND kind) const {
    for (UINT index = 0; index < library_->GetTypeInfoCount(); ++index) {
        TYPEKIND found{};
        Check(library_->GetTypeInfoType(index, &found));
        Bstr text;
        Check(library_->GetDocumentation(static_cast<INT>(index), text.put(), nullptr, nullptr, nullptr));
        if (found != kind || _wcsicmp(text.str().c_str(), name) != 0) continue;
        ComPtr<ITypeInfo> info;
        Check(library_->GetTypeInfo(index, info.put()));
        return info;
    }
    throw com::ComError(TYPE_E_ELEMENTNOTFOUND, std::wstring(L"no such type: ") + name);
}

std::string LibraryReader::Interface(const wchar_t* name) const {
    const ComPtr<ITypeInfo> info = Find(name, TKIND_DISPATCH);
    const ComPtr<ITypeInfo> half = VtableHalf(info);
    const TYPEATTR attributes = Attributes(*half).value;  // the dispatch half does not show all flags
    std::string text = Text(attributes.guid);
    if ((attributes.wTypeFlags & TYPEFLAG_FDUAL) != 0) text += " dual";
    if ((attributes.wTypeFlags & TYPEFLAG_FOLEAUTOMATION) != 0) text += " oleautomation";
    return text + ": " + BaseOf(*half);
}

std::vector<std::string> LibraryReader::Operations(const wchar_t* name) const {
    std::vector<std::string> lines;
    for (const Operation& operation : ReadOperations(*VtableHalf(Find(name, TKIND_DISPATCH)))) {
        lines.push_back(std::to_string(operation.position) + " " + operation.text);
    }
    return lines;
}

std::map<std::string, std::string> LibraryReader::HelpStrings(const wchar_t* name) const {
    std::map<std::string, std::string> texts;
    for (const Operation& operation : ReadOperations(*VtableHalf(Find(name, TKIND_DISPATCH)))) {
        if (!operation.help.empty()) texts[operation.name] = operation.help;
    }
    return texts;
}

std::string LibraryReader::Class(const wchar_t* name) const {
    const ComPtr<ITypeInfo> info = Find(name, TKIND_COCLASS);
    const TYPEATTR attributes = Attributes(*info).value;
    std::string text = Text(attributes.guid) + ":";
    for (UINT index = 0; index < attributes.cImplTypes; ++index) {
        int flags = 0;
        HREFTYPE reference = 0;
        Check(info->GetImplTypeFlags(index, &flags));
        Check(info->GetRefTypeOfImplType(index, &reference));
        ComPtr<ITypeInfo> target;
        Check(info->GetRefTypeInfo(reference, target.put()));
        text += index == 0 ? " " : ", ";
        if ((flags & IMPLTYPEFLAG_FDEFAULT) != 0) text += "default ";
        if ((flags & IMPLTYPEFLAG_FSOURCE) != 0) text += "source ";
        text += NameOf(*target);
    }
    if ((attributes.wTypeFlags & TYPEFLAG_FCANCREATE) == 0) text += " (not creatable)";
    return text;
}

std::vector<std::string> LibraryReader::Enumeration(const wchar_t* name) const {
    const ComPtr<ITypeInfo> info = Find(name, TKIND_ENUM);
    const Attributes attributes(*info);
    std::vector<std::string> lines;
    for (UINT index = 0; index < attributes.value.cVars; ++index) {
        VARDESC* constant = nullptr;
        Check(info->GetVarDesc(index, &constant));
        Bstr text;
        info->GetDocumentation(constant->memid, text.put(), nullptr, nullptr, nullptr);
        lines.push_back(Narrow(text.view()) + " = " + std::to_string(constant->lpvarValue->lVal));
        info->ReleaseVarDesc(constant);
    }
    return lines;
}

std::vector<std::string> LibraryReader::Events(const wchar_t* name) const {
    std::vector<std::string> lines;
    for (const Operation& operation : ReadOperations(*Find(name, TKIND_DISPATCH))) {
        lines.push_back(operation.text);
    }
    return lines;
}

}  // namespace zu::typelib
