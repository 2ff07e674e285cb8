#include "app/parameter_actions.h"

#include "app/parameter_panel.h"
#include "app/window_actions.h"
#include "model/parameter_list.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace curvix::app {

namespace {
constexpr qint64 kKeysInARowMs = 1000;
}

ParameterActions::ParameterActions(model::AppState& state, model::Prompter& prompter,
                                   QMainWindow* window)
    : QObject(window), m_state(state), m_prompter(prompter)
{
    m_dock = new QDockWidget(tr("Parameters"), window);
    m_dock->setObjectName(QStringLiteral("parameterDock"));
    m_dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    m_panel = new ParameterPanel(m_dock);
    m_dock->setWidget(m_panel);
    window->addDockWidget(Qt::RightDockWidgetArea, m_dock);
    m_dock->hide(); // a new drawing has no parameters

    connect(m_panel, &ParameterPanel::valueChanged, this, &ParameterActions::onValueChanged);
    connect(m_panel, &ParameterPanel::addRequested, this, &ParameterActions::onAddRequested);
    connect(m_panel, &ParameterPanel::changeRequested, this, &ParameterActions::onChangeRequested);
    connect(m_panel, &ParameterPanel::removeRequested, this, &ParameterActions::onRemoveRequested);
}

void ParameterActions::addToMenus(WindowActions& actions)
{
    QAction* toggle = m_dock->toggleViewAction();
    toggle->setObjectName(QStringLiteral("mnuparameters"));
    toggle->setText(tr("Para&meters"));
    toggle->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_K));
    actions.toolsMenu->addSeparator();
    actions.toolsMenu->addAction(toggle);
}

void ParameterActions::refresh()
{
    m_panel->setVariable(m_state.variable());
    m_panel->setParameters(m_state.parameters);
    // After an undo the next key begins a step of its own.
    if (m_lastStepped >= int(m_state.parameters.size()) ||
        (m_lastStepped >= 0 && m_state.parameters[std::size_t(m_lastStepped)].value != m_lastValue))
        m_lastStepped = -1;
    // The first parameter of a drawing brings its sliders into view.
    if (m_shownCount == 0 && !m_state.parameters.empty() && !m_dock->isVisible())
        showDock();
    m_shownCount = m_state.parameters.size();
}

void ParameterActions::showDock()
{
    // The window grows by the dock where the screen has room, so the plot keeps its size.
    auto* window = qobject_cast<QMainWindow*>(parent());
    const QScreen* screen = window->screen();
    const Qt::WindowStates filled = Qt::WindowMaximized | Qt::WindowFullScreen;
    const bool growing = screen && !(window->windowState() & filled);
    m_dock->show();
    if (growing) {
        const int room = screen->availableGeometry().right() - window->frameGeometry().right();
        const int wanted = m_dock->sizeHint().width();
        const int added = std::clamp(wanted, 0, std::max(room, 0));
        window->resize(window->width() + added, window->height());
    }
}

void ParameterActions::onValueChanged(int index, double value, bool dragging)
{
    if (index < 0 || index >= int(m_state.parameters.size()))
        return;
    model::setParameterValue(m_state, index, value);
    if (dragging) {
        const bool continuing = m_dragging == index;
        m_dragging = index;
        emit valueMoved(continuing);
        return;
    }
    // The release of a drag ends its step. Keys pressed in a row on one slider make one
    // step too, as a drag does; a value typed or keyed after a pause is a step of its own.
    // A step of another row while one plays ends the sweep's step: the sweep begins anew.
    if (std::exchange(m_dragging, -1) == index) {
        m_lastStepped = -1;
        emit valueMoved(true);
        return;
    }
    const bool inARow = index == m_lastStepped && m_sinceStep.elapsed() < kKeysInARowMs;
    m_lastStepped = index;
    m_lastValue = value;
    m_sinceStep.start();
    if (inARow)
        emit valueMoved(true);
    else
        emit changed();
}

void ParameterActions::onAddRequested(const eval::Parameter& parameter)
{
    if (model::addParameter(m_state, m_prompter, parameter))
        emit changed();
}

void ParameterActions::onChangeRequested(int index, const eval::Parameter& parameter)
{
    if (model::changeParameter(m_state, m_prompter, index, parameter))
        emit changed();
}

void ParameterActions::onRemoveRequested(int index)
{
    if (model::removeParameter(m_state, m_prompter, index))
        emit changed();
}

} // namespace curvix::app
