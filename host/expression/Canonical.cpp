#include "host/expression/Canonical.h"

#include <array>

#include "host/expression/DateText.h"
#include "host/expression/Function.h"
#include "host/expression/NumberFormat.h"
#include "portable/text/CaseMap.h"
#include "portable/text/Utf.h"

namespace zu::expression {

namespace {

constexpr std::array<std::string_view, 13> kOperators{"",  "+",  "-", "*",  "/", "%", "^",
                                                      "=", "<>", "<", "<=", ">", ">="};

void Append(const Node& node, std::string& out);

void AppendQuoted(std::string_view text, char opening, char closing, std::string& out) {
    out.push_back(opening);
    for (const char c : text) {
        if (c == closing) out.push_back(c);
        out.push_back(c);
    }
    out.push_back(closing);
}

void AppendTime(std::int32_t milliseconds, std::string& out) {
    out.push_back(' ');
    AppendReadableTime(milliseconds, out);
    const std::int32_t rest = milliseconds % 1000;
    if (rest == 0) return;
    out.push_back('.');
    for (const std::int32_t place : {100, 10, 1})
        out.push_back(static_cast<char>('0' + rest / place % 10));
}

void AppendLiteral(const Node& node, std::string& out) {
    switch (node.type) {
        case Type::Boolean:
            out += node.boolean ? "TRUE" : "FALSE";
            break;
        case Type::Number:
            AppendShortest(node.number, out);
            break;
        case Type::Text:
            AppendQuoted(text::ToUtf8(node.literalText), '"', '"', out);
            break;
        case Type::Date:
        case Type::DateTime:
            out += "{^";
            if (!node.date.isEmpty) AppendDigitDate(node.date.julianDay, out);
            if (node.type == Type::DateTime) AppendTime(node.date.milliseconds, out);
            out += "}";
            break;
        case Type::Unknown:
            out += "NULL";
            break;
    }
}

void AppendName(std::string_view name, std::string& out) {
    std::u16string characters = text::ToUtf16(name);
    bool isWord = !characters.empty() && !(characters[0] >= u'0' && characters[0] <= u'9');
    for (char16_t& c : characters) {
        c = text::ToUpper(c);
        isWord = isWord && (c >= 0x80 || c == u'_' || (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z'));
    }
    const std::string upper = text::ToUtf8(characters);
    if (isWord) {
        out += upper;
    } else {
        AppendQuoted(upper, '[', ']', out);
    }
}

void AppendJoined(const Node& node, std::string_view separator, std::string& out) {
    out.push_back('(');
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        if (i > 0) out += separator;
        Append(*node.children[i], out);
    }
    out.push_back(')');
}

void Append(const Node& node, std::string& out) {
    switch (node.kind) {
        case NodeKind::Literal:
            return AppendLiteral(node, out);
        case NodeKind::Name:
        case NodeKind::Field:
            return AppendName(node.boundName, out);
        case NodeKind::Negate:
            out += "-";
            return AppendJoined(node, "", out);
        case NodeKind::Not:
            out += "NOT";
            return AppendJoined(node, "", out);
        case NodeKind::And:
            return AppendJoined(node, " AND ", out);
        case NodeKind::Or:
            return AppendJoined(node, " OR ", out);
        case NodeKind::Contains:
            return AppendJoined(node, "$", out);
        case NodeKind::Arithmetic:
        case NodeKind::Compare:
            return AppendJoined(node, kOperators[static_cast<std::size_t>(node.op)], out);
        case NodeKind::Call:
            out += node.function->name;
            return AppendJoined(node, ",", out);
    }
}

}  // namespace

std::string CanonicalText(const Node& root) {
    std::string out;
    Append(root, out);
    return out;
}

}  // namespace zu::expression
