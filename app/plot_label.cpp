#include "app/plot_label.h"

#include "model/strings.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

namespace curvix::app {

PlotLabel::PlotLabel(double worldX, double worldY, QWidget* plot)
    : QLabel(plot), m_x(worldX), m_y(worldY)
{
    setFocusPolicy(Qt::ClickFocus);
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

void PlotLabel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        close();
        return;
    }
    QLabel::keyPressEvent(event);
}

void PlotLabel::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    QAction* remove = menu.addAction(model::LoadResString(469).remove(QLatin1Char('&')));
    if (menu.exec(event->globalPos()) == remove)
        close();
}

} // namespace curvix::app
