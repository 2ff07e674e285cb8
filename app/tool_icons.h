#pragma once

#include <QIcon>

#include <functional>

class QAbstractButton;
class QPainter;

namespace curvix::app {

// An icon drawn by paint on a side x side canvas, scaled to the size and pixel density it
// is asked for, so that it is sharp on every screen. A disabled icon is drawn faded.
QIcon paintedIcon(int side, std::function<void(QPainter&)> paint);

// The pictures of the eleven tool buttons, drawn in the given ink so that they follow the
// palette: print, zoom in, zoom out, trace, tangents, derivative, primitive, delete,
// save as, new, change colour.
QIcon toolIcon(int index, const QColor& ink);

// Gives the button the icon that paint draws in the button's text colour, and draws it again
// whenever the palette or the theme changes, so that a dark theme gets light icons.
void setThemedIcon(QAbstractButton* button, std::function<QIcon(const QColor& ink)> paint);

} // namespace curvix::app
