#include "eval/formula.h"

#include "eval/numtext.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace curvix::eval {

namespace {

bool isAsciiDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

QString variableOrX(const QString& label)
{
    const QString name = VariableNameFromLabel(label);
    return name.isEmpty() ? QStringLiteral("x") : name;
}

// 1-based position of needle, 0 when absent; FindText without its 16-bit cap.
int position(const QString& haystack, const QString& needle)
{
    return int(haystack.indexOf(needle) + 1);
}

// Replaces every symbol by value's text; when the first symbol stands right after a digit,
// every replacement gets a "*" in front (2¶ is 2*3.14...). The first one decides for all.
QString replaceConstant(const QString& text, const QString& symbol, const QString& value)
{
    const int p = position(text, symbol);
    if (p == 0)
        return text;
    const bool afterDigit = p != 1 && isAsciiDigit(text[p - 2]);
    return ReplaceText(text, symbol, afterDigit ? QStringLiteral("*") + value : value);
}

// Half away from zero on value * 10^4; large values have no fraction left to round.
double round4(double value)
{
    if (!std::isfinite(value) || std::fabs(value) >= 1e11)
        return value;
    return std::round(value * 10000) / 10000;
}

void show(const Report& report, const QString& message)
{
    if (report)
        report(message);
}

} // namespace

QString VariableNameFromLabel(const QString& label)
{
    const qsizetype open = label.indexOf(u'(');
    if (open < 0)
        return {};
    return label.mid(open + 1, 1);
}

int FindText(const QString& haystack, const QString& needle)
{
    const qsizetype index = haystack.indexOf(needle);
    if (index < 0)
        return 0;
    return int(std::min<qsizetype>(index + 1, std::numeric_limits<qint16>::max()));
}

QString ReplaceText(QString text, const QString& find, const QString& replacement)
{
    if (find.isEmpty())
        return text;
    // Rescanning could never end when the replacement brings the searched text back.
    if (replacement.contains(find))
        return text.replace(find, replacement);
    for (qsizetype at = text.indexOf(find); at >= 0; at = text.indexOf(find))
        text = text.left(at) + replacement + text.mid(at + find.size());
    return text;
}

QString PrepareExpressionText(ExpressionEvaluator& evaluator, const QString& formula,
                              const QString& label, const Report& report, const QLocale& locale,
                              const ParameterList& parameters)
{
    const QString variable = variableOrX(label);
    evaluator.DefineVariable(variable);
    for (const Parameter& parameter : parameters)
        evaluator.DefineVariable(parameter.name);
    QString text = replaceConstant(formula, QString(kPiChar), numberText(kPiValue, locale));
    // "exp" first, or its "e" would become Euler's number.
    text = ReplaceText(text, QStringLiteral("exp"), QStringLiteral("Exp"));
    text = replaceConstant(text, QStringLiteral("e"), numberText(kEValue, locale));
    if (FindText(text, QStringLiteral(",")) > 0)
        text = ReplaceText(text, QStringLiteral(","), QStringLiteral("."));
    text = splitParameterProducts(text, variable, parameters);

    evaluator.SetExpression(text);
    if (evaluator.HasError()) {
        show(report, evaluator.ErrorText());
        text.clear();
    }
    evaluator.Reset();
    return text;
}

TangentLine TangentLineText(const CompiledFormula& curve, const QString& variable, double x0,
                            double sampleStep, const QLocale& locale)
{
    TangentLine line;
    line.variable = variable;
    const double y0Exact = curve.evaluate(x0);
    const double y1Exact = curve.evaluate(x0 + sampleStep);
    const double k = round4((y1Exact - y0Exact) / sampleStep);
    const double y0 = round4(y0Exact);
    line.slope = k;
    line.y = y0Exact;

    // k*x + (y0 + step) - k*x0: the line is lifted one step above the point of tangency.
    QString text = numberText(k, locale) + u'*' + line.variable;
    if (y0 >= 0)
        text += u'+' + numberText(std::fabs(y0) + sampleStep, locale);
    else
        text += u'-' + numberText(std::fabs(y0) - sampleStep, locale);
    text += k * x0 >= 0 ? u'-' : u'+';
    text += numberText(std::fabs(k), locale) + u'*' + numberText(std::fabs(x0), locale);
    line.text = text;
    return line;
}

