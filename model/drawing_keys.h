#pragma once

// The names the drawing file gives to enumerations and records, shared by its writer and reader.

#include "model/drawing.h"

#include <QLatin1StringView>

#include <array>

namespace curvix::model::drawing_keys {

using Key = QLatin1StringView;

// The view's keys in the order of ViewWindow's fields.
inline constexpr std::array<const char*, 8> kViewKeys{"xMin", "xMax", "xStep", "xTicks",
                                                      "yMin", "yMax", "yStep", "yTicks"};
inline constexpr std::array<double ViewWindow::*, 8> kViewFields{
    &ViewWindow::XMin, &ViewWindow::XMax, &ViewWindow::XStep, &ViewWindow::XTicks,
    &ViewWindow::YMin, &ViewWindow::YMax, &ViewWindow::YStep, &ViewWindow::YTicks};
inline constexpr std::array<const char*, 3> kAngleNames{"radians", "degrees", "gradians"};
// World positions beyond this are nonsense for a school plot and would overflow pixels.
inline constexpr double kMaxCoordinate = 1e300;

} // namespace curvix::model::drawing_keys
