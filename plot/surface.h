#pragma once

// Shared by the painting code of plot/: the surface of one paint and the arithmetic that
// places grid lines and ticks. Not for use outside plot/.

#include "eval/point.h"
#include "plot/coordinates.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <QtGlobal>
#include <vector>

namespace curvix::model {
struct AppState;
}

namespace curvix::plot {

// The surface for one paint: a painter in logical pixels and the world scales for it
// and for the picture's device pixels.
struct Surface {
    QImage* picture; // none on a vector medium
    QPainter& painter;
    PlotScale scale;       // logical pixels, for the painter
    PlotScale deviceScale; // device pixels, for single-pixel points
    double lineWidth = 1;  // factor on the width of curves and axes
};

// The pen width of thin lines (grid, ticks): one device pixel on a picture, one logical
// pixel elsewhere, where a width of 0 would print as the thinnest line a printer makes.
inline double hairlineWidth(const Surface& surface)
{
    return surface.picture ? 0.0 : 1.0;
}

// A vertical line of the hairline pen in the painter, set straight into the picture's
// pixels as the painter would set them (column floor(x); rows from the upper end rounded up
// to, not including, the lower end rounded): the painter takes a call per pixel of such a
// line. False, with
// nothing drawn, where the painter must draw it (no picture, a transform, a clip,
// antialiasing, a translucent colour, a line under a pixel long).
bool drawVerticalHairline(Surface& surface, double x, double y0, double y1, const QColor& color);

// A curve's points as single dots of one logical pixel each.
void drawCurvePoints(Surface& surface, const std::vector<eval::PointD>& points,
                     const QColor& color);
// A curve as lines 2 logical pixels wide joining its points, broken before every index in
// breaks; a point standing alone is drawn as a dot of that width.
void drawJoinedCurve(Surface& surface, const std::vector<eval::PointD>& points,
                     const std::vector<std::size_t>& breaks, const QColor& color, bool antialias);

// A read-out on a patch of the background, so that no curve or grid line strikes through it.
void drawTextOnPatch(QPainter& painter, QPointF at, const QString& text, QColor background);

// The areas under curves: the translucent shading, painted under the curves and axes, and
// the integrals' labels, painted with the read-outs.
void drawAreaShading(Surface& surface, const model::AppState& state);
void drawAreaLabels(Surface& surface, const model::AppState& state, const QColor& background);

// Where an axis crosses the other: at 0 when the range holds it, else at the lower end.
inline double AxisPosition(double min, double max)
{
    return (min <= 0 && 0 <= max) ? 0.0 : min;
}

inline double LargerOf(double a, double b)
{
    return a >= b ? a : b;
}

// Multiples k of `interval` with k * interval inside [from, to]: the positions of grid
// lines and ticks counted outwards from 0.
struct MultipleRange {
    double first = 1;
    double last = 0;
    bool empty() const { return first > last; }
};

inline MultipleRange multiplesWithin(double interval, double from, double to)
{
    if (!(interval > 0) || !std::isfinite(interval) || !(from <= to))
        return {};
    return {std::ceil(from / interval), std::floor(to / interval)};
}

// More lines or labels than pixels would only smear the surface (and take long): none then.
inline bool tooDense(const MultipleRange& range, double pixels)
{
    return !range.empty() && !(range.last - range.first <= pixels);
}

// Calls draw(k · interval) for the multiples of a range. The count is an integer: far from
// zero, k + 1 can equal k in floating point, and a floating counter would never end.
template <typename Draw>
void forEachMultiple(double interval, const MultipleRange& range, Draw draw)
{
    if (range.empty())
        return;
    const qint64 count = qint64(range.last - range.first);
    for (qint64 i = 0; i <= count; ++i)
        draw((range.first + double(i)) * interval);
}

} // namespace curvix::plot
