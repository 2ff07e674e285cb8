#include "eval/parser.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

namespace curvix::eval {

namespace {

using Code = CompileError::Code;

// Deeper formulas are refused, so that neither the parser nor the compiler can run out of
// stack on pathological input; school formulas stay far below.
constexpr int kMaxHeight = 500;

bool isAsciiLetter(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z');
}

bool isAsciiDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

struct Token {
    enum class Type { Number, Name, Plus, Minus, Star, Slash, Caret, LParen, RParen, End, Error };
    Type type = Type::End;
    int start = 0; // 0-based
    int length = 0;
};

double numberValue(QStringView digits)
{
    std::string ascii;
    ascii.reserve(digits.size() + 1);
    for (QChar c : digits)
        ascii.push_back(char(c.unicode()));
    if (ascii.back() == '.')
        ascii.push_back('0'); // "5." reads as 5
    double value = 0;
    const auto [end, ec] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value,
                                           std::chars_format::fixed);
    (void)end;
    if (ec == std::errc::result_out_of_range) {
        // Too large needs a non-zero integer part, too small a zero one.
        const auto point = ascii.find('.');
        const std::string whole = ascii.substr(0, point);
        return whole.find_first_not_of('0') == std::string::npos ? 0.0 : HUGE_VAL;
    }
    return value;
}

class Lexer {
public:
    explicit Lexer(const QString& text) : text_(text) {}

    Token next()
    {
        const int n = int(text_.size());
        while (pos_ < n && text_[pos_].isSpace())
            ++pos_;
        const bool touchesName = pos_ == nameEnd_;
        nameEnd_ = -1;
        if (pos_ >= n)
            return {Token::Type::End, n, 0};
        const int start = pos_;
        const QChar c = text_[pos_];
        if (isAsciiDigit(c) || c == u'.') {
            int dots = 0;
            int digits = 0;
            while (pos_ < n && (isAsciiDigit(text_[pos_]) || text_[pos_] == u'.')) {
                (text_[pos_] == u'.' ? dots : digits)++;
                ++pos_;
            }
            if (touchesName)
                return fail(Code::NumberAfterName, start, pos_ - start);
            if (dots > 1 || digits == 0)
                return fail(Code::BadNumber, start, pos_ - start);
            return {Token::Type::Number, start, pos_ - start};
        }
        if (isAsciiLetter(c)) {
            while (pos_ < n && isAsciiLetter(text_[pos_]))
                ++pos_;
            // The one name with digits in it.
            if (QStringView(text_).mid(start, pos_ - start) == u"log" &&
                QStringView(text_).mid(pos_, 2) == u"10")
                pos_ += 2;
            nameEnd_ = pos_;
            return {Token::Type::Name, start, pos_ - start};
        }
        ++pos_;
        switch (c.unicode()) {
        case u'+': return {Token::Type::Plus, start, 1};
        case u'-': return {Token::Type::Minus, start, 1};
        case u'*': return {Token::Type::Star, start, 1};
        case u'/': return {Token::Type::Slash, start, 1};
        case u'^': return {Token::Type::Caret, start, 1};
        case u'(': return {Token::Type::LParen, start, 1};
        case u')': return {Token::Type::RParen, start, 1};
        default:
            // A character outside the basic plane is two code units; name it whole.
            if (c.isHighSurrogate() && pos_ < n && text_[pos_].isLowSurrogate())
                ++pos_;
            return fail(Code::UnexpectedChar, start, pos_ - start);
        }
    }

    CompileError error;

private:
    Token fail(Code code, int start, int length)
    {
        error = {code, start + 1, length};
        return {Token::Type::Error, start, length};
    }

