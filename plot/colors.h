#pragma once

#include <QColor>
#include <QPalette>
#include <QtGlobal>

namespace curvix::plot {

// Colour values are 0x00BBGGRR; with the top bit set, the low byte names a system colour
// (16 is the shadow of a button), which is taken from the palette.
QColor colorFromValue(quint32 value, const QPalette& palette);
// The same for what is painted on the plot: system colours come from plotPalette(), so the
// picture looks alike on screen, on paper and in files whatever the window's theme.
QColor colorFromValue(quint32 value);
// The plot's own light palette (the light Fusion colours), independent of the application's
// palette and style: the plot is a sheet of white paper even in a dark theme.
const QPalette& plotPalette();
// A plain colour value of an RGB colour.
quint32 colorValueFromColor(const QColor& color);

} // namespace curvix::plot
