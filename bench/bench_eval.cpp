// Nanoseconds per point of the evaluator over one curve of 7000 points, beside the same
// formula written in C++ (the limit) and muparser (the yardstick), then a table of ratios.

#include "eval/evaluator.h"
#include "eval/program.h"

#include <benchmark/benchmark.h>
#include <muParser.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace {

using curvix::eval::ExpressionEvaluator;

constexpr int kPoints = 7000;

std::vector<double> curveXs(double lo, double hi)
{
    std::vector<double> xs(kPoints);
    for (int i = 0; i < kPoints; ++i)
        xs[i] = lo + (hi - lo) * i / (kPoints - 1);
    return xs;
}

struct Case {
    std::string formula;  // ours
    std::string muparser; // the same with every "*" written out
    double lo = -10;
    double hi = 10;
    std::function<void(const std::vector<double>&, std::vector<double>&)> native;
};

const char* const kMethods[] = {"batch", "point", "native", "muparser"};

std::vector<Case>& cases()
{
    static std::vector<Case> all;
    return all;
}

// The formula by hand over the array, the loop inlined so that the compiler may vectorise it.
template <class F>
void addCase(std::string formula, std::string muparser, F f, double lo = -10, double hi = 10)
{
    cases().push_back({std::move(formula), std::move(muparser), lo, hi,
                       [f](const std::vector<double>& xs, std::vector<double>& ys) {
                           const double* in = xs.data();
                           double* out = ys.data();
                           for (int i = 0; i < kPoints; ++i)
                               out[i] = f(in[i]);
                       }});
}

// Runs one method of one case once over the curve.
class Runner {
public:
    explicit Runner(const Case& c) : case_(c), xs_(curveXs(c.lo, c.hi)), ys_(kPoints)
    {
        x_ = evaluator_.DefineVariable(QStringLiteral("x"));
        id_ = evaluator_.SetExpression(QString::fromStdString(c.formula));
        parser_.DefineVar("x", &muX_);
        parser_.SetExpr(c.muparser);
    }

    bool ok() const { return id_ >= 0; }
    std::vector<double>& ys() { return ys_; }

    void run(const std::string& method)
    {
        if (method == "batch") {
            evaluator_.EvaluateBatch(id_, x_, xs_, ys_);
        } else if (method == "point") {
            for (int i = 0; i < kPoints; ++i) {
                evaluator_.SetVariable(x_, xs_[i]);
                ys_[i] = evaluator_.Evaluate(id_);
            }
        } else if (method == "native") {
            case_.native(xs_, ys_);
        } else {
            for (int i = 0; i < kPoints; ++i) {
                muX_ = xs_[i];
                ys_[i] = parser_.Eval();
            }
        }
    }

private:
    const Case& case_;
    std::vector<double> xs_;
    std::vector<double> ys_;
    ExpressionEvaluator evaluator_;
    int x_ = 0;
    int id_ = -1;
    mu::Parser parser_;
    double muX_ = 0;
};

bool agree(double a, double b)
{
    if (!std::isfinite(a) || !std::isfinite(b))
        return std::isnan(a) == std::isnan(b) && (std::isnan(a) || a == b);
    return std::fabs(a - b) <= 1e-9 * std::max(1.0, std::fabs(b));
}

// All four ways must compute the same curve, or the timings compare different things.
bool checkCases()
{
    bool good = true;
    for (const Case& c : cases()) {
        Runner runner(c);
        if (!runner.ok()) {
            std::fprintf(stderr, "%s does not compile\n", c.formula.c_str());
            return false;
        }
        runner.run("native");
        const std::vector<double> expected = runner.ys();
        for (const char* method : kMethods) {
            runner.run(method);
            for (int i = 0; i < kPoints; ++i) {
                if (!agree(runner.ys()[i], expected[i])) {
                    std::fprintf(stderr, "%s: %s gives %.17g at point %d, native %.17g\n",
                                 c.formula.c_str(), method, runner.ys()[i], i, expected[i]);
                    good = false;
                    break;
                }
            }
        }
    }
    return good;
}

std::string benchmarkName(std::size_t caseIndex, const char* method)
{
    return "eval/" + std::to_string(caseIndex) + "/" + method;
}

