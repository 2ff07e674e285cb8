#pragma once

#include "eval/formula.h"
#include "model/app_state.h"
#include "plot/coordinates.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>

#include <optional>
#include <vector>

namespace curvix::plot {

// Values of GraphEntry::tag for curves built point by point by the demonstration window:
// their points are the data, so the redraw draws them as they are and never recomputes them.
inline constexpr qint32 kDemoCurveTag = 1;      // the demonstrated function, sampled once
inline constexpr qint32 kDemoDerivativeTag = 2; // the derivative's graph, growing point by point
inline bool isPointByPoint(const model::GraphEntry& entry)
{
    return entry.tag == kDemoCurveTag || entry.tag == kDemoDerivativeTag;
}

// The window's switches and choices that the full redraw reads.
struct RedrawOptions {
    bool grid = true;         // the grid check box
    bool arrows = true;       // the "X" check box: arrow heads at the axis ends
    bool tickLabels = true;   // the "Y" check box: numbers at the ticks
    bool exactTrig = false;   // x ticks as multiples of pi
    bool fractionForm = false; // ... written as stacked fractions
    QFont font;               // the plot area's font, for the tick labels
    QColor background = Qt::white;
};

// The full redraw: clears the picture and draws grid, axes, arrows, tick labels, curves,
// guide lines and fills from the state, in that order. Recomputes the sample step and
// every curve's points, and lowers the set-up flag. The picture keeps its size and device
// pixel ratio; a formula that no longer compiles is reported and drawn without points.
void frmPicture1_Resize(model::AppState& state, QImage& picture, const RedrawOptions& options,
                        const eval::Report& report = {});

// Paints the plot without its fills onto any device, size in logical pixels: grid, axes,
// arrows, tick labels, curves and guide lines. A raster picture, when given, takes the curve
// points as single pixels of its own; other media get them as dots.
void PaintPlot(model::AppState& state, QPainter& painter, QSizeF logical, QImage* raster,
               const RedrawOptions& options, const eval::Report& report = {});

// Computes a tangent mark of an entry for the view: its formula through TangentLineText
// (lifted by one sample step), its slope, and its points over the view.
void ComputeTangent(model::AppState& state, const model::ViewWindow& view,
                    const model::GraphEntry& entry, model::GraphMark& mark,
                    const eval::Report& report = {});

// The sampled point of the traced curve the trace stands on: the first defined point at or
// after x (points where the function is undefined are passed over); false when none.
bool PlaceTracePoint(model::AppState& state);

// The trace read-out beside the point: "(x; y)" with the coordinate separator, 7 decimals.
QString TraceText(const model::AppState& state);

// Replays the fills in order of creation on a drawn picture, bounded by the function colour.
void ReplayFills(QImage& picture, const model::AppState& state);

// Fills one entry's points for the view: x from XMin to XMax in steps of sampleStep,
// keeping only finite values. When targetX is given, returns the index of the first point
// within half a step of it (or -1).
int ComputeCurvePoints(model::AppState& state, const model::ViewWindow& view,
                       model::GraphEntry& entry, std::optional<double> targetX = std::nullopt,
                       const eval::Report& report = {});

// The surface for one redraw: a painter in logical pixels and the world scales for it
// and for the picture's device pixels.
struct Surface {
    QImage* picture; // none on a vector medium
    QPainter& painter;
    PlotScale scale;       // logical pixels, for the painter
    PlotScale deviceScale; // device pixels, for single-pixel points
};

double AxisPosition(double min, double max);
double LargerOf(double a, double b);

void DrawGrid(Surface& surface, const model::ViewWindow& view, const QColor& color);
void DrawAxis(Surface& surface, const model::ViewWindow& view, int axis, const QColor& color);
void DrawCurvePoints(Surface& surface, const std::vector<eval::PointD>& points,
                     const QColor& color);
void DrawVerticalLine(Surface& surface, const model::ViewWindow& view, double x,
                      const QColor& color);
void DrawHorizontalLine(Surface& surface, const model::ViewWindow& view, double y,
                        const QColor& color);

// Tick marks and numbers of one axis (0 = x, 1 = y).
void DrawDecimalTickLabels(Surface& surface, const model::ViewWindow& view, int axis,
                           const QColor& color);
void DrawPiTickLabels(Surface& surface, const model::ViewWindow& view, bool degrees,
                      const QColor& color);
void DrawFractionTickLabels(Surface& surface, const model::ViewWindow& view,
                            const QColor& color);

// The text of a tick at a multiple of pi: "π", "−π/2", "3π/2"; value is the multiple.
QString piMultipleText(double multiple);

} // namespace curvix::plot
