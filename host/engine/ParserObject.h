#pragma once

#include <memory>
#include <optional>
#include <string>

#include "com/ConnectionPoint.h"
#include "com/Object.h"
#include "host/expression/Program.h"
#include "idl/ZuParser.h"
#include "portable/error/Error.h"

namespace zu::host {

/// The expression object that clients create as ZuParser.Parser: one expression of the language of
/// conditions, whose names its clients supply through the event ProvideValue while it runs.
///
/// A name has the value that a client puts into the event's argument, or, for script languages that cannot
/// change arguments, the value that the event's handler answers. Objects count by their default value when
/// they are read. A name that no client knows is a fault of the expression.
///
/// A fault is told once through the event SyntaxError (position from 1, description): when the text is put
/// or, where it shows only then or nobody listened, by the next Evaluate. Evaluate itself fails with the same
/// text each time. A blank expression is true, as a condition that is left out.
class ParserObject final : public com::DualObject<ParserObject, ZuParser, IConnectionPointContainer> {
public:
    static CLSID classId() noexcept { return __uuidof(::Parser); }

    HRESULT STDMETHODCALLTYPE put_Formula(BSTR Text) noexcept override;
    HRESULT STDMETHODCALLTYPE Evaluate(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Formula(BSTR* Result) noexcept override;

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID events, IConnectionPoint** point) noexcept override;

private:
    void Compile();
    com::Variant Run();
    void TellFault(const Error& fault);

    com::ConnectionPoint events_{*this, __uuidof(_ZuParserEvents)};
    std::wstring formula_;
    /// Null for a blank formula and for a faulty one. Shared with a run: a handler may put another formula.
    std::shared_ptr<const expression::Program> program_;
    std::optional<Error> fault_;  ///< why the formula has no program
    bool told_ = false;           ///< of a fault of this formula
};

}  // namespace zu::host