void registerBenchmarks()
{
    for (std::size_t k = 0; k < cases().size(); ++k) {
        for (const char* method : kMethods) {
            benchmark::RegisterBenchmark(
                benchmarkName(k, method).c_str(),
                [k, method](benchmark::State& state) {
                    Runner runner(cases()[k]);
                    for (auto _ : state) {
                        runner.run(method);
                        benchmark::DoNotOptimize(runner.ys().data());
                        benchmark::ClobberMemory();
                    }
                    state.SetItemsProcessed(state.iterations() * kPoints);
                })
                ->Unit(benchmark::kNanosecond)
                ->ComputeStatistics("min", [](const std::vector<double>& v) {
                    return *std::min_element(v.begin(), v.end());
                });
        }
    }
}

// Prints as usual and keeps the fastest time per benchmark for the table: the fastest
// repetition, or the "min" statistic when only statistics are shown.
class TableReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            const bool useful = run.run_type == Run::RT_Iteration || run.aggregate_name == "min";
            if (!useful || run.error_occurred)
                continue;
            const double ns = run.GetAdjustedRealTime() / kPoints;
            auto [it, fresh] = nsPerPoint.try_emplace(run.run_name.str(), ns);
            if (!fresh)
                it->second = std::min(it->second, ns);
        }
        ConsoleReporter::ReportRuns(runs);
    }

    std::map<std::string, double> nsPerPoint;
};

void printTable(const std::map<std::string, double>& ns)
{
    std::printf("\n%-24s %12s %16s %13s %15s %13s %15s\n", "formula", "batch ns/pt",
                "per-point ns/pt", "native ns/pt", "muparser ns/pt", "batch/native",
                "muparser/batch");
    double logBatchNative = 0;
    double logMuparserBatch = 0;
    int rows = 0;
    for (std::size_t k = 0; k < cases().size(); ++k) {
        double t[4];
        bool complete = true;
        for (int m = 0; m < 4; ++m) {
            const auto it = ns.find(benchmarkName(k, kMethods[m]));
            complete = complete && it != ns.end();
            t[m] = complete ? it->second : 0;
        }
        if (!complete)
            continue; // filtered out on the command line
        const double batchNative = t[0] / t[2];
        const double muparserBatch = t[3] / t[0];
        std::printf("%-24s %12.2f %16.2f %13.2f %15.2f %13.2f %15.2f\n",
                    cases()[k].formula.c_str(), t[0], t[1], t[2], t[3], batchNative,
                    muparserBatch);
        logBatchNative += std::log(batchNative);
        logMuparserBatch += std::log(muparserBatch);
        ++rows;
    }
    if (rows == 0)
        return;
    // The vector functions, and so the batch's speed, depend on the processor.
    static const char* const setNames[] = {"baseline (x86-64)", "AVX2", "AVX-512"};
    std::printf("batch instruction set = %s\n",
                setNames[int(curvix::eval::Program::batchInstructionSet())]);
    std::printf("geomean batch/native = %.2f\n", std::exp(logBatchNative / rows));
    std::printf("geomean muparser/batch = %.2f\n", std::exp(logMuparserBatch / rows));
}

} // namespace

int main(int argc, char** argv)
{
    addCase("2x^2+1", "2*x^2+1", [](double x) { return 2 * (x * x) + 1; });
    addCase("3x^3-2x^2+x-5", "3*x^3-2*x^2+x-5",
            [](double x) { return 3 * (x * x * x) - 2 * (x * x) + x - 5; });
    addCase("x^4-3x^2+2x", "x^4-3*x^2+2*x",
            [](double x) { return x * x * x * x - 3 * (x * x) + 2 * x; });
    addCase("(x^2+1)/(x-2)", "(x^2+1)/(x-2)", [](double x) { return (x * x + 1) / (x - 2); });
    addCase("sin(x)*cos(2x)", "sin(x)*cos(2*x)",
            [](double x) { return std::sin(x) * std::cos(2 * x); });
    addCase("exp(-x^2)+ln(x^2+1)", "exp(-(x^2))+ln(x^2+1)",
            [](double x) { return std::exp(-(x * x)) + std::log(x * x + 1); });
    addCase("sqrt(x^2+1)", "sqrt(x^2+1)", [](double x) { return std::sqrt(x * x + 1); });
    addCase("sin(cos(x^2))", "sin(cos(x^2))", [](double x) { return std::sin(std::cos(x * x)); });
    addCase("abs(x)^0.5*tan(x/3)", "abs(x)^0.5*tan(x/3)",
            [](double x) { return std::pow(std::fabs(x), 0.5) * std::tan(x / 3); });
    addCase("1/(1+exp(-x))", "1/(1+exp(-x))", [](double x) { return 1 / (1 + std::exp(-x)); });

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    if (!checkCases())
        return 1;
    registerBenchmarks();
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    printTable(reporter.nsPerPoint);
    benchmark::Shutdown();
    return 0;
}
