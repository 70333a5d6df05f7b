#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zu::component {

/// What was noticed about the values of one line while it was read. It is told only when the line fails.
class FieldNotes {
public:
    void BeginLine() noexcept { notes_.clear(); }
    /// The field that the next notes are about, by its position.
    void BeginField(std::size_t field) noexcept { field_ = field; }
    std::size_t field() const noexcept { return field_; }

    /// `token` could not be read; `expected` says as what.
    void Add(std::wstring_view token, std::wstring_view expected) {
        notes_.push_back({field_, std::wstring(token), std::wstring(expected)});
    }

    struct Note {
        std::size_t field;
        std::wstring token;
        std::wstring expected;
    };
    const std::vector<Note>& notes() const noexcept { return notes_; }

private:
    std::vector<Note> notes_;
    std::size_t field_ = 0;
};

}  // namespace zu::component
