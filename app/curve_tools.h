#pragma once

#include "model/app_state.h"

#include <QObject>
#include <QPointF>

class QLineEdit;
class QStatusBar;
class QTimer;
class QWidget;

namespace curvix::app {

class PlotView;
class StatusPanels;

// The tools that work along one curve: the trace (a point walking about 200 steps across
// the view, by step, arrow keys, playing, or a click) and tangents put where clicked.
class CurveTools : public QObject {
    Q_OBJECT
public:
    CurveTools(model::AppState& state, PlotView& view, StatusPanels& status, QStatusBar* bar);

    // Starts the trace on an entry; false (and the reason shown) when there is none.
    bool startTrace(int entry);
    void stopTrace();
    void stepTrace(int direction);
    void playTrace(bool playing);
    bool tracePlaying() const { return m_playing; }
    void traceTo(QPointF at);
    // The read-out after a redraw, and playing goes on.
    void afterRedraw();
    void pauseForRedraw();

    void setTangentMode(bool on);
    // A tangent on the curve nearest to the click, else on the entry given.
    void addTangentAt(QPointF at, int fallbackEntry);
    void removeTangents(int entry);

signals:
    void redrawNeeded();

private:
    model::AppState& m_state;
    PlotView& m_view;
    StatusPanels& m_status;
    void traceToTypedX();

    QWidget* m_controls = nullptr;
    QLineEdit* m_traceX = nullptr;
    QTimer* m_timer = nullptr;
    bool m_playing = false;
};

} // namespace curvix::app
