#pragma once

#include <QFrame>

namespace curvix::app {

// The zoom box: a frame over the plot that the user drags into place and double-clicks to
// zoom into; Esc puts it away. By keyboard, the arrow keys move it, Shift with them resizes
// it and Enter zooms in.
class ZoomBoxWidget : public QFrame {
    Q_OBJECT
public:
    explicit ZoomBoxWidget(QWidget* plot);

signals:
    void zoomRequested();
    void cancelled();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Moves the box, or with resize its lower right corner, by a step of the plot's size.
    void stepBy(int dx, int dy, bool resize);

    QPoint m_grab;
    bool m_dragging = false;
};

} // namespace curvix::app
