#pragma once

#include <string_view>

#include "com/ComPtr.h"
#include "component/table/ParserEvents.h"
#include "idl/ZuDataViewInterface.h"
#include "idl/ZuParser.h"

namespace zu::component {

/// Tests a record that is in no table yet: wraps one expression object of the parser library and answers its
/// questions for names from a fields collection.
///
///     clsEvaluator condition;
///     condition.SetFormula(L"AMOUNT > 100");
///     condition.SetFields(fields);
///     while (...) if (condition.Evaluate()) ...   // sees the fields as they are each time
class clsEvaluator final : private ParserClient {
public:
    /// Creates the expression object by its name and connects to its events. Throws ComError.
    clsEvaluator();
    clsEvaluator(const clsEvaluator&) = delete;
    clsEvaluator& operator=(const clsEvaluator&) = delete;
    ~clsEvaluator();

    /// A fault in the text is reported to the engine (condition fault: position and description) when the
    /// parser tells it. Throws ComError when the parser refuses the text.
    void SetFormula(std::wstring_view text);
    /// The fields that the formula may name; null for none.
    void SetFields(com::ComPtr<ZuDataFields> fields) noexcept { fields_ = std::move(fields); }
    /// False, too, for a formula that the parser cannot evaluate and for a result that is no truth value.
    bool Evaluate() const noexcept;

private:
    void ProvideValue(BSTR name, VARIANT& value) noexcept override;
    void SyntaxError(LONG& number, BSTR& text) noexcept override;

    com::ComPtr<ZuParser> parser_;
    com::ComPtr<ParserEvents> events_;
    com::ComPtr<IConnectionPoint> connection_;
    DWORD cookie_ = 0;
    com::ComPtr<ZuDataFields> fields_;
};

}  // namespace zu::component
