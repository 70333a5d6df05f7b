#include "component/table/clsEvaluator.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SafeArray.h"
#include "com/Variant.h"
#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"

namespace zu::component {

using com::Check;
using com::ComPtr;
using com::Variant;

namespace {

/// Any parser may stand behind the name; no class id is known here.
constexpr const wchar_t* kParserName = L"ZuParser.Parser";

ComPtr<ZuParser> CreateParser() {
    CLSID id{};
    Check(CLSIDFromProgID(kParserName, &id));
    ComPtr<ZuParser> parser;
    Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(ZuParser), parser.putVoid()));
    com::Required(parser.get());
    return parser;
}

/// Two elements that refer to what the event carries, so that the report shows it as it is when it is made.
com::SafeArray ReferencesTo(LONG& number, BSTR& text) {
    com::SafeArray insertions = com::SafeArray::Of({Variant(), Variant()});
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &number;
    LONG index = 0;
    Check(SafeArrayPutElement(insertions.get(), &index, &reference));
    reference.vt = VT_BYREF | VT_BSTR;
    reference.pbstrVal = &text;
    index = 1;
    Check(SafeArrayPutElement(insertions.get(), &index, &reference));
    return insertions;
}

}  // namespace

clsEvaluator::clsEvaluator()
    : parser_(CreateParser()), events_(ComPtr<ParserEvents>::Adopt(new ParserEvents(*this))) {
    const auto container = parser_.as<IConnectionPointContainer>();
    Check(container->FindConnectionPoint(__uuidof(_ZuParserEvents), connection_.put()));
    Check(com::Required(connection_.get())->Advise(events_.get(), &cookie_));
}

clsEvaluator::~clsEvaluator() {
    connection_->Unadvise(cookie_);
    events_->Leave();  // a parser that somebody still holds must not come back here
}

void clsEvaluator::SetFormula(std::wstring_view text) {
    const com::Bstr formula(text);
    Check(parser_->put_Formula(formula.get()));
}

bool clsEvaluator::Evaluate() const noexcept {
    bool taken = false;
    Trap([&] {
        Variant result;
        Check(parser_->Evaluate(result.put()));
        taken = result.ToBoolean();
    });
    return taken;
}

void clsEvaluator::ProvideValue(BSTR name, VARIANT& value) noexcept {
    Trap([&] {
        if (!fields_) return;
        ComPtr<ZuDataField> field;
        Check(fields_->get_Item(Variant(com::View(name)), field.put()));
        if (!field) return;
        // The field itself: the parser reads it when it needs it.
        Variant object(static_cast<IDispatch*>(field.get()));
        VariantClear(&value);
        value = object.detach();
    });
}

void clsEvaluator::SyntaxError(LONG& number, BSTR& text) noexcept {
    Trap([&] { Engine().messages().RaiseError(EngineError::kConditionFault, ReferencesTo(number, text)); });
}

}  // namespace zu::component
