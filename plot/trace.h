#pragma once

#include "model/app_state.h"
#include "plot/coordinates.h"

#include <QString>

namespace curvix::plot {

// The entry the trace follows: the one whose text is in the function box, else the first;
// -1 when the list is empty.
int traceEntryFor(const model::AppState& state, const QString& boxText);

// Starts the trace on an entry at its sampled point in the view nearest the view's middle
// (the middle's x when none is in the view), its point not yet found. False, and
// nothing changes, when there is no such entry.
bool startTrace(model::AppState& state, int entry);
void stopTrace(model::AppState& state);

// Moves the trace a 200th of the view's width left (-1) or right (+1). False, without
// moving, when the step would leave the view or the trace is off: playing stops there.
bool traceStep(model::AppState& state, int direction);
// Puts the trace at x; the next redraw finds the curve's point there.
void traceTo(model::AppState& state, double x);
// Moves the trace onto a zero, extremum or inflection point of its curve within so many
// pixels of where it stands, exactly; false when there is none.
bool snapTrace(model::AppState& state, const PlotScale& scale, double withinPixels = 5);

} // namespace curvix::plot
