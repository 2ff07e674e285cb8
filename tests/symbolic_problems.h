#pragma once

// School problems for the symbolic derivative and primitive, shared by test_symbolic and
// bench_symbolic: the table in tests/data/symbolic_problems.tsv (its path comes from
// CURVIX_SYMBOLIC_PROBLEMS), and a numerical check of an answer against its problem.

#include "eval/evaluator.h"
#include "eval/formula.h"
#include "eval/symbolic.h"

#include <QFile>
#include <QLocale>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

namespace curvix::symbolic_problems {

enum class Kind {
    Derivative,
    Primitive,
    // A primitive that is no elementary function: failing cleanly is right, and an answer
    // is only right when it checks.
    NoElementaryPrimitive,
};

struct Problem {
    Kind kind = Kind::Derivative;
    QString formula; // as typed into the function box
    double from = 0; // an interval where the formula is smooth
    double to = 0;
    QString reference; // a textbook's answer: no answer should be longer; "-" for none
    QString label = QStringLiteral("f(x)");
    QString answer; // the exact text expected, where its form matters; else empty
    int angleUnit = 1; // as in eval::SymbolicOptions: the kind's "/deg" or "/grad"
};

inline QString kindName(Kind kind)
{
    static const QStringList names{QStringLiteral("derivative"), QStringLiteral("primitive"),
                                   QStringLiteral("no elementary primitive")};
    return names.value(int(kind));
}

// Reads the table: "kind<TAB>formula<TAB>from<TAB>to<TAB>reference[<TAB>label[<TAB>answer]]" a
// line, "#"
// starts a comment. A line that does not fit empties the whole table, so that a broken table
// fails loudly instead of shrinking.
inline std::vector<Problem> readProblems(const QString& path)
{
    static const QStringList kinds{QStringLiteral("derivative"), QStringLiteral("primitive"),
                                   QStringLiteral("none")};
    std::vector<Problem> problems;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        QStringList fields = line.split(u'\t');
        // "derivative/deg": the problem in degrees, "/grad" in gradians.
        static const QStringList units{QString(), QStringLiteral("deg"), QStringLiteral("grad")};
        const QString unit = fields[0].section(u'/', 1);
        fields[0] = fields[0].section(u'/', 0, 0);
        bool fromOk = false, toOk = false;
        Problem p{Kind(kinds.indexOf(fields[0])), fields.value(1), fields.value(2).toDouble(&fromOk),
                  fields.value(3).toDouble(&toOk), fields.value(4),
                  fields.value(5, QStringLiteral("f(x)")), fields.value(6)};
        p.angleUnit = int(units.indexOf(unit)) + 1;
        if (!kinds.contains(fields[0]) || p.angleUnit == 0 || fields.size() < 5 || fields.size() > 7 || !fromOk ||
            !toOk || !(p.from < p.to)) {
            std::fprintf(stderr, "%s: not a problem: %s\n", qPrintable(path), qPrintable(line));
            return {};
        }
        problems.push_back(p);
    }
    return problems;
}

#ifdef CURVIX_SYMBOLIC_PROBLEMS
// The shared table, read once.
inline const std::vector<Problem>& allProblems()
{
    static const std::vector<Problem> problems =
        readProblems(QString::fromUtf8(CURVIX_SYMBOLIC_PROBLEMS));
    return problems;
}
#endif

// The variable of a problem's label.
inline QString variableOf(const Problem& problem)
{
    const QString name = eval::VariableNameFromLabel(problem.label);
    return name.isEmpty() ? QStringLiteral("x") : name;
}

// Whether an answer is longer than the problem's reference, as typed.
inline bool longerThanReference(const Problem& problem, const QString& answer)
{
    return problem.kind != Kind::NoElementaryPrimitive && answer.size() > problem.reference.size();
}

// A parameter's name and the value it takes in a check.
using ParameterValues = std::vector<std::pair<QString, double>>;

// Checks an answer the way the function box would read it: at points spread over the
// problem's interval, the answer equals the central difference quotient of the formula
// (derivatives), or the formula equals the central difference quotient of the answer
// (primitives), with the parameters at the given values. Returns "" when the answer holds,
// otherwise what is wrong.
inline QString checkAnswer(const Problem& problem, const QString& answer,
                           const ParameterValues& parameters = {})
{
    const QString& label = problem.label;
    eval::ExpressionEvaluator evaluator;
    QString message;
    const auto prepare = [&](const QString& text) {
        for (const auto& parameter : parameters)
            evaluator.DefineVariable(parameter.first);
        return eval::PrepareExpressionText(
            evaluator, eval::AngleTextInRadians(text, problem.angleUnit), label,
            [&](const QString& m) { message = m; });
    };
    const QString formula = prepare(problem.formula);
    const QString prepared = formula.isEmpty() ? QString() : prepare(answer);
    if (prepared.isEmpty())
        return (formula.isEmpty() ? QStringLiteral("the problem") : QStringLiteral("the answer")) +
               QStringLiteral(" does not compile: ") + message;

    const int variable = evaluator.DefineVariable(variableOf(problem));
    for (const auto& parameter : parameters)
        evaluator.SetVariable(evaluator.DefineVariable(parameter.first), parameter.second);
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
            return QStringLiteral("at x = %1 the slope is %2, the difference quotient %3")
                .arg(x)
                .arg(expected, 0, 'g', 12)
                .arg(quotient, 0, 'g', 12);
        }
    }
    return {};
}

} // namespace curvix::symbolic_problems