    const QString& text_;
    int pos_ = 0;
    int nameEnd_ = -1; // where the last name token ended, to catch "x3"
};

// What went wrong, naming the piece of text (detail) where there is one.
QString problem(Code code, const QString& detail)
{
    // Through the window's translation; the command line installs none and stays English.
    const auto text = [](const char* source) {
        return QCoreApplication::translate("Formula", source);
    };
    switch (code) {
    case Code::UnexpectedEnd: return text(QT_TRANSLATE_NOOP("Formula", "Unexpected end of formula"));
    case Code::UnexpectedChar:
        return text(QT_TRANSLATE_NOOP("Formula", "Unexpected character '%1'")).arg(detail);
    case Code::UnknownName:
        return text(QT_TRANSLATE_NOOP("Formula", "Unknown name '%1'")).arg(detail);
    case Code::MissingParen: return text(QT_TRANSLATE_NOOP("Formula", "Missing ')' for '('"));
    case Code::ExtraParen: return text(QT_TRANSLATE_NOOP("Formula", "Missing '(' for ')'"));
    case Code::BadNumber:
        return text(QT_TRANSLATE_NOOP("Formula", "Invalid number '%1'")).arg(detail);
    case Code::NumberAfterName:
        return text(QT_TRANSLATE_NOOP("Formula", "A number cannot follow the name '%1'")).arg(detail);
    case Code::MissingArgument:
        return text(QT_TRANSLATE_NOOP("Formula", "Missing '(' after the function '%1'")).arg(detail);
    case Code::UnexpectedToken: return detail; // the caller says what was unexpected
    case Code::None:
    case Code::Empty: break;
    }
    return {};
}

struct Parsed {
    Node node;
    int height = 1;
};

class Parser {
public:
    Parser(const QString& text, const QStringList& variables)
        : text_(text), variables_(variables), lexer_(text)
    {
        advance();
    }

    ParseResult run()
    {
        ParseResult result;
        if (text_.trimmed().isEmpty()) {
            fail(Code::Empty, 0, 0);
        } else if (std::optional<Parsed> parsed = sum()) {
            if (tok_.type == Token::Type::End)
                result.tree = std::move(parsed->node);
            else if (tok_.type == Token::Type::RParen)
                fail(Code::ExtraParen, tok_.start, tok_.length);
            else
                unexpected();
        }
        result.error = error_;
        result.message = message_;
        return result;
    }

private:
    using Type = Token::Type;

    void advance() { tok_ = lexer_.next(); }
    QString tokenText() const { return text_.mid(tok_.start, tok_.length); }

    std::nullopt_t fail(Code code, int start, int length, const QString& detail = {})
    {
        if (error_.code != Code::None)
            return std::nullopt;
        error_ = {code, start + 1, length};
        if (code == Code::Empty)
            message_ = QCoreApplication::translate("Formula", "The formula is empty");
        else
            message_ = QCoreApplication::translate("Formula", "%1 at position %2")
                           .arg(problem(code, detail))
                           .arg(start + 1);
        return std::nullopt;
    }

    // The current token cannot stand where it is.
    std::nullopt_t unexpected()
    {
        switch (tok_.type) {
        case Type::End: return fail(Code::UnexpectedEnd, tok_.start, 0);
        case Type::Error: return lexerError();
        case Type::Number:
            return fail(Code::UnexpectedToken, tok_.start, tok_.length,
                        QCoreApplication::translate("Formula", "Unexpected number '%1'")
                            .arg(tokenText()));
        default:
            return fail(Code::UnexpectedToken, tok_.start, tok_.length,
                        QCoreApplication::translate("Formula", "Unexpected '%1'").arg(tokenText()));
        }
    }

    std::nullopt_t lexerError()
    {
        const CompileError& e = lexer_.error;
        const int start = e.position - 1;
        QString detail = text_.mid(start, e.length);
        if (e.code == Code::NumberAfterName) {
            int nameStart = start;
            while (nameStart > 0 && isAsciiLetter(text_[nameStart - 1]))
                --nameStart;
            detail = text_.mid(nameStart, start - nameStart);
        }
        return fail(e.code, start, e.length, detail);
    }

    std::optional<Parsed> tooComplex(const Token& at)
    {
        return fail(Code::UnexpectedToken, at.start, at.length,
                    QCoreApplication::translate("Formula", "The formula is too complex"));
    }

    Node operation(Node::Kind kind, const Token& op) const
    {
        Node node;
        node.kind = kind;
        node.position = op.start + 1;
        node.length = op.length;
        node.text = text_.mid(op.start, op.length);
        return node;
    }

    std::optional<Parsed> binary(Node::Kind kind, const Token& op, Parsed left, Parsed right)
    {
        const int height = 1 + std::max(left.height, right.height);
        if (height > kMaxHeight)
            return tooComplex(op);
        Parsed parsed{operation(kind, op), height};
        parsed.node.args.push_back(std::move(left.node));
        parsed.node.args.push_back(std::move(right.node));
        return parsed;
    }

    // sum := product (("+" | "-") product)*
    std::optional<Parsed> sum()
    {
        std::optional<Parsed> left = product();
        while (left && (tok_.type == Type::Plus || tok_.type == Type::Minus)) {
            const Token op = tok_;
            advance();
            std::optional<Parsed> right = product();
            if (!right)
                return std::nullopt;
            left = binary(op.type == Type::Plus ? Node::Kind::Add : Node::Kind::Subtract, op,
                          std::move(*left), std::move(*right));
        }
        return left;
    }

