#include "plot/formula_layout.h"

#include "eval/ast.h"
#include "eval/formula.h"
#include "eval/parser.h"
#include "model/graph_list.h"

#include <QFontMetricsF>
#include <QImage>
#include <QLocale>

#include <array>
#include <cmath>

namespace curvix::plot::formula {

namespace {

using eval::Function;
using eval::Node;
using Kind = Node::Kind;

constexpr char16_t kMinusSign = 0x2212;
constexpr char16_t kMiddleDot = 0x00B7;
constexpr char16_t kPiLetter = 0x03C0;
constexpr char16_t kPrime = 0x2032;


bool isSum(const Node& node)
{
    return node.kind == Kind::Add || node.kind == Kind::Subtract;
}

// A power's base that needs no parentheses.
bool isAtom(const Node& node)
{
    switch (node.kind) {
    case Kind::Number:
    case Kind::Variable:
    case Kind::Pi:
    case Kind::Call: return true;
    default: return false;
    }
}

// The name a textbook gives the function.
QString displayName(Function function)
{
    switch (function) {
    case Function::Asin: return QStringLiteral("arcsin");
    case Function::Acos: return QStringLiteral("arccos");
    case Function::Atan: return QStringLiteral("arctan");
    case Function::Asinh: return QStringLiteral("arsinh");
    case Function::Acosh: return QStringLiteral("arcosh");
    case Function::Atanh: return QStringLiteral("artanh");
    case Function::Log10: return QStringLiteral("log");
    default: return QString::fromLatin1(eval::functionName(function));
    }
}

// The typed text in the parser's language, read as the function box reads it: "¶" is pi,
// "e" Euler's number (a second variable here, so that it can be drawn as "e"), "," a decimal
// point. Spaces keep the constants apart from the names around them, as the numbers that
// the function box puts in their place are ("¶x", "2ex").
QString parserText(QString typed)
{
    typed.replace(QStringLiteral("exp"), QStringLiteral("Exp"));
    typed.replace(QChar(u'e'), QStringLiteral(" e "));
    typed.replace(eval::kPiChar, QStringLiteral(" pi "));
    typed.replace(QChar(u','), QChar(u'.'));
    return typed;
}

class Typesetter {
public:
    Typesetter(const QFont& font, int eulerVariable)
        : base_(font), euler_(eulerVariable), decimalPoint_(QLocale().decimalPoint())
    {
        for (int level = 0; level < int(styles_.size()); ++level)
            styles_[std::size_t(level)] = makeStyle(level);
    }

    Box formula(const Node& node, int level)
    {
        const Style& s = style(level);
        switch (node.kind) {
        case Kind::Number: {
            QString digits = node.text;
            digits.replace(QChar(u'.'), decimalPoint_);
            return text(digits, level, false);
        }
        case Kind::Variable:
            return node.variable == euler_ ? text(QStringLiteral("e"), level, false)
                                           : text(node.text, level, true);
        case Kind::Pi: return text(QString(QChar(kPiLetter)), level, false);
        case Kind::Negate: {
            const Node& operand = node.args[0];
            Box box = text(QString(QChar(kMinusSign)), level, false);
            box.append(wrapIf(isSum(operand) || operand.kind == Kind::Negate, operand, level));
            box.lead = Edge::Other;
            return box;
        }
        case Kind::Add:
        case Kind::Subtract: {
            const Node& right = node.args[1];
            const bool parens = right.kind == Kind::Negate ||
                                (node.kind == Kind::Subtract && isSum(right));
            Box box = formula(node.args[0], level);
            const qreal gap = (level == 0 ? 0.22 : 0.12) * s.em;
            box.space(gap);
            box.append(text(QString(node.kind == Kind::Add ? QChar(u'+') : QChar(kMinusSign)),
                            level, false));
            box.space(gap);
            box.append(wrapIf(parens, right, level));
            return box;
        }
        case Kind::Multiply: return product(node, level);
        case Kind::Divide:
            return fraction(formula(node.args[0], level), formula(node.args[1], level), level);
        case Kind::Power:
            return power(wrapIf(!isAtom(node.args[0]), node.args[0], level),
                         formula(node.args[1], level + 1), level);
        case Kind::Call: return call(node, level);
        }
        return {};
    }

    // "f(x)": letters in italics, the rest upright, "'" as a prime.
    Box label(const QString& label)
    {
        Box box;
        QString piece;
        bool italic = false;
        for (const QChar c : label) {
            const bool letter = c.isLetter();
            if (!piece.isEmpty() && letter != italic) {
                box.append(text(piece, 0, italic));
                piece.clear();
            }
            italic = letter;
            piece += c == u'\'' ? QChar(kPrime) : c;
        }
        if (!piece.isEmpty())
            box.append(text(piece, 0, italic));
        return box;
    }

