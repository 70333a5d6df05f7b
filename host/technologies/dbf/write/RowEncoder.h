#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/dbf/FieldEncoder.h"
#include "host/technologies/dbf/write/EditedTable.h"
#include "portable/text/DigitsField.h"
#include "portable/textio/Cell.h"
#include "portable/textio/StoredField.h"

namespace zu::dbf::write {

/// Makes the bytes of new records from cells, without a value and an edit in between. Takes only what leaves
/// no question; everything else is left to DbfRecordEdit, which gives the same bytes and knows the reasons.
class RowEncoder {
public:
    /// The content of a memo field of a record. Valid until the next Encode, like its cell.
    struct Memo {
        std::size_t field;
        std::string_view content;
    };

    /// `table` must outlive the encoder.
    explicit RowEncoder(const EditedTable& table);

    /// Makes a live record whose field `places[i]` holds `cells[i]`; the others are blank. False: the cells
    /// need a closer look. `codePage` is the page of the cells' bytes. Memos get their blocks later.
    bool Encode(std::span<const textio::Cell> cells, std::span<const std::size_t> places, unsigned codePage);

    /// What EncodeStored is given from now on: where the values of the fields `places` lie, texts in the page
    /// of the table. False: there is a field that cannot be filled so.
    bool MatchStored(std::span<const textio::StoredField> stored, std::span<const std::size_t> places);
    /// Makes the record that Encode would make of the values of a stored one. False: they need a closer look.
    bool EncodeStored(const char* stored);

    /// The record that Encode or EncodeStored made.
    std::vector<std::byte>& record() noexcept { return record_; }
    const std::vector<Memo>& memos() const noexcept { return memos_; }
    const FieldEncoder& fields() const noexcept { return fields_; }

private:
    struct Match {
        textio::StoredField from;
        std::uint32_t offset;
        std::uint32_t width;
        text::DigitsField digits;
    };

    void Begin() noexcept;
    bool EncodeMatch(const Match& match, const char* from, char* to) const noexcept;
    /// Puts a text into a field that only its bytes make up.
    static void PutText(std::string_view text, char* field, std::size_t width) noexcept;
    bool Stays(std::string_view bytes) const noexcept;
    bool EncodeCell(const textio::Cell& cell, std::size_t field);
    bool EncodeText(const textio::Cell& cell, std::size_t field);
    bool EncodeMemo(const textio::Cell& cell, std::size_t field);
    bool EncodeDigits(const textio::Cell& cell, std::size_t field);
    bool EncodeDecimal(std::int64_t units, unsigned scale, std::size_t field);
    /// The text of a cell in the table's page, in the cell itself or in `encoded`; nothing when it cannot be
    /// had without loss.
    std::optional<std::string_view> BytesOf(const textio::Cell& cell, std::string& encoded) const;

    const EditedTable& table_;
    FieldEncoder fields_;
    bool takesRows_;
    std::vector<std::byte> blank_;
    std::vector<std::byte> record_;
    std::vector<Memo> memos_;
    std::deque<std::string> texts_;  ///< of memos; they stay where they are
    std::size_t usedTexts_ = 0;
    std::string encoded_;
    unsigned codePage_ = 0;
    unsigned tablePage_;
    std::array<bool, 256> stays_{};  ///< bytes that are the same when decoded and encoded again
    bool asciiStays_ = false;        ///< all of ASCII does
    std::vector<Match> matches_;
};

}  // namespace zu::dbf::write
