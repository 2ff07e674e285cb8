#pragma once

#include "eval/evaluator.h"
#include "eval/parameters.h"
#include "model/demonstration.h"
#include "model/graph.h"
#include "model/view_window.h"

#include <QString>

#include <vector>

namespace curvix::model {

// Colour values are 0x00BBGGRR; a value with the top bit set names a system colour.
inline constexpr quint32 kButtonShadowColor = 0x80000010;
inline constexpr quint32 kDefaultTangentColor = 0x000000FF;

// One unit for the whole program: evaluation compiles formulas for the one in the state.
using AngleUnit = eval::AngleUnit;

// A flood fill asked for at a world position, in the fill colour of that moment.
struct FillPoint {
    double x = 0;
    double y = 0;
    quint32 color = 0;

    friend bool operator==(const FillPoint&, const FillPoint&) = default;
};

// The region between a curve and the x axis from a to b, shaded and labelled with its
// integral. a and b are x values as the axis reads them, in the drawing's angle unit.
struct AreaRegion {
    qint32 curve = -1; // the graph list index
    double a = 0;
    double b = 0;

    friend bool operator==(const AreaRegion&, const AreaRegion&) = default;
};

// What an area's integral came to: a number, or why there is none.
struct AreaValue {
    enum class Kind { Finite, Divergent, Undefined };
    Kind kind = Kind::Undefined;
    double integral = 0; // the signed integral from a to b
    double area = 0;     // the geometric area, the integral of |f|: larger where f changes sign
    bool exact = false;  // taken from the exact primitive
    QString message;     // Divergent and Undefined: why there is no number, naming the interval
};

// Derived from one area of AppState::areas (same index), never saved: the window fills in
// the primitive, computeAreas the value.
struct AreaReadout {
    // The prepared text of an exact primitive of the curve from the symbolic library;
    // empty for a value from the quadrature alone.
    QString primitive;
    AreaValue value;
    // What value was computed from, so that a redraw with nothing changed skips the work.
    QString computedFor;
};

// The program's whole state: one graph list, one view, one evaluator. Owned by the main
// window and handed by reference to the procedures that work on it; tests make their own.
struct AppState {
    // The graph list and its 16-bit count; graphCount equals graphs.size() after every change.
    std::vector<GraphEntry> graphs;
    qint16 graphCount = 0;
    // Filled field by field before it is copied into the list.
    GraphEntry newEntry;
    // The function box's drop-down list, mirroring the graph list as a tree.
    std::vector<FunctionItem> functionItems;
    // The one variable letter every function of the list uses; "" while the list is new.
    QString listVariable;
    // The letter formulas are read in: the list's, or x while the list is new.
    QString variable() const { return listVariable.isEmpty() ? QStringLiteral("x") : listVariable; }

    quint32 gridColor = kButtonShadowColor;
    quint32 axisColor = 0;
    quint32 functionColor = 0;
    quint32 fillColor = 0;
    quint32 tangentColor = kDefaultTangentColor;
    // Each new function takes the next colour of a fixed palette instead of functionColor.
    bool autoColors = false;
    // Curves drawn as joined, antialiased lines broken at poles, jumps and domain edges,
    // instead of single dots.
    bool smoothCurves = false;

    // Set by the derivative and primitive commands; live for one addFunction call.
    qint32 pendingDerivativeOf = -1;
    qint32 pendingPrimitiveOf = -1;

    bool documentChanged = false;

    ViewWindow view;
    ViewWindow startView;
    // Earlier views, record 0 the one before the first zoom; zoomCount saved steps.
    std::vector<ViewWindow> zoomHistory;
    qint16 zoomCount = 0;
    // The x distance between curve samples; the redraw sets it to a 7000th of the range.
    double sampleStep = static_cast<double>(0.001f);
    AngleUnit angleUnit = AngleUnit::Radians;

    // Guide lines x = a and y = b, drawn over the curves; the fills, replayed in order.
    std::vector<double> verticalLines;
    std::vector<double> horizontalLines;
    std::vector<FillPoint> fills;

    // The named numbers formulas may use besides the variable, in the order declared.
    eval::ParameterList parameters;
    // The areas under curves, in the order asked for.
    std::vector<AreaRegion> areas;
    // One read-out per area, kept as long as areas by computeAreas.
    std::vector<AreaReadout> areaReadouts;

    // The trace: a point walking along one curve, kept by its x so that it survives the
    // resampling of every redraw.
    struct Trace {
        bool on = false;
        int entry = -1;
        double x = 0;
        double y = 0;     // where the point was last drawn
        bool found = false;
        bool hasSlope = false; // slope holds the curve's finite slope at the point
        double slope = 0;
        // x is a point of interest the trace snapped to: it stands there, not on a sample.
        bool exact = false;
    } trace;

    Demonstration demonstration;

    // Set once at start-up from the string table.
    AxisArrowSwitches arrows;
    QString coordinateSeparator = QStringLiteral(",");
    RangePreset presetRadiansX, presetRadiansY;
    RangePreset presetDegreesX, presetDegreesY;
    RangePreset presetGradiansX, presetGradiansY;
    RangePreset presetDecimalX, presetDecimalY;

    eval::ExpressionEvaluator evaluator;
};

} // namespace curvix::model