    // product := unary (("*" | "/") unary | power)*, where a power right after an operand
    // that starts with a name or "(" is an implicit multiplication: 2x, 2sin(x), (x+1)(x-1).
    std::optional<Parsed> product()
    {
        std::optional<Parsed> left = unary();
        while (left) {
            Token op = tok_;
            std::optional<Parsed> right;
            if (op.type == Type::Star || op.type == Type::Slash) {
                advance();
                right = unary();
            } else if (op.type == Type::Name || op.type == Type::LParen) {
                op.length = 0;
                right = power();
            } else {
                break;
            }
            if (!right)
                return std::nullopt;
            const bool implicit = op.length == 0;
            left = binary(op.type == Type::Slash ? Node::Kind::Divide : Node::Kind::Multiply, op,
                          std::move(*left), std::move(*right));
            if (left && implicit) {
                left->node.implicit = true;
                left->node.text.clear();
            }
        }
        return left;
    }

    // unary := ("-" | "+") unary | power. "^" binds tighter: -x^2 is -(x^2).
    std::optional<Parsed> unary()
    {
        if (++depth_ > kMaxHeight)
            return tooComplex(tok_);
        std::optional<Parsed> result;
        if (tok_.type == Type::Minus) {
            const Token op = tok_;
            advance();
            if (std::optional<Parsed> operand = unary()) {
                result = Parsed{operation(Node::Kind::Negate, op), operand->height + 1};
                result->node.args.push_back(std::move(operand->node));
            }
        } else if (tok_.type == Type::Plus) {
            advance();
            result = unary();
        } else {
            result = power();
        }
        --depth_;
        return result;
    }

    // power := primary ("^" unary)?, right-associative; the exponent may carry a sign (2^-x).
    std::optional<Parsed> power()
    {
        std::optional<Parsed> base = primary();
        if (!base || tok_.type != Type::Caret)
            return base;
        const Token op = tok_;
        advance();
        std::optional<Parsed> exponent = unary();
        if (!exponent)
            return std::nullopt;
        return binary(Node::Kind::Power, op, std::move(*base), std::move(*exponent));
    }

    // The expression inside parentheses; open is the "(" already consumed.
    std::optional<Parsed> parenthesised(const Token& open)
    {
        std::optional<Parsed> inner = sum();
        if (!inner)
            return std::nullopt;
        if (tok_.type == Type::RParen) {
            advance();
            return inner;
        }
        if (tok_.type == Type::End)
            return fail(Code::MissingParen, open.start, 1);
        return unexpected();
    }

    std::optional<Parsed> primary()
    {
        const Token token = tok_;
        switch (token.type) {
        case Type::Number: {
            Parsed parsed{operation(Node::Kind::Number, token)};
            parsed.node.value = numberValue(QStringView(text_).mid(token.start, token.length));
            advance();
            return parsed;
        }
        case Type::LParen:
            advance();
            return parenthesised(token);
        case Type::Name: return name();
        default: return unexpected();
        }
    }

    std::optional<Parsed> name()
    {
        const Token token = tok_;
        const QString text = tokenText();
        advance();
        if (const std::optional<Function> function = functionByName(text)) {
            if (tok_.type != Type::LParen) {
                if (tok_.type == Type::Error)
                    return lexerError();
                return fail(Code::MissingArgument, token.start, token.length, text);
            }
            const Token open = tok_;
            advance();
            std::optional<Parsed> argument = parenthesised(open);
            if (!argument)
                return std::nullopt;
            Parsed parsed{operation(Node::Kind::Call, token), argument->height + 1};
            parsed.node.function = *function;
            parsed.node.args.push_back(std::move(argument->node));
            return parsed;
        }
        if (text == u"pi")
            return Parsed{operation(Node::Kind::Pi, token)};
        const int variable = int(variables_.indexOf(text));
        if (variable < 0)
            return fail(Code::UnknownName, token.start, token.length, text);
        Parsed parsed{operation(Node::Kind::Variable, token)};
        parsed.node.variable = variable;
        return parsed;
    }

    const QString& text_;
    const QStringList& variables_;
    Lexer lexer_;
    Token tok_;
    int depth_ = 0;
    CompileError error_;
    QString message_;
};

} // namespace

ParseResult parseFormula(const QString& text, const QStringList& variables)
{
    return Parser(text, variables).run();
}

} // namespace curvix::eval
