#include "app/cli.h"

#include "eval/evaluator.h"
#include "eval/formula.h"
#include "eval/numtext.h"

#include <QLocale>

#include <optional>
#include <vector>

namespace curvix::app {

namespace {

constexpr int kExitCompileError = 1;
constexpr int kExitUsage = 2;

struct EvalRequest {
    QString formula;
    QString label = QStringLiteral("f(x)");
    std::vector<double> xs;
};

int usageError(QTextStream& err, const QString& problem)
{
    err << "curvix: " << problem << "\n" << usageText();
    err.flush();
    return kExitUsage;
}

// Reads "--eval FORMULA --at X [--at X ...] [--label f(t)]"; a message on failure.
std::optional<EvalRequest> parseEval(const QStringList& args, QString& problem)
{
    EvalRequest request;
    bool haveFormula = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& option = args[i];
        if (i + 1 >= args.size()) {
            problem = QStringLiteral("%1 needs a value").arg(option);
            return std::nullopt;
        }
        const QString value = args[++i];
        if (option == QLatin1String("--eval") && !haveFormula) {
            request.formula = value;
            haveFormula = true;
        } else if (option == QLatin1String("--at")) {
            bool ok = false;
            const double x = QLocale::c().toDouble(value.trimmed(), &ok);
            if (!ok) {
                problem = QStringLiteral("'%1' is not a number").arg(value);
                return std::nullopt;
            }
            request.xs.push_back(x);
        } else if (option == QLatin1String("--label")) {
            request.label = value;
        } else {
            problem = QStringLiteral("unexpected argument '%1'").arg(option);
            return std::nullopt;
        }
    }
    if (request.xs.empty()) {
        problem = QStringLiteral("--eval needs at least one --at X");
        return std::nullopt;
    }
    return request;
}

int runEval(const QStringList& args, QTextStream& out, QTextStream& err)
{
    QString problem;
    const std::optional<EvalRequest> request = parseEval(args, problem);
    if (!request)
        return usageError(err, problem);

    eval::ExpressionEvaluator evaluator;
    QString compileMessage;
    const QString prepared =
        eval::PrepareExpressionText(evaluator, request->formula, request->label,
                                    [&](const QString& m) { compileMessage = m; });
    if (prepared.isEmpty()) {
        err << (compileMessage.isEmpty() ? QStringLiteral("empty formula") : compileMessage)
            << "\n";
        err.flush();
        return kExitCompileError;
    }
    QString variable = eval::VariableNameFromLabel(request->label);
    if (variable.isEmpty())
        variable = QStringLiteral("x");
    const int variableId = evaluator.DefineVariable(variable);
    const int expressionId = evaluator.SetExpression(prepared);
    for (double x : request->xs) {
        evaluator.SetVariable(variableId, x);
        out << eval::roundTripText(evaluator.Evaluate(expressionId)) << "\n";
    }
    out.flush();
    return 0;
}

} // namespace

QString usageText()
{
    return QStringLiteral(
        "usage: curvix                       open the main window\n"
        "       curvix --eval FORMULA --at X [--at X ...] [--label f(t)]\n"
        "                                    print the formula's value at each X\n"
        "       curvix --help                show this text\n");
}

bool isHeadlessCommand(const QStringList& args)
{
    return !args.isEmpty() && args.first().startsWith(QLatin1String("--"));
}

int runCommandLine(const QStringList& args, QTextStream& out, QTextStream& err)
{
    if (args.isEmpty())
        return usageError(err, QStringLiteral("no command"));
    const QString& command = args.first();
    if (command == QLatin1String("--help") || command == QLatin1String("-h")) {
        out << usageText();
        out.flush();
        return 0;
    }
    if (command == QLatin1String("--eval"))
        return runEval(args, out, err);
    return usageError(err, QStringLiteral("unknown command '%1'").arg(command));
}

} // namespace curvix::app
