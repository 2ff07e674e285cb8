#include "model/app_state.h"
#include "plot/area.h"
#include "plot/colors.h"
#include "plot/surface.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace curvix::plot {

namespace {

// The part of an area the view shows, as world x values; empty when none.
struct VisibleSpan {
    double from = 0;
    double to = 0;
    bool empty() const { return !(from < to); }
};

VisibleSpan visibleSpan(const model::AreaRegion& region, const model::ViewWindow& view)
{
    return {std::max(std::min(region.a, region.b), view.XMin),
            std::min(std::max(region.a, region.b), view.XMax)};
}

const model::GraphEntry* curveOf(const model::AppState& state, const model::AreaRegion& region)
{
    if (region.curve < 0 || std::size_t(region.curve) >= state.graphs.size())
        return nullptr;
    return &state.graphs[std::size_t(region.curve)];
}

// The region between the curve's sampled points and y = 0 over the span, one closed shape
// per stretch of the curve: a break of a smooth curve, or a gap of more than a few samples
// where the curve is not defined, starts a new one. Far off the picture a point is pulled
// back to a band around it, as the curves are.
QPainterPath areaShape(const model::AppState& state, const model::GraphEntry& entry,
                       VisibleSpan span, const PlotScale& scale)
{
    const double height = scale.pixels().height();
    const double axisY = std::clamp(scale.toPixel(0, 0).y(), -height, 2 * height);
    auto place = [&](const eval::PointD& p) {
        const QPointF at = scale.toPixel(p.x, p.y);
        return QPointF(at.x(), std::clamp(at.y(), -height, 2 * height));
    };
    QPainterPath shape;
    QPolygonF run;
    auto close = [&]() {
        if (run.size() > 1) {
            run.prepend(QPointF(run.front().x(), axisY));
            run.append(QPointF(run.back().x(), axisY));
            shape.addPolygon(run);
            shape.closeSubpath();
        }
        run.clear();
    };
    const std::vector<eval::PointD>& points = entry.points;
    const double gap = 4 * state.sampleStep;
    auto next = entry.breaks.begin();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const bool isBreak = next != entry.breaks.end() && *next == i;
        if (isBreak)
            ++next;
        if (points[i].x < span.from || points[i].x > span.to)
            continue;
        if (isBreak || (i > 0 && points[i].x - points[i - 1].x > gap))
            close();
        run.append(place(points[i]));
    }
    close();
    return shape;
}

QColor areaColor(quint32 curveColor)
{
    QColor color = colorFromValue(curveColor);
    color.setAlpha(64);
    return color;
}

} // namespace

void drawAreaShading(Surface& surface, const model::AppState& state)
{
    QPainter& painter = surface.painter;
    for (std::size_t i = 0; i < state.areas.size(); ++i) {
        const model::AreaRegion& region = state.areas[i];
        const model::GraphEntry* entry = curveOf(state, region);
        const VisibleSpan span = visibleSpan(region, state.view);
        // A divergent or undefined integral has no region to shade: its label says why.
        const bool finite = i >= state.areaReadouts.size() ||
                            state.areaReadouts[i].value.kind == model::AreaValue::Kind::Finite;
        if (!entry || span.empty() || !finite)
            continue;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing, true);
        painter.setPen(Qt::NoPen);
        painter.setBrush(areaColor(entry->color));
        painter.drawPath(areaShape(state, *entry, span, surface.scale));
        painter.restore();
    }
}

void drawAreaLabels(Surface& surface, const model::AppState& state, const QColor& background)
{
    QPainter& painter = surface.painter;
    const model::ViewWindow& view = state.view;
    for (std::size_t i = 0; i < state.areas.size() && i < state.areaReadouts.size(); ++i) {
        const model::AreaRegion& region = state.areas[i];
        const model::GraphEntry* entry = curveOf(state, region);
        const VisibleSpan span = visibleSpan(region, view);
        if (!entry || span.empty())
            continue;
        // Half-way up the curve in the middle of what is seen, kept inside the view.
        const double x = 0.5 * (span.from + span.to);
        const auto nearest = std::lower_bound(
            entry->points.begin(), entry->points.end(), x,
            [](const eval::PointD& p, double value) { return p.x < value; });
        double y = nearest == entry->points.end() ? 0 : nearest->y / 2;
        const double margin = 0.08 * (view.YMax - view.YMin);
        y = std::clamp(y, view.YMin + margin, view.YMax - margin);
        const QString text = areaLabelText(state.areaReadouts[i].value);
        const QPointF centre = surface.scale.toPixel(x, y);
        const QRectF box = painter.fontMetrics().boundingRect(text);
        painter.setPen(colorFromValue(entry->color).darker(130));
        drawTextOnPatch(painter, centre - QPointF(box.width() / 2, -box.height() / 4), text,
                        background);
    }
}

} // namespace curvix::plot
