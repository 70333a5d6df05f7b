#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zu::runner::commands {

/// Arranges values in columns, two blanks apart.
class ColumnLayout {
public:
    struct Column {
        std::wstring name;
        bool right = false;  ///< numbers stand at the right
        bool firm = false;   ///< never made narrower: half a number would be another one
    };

    explicit ColumnLayout(std::vector<Column> columns);

    /// Values that will be shown; the columns become as wide as they need.
    void Measure(const std::vector<std::wstring>& values);
    /// Makes the columns fit a line of `width`: the widest texts first give way, down to twelve
    /// characters; if that is not enough, columns at the right are left out, but never the first one.
    void Fit(std::size_t width);

    /// Texts that are too long are cut when the layout was fitted to a width, else they stand out.
    std::wstring Line(const std::vector<std::wstring>& values) const;
    std::wstring Header() const;
    /// The line under the header.
    std::wstring Rule() const;
    /// The names of the columns that had no room.
    std::vector<std::wstring> LeftOut() const;

private:
    std::wstring Join(const std::vector<std::wstring>& cells, bool values) const;
    std::size_t Total() const;
    /// Makes texts narrower until the columns fit; false when that is not enough.
    bool Shrink(std::size_t width);

    std::vector<Column> columns_;
    std::vector<std::size_t> widths_;
    std::size_t shown_;
    bool cuts_ = false;
};

}  // namespace zu::runner::commands
