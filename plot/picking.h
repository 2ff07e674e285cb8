#pragma once

#include "model/app_state.h"

#include <QPointF>
#include <QSizeF>

namespace curvix::plot {

// The entry with a sampled point nearest to a point of the plot surface (logical pixels),
// within maxPixels of it; -1 when no curve passes that close.
int nearestCurve(const model::AppState& state, QSizeF surface, QPointF at, double maxPixels = 4);

} // namespace curvix::plot
