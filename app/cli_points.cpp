#include "app/cli_points.h"

#include "app/cli_values.h"

#include "eval/formula.h"
#include "eval/numtext.h"
#include "model/graph_list.h"
#include "plot/coordinates.h"
#include "plot/points_of_interest.h"
#include "plot/value_table.h"

#include <cmath>
#include <memory>
#include <vector>

namespace curvix::app::cli {

namespace {

constexpr int kExitCompileError = 1;

// Every formula compiled as the function box would; nothing (and the messages on err) when
// one does not compile.
std::optional<std::vector<std::shared_ptr<const eval::CompiledFormula>>>
compileAll(const CommandLine& line, QTextStream& err)
{
    std::vector<std::shared_ptr<const eval::CompiledFormula>> formulas;
    bool failed = false;
    for (const QString& text : line.formulas) {
        QString message;
        auto formula = compileFormula(text, line, message);
        if (!formula) {
            err << message << "\n";
            failed = true;
        }
        formulas.push_back(std::move(formula));
    }
    err.flush();
    if (failed)
        return std::nullopt;
    return formulas;
}

// 10 significant digits; what is below the refinement's accuracy on the axis's span is 0.
QString pointNumber(double value, double span)
{
    return eval::numberText(std::abs(value) <= 1e-10 * span ? 0.0 : value, QLocale::c(), 10);
}

} // namespace

int runPoints(const CommandLine& line, QTextStream& out, QTextStream& err)
{
    const auto formulas = compileAll(line, err);
    if (!formulas)
        return kExitCompileError;

    model::ViewWindow view;
    if (line.view) {
        view = *line.view;
    } else {
        model::AppState state;
        plot::InitPlotDefaults(state);
        state.angleUnit = line.angle.value_or(model::AngleUnit::Radians);
        view = defaultView(state);
    }
    const double xSpan = std::abs(view.XMax - view.XMin);
    const double ySpan = std::abs(view.YMax - view.YMin);
    const auto print = [&](const std::vector<plot::PointOfInterest>& points) {
        for (const plot::PointOfInterest& p : points)
            out << plot::pointKindName(p.kind) << '\t' << pointNumber(p.x, xSpan) << '\t'
                << pointNumber(p.y, ySpan) << '\n';
    };
    for (const auto& formula : *formulas)
        print(plot::pointsOfInterest(*formula, view));
    for (std::size_t i = 0; i < formulas->size(); ++i)
        for (std::size_t j = i + 1; j < formulas->size(); ++j)
            print(plot::intersections(*(*formulas)[i], *(*formulas)[j], view));
    return 0;
}

int runTable(const CommandLine& line, QTextStream& out, QTextStream& err)
{
    const auto formulas = compileAll(line, err);
    if (!formulas)
        return kExitCompileError;
    std::vector<plot::TableColumn> columns;
    for (qsizetype i = 0; i < line.formulas.size(); ++i)
        columns.push_back({line.formulas[i], (*formulas)[std::size_t(i)].get()});
    out << plot::tableText(plot::makeValueTable(line.tableRange, columns),
                           plot::TableFormat::TabSeparated);
    return 0;
}

std::shared_ptr<const eval::CompiledFormula> compileFormula(const QString& text,
                                                           const CommandLine& line,
                                                           QString& message)
{
    const QString variable = model::labelVariable(line.label);
    message = undeclaredParameters(text, variable, line.parameters).value_or(QString());
    if (!message.isEmpty())
        return nullptr;
    eval::ExpressionEvaluator evaluator;
    const auto report = [&](const QString& m) { message = m; };
    const QString prepared = eval::PrepareExpressionText(
        evaluator, text, QStringLiteral("f(%1)").arg(variable), report, QLocale(),
        line.parameters);
    const model::AngleUnit angle = line.angle.value_or(model::AngleUnit::Radians);
    auto formula = prepared.isEmpty() ? nullptr
                                      : eval::CompiledFormula::compile(prepared, variable, angle,
                                                                       nullptr, &message,
                                                                       line.parameters);
    if (!formula && message.isEmpty())
        message = QStringLiteral("empty formula");
    return formula;
}

} // namespace curvix::app::cli
