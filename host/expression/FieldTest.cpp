#include "host/expression/FieldTest.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

#include "host/expression/Comparison.h"
#include "host/expression/DateText.h"
#include "host/expression/FieldReader.h"
#include "host/expression/Interval.h"
#include "host/expression/ScaledDigits.h"
#include "portable/calendar/Calendar.h"
#include "portable/text/NumberText.h"

namespace zu::expression {

namespace {

enum Cost : int { kByteCost = 1, kBinaryCost, kDateCost, kTextCost, kDigitsCost, kOrderCost };

constexpr unsigned kMostDigits = 18;  ///< units of as many digits fit into 64 bits

/// Runs a rule over one record or many. A rule has `Truth operator()(const std::byte* record) const`.
template <class Rule>
class RuleTest final : public FieldTest {
public:
    RuleTest(int cost, NullBit nullBit, Rule rule)
        : FieldTest(cost), nullBit_(nullBit), rule_(std::move(rule)) {}

    Truth Test(const std::byte* record) const override {
        return nullBit_.IsSet(record) ? Truth::Null : rule_(record);
    }

    std::size_t Begin(const std::byte* first, std::size_t stride, std::size_t count, bool includeDeleted,
                      std::uint16_t* selection) const override {
        std::size_t kept = 0;
        const std::byte* record = first;
        for (std::size_t i = 0; i < count; ++i, record += stride) {
            const bool isIncluded = includeDeleted || *record != std::byte{'*'};
            const bool holds = rule_(record) == Truth::True && !nullBit_.IsSet(record);
            selection[kept] = static_cast<std::uint16_t>(i);
            kept += isIncluded && holds ? 1 : 0;
        }
        return kept;
    }

    std::size_t Narrow(const std::byte* first, std::size_t stride, std::uint16_t* selection,
                       std::size_t count) const override {
        return nullBit_.mask == 0 ? Narrow<false>(first, stride, selection, count)
                                  : Narrow<true>(first, stride, selection, count);
    }

private:
    template <bool kNullable>
    std::size_t Narrow(const std::byte* first, std::size_t stride, std::uint16_t* selection,
                       std::size_t count) const {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint16_t position = selection[i];
            const std::byte* record = first + position * stride;
            bool holds = rule_(record) == Truth::True;
            if (kNullable) holds = holds && !nullBit_.IsSet(record);
            selection[kept] = position;
            kept += holds ? 1 : 0;
        }
        return kept;
    }

    NullBit nullBit_;
    Rule rule_;
};

Truth TruthOf(bool holds) noexcept {
    return holds ? Truth::True : Truth::False;
}

struct DigitsRule {
    std::size_t offset;
    unsigned width;
    unsigned decimals;
    Interval units;
    RealInterval reals;

    Truth operator()(const std::byte* record) const noexcept {
        const char* at = reinterpret_cast<const char*>(record) + offset;
        std::int64_t value = 0;
        if (ParseUnits(at, width, decimals, value)) return TruthOf(units.Contains(value));
        return Slow(at);
    }
    Truth Slow(const char* at) const noexcept {
        double value = 0;
        text::ParseNumber({at, width}, value);
        return TruthOf(reals.Contains(value));
    }
};

/// Days as the number YYYYMMDD, which has their order.
struct DateTextRule {
    std::size_t offset;
    Interval days;

    Truth operator()(const std::byte* record) const noexcept {
        const char* at = reinterpret_cast<const char*>(record) + offset;
        std::uint32_t value = 0;
        // A blank in front would pass as a zero; no day begins so.
        if (at[0] == ' ' || !ParseEightDigits(at, value)) return Truth::Null;
        const unsigned day = value % 100;
        const unsigned month = value / 100 % 100;
        const unsigned year = value / 10000;
        if (day - 1 >= 28 || month - 1 >= 12 || year == 0) {
            const calendar::Date date{static_cast<int>(year), static_cast<int>(month), static_cast<int>(day)};
            if (!calendar::IsValid(date)) return Truth::Null;
        }
        return TruthOf(days.Contains(value));
    }
};

struct IntegerRule {
    std::size_t offset;
    Interval units;
    Truth operator()(const std::byte* record) const noexcept {
        return TruthOf(units.Contains(LoadInteger(record + offset)));
    }
};

struct CurrencyRule {
    std::size_t offset;
    Interval units;
    Truth operator()(const std::byte* record) const noexcept {
        return TruthOf(units.Contains(LoadInteger64(record + offset)));
    }
};

struct DoubleRule {
    std::size_t offset;
    RealInterval reals;
    Truth operator()(const std::byte* record) const noexcept {
        const double value = LoadDouble(record + offset);
        if (!std::isfinite(value)) return Truth::Null;
        return TruthOf(reals.Contains(value));
    }
};

struct DateTimeRule {
    std::size_t offset;
    Interval moments;  ///< milliseconds, days times 86,400,000
    Truth operator()(const std::byte* record) const noexcept {
        std::int32_t day = 0;
        std::int32_t time = 0;
        if (!LoadDateTime(record + offset, day, time)) return Truth::Null;
        return TruthOf(moments.Contains(std::int64_t{day} * kDayMilliseconds + time));
    }
};

struct LogicalRule {
    std::size_t offset;
    bool wanted;
    std::array<bool, 256> isTrue;  ///< by stored byte

