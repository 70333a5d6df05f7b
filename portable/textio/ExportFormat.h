#pragma once

#include <string>

#include "portable/textio/DateMask.h"

namespace zu::textio {

/// Where a sign stands. Any number that is not named here works like Left.
enum class SignPosition : int { Left = 0, Right = 1, Parentheses = 2 };

/// Presets of a format, by the numbers that clients give. Any other number is no preset.
inline constexpr int kNoPreset = 0;
inline constexpr int kDelimited = 1;
inline constexpr int kFixed = 2;

/// What an export format consists of. The values here are those of a format without preset.
struct ExportOptions {
    DateForm dateForm = DateForm::Ansi;
    std::u16string dateSeparator;
    std::u16string dateMask;
    std::u16string trueValue;
    std::u16string falseValue;
    bool stringsTrimmed = false;
    bool stringsPadded = false;
    std::u16string stringPad;
    bool stringsQuoted = false;
    bool numbersTrimmed = false;  ///< kept for clients; nothing is written differently
    bool numbersPadded = false;
    std::u16string numberPad;
    bool numbersQuoted = false;
    std::u16string positiveSymbol;
    std::u16string negativeSymbol;
    int signPosition = 0;
    int currencySignPosition = 0;
    std::u16string currencySymbol;   ///< kept for clients; never written
    int currencySymbolPosition = 0;  ///< kept for clients; never used
    int currencyPrecision = 4;
    std::u16string separator;
    std::u16string quote = u"\"";
    int lengthOfSingle = 20;
    int lengthOfDouble = 20;
    int decimalsForSingle = 7;
    int decimalsForDouble = 7;
    int lengthOfCurrency = 21;
    bool omitDecimalPoint = false;
};

/// How values are written to a text file: the options with the rules by which they may be set. Values out of
/// range are ignored without a word.
class ExportFormat {
public:
    /// Fills in the preset's values, if it is one, and builds the date mask. Answers whether it is one.
    bool ApplyPreset(int preset);
    int preset() const noexcept { return preset_; }

    const ExportOptions& options() const noexcept { return options_; }
    /// For the options without a rule: those that are not named by a setter below.
    ExportOptions& plainOptions() noexcept { return options_; }

    void SetDateForm(int form);
    void SetDateSeparator(std::u16string separator);
    void SetDateMask(std::u16string mask);
    /// The next three keep the first character alone.
    void SetStringPad(std::u16string pad);
    void SetNumberPad(std::u16string pad);
    void SetQuote(std::u16string quote);
    /// Lengths must be greater than 0, decimals 0 or greater.
    void SetLengthOfSingle(int length) noexcept;
    void SetLengthOfDouble(int length) noexcept;
    void SetLengthOfCurrency(int length) noexcept;
    void SetDecimalsForSingle(int decimals) noexcept;
    void SetDecimalsForDouble(int decimals) noexcept;

private:
    void BuildMask();

    ExportOptions options_;
    int preset_ = kNoPreset;
};

}  // namespace zu::textio
