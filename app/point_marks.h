#pragma once

#include "model/app_state.h"
#include "plot/points_of_interest.h"

#include <QFont>
#include <QSizeF>

#include <vector>

namespace curvix::app {

class PlotLabels;

// The points of interest of graph entry curve and where it meets the other drawn functions,
// in the state's view; with curve -1, those of every function and every pair.
std::vector<plot::PointOfInterest> pointsToMark(const model::AppState& state, int curve);

// Puts a label with a dot on each point, one for points that stand together; returns how
// many labels.
// font is the labels' font, by which the dot is centred.
int markPointsOfInterest(const model::AppState& state, int curve, PlotLabels& labels,
                         QSizeF plotSize, const QFont& font);

} // namespace curvix::app
