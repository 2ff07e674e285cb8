#pragma once

#include <QIcon>

namespace curvix::app {

// The pictures of the eleven tool buttons, drawn in the given ink so that they follow the
// palette: print, zoom in, zoom out, trace, tangents, derivative, primitive, delete,
// save as, new, change colour.
QIcon toolIcon(int index, const QColor& ink);

} // namespace curvix::app
