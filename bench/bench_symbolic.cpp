// Latency of the symbolic derivative and primitive over the school problems that
// test_symbolic checks, through the same entry points as the window (worker thread,
// request and result buffers included). Run it through bench/run.sh symbolic.
//   bench_symbolic [--rounds N] [--list] [--table FILE]
// --list prints every problem with its answer and time; --table reads the problems from
// FILE (same format) instead of the shared table.

#include "eval/symbolic.h"
#include "tests/symbolic_problems.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace curvix;
namespace problems = curvix::symbolic_problems;

namespace {

QString solve(const problems::Problem& p, QStringList& messages)
{
    const QString& formula = p.formula;
    const QString variable = problems::variableOf(p);
    const eval::Report report = [&](const QString& m) { messages << m; };
    eval::SymbolicOptions options;
    options.angleUnit = p.angleUnit;
    return p.kind == problems::Kind::Derivative
               ? eval::SymbolicDerivative(formula, variable, 1, report, options)
               : eval::SymbolicPrimitive(formula, variable, report, options);
}

// Right answer, or a clean failure where no elementary primitive exists.
bool passes(const problems::Problem& p, const QString& answer)
{
    if (answer.isEmpty())
        return p.kind == problems::Kind::NoElementaryPrimitive;
    return problems::checkAnswer(p, answer).isEmpty();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    bool list = false;
    QString table = QString::fromUtf8(CURVIX_SYMBOLIC_PROBLEMS);
    int rounds = 3;
    for (qsizetype i = 0; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--list")) {
            list = true;
        } else if (args[i] == QLatin1String("--table") && i + 1 < args.size()) {
            table = args[++i];
        } else if (args[i] == QLatin1String("--rounds") && i + 1 < args.size()) {
            rounds = std::max(1, args[++i].toInt());
        } else {
            std::fprintf(stderr, "usage: bench_symbolic [--rounds N] [--list] [--table FILE]\n");
            return 2;
        }
    }

    const std::vector<problems::Problem> all = problems::readProblems(table);

    // A reference answer that does not check is a fault of the table, not of the program.
    int badReferences = 0;
    for (const problems::Problem& p : all) {
        if (p.kind == problems::Kind::NoElementaryPrimitive)
            continue;
        if (const QString wrong = problems::checkAnswer(p, p.reference); !wrong.isEmpty()) {
            std::printf("BAD reference of %s: %s  %s\n", qPrintable(p.formula),
                        qPrintable(p.reference), qPrintable(wrong));
            ++badReferences;
        }
    }

    // One unmeasured pass: the CAS fills its tables on first use.
    for (const problems::Problem& p : all) {
        QStringList messages;
        solve(p, messages);
    }

    std::vector<double> times;
    int passed = 0;
    int longer = 0;
    const int total = int(all.size());
    if (total == 0) {
        std::fprintf(stderr, "no problems read from %s\n", qPrintable(table));
        return 1;
    }
    for (int round = 0; round < rounds; ++round) {
        for (const problems::Problem& p : all) {
            QStringList messages;
            const auto start = std::chrono::steady_clock::now();
            const QString answer = solve(p, messages);
            const double ms =
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                    .count();
            times.push_back(ms);
            if (round != 0)
                continue;
            const bool ok = passes(p, answer);
            const bool tooLong = ok && problems::longerThanReference(p, answer);
            passed += ok ? 1 : 0;
            longer += tooLong ? 1 : 0;
            if (list || !ok || tooLong) {
                const char* verdict = !ok ? "FAIL" : tooLong ? "LONG" : "ok";
                const QString shown =
                    answer.isEmpty() ? messages.join(QLatin1String(" / ")) : answer;
                const QString why =
                    ok ? QString() : QLatin1String("  ") + problems::checkAnswer(p, answer);
                std::printf("%-4s %-10s %-28s %8.2f ms  %s%s\n", verdict,
                            qPrintable(problems::kindName(p.kind).left(10)), qPrintable(p.formula),
                            ms, qPrintable(shown), qPrintable(why));
            }
        }
    }
    std::printf("symbolic median ms = %.2f, max ms = %.2f, pass = %d/%d, "
                "longer than reference = %d\n",
                median(times), *std::max_element(times.begin(), times.end()), passed, total,
                longer);
    return passed == total && longer == 0 && badReferences == 0 ? 0 : 1;
}
