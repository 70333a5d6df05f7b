#include "host/engine/Messages.h"

#include <array>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SafeArray.h"
#include "com/Variant.h"
#include "host/engine/Log.h"

namespace zu::host {
namespace {

std::wstring InsertionText(const VARIANT& argument) {
    const VARIANT& content = com::Dereference(argument);
    if (content.vt == VT_EMPTY || content.vt == VT_NULL || com::IsMissing(content)) return {};
    try {
        return com::Convert(content, VT_BSTR).ToText().str();
    } catch (const com::ComError&) {
        return L"?";
    }
}

}  // namespace

void Messages::Forget() noexcept {
    // The texts keep their memory: the functions of a loop begin with this.
    for (LastError* const error : {&last_, &lasting_}) {
        error->code = 0;
        error->text.clear();
    }
    told_ = false;
}

void Messages::ForgetTolerated() noexcept {
    if (lasting_.code != 0 || last_.code != 0) Remember(last_, lasting_.code, lasting_.text);
}

bool Messages::HasTold(LONG code, std::wstring_view text) const noexcept {
    return told_ && lasting_.code == code && text.ends_with(lasting_.text);
}

void Messages::Remember(LastError& error, LONG code, std::wstring_view text) noexcept {
    try {
        error.code = code;
        error.text = text;
    } catch (...) {
        error.text.clear();
    }
}

void Messages::Trace(std::wstring_view text) noexcept {
    Log::Instance().Write(LogLevel::Debug, text);
    if (tracing_) Tell(L"Trace", nullptr, text);
}

void Messages::Warn(std::wstring_view text) noexcept {
    Log::Instance().Write(LogLevel::Warning, text);
    if (tracing_) Tell(L"Trace", nullptr, text);
}

void Messages::Report(LONG code, std::wstring_view text) noexcept {
    Remember(last_, code, text);
    Remember(lasting_, code, text);
    told_ = true;
    Log::Instance().Write(LogLevel::Error, text);
    Tell(L"Report", &code, text);
}

void Messages::Note(LONG code, std::wstring_view text) noexcept {
    Remember(last_, code, text);
    Log::Instance().Write(LogLevel::Debug, text);
}

void Messages::Keep(LONG code, std::wstring_view text) noexcept {
    Remember(last_, code, text);
    Remember(lasting_, code, text);
    told_ = false;
    Log::Instance().Write(LogLevel::Debug, text);
}

void Messages::SetListener(IDispatch* listener) noexcept {
    com::ComPtr<IDispatch> old = com::Share(listener);
    old.swap(listener_);
}

void Messages::Tell(const wchar_t* method, const LONG* code, std::wstring_view text) noexcept {
    try {
        const com::Variant textArgument(text);
        std::array<VARIANTARG, 2> arguments = {textArgument.get(), VARIANTARG{}};
        if (code) {
            arguments[1].vt = VT_I4;
            arguments[1].lVal = *code;
        }
        Ask(method, std::span(arguments).first(code ? 2 : 1));
    } catch (...) {  // NOLINT(bugprone-empty-catch): telling somebody must not make a failure worse
    }
}

bool Messages::Progress(std::wstring_view job, std::uint64_t done, std::uint64_t total) noexcept {
    try {
        const com::Variant name(job);
        const com::Variant doneArgument(static_cast<double>(done));
        const com::Variant totalArgument(static_cast<double>(total));
        std::array<VARIANTARG, 3> arguments = {totalArgument.get(), doneArgument.get(), name.get()};
        const com::Variant answer = Ask(L"Progress", arguments);
        return answer.type() != VT_BOOL || answer->boolVal != VARIANT_FALSE;
    } catch (...) {
        return true;
    }
}

void Messages::EndProgress() noexcept {
    Ask(L"ProgressEnd", {});
}

com::Variant Messages::Ask(const wchar_t* method, std::span<VARIANTARG> arguments) noexcept {
    com::Variant answer;
    if (!listener_ || telling_) return answer;
    telling_ = true;
    try {
        const com::ComPtr<IDispatch> listener = listener_;
        std::wstring name = method;
        LPOLESTR names = name.data();
        DISPID id = DISPID_UNKNOWN;
        if (SUCCEEDED(listener->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_INVARIANT, &id))) {
            DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
            listener->Invoke(id, IID_NULL, LOCALE_INVARIANT, DISPATCH_METHOD, &parameters, answer.put(),
                             nullptr, nullptr);
        }
    } catch (...) {  // NOLINT(bugprone-empty-catch): telling somebody must not make a failure worse
    }
    telling_ = false;
    return answer;
}

std::vector<std::wstring> InsertionsOf(SAFEARRAY* arguments) {
    std::vector<std::wstring> texts;
    for (const com::Variant& argument : com::ReadArguments(arguments))
        texts.push_back(InsertionText(argument));
    return texts;
}

}  // namespace zu::host