    // label = body, with the spacing of a relation.
    Box equation(const Box& left, const Box& right)
    {
        const qreal gap = 0.28 * style(0).em;
        Box box = left;
        box.space(gap);
        box.append(text(QStringLiteral("="), 0, false));
        box.space(gap);
        box.append(right);
        return box;
    }

    qreal em() const { return style(0).em; }

private:
    struct Style {
        QFont upright;
        QFont italic;
        qreal em = 0;      // the font's size in logical pixels
        qreal axis = 0;    // height of the minus sign's middle: fraction bars sit there
        qreal rule = 0;    // thickness of bars and overlines
        qreal xHeight = 0;
        qreal capHeight = 0;
        QRectF paren;      // ink of "(" at this size
    };

    // Exponents at 70 %, exponents of exponents at 50 %, and no smaller.
    static constexpr std::array<qreal, 3> kScales{1.0, 0.7, 0.5};

    Style makeStyle(int level) const
    {
        Style s;
        QFont font = base_;
        font.setHintingPreference(QFont::PreferNoHinting); // the same advances at every ratio
        const qreal scale = kScales[std::size_t(level)];
        if (base_.pointSizeF() > 0)
            font.setPointSizeF(base_.pointSizeF() * scale);
        else
            font.setPixelSize(std::max(1, qRound(base_.pixelSize() * scale)));
        font.setItalic(false);
        s.upright = font;
        font.setItalic(true);
        s.italic = font;

        const QFontMetricsF fm(s.upright, &device_);
        s.em = base_.pointSizeF() > 0 ? s.upright.pointSizeF() * device_.logicalDpiY() / 72.0
                                      : qreal(s.upright.pixelSize());
        s.axis = -fm.tightBoundingRect(QString(QChar(kMinusSign))).center().y();
        s.rule = std::max(0.06 * s.em, 0.75);
        s.xHeight = fm.xHeight();
        s.capHeight = fm.capHeight();
        s.paren = fm.tightBoundingRect(QStringLiteral("("));
        return s;
    }

    const Style& style(int level) const
    {
        return styles_[std::size_t(std::clamp(level, 0, int(styles_.size()) - 1))];
    }

    Box text(const QString& string, int level, bool italic) const
    {
        const Style& s = style(level);
        const QFont& font = italic ? s.italic : s.upright;
        const QFontMetricsF fm(font, &device_);
        // Room for what an italic letter leans out of its advance, so that it touches
        // neither a bracket nor an exponent.
        const qreal before = std::max<qreal>(0, -fm.leftBearing(string.front()));
        const qreal after = std::max<qreal>(0, -fm.rightBearing(string.back()));
        const QRectF tight = fm.tightBoundingRect(string);
        Box box;
        box.runs.push_back({QPointF(before, 0), font, string});
        box.width = before + fm.horizontalAdvance(string) + after;
        box.ascent = std::max(-tight.top(), s.xHeight);
        box.descent = std::max<qreal>(tight.bottom(), 0);
        box.ink = tight.translated(before, 0);
        box.blank = false;
        const auto digit = [](QChar c) { return c.isDigit() || c == u'.' || c == u','; };
        box.lead = digit(string.front()) ? Edge::Digit : Edge::Other;
        box.trail = digit(string.back()) ? Edge::Digit : Edge::Other;
        return box;
    }

    Box wrapIf(bool parenthesised, const Node& node, int level)
    {
        Box box = formula(node, level);
        return parenthesised ? parens(box, level) : box;
    }

    // Factors side by side as written: 2x, 2 sin(x), (x+1)(x−1). A factor that begins with a
    // number or a stacked fraction would run into the one before it ("2·3" is not "23"):
    // an explicit "*" is shown as a dot there, and an implicit one had parentheses.
    Box product(const Node& node, int level)
    {
        const Node& a = node.args[0];
        const Node& b = node.args[1];
        const Box left = wrapIf(isSum(a), a, level);
        Box right = wrapIf(isSum(b) || b.kind == Kind::Negate, b, level);
        const Style& s = style(level);
        Box box = left;
        if (right.lead == Edge::Digit || right.lead == Edge::Fraction) {
            if (node.implicit) {
                right = parens(right, level);
            } else {
                const qreal gap = (level == 0 ? 0.16 : 0.1) * s.em;
                box.space(gap);
                box.append(text(QString(QChar(kMiddleDot)), level, false));
                box.space(gap);
            }
        } else if (left.trail == Edge::Function || right.lead == Edge::Function) {
            box.space(0.17 * s.em);
        }
        box.append(right);
        return box;
    }

