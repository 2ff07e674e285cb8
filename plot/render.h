#pragma once

#include "eval/compiled_formula.h"
#include "eval/formula.h"
#include "model/app_state.h"
#include "model/drawing.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QSizeF>

#include <vector>

namespace curvix::plot {

// The window's switches and choices that painting reads.
struct RedrawOptions {
    bool grid = true;         // the grid check box
    bool arrows = true;       // the "X" check box: arrow heads at the axis ends
    bool tickLabels = true;   // the "Y" check box: numbers at the ticks
    bool exactTrig = false;   // x ticks as multiples of pi
    bool fractionForm = false; // ... written as stacked fractions
    QFont font;               // the plot area's font, for the tick labels
    QColor background = Qt::white; // Qt::transparent for a picture without a background
    double lineWidth = 1.0;   // factor on the width of curves and axes, for pictures to print
};

// The switches a drawing file keeps, as redraw options on the given font (its point size
// replaced by the drawing's when that names one), and back.
RedrawOptions redrawOptionsFor(const model::DrawingDisplay& display, const QFont& font);
model::DrawingDisplay displayOf(const RedrawOptions& options);

// A redraw first samples the drawing for its view (sampleDrawing), then paints the sampled
// state, which it only reads (paintPlot), and lays the fills over a raster picture.

// The x distance between curve samples for a view: a 7000th of its x range, whatever the zoom.
double sampleStepFor(const model::ViewWindow& view);

// A curve's points over the view: x from XMin to XMax in steps of step (the steps add up,
// as a counted floating loop does), keeping only finite values. Nothing for a step that
// would give more than a million samples.
std::vector<eval::PointD> sampleCurve(const eval::CompiledFormula& formula,
                                      const model::ViewWindow& view, double step);

// A curve sampled to be drawn as joined lines: its defined points in order of x, and the
// indexes i where points[i - 1] and points[i] must not be joined.
struct SampledCurve {
    std::vector<eval::PointD> points;
    std::vector<std::size_t> breaks;
};

// The samples of sampleCurve, refined between neighbours: more points where the curve is
// steep (a thousandth of the view's height apart at most), the last defined points before
// a domain edge, and a break at every pole, jump or gap in the domain.
SampledCurve sampleSmoothCurve(const eval::CompiledFormula& formula, const model::ViewWindow& view,
                               double step);

// The tangent mark at x of a curve: its formula through TangentLineText (lifted by one
// step), slope, point of tangency and points over the view; no points where the curve
// is undefined at x.
// The label and the status come from SlopeAt with the derivative's formula, when given.
model::GraphMark tangentMark(const eval::CompiledFormula& curve, const QString& variable, double x,
                             const model::ViewWindow& view, double step,
                             const eval::CompiledFormula* derivative = nullptr);
// The derivative's formula of an entry that applies to its compiled curve, or none.
const eval::CompiledFormula* exactDerivative(const model::GraphEntry& entry);

// How the entries of a redraw are sampled: one after another on the calling thread, or
// shared out among a small pool of threads. Both give the same points to the last bit.
// Automatic shares them out where that pays: with four cores or more. On two, waking the
// pool and painting points written on the other core cost more than the sampling saves
// (bench/run.sh redraw prints both).
enum class Sampling { Serial, Parallel, Automatic };

// Writes everything derived from the drawing and its view: the sample step, every entry's
// points and tangent marks, the demonstration's tangent and the trace point. An entry made
// without a compiled formula is compiled here once, with the state's parameter values; one
// that does not compile is reported and keeps no points. Reports come on the calling
// thread, in the order of the entries.
void sampleDrawing(model::AppState& state, const eval::Report& report = {},
                   Sampling sampling = Sampling::Automatic);

// Paints a sampled state onto any device, size in logical pixels: grid, axes, arrows, tick
// labels, the areas under curves, curves and their tangents, the demonstration, guide lines
// and the trace. A raster
// picture, when given, takes the curve points as single pixels of its own; other media get
// them as dots.
void paintPlot(const model::AppState& state, QPainter& painter, QSizeF logical, QImage* raster,
               const RedrawOptions& options);

// The two layers of paintPlot, for media that lay the fills between them as a picture
// does: everything under the fills, and the read-outs over them (tick labels, the
// tangents' read-outs, the demonstration's legend, the trace).
enum class PlotLayer { UnderFills, OverFills };
void paintPlotLayer(const model::AppState& state, QPainter& painter, QSizeF logical,
                    QImage* raster, const RedrawOptions& options, PlotLayer layer);

// A font sized in points, for painting in logical pixels (96 to the inch) on a device of
// another resolution, a printer: the text keeps the size it has on the screen.
QFont fontForDevice(QFont font, const QPaintDevice* device);

// The full redraw: samples, computes the areas (computeAreas), clears the picture, paints
// and replays the fills. The picture
// keeps its size and device pixel ratio; an empty picture is only sampled for.
void redraw(model::AppState& state, QImage& picture, const RedrawOptions& options,
            const eval::Report& report = {});
// The redraw of a sampled state without sampling again: a picture of another size or
// resolution of the same view.
void paintSampled(const model::AppState& state, QImage& picture, const RedrawOptions& options);

// Puts the trace on the sampled point of its curve: the first defined point at or after
// its x (points where the function is undefined are passed over), with its slope there;
// false when none.
bool PlaceTracePoint(model::AppState& state);

// The trace read-out beside the point: "(x; y)" with the coordinate separator, 7 decimals.
QString TraceText(const model::AppState& state);

// Replays the fills in order of creation on a drawn picture. Each stops at every curve,
// axis and guide line whatever its colour: the region is found on a mask of those.
void ReplayFills(QImage& picture, const model::AppState& state,
                 const RedrawOptions& options = {});

} // namespace curvix::plot
