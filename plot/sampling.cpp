#include "plot/render.h"

#include <algorithm>
#include <cmath>

namespace curvix::plot {

namespace {

// Every curve is sampled at about this many x positions, whatever the zoom.
constexpr double kSamplesPerRange = 7000;
// A sample step that would give more points than this is not sampled at all (a range of
// zero width, or an absurd step), so that no redraw can hang.
constexpr std::size_t kMaxSamples = 1'000'000;

QString listVariable(const model::AppState& state)
{
    return state.listVariable.isEmpty() ? QStringLiteral("x") : state.listVariable;
}

// An entry made without its compiled formula gets it here, once; a text that does not
// compile is reported on every redraw and keeps no points.
const eval::CompiledFormula* entryFormula(model::GraphEntry& entry, const QString& variable,
                                          const eval::Report& report)
{
    if (!entry.formula) {
        QString message;
        entry.formula = eval::CompiledFormula::compile(entry.expression, variable, nullptr, &message);
        if (!entry.formula && report)
            report(message);
    }
    return entry.formula.get();
}

} // namespace

double sampleStepFor(const model::ViewWindow& view)
{
    return std::abs(view.XMax - view.XMin) / kSamplesPerRange;
}

std::vector<eval::PointD> sampleCurve(const eval::CompiledFormula& formula,
                                      const model::ViewWindow& view, double step)
{
    std::vector<eval::PointD> points;
    if (!(step > 0) || !std::isfinite(step) || !(view.XMin <= view.XMax) ||
        (view.XMax - view.XMin) / step > double(kMaxSamples))
        return points;

    // The buffers live on: a redraw samples many curves of about the same length.
    thread_local std::vector<double> xs;
    thread_local std::vector<double> ys;
    xs.clear();
    for (double x = view.XMin; x <= view.XMax && xs.size() < kMaxSamples; x += step) {
        xs.push_back(x);
        if (x + step == x) // the step is lost in x: no further sample would differ
            break;
    }
    ys.resize(xs.size());
    formula.evaluateBatch(xs, ys);

    points.reserve(xs.size());
    for (std::size_t i = 0; i < xs.size(); ++i)
        if (std::isfinite(ys[i]))
            points.push_back({xs[i], ys[i]});
    return points;
}

model::GraphMark tangentMark(const eval::CompiledFormula& curve, const QString& variable, double x,
                             const model::ViewWindow& view, double step)
{
    const eval::TangentLine line = eval::TangentLineText(curve, variable, x, step);
    model::GraphMark mark;
    mark.x = x;
    mark.text = line.variable;
    mark.slope = line.slope;
    mark.line = line.text;
    mark.y = line.y;
    // Outside the function's domain there is no tangent: nothing to draw, nothing to say.
    if (!std::isfinite(mark.slope) || !std::isfinite(mark.y))
        return mark;
    // The line's text is a formula like any typed one: prepared (decimal comma) and compiled.
    eval::ExpressionEvaluator evaluator;
    const QString prepared = eval::PrepareExpressionText(
        evaluator, line.text, QStringLiteral("f(%1)").arg(variable), {});
    if (const auto formula = eval::CompiledFormula::compile(prepared, variable))
        mark.points = sampleCurve(*formula, view, step);
    return mark;
}

void sampleDrawing(model::AppState& state, const eval::Report& report)
{
    const model::ViewWindow& view = state.view;
    state.sampleStep = sampleStepFor(view);
    const double step = state.sampleStep;
    const QString variable = listVariable(state);
    for (model::GraphEntry& entry : state.graphs) {
        const eval::CompiledFormula* formula = entryFormula(entry, variable, report);
        entry.points = formula ? sampleCurve(*formula, view, step) : std::vector<eval::PointD>{};
        for (model::GraphMark& mark : entry.marks) {
            if (formula)
                mark = tangentMark(*formula, variable, mark.x, view, step);
            else
                mark.points.clear();
        }
    }
    model::Demonstration& demo = state.demonstration;
    if (demo.tangent && demo.formula)
        demo.tangent = tangentMark(*demo.formula, variable, demo.tangent->x, view, step);
    if (state.trace.on)
        PlaceTracePoint(state);
}

bool PlaceTracePoint(model::AppState& state)
{
    model::AppState::Trace& trace = state.trace;
    trace.found = false;
    if (trace.entry < 0 || trace.entry >= int(state.graphs.size()))
        return false;
    const std::vector<eval::PointD>& points = state.graphs[std::size_t(trace.entry)].points;
    const double tolerance = state.sampleStep / 2;
    const auto at = std::lower_bound(points.begin(), points.end(), trace.x - tolerance,
                                     [](const eval::PointD& p, double x) { return p.x < x; });
    if (at == points.end())
        return false;
    trace.x = at->x;
    trace.y = at->y;
    trace.found = true;
    return true;
}

} // namespace curvix::plot
