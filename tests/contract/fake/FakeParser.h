#pragma once

#include <ocidl.h>

#include "com/ConnectionPoint.h"
#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledParser.h"

namespace zu::fake {

/// The event half of a parser, as a base with the interface's own name.
struct EventSource : IConnectionPointContainer {
    using Interface = IConnectionPointContainer;
};

/// An expression object whose result, and the events on the way to it, the scenario makes.
class FakeParser final : public FakeObject<UncalledParser, EventSource> {
public:
    /// The class id under which the manifest of each program names it.
    static constexpr CLSID kClass = {
        0x5D1B1F0E, 0x6C0B, 0x4E6A, {0x9E, 0x0B, 0x1C, 0x0C, 0x2E, 0x6F, 0x3A, 0x57}};

    FakeParser() : FakeObject("parser"), events_(*this, __uuidof(_ZuParserEvents)) {}

    STDMETHODIMP put_Formula(BSTR text) override;
    STDMETHODIMP Evaluate(VARIANT* result) override;
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** point) override;

    std::size_t clients() const { return events_.clients(); }
    /// The events.
    com::Variant Ask(std::wstring_view name, com::Variant unknown = com::Variant());
    void TellFault(LONG number, std::wstring_view text);
    /// An event that later parsers may have.
    void Tell(DISPID event, std::size_t arguments);

private:
    com::ConnectionPoint events_;
};

}  // namespace zu::fake
