#pragma once

#include <QString>

#include <optional>
#include <utility>

class QWidget;

namespace curvix::app {

// Asks for the bounds of the area under a curve in the variable, in two boxes From and To
// that take a number or a calculation, p or π standing for pi ("2p", "-0,5p", "π/2"), filled
// with a and b. OK with a box that gives no number keeps the dialog open and names the box.
// Nothing when cancelled.
std::optional<std::pair<double, double>> askAreaBounds(QWidget* parent, const QString& formulaText,
                                                       const QString& variable, double a, double b);

} // namespace curvix::app
