#pragma once

#include "model/app_state.h"
#include "plot/picking.h"

#include <QObject>
#include <QPointF>

#include <map>
#include <memory>

class QLineEdit;
class QMenu;
class QStatusBar;
class QTimer;
class QWidget;

namespace curvix::app {

class PlotView;
class SymbolicRunner;
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
    // A press in tangent mode: on a point of tangency it takes that tangent to drag it;
    // elsewhere a tangent on the curve nearest to the press, else on the entry given, which
    // the held button then drags. Nothing is put where the curve has no finite slope: the
    // status bar says why.
    void addTangentAt(QPointF at, int fallbackEntry);
    void removeTangents(int entry);
    // Near a point of tangency, the tangent's popup ("Remove this tangent"); false elsewhere.
    bool offerTangentMenu(QPointF at);
    // The exact slopes come from this runner's derivatives, asked for as they are needed.
    void useSymbolic(SymbolicRunner* runner);

signals:
    void redrawNeeded();
    // A tangent moved by a drag; first for the first move of each drag, which begins a
    // step of the undo history that the later moves join.
    void tangentDragged(bool first);

private:
    model::AppState& m_state;
    PlotView& m_view;
    StatusPanels& m_status;
    void traceToTypedX();
    bool acceptsTangentAt(int curve, double x);
    void dragTangentTo(QPointF at);
    void endTangentDrag();
    void removePickedTangent();
    // Gives the entry the derivative remembered for its text, or asks the library for it.
    void askSlopeFormula(int entry);
    void takeSlopeFormula(const QString& text, const QString& variable, const QString& answer);

    QWidget* m_controls = nullptr;
    QLineEdit* m_traceX = nullptr;
    QTimer* m_timer = nullptr;
    bool m_playing = false;
    plot::TangentPick m_drag;
    bool m_dragFirst = false;
    plot::TangentPick m_menuPick;
    QMenu* m_tangentMenu = nullptr;
    SymbolicRunner* m_symbolic = nullptr;
    // The derivative's prepared text for each (text, variable) asked, "" where the library
    // had none; compiled for each entry with the parameter values of the moment.
    std::map<std::pair<QString, QString>, QString> m_slopeFormulas;
};

} // namespace curvix::app
