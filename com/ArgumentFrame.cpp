#include "com/ArgumentFrame.h"

#include <cstring>

#include "com/ComError.h"
#include "com/ScriptList.h"

namespace zu::com {
namespace {

/// The address of the value inside a VARIANT of the given type.
void* ValueAddress(VARIANT& value) noexcept {
    return &value.llVal;
}

/// True when the argument refers to a variable of the caller (directly or as a typed reference).
bool IsReference(const VARIANT& given) noexcept {
    return (given.vt & VT_BYREF) != 0;
}

/// Bytes of a value inside a VARIANT; pointers for texts, objects and arrays. Decimals lie elsewhere.
std::size_t SizeOf(VARTYPE type) noexcept {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_ERROR:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_DATE:
        case VT_CY:
            return 8;
        default:
            return sizeof(void*);
    }
}

/// A value without reference: shares what it points to and owns nothing.
VARIANT ShallowValue(const VARIANT& content) noexcept {
    VARIANT value = content;
    if ((content.vt & VT_BYREF) == 0 || !content.byref) return value;
    value.vt = static_cast<VARTYPE>(content.vt & ~VT_BYREF);
    if (value.vt == VT_DECIMAL) {
        value.decVal = *content.pdecVal;
        value.vt = VT_DECIMAL;  // the number lies over the type
    } else if (value.vt == VT_VARIANT) {
        value = *content.pvarVal;  // references nested beyond what Dereference follows
    } else {
        std::memcpy(&value.llVal, content.byref, SizeOf(value.vt));
    }
    return value;
}

IUnknown* ObjectIn(const VARIANT& content) noexcept {
    switch (content.vt) {
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return content.punkVal;
        case VT_DISPATCH | VT_BYREF:
        case VT_UNKNOWN | VT_BYREF:
            return content.ppunkVal ? *content.ppunkVal : nullptr;
        default:
            return nullptr;
    }
}

bool HoldsNoObject(const VARIANT& content) noexcept {
    const VARTYPE type = static_cast<VARTYPE>(content.vt & ~VT_BYREF);
    return type == VT_EMPTY || type == VT_NULL || type == VT_DISPATCH || type == VT_UNKNOWN;
}

/// Conversions that scripts need all the time, without the detour over the system.
bool ConvertQuickly(VARTYPE type, const VARIANT& value, VARIANT& target) noexcept {
    if (type == VT_I4 && value.vt == VT_I2) {
        target.vt = VT_I4;
        target.lVal = value.iVal;
        return true;
    }
    return false;
}

}  // namespace

ArgumentFrame::ArgumentFrame(const Member& member, LCID locale) noexcept : member_(member), locale_(locale) {
    std::memset(&resultValue_, 0, sizeof(resultValue_));
}

ArgumentFrame::~ArgumentFrame() {
    for (std::size_t index = 0; index < count_; ++index) {
        Slot& slot = slots_[index];
        if (slot.locked) SafeArrayUnlock(slot.locked);
        VariantClear(&slot.temporary);
    }
}

ArgumentFrame::Slot& ArgumentFrame::NextSlot() noexcept {
    Slot& slot = slots_[count_++];
    std::memset(&slot, 0, sizeof(slot));
    return slot;
}

HRESULT ArgumentFrame::Add(VARIANT* given) {
    const Parameter& parameter = member_.parameters[count_];
    Slot& slot = NextSlot();
    if (!given || IsMissing(*given)) return Omit(parameter, slot);
    // JScript leaves arguments out by `undefined`, which arrives as Empty by value.
    if (given->vt == VT_EMPTY && parameter.optional) return Omit(parameter, slot);
    if (parameter.type == VT_VARIANT) return SetVariant(parameter, *given, slot);
    if ((parameter.type & VT_ARRAY) != 0) return SetArray(*given, slot);
    if (parameter.type == VT_DISPATCH || parameter.type == VT_UNKNOWN)
        return SetObject(parameter, *given, slot);
    return SetScalar(parameter, *given, slot);
}

HRESULT ArgumentFrame::AddTrailing(std::span<VARIANT* const> given) {
    Slot& slot = NextSlot();
    std::vector<Variant> elements;
    elements.reserve(given.size());
    for (const VARIANT* value : given)
        elements.emplace_back(*value);
    slot.temporary.parray = NewVariantArray(elements);
    slot.temporary.vt = VT_ARRAY | VT_VARIANT;
    slot.argument.byref = &slot.temporary.parray;
    return S_OK;
}

