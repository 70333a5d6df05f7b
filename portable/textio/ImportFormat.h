#pragma once

#include <cstddef>
#include <string>

#include "portable/textio/DateMask.h"
#include "portable/textio/ExportFormat.h"

namespace zu::textio {

/// How the lines of a text file are read: the options and the rules by which they may be set. Values out of
/// range are ignored without a word.
class ImportFormat {
public:
    /// Fills in the preset's values and builds the date mask; a number that is no preset changes nothing.
    void ApplyPreset(int preset);
    int preset() const noexcept { return preset_; }

    int booleanLength() const noexcept { return booleanLength_; }
    DateForm dateForm() const noexcept { return dateForm_; }
    const std::u16string& dateSeparator() const noexcept { return dateSeparator_; }
    const std::u16string& dateMask() const noexcept { return dateMask_; }
    /// How much of the mask counts, which is also the width of a date in lines of fixed length: the length of
    /// the mask when it was last built. A mask that a client sets does not change it.
    std::size_t maskLength() const noexcept { return maskLength_; }
    bool stringsTrimmed() const noexcept { return stringsTrimmed_; }
    /// One character; empty while quoting is off.
    const std::u16string& quote() const noexcept { return quote_; }
    int lengthOfSingle() const noexcept { return lengthOfSingle_; }
    int lengthOfDouble() const noexcept { return lengthOfDouble_; }
    int lengthOfCurrency() const noexcept { return lengthOfCurrency_; }
    const std::u16string& separator() const noexcept { return separator_; }

    void SetBooleanLength(int length) noexcept;
    void SetDateForm(int form);
    void SetDateSeparator(std::u16string separator);
    void SetDateMask(std::u16string mask);
    void SetStringsTrimmed(bool trimmed) noexcept { stringsTrimmed_ = trimmed; }
    /// Keeps the first character; an empty text turns quoting off.
    void SetQuote(std::u16string quote);
    void SetLengthOfSingle(int length) noexcept;
    void SetLengthOfDouble(int length) noexcept;
    void SetLengthOfCurrency(int length) noexcept;
    /// An empty text keeps the separator that was there.
    void SetSeparator(std::u16string separator);

private:
    void BuildMask();

    int preset_ = kNoPreset;
    int booleanLength_ = 0;
    DateForm dateForm_ = DateForm::Ansi;
    std::u16string dateSeparator_;
    std::u16string dateMask_;
    std::size_t maskLength_ = 0;
    bool stringsTrimmed_ = false;
    std::u16string quote_;
    int lengthOfSingle_ = 20;
    int lengthOfDouble_ = 20;
    int lengthOfCurrency_ = 21;
    std::u16string separator_;
};

}  // namespace zu::textio
