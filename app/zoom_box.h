#pragma once

#include <QFrame>

namespace curvix::app {

// The zoom box: a frame over the plot that the user drags into place and double-clicks to
// zoom into; Esc puts it away.
class ZoomBoxWidget : public QFrame {
    Q_OBJECT
public:
    explicit ZoomBoxWidget(QWidget* plot);

signals:
    void zoomRequested();
    void cancelled();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPoint m_grab;
    bool m_dragging = false;
};

} // namespace curvix::app
