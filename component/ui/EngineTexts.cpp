#include "component/ui/EngineTexts.h"

#include <vector>

#include "com/SafeArray.h"
#include "com/Variant.h"
#include "component/engine/EngineLink.h"

namespace zu::component {

using com::Bstr;
using com::SafeArray;
using com::Variant;

namespace {

constexpr ULONG kPosition = 0x8004102D;
constexpr ULONG kSaveQuestion = 0x8004102F;
constexpr ULONG kNotFound = 0x80041030;
constexpr ULONG kNewPosition = 0x80041042;

Bstr Text(ULONG code, SafeArray insertions) {
    return Engine().messages().MessageText(code, std::move(insertions));
}

SafeArray Numbers(LONG first, LONG second) {
    return SafeArray::Of({Variant(first), Variant(second)});
}

}  // namespace

Bstr PositionText(LONG record, LONG count) {
    return Text(kPosition, Numbers(record, count));
}

Bstr NewPositionText(LONG record, LONG count) {
    return Text(kNewPosition, Numbers(record, count));
}

Bstr SaveQuestion(bool adding) {
    // The question about a new record stands one below the other.
    return Text(adding ? kSaveQuestion - 1 : kSaveQuestion, SafeArray::NoArguments());
}

void ReportNotFound(std::wstring_view searchText) {
    Engine().messages().RaiseError(static_cast<EngineError>(kNotFound), SafeArray::Of({Variant(searchText)}));
}

}  // namespace zu::component
