#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zu::textio {

/// Writes dates under a mask: "yyyy" is the year in four digits, "mm" the month in two, "mmm" its short and
/// "mmmm" its full English name, "dd" the day in two digits; every other character is copied.
class DatePrinter {
public:
    explicit DatePrinter(std::u16string mask);

    /// The text of a Julian day; valid until the next call.
    std::u16string_view Print(std::int32_t julianDay);

    /// Characters of the mask.
    std::size_t maskLength() const noexcept { return mask_.size(); }

private:
    std::u16string mask_;
    std::u16string text_;
    std::int32_t printed_ = -1;  ///< the day that `text_` shows; neighbours often share it
};

}  // namespace zu::textio
