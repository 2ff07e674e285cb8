#include "app/cli_area.h"

#include "app/cli_points.h"
#include "eval/numtext.h"
#include "eval/symbolic.h"
#include "plot/area.h"

namespace curvix::app::cli {

namespace {

constexpr int kExitFailure = 1;

// The symbolic library's primitive, compiled; none where it has no answer (the quadrature
// alone then gives the value, so its messages are not shown).
std::shared_ptr<const eval::CompiledFormula> exactPrimitive(const QString& text,
                                                            const CommandLine& line)
{
    eval::SymbolicOptions options;
    options.angleUnit = int(line.angle.value_or(model::AngleUnit::Radians));
    options.parameters = eval::parameterNames(line.parameters);
    const eval::Report quiet = [](const QString&) {};
    const QString primitive = eval::SymbolicPrimitive(text, QStringLiteral("x"), quiet, options);
    QString unused;
    return primitive.isEmpty() ? nullptr : compileFormula(primitive, line, unused);
}

} // namespace

int runArea(const CommandLine& line, QTextStream& out, QTextStream& err)
{
    const QString text = line.formulas.value(0);
    QString message;
    const auto f = compileFormula(text, line, message);
    if (!f) {
        err << message << "\n";
        return kExitFailure;
    }
    const auto primitive = exactPrimitive(text, line);
    const double a = line.areaFrom, b = line.areaTo;
    const plot::AreaValue value = plot::integrateArea(*f, a, b, primitive.get());
    if (value.kind != plot::AreaValue::Kind::Finite) {
        err << plot::areaMessage(value, a, b, QLocale::c()) << "\n";
        return kExitFailure;
    }
    out << eval::numberText(value.integral, QLocale::c(), 10) << '\t'
        << eval::numberText(value.area, QLocale::c(), 10) << '\n';
    return 0;
}

} // namespace curvix::app::cli
