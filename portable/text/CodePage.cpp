#include "portable/text/CodePage.h"

#include <map>
#include <memory>

#include "portable/text/DoubleByteSet.h"
#include "portable/text/SingleByteSet.h"
#include "portable/text/SingleByteTables.h"
#include "portable/text/Utf8Set.h"

namespace zu::text {

namespace {

using Registry = std::map<unsigned, std::unique_ptr<const CodePage>>;

Registry MakeRegistry() {
    Registry sets;
    for (const SingleByteTable& table : SingleByteTables()) {
        sets.emplace(table.number, std::make_unique<SingleByteSet>(table));
    }
    for (const unsigned number : {932U, 936U, 949U, 950U}) {
        sets.emplace(number, std::make_unique<DoubleByteSet>(number));
    }
    sets.emplace(65001, std::make_unique<Utf8Set>());
    return sets;
}

/// Made on the first use and kept: tables hold on to their set by address.
const Registry& Sets() {
    static const Registry sets = MakeRegistry();
    return sets;
}

}  // namespace

const CodePage* CodePage::Find(unsigned number) noexcept {
    const auto found = Sets().find(number);
    return found != Sets().end() ? found->second.get() : nullptr;
}

const CodePage& CodePage::Default() noexcept {
    return *Sets().at(1252);
}

}  // namespace zu::text
