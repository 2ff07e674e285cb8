#pragma once

#include "model/app_state.h"
#include "plot/coordinates.h"
#include "plot/range_rows.h"

#include <QLocale>
#include <QRectF>
#include <QSizeF>

#include <optional>

namespace curvix::plot {

// The zoom box in world units: its top-left corner and its size measured rightwards and
// downwards from there.
struct ZoomBox {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

// Half the ranges, its top-left corner at their centre.
ZoomBox initialZoomBox(const model::ViewWindow& view);

// The step after zooming by the share k: 0.1 when k·step is 0.05 or less (or no number),
// otherwise k·step rounded to one decimal, ties to even.
double zoomedStep(double share, double step);

// The range rows after zooming into the box: the current view is saved in the history, the
// box edges become minimum and maximum (single precision), the steps (7 digits too) scale with the share
// of the visible width the box covers; the ticks entries stay.
void zoomIn(model::AppState& state, const ZoomBox& box, RangeRow& x, RangeRow& y);

// Goes back one step, or to the first saved range; writes it into the rows (ticks stay)
// and makes it the view. False when the history is empty.
bool zoomOut(model::AppState& state, bool toBeginning, RangeRow& x, RangeRow& y);

// A round step (1, 2 or 5 times a power of ten) giving about ten ticks over the width.
double niceStep(double width);

// One turn of the mouse wheel by steps notches (positive zooms in) about a world point:
// the current view becomes a step of the history, so that stepwise zoom-out undoes the
// turn, and the view scaled by 0.8^steps about the point is returned. The state's view
// itself is left for the caller, who writes the new one into the range rows and reads it
// back from there.
model::ViewWindow wheelZoom(model::AppState& state, double steps, double worldX, double worldY);

// Writes a view's minimum, maximum and step into the rows with 7 significant digits, as
// the wheel zoom does; the ticks entries stay.
void writeViewRows(const model::ViewWindow& view, RangeRow& x, RangeRow& y);

// The view scaled by a factor about a world point that keeps its place on the surface,
// with round steps for the new widths.
model::ViewWindow scaledView(const model::ViewWindow& view, double factor, double x, double y);

// The view moved by a world distance (positive dx to the right, dy upwards); the sizes
// and steps stay.
model::ViewWindow shiftedView(const model::ViewWindow& view, double dx, double dy);

// Saves the current view as one step of the zoom history, so that stepwise zoom-out
// brings it back (a drag of the view).
void recordZoomStep(model::AppState& state);

// The view with the x or the y range widened about its centre so that one unit is as long
// on both axes for a plot of this pixel size (the margin of one step on each side counts,
// as on the surface). Never narrows a range; the steps stay.
model::ViewWindow equalScaleView(const model::ViewWindow& view, QSizeF pixels);

// A world coordinate rounded to the decimal place that one pixel's worth of units reaches:
// the finest place that still changes from pixel to pixel, no finer.
double roundToResolution(double value, double unitsPerPixel);

// "(x; y)" for the pointer at a world point: each coordinate rounded to its axis's
// resolution, written with the separator and the locale's decimal point.
QString pointerText(QPointF world, const PlotScale& scale, const QString& separator,
                    const QLocale& locale = QLocale());

} // namespace curvix::plot
