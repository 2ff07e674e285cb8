#include "app/demonstration.h"

#include "app/form_names.h"
#include "app/frmtangent.h"
#include "app/status_panels.h"
#include "app/symbolic_runner.h"
#include "app/tool_icons.h"
#include "eval/numtext.h"
#include "model/graph_list.h"
#include "model/strings.h"
#include "plot/demonstration.h"

#include <QHBoxLayout>
#include <QSpinBox>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace curvix::app {

using model::LoadResString;

Demonstration::Demonstration(model::AppState& state, model::Prompter& prompter,
                             StatusPanels& status, QStatusBar* bar)
    : QObject(bar), m_state(state), m_prompter(prompter), m_status(status)
{
    m_timer = new QTimer(this);
    connect(m_timer, &QTimer::timeout, this, &Demonstration::step);

    m_controls = new QWidget;
    m_controls->setObjectName(QStringLiteral("demoControls"));
    auto* row = new QHBoxLayout(m_controls);
    row->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 4; ++i) {
        auto* button = new QToolButton;
        m_buttons[std::size_t(i)] = button;
        button->setObjectName(formNameAt(formName::demoButton, i));
        setThemedIcon(button, [i](const QColor& ink) { return demoIcon(i, ink); });
        button->setToolTip(LoadResString(4005 + i).remove(QLatin1Char('&')));
        button->setAccessibleName(button->toolTip());
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoRaise(true);
        // No taller than the trace's buttons: the status bar keeps its height.
        button->setIconSize(QSize(14, 14));
        row->addWidget(button);
    }
    connect(m_buttons[DemoStart], &QToolButton::clicked, this, [this] { play(true); });
    connect(m_buttons[DemoPause], &QToolButton::clicked, this, &Demonstration::pause);
    connect(m_buttons[DemoStep], &QToolButton::clicked, this, [this] {
        pause();
        step();
    });
    connect(m_buttons[DemoStop], &QToolButton::clicked, this, &Demonstration::stop);
    m_speed = new QSpinBox;
    m_speed->setObjectName(QStringLiteral("demoSpeed"));
    m_speed->setRange(1, 30);
    m_speed->setSuffix(QStringLiteral(" /s"));
    m_speed->setToolTip(LoadResString(5184));
    m_speed->setAccessibleName(m_speed->toolTip());
    row->addWidget(m_speed);
    connect(m_speed, &QSpinBox::valueChanged, this, &Demonstration::setStepsPerSecond);
    m_speed->setValue(4); // slow enough for a class to follow each step
    m_controls->hide();
    bar->addPermanentWidget(m_controls);
}

void Demonstration::attach(frmtangent* window)
{
    connect(window, &frmtangent::startRequested, this, &Demonstration::start);
    connect(window, &frmtangent::pauseRequested, this, &Demonstration::pause);
    connect(window, &frmtangent::stepRequested, this, [this] {
        pause();
        step();
    });
    connect(window, &frmtangent::stopRequested, this, &Demonstration::stop);
}

void Demonstration::setStepsPerSecond(int steps)
{
    const int clamped = std::clamp(steps, 1, 30);
    m_timer->setInterval(1000 / clamped);
    if (m_speed->value() != clamped)
        m_speed->setValue(clamped);
}

void Demonstration::useSymbolic(SymbolicRunner* runner)
{
    m_symbolic = runner;
    connect(runner, &SymbolicRunner::slopeFormulaAnswered, this, &Demonstration::takeDerivative);
}

void Demonstration::askDerivative()
{
    const QString variable = m_state.variable();
    m_derivative = m_symbolic->rememberedDerivative(m_source, variable);
    if (m_derivative.isEmpty())
        m_symbolic->requestSlopeFormula(m_source, variable);
}

void Demonstration::takeDerivative(const QString& text, const QString&, const QString& answer)
{
    if (m_source.isEmpty() || !m_derivative.isEmpty())
        return;
    if (text != m_source) {
        askDerivative(); // another's answer: the runner is free for ours now
        return;
    }
    m_derivative = answer;
    if (m_keepWhenAnswered)
        keepDerivative();
    if (answer.isEmpty()) // the library could not: there is nothing to keep
        m_source.clear();
}

void Demonstration::keepDerivative()
{
    m_keepWhenAnswered = m_derivative.isEmpty() && !m_source.isEmpty();
    if (m_derivative.isEmpty() || m_source.isEmpty())
        return;
    plot::keepDerivative(m_state, m_prompter, m_symbolic->linkCheck(), m_source, m_derivative);
    m_source.clear();
    emit functionsChanged();
    emit redrawNeeded();
}

void Demonstration::functionDeleted()
{
    if (plot::dropOrphanedDerivatives(m_state))
        emit functionsChanged();
}

bool Demonstration::running() const
{
    return m_state.demonstration.running;
}

void Demonstration::start(const QString& function, const std::vector<double>& xs, bool fromList,
                          bool withDerivative)
{
    // Start after Pause goes on from where the walk stands, its graph as it grew.
    if (plot::resumesDemonstration(m_state, function)) {
        play(true);
        return;
    }
    const auto report = [this](const QString& m) { m_prompter.message(m); };
    const int source = model::findGraphByText(m_state, function);
    if (!plot::startDemonstration(m_state, source, xs, fromList, withDerivative, report))
        return;
    m_source = withDerivative && m_symbolic ? function : QString();
    m_keepWhenAnswered = false;
    if (!m_source.isEmpty())
        askDerivative();
    emit started();
    m_status.clearReadouts();
    m_status.setReadoutSource(StatusPanels::ReadoutSource::Demonstration);
    m_status.setReadout(2, tr("Derivata/tangent"));
    m_controls->show();
    step();
    play(true);
}

void Demonstration::play(bool playing)
{
    const model::Demonstration& demo = m_state.demonstration;
    m_playing = playing && demo.running && demo.next < demo.xs.size();
    if (m_playing)
        m_timer->start();
    else
        m_timer->stop();
}

void Demonstration::step()
{
    if (!running())
        return;
    const plot::DemoStepResult result = plot::demonstrationStep(m_state);
    if (result.stepped) {
        emit redrawNeeded();
        const QString variable = m_state.variable();
        auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 4)); };
        m_status.setReadout(0, m_state.demonstration.text);
        m_status.setReadout(1, variable + QStringLiteral(" = ") + text(result.x));
        m_status.setReadout(3, std::isfinite(result.slope)
                                   ? QStringLiteral("f'(%1) = %2").arg(variable, text(result.slope))
                                   : QStringLiteral("f'(%1) = ?").arg(variable));
    }
    // At the end the tangent stays where it is, and the derivative becomes an item.
    if (result.finished) {
        play(false);
        keepDerivative();
    }
}

void Demonstration::stop()
{
    if (!running())
        return;
    if (m_state.demonstration.next > 0)
        keepDerivative();
    else
        m_source.clear(); // stopped before any step: nothing has grown to keep
    plot::stopDemonstration(m_state);
    play(false);
    m_controls->hide();
    m_status.clearReadouts();
    emit redrawNeeded();
}

} // namespace curvix::app
