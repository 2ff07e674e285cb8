#include "app/cli_area.h"

#include "eval/formula.h"
#include "eval/numtext.h"
#include "eval/symbolic.h"
#include "plot/area.h"

#include <cmath>

namespace curvix::app::cli {

namespace {

constexpr int kExitFailure = 1;

using Formula = std::shared_ptr<const eval::CompiledFormula>;

Formula compileText(const QString& text, model::AngleUnit angle,
                    const eval::ParameterList& parameters, QString& message)
{
    eval::ExpressionEvaluator evaluator;
    const QString prepared = eval::PrepareExpressionText(
        evaluator, text, QStringLiteral("f(x)"), [&](const QString& m) { message = m; }, QLocale(),
        parameters);
    if (prepared.isEmpty())
        return nullptr;
    return eval::CompiledFormula::compile(prepared, QStringLiteral("x"), angle, nullptr, &message,
                                          parameters);
}

// The symbolic library's primitive, compiled; none where it has no answer (the quadrature
// alone then gives the value, so its messages are not shown).
Formula exactPrimitive(const QString& text, model::AngleUnit angle,
                       const eval::ParameterList& parameters)
{
    eval::SymbolicOptions options;
    options.angleUnit = int(angle);
    options.parameters = eval::parameterNames(parameters);
    const eval::Report quiet = [](const QString&) {};
    const QString primitive = eval::SymbolicPrimitive(text, QStringLiteral("x"), quiet, options);
    QString unused;
    return primitive.isEmpty() ? nullptr : compileText(primitive, angle, parameters, unused);
}

} // namespace

int runArea(const CommandLine& line, const eval::ParameterList& parameters, QTextStream& out,
            QTextStream& err)
{
    const QString text = line.formulas.value(0);
    const model::AngleUnit angle = line.angle.value_or(model::AngleUnit::Radians);
    QString message;
    const auto f = compileText(text, angle, parameters, message);
    if (!f) {
        err << (message.isEmpty() ? QStringLiteral("empty formula") : message) << "\n";
        return kExitFailure;
    }
    const auto primitive = exactPrimitive(text, angle, parameters);
    const double a = line.areaFrom, b = line.areaTo;
    const plot::AreaValue value = plot::integrateArea(*f, a, b, primitive.get());
    if (value.kind != plot::AreaValue::Kind::Finite) {
        err << plot::areaMessage(value, a, b, QLocale::c()) << "\n";
        return kExitFailure;
    }
    // What cancels to below the quadrature's accuracy is 0.
    const double integral = std::abs(value.integral) <= 1e-12 * value.area ? 0.0 : value.integral;
    out << eval::numberText(integral, QLocale::c(), 10) << '\t'
        << eval::numberText(value.area, QLocale::c(), 10) << '\n';
    return 0;
}

} // namespace curvix::app::cli
