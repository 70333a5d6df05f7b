#pragma once

#include <windows.h>

#include <oleauto.h>

#include <span>

#include "com/InterfaceTable.h"

namespace zu::com {

/// The arguments of one call of a vtable method: made from what the caller passed, handed to the method, and
/// afterwards taken apart again.
///
/// Everything lives in the frame, on the stack; the usual call allocates nothing.
class ArgumentFrame {
public:
    /// Parameters that one method can have.
    static constexpr std::size_t kMaxParameters = 24;

    ArgumentFrame(const Member& member, LCID locale) noexcept;
    ~ArgumentFrame();
    ArgumentFrame(const ArgumentFrame&) = delete;
    ArgumentFrame& operator=(const ArgumentFrame&) = delete;

    /// Sets the next parameter from the caller's argument, null when it was left out. Answers
    /// DISP_E_PARAMNOTOPTIONAL, DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW for an argument that does not do.
    HRESULT Add(VARIANT* given);
    /// Sets the next parameter, an array, to these values.
    HRESULT AddTrailing(std::span<VARIANT* const> given);

    /// Calls the method of the object's interface pointer.
    HRESULT Call(void* object);

    /// After a successful call: hands changed by-reference values back to the caller's variables.
    HRESULT WriteBack();
    /// After a successful call: the value of the method; Empty when it has none. `result` may be null.
    HRESULT TakeResult(VARIANT* result);

private:
    /// How a changed value gets back to the caller.
    enum class Return : unsigned char {
        None,
        Variable,  // replaces the content of the VARIANT `caller`
        Typed      // is converted to the type that the reference in `caller` has
    };

    struct Slot {
        VARIANT argument;   // what the call reads; owns nothing
        VARIANT temporary;  // owned
        VARIANT* caller;
        void* original;     // the object that was passed in, for telling whether it was replaced
        SAFEARRAY* locked;  // the caller's own array, kept from being destroyed or resized
        Return handBack;
    };

    HRESULT Omit(const Parameter& parameter, Slot& slot);
    HRESULT SetVariant(const Parameter& parameter, VARIANT& given, Slot& slot);
    HRESULT SetArray(VARIANT& given, Slot& slot);
    HRESULT SetObject(const Parameter& parameter, VARIANT& given, Slot& slot);
    HRESULT SetScalar(const Parameter& parameter, VARIANT& given, Slot& slot);
    HRESULT ConvertTo(VARTYPE type, const VARIANT& value, VARIANT& target) const;
    bool IsUnchanged(const Parameter& parameter, const Slot& slot) const;
    HRESULT HandBack(const Parameter& parameter, Slot& slot);
    Slot& NextSlot() noexcept;

    const Member& member_;
    LCID locale_;
    std::size_t count_ = 0;
    Slot slots_[kMaxParameters];
    VARIANT resultValue_;  // storage for the result, whatever its type
};

}  // namespace zu::com
