#include "host/expression/FieldDetermination.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/expression/Binder.h"
#include "host/expression/Comparison.h"
#include "host/expression/Function.h"

namespace zu::expression {

namespace {

/// Functions whose result differs at its end only when a text is padded with NULs instead of blanks.
bool KeepsPaddingAtEnd(std::string_view function) noexcept {
    static constexpr std::array<std::string_view, 8> kNames{"UPPER", "LOWER",   "PROPER", "LEFT",
                                                            "RTRIM", "ALLTRIM", "LTRIM",  "SUBSTR"};
    return std::find(kNames.begin(), kNames.end(), function) != kNames.end();
}

bool HasTextField(const Node& node) {
    if (node.kind == NodeKind::Field) return node.type == Type::Text;
    return std::any_of(node.children.begin(), node.children.end(),
                       [](const NodePtr& child) { return HasTextField(*child); });
}

/// Nothing in `node` looks at the padding of text fields.
bool IgnoresPadding(const Node& node) {
    if (node.kind == NodeKind::Field || !HasTextField(node)) return true;
    if (node.kind != NodeKind::Call || !KeepsPaddingAtEnd(node.function->name)) return false;
    return IgnoresPadding(*node.children[0]);
}

Result ResultOf(const Slot& value) {
    Result result;
    result.type = value.type;
    result.isNull = value.isNull;
    result.isEmpty = value.isEmpty;
    result.boolean = value.boolean;
    result.number = value.number;
    result.julianDay = value.julianDay;
    result.milliseconds = value.milliseconds;
    if (value.type == Type::Text) result.text = value.text;
    return result;
}

}  // namespace

void FieldDetermination::Learn(const Node& term) {
    if (term.kind != NodeKind::Compare || term.op != Operator::Equal) return;
    const bool isSwapped = term.children[1]->kind == NodeKind::Field;
    const Node& field = *term.children[isSwapped ? 1 : 0];
    const Node& constant = *term.children[isSwapped ? 0 : 1];
    if (field.kind != NodeKind::Field || !IsConstant(constant) || constant.isForeign) return;
    Result value = ResultOf(compiler_.Evaluate(constant));
    // A blank logical equals false and is not the same in every expression; a day has many moments.
    if (value.isNull || value.isEmpty || value.type != field.type || value.type == Type::Boolean) return;
    if (value.type == Type::Text) {
        if (!field.isFixedWidth || WithoutPadding(value.text).size() > field.width) return;
        value.text = WithoutPadding(value.text);
        value.text.resize(field.width, ' ');
    }
    fields_.emplace(field.field, Known{std::move(value), field.width});
}

NodePtr FieldDetermination::LiteralOf(const Result& value) {
    auto literal = std::make_unique<Node>();
    literal->kind = NodeKind::Literal;
    literal->type = value.type;
    literal->number = value.number;
    literal->bytes = value.text;
    literal->date.julianDay = value.julianDay;
    literal->date.milliseconds = value.milliseconds;
    literal->boolean = value.boolean;
    return literal;
}

NodePtr FieldDetermination::Substitute(const Node& node) const {
    if (node.kind == NodeKind::Name) return nullptr;
    if (node.kind == NodeKind::Call && node.function->usesRow) return nullptr;
    if (node.kind == NodeKind::Field) {
        const auto known = fields_.find(node.field);
        return known == fields_.end() ? nullptr : LiteralOf(known->second.value);
    }
    auto copy = std::make_unique<Node>();
    copy->kind = node.kind;
    copy->op = node.op;
    copy->position = node.position;
    copy->type = node.type;
    copy->number = node.number;
    copy->bytes = node.bytes;
    copy->date = node.date;
    copy->boolean = node.boolean;
    copy->isForeign = node.isForeign;
    copy->function = node.function;
    for (const NodePtr& child : node.children) {
        NodePtr substituted = Substitute(*child);
        if (substituted == nullptr) return nullptr;
        copy->children.push_back(std::move(substituted));
    }
    return copy;
}

Result FieldDetermination::Evaluate(const Node& constant) {
    return ResultOf(compiler_.Evaluate(constant));
}

std::optional<Result> FieldDetermination::ValueOf(const Node& expression) {
    if (fields_.empty() || !IgnoresPadding(expression)) return std::nullopt;
    const NodePtr constant = Substitute(expression);
    if (constant == nullptr) return std::nullopt;
    Result value = Evaluate(*constant);
    if (value.isNull || value.isEmpty) return std::nullopt;
    return value;
}

Result FieldDetermination::Apply(const Node& call, const Result& argument) {
    Node copy;
    copy.kind = NodeKind::Call;
    copy.type = call.type;
    copy.function = call.function;
    copy.children.push_back(LiteralOf(argument));
    return Evaluate(copy);
}

}  // namespace zu::expression
