// Milliseconds to find the points of interest of 10 curves in the default view, and the
// intersections of one of them with the other nine: what marking them on the plot costs.

#include "eval/formula.h"
#include "plot/points_of_interest.h"

#include "median_reporter.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace curvix;

// The curves of bench_redraw: polynomials, trigonometry, roots, poles, exponentials.
const char* const kFormulas[] = {"sin(x)",      "x^2-3",         "2x^3-x",  "sqrt(x+4)",
                                 "1/(x-1)",     "3exp(-x^2)",    "ln(x^2+1)", "tan(x)",
                                 "abs(x)-2",    "cos(2x)+x/3"};

std::vector<std::shared_ptr<const eval::CompiledFormula>> compiledCurves()
{
    std::vector<std::shared_ptr<const eval::CompiledFormula>> curves;
    for (const char* text : kFormulas) {
        eval::ExpressionEvaluator evaluator;
        const QString prepared = eval::PrepareExpressionText(
            evaluator, QString::fromLatin1(text), QStringLiteral("f(x)"), {}, QLocale::c());
        curves.push_back(eval::CompiledFormula::compile(prepared, QStringLiteral("x")));
    }
    return curves;
}

void pointsOfTenCurves(benchmark::State& s)
{
    const auto curves = compiledCurves();
    const model::ViewWindow view;
    for (auto _ : s) {
        std::size_t found = 0;
        for (const auto& curve : curves)
            found += plot::pointsOfInterest(*curve, view).size();
        benchmark::DoNotOptimize(found);
    }
}

void intersectionsWithNine(benchmark::State& s)
{
    const auto curves = compiledCurves();
    const model::ViewWindow view;
    for (auto _ : s) {
        std::size_t found = 0;
        for (std::size_t i = 1; i < curves.size(); ++i)
            found += plot::intersections(*curves[0], *curves[i], view).size();
        benchmark::DoNotOptimize(found);
    }
}


} // namespace

BENCHMARK(pointsOfTenCurves)->Unit(benchmark::kNanosecond);
BENCHMARK(intersectionsWithNine)->Unit(benchmark::kNanosecond);

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const auto ms = [&](const char* name) {
        const auto it = reporter.medianMs.find(name);
        return it == reporter.medianMs.end() ? -1.0 : it->second;
    };
    std::printf("points of interest 10 curves median ms = %.3f\n", ms("pointsOfTenCurves"));
    std::printf("intersections 1 curve with 9 median ms = %.3f\n", ms("intersectionsWithNine"));
    return 0;
}
