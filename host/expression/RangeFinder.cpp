#include "host/expression/RangeFinder.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "host/expression/Binder.h"
#include "host/expression/Canonical.h"
#include "host/expression/Comparison.h"
#include "host/expression/FieldDetermination.h"
#include "host/expression/Function.h"
#include "host/expression/LikePattern.h"
#include "host/expression/functions/Widths.h"

namespace zu::expression {

namespace {

constexpr char kHighest = '\xFF';
/// Keys are never longer in any index.
constexpr std::size_t kLongestKey = 1024;

Result ResultOf(const Slot& value, Type keyType) {
    Result result;
    result.type = keyType == Type::DateTime && value.type == Type::Date ? Type::DateTime : value.type;
    result.isNull = false;
    result.boolean = value.boolean;
    result.number = value.number;
    result.julianDay = value.julianDay;
    result.milliseconds = value.milliseconds;
    if (value.type == Type::Text) result.text = WithoutPadding(value.text);
    return result;
}

Slot SlotOf(const Result& value) noexcept {
    Slot slot;
    slot.type = value.type;
    slot.isNull = value.isNull;
    slot.boolean = value.boolean;
    slot.number = value.number;
    slot.julianDay = value.julianDay;
    slot.milliseconds = value.milliseconds;
    slot.text = value.text;
    return slot;
}

int Order(const Result& a, const Result& b) noexcept {
    return CompareSlots(SlotOf(a), SlotOf(b));
}

bool IsSingleValue(const KeyRange& range) {
    return !range.prefix && range.low && range.high && Order(*range.low, *range.high) == 0;
}

void Narrow(std::optional<KeyRange>& range, KeyRange other) {
    if (!range || IsSingleValue(other)) {
        range = std::move(other);
        return;
    }
    if (IsSingleValue(*range) || range->prefix) return;
    if (other.prefix) {
        range = std::move(other);
        return;
    }
    if (other.low && (!range->low || Order(*other.low, *range->low) > 0)) {
        range->low = std::move(other.low);
        range->lowIncluded = other.lowIncluded;
    }
    if (other.high && (!range->high || Order(*other.high, *range->high) < 0)) {
        range->high = std::move(other.high);
        range->highIncluded = other.highIncluded;
    }
}

class RangeFinder {
public:
    RangeFinder(const Node& condition, Compiler& compiler) : compiler_(compiler), determination_(compiler) {
        Collect(condition);
        for (const Node* term : terms_)
            determination_.Learn(*term);
    }

    std::optional<KeyRange> Find(const Node& key) {
        std::optional<KeyRange> range = FindWhole(key);
        if (range && IsSingleValue(*range)) return range;
        std::optional<KeyRange> composite = FindComposite(key);
        return composite ? composite : range;
    }

private:
    void Collect(const Node& node) {
        if (node.kind != NodeKind::And) return terms_.push_back(&node);
        for (const NodePtr& child : node.children)
            Collect(*child);
    }

    /// The range of an expression that is no joined text, or of one as a whole.
    std::optional<KeyRange> FindWhole(const Node& key) {
        if (auto value = determination_.ValueOf(key)) {
            KeyRange range;
            range.low = ResultOf(SlotOf(*value), key.type);
            range.high = range.low;
            return range;
        }
        std::optional<KeyRange> range;
        const std::string canonical = CanonicalText(key);
        for (const Node* term : terms_) {
            if (auto found = RangeOfTerm(*term, canonical, key.type)) Narrow(range, std::move(*found));
        }
        return range ? range : FindMapped(key);
    }

    /// Ranges of the argument that hold for the key as well: days keep their order in DTOS, prefixes stay
    /// prefixes in UPPER and LOWER.
    std::optional<KeyRange> FindMapped(const Node& key) {
        if (key.kind != NodeKind::Call || key.children.size() != 1) return std::nullopt;
        const std::string_view name = key.function->name;
        const bool isDay = name == "DTOS";
        if (!isDay && name != "UPPER" && name != "LOWER") return std::nullopt;
        std::optional<KeyRange> range = FindWhole(*key.children[0]);
        if (!range || (!isDay && !range->prefix)) return std::nullopt;
        for (std::optional<Result>* bound : {&range->low, &range->high}) {
            if (*bound) **bound = determination_.Apply(key, **bound);
        }
        if (isDay) range->lowIncluded = range->highIncluded = true;
        return range;
    }

    std::optional<KeyRange> RangeOfTerm(const Node& term, const std::string& canonical, Type keyType) {
        if (term.kind == NodeKind::Compare) return RangeOfComparison(term, canonical, keyType);
        if (term.kind != NodeKind::Call || term.children.empty()) return std::nullopt;
        const std::string_view name = term.function->name;
        const bool isKnown = name == "BETWEEN" || name == "INLIST" || name == "LIKE";
        if (!isKnown || CanonicalText(*term.children[0]) != canonical) return std::nullopt;
        std::vector<Result> values;
        for (std::size_t i = 1; i < term.children.size(); ++i) {
            const std::optional<Slot> value = ConstantValue(*term.children[i]);
            if (!value) return std::nullopt;
            values.push_back(ResultOf(*value, keyType));
            if (name == "LIKE") return PrefixRange(PrefixOf(value->text));
        }
        KeyRange range;
        const auto less = [](const Result& a, const Result& b) { return Order(a, b) < 0; };
        const bool isList = name == "INLIST";
        range.low = isList ? *std::min_element(values.begin(), values.end(), less) : values[0];
        range.high = isList ? *std::max_element(values.begin(), values.end(), less) : values[1];
        return range;
    }

