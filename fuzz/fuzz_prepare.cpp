// Formula preparation with any label: the first line is the label, the rest the typed
// formula; the first byte's low bit picks the C or the Swedish locale. A prepared text must
// compile again in the label's variable, as sampling relies on.

#include "fuzz_text.h"

#include "eval/formula.h"

#include <QLocale>

using namespace curvix::eval;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QLocale locale = (data[0] & 1) ? QLocale(QLocale::Swedish, QLocale::Sweden)
                                         : QLocale::c();
    const QStringList parts = curvix::fuzz::partsOf(curvix::fuzz::textOf(data + 1, size - 1), 2);
    const QString& label = parts[0];
    const QString& formula = parts[1];

    ExpressionEvaluator evaluator;
    int reports = 0;
    const QString prepared =
        PrepareExpressionText(evaluator, formula, label, [&](const QString&) { ++reports; },
                              locale);
    if (prepared.isEmpty() != (reports > 0))
        curvix::fuzz::fail("a report without a refusal, or the reverse", formula);
    if (prepared.isEmpty())
        return 0;

    const QString variable = VariableNameFromLabel(label);
    evaluator.DefineVariable(variable.isEmpty() ? QStringLiteral("x") : variable);
    if (evaluator.SetExpression(prepared) < 0)
        curvix::fuzz::fail("the prepared text does not compile", prepared);
    return 0;
}
