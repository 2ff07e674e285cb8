#include "app/zoom_box.h"

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

void ZoomBoxWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        emit cancelled();
        return;
    }
    QFrame::keyPressEvent(event);
}

} // namespace curvix::app
