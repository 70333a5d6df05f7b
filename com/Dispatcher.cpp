#include "com/Dispatcher.h"

#include <algorithm>
#include <array>

#include "com/ArgumentFrame.h"
#include "com/ComError.h"
#include "com/ScriptList.h"

namespace zu::com {
namespace {

/// Internal operations get dispatch ids of their own, out of the way of every published one.
constexpr DISPID kFirstFriend = 0x6FFF0000;

constexpr WORD kGetFlags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
constexpr WORD kPutFlags = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

bool IsPut(INVOKEKIND kind) noexcept {
    return kind == INVOKE_PROPERTYPUT || kind == INVOKE_PROPERTYPUTREF;
}

/// The arguments in the order of the parameters; null where one was left out.
struct Arguments {
    std::array<VARIANT*, ArgumentFrame::kMaxParameters> given{};
    std::size_t count = 0;       // parameters that `given` covers
    std::vector<VARIANT*> rest;  // what trails beyond them, for an array that takes it
};

UINT IndexOf(const DISPPARAMS& parameters, const VARIANT* argument) noexcept {
    return argument ? static_cast<UINT>(argument - parameters.rgvarg) : 0;
}

void FillException(HRESULT code, const ComPtr<IErrorInfo>& info, EXCEPINFO& exception) {
    exception = EXCEPINFO{};
    exception.scode = code;
    if (!info) return;
    info->GetDescription(&exception.bstrDescription);
    info->GetSource(&exception.bstrSource);
    info->GetHelpFile(&exception.bstrHelpFile);
    info->GetHelpContext(&exception.dwHelpContext);
}

HRESULT ReportFailure(HRESULT code, EXCEPINFO* exception) {
    ComPtr<IErrorInfo> info;
    GetErrorInfo(0, info.put());
    if (exception) FillException(code, info, *exception);
    return DISP_E_EXCEPTION;
}

HRESULT ReportFriendCall(EXCEPINFO* exception) {
    if (exception) {
        *exception = EXCEPINFO{};
        exception->scode = kInvalidFriendCall;
        exception->bstrDescription = SysAllocString(L"This operation is internal to the component");
    }
    return DISP_E_EXCEPTION;
}

/// Sorts positional and named arguments onto the parameters.
HRESULT Arrange(const Member& member, const DISPPARAMS& parameters, UINT* badArgument, Arguments& arguments) {
    const bool put = IsPut(member.kind);
    const bool valueNamed =
        put && parameters.cNamedArgs == 1 && parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    const UINT named = valueNamed ? 0 : parameters.cNamedArgs;
    const std::size_t positional = parameters.cArgs - named;
    const std::size_t room = member.parameters.size();

    if (put && positional > 0) {
        // The assigned value comes first in the array and is the last parameter; indexes lie between.
        if (positional > room) return DISP_E_BADPARAMCOUNT;
        for (std::size_t index = 0; index + 1 < positional; ++index) {
            arguments.given[index] = &parameters.rgvarg[parameters.cArgs - 1 - index];
        }
        arguments.given[room - 1] = &parameters.rgvarg[0];
        arguments.count = room;
        return S_OK;
    }

    for (std::size_t index = 0; index < positional; ++index) {
        VARIANT* argument = &parameters.rgvarg[parameters.cArgs - 1 - index];
        if (index < room) {
            arguments.given[index] = argument;
        } else if (member.gathersTrailing()) {
            arguments.rest.push_back(argument);
        } else {
            return DISP_E_BADPARAMCOUNT;
        }
    }
    arguments.count = std::min(positional, room);
    for (UINT index = 0; index < named; ++index) {
        const DISPID id = parameters.rgdispidNamedArgs[index];
        const bool known = id >= 0 && static_cast<std::size_t>(id) < room;
        if (!known || arguments.given[static_cast<std::size_t>(id)]) {
            if (badArgument) *badArgument = index;
            return known ? DISP_E_BADPARAMCOUNT : DISP_E_PARAMNOTFOUND;
        }
        arguments.given[static_cast<std::size_t>(id)] = &parameters.rgvarg[index];
    }
    if (named == 0 && positional < member.required()) {
        // Required parameters may stand behind optional ones; count only up to the last that is required.
        for (std::size_t index = positional; index < room; ++index) {
            if (!member.parameters[index].optional) return DISP_E_BADPARAMCOUNT;
        }
    }
    return S_OK;
}

HRESULT Load(const Member& member, const DISPPARAMS& parameters, const Arguments& arguments,
             UINT* badArgument, ArgumentFrame& frame) {
    for (std::size_t index = 0; index < member.parameters.size(); ++index) {
        VARIANT* given = arguments.given[index];
        HRESULT result = S_OK;
        const bool last = index + 1 == member.parameters.size();
        if (last && given && member.gathersTrailing() && !IsMissing(*given) &&
            (!arguments.rest.empty() || !IsList(*given))) {
            std::vector<VARIANT*> values{given};
            values.insert(values.end(), arguments.rest.begin(), arguments.rest.end());
            result = frame.AddTrailing(values);
        } else {
            result = frame.Add(given);
        }
        if (FAILED(result)) {
            if (badArgument) *badArgument = IndexOf(parameters, given);
            return result;
        }
    }
    return S_OK;
}

HRESULT CallMember(const Member& member, void* object, LCID locale, DISPPARAMS& parameters, VARIANT* result,
                   EXCEPINFO* exception, UINT* badArgument) {
    Arguments arguments;
    HRESULT code = Arrange(member, parameters, badArgument, arguments);
    if (FAILED(code)) return code;
    ArgumentFrame frame(member, locale);
    code = Load(member, parameters, arguments, badArgument, frame);
    if (FAILED(code)) return code;
    SetErrorInfo(0, nullptr);  // what an earlier call left must not describe a failure of this one
    code = frame.Call(object);
    if (FAILED(code)) return ReportFailure(code, exception);
    code = frame.WriteBack();
    return FAILED(code) ? code : frame.TakeResult(result);
}

/// Calls a member that answers an object, with the given arguments.
HRESULT CallForObject(const Member& member, void* object, LCID locale, DISPPARAMS parameters,
                      EXCEPINFO* exception, UINT* badArgument, ComPtr<IDispatch>& answer) {
    Variant value;
    const HRESULT code = CallMember(member, object, locale, parameters, value.put(), exception, badArgument);
    if (FAILED(code)) return code;
    answer = ObjectOf<IDispatch>(value);
    return answer ? S_OK : DISP_E_MEMBERNOTFOUND;
}

}  // namespace

Dispatcher::Dispatcher(std::span<const IID> interfaces, const DispatchOptions& options) {
    interfaces_.reserve(interfaces.size());
    for (const IID& id : interfaces)
        interfaces_.emplace_back(id, options.foreign);
    for (const InterfaceTable& table : interfaces_) {
        for (const Member& member : table.members()) {
            if (member.parameters.size() > ArgumentFrame::kMaxParameters) {
                throw ComError(E_UNEXPECTED, member.name + L" has more parameters than a call can hold");
            }
            if (!member.restricted) names_.push_back({Fold(member.name), member.id});
        }
    }
    friends_ = options.friends.size();
    for (std::size_t index = 0; index < friends_; ++index) {
        names_.push_back({Fold(options.friends[index]), kFirstFriend + static_cast<DISPID>(index)});
    }
    // Of equal names the one of the first interface stays.
    std::stable_sort(names_.begin(), names_.end(),
                     [](const Name& left, const Name& right) { return left.folded < right.folded; });
    names_.erase(std::unique(names_.begin(), names_.end(),
                             [](const Name& left, const Name& right) { return left.folded == right.folded; }),
                 names_.end());
}

HRESULT Dispatcher::GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const std::wstring_view wanted = names[0];
    const auto found = std::lower_bound(
        names_.begin(), names_.end(), wanted,
        [](const Name& name, std::wstring_view text) { return ComesBefore(name.folded, text); });
    if (found == names_.end() || !SameName(found->folded, wanted)) return DISP_E_UNKNOWNNAME;
    ids[0] = found->id;
    // Further names are parameters; their ids are their positions.
    const Member* member = FindMember(ids[0]);
    HRESULT result = S_OK;
    for (UINT index = 1; index < count; ++index) {
        std::size_t position = 0;
        const std::size_t room = member ? member->parameters.size() : 0;
        while (position < room && !SameName(member->parameters[position].name, names[index]))
            ++position;
        if (position < room) {
            ids[index] = static_cast<DISPID>(position);
        } else {
            result = DISP_E_UNKNOWNNAME;
        }
    }
    return result;
}

