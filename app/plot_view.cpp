#include "app/plot_view.h"

#include "app/form_names.h"
#include "app/plot_frame.h"
#include "app/plot_labels.h"
#include "app/plot_widget.h"
#include "app/zoom_box.h"
#include "model/strings.h"

#include <QLabel>
#include <QMouseEvent>

namespace curvix::app {

using model::LoadResString;

namespace {

void paintGrip(QLabel* grip, const QColor& color)
{
    QPalette palette = grip->palette();
    palette.setColor(QPalette::Window, color);
    grip->setPalette(palette);
}

} // namespace

PlotView::PlotView(model::AppState& state, model::Prompter& prompter, QWidget* window)
    : QObject(window), m_state(state), m_prompter(prompter)
{
    m_plot = new PlotWidget;
    m_plot->setObjectName(QLatin1String(formName::plotArea));
    m_frame = new PlotFrame(m_plot);
    m_zoomBox = new ZoomBoxWidget(m_plot);
    m_grip = new QLabel(m_plot);
    m_grip->setObjectName(QLatin1String(formName::grip));
    m_grip->setFixedSize(8, 8);
    m_grip->setCursor(Qt::SizeFDiagCursor);
    m_grip->installEventFilter(this);
    m_grip->setAutoFillBackground(true);
    paintGrip(m_grip, QColor(128, 128, 128));
    m_labels = new PlotLabels(state, prompter, m_plot, this);

    m_plot->setAccessibleName(LoadResString(5063));
    m_plot->setToolTip(LoadResString(5064));
    m_plot->setAccessibleDescription(
        tr("Ctrl with the arrow keys pans, Page Up and Page Down zoom, the menu key opens the "
           "tools; with the trace on, the arrow keys move it and Enter puts a point label, or "
           "a tangent in tangent mode, where it stands"));
    m_grip->setAccessibleName(LoadResString(5065));
    m_grip->setToolTip(LoadResString(5065));

    connect(m_plot, &PlotWidget::resized, this, &PlotView::redrawNeeded);
    connect(m_zoomBox, &ZoomBoxWidget::zoomRequested, this, &PlotView::confirmZoomBox);
    connect(m_zoomBox, &ZoomBoxWidget::cancelled, this, &PlotView::hideZoomBox);
    connect(m_plot, &PlotWidget::wheelTurned, this, [this](double steps, QPointF at) {
        hideZoomBox();
        emit wheelTurned(steps, toWorld(at));
    });
    connect(m_plot, &PlotWidget::leftButtonPressed, this, [this](QPointF at) {
        if (!m_zoomBox->isVisible())
            emit leftPressed(at);
    });
    connect(m_plot, &PlotWidget::rightButtonReleased, this, &PlotView::rightReleased);
    connect(m_plot, &PlotWidget::doubleClicked, this, &PlotView::doubleClicked);
    connectPointer();
}

void PlotView::connectPointer()
{
    connect(m_plot, &PlotWidget::pointerMoved, this, [this](QPointF at) {
        const plot::PlotScale s = scale();
        emit pointerText(plot::pointerText(s.toWorld(at), s, m_state.coordinateSeparator));
    });
    connect(m_plot, &PlotWidget::panStarted, this, [this] {
        hideZoomBox();
        m_panView = m_state.view;
        m_panScale = scale();
        m_panMoved = false;
    });
    connect(m_plot, &PlotWidget::panned, this, [this](QPointF pixels) {
        // The view moves against the pointer, so the point grabbed stays under it.
        const double dx = -pixels.x() * m_panScale.unitsPerPixelX();
        const double dy = pixels.y() * m_panScale.unitsPerPixelY();
        emit viewDragged(plot::shiftedView(m_panView, dx, dy), !m_panMoved);
        m_panMoved = true;
    });
}

QWidget* PlotView::frame() const
{
    return m_frame;
}

plot::PlotScale PlotView::scale() const
{
    return plot::SetPlotScale(QSizeF(m_plot->size()), m_state.view);
}

QPointF PlotView::toWorld(QPointF at) const
{
    return scale().toWorld(at);
}

void PlotView::redraw(const plot::RedrawOptions& options)
{
    QImage& image = m_plot->image();
    const QSize size = m_plot->devicePixelSize();
    if (image.size() != size || image.devicePixelRatio() != m_plot->devicePixelRatioF()) {
        image = QImage(size, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(m_plot->devicePixelRatioF());
    }
    plot::redraw(m_state, image, options,
                 [this](const QString& text) { m_prompter.message(text); });
    m_grip->move(m_plot->width() - m_grip->width(), m_plot->height() - m_grip->height());
    m_labels->placeAll(scale());
    m_plot->update();
}

void PlotView::setEqualScale(bool on)
{
    m_equalScale = on;
    if (!on)
        return;
    m_equalBase = m_equalView = m_state.view;
    m_equalSize = QSizeF();
    if (plot::equalScaleView(m_state.view, QSizeF(m_plot->size())) != m_state.view)
        plot::recordZoomStep(m_state);
    emit redrawNeeded();
}

std::optional<model::ViewWindow> PlotView::equalScaleView()
{
    const QSizeF size(m_plot->size());
    if (!m_equalScale || (m_state.view == m_equalView && size == m_equalSize))
        return std::nullopt;
    if (m_state.view != m_equalView)
        m_equalBase = m_state.view;
    return plot::equalScaleView(m_equalBase, size);
}

void PlotView::equalScaleShown()
{
    m_equalView = m_state.view;
    m_equalSize = QSizeF(m_plot->size());
}

void PlotView::showZoomBox()
{
    const plot::ZoomBox box = plot::initialZoomBox(m_state.view);
    const plot::PlotScale s = scale();
    const QPointF topLeft = s.toPixel(box.left, box.top);
    const QPointF bottomRight = s.toPixel(box.left + box.width, box.top - box.height);
    m_zoomBox->setGeometry(QRectF(topLeft, bottomRight).toRect());
    m_zoomBox->show();
    m_zoomBox->raise();
    m_zoomBox->setFocus();
}

void PlotView::hideZoomBox()
{
    m_zoomBox->hide();
}

bool PlotView::zoomBoxVisible() const
{
    return m_zoomBox->isVisible();
}

void PlotView::confirmZoomBox()
{
    // The box is read back in world units: its top-left corner and its size.
    const plot::PlotScale s = scale();
    const QRectF r = m_zoomBox->geometry();
    const QPointF topLeft = s.toWorld(r.topLeft());
    m_zoomBox->hide();
    emit zoomBoxConfirmed({topLeft.x(), topLeft.y(), r.width() * s.unitsPerPixelX(),
                           r.height() * s.unitsPerPixelY()});
}

void PlotView::resizePlotBy(int dx, int dy)
{
    m_frame->resizePlotBy(dx, dy);
}

void PlotView::fillFrame()
{
    m_frame->fillFrame();
}

QImage PlotView::capturePicture(const plot::RedrawOptions& options)
{
    paintGrip(m_grip, options.background);
    QImage picture = m_plot->image();
    m_labels->burnInto(picture);
    return picture;
}

output::PictureLabels PlotView::pictureLabels() const
{
    return m_labels->pictureLabels();
}

void PlotView::endCapture()
{
    // Black after every export, whatever the grip had before.
    paintGrip(m_grip, Qt::black);
    emit redrawNeeded();
}

bool PlotView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_grip && (event->type() == QEvent::MouseButtonPress ||
                              event->type() == QEvent::MouseMove)) {
        // The grip resizes the plot from its lower right corner.
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPoint global = mouse->globalPosition().toPoint();
        if (event->type() == QEvent::MouseMove && (mouse->buttons() & Qt::LeftButton))
            m_frame->resizePlotBy(global.x() - m_gripFrom.x(), global.y() - m_gripFrom.y());
        m_gripFrom = global;
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace curvix::app
