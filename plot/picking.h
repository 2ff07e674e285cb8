#pragma once

#include "model/app_state.h"

#include <QPointF>
#include <QSizeF>

namespace curvix::plot {

// The entry with a sampled point nearest to a point of the plot surface (logical pixels),
// within maxPixels of it; -1 when no curve passes that close. A curve the user drew wins
// over a derivative a demonstration kept.
int nearestCurve(const model::AppState& state, QSizeF surface, QPointF at, double maxPixels = 4);

// A tangent by its entry and its place in the entry's marks.
struct TangentPick {
    int entry = -1;
    int mark = -1;
    bool found() const { return entry >= 0; }
};
// The drawn tangent whose point of tangency is nearest to a point of the surface, within
// maxPixels of it; none when no such point is that close.
TangentPick nearestTangentPoint(const model::AppState& state, QSizeF surface, QPointF at,
                                double maxPixels = 8);

} // namespace curvix::plot
