#include "app/window_placement.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>

namespace curvix::app {

namespace {

const QString kGeometryKey = QStringLiteral("window/geometry");
const QString kStateKey = QStringLiteral("window/state");

QSettings store()
{
    return QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
}

// The preferred size shrunk to fit the available screen with a margin, centred on it.
QRect firstStartGeometry(QSize preferred, QRect available)
{
    // Room for the window frame and a panel the available area may not count.
    const QSize room(available.width() * 95 / 100, available.height() * 90 / 100);
    QRect frame(QPoint(0, 0), preferred.boundedTo(room));
    frame.moveCenter(available.center());
    return frame;
}

} // namespace

void restoreWindowPlacement(QMainWindow& window, QSize preferred)
{
    const QSettings settings = store();
    // Qt moves a restored window that would be off every screen back onto one.
    if (window.restoreGeometry(settings.value(kGeometryKey).toByteArray())) {
        window.restoreState(settings.value(kStateKey).toByteArray());
        return;
    }
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect available = screen ? screen->availableGeometry() : QRect(QPoint(0, 0), preferred);
    const QRect frame = firstStartGeometry(preferred.expandedTo(window.minimumSizeHint()), available);
    window.resize(frame.size().expandedTo(window.minimumSizeHint()));
    window.move(frame.topLeft());
}

void rememberWindowPlacement(const QMainWindow& window)
{
    QSettings settings = store();
    settings.setValue(kGeometryKey, window.saveGeometry());
    settings.setValue(kStateKey, window.saveState());
}

} // namespace curvix::app
