#pragma once

#include <QLabel>

namespace curvix::app {

// A text or formula picture lying over the plot at a world position. It is moved by
// dragging or with the arrow keys (Shift for longer steps) and removed from its context menu
// or with the Delete key.
class PlotLabel : public QLabel {
    Q_OBJECT
public:
    PlotLabel(double worldX, double worldY, QWidget* plot);

    double worldX() const { return m_x; }
    double worldY() const { return m_y; }
    void setWorld(double x, double y);

signals:
    // Dragged to a new place (top-left corner in the plot's pixels); the owner turns it
    // into world units.
    void moved(QPoint topLeft);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    double m_x;
    double m_y;
    QPoint m_grab;
    bool m_dragging = false;
};

} // namespace curvix::app
