#include "host/service/OpenTable.h"

#include "com/Bstr.h"
#include "portable/text/Utf.h"

namespace zu::host {

const std::shared_ptr<const IndexFacts>& OpenTable::Index(std::size_t index) {
    const technologies::IndexDescription& now = table_.indexes().at(index);
    if (index >= indexes_.size()) indexes_.resize(index + 1);
    std::shared_ptr<const IndexFacts>& known = indexes_[index];
    if (known && known->description == now) return known;
    auto facts = std::make_shared<IndexFacts>();
    facts->description = now;
    for (const technologies::KeyPart& part : now.parts)
        facts->partNames.emplace_back(com::AsWide(text::ToUtf16(part.name)));
    return known = std::move(facts);
}

}  // namespace zu::host
