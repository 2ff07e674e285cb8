#pragma once

#include "model/app_state.h"
#include "model/prompter.h"

#include <QElapsedTimer>
#include <QObject>

class QAction;
class QDockWidget;
class QMainWindow;

namespace curvix::app {

class ParameterPanel;
struct WindowActions;

// The drawing's parameters in a dock beside the plot: the panel's requests carried out on
// the state through the graph list's rules, and the redraws while a slider moves. The dock
// opens by itself when the first parameter is declared, and from the Tools menu.
class ParameterActions : public QObject {
    Q_OBJECT
public:
    ParameterActions(model::AppState& state, model::Prompter& prompter, QMainWindow* window);

    // The dock's toggle goes into the Tools menu.
    void addToMenus(WindowActions& actions);
    ParameterPanel* panel() const { return m_panel; }
    QDockWidget* dock() const { return m_dock; }
    // Shows the state's parameters, after any change of the drawing; rows being dragged or
    // played go on.
    void refresh();

signals:
    // A new value from a slider or its sweep. continuing: the move of a drag after its
    // first, which joins the undo step the drag began.
    void valueMoved(bool continuing);
    // A parameter added, edited or removed, or a value typed: a redraw and an undo step.
    void changed();

private:
    void showDock();
    void onValueChanged(int index, double value, bool dragging);
    void onAddRequested(const eval::Parameter& parameter);
    void onChangeRequested(int index, const eval::Parameter& parameter);
    void onRemoveRequested(int index);

    model::AppState& m_state;
    model::Prompter& m_prompter;
    ParameterPanel* m_panel = nullptr;
    QDockWidget* m_dock = nullptr;
    int m_dragging = -1;          // the parameter a drag or a sweep moves, -1 for none
    // The parameter last keyed or typed, its value then, and since when.
    int m_lastStepped = -1;
    double m_lastValue = 0;
    QElapsedTimer m_sinceStep;
    std::size_t m_shownCount = 0; // parameters at the last refresh, to open the dock on the first
};

} // namespace curvix::app
