#pragma once

#include <QWidget>

#include <optional>

namespace curvix::app {

class PlotWidget;

// Holds the plot area at its top-left corner. The plot fills the frame until the user
// gives it a size of its own (from its lower right corner); New gives the frame back.
class PlotFrame : public QWidget {
    Q_OBJECT
public:
    explicit PlotFrame(PlotWidget* plot, QWidget* parent = nullptr);

    // Grows or shrinks the plot by the given pixels, within the frame.
    void resizePlotBy(int dx, int dy);
    void fillFrame();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();

    PlotWidget* m_plot;
    std::optional<QSize> m_size;
};

} // namespace curvix::app
