#include "plot/trace.h"

#include "model/graph_list.h"

namespace curvix::plot {

int traceEntryFor(const model::AppState& state, const QString& boxText)
{
    const int k = model::findGraphByText(state, boxText);
    if (k >= 0)
        return k;
    return state.graphs.empty() ? -1 : 0;
}

bool startTrace(model::AppState& state, int entry)
{
    if (entry < 0 || entry >= static_cast<int>(state.graphs.size()))
        return false;
    state.trace = {true, entry, state.view.XMin, 0, false};
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
}

} // namespace curvix::plot
