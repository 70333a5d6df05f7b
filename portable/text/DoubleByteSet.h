#pragma once

#include <memory>

#include "portable/text/CodePage.h"

namespace zu::text {

/// What the platform does for a double-byte set. One object per set and use; cheap to make.
class DoubleByteConverter {
public:
    virtual ~DoubleByteConverter() = default;
    virtual void Decode(std::string_view bytes, std::u16string& out) = 0;
    /// False when a character is missing; `firstBad` is then its index.
    virtual bool Encode(std::u16string_view characters, std::string& out, std::size_t& firstBad) = 0;
};

/// The platform's converter for 932, 936, 949 or 950; null when the platform has none.
std::unique_ptr<DoubleByteConverter> MakeDoubleByteConverter(unsigned number);

/// An East Asian set whose characters take one or two bytes.
class DoubleByteSet final : public CodePage {
public:
    explicit DoubleByteSet(unsigned number);

    unsigned number() const noexcept override { return number_; }
    bool isSingleByte() const noexcept override { return false; }
    void Decode(std::string_view bytes, std::u16string& out) const override;
    std::optional<std::string> Encode(std::u16string_view characters, std::size_t* firstBad) const override;
    const std::array<std::uint8_t, 256>& upper() const noexcept override { return upper_; }
    const std::array<std::uint8_t, 256>& lower() const noexcept override { return lower_; }

private:
    unsigned number_;
    std::array<std::uint8_t, 256> upper_;
    std::array<std::uint8_t, 256> lower_;
};

}  // namespace zu::text
