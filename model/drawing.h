#pragma once

#include "model/app_state.h"

#include <QString>
#include <QtGlobal>

#include <vector>

namespace curvix::model {

// Everything the user made that a drawing file keeps. Derived things (sampled points,
// compiled formulas, the trace, the demonstration) are not part of it: they are rebuilt.

struct DrawingFunction {
    QString text;                           // as typed
    QString variable = QStringLiteral("x"); // the letter the label named
    quint32 color = 0;                      // 0x00BBGGRR
    // List indexes as the graph list holds them, -1 for none; after deletions a link may
    // point past the end, and it is kept so.
    qint32 derivativeIndex = -1;
    qint32 primitiveIndex = -1;
    std::vector<double> tangentXs; // the x of each tangent mark, in the drawing's angle unit

    friend bool operator==(const DrawingFunction&, const DrawingFunction&) = default;
};

// The window's switches that change the picture but live outside AppState.
struct DrawingDisplay {
    bool grid = true;
    bool axisArrows = true; // arrow heads at the axis ends at all
    bool tickLabels = true;
    bool exactTrig = false;
    bool fractionForm = false;
    int fontSize = 0; // points of the plot font; 0 leaves the program's own font

    friend bool operator==(const DrawingDisplay&, const DrawingDisplay&) = default;
};

// A text dropped on the plot; x, y is its top-left corner in world coordinates.
struct TextLabel {
    QString text;
    double x = 0;
    double y = 0;

    friend bool operator==(const TextLabel&, const TextLabel&) = default;
};

// The coordinates of a curve's point written beside it: the curve's list index, the text
// as shown, and the world position of its top-left corner (the point itself).
struct PointLabel {
    qint32 curve = -1;
    QString text;
    double x = 0;
    double y = 0;

    friend bool operator==(const PointLabel&, const PointLabel&) = default;
};

// A typeset formula; label names the variable it is typeset in, e.g. "f(t)".
struct FormulaPicture {
    QString formula;
    QString label;
    double x = 0;
    double y = 0;

    friend bool operator==(const FormulaPicture&, const FormulaPicture&) = default;
};

struct Drawing {
    QString variable; // the list's variable, "" for an empty list
    std::vector<DrawingFunction> functions;
    std::vector<FunctionItem> items; // the function box's tree, as shown

    ViewWindow view;
    ViewWindow startView;
    std::vector<ViewWindow> zoomHistory; // the saved steps, oldest first
    AngleUnit angleUnit = AngleUnit::Radians;
    DrawingDisplay display;

    quint32 gridColor = kButtonShadowColor;
    quint32 axisColor = 0;
    quint32 functionColor = 0;
    quint32 fillColor = 0;
    quint32 tangentColor = kDefaultTangentColor;
    bool autoColors = false;
    AxisArrowSwitches arrowEnds;
    QString coordinateSeparator = QStringLiteral(",");

    std::vector<double> verticalLines;
    std::vector<double> horizontalLines;
    std::vector<FillPoint> fills;

    eval::ParameterList parameters;
    std::vector<AreaRegion> areas;

    std::vector<TextLabel> textLabels;
    std::vector<PointLabel> pointLabels;
    std::vector<FormulaPicture> formulaPictures;

    friend bool operator==(const Drawing&, const Drawing&) = default;
};

// The state's part of a drawing. The display switches and the labels live in the window:
// the caller fills drawing.display and the three label lists itself.
Drawing drawingFromState(const AppState& state);

// Replaces the state's drawing by this one: the parameters are declared, the functions are
// added again through addFunction (so each gets its compiled formula), then their links,
// tangent marks and the function box's tree are set as saved. The view, colours, lines,
// fills and areas follow. Nothing of the state changes when a function is refused or an
// area lies under no curve; *error then says which and why.
// The demonstration and the trace end; the document-changed flag is lowered. The caller
// redraws, and takes drawing.display and the labels into the window.
bool applyDrawing(AppState& state, const Drawing& drawing, QString* error = nullptr);

} // namespace curvix::model
