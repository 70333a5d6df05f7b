#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/expression/DateText.h"

namespace zu::expression {

enum class TokenKind : std::uint8_t {
    End,
    Name,       ///< a bare word
    Bracketed,  ///< [a name with anything in it]
    Number,
    Text,
    Date,
    True,
    False,
    Null,
    And,
    Or,
    Not,
    Like,
    Between,
    In,
    Is,
    LeftParenthesis,
    RightParenthesis,
    Comma,
    Dot,
    Arrow,
    Plus,
    Minus,
    Star,
    Slash,
    Percent,
    Caret,
    Dollar,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::size_t begin = 0;  ///< zero-based position in the source
    std::size_t end = 0;
    std::u16string text;  ///< Name, Bracketed: the name; Text: the content
    std::string digits;   ///< Number: as written
    DateValue date;       ///< Date
};

}  // namespace zu::expression
