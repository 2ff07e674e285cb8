#pragma once

#include "model/app_state.h"
#include "model/prompter.h"

#include <QObject>

#include <array>
#include <vector>

class QStatusBar;
class QTimer;
class QSpinBox;
class QToolButton;
class QWidget;

namespace curvix::app {

class StatusPanels;
class SymbolicRunner;
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
    // Steps per second while playing, 1 to 30.
    void setStepsPerSecond(int steps);
    // The derivative's text comes from this runner; its link check links the kept item.
    void useSymbolic(SymbolicRunner* runner);
    // A function was deleted: the derivatives kept for it go too.
    void functionDeleted();

signals:
    void redrawNeeded();
    void started();
    // Items were added to or removed from the function box.
    void functionsChanged();

private:
    model::AppState& m_state;
    model::Prompter& m_prompter;
    StatusPanels& m_status;
    QTimer* m_timer = nullptr;
    QWidget* m_controls = nullptr;
    std::array<QToolButton*, 4> m_buttons{};
    bool m_playing = false;
    QSpinBox* m_speed = nullptr;
    SymbolicRunner* m_symbolic = nullptr;
    // The walk's derivative: its source and, once known, its text; kept as an item when the
    // walk ends (at once, or when the answer comes after that).
    QString m_source;
    QString m_derivative;
    bool m_keepWhenAnswered = false;
    void askDerivative();
    void takeDerivative(const QString& text, const QString& variable, const QString& answer);
    void keepDerivative();
};

} // namespace curvix::app
