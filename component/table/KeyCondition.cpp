#include "component/table/KeyCondition.h"

#include "com/Variant.h"

namespace zu::component {

bool IsCondition(const VARIANT& keyOrCondition) noexcept {
    const auto text = com::TextOf(keyOrCondition);
    return text && text->find_first_of(L"=<>(") != std::wstring_view::npos;
}

}  // namespace zu::component
