#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/expression/DateText.h"
#include "host/expression/Program.h"

namespace zu::expression {

struct Function;
struct Node;
using NodePtr = std::unique_ptr<Node>;

enum class NodeKind : std::uint8_t {
    Literal,
    Name,  ///< as parsed; binding makes it a Field where there is a layout
    Field,
    Negate,  ///< unary minus
    Not,
    And,         ///< any number of children
    Or,          ///< any number of children
    Arithmetic,  ///< + - * / % ^
    Contains,    ///< $
    Compare,
    Call  ///< also BETWEEN, IN, LIKE and IS NULL
};

enum class Operator : std::uint8_t {
    None,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Power,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual
};

/// The width of texts that nothing bounds (memos).
inline constexpr std::size_t kUnboundedWidth = SIZE_MAX;

/// Nodes below one another, and parentheses and calls inside one another. Keeps every walk over a tree far
/// from the end of the smallest stack (1 MB, less what the script engine has taken).
inline constexpr std::size_t kMaxDepth = 250;

/// One node of an expression. The parser sets the upper half, binding the lower one.
struct Node {
    NodeKind kind = NodeKind::Literal;
    Operator op = Operator::None;
    std::size_t begin = 0;  ///< the part of the source that the node stands for, parentheses left out
    std::size_t end = 0;
    std::size_t position = 0;  ///< where faults are reported: the operator or the name
    std::size_t depth = 1;
    std::vector<NodePtr> children;
    std::u16string name;       ///< Name: as written; Call: the function's name
    std::u16string qualifier;  ///< Name: the table in front of it, empty for none
    std::u16string literalText;
    std::string digits;    ///< Literal numbers: as written, with the sign
    DateValue date;        ///< Literal dates
    bool boolean = false;  ///< Literal logicals

    Type type = Type::Unknown;
    std::size_t width = 0;               ///< texts: the greatest number of bytes
    bool isFixedWidth = false;           ///< texts: every value has `width` bytes
    bool isForeign = false;              ///< a literal with characters that the table's code page lacks
    double number = 0;                   ///< Literal numbers
    std::string bytes;                   ///< Literal texts: in the code page
    std::size_t field = 0;               ///< Field: position in the layout
    std::string boundName;               ///< Field: its name in the layout; Name: what is asked for, UTF-8
    const Function* function = nullptr;  ///< Call
};

}  // namespace zu::expression
