#include "host/service/TextArray.h"

#include <utility>

#include "com/Bstr.h"
#include "com/SafeArray.h"
#include "portable/text/Utf.h"

namespace zu::host {

com::Variant TextArray(const std::vector<std::string>& texts) {
    std::vector<com::Variant> elements;
    elements.reserve(texts.size());
    for (const std::string& text : texts)
        elements.emplace_back(com::AsWide(text::ToUtf16(text)));
    return com::SafeArray::Of(elements).ToVariant();
}

}  // namespace zu::host
