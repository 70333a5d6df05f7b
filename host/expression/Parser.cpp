#include "host/expression/Parser.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "host/expression/Fault.h"
#include "host/expression/Lexer.h"

namespace zu::expression {

namespace {

enum Level : int {
    kOrLevel = 1,
    kAndLevel,
    kNotLevel,
    kCompareLevel,
    kSumLevel,
    kProductLevel,
    kSignLevel,
    kPowerLevel
};

struct BinaryOperator {
    int level;
    NodeKind kind;
    Operator op;
};

std::optional<BinaryOperator> BinaryOf(TokenKind kind) noexcept {
    switch (kind) {
        case TokenKind::Or:
            return BinaryOperator{kOrLevel, NodeKind::Or, Operator::None};
        case TokenKind::And:
            return BinaryOperator{kAndLevel, NodeKind::And, Operator::None};
        case TokenKind::Equal:
            return BinaryOperator{kCompareLevel, NodeKind::Compare, Operator::Equal};
        case TokenKind::NotEqual:
            return BinaryOperator{kCompareLevel, NodeKind::Compare, Operator::NotEqual};
        case TokenKind::Less:
            return BinaryOperator{kCompareLevel, NodeKind::Compare, Operator::Less};
        case TokenKind::LessEqual:
            return BinaryOperator{kCompareLevel, NodeKind::Compare, Operator::LessEqual};
        case TokenKind::Greater:
            return BinaryOperator{kCompareLevel, NodeKind::Compare, Operator::Greater};
        case TokenKind::GreaterEqual:
            return BinaryOperator{kCompareLevel, NodeKind::Compare, Operator::GreaterEqual};
        case TokenKind::Dollar:
            return BinaryOperator{kCompareLevel, NodeKind::Contains, Operator::None};
        case TokenKind::Plus:
            return BinaryOperator{kSumLevel, NodeKind::Arithmetic, Operator::Add};
        case TokenKind::Minus:
            return BinaryOperator{kSumLevel, NodeKind::Arithmetic, Operator::Subtract};
        case TokenKind::Star:
            return BinaryOperator{kProductLevel, NodeKind::Arithmetic, Operator::Multiply};
        case TokenKind::Slash:
            return BinaryOperator{kProductLevel, NodeKind::Arithmetic, Operator::Divide};
        case TokenKind::Percent:
            return BinaryOperator{kProductLevel, NodeKind::Arithmetic, Operator::Modulo};
        case TokenKind::Caret:
            return BinaryOperator{kPowerLevel, NodeKind::Arithmetic, Operator::Power};
        default:
            return std::nullopt;
    }
}

class Parser {
public:
    explicit Parser(std::u16string_view source) : source_(source), tokens_(Tokenize(source)) {}

    NodePtr Run() {
        NodePtr root = ReadLevel(kOrLevel);
        if (Peek().kind != TokenKind::End) Expected("an operator or the end");
        return root;
    }

private:
    /// Counts how deep the parser is inside itself.
    class Nesting {
    public:
        explicit Nesting(Parser& parser) : parser_(parser) {
            if (++parser_.nesting_ > kMaxDepth) parser_.TooDeep(parser_.Peek().begin);
        }
        ~Nesting() { --parser_.nesting_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        Parser& parser_;
    };

    const Token& Peek(std::size_t ahead = 0) const noexcept {
        return tokens_[std::min(position_ + ahead, tokens_.size() - 1)];
    }
    const Token& Take() noexcept {
        const Token& token = Peek();
        if (position_ + 1 < tokens_.size()) ++position_;
        return token;
    }
    bool Accept(TokenKind kind) noexcept {
        if (Peek().kind != kind) return false;
        Take();
        return true;
    }
    std::size_t lastEnd() const noexcept { return position_ == 0 ? 0 : tokens_[position_ - 1].end; }

    [[noreturn]] void Expected(std::string_view what) const {
        const Token& token = Peek();
        FailExpected(token.begin, what,
                     token.kind == TokenKind::End
                         ? "the end"
                         : Quoted(source_.substr(token.begin, token.end - token.begin)));
    }
    [[noreturn]] static void TooDeep(std::size_t position) {
        FailExpected(position, "at most 250 operators and parentheses inside one another", "more");
    }
    void Require(TokenKind kind, std::string_view what) {
        if (!Accept(kind)) Expected(what);
    }

