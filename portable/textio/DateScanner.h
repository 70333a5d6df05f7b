#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zu::textio {

/// Reads dates under a mask.
///
/// Mask and text are walked together: each run of d, m or y takes as many characters into its part, the
/// separator and any other character of the mask pass over one. A month that is no number is an English name
/// or its first three letters. Where the whole text can be read so, parts may also be shorter than their run
/// (1/2/2024) and names as long as they are (September).
class DateScanner {
public:
    /// Only the first `maskLength` characters of the mask count.
    DateScanner(std::u16string_view mask, std::u16string_view separator, std::size_t maskLength);

    /// The Julian day of `token`, without blanks around it; nothing for a text that is no date. Characters
    /// outside ASCII count as one unknown character each and may be given as any control character.
    std::optional<std::int32_t> Scan(std::string_view token) const;

private:
    struct Parts {
        std::string day;
        std::string month;
        std::string year;
        std::string other;
    };

    /// Where digits of one part stand in the mask.
    struct Run {
        std::size_t first = 0;
        std::size_t length = 0;  ///< 0: none
    };
    /// The common form: each part once, in as many digits as the mask has letters.
    struct Digits {
        Run day;
        Run month;
        Run year;
    };

    std::optional<Digits> FindDigits() const noexcept;
    std::optional<std::int32_t> ScanDigits(std::string_view token) const noexcept;
    std::string& PartOf(char maskCharacter, Parts& parts) const noexcept;
    bool IsSeparator(char maskCharacter) const noexcept;
    std::size_t RunAt(std::size_t position) const noexcept;
    Parts CutByMask(std::string_view token) const;
    std::optional<Parts> CutByContent(std::string_view token) const;
    static std::optional<std::int32_t> ToDay(const Parts& parts);
    static std::optional<std::int32_t> ToDay(int year, int month, int day) noexcept;

    std::string mask_;
    std::optional<char> separator_;
    std::optional<Digits> digits_;
};

}  // namespace zu::textio