    Box fraction(const Box& numerator, const Box& denominator, int level) const
    {
        const Style& s = style(level);
        const qreal side = 0.1 * s.em;     // between the bar and what stands beside it
        // How far the bar reaches past the wider part; further over a fraction of fractions,
        // so that the main bar stands out.
        const auto stacked = [](const Box& b) {
            return b.lead == Edge::Fraction && b.trail == Edge::Fraction;
        };
        const qreal overhang = (stacked(numerator) || stacked(denominator) ? 0.2 : 0.08) * s.em;
        const qreal gap = 0.18 * s.em;      // between the bar and the parts
        const qreal bar = std::max(numerator.width, denominator.width) + 2 * overhang;
        const qreal barTop = -s.axis - s.rule / 2;
        Box box;
        box.place(numerator, side + (bar - numerator.width) / 2,
                  barTop - gap - numerator.descent);
        box.place(denominator, side + (bar - denominator.width) / 2,
                  barTop + s.rule + gap + denominator.ascent);
        box.addRule(QRectF(side, barTop, bar, s.rule));
        box.width = bar + 2 * side;
        box.lead = box.trail = Edge::Fraction;
        return box;
    }

    Box power(Box base, const Box& exponent, int level) const
    {
        const Style& s = style(level);
        const Style& small = style(level + 1);
        // High enough to clear the base's top, never so low that it reads as a factor.
        const qreal shift = std::max({0.42 * s.em, base.ascent - 0.45 * small.em,
                                      exponent.descent + 0.3 * s.xHeight});
        base.place(exponent, base.width + 0.04 * s.em, -shift);
        base.trail = Edge::Other;
        return base;
    }

    Box call(const Node& node, int level)
    {
        const Node& argument = node.args[0];
        if (node.function == Function::Sqrt)
            return radical(formula(argument, level), level);
        if (node.function == Function::Abs)
            return bars(formula(argument, level), level);
        Box box = text(displayName(node.function), level, false);
        if (node.function == Function::Log10 && node.text == u"log10") {
            const Box base = text(QStringLiteral("10"), level + 1, false);
            box.place(base, box.width + 0.02 * style(level).em, 0.25 * style(level).em);
        }
        box.append(parens(formula(argument, level), level));
        box.lead = box.trail = Edge::Function;
        return box;
    }

    // A radical sign whose overline covers the whole radicand.
    Box radical(const Box& radicand, int level) const
    {
        const Style& s = style(level);
        const qreal gap = 0.12 * s.em;
        const qreal top = -(std::max(radicand.ascent, s.capHeight) + gap + s.rule / 2);
        const qreal bottom = std::max(radicand.descent, 0.08 * s.em);
        const qreal height = bottom - top;
        const qreal sign = std::min(0.5 * s.em + 0.08 * height, 1.1 * s.em);
        const qreal start = 0.05 * s.em;
        const qreal inner = start + sign + 0.08 * s.em; // where the radicand starts

        QPainterPath stroke;
        stroke.moveTo(start, top + 0.6 * height);
        stroke.lineTo(start + 0.2 * sign, top + 0.52 * height);
        stroke.lineTo(start + 0.5 * sign, bottom);
        stroke.lineTo(start + sign, top);
        QPainterPath heavy; // the down stroke is the thick one, as in print
        heavy.moveTo(start + 0.2 * sign, top + 0.52 * height);
        heavy.lineTo(start + 0.5 * sign, bottom);

        Box box;
        box.place(radicand, inner, 0);
        box.addShape(stroke, s.rule);
        box.addShape(heavy, 2 * s.rule);
        box.addRule(QRectF(start + sign, top - s.rule / 2,
                           inner + radicand.width + 0.06 * s.em - start - sign, s.rule));
        box.width = inner + radicand.width + 0.1 * s.em;
        box.ascent = std::max(box.ascent, -top + s.rule);
        box.descent = std::max(box.descent, bottom + s.rule);
        return box;
    }

