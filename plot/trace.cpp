#include "plot/trace.h"

#include "model/graph_list.h"
#include "plot/points_of_interest.h"

#include <limits>

namespace curvix::plot {

int traceEntryFor(const model::AppState& state, const QString& boxText)
{
    const int k = model::findGraphByText(state, boxText);
    if (k >= 0)
        return k;
    return state.graphs.empty() ? -1 : 0;
}

namespace {

// Distances in fractions of the view, so that a tall view does not favour points near
// the vertical middle line.
double startX(const model::AppState& state, int entry)
{
    const model::ViewWindow& v = state.view;
    const double midX = (v.XMin + v.XMax) / 2;
    const double midY = (v.YMin + v.YMax) / 2;
    double best = midX;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (const eval::PointD& p : state.graphs[std::size_t(entry)].points) {
        if (p.y < v.YMin || p.y > v.YMax || p.x < v.XMin || p.x > v.XMax)
            continue;
        const double dx = (p.x - midX) / (v.XMax - v.XMin);
        const double dy = (p.y - midY) / (v.YMax - v.YMin);
        if (dx * dx + dy * dy < bestDistance) {
            bestDistance = dx * dx + dy * dy;
            best = p.x;
        }
    }
    return best;
}

} // namespace

bool startTrace(model::AppState& state, int entry)
{
    if (entry < 0 || entry >= static_cast<int>(state.graphs.size()))
        return false;
    state.trace = {true, entry, startX(state, entry), 0, false};
    return true;
}

void stopTrace(model::AppState& state)
{
    state.trace.on = false;
}

bool traceStep(model::AppState& state, int direction)
{
    if (!state.trace.on)
        return false;
    const model::ViewWindow& view = state.view;
    const double next = state.trace.x + direction * ((view.XMax - view.XMin) / 200);
    if (next > view.XMax || next < view.XMin)
        return false;
    traceTo(state, next);
    return true;
}

void traceTo(model::AppState& state, double x)
{
    state.trace.x = x;
    state.trace.exact = false;
}

bool snapTrace(model::AppState& state, const PlotScale& scale, double withinPixels)
{
    model::AppState::Trace& trace = state.trace;
    if (!trace.on || trace.entry < 0 || trace.entry >= int(state.graphs.size()))
        return false;
    const eval::CompiledFormula* formula = state.graphs[std::size_t(trace.entry)].formula.get();
    if (!formula)
        return false;
    const double y = formula->evaluate(trace.x);
    if (!std::isfinite(y))
        return false;
    const std::optional<PointOfInterest> near = nearestPointOfInterest(
        pointsOfInterest(*formula, state.view), scale, scale.toPixel(trace.x, y), withinPixels);
    if (!near)
        return false;
    trace.x = near->x;
    trace.exact = true;
    return true;
}

} // namespace curvix::plot
