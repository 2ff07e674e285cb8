#pragma once

// School problems for the symbolic derivative and primitive, shared by test_symbolic and
// bench_symbolic: the table in tests/data/symbolic_problems.tsv (its path comes from
// CURVIX_SYMBOLIC_PROBLEMS), and a numerical check of an answer against its problem.

#include "eval/evaluator.h"
#include "eval/formula.h"

#include <QFile>
#include <QLocale>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdio>
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
    QString label = QStringLiteral("f(x)");
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

// Reads the table: "kind<TAB>formula<TAB>from<TAB>to[<TAB>label]" a line, "#" starts a
// comment. A file that cannot be read or a line that does not fit gives no problems at all,
// so that a broken table fails loudly instead of shrinking.
inline std::vector<Problem> readProblems(const QString& path, QString* error = nullptr)
{
    const auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return std::vector<Problem>();
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return fail(path + QStringLiteral(": ") + file.errorString());
    std::vector<Problem> problems;
    int lineNumber = 0;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        ++lineNumber;
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QStringList fields = line.split(u'\t');
        Problem problem;
        bool fromOk = false;
        bool toOk = false;
        if (fields.size() >= 4) {
            problem.formula = fields[1];
            problem.from = fields[2].toDouble(&fromOk);
            problem.to = fields[3].toDouble(&toOk);
        }
        if (fields.size() == 5)
            problem.label = fields[4];
        const QString kind = fields[0];
        if (kind == u"derivative")
            problem.kind = Kind::Derivative;
        else if (kind == u"primitive")
            problem.kind = Kind::Primitive;
        else if (kind == u"none")
            problem.kind = Kind::NoElementaryPrimitive;
        else
            fromOk = false;
        if (fields.size() > 5 || !fromOk || !toOk || !(problem.from < problem.to))
            return fail(QStringLiteral("%1:%2: not a problem: %3").arg(path).arg(lineNumber).arg(line));
        problems.push_back(problem);
    }
    return problems;
}

#ifdef CURVIX_SYMBOLIC_PROBLEMS
// The shared table, read once; empty (with a warning) when it cannot be read.
inline const std::vector<Problem>& allProblems()
{
    static const std::vector<Problem> problems = [] {
        QString error;
        std::vector<Problem> read =
            readProblems(QString::fromUtf8(CURVIX_SYMBOLIC_PROBLEMS), &error);
        if (!error.isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(error));
        return read;
    }();
    return problems;
}
#endif

// The variable of a problem's label.
inline QString variableOf(const Problem& problem)
{
    const QString name = eval::VariableNameFromLabel(problem.label);
    return name.isEmpty() ? QStringLiteral("x") : name;
}

// Checks an answer the way the function box would read it: at points spread over the
// problem's interval, the answer equals the central difference quotient of the formula
// (derivatives), or the formula equals the central difference quotient of the answer
// (primitives). Returns "" when the answer holds, otherwise what is wrong.
inline QString checkAnswer(const Problem& problem, const QString& answer)
{
    const QString& label = problem.label;
    eval::ExpressionEvaluator evaluator;
    QString message;
    const auto keep = [&](const QString& m) { message = m; };
    const QString formula =
        eval::PrepareExpressionText(evaluator, problem.formula, label, keep);
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
