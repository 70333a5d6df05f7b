#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/expression/Program.h"

namespace zu::expression {

/// A value while a program runs. Texts are views: into the record, a constant or a register's own buffer.
///
/// `isEmpty` marks the content of a blank field, which is not the same as NULL: an empty date is null in
/// comparisons but has a text form (blanks) and a key (0); an empty logical reads as false.
struct Slot {
    Type type = Type::Unknown;
    bool isNull = true;
    bool isEmpty = false;
    bool boolean = false;
    double number = 0;
    std::int32_t julianDay = 0;
    std::int32_t milliseconds = 0;
    std::string_view text;
};

/// The place where an instruction leaves its result. The buffer is kept from record to record.
struct Register : Slot {
    std::string buffer;
    bool isConstant = false;  ///< set when the program was compiled, never written again

    void SetNull(Type t) noexcept {
        type = t;
        isNull = true;
        isEmpty = false;
        text = {};
    }
    void SetBoolean(bool value) noexcept {
        Begin(Type::Boolean);
        boolean = value;
    }
    /// Infinities and NaN become NULL: no record holds them, and they compare with nothing.
    void SetNumber(double value) noexcept {
        Begin(Type::Number);
        isNull = !std::isfinite(value);
        number = value;
    }
    void SetDate(std::int32_t day) noexcept {
        Begin(Type::Date);
        julianDay = day;
        milliseconds = 0;
    }
    void SetDateTime(std::int32_t day, std::int32_t time) noexcept {
        Begin(Type::DateTime);
        julianDay = day;
        milliseconds = time;
    }
    /// A blank Date, DateTime or Boolean; a blank Boolean reads as false.
    void SetEmpty(Type t) noexcept {
        Begin(t);
        isNull = t != Type::Boolean;
        isEmpty = true;
        boolean = false;
        julianDay = 0;
        milliseconds = 0;
    }
    /// The view must live as long as the result is used.
    void SetText(std::string_view view) noexcept {
        Begin(Type::Text);
        text = view;
    }
    /// Takes what was put into `buffer`.
    void SetBuffer() noexcept { SetText(buffer); }
    void SetSlot(const Slot& other) noexcept { static_cast<Slot&>(*this) = other; }

private:
    void Begin(Type t) noexcept {
        type = t;
        isNull = false;
        isEmpty = false;
    }
};

}  // namespace zu::expression
