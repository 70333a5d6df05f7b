#include "host/engine/ParserObject.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "host/engine/Reporting.h"

namespace zu::host {

HRESULT ParserObject::put_Formula(BSTR Text) noexcept {
    return Guarded([&] { formula_ = com::View(Text); });
}

HRESULT ParserObject::get_Formula(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(formula_); });
}

HRESULT ParserObject::Evaluate(VARIANT* Result) noexcept {
    return GuardedResult(Result, []() -> VARIANT {
        throw com::ComError(E_NOTIMPL, L"Evaluating expressions outside tables is not available");
    });
}

}  // namespace zu::host
