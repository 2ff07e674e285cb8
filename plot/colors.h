#pragma once

#include <QColor>
#include <QPalette>
#include <QtGlobal>

namespace curvix::plot {

// Colour values are 0x00BBGGRR; with the top bit set, the low byte names a system colour
// (16 is the shadow of a button), which is taken from the palette.
QColor colorFromValue(quint32 value, const QPalette& palette);
// The same with the application's palette (the default palette without an application).
QColor colorFromValue(quint32 value);
// A plain colour value of an RGB colour.
quint32 colorValueFromColor(const QColor& color);

} // namespace curvix::plot
