#include "host/expression/Lexer.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "host/expression/Fault.h"

namespace zu::expression {

namespace {

struct Word {
    std::u16string_view name;
    TokenKind kind;
};

constexpr std::array<Word, 10> kWords{{{u"AND", TokenKind::And},
                                       {u"OR", TokenKind::Or},
                                       {u"NOT", TokenKind::Not},
                                       {u"LIKE", TokenKind::Like},
                                       {u"BETWEEN", TokenKind::Between},
                                       {u"IN", TokenKind::In},
                                       {u"IS", TokenKind::Is},
                                       {u"NULL", TokenKind::Null},
                                       {u"TRUE", TokenKind::True},
                                       {u"FALSE", TokenKind::False}}};

constexpr std::array<Word, 8> kDottedWords{{{u"T", TokenKind::True},
                                            {u"Y", TokenKind::True},
                                            {u"F", TokenKind::False},
                                            {u"N", TokenKind::False},
                                            {u"AND", TokenKind::And},
                                            {u"OR", TokenKind::Or},
                                            {u"NOT", TokenKind::Not},
                                            {u"NULL", TokenKind::Null}}};

bool IsBlank(char16_t c) noexcept {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == 0x00A0 || c == 0x3000 || c == 0xFEFF;
}
bool IsDigit(char16_t c) noexcept {
    return c >= u'0' && c <= u'9';
}
bool IsNameStart(char16_t c) noexcept {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_' || (c >= 0x80 && !IsBlank(c));
}
bool IsNamePart(char16_t c) noexcept {
    return IsNameStart(c) || IsDigit(c);
}
char16_t UpperAscii(char16_t c) noexcept {
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
}

bool SameWord(std::u16string_view text, std::u16string_view upper) noexcept {
    return std::equal(text.begin(), text.end(), upper.begin(), upper.end(),
                      [](char16_t a, char16_t b) { return UpperAscii(a) == b; });
}

/// After such a token an operator follows, so that "#" means "not equal" and not a date.
bool EndsOperand(TokenKind kind) noexcept {
    switch (kind) {
        case TokenKind::Name:
        case TokenKind::Bracketed:
        case TokenKind::Number:
        case TokenKind::Text:
        case TokenKind::Date:
        case TokenKind::True:
        case TokenKind::False:
        case TokenKind::Null:
        case TokenKind::RightParenthesis:
            return true;
        default:
            return false;
    }
}

class Lexer {
public:
    explicit Lexer(std::u16string_view source) : source_(source) {}

    std::vector<Token> Run() {
        if (source_.size() > kMaxSourceLength) {
            FailExpected(kMaxSourceLength, "at most 65536 characters", std::to_string(source_.size()));
        }
        for (;;) {
            while (position_ < source_.size() && IsBlank(source_[position_]))
                ++position_;
            Token token;
            token.begin = position_;
            if (position_ < source_.size()) Read(token);
            token.end = position_;
            tokens_.push_back(std::move(token));
            if (tokens_.back().kind == TokenKind::End) return std::move(tokens_);
        }
    }

private:
    char16_t At(std::size_t position) const noexcept {
        return position < source_.size() ? source_[position] : u'\0';
    }

    void Read(Token& token) {
        const char16_t c = source_[position_];
        if (IsDigit(c) || (c == u'.' && IsDigit(At(position_ + 1)))) return ReadNumber(token);
        if (IsNameStart(c)) return ReadWord(token);
        switch (c) {
            case u'"':
            case u'\'':
                return ReadQuoted(token, c, TokenKind::Text);
            case u'[':
                return ReadQuoted(token, u']', TokenKind::Bracketed);
            case u'{':
                return ReadDate(token, u'}');
            case u'#':
                if (tokens_.empty() || !EndsOperand(tokens_.back().kind)) return ReadDate(token, u'#');
                break;
            case u'.':
                if (ReadDotted(token)) return;
                break;
            default:
                break;
        }
        ReadSymbol(token);
    }

    /// The words .T. .AND. and so on; `length` receives their length with both points.
    bool DottedAt(std::size_t position, TokenKind& kind, std::size_t& length) const noexcept {
        std::size_t end = position + 1;
        while (end < source_.size() && end < position + 6 && IsNamePart(source_[end]))
            ++end;
        if (At(position) != u'.' || At(end) != u'.') return false;
        const std::u16string_view word = source_.substr(position + 1, end - position - 1);
        for (const Word& known : kDottedWords) {
            if (!SameWord(word, known.name)) continue;
            kind = known.kind;
            length = end + 1 - position;
            return true;
        }
        return false;
    }

    bool ReadDotted(Token& token) noexcept {
        std::size_t length = 0;
        if (!DottedAt(position_, token.kind, length)) return false;
        position_ += length;
        return true;
    }

    void ReadDigits(Token& token) {
        while (IsDigit(At(position_)))
            token.digits.push_back(static_cast<char>(source_[position_++]));
    }

