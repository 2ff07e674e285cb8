#pragma once

#include "model/app_state.h"
#include "model/prompter.h"

#include <QObject>

#include <array>
#include <vector>

class QStatusBar;
class QTimer;
class QToolButton;
class QWidget;

namespace curvix::app {

class StatusPanels;
class frmtangent;

// The derivative and tangent demonstration as the window plays it: the buttons in the
// status bar, the timer and the read-out. The walk itself is the core's.
class Demonstration : public QObject {
    Q_OBJECT
public:
    Demonstration(model::AppState& state, model::Prompter& prompter, StatusPanels& status,
                  QStatusBar* bar);

    // The demonstration window's buttons drive this demonstration.
    void attach(frmtangent* window);
    // Starts a walk over xs on the entry with this text; refused with a message when the
    // text is not drawn.
    void start(const QString& function, const std::vector<double>& xs, bool fromList,
               bool withDerivative);
    void play(bool playing);
    void pause() { play(false); }
    void step();
    // Ends the demonstration: the tangent goes, the derivative's graph stays.
    void stop();
    bool playing() const { return m_playing; }
    bool running() const;

signals:
    void redrawNeeded();
    void started();

private:
    model::AppState& m_state;
    model::Prompter& m_prompter;
    StatusPanels& m_status;
    QTimer* m_timer = nullptr;
    QWidget* m_controls = nullptr;
    std::array<QToolButton*, 4> m_buttons{};
    bool m_playing = false;
};

} // namespace curvix::app
