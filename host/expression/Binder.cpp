#include "host/expression/Binder.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "host/expression/CharacterUnits.h"
#include "host/expression/Comparison.h"
#include "host/expression/Fault.h"
#include "host/expression/FieldLookup.h"
#include "host/expression/Function.h"
#include "portable/text/Utf.h"

namespace zu::expression {

namespace {

std::size_t AddWidths(std::size_t a, std::size_t b) noexcept {
    return a > kUnboundedWidth - b ? kUnboundedWidth : a + b;
}

std::string_view OperatorText(Operator op) noexcept {
    switch (op) {
        case Operator::Add:
            return "\"+\"";
        case Operator::Subtract:
            return "\"-\"";
        case Operator::Multiply:
            return "\"*\"";
        case Operator::Divide:
            return "\"/\"";
        case Operator::Modulo:
            return "\"%\"";
        case Operator::Power:
            return "\"^\"";
        default:
            return "the comparison";
    }
}

bool IsDay(Type type) noexcept {
    return type == Type::Date || type == Type::DateTime;
}

class Binder {
public:
    Binder(const RecordLayout* layout, const text::CodePage& codePage)
        : layout_(layout), codePage_(codePage), countsCharacters_(CountsCharacters(codePage)) {}

    void Visit(Node& node) {
        for (const NodePtr& child : node.children)
            Visit(*child);
        switch (node.kind) {
            case NodeKind::Literal:
                return BindLiteral(node);
            case NodeKind::Name:
                return BindName(node);
            case NodeKind::Field:
                return;
            case NodeKind::Negate:
                RequireType(*node.children[0], Type::Number, "behind the sign");
                node.type = Type::Number;
                return;
            case NodeKind::Not:
                RequireType(*node.children[0], Type::Boolean, "behind NOT");
                node.type = Type::Boolean;
                return;
            case NodeKind::And:
            case NodeKind::Or:
                for (const NodePtr& child : node.children) {
                    RequireType(*child, Type::Boolean,
                                node.kind == NodeKind::And ? "beside AND" : "beside OR");
                }
                node.type = Type::Boolean;
                return;
            case NodeKind::Contains:
                RequireType(*node.children[0], Type::Text, "on the left of \"$\"");
                RequireType(*node.children[1], Type::Text, "on the right of \"$\"");
                node.type = Type::Boolean;
                return;
            case NodeKind::Compare:
                return BindComparison(node);
            case NodeKind::Arithmetic:
                return BindArithmetic(node);
            case NodeKind::Call:
                return BindCall(node);
        }
    }

private:
    void BindLiteral(Node& node) {
        if (node.type == Type::Number) {
            const char* end = node.digits.data() + node.digits.size();
            const auto [stop, fault] = std::from_chars(node.digits.data(), end, node.number);
            if (fault == std::errc::result_out_of_range && node.digits.find("e-") != std::string::npos) {
                node.number = 0;
            } else if (fault != std::errc() || stop != end) {
                FailExpected(node.position, "a number below 1.8E308", Quoted(node.digits));
            }
            return;
        }
        if (node.type != Type::Text) return;
        std::u16string_view rest = node.literalText;
        while (!rest.empty()) {
            std::size_t bad = 0;
            if (const auto bytes = codePage_.Encode(rest, &bad)) {
                node.bytes += *bytes;
                break;
            }
            // A character that no record can hold. Two bytes that never stand in a text keep the literal from
            // being found inside one; comparisons look at the mark.
            node.isForeign = true;
            if (const auto bytes = codePage_.Encode(rest.substr(0, bad))) node.bytes += *bytes;
            node.bytes.append("\0\xFF", 2).append(text::ToUtf8(rest.substr(bad, 1)));
            rest.remove_prefix(std::min(bad + 1, rest.size()));
        }
        node.width = node.bytes.size();
        node.isFixedWidth = true;
    }

    void BindName(Node& node) {
        node.boundName = text::ToUtf8(node.name);
        if (layout_ == nullptr) return;
        node.kind = NodeKind::Field;
        node.field = FindField(*layout_, node);
        const FieldLayout& field = layout_->fields[node.field];
        node.boundName = field.name;
        node.type = TypeOf(field.storage);
        if (node.type != Type::Text) return;
        node.width = field.storage == Storage::Memo ? kUnboundedWidth : field.width;
        node.isFixedWidth = field.storage == Storage::Character;
    }

    /// `where` completes "expected a number ...".
    static void RequireType(const Node& node, Type wanted, std::string_view where) {
        if (node.type == wanted || node.type == Type::Unknown) return;
        FailExpected(node.begin, std::string(TypeName(wanted)) + " " + std::string(where),
                     TypeName(node.type));
    }

    static void BindComparison(Node& node) {
        const Node& left = *node.children[0];
        const Node& right = *node.children[1];
        if (!AreComparable(left.type, right.type)) {
            FailExpected(right.begin,
                         std::string(TypeName(left.type)) + " to compare with the " +
                             std::string(TypeName(left.type).substr(2)) + " on the left",
                         TypeName(right.type));
        }
        node.type = Type::Boolean;
    }

