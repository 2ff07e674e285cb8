#pragma once

#include "eval/compiled_formula.h"
#include "eval/point.h"
#include "model/graph.h"

#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace curvix::model {

// The derivative's colour in a demonstration: a green no default function colour has, so
// that a class tells f and f' apart; the tangent keeps the tangent colour.
inline constexpr quint32 kDemoDerivativeColor = 0x0000A000;
inline constexpr quint32 kDemoDerivativeSecondColor = 0x000080FF; // when f is that green

// The derivative demonstration: a tangent walking along a copy of one curve, and the
// derivative's graph growing behind it. The growing graph has its own points; when the walk
// ends it becomes an item of the function box linked to its source, which the list keeps.
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
    quint32 derivativeColor = kDemoDerivativeColor;

    // The derivatives kept as items, (source text, derivative text): each goes with its
    // source. Carried from one walk to the next.
    std::vector<std::pair<QString, QString>> keptDerivatives;
};

} // namespace curvix::model