HRESULT ArgumentFrame::Omit(const Parameter& parameter, Slot& slot) {
    if (!parameter.optional) return DISP_E_PARAMNOTOPTIONAL;
    if (parameter.type == VT_VARIANT) {
        slot.temporary.vt = VT_ERROR;
        slot.temporary.scode = DISP_E_PARAMNOTFOUND;
        slot.argument = slot.temporary;
    } else if (parameter.omitted) {
        const HRESULT result = VariantCopy(&slot.temporary, const_cast<VARIANT*>(&parameter.omitted->get()));
        if (FAILED(result)) return result;
        slot.argument = slot.temporary;
    } else {
        // No text, no object, 0; what the method puts there is freed with the frame.
        slot.temporary.vt = parameter.type;
    }
    if (parameter.byReference) {
        slot.argument.byref =
            parameter.type == VT_VARIANT ? static_cast<void*>(&slot.temporary) : ValueAddress(slot.temporary);
    }
    return S_OK;
}

HRESULT ArgumentFrame::SetVariant(const Parameter& parameter, VARIANT& given, Slot& slot) {
    auto& content = const_cast<VARIANT&>(Dereference(given));
    if (!parameter.byReference) {
        slot.argument = ShallowValue(content);
        return S_OK;
    }
    if (&content != &given && !IsReference(content)) {
        slot.argument.byref = &content;  // the caller's own variable
        return S_OK;
    }
    const HRESULT result = VariantCopyInd(&slot.temporary, &content);
    if (FAILED(result)) return result;
    slot.argument.byref = &slot.temporary;
    if (IsReference(content)) {
        slot.caller = &content;
        slot.handBack = Return::Typed;
    }
    return S_OK;
}

HRESULT ArgumentFrame::SetArray(VARIANT& given, Slot& slot) {
    auto& content = const_cast<VARIANT&>(Dereference(given));
    SAFEARRAY* array = ArrayOf(content);
    if (array && (content.vt & VT_TYPEMASK) == VT_VARIANT) {
        if (IsReference(content)) {
            slot.argument.byref = content.pparray;
        } else if (&content != &given) {
            slot.argument.byref = &content.parray;
        } else {
            // By value: the method may change elements but must not take the array away from its owner.
            const HRESULT result = SafeArrayLock(array);
            if (FAILED(result)) return result;
            slot.locked = array;
            slot.argument.parray = array;
            slot.original = array;
            slot.argument.byref = &slot.original;
        }
        return S_OK;
    }
    std::vector<Variant> elements;
    if (!ReadList(content, elements)) return DISP_E_TYPEMISMATCH;
    slot.temporary.parray = NewVariantArray(elements);
    slot.temporary.vt = VT_ARRAY | VT_VARIANT;
    slot.argument.byref = &slot.temporary.parray;
    return S_OK;
}

HRESULT ArgumentFrame::SetObject(const Parameter& parameter, VARIANT& given, Slot& slot) {
    auto& content = const_cast<VARIANT&>(Dereference(given));
    if (!HoldsNoObject(content)) return DISP_E_TYPEMISMATCH;
    if (IUnknown* object = ObjectIn(content)) {
        if (IsEqualIID(parameter.interfaceId, IID_NULL)) return DISP_E_TYPEMISMATCH;
        void* wanted = nullptr;
        const HRESULT result = object->QueryInterface(parameter.interfaceId, &wanted);
        if (FAILED(result) || !wanted) return DISP_E_TYPEMISMATCH;
        slot.temporary.vt = VT_UNKNOWN;
        slot.temporary.punkVal = static_cast<IUnknown*>(wanted);
    } else {
        slot.temporary.vt = VT_UNKNOWN;
    }
    slot.original = slot.temporary.punkVal;
    if (!parameter.byReference) {
        slot.argument.punkVal = slot.temporary.punkVal;
        return S_OK;
    }
    slot.argument.byref = &slot.temporary.punkVal;
    if (&content != &given || IsReference(content)) {
        slot.caller = &content;
        slot.handBack = IsReference(content) ? Return::Typed : Return::Variable;
    }
    return S_OK;
}

HRESULT ArgumentFrame::SetScalar(const Parameter& parameter, VARIANT& given, Slot& slot) {
    auto& content = const_cast<VARIANT&>(Dereference(given));
    if (!parameter.byReference) {
        const VARIANT value = ShallowValue(content);
        if (value.vt == parameter.type || ConvertQuickly(parameter.type, value, slot.argument)) {
            if (value.vt == parameter.type) slot.argument = value;
            return S_OK;
        }
        const HRESULT result = ConvertTo(parameter.type, value, slot.temporary);
        slot.argument = slot.temporary;
        return result;
    }
    if (content.vt == (VT_BYREF | parameter.type) && content.byref) {
        slot.argument.byref = content.byref;
        return S_OK;
    }
    const HRESULT result = ConvertTo(parameter.type, content, slot.temporary);
    if (FAILED(result)) return result;
    slot.argument.byref = ValueAddress(slot.temporary);
    if (&content != &given || IsReference(content)) {
        slot.caller = &content;
        slot.handBack = IsReference(content) ? Return::Typed : Return::Variable;
    }
    return S_OK;
}

HRESULT ArgumentFrame::ConvertTo(VARTYPE type, const VARIANT& value, VARIANT& target) const {
    return VariantChangeTypeEx(&target, const_cast<VARIANT*>(&value), locale_, VARIANT_ALPHABOOL, type);
}

