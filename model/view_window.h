#pragma once

#include <QString>

#include <array>

namespace curvix::model {

// Which stretch of the plane the plot shows. Always copied as a whole: the zoom history
// keeps whole records. The step is both the tick distance and the border beyond each end.
struct ViewWindow {
    double XMin = -5;
    double XMax = 5;
    double XStep = 1;
    double XTicks = 1;
    double YMin = -5;
    double YMax = 5;
    double YStep = 1;
    double YTicks = 1;

    friend bool operator==(const ViewWindow&, const ViewWindow&) = default;
};

// The four texts (minimum, maximum, step, ticks) that fill one row of range boxes.
using RangePreset = std::array<QString, 4>;

// Which axis ends carry an arrow head.
struct AxisArrowSwitches {
    bool xNeg = true;
    bool xPos = true;
    bool yNeg = true;
    bool yPos = true;

    friend bool operator==(const AxisArrowSwitches&, const AxisArrowSwitches&) = default;
};

} // namespace curvix::model