    std::optional<KeyRange> RangeOfComparison(const Node& term, const std::string& canonical, Type keyType) {
        const bool isSwapped = IsConstant(*term.children[0]);
        const Node& expression = *term.children[isSwapped ? 1 : 0];
        const std::optional<Slot> value = ConstantValue(*term.children[isSwapped ? 0 : 1]);
        const Operator op = isSwapped ? Mirrored(term.op) : term.op;
        if (!value || op == Operator::NotEqual) return std::nullopt;
        if (CanonicalText(expression) != canonical) {
            return op == Operator::Equal ? RangeOfBeginning(expression, *value, canonical) : std::nullopt;
        }
        KeyRange range;
        const Result bound = ResultOf(*value, keyType);
        // Digits compare exactly in the condition and as doubles in the key, and a day has no time: values
        // beside the bound may have its key.
        const bool isExact = keyType != Type::Number && (keyType != Type::Date || value->milliseconds == 0);
        if (op != Operator::Less && op != Operator::LessEqual) {
            range.low = bound;
            range.lowIncluded = op != Operator::Greater || !isExact;
        }
        if (op != Operator::Greater && op != Operator::GreaterEqual) {
            range.high = bound;
            range.highIncluded = op != Operator::Less || !isExact;
        }
        return range;
    }

    /// LEFT(key, n) = "abc" and SUBSTR(key, 1, n) = "abc".
    static std::optional<KeyRange> RangeOfBeginning(const Node& expression, const Slot& value,
                                                    const std::string& canonical) {
        if (expression.kind != NodeKind::Call || value.type != Type::Text) return std::nullopt;
        const bool isLeft = expression.function->name == "LEFT";
        const bool isSubStr = expression.function->name == "SUBSTR" && expression.children.size() == 3 &&
                              widths::NumberOr(expression, 1, 0) == 1;
        if (!(isLeft || isSubStr) || CanonicalText(*expression.children[0]) != canonical) return std::nullopt;
        return PrefixRange(WithoutPadding(value.text));
    }

    static std::optional<KeyRange> PrefixRange(std::optional<std::string_view> prefix) {
        if (!prefix || prefix->empty()) return std::nullopt;
        KeyRange range;
        range.low.emplace();
        range.low->type = Type::Text;
        range.low->isNull = false;
        range.low->text = *prefix;
        range.prefix = true;
        return range;
    }

    std::optional<Slot> ConstantValue(const Node& node) {
        if (!IsConstant(node) || node.isForeign) return std::nullopt;
        const Slot& value = compiler_.Evaluate(node);
        if (value.isNull || value.isEmpty) return std::nullopt;
        return value;
    }

    static void CollectParts(const Node& node, std::vector<const Node*>& parts) {
        const bool isJoin =
            node.kind == NodeKind::Arithmetic && node.op == Operator::Add && node.type == Type::Text;
        if (!isJoin) return parts.push_back(&node);
        for (const NodePtr& child : node.children)
            CollectParts(*child, parts);
    }

    /// Texts joined by "+": the leading parts with one value each, then one with a range.
    std::optional<KeyRange> FindComposite(const Node& key) {
        std::vector<const Node*> parts;
        CollectParts(key, parts);
        if (parts.size() < 2 || key.width > kLongestKey) return std::nullopt;
        std::string low;
        std::string high;
        bool hasLow = false;
        bool hasHigh = false;
        for (const Node* part : parts) {
            std::optional<KeyRange> range = FindWhole(*part);
            if (!range) break;
            const bool isSingle = IsSingleValue(*range);
            if (range->low) {
                low += range->low->text;
                hasLow = true;
            }
            if (range->high) {
                high += range->high->text;
                hasHigh = true;
            } else if (range->prefix) {
                high += range->low->text;
                hasHigh = true;
            } else {
                hasHigh = hasHigh || !high.empty();
            }
            if (!isSingle || !part->isFixedWidth || range->low->text.size() > part->width) {
                // A bound of a whole part goes up to the values that end with it in all later parts.
                if (range->high && part->isFixedWidth && range->high->text.size() < part->width) {
                    high.append(part->width - range->high->text.size(), ' ');
                }
                break;
            }
            low.append(part->width - range->low->text.size(), PadsWithNul(*part) ? '\0' : ' ');
            high.append(part->width - range->high->text.size(), ' ');
        }
        if (!hasLow && !hasHigh) return std::nullopt;
        KeyRange result;
        if (hasLow) result.low = TextResult(std::move(low));
        if (hasHigh) {
            if (high.size() < key.width) high.append(key.width - high.size(), kHighest);
            result.high = TextResult(std::move(high));
        }
        return result;
    }

    /// Character fields may be padded with NULs; what is made of numbers and dates never is.
    static bool PadsWithNul(const Node& node) {
        if (node.kind == NodeKind::Field) return node.type == Type::Text;
        return std::any_of(node.children.begin(), node.children.end(),
                           [](const NodePtr& child) { return PadsWithNul(*child); });
    }

    static Result TextResult(std::string text) {
        Result result;
        result.type = Type::Text;
        result.isNull = false;
        result.text = std::move(text);
        return result;
    }

    Compiler& compiler_;
    FieldDetermination determination_;
    std::vector<const Node*> terms_;
};

}  // namespace

std::optional<KeyRange> FindRange(const Node& condition, Compiler& compiler, const Node& key) {
    if (IsConstant(key)) return std::nullopt;
    return RangeFinder(condition, compiler).Find(key);
}

}  // namespace zu::expression