    LogicalRule(std::size_t place, bool truth) : offset(place), wanted(truth), isTrue() {
        for (std::size_t byte = 0; byte < isTrue.size(); ++byte) {
            isTrue[byte] = LoadLogical(static_cast<std::byte>(byte)) == 1;
        }
    }
    Truth operator()(const std::byte* record) const noexcept {
        return TruthOf(isTrue[std::to_integer<std::size_t>(record[offset])] == wanted);
    }
};

struct TextEqualRule {
    std::size_t offset;
    std::string padded;   ///< as wide as the field
    std::size_t content;  ///< bytes before the padding
    bool isNegated;

    Truth operator()(const std::byte* record) const noexcept {
        const char* at = reinterpret_cast<const char*>(record) + offset;
        const std::size_t width = padded.size();
        bool isEqual = std::memcmp(at, padded.data(), width) == 0;
        if (!isEqual && width > 0 && at[width - 1] == '\0') {
            isEqual = WithoutPadding({at, width}) == std::string_view(padded).substr(0, content);
        }
        return TruthOf(isEqual != isNegated);
    }
};

struct NeverEqualRule {
    bool isNegated;
    Truth operator()(const std::byte*) const noexcept { return TruthOf(isNegated); }
};

struct TextOrderRule {
    std::size_t offset;
    std::size_t width;
    Operator op;
    std::string constant;
    Truth operator()(const std::byte* record) const noexcept {
        const char* at = reinterpret_cast<const char*>(record) + offset;
        return TruthOf(Holds(op, CompareTexts({at, width}, constant)));
    }
};

struct TextPrefixRule {
    std::size_t offset;
    std::string prefix;
    Truth operator()(const std::byte* record) const noexcept {
        return TruthOf(std::memcmp(record + offset, prefix.data(), prefix.size()) == 0);
    }
};

template <class Rule>
std::unique_ptr<FieldTest> Make(int cost, const RecordLayout& layout, const FieldLayout& field, Rule rule) {
    return std::make_unique<RuleTest<Rule>>(cost, NullBit(layout, field), std::move(rule));
}

bool HasRegularDigits(const FieldLayout& field) noexcept {
    return field.storage == Storage::NumberText && field.width > 0 && field.decimals <= kMostDigits &&
           (field.decimals == 0 || field.width > field.decimals);
}

std::string_view DigitsOf(const Constant& constant) noexcept {
    return constant.literal != nullptr ? std::string_view(constant.literal->digits) : std::string_view{};
}

std::int64_t DigitDate(std::int32_t julianDay) noexcept {
    const calendar::Date date = calendar::FromJulianDay(julianDay);
    return std::int64_t{date.year} * 10000 + date.month * 100 + date.day;
}

/// The place of a date or date-time constant among the days of a DateText field.
ScaledConstant DayConstant(const Slot& value) noexcept {
    return {DigitDate(value.julianDay), value.milliseconds == 0};
}

ScaledConstant MomentConstant(const Slot& value) noexcept {
    return {std::int64_t{value.julianDay} * kDayMilliseconds + value.milliseconds, true};
}

/// Number and day fields: the test for a set of units. `real` serves the storages and forms without units.
std::unique_ptr<FieldTest> MakeUnits(const RecordLayout& layout, const FieldLayout& field,
                                     const Interval& units, const RealInterval& reals) {
    switch (field.storage) {
        case Storage::NumberText:
            return Make(kDigitsCost, layout, field,
                        DigitsRule{field.offset, field.width, field.decimals, units, reals});
        case Storage::Integer32:
            return Make(kBinaryCost, layout, field, IntegerRule{field.offset, units});
        case Storage::Currency:
            return Make(kBinaryCost, layout, field, CurrencyRule{field.offset, units});
        case Storage::Double:
            return Make(kBinaryCost, layout, field, DoubleRule{field.offset, reals});
        case Storage::DateText:
            return Make(kDateCost, layout, field, DateTextRule{field.offset, units});
        case Storage::DateTime:
            return Make(kBinaryCost, layout, field, DateTimeRule{field.offset, units});
        default:
            return nullptr;
    }
}

/// The constant in units of the field; nothing when the pair has no kernel.
std::optional<ScaledConstant> UnitsOf(const FieldLayout& field, const Constant& constant) {
    const Slot& value = constant.value;
    if (value.isNull || !AreComparable(TypeOf(field.storage), value.type)) return std::nullopt;
    switch (field.storage) {
        case Storage::NumberText:
            if (!HasRegularDigits(field)) return std::nullopt;
            return ScaleConstant(value.number, DigitsOf(constant), field.decimals);
        case Storage::Integer32:
            return ScaleConstant(value.number, DigitsOf(constant), 0);
        case Storage::Currency: {
            constexpr unsigned kCurrencyDecimals = 4;
            const auto scaled = ScaleConstant(value.number, DigitsOf(constant), kCurrencyDecimals);
            // Beyond the ends stored amounts could lie as well.
            constexpr std::int64_t kSafe = std::int64_t{1} << 61;
            if (!scaled || scaled->floor > kSafe || scaled->floor < -kSafe) return std::nullopt;
            return scaled;
        }
        case Storage::Double:
            return ScaledConstant{};
        case Storage::DateText:
            if (field.width != 8) return std::nullopt;
            return DayConstant(value);
        case Storage::DateTime:
            return MomentConstant(value);
        default:
            return std::nullopt;
    }
}

std::unique_ptr<FieldTest> MakeTextComparison(const RecordLayout& layout, const FieldLayout& field,
                                              Operator op, const Constant& constant) {
    const bool isEquality = op == Operator::Equal || op == Operator::NotEqual;
    if (constant.value.isNull || constant.value.type != Type::Text) return nullptr;
    const std::string_view wanted = WithoutPadding(constant.value.text);
    const bool isForeign = constant.literal != nullptr && constant.literal->isForeign;
    if (!isEquality) {
        return Make(kOrderCost, layout, field,
                    TextOrderRule{field.offset, field.width, op, std::string(wanted)});
    }
    const bool isNegated = op == Operator::NotEqual;
    if (isForeign || wanted.size() > field.width) {
        return Make(kByteCost, layout, field, NeverEqualRule{isNegated});
    }
    std::string padded(wanted);
    padded.resize(field.width, ' ');
    return Make(kTextCost, layout, field,
                TextEqualRule{field.offset, std::move(padded), wanted.size(), isNegated});
}

}  // namespace

