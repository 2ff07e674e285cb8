#pragma once

#include <QImage>
#include <QPainter>
#include <QWidget>

#include <optional>

namespace curvix::app {

// The focus frame of the plot and of what lies on it: a line in the highlight colour along
// the edge, which leaves the picture under it readable (a style's focus frame may tint all
// of it).
void paintFocusFrame(QPainter& painter, const QWidget& widget);

// The plot area. It owns the persistent picture (in device pixels) that the full redraw
// paints and that printing, copying and saving take; on screen it only shows that picture.
class PlotWidget : public QWidget {
    Q_OBJECT
public:
    // The drag data of a formula picture: the formula's text.
    static QString formulaMimeType() { return QStringLiteral("application/x-curvix-formula"); }
    explicit PlotWidget(QWidget* parent = nullptr);

    QImage& image() { return m_image; }
    const QImage& image() const { return m_image; }
    // The picture's size for the widget's current size and screen, in device pixels.
    QSize devicePixelSize() const;
    // Where the keyboard acts on the plot (Enter, the menu key): the trace's point while
    // there is one, else the middle.
    void setKeyboardPoint(std::optional<QPointF> at) { m_keyboardPoint = at; }
    QPointF keyboardPoint() const;

signals:
    void resized();
    // A turn of the mouse wheel over the plot: steps away from the user zoom in.
    void wheelTurned(double steps, QPointF at);
    void rightButtonReleased(QPointF at);
    void leftButtonPressed(QPointF at);
    // The pointer moved with the left button held (not a drag of the view), and let go.
    void leftDragged(QPointF at);
    void leftButtonReleased(QPointF at);
    void doubleClicked(QPointF at);
    // Enter or Return with the focus on the plot, at the keyboard point (Page Up and Page
    // Down are a turn of the wheel there).
    void keyActivated(QPointF at);
    // The pointer over the plot, with or without a button held.
    void pointerMoved(QPointF at);
    // A drag of the view (middle button, or Ctrl with the left): the pixels it has moved
    // so far since the press.
    void panStarted();
    void panned(QPointF pixels);
    // Text, or a formula for a formula picture, dropped on the plot.
    void textDropped(const QString& text, QPointF at);
    void formulaDropped(const QString& formula, QPointF at);

protected:
    void paintEvent(QPaintEvent* event) override;
    // The menu key opens the plot's menu as a right click at the keyboard point does.
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QImage m_image;
    // Where the drag of the view began; none while no drag is on.
    std::optional<QPointF> m_panFrom;
    std::optional<QPointF> m_keyboardPoint;
};

} // namespace curvix::app
