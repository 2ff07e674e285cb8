#pragma once

#include "eval/compiled_formula.h"
#include "eval/evaluator.h"
#include "eval/parameters.h"
#include "eval/point.h"

#include <QLocale>
#include <QString>

#include <functional>
#include <vector>

namespace curvix::eval {

// Receives the messages the formula procedures show to the user (a compile error).
using Report = std::function<void(const QString& message)>;

// The character that stands for pi in the function box and the label text box.
inline constexpr QChar kPiChar = QChar(0x00B6);
// The values substituted for pi and e. Both are deliberately not full precision.
inline constexpr double kPiValue = 3.14159265358979;
inline constexpr double kEValue = 2.71828183;

// The one character after the first "(" of the label, or "" when there is none.
QString VariableNameFromLabel(const QString& label);
// 1-based position of the first occurrence of needle (case-sensitive), 0 when absent.
int FindText(const QString& haystack, const QString& needle);
// Replaces every occurrence, rescanning from the start after each splice.
QString ReplaceText(QString text, const QString& find, const QString& replacement);

// Turns a typed formula into the text the evaluator accepts (pi, e, decimal comma, and
// parameters written together split into products, "ab" into "a*b"); on a compile error
// reports the evaluator's message and returns "". The parameters' names are known to the
// evaluator as variables after the label's, so the text compiles with
// CompiledFormula::compile(..., parameters). Resets the evaluator.
QString PrepareExpressionText(ExpressionEvaluator& evaluator, const QString& formula,
                              const QString& label, const Report& report,
                              const QLocale& locale = QLocale(),
                              const ParameterList& parameters = {});

struct TangentLine {
    QString text;     // the tangent's formula, e.g. "2*x+1,001-2*1"
    QString variable; // the variable name used
    double slope = 0; // rounded to 4 decimals
    double y = 0;     // the curve's value at x0, the point of tangency
};
// The tangent at x0 of a compiled curve in a variable, by a forward difference over
// sampleStep, lifted by one sampleStep above the point of tangency.
TangentLine TangentLineText(const CompiledFormula& curve, const QString& variable, double x0,
                            double sampleStep, const QLocale& locale = QLocale());

// The slope of a curve at x0 as the tangent's read-out shows it: from the derivative's
// formula when one is given and finite there, otherwise a central difference (exact for
// parabolas, so a minimum of x^3-3x reads 0). Undefined where the curve is; Vertical where
// the difference grows without bound as the step shrinks (sqrt at 0, a cube root, a jump).
enum class SlopeKind { Finite, Undefined, Vertical };
struct CurveSlope {
    SlopeKind kind = SlopeKind::Undefined;
    double y = 0;     // the curve at x0
    double slope = 0; // Finite only
};
CurveSlope SlopeAt(const CompiledFormula& curve, double x0,
                   const CompiledFormula* derivative = nullptr);

// The read-out beside a point of tangency: "k = 0.5   y = 0.5x − 1", 4 significant
// digits and a real minus sign, in the list's variable.
QString TangentEquationText(double slope, double x0, double y0, const QString& variable,
                            const QLocale& locale = QLocale());
// A number as the read-outs write it: 4 significant digits, a real minus sign.
QString readoutNumber(double value, const QLocale& locale = QLocale());

// log10(u) becomes (ln(u)/ln(10)) for the first log10 and those nested in its argument.
QString RewriteLog10(const QString& text);
// 1-based position of the ")" that closes an already opened "(", by the fall-through rule.
int MatchingParenPosition(const QString& text);

} // namespace curvix::eval