    NodePtr Make(NodeKind kind, std::size_t begin, std::size_t position) const {
        auto node = std::make_unique<Node>();
        node->kind = kind;
        node->begin = begin;
        node->position = position;
        node->end = lastEnd();
        return node;
    }
    void Adopt(Node& parent, NodePtr child) const {
        parent.depth = std::max(parent.depth, child->depth + 1);
        if (parent.depth > kMaxDepth) TooDeep(parent.position);
        parent.children.push_back(std::move(child));
        parent.end = lastEnd();
    }

    NodePtr ReadLevel(int level) {
        const Nesting nesting(*this);
        const std::size_t begin = Peek().begin;
        NodePtr left = ReadPrefix(level);
        for (;;) {
            const Token& token = Peek();
            if (level <= kCompareLevel) {
                if (NodePtr test = ReadTest(left, begin)) {
                    left = std::move(test);
                    continue;
                }
            }
            const std::optional<BinaryOperator> binary = BinaryOf(token.kind);
            if (!binary || binary->level < level) return left;
            left = ReadBinary(*binary, std::move(left), begin);
        }
    }

    NodePtr ReadBinary(const BinaryOperator& binary, NodePtr left, std::size_t begin) {
        const std::size_t position = Take().begin;
        // A sign may stand behind any operator: 2^-1, A*-B.
        const bool isSign = Peek().kind == TokenKind::Minus || Peek().kind == TokenKind::Plus;
        const bool isSignedPower = isSign && binary.level > kSignLevel;
        NodePtr right = ReadLevel(isSignedPower ? kSignLevel : binary.level + 1);
        const bool joins = binary.kind == NodeKind::And || binary.kind == NodeKind::Or;
        if (joins && left->kind == binary.kind && left->begin == begin) {
            // One node for the whole chain: conditions made by programs have thousands of terms.
            Adopt(*left, std::move(right));
            return left;
        }
        NodePtr node = Make(binary.kind, begin, position);
        node->op = binary.op;
        Adopt(*node, std::move(left));
        Adopt(*node, std::move(right));
        return node;
    }

    /// LIKE, BETWEEN, IN and IS, with or without NOT, behind `left`; nothing when none of them follows.
    NodePtr ReadTest(NodePtr& left, std::size_t begin) {
        const std::size_t position = Peek().begin;
        const bool negated = Peek().kind == TokenKind::Not && IsTest(Peek(1).kind);
        if (negated) Take();
        NodePtr test;
        switch (Peek().kind) {
            case TokenKind::Like:
                test = BeginTest(u"LIKE", left, begin);
                Adopt(*test, ReadLevel(kSumLevel));
                break;
            case TokenKind::Between:
                test = BeginTest(u"BETWEEN", left, begin);
                Adopt(*test, ReadLevel(kSumLevel));
                Require(TokenKind::And, "AND between the bounds of BETWEEN");
                Adopt(*test, ReadLevel(kSumLevel));
                break;
            case TokenKind::In:
                test = BeginTest(u"INLIST", left, begin);
                Require(TokenKind::LeftParenthesis, "\"(\" behind IN");
                ReadArguments(*test);
                break;
            case TokenKind::Is: {
                test = BeginTest(u"ISNULL", left, begin);
                const bool isNot = Accept(TokenKind::Not);
                Require(TokenKind::Null, "NULL or NOT NULL behind IS");
                test->end = lastEnd();
                if (isNot) test = Negated(std::move(test), position);
                break;
            }
            default:
                return nullptr;
        }
        return negated ? Negated(std::move(test), position) : std::move(test);
    }

    static bool IsTest(TokenKind kind) noexcept {
        return kind == TokenKind::Like || kind == TokenKind::Between || kind == TokenKind::In;
    }

    NodePtr BeginTest(std::u16string_view function, NodePtr& left, std::size_t begin) {
        const std::size_t position = Take().begin;
        NodePtr node = Make(NodeKind::Call, begin, position);
        node->name = function;
        Adopt(*node, std::move(left));
        return node;
    }

    NodePtr Negated(NodePtr test, std::size_t position) const {
        NodePtr node = Make(NodeKind::Not, test->begin, position);
        Adopt(*node, std::move(test));
        return node;
    }

    NodePtr ReadPrefix(int level) {
        const Token& token = Peek();
        if (token.kind == TokenKind::Not && level <= kNotLevel) {
            Take();
            NodePtr node = Make(NodeKind::Not, token.begin, token.begin);
            Adopt(*node, ReadLevel(kNotLevel));
            return node;
        }
        if (token.kind == TokenKind::Minus && level <= kSignLevel) return ReadNegative();
        if (token.kind == TokenKind::Plus && level <= kSignLevel) {
            Take();
            return ReadLevel(kSignLevel);
        }
        return ReadOperand();
    }

