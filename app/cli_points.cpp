#include "app/cli_points.h"

#include "eval/formula.h"
#include "eval/numtext.h"
#include "plot/coordinates.h"
#include "plot/points_of_interest.h"
#include "plot/value_table.h"

#include <cmath>
#include <memory>
#include <vector>

namespace curvix::app::cli {

namespace {

constexpr int kExitCompileError = 1;

// What --points and --table share: the options, and the formulas in the order given.
struct ToolRequest {
    QString range; // --table's FROM,TO,STEP
    std::optional<model::ViewWindow> view;
    model::AngleUnit angle = model::AngleUnit::Radians;
    QStringList formulas;
};

std::optional<ToolRequest> parseToolRequest(const QStringList& args, bool wantsRange,
                                            QString& problem)
{
    ToolRequest request;
    qsizetype i = 1;
    if (wantsRange) {
        if (args.size() < 2 || args[1].startsWith(QLatin1String("--"))) {
            problem = QStringLiteral("--table needs FROM,TO,STEP");
            return std::nullopt;
        }
        request.range = args[i++];
    }
    for (; i < args.size(); ++i) {
        const QString& a = args[i];
        if (!a.startsWith(QLatin1String("--"))) {
            request.formulas << a;
            continue;
        }
        if (i + 1 >= args.size()) {
            problem = QStringLiteral("%1 needs a value").arg(a);
            return std::nullopt;
        }
        const QString& value = args[++i];
        if (a == QLatin1String("--angle")) {
            const std::optional<model::AngleUnit> unit = angleFromName(value, problem);
            if (!unit)
                return std::nullopt;
            request.angle = *unit;
        } else if (a == QLatin1String("--view") && !wantsRange) {
            const plot::ViewReading reading = readViewOption(value);
            if (!reading.view) {
                problem = QStringLiteral("'%1' is not a view xmin,xmax,xstep,ymin,ymax,ystep: %2")
                              .arg(value, reading.problem);
                return std::nullopt;
            }
            request.view = reading.view;
        } else {
            problem = QStringLiteral("unexpected argument '%1'").arg(a);
            return std::nullopt;
        }
    }
    if (request.formulas.isEmpty()) {
        problem = QStringLiteral("%1 needs a formula").arg(args.first());
        return std::nullopt;
    }
    return request;
}

// Every formula compiled as the function box would; nothing (and the messages on err) when
// one does not compile.
std::optional<std::vector<std::shared_ptr<const eval::CompiledFormula>>>
compileAll(const ToolRequest& request, QTextStream& err)
{
    std::vector<std::shared_ptr<const eval::CompiledFormula>> formulas;
    bool failed = false;
    for (const QString& text : request.formulas) {
        eval::ExpressionEvaluator evaluator;
        QString message;
        const QString prepared = eval::PrepareExpressionText(
            evaluator, text, QStringLiteral("f(x)"), [&](const QString& m) { message = m; });
        auto formula = prepared.isEmpty() ? nullptr
                                          : eval::CompiledFormula::compile(
                                                prepared, QStringLiteral("x"), request.angle,
                                                nullptr, &message);
        if (!formula) {
            err << (message.isEmpty() ? QStringLiteral("empty formula") : message) << "\n";
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

int runPoints(const QStringList& args, QTextStream& out, QTextStream& err)
{
    QString problem;
    const std::optional<ToolRequest> request = parseToolRequest(args, false, problem);
    if (!request)
        return printUsageError(err, problem);
    const auto formulas = compileAll(*request, err);
    if (!formulas)
        return kExitCompileError;

    model::ViewWindow view;
    if (request->view) {
        view = *request->view;
    } else {
        model::AppState state;
        plot::InitPlotDefaults(state);
        state.angleUnit = request->angle;
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
    out.flush();
    return 0;
}

int runTable(const QStringList& args, QTextStream& out, QTextStream& err)
{
    QString problem;
    const std::optional<ToolRequest> request = parseToolRequest(args, true, problem);
    if (!request)
        return printUsageError(err, problem);
    const QStringList parts = request->range.split(QLatin1Char(','));
    std::optional<plot::TableRange> range;
    if (parts.size() != 3)
        problem = QStringLiteral("three values are needed");
    else
        range = plot::readTableRange(parts[0], parts[1], parts[2], &problem);
    if (!range) {
        return printUsageError(
            err, QStringLiteral("'%1' is not FROM,TO,STEP: %2").arg(request->range, problem));
    }
    const auto formulas = compileAll(*request, err);
    if (!formulas)
        return kExitCompileError;
    std::vector<plot::TableColumn> columns;
    for (qsizetype i = 0; i < request->formulas.size(); ++i)
        columns.push_back({request->formulas[i], (*formulas)[std::size_t(i)].get()});
    out << plot::tableText(plot::makeValueTable(*range, columns), plot::TableFormat::TabSeparated);
    out.flush();
    return 0;
}

} // namespace curvix::app::cli