    void ReadNumber(Token& token) {
        token.kind = TokenKind::Number;
        ReadDigits(token);
        TokenKind ignored = TokenKind::End;
        std::size_t length = 0;
        if (At(position_) == u'.' && !DottedAt(position_, ignored, length)) {
            token.digits.push_back('.');
            ++position_;
            ReadDigits(token);
        }
        if (UpperAscii(At(position_)) == u'E') {
            const char16_t sign = At(position_ + 1);
            const bool hasSign = sign == u'+' || sign == u'-';
            if (IsDigit(hasSign ? At(position_ + 2) : sign)) {
                token.digits.push_back('e');
                ++position_;
                if (hasSign) token.digits.push_back(static_cast<char>(source_[position_++]));
                ReadDigits(token);
            }
        }
        if (IsNameStart(At(position_))) {
            FailExpected(position_, "an operator or the end after the number",
                         Quoted(source_.substr(position_, 1)));
        }
    }

    void ReadWord(Token& token) {
        while (IsNamePart(At(position_)))
            ++position_;
        const std::u16string_view word = source_.substr(token.begin, position_ - token.begin);
        token.kind = TokenKind::Name;
        token.text = word;
        for (const Word& known : kWords) {
            if (SameWord(word, known.name)) token.kind = known.kind;
        }
    }

    /// Text up to `closing`, which is doubled where it stands for itself.
    void ReadQuoted(Token& token, char16_t closing, TokenKind kind) {
        token.kind = kind;
        for (++position_; position_ < source_.size(); ++position_) {
            if (source_[position_] == closing) {
                if (At(position_ + 1) != closing || position_ + 1 >= source_.size()) {
                    ++position_;
                    if (kind == TokenKind::Bracketed) CheckBracketed(token);
                    return;
                }
                ++position_;
            }
            token.text.push_back(source_[position_]);
        }
        FailExpected(source_.size(),
                     "a closing " + Quoted(std::u16string_view(&closing, 1)) + " for the one at character " +
                         std::to_string(token.begin + 1),
                     "the end");
    }

    static void CheckBracketed(Token& token) {
        const std::size_t first = token.text.find_first_not_of(u' ');
        if (first == std::u16string::npos) FailExpected(token.begin, "a name between [ and ]", "nothing");
        token.text = token.text.substr(first, token.text.find_last_not_of(u' ') - first + 1);
    }

    void ReadDate(Token& token, char16_t closing) {
        token.kind = TokenKind::Date;
        const std::size_t end = source_.find(closing, position_ + 1);
        if (end == std::u16string_view::npos) {
            FailExpected(source_.size(),
                         "a closing " + Quoted(std::u16string_view(&closing, 1)) +
                             " of the date at character " + std::to_string(token.begin + 1),
                         "the end");
        }
        std::u16string_view written = source_.substr(position_ + 1, end - position_ - 1);
        position_ = end + 1;
        std::string ascii;
        for (const char16_t c : written)
            ascii.push_back(c < 0x80 ? static_cast<char>(c) : '?');
        const std::size_t start = ascii.find_first_not_of(' ');
        if (start != std::string::npos && ascii[start] == '^') ascii[start] = ' ';
        if (!ParseDate(ascii, token.date)) {
            FailExpected(token.begin, "a date such as {^2024-01-31} or {^2024-01-31 13:45:00}",
                         Quoted(source_.substr(token.begin, position_ - token.begin)));
        }
    }

    void ReadSymbol(Token& token) {
        struct Symbol {
            std::u16string_view text;
            TokenKind kind;
        };
        // Longer ones first.
        static constexpr std::array<Symbol, 23> kSymbols{{
            {u"->", TokenKind::Arrow},
            {u"**", TokenKind::Caret},
            {u"==", TokenKind::Equal},
            {u"<>", TokenKind::NotEqual},
            {u"!=", TokenKind::NotEqual},
            {u"<=", TokenKind::LessEqual},
            {u">=", TokenKind::GreaterEqual},
            {u"(", TokenKind::LeftParenthesis},
            {u")", TokenKind::RightParenthesis},
            {u",", TokenKind::Comma},
            {u".", TokenKind::Dot},
            {u"+", TokenKind::Plus},
            {u"-", TokenKind::Minus},
            {u"*", TokenKind::Star},
            {u"/", TokenKind::Slash},
            {u"%", TokenKind::Percent},
            {u"^", TokenKind::Caret},
            {u"$", TokenKind::Dollar},
            {u"=", TokenKind::Equal},
            {u"#", TokenKind::NotEqual},
            {u"<", TokenKind::Less},
            {u">", TokenKind::Greater},
            {u"!", TokenKind::Not},
        }};
        const std::u16string_view rest = source_.substr(position_);
        for (const Symbol& symbol : kSymbols) {
            if (!rest.starts_with(symbol.text)) continue;
            token.kind = symbol.kind;
            position_ += symbol.text.size();
            return;
        }
        FailExpected(position_, "a value, a name or an operator", Quoted(rest.substr(0, 1)));
    }

    std::u16string_view source_;
    std::size_t position_ = 0;
    std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> Tokenize(std::u16string_view source) {
    return Lexer(source).Run();
}

}  // namespace zu::expression
