// The evaluator on any text: compile it, evaluate it at a few x one point at a time and as a
// batch, and check that both ways agree and that the error state matches the result.

#include "fuzz_text.h"

#include "eval/evaluator.h"

#include <array>
#include <cmath>
#include <cstring>

using curvix::eval::CompileError;
using curvix::eval::ExpressionEvaluator;

namespace {

constexpr std::array<double, 7> kXs{-2.5, -1, 0, 0.5, 3, 1e300, -1e-300};

bool sameValue(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    if (a == b)
        return true;
    return std::abs(a - b) <= 1e-12 * std::max(std::abs(a), std::abs(b));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = curvix::fuzz::textOf(data, size);
    ExpressionEvaluator evaluator;
    const int x = evaluator.DefineVariable(QStringLiteral("x"));
    const int t = evaluator.DefineVariable(QStringLiteral("t"));
    evaluator.SetVariable(t, 0.25);
    const int id = evaluator.SetExpression(text);
    if (id < 0) {
        if (!evaluator.HasError() || evaluator.LastError().code == CompileError::Code::None ||
            evaluator.ErrorText().isEmpty())
            curvix::fuzz::fail("refused without an error", text);
        const CompileError error = evaluator.LastError();
        if (error.position < 1 || error.position > text.size() + 1)
            curvix::fuzz::fail("error position outside the text", evaluator.ErrorText());
        if (!std::isnan(evaluator.EvaluateText(text)))
            curvix::fuzz::fail("a refused text has a value", text);
        return 0;
    }
    if (evaluator.HasError())
        curvix::fuzz::fail("compiled with an error", text);

    std::array<double, kXs.size()> single{};
    for (std::size_t i = 0; i < kXs.size(); ++i) {
        evaluator.SetVariable(x, kXs[i]);
        single[i] = evaluator.Evaluate(id);
    }
    std::array<double, kXs.size()> batch{};
    evaluator.EvaluateBatch(id, x, kXs, batch);
    for (std::size_t i = 0; i < kXs.size(); ++i) {
        if (!sameValue(single[i], batch[i]))
            curvix::fuzz::fail("batch and single point disagree", text);
    }
    // The text compiled once compiles again to the same values.
    evaluator.SetVariable(x, kXs[1]);
    if (!sameValue(evaluator.EvaluateText(text), single[1]))
        curvix::fuzz::fail("EvaluateText disagrees with Evaluate", text);
    return 0;
}