HRESULT ArgumentFrame::Call(void* object) {
    VARTYPE types[kMaxParameters + 1];
    VARIANTARG* arguments[kMaxParameters + 1];
    for (std::size_t index = 0; index < count_; ++index) {
        const Parameter& parameter = member_.parameters[index];
        types[index] = static_cast<VARTYPE>(parameter.type | (parameter.byReference ? VT_BYREF : 0));
        arguments[index] = &slots_[index].argument;
    }
    auto total = static_cast<UINT>(count_);
    VARIANT resultArgument;
    if (member_.result) {
        resultArgument.byref = member_.result->type == VT_VARIANT ? static_cast<void*>(&resultValue_)
                                                                  : ValueAddress(resultValue_);
        types[total] = VT_BYREF | VT_VARIANT;  // any pointer
        arguments[total] = &resultArgument;
        ++total;
    }
    VARIANT answer;
    VariantInit(&answer);
    // VT_ERROR stands for HRESULT: not every implementation takes VT_HRESULT here.
    const HRESULT called =
        DispCallFunc(object, member_.offset, CC_STDCALL, VT_ERROR, total, types, arguments, &answer);
    return FAILED(called) ? called : answer.scode;
}

bool ArgumentFrame::IsUnchanged(const Parameter& parameter, const Slot& slot) const {
    if (parameter.type == VT_DISPATCH || parameter.type == VT_UNKNOWN) {
        return slot.temporary.punkVal == slot.original;
    }
    Variant before;
    if (FAILED(VariantChangeTypeEx(before.address(), slot.caller, locale_, VARIANT_ALPHABOOL,
                                   slot.temporary.vt))) {
        return false;
    }
    if (slot.temporary.vt == VT_BSTR) return View(before->bstrVal) == View(slot.temporary.bstrVal);
    return std::memcmp(&before->llVal, &slot.temporary.llVal, SizeOf(slot.temporary.vt)) == 0;
}

HRESULT ArgumentFrame::HandBack(const Parameter& parameter, Slot& slot) {
    if (parameter.type == VT_DISPATCH && slot.temporary.vt == VT_UNKNOWN) {
        // Scripts know objects by IDispatch only.
        IDispatch* object = nullptr;
        if (slot.temporary.punkVal)
            slot.temporary.punkVal->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&object));
        VariantClear(&slot.temporary);
        slot.temporary.vt = VT_DISPATCH;
        slot.temporary.pdispVal = object;
    }
    if (slot.handBack == Return::Variable) {
        const HRESULT result = VariantClear(slot.caller);
        if (FAILED(result)) return result;
        *slot.caller = slot.temporary;
        VariantInit(&slot.temporary);
        return S_OK;
    }
    // A typed reference: the value takes the caller's type.
    const auto type = static_cast<VARTYPE>(slot.caller->vt & ~VT_BYREF);
    Variant value;
    const HRESULT result = ConvertTo(type, slot.temporary, *value.address());
    if (FAILED(result)) return result;
    VARIANT old = ShallowValue(*slot.caller);
    const VARIANT taken = value.detach();
    if (type == VT_DECIMAL) {
        *slot.caller->pdecVal = taken.decVal;
        return S_OK;
    }
    std::memcpy(slot.caller->byref, &taken.llVal, SizeOf(type));
    const bool owns = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN || (type & VT_ARRAY) != 0;
    if (owns) VariantClear(&old);
    return S_OK;
}

HRESULT ArgumentFrame::WriteBack() {
    for (std::size_t index = 0; index < count_; ++index) {
        Slot& slot = slots_[index];
        if (slot.handBack == Return::None) continue;
        const Parameter& parameter = member_.parameters[index];
        if (IsUnchanged(parameter, slot)) continue;
        const HRESULT result = HandBack(parameter, slot);
        if (FAILED(result)) return result;
    }
    return S_OK;
}

HRESULT ArgumentFrame::TakeResult(VARIANT* result) {
    VARIANT value;
    VariantInit(&value);
    if (member_.result) {
        const VARTYPE type = member_.result->type;
        value = resultValue_;
        if (type != VT_VARIANT) value.vt = type;
        std::memset(&resultValue_, 0, sizeof(resultValue_));
        if (type == VT_DISPATCH || type == VT_UNKNOWN) {
            IUnknown* object = value.punkVal;
            value.vt = VT_DISPATCH;
            value.pdispVal = nullptr;
            if (object) {
                IDispatch* dispatch = nullptr;
                if (SUCCEEDED(object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)))) {
                    value.pdispVal = dispatch;
                    object->Release();
                } else {
                    value.vt = VT_UNKNOWN;  // an enumerator
                    value.punkVal = object;
                }
            }
        }
    }
    if (!result) return VariantClear(&value);
    *result = value;
    return S_OK;
}

}  // namespace zu::com
