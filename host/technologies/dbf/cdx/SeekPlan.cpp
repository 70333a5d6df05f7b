#include "host/technologies/dbf/cdx/SeekPlan.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "host/technologies/dbf/cdx/CriterionValue.h"
#include "portable/calendar/Calendar.h"
#include "portable/error/Error.h"
#include "portable/text/NumberText.h"

namespace zu::dbf::cdx {

namespace {

using expression::Result;
using technologies::KeyCriterion;
using technologies::Value;

std::string_view WithoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\0'))
        text.remove_suffix(1);
    return text;
}

std::string DigitsOfDay(std::int32_t julianDay) {
    if (julianDay == 0) return {};
    const calendar::Date date = calendar::FromJulianDay(julianDay);
    char digits[40];
    std::snprintf(digits, sizeof digits, "%04d%02d%02d", date.year, date.month, date.day);
    return digits;
}

std::optional<std::string> StrDigits(double number, const PartForm& part) {
    std::string digits(part.width, ' ');
    if (!text::PrintNumber(number, static_cast<unsigned>(part.width), part.decimals, digits.data())) {
        return std::nullopt;  // the key holds asterisks for such a number, never its digits
    }
    return digits;
}

/// What a criterion asks of the text of a part.
struct PartText {
    std::string text;
    bool exact = true;
};

// The first digits of a date are a prefix that makes sense: all records of a month.
bool IsDatePrefix(const Value& value) {
    if (value.kind != Value::Kind::Text || value.text.empty() || value.text.size() >= 8) return false;
    return std::all_of(value.text.begin(), value.text.end(),
                       [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

// Nothing: no record can have it.
std::optional<PartText> TextFor(const KeyCriterion& criterion, const PartForm& part,
                                const text::CodePage& codePage) {
    const Value& value = criterion.value;
    if (value.kind == Value::Kind::Null) return PartText{};
    PartText wanted;
    wanted.exact = criterion.exact;
    if (part.kind == PartKind::Dtos) {
        if (!criterion.exact && IsDatePrefix(value)) {
            for (const char16_t c : value.text)
                wanted.text.push_back(static_cast<char>(c));
            return wanted;
        }
        wanted.exact = true;
        wanted.text = DigitsOfDay(MomentOf(value).julianDay);
        return wanted;
    }
    if (part.kind == PartKind::Str) {
        wanted.exact = true;
        const auto digits = StrDigits(NumberOf(value), part);
        if (!digits) return std::nullopt;
        wanted.text = *digits;
        return wanted;
    }
    const auto bytes = BytesOf(value, codePage);
    if (!bytes) return std::nullopt;
    wanted.text = WithoutTrailingBlanks(*bytes);
    if (part.kind == PartKind::Upper) {
        for (char& c : wanted.text)
            c = static_cast<char>(codePage.upper()[static_cast<unsigned char>(c)]);
    }
    if (wanted.text.size() > part.width) return std::nullopt;
    return wanted;
}

}  // namespace

SeekPlan::SeekPlan(const std::vector<KeyCriterion>& criteria, const std::vector<PartForm>& parts,
                   const KeyEncoder& encoder, const text::CodePage& codePage) {
    if (criteria.size() > parts.size()) {
        throw Error(ErrorKind::InvalidArgument, std::to_string(criteria.size()) +
                                                    " key values are given, the index has " +
                                                    std::to_string(parts.size()) + " key fields");
    }
    if (!criteria.empty()) {
        if (encoder.form().encoding == KeyEncoding::Text) {
            PlanTexts(criteria, parts, encoder.form(), codePage);
        } else if (!IsBlankText(criteria.front().value)) {
            PlanSingle(criteria.front(), encoder);
        }
    }
    if (bounds_.low.empty()) bounds_ = KeyBounds::Everything(encoder.form().length());
}

void SeekPlan::PlanSingle(const KeyCriterion& criterion, const KeyEncoder& encoder) {
    const Value& value = criterion.value;
    Result wanted;
    wanted.isNull = value.kind == Value::Kind::Null;
    if (wanted.isNull) {
        bounds_ = KeyBounds::Of(encoder, wanted);
        return;
    }
    switch (encoder.form().encoding) {
        case KeyEncoding::Integer32:
        case KeyEncoding::Double:
        case KeyEncoding::Currency:
            wanted.type = expression::Type::Number;
            wanted.number = NumberOf(value);
            break;
        case KeyEncoding::Date:
        case KeyEncoding::DateTime: {
            const Moment moment = MomentOf(value);
            wanted.type = expression::Type::DateTime;
            wanted.julianDay = moment.julianDay;
            wanted.milliseconds = moment.milliseconds;
            break;
        }
        case KeyEncoding::Logical:
            wanted.type = expression::Type::Boolean;
            wanted.boolean = TruthOf(value);
            break;
        case KeyEncoding::Text:
            break;  // planned elsewhere
    }
    if (encoder.form().encoding == KeyEncoding::Integer32) {
        using Limits = std::numeric_limits<std::int32_t>;
        // An integer key never equals a fraction or a number beyond its range; NaN is neither.
        isEmpty_ = !(wanted.number >= Limits::min() && wanted.number <= Limits::max()) ||
                   std::nearbyint(wanted.number) != wanted.number;
    }
    const bool isMoment = encoder.form().encoding == KeyEncoding::DateTime && wanted.julianDay != 0;
    bounds_ = isMoment ? KeyBounds::AroundMoment(encoder, wanted) : KeyBounds::Of(encoder, wanted);
}

void SeekPlan::PlanTexts(const std::vector<KeyCriterion>& criteria, const std::vector<PartForm>& parts,
                         const KeyForm& form, const text::CodePage& codePage) {
    if (parts.size() == 1 && criteria.front().value.kind == Value::Kind::Null) {
        bounds_ = KeyBounds::Prefix(form, std::string(form.width, ' '));
        if (form.nullable) bounds_.low = bounds_.high = KeyBuffer(form.length(), std::byte{0});
        return;
    }

    std::string prefix;
    bool isPrefixOpen = true;  // the next part's text still follows directly
    for (std::size_t i = 0; i < criteria.size(); ++i) {
        const PartForm& part = parts[i];
        if (i == 0 && IsBlankText(criteria[i].value)) {
            isPrefixOpen = false;
            continue;
        }
        const auto wanted = TextFor(criteria[i], part, codePage);
        if (!wanted) {
            isEmpty_ = true;
            return;
        }
        if (!isPrefixOpen) {
            tests_.push_back({&part, wanted->text, wanted->exact});
            continue;
        }
        prefix += wanted->text;
        // The last part of a key fills what is left of it.
        const bool isLast = i + 1 == parts.size();
        if (wanted->exact && isLast && prefix.size() < form.width) {
            prefix.resize(form.width, ' ');
        } else if (wanted->exact && part.fixedWidth) {
            prefix.resize(prefix.size() - wanted->text.size() + part.width, ' ');
        } else {
            isPrefixOpen = false;
            if (wanted->exact && !isLast) tests_.push_back({&part, wanted->text, true});
        }
    }
    if (prefix.size() > form.width) {
        // The tag's keys are shorter than its parts together: what is cut off must be tested.
        prefix.resize(form.width);
        for (std::size_t i = 0; i < criteria.size(); ++i) {
            if (i == 0 && IsBlankText(criteria[i].value)) continue;
            if (const auto wanted = TextFor(criteria[i], parts[i], codePage)) {
                tests_.push_back({&parts[i], wanted->text, wanted->exact});
            }
        }
    }
    if (!prefix.empty()) bounds_ = KeyBounds::Prefix(form, prefix);
}

bool SeekPlan::Test(const expression::Row& row) {
    for (const PartTest& test : tests_) {
        test.part->program.Evaluate(row, value_);
        const std::string_view actual = value_.isNull ? std::string_view() : std::string_view(value_.text);
        const bool isMet = test.exact ? WithoutTrailingBlanks(actual) == WithoutTrailingBlanks(test.text)
                                      : actual.starts_with(test.text);
        if (!isMet) return false;
    }
    return true;
}

}  // namespace zu::dbf::cdx
