#pragma once

#include <cstddef>

#include "host/expression/Node.h"

namespace zu::expression::widths {

// How wide the text of a call can become, from the widths of its arguments. An index key has this length.

/// The value of a literal number; `otherwise` for anything that is known only at run time.
double NumberOr(const Node& call, std::size_t argument, double otherwise) noexcept;

/// As wide as the first text argument and always so when that one is (UPPER).
void SameAsFirst(Node& call);
/// As wide as the first argument at most (TRIM).
void AtMostFirst(Node& call);
/// As wide as the widest of all texts (IIF, NVL).
void Widest(Node& call);
/// The count given in the second argument, no more than the first text has (LEFT, RIGHT).
void CountOfFirst(Node& call);
/// Exactly the number given in the second argument (PADL).
void SecondNumber(Node& call);
/// Exactly, or at most, `kWidth` bytes.
template <std::size_t kWidth>
void Fixed(Node& call) {
    call.width = kWidth;
    call.isFixedWidth = true;
}
template <std::size_t kWidth>
void AtMost(Node& call) {
    call.width = kWidth;
}

}  // namespace zu::expression::widths
