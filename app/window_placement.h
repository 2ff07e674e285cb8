#pragma once

#include <QSize>

class QMainWindow;

namespace curvix::app {

// Puts the main window where the user left it, clamped to the screen it lands on; on the
// first start, the preferred size shrunk to fit the primary screen, centred on it.
void restoreWindowPlacement(QMainWindow& window, QSize preferred);
// Remembers the window's size, position and state for the next start.
void rememberWindowPlacement(const QMainWindow& window);

} // namespace curvix::app
