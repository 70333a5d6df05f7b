#include "tests/contract/fake/FakeParser.h"

#include <array>

namespace zu::fake {

STDMETHODIMP FakeParser::put_Formula(BSTR text) {
    return Do("ZuParser.Formula", "= " + Show(text), [] {});
}

STDMETHODIMP FakeParser::Evaluate(VARIANT* result) {
    return Answer("ZuParser.Evaluate", "", result, [&] {
        return (Scene().evaluates ? Scene().evaluates(*this) : com::Variant(true)).detach();
    });
}

STDMETHODIMP FakeParser::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points) *points = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP FakeParser::FindConnectionPoint(REFIID events, IConnectionPoint** point) {
    return events_.Find(events, point);
}

com::Variant FakeParser::Ask(std::wstring_view name, com::Variant unknown) {
    const com::Variant asked(name);
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = unknown.address();
    events_.Fire(1, std::array{asked.get(), reference});
    return unknown;
}

void FakeParser::TellFault(LONG number, std::wstring_view text) {
    com::Bstr owned(text);
    std::array<VARIANT, 2> arguments{};
    arguments[0].vt = VT_BYREF | VT_I4;
    arguments[0].plVal = &number;
    arguments[1].vt = VT_BYREF | VT_BSTR;
    arguments[1].pbstrVal = owned.address();
    events_.Fire(2, arguments);
}

void FakeParser::Tell(DISPID event, std::size_t arguments) {
    const std::vector<VARIANT> empty(arguments);
    events_.Fire(event, empty);
}

}  // namespace zu::fake
