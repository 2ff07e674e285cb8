#pragma once

#include "model/app_state.h"

#include <QFutureWatcher>
#include <QObject>
#include <QString>

#include <atomic>
#include <functional>
#include <map>
#include <memory>

class QAction;
class QWidget;

namespace curvix::app {

class StatusPanels;
struct WindowActions;

// The area under a curve: "Area…" and "Remove Areas" in the curve's popup, and the exact
// primitives that make the values exact, asked of the symbolic library off the GUI thread
// once per formula and angle unit, whatever the parameters' values.
class AreaTools : public QObject {
    Q_OBJECT
public:
    AreaTools(model::AppState& state, StatusPanels& status, QWidget* window);
    ~AreaTools() override;

    // Adds the two commands to the curve's popup, after its tangent commands; they work
    // on the curve selectedEntry names.
    void addToMenus(WindowActions& actions, const std::function<int()>& selectedEntry);
    // Asks for the bounds, from the view's x range within the curve's domain, and adds the
    // area; the status bar then shows its value.
    void askArea(int entry);
    void removeAreas(int entry);
    // Before a redraw: each area's read-out gets the exact primitive known for its curve,
    // and the first one missing is asked for.
    void preparePrimitives();
    // Enables Remove Areas for the curve the popup is about.
    void updateActions(int entry);

signals:
    // An area added or removed: a redraw and an undo step.
    void changed();
    // An exact primitive arrived: a redraw (the values may sharpen), no undo step.
    void redrawNeeded();

private:
    // The curve's text, the variable, the unit and the curve's parameters: what its
    // primitive depends on.
    QString keyFor(const model::GraphEntry& entry) const;
    void takePrimitive();

    model::AppState& m_state;
    StatusPanels& m_status;
    QWidget* m_window;
    QAction* m_area = nullptr;
    QAction* m_remove = nullptr;
    // formula, variable, unit and parameter names → the prepared primitive, "" where the
    // library has none (the quadrature alone then gives the value).
    std::map<QString, QString> m_primitives;
    QFutureWatcher<QString> m_watcher;
    QString m_asking; // the key of the request under way
    std::shared_ptr<std::atomic_bool> m_cancel = std::make_shared<std::atomic_bool>(false);
};

} // namespace curvix::app
