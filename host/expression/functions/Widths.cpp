#include "host/expression/functions/Widths.h"

#include <algorithm>

#include "host/expression/functions/TextLimit.h"

namespace zu::expression::widths {

double NumberOr(const Node& call, std::size_t argument, double otherwise) noexcept {
    if (argument >= call.children.size()) return otherwise;
    const Node& node = *call.children[argument];
    return node.kind == NodeKind::Literal && node.type == Type::Number ? node.number : otherwise;
}

void SameAsFirst(Node& call) {
    call.width = call.children[0]->width;
    call.isFixedWidth = call.children[0]->isFixedWidth;
}

void AtMostFirst(Node& call) {
    call.width = call.children[0]->width;
}

void Widest(Node& call) {
    for (const NodePtr& child : call.children)
        call.width = std::max(call.width, child->width);
    call.isFixedWidth =
        std::all_of(call.children.begin(), call.children.end(), [&call](const NodePtr& child) {
            return child->type != Type::Text || (child->isFixedWidth && child->width == call.width);
        });
}

void CountOfFirst(Node& call) {
    const double count = NumberOr(call, 1, -1);
    const Node& text = *call.children[0];
    call.width = text.width;
    if (count < 0) return;
    call.width = static_cast<std::size_t>(std::min(count, static_cast<double>(text.width)));
    call.isFixedWidth = text.isFixedWidth;
}

void SecondNumber(Node& call) {
    const double count = NumberOr(call, 1, -1);
    call.width = count < 0 ? kMaxMadeText : static_cast<std::size_t>(std::min<double>(count, kMaxMadeText));
    call.isFixedWidth = count >= 0;
}

}  // namespace zu::expression::widths
