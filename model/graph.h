#pragma once

#include "eval/compiled_formula.h"
#include "eval/point.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <memory>
#include <vector>

namespace curvix::model {

// A tangent drawn on a curve: the variable it was written in, its point of tangency and
// the slope found there, and the tangent's own sampled points.
struct GraphMark {
    QString text;
    double x = 0;
    double slope = 0;
    std::vector<eval::PointD> points;
    QString line; // the tangent's formula as last drawn, for the status bar
    double y = 0; // the point of tangency as last drawn
    // "k = …   y = kx + m" beside the point, with the exact slope; empty (and nothing
    // drawn) where the curve has no finite slope at x.
    QString label;
};

// One drawn function. The typed text is the key; links are list indexes, -1 for none.
struct GraphEntry {
    QString expression; // the prepared text the evaluator compiles
    // The expression compiled once when the entry is made; every redraw samples it.
    std::shared_ptr<const eval::CompiledFormula> formula;
    QString text;       // the function as typed
    std::vector<eval::PointD> points;
    // Smooth curves only: the indexes i where points[i - 1] and points[i] must not be joined
    // (a pole, a jump or a gap in the domain lies between them).
    std::vector<std::size_t> breaks;
    std::vector<GraphMark> marks;
    // The symbolic derivative, compiled in radians, for the slopes the tangents and the
    // trace read out; none until the library has answered, or where it cannot.
    std::shared_ptr<const eval::CompiledFormula> slopeFormula;
    // The derivative's prepared text behind slopeFormula, "" when there is none: a new
    // parameter value compiles it again.
    QString slopeText;
    // The names of the parameters the function uses, in the order they are declared.
    QStringList parameters;
    qint32 derivativeIndex = -1;
    qint32 primitiveIndex = -1;
    quint32 color = 0;
};

// One item of the function box's drop-down list.
struct FunctionItem {
    QString text;
    int indent = 0;

    friend bool operator==(const FunctionItem&, const FunctionItem&) = default;
};

} // namespace curvix::model