namespace {

// The difference quotient over [x0 - left, x0 + right]; NaN when either end is undefined.
double quotient(const CompiledFormula& curve, double x0, double left, double right)
{
    const double a = curve.evaluate(x0 - left);
    const double b = curve.evaluate(x0 + right);
    return std::isfinite(a) && std::isfinite(b) ? (b - a) / (left + right) : qQNaN();
}

// A slope that grows as the step shrinks has no finite limit: 16 times smaller a step
// gives a root's quotient 4 to 6 times, a jump's 16 times the size; a smooth curve's
// stays put.
bool growsWithoutBound(double fine, double coarse)
{
    return std::abs(fine) > 1 && std::abs(fine) > 3 * std::abs(coarse); // false for NaN
}

} // namespace

CurveSlope SlopeAt(const CompiledFormula& curve, double x0, const CompiledFormula* derivative)
{
    CurveSlope result;
    result.y = curve.evaluate(x0);
    if (!std::isfinite(result.y))
        return result;
    if (derivative) {
        const double d = derivative->evaluate(x0);
        if (std::isfinite(d))
            return {SlopeKind::Finite, result.y, d};
    }
    // About the cube root of the machine epsilon: the central difference's truncation and
    // rounding errors balance there.
    const double h = 6e-6 * std::max(1.0, std::abs(x0));
    // Each side on its own, so that a cusp (sqrt(abs(x)) at 0) is not hidden by symmetry.
    const double left = quotient(curve, x0, h, 0);
    const double right = quotient(curve, x0, 0, h);
    if (std::isnan(left) && std::isnan(right))
        return result;
    if (growsWithoutBound(left, quotient(curve, x0, 16 * h, 0)) ||
        growsWithoutBound(right, quotient(curve, x0, 0, 16 * h))) {
        result.kind = SlopeKind::Vertical;
        return result;
    }
    // At an edge of the domain the side that is defined decides.
    double fine = std::isnan(left) ? right : std::isnan(right) ? left : quotient(curve, x0, h, h);
    // Below the difference's own accuracy a slope is zero.
    if (std::abs(fine) < 1e-8 * std::max({1.0, std::abs(result.y), std::abs(x0)}))
        fine = 0;
    return {SlopeKind::Finite, result.y, fine};
}

QString readoutNumber(double value, const QLocale& locale)
{
    return numberText(value, locale, 4).replace(u'-', QChar(0x2212));
}

QString TangentEquationText(double slope, double x0, double y0, const QString& variable,
                            const QLocale& locale)
{
    const double k = QString::number(slope, 'g', 4).toDouble(); // the k shown
    double m = y0 - slope * x0;
    // What is left of m after cancelling is rounding, not an intercept.
    if (std::abs(m) < 1e-9 * std::max({1.0, std::abs(y0), std::abs(k * x0)}))
        m = 0;
    QString line;
    if (k != 0) {
        line = k == 1 ? QString() : k == -1 ? QString(QChar(0x2212)) : readoutNumber(k, locale);
        line += variable;
    }
    if (m != 0 || k == 0) {
        const QString mText = readoutNumber(std::abs(m), locale);
        if (k == 0)
            line = readoutNumber(m, locale);
        else
            line += (m < 0 ? QStringLiteral(" \u2212 ") : QStringLiteral(" + ")) + mText;
    }
    return QStringLiteral("k = %1   y = %2").arg(readoutNumber(slope, locale), line);
}

int MatchingParenPosition(const QString& text)
{
    // The loop stops before the last character: a ")" there is found by falling through.
    int opens = 0;
    int closes = 0;
    int i = 1;
    while (i < text.size()) {
        const QChar c = text[i - 1];
        if (c == u'(')
            ++opens;
        else if (c == u')')
            ++closes;
        if (closes == opens + 1)
            return i;
        ++i;
    }
    return i;
}

QString RewriteLog10(const QString& text)
{
    const int p = position(text, QStringLiteral("log10"));
    if (p == 0)
        return text;
    const QString left = text.left(p - 1);
    const QString rest = text.mid(p + 5); // after "log10("
    const int m = MatchingParenPosition(rest);
    const QString argument = rest.left(m - 1);
    const QString after = rest.mid(m);
    return left + QStringLiteral("(ln(") + RewriteLog10(argument) + QStringLiteral(")/ln(10))") +
           after;
}

} // namespace curvix::eval
