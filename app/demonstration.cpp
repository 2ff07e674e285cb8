#include "app/demonstration.h"

#include "app/form_names.h"
#include "app/frmtangent.h"
#include "app/status_panels.h"
#include "app/tool_icons.h"
#include "eval/numtext.h"
#include "model/graph_list.h"
#include "model/strings.h"
#include "plot/demonstration.h"

#include <QHBoxLayout>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>

#include <cmath>

namespace curvix::app {

using model::LoadResString;

Demonstration::Demonstration(model::AppState& state, model::Prompter& prompter,
                             StatusPanels& status, QStatusBar* bar)
    : QObject(bar), m_state(state), m_prompter(prompter), m_status(status)
{
    m_timer = new QTimer(this);
    m_timer->setInterval(40);
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
        button->setFocusPolicy(Qt::NoFocus);
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

bool Demonstration::running() const
{
    return m_state.demonstration.running;
}

void Demonstration::start(const QString& function, const std::vector<double>& xs, bool fromList,
                          bool withDerivative)
{
    const auto report = [this](const QString& m) { m_prompter.message(m); };
    const int source = model::findGraphByText(m_state, function);
    if (!plot::startDemonstration(m_state, source, xs, fromList, withDerivative, report))
        return;
    emit started();
    m_status.clearReadouts();
    m_status.setReadout(2, QStringLiteral("Derivata/tangent"));
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
        const QString variable = m_state.listVariable.isEmpty() ? QStringLiteral("x") : m_state.listVariable;
        auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 4)); };
        m_status.setReadout(0, m_state.demonstration.text);
        m_status.setReadout(1, variable + QStringLiteral(" = ") + text(result.x));
        m_status.setReadout(3, std::isfinite(result.slope)
                                   ? QStringLiteral("f'(%1) = %2").arg(variable, text(result.slope))
                                   : QStringLiteral("f'(%1) = ?").arg(variable));
    }
    // At the end the tangent and the derivative's graph stay where they are.
    if (result.finished)
        play(false);
}

void Demonstration::stop()
{
    if (!running())
        return;
    plot::stopDemonstration(m_state);
    play(false);
    m_controls->hide();
    m_status.clearReadouts();
    emit redrawNeeded();
}

} // namespace curvix::app
