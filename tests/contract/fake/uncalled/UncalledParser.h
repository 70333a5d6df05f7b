#pragma once

#include "idl/ZuParser.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuParser with every operation a surprise: what the component is not meant to call ends up in the journal.
class UncalledParser : public ZuParser {
public:
    using Interface = ZuParser;

    STDMETHODIMP put_Formula(BSTR) override { return Unexpected("ZuParser.put_Formula"); }
    STDMETHODIMP Evaluate(VARIANT*) override { return Unexpected("ZuParser.Evaluate"); }
    STDMETHODIMP get_Formula(BSTR*) override { return Unexpected("ZuParser.get_Formula"); }
};

}  // namespace zu::fake
