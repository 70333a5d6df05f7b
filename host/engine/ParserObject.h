#pragma once

#include <string>

#include "com/Object.h"
#include "idl/ZuParser.h"

namespace zu::host {

/// The expression object that clients create as ZuParser.Parser. It keeps its text; evaluating is not
/// available yet.
class ParserObject final : public com::DualObject<ParserObject, ZuParser> {
public:
    static CLSID classId() noexcept { return __uuidof(::Parser); }

    HRESULT STDMETHODCALLTYPE put_Formula(BSTR Text) noexcept override;
    HRESULT STDMETHODCALLTYPE Evaluate(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Formula(BSTR* Result) noexcept override;

private:
    std::wstring formula_;
};

}  // namespace zu::host