const Member* Dispatcher::FindMember(DISPID id) const noexcept {
    for (const InterfaceTable& table : interfaces_) {
        const auto members = table.Find(id);
        if (!members.empty()) return &members.front();
    }
    return nullptr;
}

bool Dispatcher::IsFriend(DISPID id) const noexcept {
    return id >= kFirstFriend && static_cast<std::size_t>(id - kFirstFriend) < friends_;
}

Dispatcher::Found Dispatcher::Find(std::span<void* const> pointers, DISPID id, WORD flags) const noexcept {
    for (std::size_t index = 0; index < interfaces_.size(); ++index) {
        const Member* alternative = nullptr;
        for (const Member& member : interfaces_[index].Find(id)) {
            const bool exact = (flags & member.kind) != 0;
            const bool likewise = IsPut(member.kind) ? (flags & kPutFlags) != 0 : (flags & kGetFlags) != 0;
            if (exact) return {&member, pointers[index]};
            if (likewise) alternative = &member;
        }
        if (alternative) return {alternative, pointers[index]};
    }
    return {};
}

HRESULT Dispatcher::InvokeChecked(std::span<void* const> pointers, DISPID id, LCID locale, WORD flags,
                                  DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                                  UINT* badArgument) const {
    if (IsFriend(id)) return ReportFriendCall(exception);

    const bool put = (flags & kPutFlags) != 0 && (flags & kGetFlags) == 0;
    const Found found = Find(pointers, id, flags);
    if (!found.member && !put) return DISP_E_MEMBERNOTFOUND;

    if (!found.member) {
        // An assignment to `view("NAME")` or `view.Fields("NAME")` means the default member of the field.
        if ((flags & DISPATCH_PROPERTYPUT) == 0) return DISP_E_MEMBERNOTFOUND;
        const Found getter = Find(pointers, id, DISPATCH_PROPERTYGET);
        const bool object =
            getter.member && getter.member->result && getter.member->result->type == VT_DISPATCH;
        if (!object || parameters.cArgs == 0) return DISP_E_MEMBERNOTFOUND;
        ComPtr<IDispatch> target;
        DISPPARAMS index{};
        DISPPARAMS value = parameters;
        if (!getter.member->parameters.empty()) {
            index.rgvarg = parameters.rgvarg + 1;
            index.cArgs = parameters.cArgs - 1;
            value.cArgs = 1;
        }
        const HRESULT code =
            CallForObject(*getter.member, getter.object, locale, index, exception, badArgument, target);
        if (FAILED(code)) return code;
        return target->Invoke(DISPID_VALUE, IID_NULL, locale, flags, &value, nullptr, exception, badArgument);
    }

    const Member& member = *found.member;
    if (!put && member.parameters.empty() && parameters.cArgs > 0 && member.result &&
        member.result->type == VT_DISPATCH) {
        // `view.Fields("NAME")`: the arguments belong to the default member of what the property answers.
        ComPtr<IDispatch> target;
        const HRESULT code =
            CallForObject(member, found.object, locale, DISPPARAMS{}, exception, badArgument, target);
        if (FAILED(code)) return code;
        return target->Invoke(DISPID_VALUE, IID_NULL, locale, flags, &parameters, result, exception,
                              badArgument);
    }
    return CallMember(member, found.object, locale, parameters, result, exception, badArgument);
}

HRESULT Dispatcher::Invoke(std::span<void* const> pointers, DISPID id, LCID locale, WORD flags,
                           DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                           UINT* badArgument) const noexcept {
    if (result) VariantInit(result);
    if (!parameters || (parameters->cArgs > 0 && !parameters->rgvarg) ||
        (parameters->cNamedArgs > 0 && !parameters->rgdispidNamedArgs) ||
        parameters->cNamedArgs > parameters->cArgs) {
        return E_INVALIDARG;
    }
    try {
        return InvokeChecked(pointers, id, locale, flags, *parameters, result, exception, badArgument);
    } catch (const ComError& error) {
        if (error.code() == kTypeMismatch) return DISP_E_TYPEMISMATCH;
        if (error.code() == kOverflow) return DISP_E_OVERFLOW;
        return ReportFailure(TranslateCurrentException(), exception);
    } catch (...) {
        return ReportFailure(TranslateCurrentException(), exception);
    }
}

}  // namespace zu::com
