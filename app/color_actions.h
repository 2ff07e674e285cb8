#pragma once

#include "model/app_state.h"
#include "model/prompter.h"

#include <QObject>
#include <QPointF>

class QWidget;

namespace curvix::app {

class PlotView;

// The colour commands, the flood fill at the last right-click and the tick-label size.
class ColorActions : public QObject {
    Q_OBJECT
public:
    ColorActions(model::AppState& state, model::Prompter& prompter, PlotView& view, QWidget* window);

    void chooseGridColor();
    void chooseAxisColor();
    // The colour of the functions drawn from now on; curves drawn so far keep theirs.
    void chooseFunctionColor();
    // Recolours one curve (the curve popup's command); nothing for an index out of the list.
    void changeCurveColor(int entry);
    // "A new colour for each function": remembered in the settings store.
    void setAutoColors(bool on);
    // Curves as joined antialiased lines instead of dots; remembered like the colours.
    void setSmoothCurves(bool on);
    void chooseWindowColor();
    void chooseFillColor();
    // Where a right-click was, in world units: the next fill starts there.
    void setFillAnchor(QPointF world) { m_fillAnchor = world; }
    QPointF fillAnchor() const { return m_fillAnchor; }
    void fill();
    void chooseFontSize();

signals:
    void redrawNeeded();
    // The curves' colours changed: the function box's swatches follow.
    void curveColorsChanged();

private:
    // The shared colour dialog: opens on the colour chosen last, with the title it was
    // last given; a cancelled dialog still yields that colour.
    quint32 askColor(bool axisTitle);

    model::AppState& m_state;
    model::Prompter& m_prompter;
    PlotView& m_view;
    QWidget* m_window;
    QString m_colorTitle;
    quint32 m_dialogColor = 0;
    QPointF m_fillAnchor{0, 0};
};

} // namespace curvix::app
