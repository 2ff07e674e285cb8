#include "plot/picking.h"

#include "plot/coordinates.h"

namespace curvix::plot {

int nearestCurve(const model::AppState& state, QSizeF surface, QPointF at, double maxPixels)
{
    const PlotScale scale = SetPlotScale(surface, state.view);
    int nearest = -1;
    double best = maxPixels * maxPixels;
    for (std::size_t k = 0; k < state.graphs.size(); ++k) {
        for (const eval::PointD& point : state.graphs[k].points) {
            const QPointF d = scale.toPixel(point.x, point.y) - at;
            const double squared = d.x() * d.x() + d.y() * d.y();
            if (squared <= best) {
                best = squared;
                nearest = int(k);
            }
        }
    }
    return nearest;
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
