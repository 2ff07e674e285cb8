#pragma once

#include "eval/compiled_formula.h"
#include "eval/point.h"
#include "model/graph.h"

#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace curvix::model {

// The derivative demonstration: a tangent walking along a copy of one curve, and the
// derivative's graph growing behind it. It has its own points, so the graph list is never
// touched; the derivative's graph outlives the walk until the next start or a new drawing.
struct Demonstration {
    bool running = false;
    std::vector<double> xs;  // the x values of the walk
    std::size_t next = 0;    // index into xs of the next step
    bool fromList = false;   // listed x values, not a range: each gets a piece of its own
    bool hasLast = false;    // lastX holds the previous step's x
    double lastX = 0;

    QString text; // the demonstrated function as typed
    std::shared_ptr<const eval::CompiledFormula> formula;
    quint32 color = 0;                 // the function colour at the start
    std::vector<eval::PointD> curve;   // sampled once at the start
    std::optional<GraphMark> tangent;  // at the current x
    bool withDerivative = false;
    std::vector<eval::PointD> derivative; // (x, slope), growing step by step
};

} // namespace curvix::model
