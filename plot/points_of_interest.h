#pragma once

#include "eval/compiled_formula.h"
#include "model/view_window.h"
#include "plot/coordinates.h"

#include <QPointF>
#include <QString>

#include <optional>
#include <vector>

namespace curvix::plot {

enum class PointKind { Zero, Minimum, Maximum, Inflection, Intersection };

struct PointOfInterest {
    PointKind kind = PointKind::Zero;
    double x = 0;
    double y = 0;

    friend bool operator==(const PointOfInterest&, const PointOfInterest&) = default;
};

// "zero", "minimum", "maximum", "inflection", "intersection": the words of the command line.
QString pointKindName(PointKind kind);

// The zeros, local minima and maxima and inflection points of a curve that lie in the view
// (x within XMin..XMax and y within YMin..YMax), sorted by x. They are found on samples of
// the curve and refined to about 1e-12 relative (inflection points, found on a numerical
// second derivative, to about 1e-9). A sign change across a pole or a jump is no zero; a
// double root is a zero because it is an extremum of value 0; a zero at the edge of the
// domain (sqrt(x) at 0) counts too. A zero's y is 0.
std::vector<PointOfInterest> pointsOfInterest(const eval::CompiledFormula& formula,
                                              const model::ViewWindow& view);

// Where two curves meet in the view, sorted by x, touching included; y is the first
// curve's value.
std::vector<PointOfInterest> intersections(const eval::CompiledFormula& first,
                                           const eval::CompiledFormula& second,
                                           const model::ViewWindow& view);

// The point nearest to pixel, when it lies within withinPixels of it on the plot of scale:
// what a trace snaps to.
std::optional<PointOfInterest> nearestPointOfInterest(const std::vector<PointOfInterest>& points,
                                                      const PlotScale& scale, QPointF pixel,
                                                      double withinPixels = 5);

} // namespace curvix::plot
