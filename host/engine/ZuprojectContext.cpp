// The context half of the engine object: items and routines.
#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/Variant.h"
#include "host/engine/EngineState.h"
#include "host/engine/Reporting.h"
#include "host/engine/TruthValue.h"
#include "host/engine/Zuproject.h"

namespace zu::host {
namespace {

ContextItems& Items() {
    return EngineState::Current().context;
}

com::Variant ItemValue(LONG item) {
    return Items().Get(ContextItems::HandleOf(item));
}

/// A routine that answers nothing means "go on".
bool GoesOn(const com::Variant& answer) {
    return answer.type() == VT_EMPTY || ToTruthValue(answer);
}

}  // namespace

HRESULT Zuproject::get_RoutineHolder(IDispatch** Result) noexcept {
    return GuardedResult(Result, [&] { return EngineState::Current().routines.holder().copy(); });
}

HRESULT Zuproject::putref_RoutineHolder(IDispatch* Value) noexcept {
    return Guarded([&] { EngineState::Current().routines.SetHolder(Value); });
}

HRESULT Zuproject::HasRoutine(BSTR Name, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(
        Result, [&] { return com::ToVariantBool(EngineState::Current().routines.Has(com::View(Name))); });
}

HRESULT Zuproject::ClearRoutines() noexcept {
    return Guarded([&] { EngineState::Current().routines.SetHolder(nullptr); });
}

HRESULT Zuproject::SetContextItem(LONG Handle, VARIANT Value) noexcept {
    return Guarded([&] { Items().Set(Handle, Value); });
}

HRESULT Zuproject::SaveContextItem(LONG Handle, VARIANT* Value) noexcept {
    return ContextItem(Handle, Value);
}

HRESULT Zuproject::get_CurrentView(IDispatch** Result) noexcept {
    return GuardedResult(Result,
                         [&] { return com::ObjectOf<IDispatch>(ItemValue(ContextItems::kView)).detach(); });
}

HRESULT Zuproject::get_CurrentRecord(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return ItemValue(ContextItems::kRecordNumber).ToLong(); });
}

HRESULT Zuproject::get_ContextItemCount(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return Items().count(); });
}

HRESULT Zuproject::ContextItemHandle(LONG Item, LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return ContextItems::HandleOf(Item); });
}

HRESULT Zuproject::HasContextItem(LONG Item, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(Items().Has(Item)); });
}

HRESULT Zuproject::ClearContextItem(LONG Handle) noexcept {
    return Guarded([&] { Items().Set(Handle, com::Variant()); });
}

HRESULT Zuproject::ContextItem(LONG Handle, VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return Items().Get(Handle).detach(); });
}

HRESULT Zuproject::ClearContextItems() noexcept {
    return Guarded([&] { Items().Clear(); });
}

HRESULT Zuproject::Routine(BSTR Name, IDispatch** Result) noexcept {
    return GuardedResult(
        Result, [&] { return EngineState::Current().routines.Find(com::View(Name)).detach(); },
        Audience::User);
}

HRESULT Zuproject::CallRoutine(IDispatch* Routine, BSTR Name, SAFEARRAY** Arguments,
                               VARIANT_BOOL* Result) noexcept {
    return GuardedResult(
        Result,
        [&] {
            SAFEARRAY* const arguments = Arguments ? *Arguments : nullptr;
            return com::ToVariantBool(
                GoesOn(EngineState::Current().routines.Call(Routine, com::View(Name), arguments)));
        },
        Audience::Caller);
}

}  // namespace zu::host
