#include "app/plot_widget.h"

#include <QPainter>
#include <QResizeEvent>

namespace curvix::app {

PlotWidget::PlotWidget(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(120, 90);
}

QSize PlotWidget::devicePixelSize() const
{
    return size() * devicePixelRatioF();
}

void PlotWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_image.isNull())
        painter.fillRect(rect(), Qt::white);
    else
        painter.drawImage(QPointF(0, 0), m_image);
}

void PlotWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    emit resized();
}

} // namespace curvix::app
