#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "host/expression/Program.h"
#include "host/technologies/dbf/cdx/KeyBuffer.h"
#include "host/technologies/dbf/cdx/KeyEncoder.h"

namespace zu::dbf::cdx {

/// A stretch of a tree: the keys from `low` to `high`, both included, in full length.
struct KeyBounds {
    KeyBuffer low;
    KeyBuffer high;

    static KeyBounds Everything(std::size_t keyLength);
    /// The one key of a value.
    static KeyBounds Of(const KeyEncoder& encoder, const expression::Result& value);
    /// The keys of texts that begin with `prefix`.
    static KeyBounds Prefix(const KeyForm& form, std::string_view prefix);
    /// The keys less than half a second from a moment: writers round the fraction of the day differently.
    static KeyBounds AroundMoment(const KeyEncoder& encoder, const expression::Result& moment);
    /// The same for a moment that is a key already.
    static KeyBounds AroundKey(const KeyEncoder& encoder, std::span<const std::byte> key);

    /// The keys of all records that can meet a condition with this range (and perhaps some more); nothing
    /// when the range does not narrow the tree. `isComposite`: the range is about the first part of the key.
    static std::optional<KeyBounds> FromRange(const KeyEncoder& encoder, const expression::KeyRange& range,
                                              bool isComposite);
};

}  // namespace zu::dbf::cdx
