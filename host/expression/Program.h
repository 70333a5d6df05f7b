#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/expression/RecordLayout.h"

namespace zu::expression {

enum class Type : std::uint8_t { Unknown, Boolean, Number, Text, Date, DateTime };

/// A computed value. Null has a type too where it is known.
struct Result {
    Type type = Type::Unknown;
    bool isNull = true;
    /// The value is null because a Date, DateTime or Boolean field is blank, not because it is NULL: index
    /// keys tell the two apart (an empty date has the key 0, an empty logical the key F).
    bool isEmpty = false;
    bool boolean = false;
    double number = 0;
    std::int32_t julianDay = 0;
    std::int32_t milliseconds = 0;  ///< since midnight, for DateTime
    std::string text;               ///< bytes of the code page (UTF-8 in programs without a layout)
};

/// One record as it lies in memory.
struct Row {
    const std::byte* record = nullptr;  ///< the deletion mark first
    std::uint32_t number = 0;           ///< one-based
    MemoReader* memos = nullptr;        ///< null: memo fields are empty
};

/// Records that lie one behind the other in memory.
struct RecordRun {
    const std::byte* first = nullptr;
    std::size_t stride = 0;
    std::uint32_t firstNumber = 0;
    std::size_t count = 0;
    MemoReader* memos = nullptr;
};

/// Supplies names to programs that were compiled without a layout.
class NameSource {
public:
    virtual ~NameSource() = default;
    /// Puts the value of `name` (UTF-8, as written) into `out`; false when there is no such name.
    virtual bool Provide(std::string_view name, Result& out) = 0;
};

/// Bounds that a condition sets for the value of a key: every record that meets the condition has a key
/// within.
///
/// Texts stand here without the blanks at their end. A key is within `low` when it is not below `low` filled
/// up with NUL bytes (fields may be padded with NULs), within `high` when it is not above `high` filled up
/// with blanks. A bound that is not included excludes only keys equal to the bound filled up with blanks.
struct KeyRange {
    std::optional<Result> low;   ///< nothing: open
    std::optional<Result> high;  ///< nothing: open
    bool lowIncluded = true;
    bool highIncluded = true;
    bool prefix = false;  ///< low is a text that the key begins with (high is not set)
};

/// A compiled expression: immutable, may be used again and again, by one thread at a time.
class Program {
public:
    /// Compiles a condition or expression over the fields of `layout`, which must outlive the program.
    /// Unknown names and faults are `Syntax` errors with the character position and what was expected.
    static Program Compile(std::u16string_view source, const RecordLayout& layout);
    /// The same for text in the table's code page, as index files hold it (key and FOR expressions).
    static Program CompileBytes(std::string_view source, const RecordLayout& layout);
    /// Compiles without a layout: names are asked for when the program runs.
    static Program CompileDynamic(std::u16string_view source);

    Program(Program&&) noexcept;
    Program& operator=(Program&&) noexcept;
    ~Program();

    /// The same program once more, for another thread.
    Program Again() const;

    /// The type of the result as far as it is known before running.
    Type type() const noexcept;
    /// Texts: the greatest number of bytes that the result can have (an index key has this length), SIZE_MAX
    /// where nothing bounds it (memos); else 0.
    std::size_t textWidth() const noexcept;
    /// The expression is one field and nothing else: its position in the layout.
    std::optional<std::size_t> singleField() const noexcept;
    /// Texts joined by "+" at the top of the expression, in order (the parts of a composite key); one
    /// otherwise. Each part compiles on its own; its text is the source of that part in UTF-8.
    std::vector<std::string> parts() const;
    /// The expression depends on the deletion mark or the record number.
    bool usesDeleted() const noexcept;
    bool usesRecordNumber() const noexcept;
    /// The expression reads memo fields.
    bool usesMemos() const noexcept;
    /// A canonical text: two expressions that differ only in case, blanks and alias have the same one.
    const std::string& canonical() const noexcept;

    void Evaluate(const Row& row, Result& out) const;
    void EvaluateDynamic(NameSource& names, Result& out) const;

    /// The truth of a condition for one record; Null is false. A result that is no Boolean is a TypeMismatch,
    /// here and in Filter and Count. Only for programs with a layout.
    bool Test(const Row& row) const;

    /// Tests a run of records, batch by batch, and appends the numbers of those that meet the condition and
    /// (unless `includeDeleted`) are not marked deleted; stops when `matches` holds `limit` numbers (0: no
    /// limit).
    void Filter(const RecordRun& run, bool includeDeleted, std::size_t limit,
                std::vector<std::uint32_t>& matches) const;
    /// As Filter, but only counts.
    std::uint64_t Count(const RecordRun& run, bool includeDeleted) const;

    /// What this condition says about the value of the expression `key`; nothing when it says nothing.
    std::optional<KeyRange> RangeOf(const Program& key) const;

private:
    struct Implementation;
    explicit Program(std::unique_ptr<Implementation> implementation) noexcept;
    std::unique_ptr<Implementation> implementation_;
};

/// A condition or expression that is empty or blank: it selects every record.
bool IsBlank(std::u16string_view source) noexcept;

}  // namespace zu::expression
