#pragma once

#include "model/app_state.h"
#include "model/prompter.h"
#include "output/vector_picture.h"
#include "plot/coordinates.h"
#include "plot/render.h"
#include "plot/zoom.h"

#include <QObject>
#include <QPointF>
#include <QSizeF>

#include <optional>

class QLabel;

namespace curvix::app {

class PlotFrame;
class PlotLabels;
class PlotWidget;
class ZoomBoxWidget;

// The plot area with what lies on it: the persistent picture, the frame that sizes it, the
// zoom box, the grip in its lower right corner and the labels. It draws the state's plot
// and turns the mouse into world positions; what a click means is decided by its owner.
class PlotView : public QObject {
    Q_OBJECT
public:
    PlotView(model::AppState& state, model::Prompter& prompter, QWidget* window);

    // The frame to lay out, holding the plot area.
    QWidget* frame() const;
    PlotWidget* plot() const { return m_plot; }
    PlotLabels& labels() const { return *m_labels; }

    // The full redraw of the picture, then the grip and the labels to their places.
    void redraw(const plot::RedrawOptions& options);
    plot::PlotScale scale() const;
    QPointF toWorld(QPointF at) const;

    // Equal scale: turning it on is a step of the zoom history when it changes the view.
    void setEqualScale(bool on);
    // With equal scale on, the view to show for the plot's shape: the view set last (by
    // the rows, a zoom or a drag), widened; a resize widens that same view again. None
    // when it is off, or neither the view nor the size changed since it was last shown.
    std::optional<model::ViewWindow> equalScaleView();
    // The state's view is the one equal scale showed.
    void equalScaleShown();

    void showZoomBox();
    void hideZoomBox();
    bool zoomBoxVisible() const;
    // Grows or shrinks the plot by the given pixels from its lower right corner.
    void resizePlotBy(int dx, int dy);
    // Back to filling the frame (New).
    void fillFrame();

    // The picture with the labels burnt in, for copying, printing, saving and dragging; the
    // grip takes the background colour meanwhile. endCapture() draws the plot again.
    QImage capturePicture(const plot::RedrawOptions& options);
    void endCapture();
    // The labels over the plot as data, for vector pictures.
    output::PictureLabels pictureLabels() const;

signals:
    void redrawNeeded();
    // The zoom box was confirmed: its rectangle in world units.
    void zoomBoxConfirmed(const plot::ZoomBox& box);
    void wheelTurned(double steps, QPointF world);
    void leftPressed(QPointF at);
    void rightReleased(QPointF at);
    void doubleClicked(QPointF at);
    // The pointer's world point, rounded to the plot's resolution, as "(x; y)".
    void pointerText(const QString& text);
    // A drag of the view: the view it began with, shifted by the drag so far; first is
    // raised for the first move of each drag.
    void viewDragged(const model::ViewWindow& view, bool first);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void confirmZoomBox();
    void connectPointer();

    model::AppState& m_state;
    model::Prompter& m_prompter;
    PlotWidget* m_plot = nullptr;
    PlotFrame* m_frame = nullptr;
    ZoomBoxWidget* m_zoomBox = nullptr;
    QLabel* m_grip = nullptr;
    QPoint m_gripFrom;
    PlotLabels* m_labels = nullptr;
    // The view and scale at the start of a drag, and whether it has moved yet.
    model::ViewWindow m_panView;
    plot::PlotScale m_panScale;
    bool m_panMoved = false;
    bool m_equalScale = false;
    model::ViewWindow m_equalBase;
    model::ViewWindow m_equalView;
    QSizeF m_equalSize;
};

} // namespace curvix::app
