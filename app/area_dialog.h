#pragma once

#include <QString>

#include <optional>
#include <utility>

class QWidget;

namespace curvix::app {

// Asks for the bounds of the area under a curve, in two boxes From and To that take π as the
// range boxes do ("p" or "π", "2p", "-0,5p"), filled with a and b. OK with a box that holds no
// number keeps the dialog open and names the box. Nothing when cancelled.
std::optional<std::pair<double, double>> askAreaBounds(QWidget* parent, const QString& formulaText,
                                                       double a, double b);

} // namespace curvix::app