    // |u|: vertical bars at least as tall as a parenthesis.
    Box bars(const Box& content, int level) const
    {
        const Style& s = style(level);
        const qreal top = std::min(-content.ascent - 0.08 * s.em, s.paren.top());
        const qreal bottom = std::max(content.descent + 0.08 * s.em, s.paren.bottom());
        const qreal side = 0.08 * s.em + s.rule / 2;
        const qreal gap = 0.12 * s.em;
        QPainterPath lines;
        lines.moveTo(side, top);
        lines.lineTo(side, bottom);
        const qreal right = side + gap + content.width + gap;
        lines.moveTo(right, top);
        lines.lineTo(right, bottom);
        Box box;
        box.place(content, side + gap, 0);
        box.addShape(lines, s.rule);
        box.width = right + side;
        box.ascent = std::max(box.ascent, -top);
        box.descent = std::max(box.descent, bottom);
        return box;
    }

    // The font's parentheses around what fits in them, drawn ones around anything taller.
    Box parens(const Box& content, int level) const
    {
        const Style& s = style(level);
        const qreal slack = 0.03 * s.em;
        Box box;
        if (content.ascent <= -s.paren.top() + slack && content.descent <= s.paren.bottom() + slack) {
            box.append(text(QStringLiteral("("), level, false));
            box.append(content);
            box.append(text(QStringLiteral(")"), level, false));
        } else {
            const qreal top = -content.ascent - 0.08 * s.em;
            const qreal bottom = content.descent + 0.08 * s.em;
            const qreal side = 0.06 * s.em;
            const qreal bulge = std::clamp(0.1 * (bottom - top), 0.2 * s.em, 0.4 * s.em);
            const qreal thick = 0.085 * s.em;
            const qreal paren = side + bulge + thick + side; // the width of one
            box.addShape(drawnParen(side, bulge, thick, top, bottom, false), 0);
            box.place(content, paren, 0);
            box.addShape(drawnParen(paren + content.width + side, bulge, thick, top, bottom, true),
                         0);
            box.width = paren + content.width + paren;
        }
        box.lead = box.trail = Edge::Other;
        return box;
    }

    // One parenthesis as a filled crescent from x to x + bulge + thick, thin at the tips.
    static QPainterPath drawnParen(qreal x, qreal bulge, qreal thick, qreal top, qreal bottom,
                                   bool closing)
    {
        const qreal width = bulge + thick;
        const auto at = [&](qreal dx, qreal y) {
            return QPointF(closing ? x + width - dx : x + dx, y);
        };
        // A cubic from tip to tip whose control points sit at c passes the middle at
        // (tip + 3c) / 4; solve for the middle that is wanted.
        const qreal tipOuter = width - 0.3 * thick;
        const qreal tipInner = width;
        const qreal outerControl = -tipOuter / 3;
        const qreal innerControl = (4 * thick - tipInner) / 3;
        const qreal reach = 0.2 * (bottom - top);
        QPainterPath path;
        path.moveTo(at(tipOuter, top));
        path.cubicTo(at(outerControl, top + reach), at(outerControl, bottom - reach),
                     at(tipOuter, bottom));
        path.lineTo(at(tipInner, bottom));
        path.cubicTo(at(innerControl, bottom - reach), at(innerControl, top + reach),
                     at(tipInner, top));
        path.closeSubpath();
        return path;
    }

    QFont base_;
    int euler_;
    QString decimalPoint_;
    QImage device_{1, 1, QImage::Format_ARGB32_Premultiplied}; // what the text is measured on
    std::array<Style, kScales.size()> styles_;
};

} // namespace

std::optional<LaidOutFormula> layOut(const QString& typed, const QString& label, const QFont& font,
                                     const eval::ParameterList& parameters)
{
    const QString variable = model::labelVariable(label);
    const QStringList variables =
        QStringList{variable, QStringLiteral("e")} + eval::parameterNames(parameters);
    const eval::ParseResult parsed = eval::parseFormula(
        eval::splitParameterProducts(parserText(typed), variable, parameters), variables);
    if (!parsed.ok())
        return std::nullopt;
    Typesetter typesetter(font, 1);
    Box box = typesetter.formula(parsed.tree, 0);
    if (!label.isEmpty())
        box = typesetter.equation(typesetter.label(label), box);
    // A margin keeps anti-aliased edges inside; the logical size is whole pixels so that
    // the picture covers the same area at every ratio.
    const qreal margin = 0.12 * typesetter.em() + 1;
    const QRectF area = (QRectF(0, -box.ascent, box.width, box.ascent + box.descent) | box.ink)
                            .adjusted(-margin, -margin, margin, margin);
    const QSize logical(int(std::ceil(area.width())), int(std::ceil(area.height())));
    return LaidOutFormula{std::move(box), area, logical};
}

} // namespace curvix::plot::formula