    static void BindArithmetic(Node& node) {
        const Node& left = *node.children[0];
        const Node& right = *node.children[1];
        const std::string where = "beside " + std::string(OperatorText(node.op));
        const bool isSum = node.op == Operator::Add || node.op == Operator::Subtract;
        if (!isSum) {
            RequireType(left, Type::Number, where);
            RequireType(right, Type::Number, where);
            node.type = Type::Number;
            return;
        }
        if (left.type == Type::Text || right.type == Type::Text) {
            RequireType(left, Type::Text, where);
            RequireType(right, Type::Text, where);
            node.type = Type::Text;
            node.width = AddWidths(left.width, right.width);
            node.isFixedWidth = left.isFixedWidth && right.isFixedWidth;
            return;
        }
        if (left.type == Type::Boolean || right.type == Type::Boolean) {
            const Node& wrong = left.type == Type::Boolean ? left : right;
            FailExpected(wrong.begin, "a number, a text or a date " + where, "a logical");
        }
        if (IsDay(left.type) && IsDay(right.type)) {
            if (node.op == Operator::Add) RequireType(right, Type::Number, "to add to the date");
            node.type = Type::Number;
        } else if (IsDay(left.type)) {
            // NULL or a name may turn out to be a date as well.
            const bool isOpen = right.type == Type::Unknown && node.op == Operator::Subtract;
            node.type = isOpen ? Type::Unknown : left.type;
        } else if (IsDay(right.type)) {
            if (node.op == Operator::Subtract)
                RequireType(left, Type::Date, "on the left of \"-\" as on its right");
            node.type = node.op == Operator::Add ? right.type : Type::Number;
        } else {
            const bool isOpen = left.type == Type::Unknown || right.type == Type::Unknown;
            node.type = isOpen ? Type::Unknown : Type::Number;
        }
    }

    void BindCall(Node& node) const {
        std::string name = text::ToUtf8(node.name);
        for (char& c : name)
            c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
        node.function = FindFunction(name, node.children.size());
        if (node.function == nullptr) {
            const auto names = FunctionNames();
            const std::string nearest = NearestName(name, {names.begin(), names.end()});
            FailExpected(node.position,
                         nearest.empty() ? "the name of a function"
                                         : "the name of a function (perhaps " + nearest + ")",
                         Quoted(node.name));
        }
        CheckCount(node);
        for (std::size_t i = 0; i < node.children.size(); ++i)
            CheckArgument(node, i);
        node.type = ResultType(node);
        if (node.function->width == nullptr) return;
        node.function->width(node);
        if (!countsCharacters_) return;
        // Rules count units; a character of UTF-8 has up to four bytes.
        constexpr std::size_t kMostBytes = 4;
        node.width = node.width > kUnboundedWidth / kMostBytes ? kUnboundedWidth : node.width * kMostBytes;
        node.isFixedWidth = false;
    }

    static void CheckCount(const Node& call) {
        const Function& function = *call.function;
        const std::size_t count = call.children.size();
        const std::size_t least = function.leastArguments();
        const std::size_t most = function.mostArguments();
        if (count >= least && count <= most) return;
        std::string expected = std::to_string(least);
        if (most == SIZE_MAX) {
            expected += " or more";
        } else if (most != least) {
            expected += " to " + std::to_string(most);
        }
        const bool isOne = most == 1;
        FailExpected(call.position,
                     expected + (isOne ? " argument for " : " arguments for ") + std::string(function.name),
                     std::to_string(count));
    }

    static void CheckArgument(const Node& call, std::size_t index) {
        const Function& function = *call.function;
        const Node& argument = *call.children[index];
        if (argument.type == Type::Unknown) return;
        const auto require = [&](Type wanted) {
            if (argument.type == wanted) return;
            FailExpected(argument.begin,
                         std::string(TypeName(wanted)) + " as argument " + std::to_string(index + 1) +
                             " of " + std::string(function.name),
                         TypeName(argument.type));
        };
        switch (function.argumentLetter(index)) {
            case 'T':
                return require(Type::Text);
            case 'N':
                return require(Type::Number);
            case 'B':
                return require(Type::Boolean);
            case 'D':
                if (!IsDay(argument.type)) require(Type::Date);
                return;
            default:
                if (function.result == 'C' && IsCaseCondition(call, index)) require(Type::Boolean);
                return;
        }
    }

    /// ICASE: conditions and values in turn, a last value alone for "else".
    static bool IsCaseCondition(const Node& call, std::size_t index) noexcept {
        return index % 2 == 0 && index + 1 < call.children.size();
    }

    static Type ResultType(const Node& call) {
        switch (call.function->result) {
            case 'T':
                return Type::Text;
            case 'N':
                return Type::Number;
            case 'D':
                return Type::Date;
            case 'M':
                return Type::DateTime;
            case 'B':
                CommonType(call);
                return Type::Boolean;
            case '1':
                return call.children[0]->type;
            default:
                return CommonType(call);
        }
    }

    /// The type of all arguments that are values; a fault when they do not go together.
    static Type CommonType(const Node& call) {
        Type common = Type::Unknown;
        for (std::size_t i = 0; i < call.children.size(); ++i) {
            const Node& argument = *call.children[i];
            if (call.function->argumentLetter(i) != 'X') continue;
            if (call.function->result == 'C' && IsCaseCondition(call, i)) continue;
            if (!AreComparable(common, argument.type)) {
                FailExpected(argument.begin,
                             std::string(TypeName(common)) + " as argument " + std::to_string(i + 1) +
                                 " of " + std::string(call.function->name) + " like the others",
                             TypeName(argument.type));
            }
            if (common == Type::Unknown || argument.type == Type::DateTime) common = argument.type;
        }
        return common;
    }

    const RecordLayout* layout_;
    const text::CodePage& codePage_;
    bool countsCharacters_;
};

}  // namespace

void Bind(Node& root, const RecordLayout* layout, const text::CodePage& codePage) {
    Binder(layout, codePage).Visit(root);
}

bool IsConstant(const Node& node) noexcept {
    if (node.kind == NodeKind::Field || node.kind == NodeKind::Name) return false;
    if (node.kind == NodeKind::Call && (node.function == nullptr || node.function->usesRow)) return false;
    return std::all_of(node.children.begin(), node.children.end(),
                       [](const NodePtr& child) { return IsConstant(*child); });
}

}  // namespace zu::expression
