#include "app/plot_label.h"

#include "app/plot_widget.h"
#include "model/strings.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

namespace curvix::app {

PlotLabel::PlotLabel(double worldX, double worldY, QWidget* plot)
    : QLabel(plot), m_x(worldX), m_y(worldY)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::OpenHandCursor);
    setAttribute(Qt::WA_DeleteOnClose);
}

void PlotLabel::setWorld(double x, double y)
{
    m_x = x;
    m_y = y;
}

void PlotLabel::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_grab = event->position().toPoint();
    m_dragging = true;
    setFocus();
}

void PlotLabel::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragging && (event->buttons() & Qt::LeftButton))
        move(mapToParent(event->position().toPoint() - m_grab));
}

void PlotLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_dragging) {
        m_dragging = false;
        emit moved(pos());
    }
}

namespace {

QPoint arrowStep(const QKeyEvent* event)
{
    const int step = event->modifiers() & Qt::ShiftModifier ? 10 : 1;
    switch (event->key()) {
    case Qt::Key_Left: return {-step, 0};
    case Qt::Key_Right: return {step, 0};
    case Qt::Key_Up: return {0, -step};
    case Qt::Key_Down: return {0, step};
    default: return {};
    }
}

} // namespace

bool PlotLabel::event(QEvent* event)
{
    // The arrow keys move the focused label, before the window's shortcuts take them.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers others =
            key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
        if (!arrowStep(key).isNull() && !others) {
            event->accept();
            return true;
        }
    }
    return QLabel::event(event);
}

void PlotLabel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        close();
        return;
    }
    if (const QPoint step = arrowStep(event); !step.isNull()) {
        move(pos() + step);
        emit moved(pos());
        return;
    }
    QLabel::keyPressEvent(event);
}

void PlotLabel::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    paintFocusFrame(painter, *this);
}

void PlotLabel::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    QAction* remove = menu.addAction(model::LoadResString(469).remove(QLatin1Char('&')));
    if (menu.exec(event->globalPos()) == remove)
        close();
}

} // namespace curvix::app