std::unique_ptr<FieldTest> MakeComparison(const RecordLayout& layout, std::size_t index, Operator op,
                                          const Constant& constant) {
    const FieldLayout& field = layout.fields[index];
    if (field.storage == Storage::Character) return MakeTextComparison(layout, field, op, constant);
    if (field.storage == Storage::LogicalText) {
        const bool isEquality = op == Operator::Equal || op == Operator::NotEqual;
        if (!isEquality || constant.value.isNull || constant.value.type != Type::Boolean) return nullptr;
        return MakeLogical(layout, index, constant.value.boolean == (op == Operator::Equal));
    }
    const auto scaled = UnitsOf(field, constant);
    if (!scaled) return nullptr;
    return MakeUnits(layout, field, IntervalOf(op, *scaled), RealIntervalOf(op, constant.value.number));
}

std::unique_ptr<FieldTest> MakeBetween(const RecordLayout& layout, std::size_t index, const Constant& low,
                                       const Constant& high) {
    const FieldLayout& field = layout.fields[index];
    const auto first = UnitsOf(field, low);
    const auto last = UnitsOf(field, high);
    if (!first || !last) return nullptr;
    RealInterval reals;
    reals.low = low.value.number;
    reals.high = high.value.number;
    return MakeUnits(
        layout, field,
        Intersection(IntervalOf(Operator::GreaterEqual, *first), IntervalOf(Operator::LessEqual, *last)),
        reals);
}

std::unique_ptr<FieldTest> MakePrefix(const RecordLayout& layout, std::size_t index,
                                      std::string_view prefix) {
    const FieldLayout& field = layout.fields[index];
    if (field.storage != Storage::Character) return nullptr;
    if (prefix.size() > field.width) return Make(kByteCost, layout, field, NeverEqualRule{false});
    return Make(kTextCost, layout, field, TextPrefixRule{field.offset, std::string(prefix)});
}

std::unique_ptr<FieldTest> MakeLogical(const RecordLayout& layout, std::size_t index, bool wanted) {
    const FieldLayout& field = layout.fields[index];
    if (field.storage != Storage::LogicalText) return nullptr;
    return Make(kByteCost, layout, field, LogicalRule{field.offset, wanted});
}

}  // namespace zu::expression
