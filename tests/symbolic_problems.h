#pragma once

// School problems for the symbolic derivative and primitive, shared by test_symbolic and
// bench_symbolic, with a numerical check of an answer against its problem.

#include "eval/evaluator.h"
#include "eval/formula.h"

#include <QLocale>
#include <QString>

#include <algorithm>
#include <cmath>

namespace curvix::symbolic_problems {

enum class Kind {
    Derivative,
    Primitive,
    // A primitive that is no elementary function: failing cleanly is right, and an answer
    // is only right when it checks.
    NoElementaryPrimitive,
};

struct Problem {
    Kind kind;
    const char* formula; // UTF-8, as typed into the function box
    double from;         // an interval where the formula is smooth
    double to;
    const char* label = "f(x)";
};

using K = Kind;

inline constexpr Problem kProblems[] = {
    // derivatives: polynomials
    {K::Derivative, "x^2", -3, 3},
    {K::Derivative, "3x^3-2x+7", -3, 3},
    {K::Derivative, "x^3+2x^2", -3, 3},
    {K::Derivative, "5", -3, 3},
    {K::Derivative, "x", -3, 3},
    {K::Derivative, "-x^4+x^2", -2, 2},
    {K::Derivative, "(x+1)^3", -3, 3},
    {K::Derivative, "(2x-1)^5", -2, 2},
    {K::Derivative, "x^10", -1.5, 1.5},
    {K::Derivative, "1/2x^2", -3, 3},
    {K::Derivative, "2,5x", -3, 3},
    {K::Derivative, "0.25x^4-1.5x^2", -3, 3},
    {K::Derivative, "2x(x+1)", -3, 3},
    {K::Derivative, "x(x-1)(x+2)", -3, 3},
    {K::Derivative, "1/2x", -3, 3},
    // rational
    {K::Derivative, "1/x", 0.2, 4},
    {K::Derivative, "1/x^2", 0.2, 4},
    {K::Derivative, "(x+1)/(x-1)", 1.2, 5},
    {K::Derivative, "x/(x^2+1)", -3, 3},
    {K::Derivative, "(x^2+1)/x", 0.3, 4},
    {K::Derivative, "1/(1+x^2)", -3, 3},
    {K::Derivative, "(3x-2)/(x+4)", -3, 3},
    {K::Derivative, "x^2/(x+1)", 0, 4},
    {K::Derivative, "1/(x^2-4)", -1.5, 1.5},
    // roots
    {K::Derivative, "sqrt(x)", 0.1, 5},
    {K::Derivative, "sqrt(x^2+1)", -3, 3},
    {K::Derivative, "x*sqrt(x)", 0.1, 5},
    {K::Derivative, "1/sqrt(x)", 0.1, 5},
    {K::Derivative, "sqrt(1-x^2)", -0.9, 0.9},
    {K::Derivative, "x^(1/3)", 0.1, 5},
    {K::Derivative, "(x^2+4)^(3/2)", -3, 3},
    {K::Derivative, "sqrt(x)/(x+1)", 0.1, 5},
    // trigonometric
    {K::Derivative, "sin(x)", -3, 3},
    {K::Derivative, "cos(2x)", -3, 3},
    {K::Derivative, "tan(x)", -1.4, 1.4},
    {K::Derivative, "sin(x)^2", -3, 3},
    {K::Derivative, "sin(x)cos(x)", -3, 3},
    {K::Derivative, "x*sin(x)", -3, 3},
    {K::Derivative, "sin(3x+1)", -3, 3},
    {K::Derivative, "cos(x)^3", -3, 3},
    {K::Derivative, "tan(2x)", -0.7, 0.7},
    {K::Derivative, "sin(x)/x", 0.2, 4},
    {K::Derivative, "1/cos(x)", -1.4, 1.4},
    {K::Derivative, "sin(x^2)", -2, 2},
    {K::Derivative, "x^2cos(x)", -3, 3},
    {K::Derivative, "cos(x)/(1+sin(x))", -1.2, 1.2},
    // inverse trigonometric
    {K::Derivative, "asin(x)", -0.9, 0.9},
    {K::Derivative, "acos(x)", -0.9, 0.9},
    {K::Derivative, "atan(x)", -3, 3},
    {K::Derivative, "atan(2x)", -3, 3},
    {K::Derivative, "asin(x/2)", -1.8, 1.8},
    {K::Derivative, "x*atan(x)", -3, 3},
    // exponential and logarithms
    {K::Derivative, "exp(x)", -3, 3},
    {K::Derivative, "e^x", -3, 3},
    {K::Derivative, "e^(2x)", -3, 3},
    {K::Derivative, "Exp(-x^2)", -3, 3},
    {K::Derivative, "x*exp(x)", -3, 3},
    {K::Derivative, "ln(x)", 0.2, 5},
    {K::Derivative, "ln(x^2+1)", -3, 3},
    {K::Derivative, "x*ln(x)", 0.2, 5},
    {K::Derivative, "ln(sin(x))", 0.2, 3},
    {K::Derivative, "2^x", -3, 3},
    {K::Derivative, "log10(x)", 0.2, 5},
    {K::Derivative, "log(x)", 0.2, 5},
    {K::Derivative, "ln(ln(x))", 1.5, 5},
    {K::Derivative, "exp(x)sin(x)", -3, 3},
    {K::Derivative, "10^x", -2, 2},
    {K::Derivative, "x^x", 0.2, 3},
    {K::Derivative, "exp(sin(x))", -3, 3},
    {K::Derivative, "ln(abs(x))", -4, -0.2},
    {K::Derivative, "sqrt(x)ln(x)", 0.2, 5},
    {K::Derivative, "x^3exp(-x)", -3, 3},
    {K::Derivative, "e^x/x", 0.3, 4},
    {K::Derivative, "log10(x^2+1)", -3, 3},
    // hyperbolic, absolute value, pi, other variables
    {K::Derivative, "sinh(x)", -3, 3},
    {K::Derivative, "cosh(2x)", -3, 3},
    {K::Derivative, "tanh(x)", -3, 3},
    {K::Derivative, "asinh(x)", -3, 3},
    {K::Derivative, "acosh(x)", 1.1, 5},
    {K::Derivative, "atanh(x)", -0.9, 0.9},
    {K::Derivative, "abs(x)", 0.1, 3},
    {K::Derivative, "abs(x-1)", -3, 0.9},
    {K::Derivative, "¶x", -3, 3},
    {K::Derivative, "sin(¶x)", -3, 3},
    {K::Derivative, "¶x^2", -3, 3},
    {K::Derivative, "t^2sin(t)", -3, 3, "f(t)"},
    {K::Derivative, "3t-t^3", -3, 3, "g(t)"},

    // primitives: polynomials
    {K::Primitive, "x^2", -3, 3},
    {K::Primitive, "3x^2+2x+1", -3, 3},
    {K::Primitive, "2,5x", -3, 3},
    {K::Primitive, "x^5-x", -2, 2},
    {K::Primitive, "(x+1)^2", -3, 3},
    {K::Primitive, "(2x+3)^4", -3, 1},
    {K::Primitive, "7", -3, 3},
    {K::Primitive, "1/2x", -3, 3},
    {K::Primitive, "0,3x^2-1,2", -3, 3},
    // rational, partial fractions
    {K::Primitive, "1/x", 0.2, 5},
    {K::Primitive, "1/x", -5, -0.2},
    {K::Primitive, "1/x^2", 0.2, 5},
    {K::Primitive, "1/(x+1)", 0, 5},
    {K::Primitive, "1/(2x+3)", 0, 5},
    {K::Primitive, "x/(x^2+1)", -3, 3},
    {K::Primitive, "1/(x^2+1)", -3, 3},
    {K::Primitive, "1/(x^2+4)", -3, 3},
    {K::Primitive, "1/(x^2-1)", 1.5, 4},
    {K::Primitive, "1/(x(x+1))", 0.2, 4},
    {K::Primitive, "(2x+3)/(x^2+3x+2)", 0, 4},
    {K::Primitive, "x^2/(x+1)", 0, 4},
    {K::Primitive, "(x^3+1)/(x-2)", 2.5, 6},
    {K::Primitive, "1/(x^2-5x+6)", 3.5, 6},
    {K::Primitive, "1/(x+1)^2", 0, 4},
    {K::Primitive, "x/(x+1)^2", 0, 4},
    {K::Primitive, "1/((x+1)(x^2+1))", 0, 4},
    {K::Primitive, "x/(x^2+1)^2", -3, 3},
    {K::Primitive, "(x+2)/(x^2+2x+5)", -3, 3},
    // roots
    {K::Primitive, "sqrt(x)", 0.1, 5},
    {K::Primitive, "1/sqrt(x)", 0.1, 5},
    {K::Primitive, "x*sqrt(x)", 0.1, 5},
    {K::Primitive, "sqrt(2x+1)", 0, 4},
    {K::Primitive, "x/sqrt(x^2+1)", -3, 3},
    {K::Primitive, "1/sqrt(1-x^2)", -0.9, 0.9},
    {K::Primitive, "1/sqrt(x^2+1)", -3, 3},
    {K::Primitive, "sqrt(1-x^2)", -0.9, 0.9},
    {K::Primitive, "x*sqrt(x^2+4)", -3, 3},
    {K::Primitive, "x^(1/3)", 0.1, 5},
    // trigonometric, by parts, trigonometric powers
    {K::Primitive, "sin(x)", -3, 3},
    {K::Primitive, "cos(3x)", -3, 3},
    {K::Primitive, "tan(x)", -1.4, 1.4},
    {K::Primitive, "sin(x)^2", -3, 3},
    {K::Primitive, "cos(x)^2", -3, 3},
    {K::Primitive, "sin(x)cos(x)", -3, 3},
    {K::Primitive, "sin(x)^3", -3, 3},
    {K::Primitive, "cos(x)^3", -3, 3},
    {K::Primitive, "sin(x)^4", -3, 3},
    {K::Primitive, "tan(x)^2", -1.4, 1.4},
    {K::Primitive, "1/cos(x)^2", -1.4, 1.4},
    {K::Primitive, "x*sin(x)", -3, 3},
    {K::Primitive, "x*cos(x)", -3, 3},
    {K::Primitive, "x^2sin(x)", -3, 3},
    {K::Primitive, "sin(2x)cos(3x)", -3, 3},
    {K::Primitive, "1/(1+cos(x))", -2.5, 2.5},
    {K::Primitive, "1/sin(x)", 0.2, 3},
    {K::Primitive, "1/cos(x)", -1.4, 1.4},
    {K::Primitive, "sin(x)/cos(x)^2", -1.4, 1.4},
    {K::Primitive, "cos(x)/(1+sin(x))", -1.2, 1.2},
    {K::Primitive, "sin(3x)^2", -3, 3},
    {K::Primitive, "1/(2+cos(x))", -3, 3},
    // inverse trigonometric
    {K::Primitive, "atan(x)", -3, 3},
    {K::Primitive, "asin(x)", -0.9, 0.9},
    {K::Primitive, "x*atan(x)", -3, 3},
    {K::Primitive, "acos(x)", -0.9, 0.9},
    // exponential and logarithms
    {K::Primitive, "exp(x)", -3, 3},
    {K::Primitive, "e^(3x)", -3, 3},
    {K::Primitive, "x*exp(x)", -3, 3},
    {K::Primitive, "x^2exp(x)", -3, 3},
    {K::Primitive, "exp(x)sin(x)", -3, 3},
    {K::Primitive, "exp(-x)cos(x)", -3, 3},
    {K::Primitive, "x*exp(x^2)", -2, 2},
    {K::Primitive, "2^x", -3, 3},
    {K::Primitive, "ln(x)", 0.2, 5},
    {K::Primitive, "x*ln(x)", 0.2, 5},
    {K::Primitive, "ln(x)^2", 0.2, 5},
    {K::Primitive, "ln(x)/x", 0.2, 5},
    {K::Primitive, "1/(x*ln(x))", 1.5, 6},
    {K::Primitive, "log10(x)", 0.2, 5},
    {K::Primitive, "exp(x)/(1+exp(x))", -3, 3},
    {K::Primitive, "1/(1+exp(x))", -3, 3},
    {K::Primitive, "exp(2x)+exp(-x)", -3, 3},
    {K::Primitive, "10^x", -2, 2},
    // hyperbolic, absolute value, pi, substitution, other variables
    {K::Primitive, "sinh(x)", -3, 3},
    {K::Primitive, "cosh(x)", -3, 3},
    {K::Primitive, "tanh(x)", -3, 3},
    {K::Primitive, "x*cosh(x)", -3, 3},
    {K::Primitive, "abs(x)", -3, 3},
    {K::Primitive, "¶", -3, 3},
    {K::Primitive, "sin(¶x)", -3, 3},
    {K::Primitive, "cos(2¶x)", -3, 3},
    {K::Primitive, "2x*cos(x^2)", -3, 3},
    {K::Primitive, "x^2(x^3+1)^4", -1, 1},
    {K::Primitive, "cos(x)exp(sin(x))", -3, 3},
    {K::Primitive, "sin(x)cos(x)^4", -3, 3},
    {K::Primitive, "ln(x)^3/x", 0.2, 5},
    {K::Primitive, "exp(sqrt(x))/sqrt(x)", 0.1, 5},
    {K::Primitive, "t*exp(t)", -3, 3, "f(t)"},
    {K::Primitive, "3t^2-1", -3, 3, "g(t)"},

    // no elementary primitive
    {K::NoElementaryPrimitive, "exp(x^2)", -2, 2},
    {K::NoElementaryPrimitive, "exp(-x^2)", -2, 2},
    {K::NoElementaryPrimitive, "sin(x)/x", 0.2, 4},
    {K::NoElementaryPrimitive, "cos(x)/x", 0.2, 4},
    {K::NoElementaryPrimitive, "exp(x)/x", 0.2, 4},
    {K::NoElementaryPrimitive, "1/ln(x)", 1.5, 5},
    {K::NoElementaryPrimitive, "sin(x^2)", -2, 2},
    {K::NoElementaryPrimitive, "cos(x^2)", -2, 2},
    {K::NoElementaryPrimitive, "sqrt(1+x^3)", 0, 3},
    {K::NoElementaryPrimitive, "x^x", 0.2, 3},
    {K::NoElementaryPrimitive, "sqrt(sin(x))", 0.2, 3},
};

inline QString kindName(Kind kind)
{
    switch (kind) {
    case Kind::Derivative: return QStringLiteral("derivative");
    case Kind::Primitive: return QStringLiteral("primitive");
    case Kind::NoElementaryPrimitive: return QStringLiteral("no elementary primitive");
    }
    return {};
}

// The variable of a problem's label.
inline QString variableOf(const Problem& problem)
{
    const QString name = eval::VariableNameFromLabel(QString::fromUtf8(problem.label));
    return name.isEmpty() ? QStringLiteral("x") : name;
}

// Checks an answer the way the function box would read it: at points spread over the
// problem's interval, the answer equals the central difference quotient of the formula
// (derivatives), or the formula equals the central difference quotient of the answer
// (primitives). Returns "" when the answer holds, otherwise what is wrong.
inline QString checkAnswer(const Problem& problem, const QString& answer)
{
    const QString label = QString::fromUtf8(problem.label);
    eval::ExpressionEvaluator evaluator;
    QString message;
    const auto keep = [&](const QString& m) { message = m; };
    const QString formula =
        eval::PrepareExpressionText(evaluator, QString::fromUtf8(problem.formula), label, keep);
    if (formula.isEmpty())
        return QStringLiteral("the problem does not compile: ") + message;
    const QString prepared = eval::PrepareExpressionText(evaluator, answer, label, keep);
    if (prepared.isEmpty())
        return QStringLiteral("the answer does not compile: ") + message;

    const int variable = evaluator.DefineVariable(variableOf(problem));
    const int f = evaluator.SetExpression(formula);
    const int g = evaluator.SetExpression(prepared);
    const auto at = [&](int id, double x) {
        evaluator.SetVariable(variable, x);
        return evaluator.Evaluate(id);
    };
    const bool derivative = problem.kind == Kind::Derivative;
    // The function whose slope is taken, and the one that should equal that slope.
    const int differenced = derivative ? f : g;
    const int slope = derivative ? g : f;

    constexpr int kPoints = 25;
    for (int i = 0; i < kPoints; ++i) {
        const double x = problem.from + (problem.to - problem.from) * (i + 0.5) / kPoints;
        const double h = 1e-5 * std::max(1.0, std::fabs(x));
        const double above = at(differenced, x + h);
        const double below = at(differenced, x - h);
        const double quotient = (above - below) / (2 * h);
        const double expected = at(slope, x);
        if (!std::isfinite(quotient) || !std::isfinite(expected))
            return QStringLiteral("not finite at x = %1").arg(x);
        const double tolerance = 1e-5 * (1 + std::fabs(expected)) +
                                 1e-10 * std::max(std::fabs(above), std::fabs(below)) / h;
        if (std::fabs(quotient - expected) > tolerance) {
            return QStringLiteral("at x = %1 the %2 is %3, the difference quotient %4")
                .arg(x)
                .arg(derivative ? QStringLiteral("answer") : QStringLiteral("formula"))
                .arg(expected, 0, 'g', 12)
                .arg(quotient, 0, 'g', 12);
        }
    }
    return {};
}

} // namespace curvix::symbolic_problems
