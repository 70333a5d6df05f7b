#include "host/engine/ParserObject.h"

#include <olectl.h>

#include <array>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/ConnectionPointList.h"
#include "host/engine/ConditionFault.h"
#include "host/engine/ExpressionValue.h"
#include "host/engine/Reporting.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

/// Dispatch ids of the events.
constexpr DISPID kProvideValue = 1;
constexpr DISPID kSyntaxError = 2;

std::wstring Wide(std::string_view utf8) {
    return std::wstring(com::AsWide(text::ToUtf16(utf8)));
}

LONG PositionOf(const Error& fault) noexcept {
    return static_cast<LONG>(fault.position().value_or(0)) + 1;
}

/// Only what is wrong with the expression or its values is the expression's fault.
bool IsFault(const Error& error) noexcept {
    return error.kind() == ErrorKind::Syntax || error.kind() == ErrorKind::TypeMismatch;
}

/// Asks the clients of an expression object.
class ClientNames final : public expression::NameSource {
public:
    explicit ClientNames(com::ConnectionPoint& clients) : clients_(clients) {}

    bool Provide(std::string_view name, expression::Result& out) override {
        const com::Variant asked(Wide(name));
        com::Variant value;
        VARIANT reference;
        VariantInit(&reference);
        reference.vt = VT_BYREF | VT_VARIANT;
        reference.pvarVal = value.address();
        com::Variant answer;
        clients_.Fire(kProvideValue, std::array{asked.get(), reference}, &answer);
        if (value.type() == VT_EMPTY) value = std::move(answer);
        if (value.type() == VT_EMPTY) return false;
        ToExpressionValue(value, out);
        return true;
    }

private:
    com::ConnectionPoint& clients_;
};

}  // namespace

HRESULT ParserObject::put_Formula(BSTR Text) noexcept {
    return Guarded([&] {
        const com::ComPtr<ZuParser> alive(this);  // a client that hears of a fault may let go of it
        formula_ = com::View(Text);
        program_.reset();
        fault_.reset();
        told_ = false;
        Compile();
    });
}

HRESULT ParserObject::get_Formula(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(formula_); });
}

HRESULT ParserObject::Evaluate(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] {
        const com::ComPtr<ZuParser> alive(this);
        return Run().detach();
    });
}

HRESULT ParserObject::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept {
    if (!points) return E_POINTER;
    *points = nullptr;
    return Guarded([&] { *points = com::ConnectionPointList::Make(events_).detach(); });
}

HRESULT ParserObject::FindConnectionPoint(REFIID events, IConnectionPoint** point) noexcept {
    return events_.Find(events, point);
}

void ParserObject::Compile() {
    if (expression::IsBlank(com::AsUtf16(formula_))) return;
    try {
        program_ = std::make_shared<const expression::Program>(
            expression::Program::CompileDynamic(com::AsUtf16(formula_)));
    } catch (const Error& error) {
        if (!IsFault(error)) throw;
        fault_ = error;
        TellFault(error);
    }
}

com::Variant ParserObject::Run() {
    const std::wstring formula = formula_;  // the client may put another one
    if (fault_) {
        const Error fault = *fault_;
        TellFault(fault);
        throw ConditionFault(fault, formula);
    }
    const std::shared_ptr<const expression::Program> program = program_;
    if (!program) return com::Variant(true);
    try {
        ClientNames names(events_);
        expression::Result result;
        program->EvaluateDynamic(names, result);
        return FromExpressionValue(result);
    } catch (const Error& error) {
        if (!IsFault(error)) throw;
        if (program == program_) TellFault(error);
        throw ConditionFault(error, formula);
    }
}

void ParserObject::TellFault(const Error& fault) {
    if (told_ || events_.clients() == 0) return;
    told_ = true;
    LONG number = PositionOf(fault);
    com::Bstr text(FaultReason(fault, formula_));
    std::array<VARIANT, 2> arguments{};
    arguments[0].vt = VT_BYREF | VT_I4;
    arguments[0].plVal = &number;
    arguments[1].vt = VT_BYREF | VT_BSTR;
    arguments[1].pbstrVal = text.address();
    events_.Fire(kSyntaxError, arguments);
}

}  // namespace zu::host
