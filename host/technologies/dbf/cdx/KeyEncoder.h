#pragma once

#include <cstddef>

#include "host/expression/Program.h"
#include "host/expression/RecordLayout.h"
#include "host/technologies/dbf/cdx/KeyForm.h"

namespace zu::dbf::cdx {

/// Computes the key of a record for one tag. Fields that are the whole key are taken from the record's bytes
/// without running the expression. Program and layout must outlive the encoder.
class KeyEncoder {
public:
    KeyEncoder(const expression::Program& key, const expression::RecordLayout& layout, const KeyForm& form);

    const KeyForm& form() const noexcept { return form_; }

    /// Writes `form().length()` bytes at `out`.
    void Encode(const expression::Row& row, std::byte* out);

    /// Writes the key of a value that has the type of the key. Values that a key cannot hold (an integer too
    /// great) are cut to the nearest that it can.
    void EncodeResult(const expression::Result& value, std::byte* out) const;

    /// Two keys mean the same value: they are equal, or moments less than half a second apart, because other
    /// writers round the fraction of the day differently.
    bool SameValue(const std::byte* left, const std::byte* right) const noexcept;

private:
    bool IsNull(const std::byte* record) const noexcept;
    bool EncodeField(const std::byte* record, std::byte* out) const;
    void EncodeValue(const expression::Result& value, std::byte* out) const;

    const expression::Program& key_;
    const expression::RecordLayout& layout_;
    KeyForm form_;
    const expression::FieldLayout* field_ = nullptr;  ///< when the key is one field
    expression::Result value_;                        ///< kept for its buffers
};

}  // namespace zu::dbf::cdx