    NodePtr ReadNegative() {
        const std::size_t begin = Take().begin;
        if (Peek().kind == TokenKind::Number && Peek(1).kind != TokenKind::Caret) {
            NodePtr literal = ReadOperand();
            literal->begin = begin;
            literal->digits.insert(0, 1, '-');
            return literal;
        }
        NodePtr node = Make(NodeKind::Negate, begin, begin);
        Adopt(*node, ReadLevel(kSignLevel));
        return node;
    }

    NodePtr ReadOperand() {
        const Token& token = Peek();
        switch (token.kind) {
            case TokenKind::LeftParenthesis: {
                Take();
                NodePtr inner = ReadLevel(kOrLevel);
                Require(TokenKind::RightParenthesis, "\")\" or an operator");
                return inner;
            }
            case TokenKind::Number:
            case TokenKind::Text:
            case TokenKind::Date:
            case TokenKind::True:
            case TokenKind::False:
            case TokenKind::Null:
                return ReadLiteral();
            case TokenKind::Name:
            case TokenKind::Bracketed:
            // Where a value must stand these words are names like any other.
            case TokenKind::Like:
            case TokenKind::Between:
            case TokenKind::In:
            case TokenKind::Is:
                return ReadName();
            default:
                Expected("a value");
        }
    }

    NodePtr ReadLiteral() {
        const Token& token = Take();
        NodePtr node = Make(NodeKind::Literal, token.begin, token.begin);
        switch (token.kind) {
            case TokenKind::Number:
                node->type = Type::Number;
                node->digits = token.digits;
                break;
            case TokenKind::Text:
                node->type = Type::Text;
                node->literalText = token.text;
                break;
            case TokenKind::Date:
                node->type = token.date.hasTime ? Type::DateTime : Type::Date;
                node->date = token.date;
                break;
            case TokenKind::Null:
                node->type = Type::Unknown;
                break;
            default:
                node->type = Type::Boolean;
                node->boolean = token.kind == TokenKind::True;
                break;
        }
        return node;
    }

    static std::u16string NameOf(const Token& token, std::u16string_view source) {
        if (token.kind == TokenKind::Bracketed) return token.text;
        return std::u16string(source.substr(token.begin, token.end - token.begin));
    }

    static bool CanBeName(TokenKind kind) noexcept {
        // Behind a table's name a word can only be a field's.
        return kind == TokenKind::Name || kind == TokenKind::Bracketed ||
               (kind >= TokenKind::True && kind <= TokenKind::Is);
    }

    NodePtr ReadName() {
        const Token& first = Take();
        if (first.kind != TokenKind::Bracketed && Peek().kind == TokenKind::LeftParenthesis) {
            NodePtr call = Make(NodeKind::Call, first.begin, first.begin);
            call->name = NameOf(first, source_);
            Take();
            ReadArguments(*call);
            // As a function it takes the pattern first, as an operator the text.
            if (first.kind == TokenKind::Like && call->children.size() == 2) {
                std::swap(call->children[0], call->children[1]);
            }
            return call;
        }
        NodePtr node = Make(NodeKind::Name, first.begin, first.begin);
        node->name = NameOf(first, source_);
        if (Accept(TokenKind::Dot) || Accept(TokenKind::Arrow)) {
            if (!CanBeName(Peek().kind)) Expected("the name of a field");
            node->qualifier = std::move(node->name);
            node->position = Peek().begin;
            node->name = NameOf(Take(), source_);
            node->end = lastEnd();
        }
        return node;
    }

    /// Reads what follows "(" up to and with the ")".
    void ReadArguments(Node& call) {
        if (Accept(TokenKind::RightParenthesis)) {
            call.end = lastEnd();
            return;
        }
        do {
            Adopt(call, ReadLevel(kOrLevel));
        } while (Accept(TokenKind::Comma));
        Require(TokenKind::RightParenthesis, "\",\" or \")\"");
        call.end = lastEnd();
    }

    std::u16string_view source_;
    std::vector<Token> tokens_;
    std::size_t position_ = 0;
    std::size_t nesting_ = 0;
};

}  // namespace

NodePtr Parse(std::u16string_view source) {
    return Parser(source).Run();
}

}  // namespace zu::expression
