#include "Target.h"

#include "com/EnumVariant.h"
#include "com/SafeArray.h"
#include "com/ScriptList.h"

namespace zu::com::test {
namespace {

const wchar_t* const kFriends[] = {L"Secret", L"AnotherSecret"};

std::wstring OrNull(BSTR text) {
    return text ? std::wstring(View(text)) : L"<null>";
}

/// "[lower..upper] element|element"
std::wstring Listed(SAFEARRAY* array) {
    LONG lower = 0;
    Check(SafeArrayGetLBound(array, 1, &lower));
    std::wstring text = L"[" + std::to_wstring(lower) + L".." + std::to_wstring(UpperBound(array)) + L"]";
    for (LONG index = lower; index <= UpperBound(array); ++index) {
        Variant element;
        Check(SafeArrayGetElement(array, &index, element.address()));
        text += (index == lower ? L" " : L"|") + Describe(element);
    }
    return text;
}

}  // namespace

std::wstring Describe(const VARIANT& value) {
    if (IsMissing(value)) return L"missing";
    if (value.vt == VT_EMPTY) return L"empty";
    if (value.vt == VT_NULL) return L"null";
    if (value.vt == VT_DISPATCH) return value.pdispVal ? L"object" : L"nothing";
    std::wstring type = std::to_wstring(value.vt);
    if ((value.vt & (VT_ARRAY | VT_BYREF)) != 0) return type;
    return type + L" " + Variant(value).ToText().str();
}

HRESULT Named::get_Name(BSTR* Result) {
    return GuardResult(Result, [&] { return NewBstr(name_); });
}
HRESULT Named::get_Content(VARIANT Index, VARIANT* Result) {
    return Guard([&] {
        const std::wstring index = IsMissing(Index) ? L"" : Variant(Index).ToText().str();
        *Result = (index == index_ ? content_ : Variant(L"content " + index)).detach();
    });
}
HRESULT Named::put_Content(VARIANT Index, VARIANT Value) {
    return Guard([&] {
        index_ = IsMissing(Index) ? L"" : Variant(Index).ToText().str();
        content_ = Variant(Value);
    });
}

DispatchOptions Target::dispatchOptions() noexcept {
    return {kFriends, {}};
}

HRESULT Target::Echo(VARIANT Value, VARIANT* Result) {
    return Guard([&] { *Result = Variant(Value).detach(); });
}
HRESULT Target::Add(LONG Left, LONG Right, LONG* Result) {
    return GuardResult(Result, [&] { return Left + Right; });
}
HRESULT Target::Texts(BSTR First, BSTR Second, BSTR* Result) {
    return GuardResult(Result, [&] { return NewBstr(OrNull(First) + L"|" + OrNull(Second)); });
}
HRESULT Target::Flag(VARIANT_BOOL Value, VARIANT_BOOL* Result) {
    return GuardResult(Result, [&] { return Value; });
}
HRESULT Target::Describe(VARIANT* Value, BSTR* Result) {
    return GuardResult(Result, [&] { return NewBstr(Value ? test::Describe(*Value) : L"null pointer"); });
}
HRESULT Target::SetVariant(VARIANT* Value) {
    return Guard([&] {
        Check(VariantClear(Value));
        *Value = Variant(LONG{42}).detach();
    });
}
HRESULT Target::ChangeText(BSTR* Text, BSTR* Result) {
    return GuardResult(Result, [&] {
        Bstr before(OrNull(*Text));
        const std::wstring after = std::wstring(View(*Text)) + L"!";
        SysFreeString(*Text);
        *Text = NewBstr(after);
        return before.detach();
    });
}
HRESULT Target::ChangeLong(LONG* Number, LONG* Result) {
    return GuardResult(Result, [&] { return (*Number)++; });
}
HRESULT Target::KeepLong(LONG* Number, LONG* Result) {
    return GuardResult(Result, [&] { return *Number; });
}
HRESULT Target::Join(SAFEARRAY** Values, BSTR* Result) {
    return GuardResult(Result, [&] { return NewBstr(Listed(*Values)); });
}
HRESULT Target::JoinAfter(VARIANT Head, VARIANT* Key, SAFEARRAY** Values, BSTR* Result) {
    return GuardResult(Result, [&] {
        return NewBstr(test::Describe(Head) + L" / " + test::Describe(*Key) + L" / " + Listed(*Values));
    });
}
HRESULT Target::FillFirst(SAFEARRAY** Values) {
    return Guard([&] {
        LONG first = 0;
        Check(SafeArrayGetLBound(*Values, 1, &first));
        Variant text(L"changed");
        Check(SafeArrayPutElement(*Values, &first, text.address()));
    });
}
HRESULT Target::DropArray(SAFEARRAY** Values) {
    return Guard([&] {
        Check(SafeArrayDestroy(*Values));
        *Values = nullptr;
    });
}
HRESULT Target::NameOf(INamed* Object, BSTR* Result) {
    if (!Object) return GuardResult(Result, [] { return NewBstr(L"<none>"); });
    return Object->get_Name(Result);
}
HRESULT Target::SwapObject(INamed** Object, BSTR* Result) {
    return GuardResult(Result, [&] {
        Bstr before(L"<none>");
        if (*Object) {
            Check((*Object)->get_Name(before.put()));
            (*Object)->Release();
        }
        *Object = MakeObject<Named>(L"other").detach();
        return before.detach();
    });
}
HRESULT Target::Mix(Colour Value, Colour* Result) {
    *Result = static_cast<Colour>(Value + 1);
    return S_OK;
}
HRESULT Target::Fail(LONG Code, BSTR Text) {
    return Guard([&] { throw ComError(Code, std::wstring(View(Text))); });
}
HRESULT Target::Mixed(LONG A, double B, VARIANT C, BSTR D, double E, VARIANT_BOOL F, CURRENCY G, DATE H,
                      BSTR* Result) {
    return GuardResult(Result, [&] {
        return NewBstr(std::to_wstring(A) + L" " + std::to_wstring(B) + L" " + test::Describe(C) + L" " +
                       OrNull(D) + L" " + std::to_wstring(E) + L" " + std::to_wstring(F) + L" " +
                       std::to_wstring(G.int64) + L" " + std::to_wstring(H));
    });
}
HRESULT Target::get_Cell(LONG Index, VARIANT* Result) {
    return Guard([&] { *Result = Variant(cells_.at(static_cast<std::size_t>(Index))).detach(); });
}
HRESULT Target::put_Cell(LONG Index, VARIANT Value) {
    return Guard([&] { cells_.at(static_cast<std::size_t>(Index)) = Variant(Value); });
}
HRESULT Target::get_Holder(IDispatch** Result) {
    return GuardResult(Result, [&] { return holder_.copy(); });
}
HRESULT Target::putref_Holder(IDispatch* Value) {
    holder_ = Share(Value);
    return S_OK;
}
HRESULT Target::get_Child(INamed** Result) {
    return GuardResult(Result, [&] { return child_.copy(); });
}
HRESULT Target::get_Nothing(IDispatch** Result) {
    return GuardResult(Result, [] { return static_cast<IDispatch*>(nullptr); });
}
HRESULT Target::Hidden() {
    return S_OK;
}
HRESULT Target::get_Item(VARIANT Index, INamed** Result) {
    return GuardResult(Result, [&]() -> INamed* {
        if (TextOf(Index) != L"child") throw ComError(DISP_E_BADINDEX, L"No such item");
        return child_.copy();
    });
}
HRESULT Target::get__NewEnum(IUnknown** Result) {
    return GuardResult(Result, [] {
        return EnumVariant::Make([](ULONG position) -> std::optional<Variant> {
                   if (position >= 3) return std::nullopt;
                   return Variant(static_cast<LONG>(position * 10));
               })
            .detach();
    });
}
HRESULT Target::Defaults(VARIANT Exact, VARIANT Width, BSTR* Result) {
    return GuardResult(Result, [&] { return NewBstr(test::Describe(Exact) + L" " + test::Describe(Width)); });
}
HRESULT Target::Order(BSTR First, BSTR Second, BSTR Third, BSTR* Result) {
    return GuardResult(Result,
                       [&] { return NewBstr(OrNull(First) + L"|" + OrNull(Second) + L"|" + OrNull(Third)); });
}
HRESULT Target::Nop() {
    return S_OK;
}
HRESULT Target::Extra(LONG* Result) {
    return GuardResult(Result, [] { return LONG{99}; });
}
HRESULT Target::Nop(LONG* Result) {
    return GuardResult(Result, [] { return LONG{1}; });
}

}  // namespace zu::com::test
