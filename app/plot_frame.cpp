#include "app/plot_frame.h"

#include "app/plot_widget.h"

#include <QResizeEvent>

namespace curvix::app {

namespace {
constexpr int kSmallestSide = 80;
}

PlotFrame::PlotFrame(PlotWidget* plot, QWidget* parent) : QWidget(parent), m_plot(plot)
{
    m_plot->setParent(this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(kSmallestSide, kSmallestSide);
}

void PlotFrame::resizePlotBy(int dx, int dy)
{
    const QSize current = m_size.value_or(size());
    m_size = QSize(std::clamp(current.width() + dx, kSmallestSide, std::max(kSmallestSide, width())),
                   std::clamp(current.height() + dy, kSmallestSide, std::max(kSmallestSide, height())));
    place();
}

void PlotFrame::fillFrame()
{
    m_size.reset();
    place();
}

void PlotFrame::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

void PlotFrame::place()
{
    QSize target = m_size.value_or(size());
    target = target.boundedTo(size()).expandedTo(QSize(1, 1));
    m_plot->setGeometry(QRect(QPoint(0, 0), target));
}

} // namespace curvix::app
