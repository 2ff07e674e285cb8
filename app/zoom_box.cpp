#include "app/zoom_box.h"

#include "app/plot_widget.h"
#include "model/strings.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace curvix::app {

ZoomBoxWidget::ZoomBoxWidget(QWidget* plot) : QFrame(plot)
{
    setObjectName(QStringLiteral("piczoombox"));
    setFrameShape(QFrame::Box);
    setLineWidth(1);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::SizeAllCursor);
    setToolTip(model::LoadResString(493));
    setAccessibleName(tr("Zoom box"));
    setAccessibleDescription(tr("Arrow keys move it, Shift with the arrow keys resizes it, "
                                "Enter zooms in, Esc closes it"));
    // The plot stays visible through the box.
    setAutoFillBackground(true);
    QPalette shade = palette();
    shade.setColor(QPalette::Window, QColor(0, 120, 215, 40));
    shade.setColor(QPalette::WindowText, QColor(0, 90, 180));
    setPalette(shade);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(3, 2, 3, 2);
    auto* label = new QLabel(tr("Dubbelklicka för att zooma in"), this);
    QFont small = label->font();
    small.setPointSizeF(std::max(6.0, small.pointSizeF() * 0.8));
    label->setFont(small);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    layout->addWidget(label, 0, Qt::AlignLeft | Qt::AlignTop);
    layout->addStretch();
    hide();
}

void ZoomBoxWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_grab = event->position().toPoint();
    m_dragging = true;
}

void ZoomBoxWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging || !(event->buttons() & Qt::LeftButton))
        return;
    const QPoint topLeft = mapToParent(event->position().toPoint() - m_grab);
    move(topLeft);
}

void ZoomBoxWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        emit zoomRequested();
}

bool ZoomBoxWidget::event(QEvent* event)
{
    // The window's own arrow-key shortcuts (trace, pan, plot size) wait while the box has
    // the keys.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
        const bool arrow = key->key() >= Qt::Key_Left && key->key() <= Qt::Key_Down;
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if ((arrow && (mods == Qt::NoModifier || mods == Qt::ShiftModifier)) ||
            (enter && mods == Qt::NoModifier)) {
            event->accept();
            return true;
        }
    }
    return QFrame::event(event);
}

void ZoomBoxWidget::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    paintFocusFrame(painter, *this);
}

void ZoomBoxWidget::stepBy(int dx, int dy, bool resize)
{
    const QWidget* plot = parentWidget();
    const int stepX = std::max(2, plot->width() / 40);
    const int stepY = std::max(2, plot->height() / 40);
    QRect box = geometry();
    if (resize) {
        box.setWidth(std::max(8, box.width() + dx * stepX));
        box.setHeight(std::max(8, box.height() + dy * stepY));
    } else {
        box.translate(dx * stepX, dy * stepY);
    }
    setGeometry(box);
}

void ZoomBoxWidget::keyPressEvent(QKeyEvent* event)
{
    const bool resize = event->modifiers() & Qt::ShiftModifier;
    switch (event->key()) {
    case Qt::Key_Escape: emit cancelled(); return;
    case Qt::Key_Return:
    case Qt::Key_Enter: emit zoomRequested(); return;
    case Qt::Key_Left: stepBy(-1, 0, resize); return;
    case Qt::Key_Right: stepBy(1, 0, resize); return;
    case Qt::Key_Up: stepBy(0, -1, resize); return;
    case Qt::Key_Down: stepBy(0, 1, resize); return;
    default: QFrame::keyPressEvent(event);
    }
}

} // namespace curvix::app
