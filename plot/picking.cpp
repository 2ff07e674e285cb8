#include "plot/picking.h"

#include "plot/coordinates.h"

#include <algorithm>

namespace curvix::plot {

int nearestCurve(const model::AppState& state, QSizeF surface, QPointF at, double maxPixels)
{
    const PlotScale scale = SetPlotScale(surface, state.view);
    // The user's own curves come first: a derivative the demonstration drew is picked only
    // where no other curve is near.
    auto madeByDemonstration = [&](std::size_t k) {
        const auto& kept = state.demonstration.keptDerivatives;
        return std::any_of(kept.begin(), kept.end(),
                           [&](const auto& pair) { return pair.second == state.graphs[k].text; });
    };
    int nearest[2] = {-1, -1};
    double best[2] = {maxPixels * maxPixels, maxPixels * maxPixels};
    for (std::size_t k = 0; k < state.graphs.size(); ++k) {
        const int kind = madeByDemonstration(k) ? 1 : 0;
        for (const eval::PointD& point : state.graphs[k].points) {
            const QPointF d = scale.toPixel(point.x, point.y) - at;
            const double squared = d.x() * d.x() + d.y() * d.y();
            if (squared <= best[kind]) {
                best[kind] = squared;
                nearest[kind] = int(k);
            }
        }
    }
    return nearest[0] >= 0 ? nearest[0] : nearest[1];
}

TangentPick nearestTangentPoint(const model::AppState& state, QSizeF surface, QPointF at,
                                double maxPixels)
{
    const PlotScale scale = SetPlotScale(surface, state.view);
    TangentPick nearest;
    double best = maxPixels * maxPixels;
    for (std::size_t k = 0; k < state.graphs.size(); ++k) {
        const std::vector<model::GraphMark>& marks = state.graphs[k].marks;
        for (std::size_t i = 0; i < marks.size(); ++i) {
            if (marks[i].points.empty())
                continue; // not drawn: nothing to grab
            const QPointF d = scale.toPixel(marks[i].x, marks[i].y) - at;
            const double squared = d.x() * d.x() + d.y() * d.y();
            if (squared <= best) {
                best = squared;
                nearest = {int(k), int(i)};
            }
        }
    }
    return nearest;
}

} // namespace curvix::plot
