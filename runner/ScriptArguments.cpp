#include "runner/ScriptArguments.h"

#include <utility>

#include "com/ComError.h"
#include "com/SameText.h"

namespace zu::runner {
namespace {

using Texts = std::vector<std::wstring>;

struct NamedArgument {
    std::wstring name;
    com::Variant value;  // Empty when only the name is given
};

com::Variant Number(std::size_t value) {
    return com::Variant(static_cast<LONG>(value));
}

com::Variant Object(const com::ComPtr<NamedMembers>& object) {
    return com::Variant(static_cast<IDispatch*>(object.get()));
}

bool IsNamed(const std::wstring& argument) {
    return argument.size() > 1 && argument[0] == L'/';
}

NamedArgument Parse(const std::wstring& argument) {
    const std::size_t colon = argument.find(L':');
    if (colon != std::wstring::npos) {
        return {argument.substr(1, colon - 1), com::Variant(std::wstring_view(argument).substr(colon + 1))};
    }
    const wchar_t last = argument.back();
    if (last == L'+' || last == L'-')
        return {argument.substr(1, argument.size() - 2), com::Variant(last == L'+')};
    return {argument.substr(1), com::Variant()};
}

std::vector<com::Variant> AsVariants(const Texts& texts) {
    std::vector<com::Variant> result;
    result.reserve(texts.size());
    for (const std::wstring& text : texts)
        result.emplace_back(std::wstring_view(text));
    return result;
}

void AddCounts(NamedMembers& members, std::size_t count) {
    for (const wchar_t* name : {L"Count", L"length"}) {
        members.AddProperty(name, [count] { return Number(count); });
    }
}

void AddList(NamedMembers& members, const Texts& texts) {
    members.AddMethod(L"Item", [texts](const CallArguments& call) {
        call.RequireCount(1, 1);
        const LONG index = call.Long(0);
        if (index < 0 || static_cast<std::size_t>(index) >= texts.size()) {
            throw com::ComError(com::kSubscriptOutOfRange, L"there is no argument " + std::to_wstring(index) +
                                                               L": " + std::to_wstring(texts.size()) +
                                                               L" were given");
        }
        return com::Variant(std::wstring_view(texts[static_cast<std::size_t>(index)]));
    });
    members.MakeDefault(L"Item");
    AddCounts(members, texts.size());
    members.SetElements([texts] { return AsVariants(texts); });
}

const NamedArgument* Find(const std::vector<NamedArgument>& arguments, const std::wstring& name) {
    for (const NamedArgument& argument : arguments) {
        if (com::SameText(argument.name, name)) return &argument;
    }
    return nullptr;
}

com::ComPtr<NamedMembers> MakeNamed(const std::vector<NamedArgument>& arguments) {
    auto object = MakeUnknown<NamedMembers>();
    object->AddMethod(L"Item", [arguments](const CallArguments& call) {
        call.RequireCount(1, 1);
        const NamedArgument* found = Find(arguments, call.Text(0));
        return found ? found->value : com::Variant();
    });
    object->MakeDefault(L"Item");
    object->AddMethod(L"Exists", [arguments](const CallArguments& call) {
        call.RequireCount(1, 1);
        return com::Variant(Find(arguments, call.Text(0)) != nullptr);
    });
    AddCounts(*object, arguments.size());
    object->SetElements([arguments] {
        Texts names;
        for (const NamedArgument& argument : arguments)
            names.push_back(argument.name);
        return AsVariants(names);
    });
    return object;
}

com::ComPtr<NamedMembers> MakeUnnamed(const Texts& texts) {
    auto object = MakeUnknown<NamedMembers>();
    AddList(*object, texts);
    return object;
}

}  // namespace

ScriptArguments::ScriptArguments(const std::vector<std::wstring>& arguments) {
    AddList(*this, arguments);
    std::vector<NamedArgument> named;
    Texts unnamed;
    for (const std::wstring& argument : arguments) {
        if (IsNamed(argument)) {
            named.push_back(Parse(argument));
        } else {
            unnamed.push_back(argument);
        }
    }
    AddProperty(L"Named", [object = MakeNamed(named)] { return Object(object); });
    AddProperty(L"Unnamed", [object = MakeUnnamed(unnamed)] { return Object(object); });
}

}  // namespace zu::runner
