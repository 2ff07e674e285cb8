#include "app/plot_widget.h"

#include "plot/colors.h"

#include <QPainter>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QWheelEvent>

namespace curvix::app {

PlotWidget::PlotWidget(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(120, 90);
    // Tab reaches the plot (its keys pan, zoom and step the trace); a click leaves the focus
    // where the user was typing.
    setFocusPolicy(Qt::TabFocus);
    setAcceptDrops(true);
    setMouseTracking(true);
    // Labels and marks placed on the plot stand on its white paper, not on the theme.
    setPalette(plot::plotPalette());
}

QSize PlotWidget::devicePixelSize() const
{
    return size() * devicePixelRatioF();
}

void paintFocusFrame(QPainter& painter, const QWidget& widget)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(widget.palette().color(QPalette::Highlight), 2));
    painter.drawRect(QRectF(widget.rect()).adjusted(1, 1, -1, -1));
    painter.restore();
}

QPointF PlotWidget::keyboardPoint() const
{
    return m_keyboardPoint.value_or(QRectF(rect()).center());
}

void PlotWidget::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: emit keyActivated(keyboardPoint()); return;
    // Page Up and Page Down turn the wheel by one step, at the keyboard point.
    case Qt::Key_PageUp: emit wheelTurned(1, keyboardPoint()); return;
    case Qt::Key_PageDown: emit wheelTurned(-1, keyboardPoint()); return;
    // The other usual key for a context menu.
    case Qt::Key_F10:
        if (event->modifiers() == Qt::ShiftModifier) {
            emit rightButtonReleased(keyboardPoint());
            return;
        }
        [[fallthrough]];
    default: QWidget::keyPressEvent(event);
    }
}

void PlotWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_image.isNull())
        painter.fillRect(rect(), Qt::white);
    else
        painter.drawImage(QPointF(0, 0), m_image);
    if (hasFocus())
        paintFocusFrame(painter, *this);
}

void PlotWidget::contextMenuEvent(QContextMenuEvent* event)
{
    // A mouse's right button is handled on its release.
    if (event->reason() != QContextMenuEvent::Mouse)
        emit rightButtonReleased(keyboardPoint());
}

void PlotWidget::wheelEvent(QWheelEvent* event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps != 0)
        emit wheelTurned(steps, event->position());
    event->accept();
}

void PlotWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_panFrom && !(event->buttons() & (Qt::MiddleButton | Qt::LeftButton))) {
        m_panFrom.reset();
        unsetCursor();
        return;
    }
    if (event->button() == Qt::RightButton)
        emit rightButtonReleased(event->position());
    if (event->button() == Qt::LeftButton)
        emit leftButtonReleased(event->position());
    QWidget::mouseReleaseEvent(event);
}

void PlotWidget::mousePressEvent(QMouseEvent* event)
{
    const bool ctrlLeft = event->button() == Qt::LeftButton &&
                          (event->modifiers() & Qt::ControlModifier);
    if (event->button() == Qt::MiddleButton || ctrlLeft) {
        m_panFrom = event->position();
        setCursor(Qt::ClosedHandCursor);
        emit panStarted();
        return;
    }
    if (event->button() == Qt::LeftButton)
        emit leftButtonPressed(event->position());
    QWidget::mousePressEvent(event);
}

void PlotWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        emit doubleClicked(event->position());
}

void PlotWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panFrom)
        emit panned(event->position() - *m_panFrom);
    else if (event->buttons() & Qt::LeftButton)
        emit leftDragged(event->position());
    emit pointerMoved(event->position());
    QWidget::mouseMoveEvent(event);
}

void PlotWidget::dragEnterEvent(QDragEnterEvent* event)
{
    // The plot's own picture is not taken back; texts and formulas are.
    const QMimeData* data = event->mimeData();
    if (event->source() != this &&
        (data->hasFormat(formulaMimeType()) || (data->hasText() && !data->hasImage())))
        event->acceptProposedAction();
}

void PlotWidget::dropEvent(QDropEvent* event)
{
    const QMimeData* data = event->mimeData();
    if (data->hasFormat(formulaMimeType()))
        emit formulaDropped(QString::fromUtf8(data->data(formulaMimeType())), event->position());
    else if (data->hasText())
        emit textDropped(data->text(), event->position());
    event->acceptProposedAction();
}

void PlotWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    emit resized();
}

} // namespace curvix::app
