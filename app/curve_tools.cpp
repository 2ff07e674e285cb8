#include "app/curve_tools.h"

#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "app/status_panels.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "model/strings.h"
#include "plot/coordinates.h"
#include "plot/picking.h"
#include "plot/trace.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QStyle>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>

namespace curvix::app {

using model::LoadResString;

CurveTools::CurveTools(model::AppState& state, PlotView& view, StatusPanels& status, QStatusBar* bar)
    : QObject(bar), m_state(state), m_view(view), m_status(status)
{
    m_timer = new QTimer(this);
    m_timer->setInterval(40); // about 25 steps a second
    connect(m_timer, &QTimer::timeout, this, [this] { stepTrace(1); });

    m_controls = new QWidget;
    m_controls->setObjectName(QStringLiteral("traceControls"));
    auto* row = new QHBoxLayout(m_controls);
    row->setContentsMargins(0, 0, 0, 0);
    // The style's own media pictures: no font is needed for them.
    const char* names[3] = {"tracePlay", "tracePause", "traceStep"};
    const QStyle::StandardPixmap icons[3] = {QStyle::SP_MediaPlay, QStyle::SP_MediaPause,
                                             QStyle::SP_MediaSkipForward};
    for (int i = 0; i < 3; ++i) {
        auto* button = new QToolButton;
        button->setObjectName(QLatin1String(names[i]));
        button->setIcon(m_controls->style()->standardIcon(icons[i]));
        button->setAutoRaise(true);
        button->setToolTip(LoadResString(2061 + i));
        button->setAccessibleName(button->toolTip());
        button->setFocusPolicy(Qt::NoFocus);
        row->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, i] {
            if (i == 2)
                stepTrace(1);
            else
                playTrace(i == 0);
        });
    }
    m_traceX = new QLineEdit;
    m_traceX->setObjectName(QStringLiteral("traceX"));
    m_traceX->setToolTip(LoadResString(5180));
    m_traceX->setAccessibleName(m_traceX->toolTip());
    m_traceX->setMaximumWidth(90);
    row->addWidget(m_traceX);
    connect(m_traceX, &QLineEdit::returnPressed, this, &CurveTools::traceToTypedX);
    bar->addPermanentWidget(m_controls);
    m_controls->hide();
}

void CurveTools::traceToTypedX()
{
    const std::optional<double> x = plot::readRangeNumber(m_traceX->text());
    if (!x || !m_state.trace.on)
        return;
    const model::ViewWindow& view = m_state.view;
    if (*x < view.XMin || *x > view.XMax) {
        m_status.showMessage(LoadResString(5186).arg(eval::readoutNumber(*x)));
        return;
    }
    plot::traceTo(m_state, *x);
    emit redrawNeeded();
    // The trace walks to the next defined point: say so when the typed x is not one.
    if (!m_state.trace.found || std::abs(m_state.trace.x - *x) > m_state.sampleStep)
        m_status.showMessage(LoadResString(5181).arg(eval::readoutNumber(*x)));
}

bool CurveTools::startTrace(int entry)
{
    if (!plot::startTrace(m_state, entry)) {
        m_status.showMessage(QStringLiteral("Ingen aktiv funktion"));
        return false;
    }
    m_controls->show();
    // The arrow keys step the trace at once, without a click on the plot first.
    m_view.plot()->setFocus(Qt::OtherFocusReason);
    emit redrawNeeded();
    return true;
}

void CurveTools::stopTrace()
{
    plot::stopTrace(m_state);
    m_playing = false;
    m_timer->stop();
    m_status.clearReadouts();
    m_controls->hide();
    emit redrawNeeded();
}

void CurveTools::playTrace(bool playing)
{
    m_playing = playing && m_state.trace.on;
    if (m_playing)
        m_timer->start();
    else
        m_timer->stop();
}

void CurveTools::stepTrace(int direction)
{
    if (!m_state.trace.on)
        return;
    // Playing stops at the end of the view.
    if (!plot::traceStep(m_state, direction)) {
        playTrace(false);
        return;
    }
    emit redrawNeeded();
}

void CurveTools::traceTo(QPointF at)
{
    plot::traceTo(m_state, m_view.toWorld(at).x());
    emit redrawNeeded();
}

void CurveTools::pauseForRedraw()
{
    // The timer must not tick while the picture is rebuilt; playing goes on after.
    m_timer->stop();
}

void CurveTools::afterRedraw()
{
    const model::AppState::Trace& trace = m_state.trace;
    if (trace.on) {
        auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 7)); };
        m_status.setReadout(0, QStringLiteral("TRACE ") + m_state.graphs[std::size_t(trace.entry)].text);
        m_status.setReadout(1, trace.found ? QStringLiteral("X = ") + text(trace.x) : QString());
        m_status.setReadout(2, trace.found ? QStringLiteral("Y = ") + text(trace.y) : QString());
        m_status.setReadout(3, trace.found && trace.hasSlope
                                   ? QStringLiteral("k = ") + eval::readoutNumber(trace.slope)
                                   : QString());
    }
    if (m_playing)
        m_timer->start();
}

void CurveTools::setTangentMode(bool on)
{
    m_view.plot()->setCursor(on ? Qt::CrossCursor : Qt::ArrowCursor);
    if (on)
        m_status.showMessage(LoadResString(2064));
}

void CurveTools::addTangentAt(QPointF at, int fallbackEntry)
{
    int curve = plot::nearestCurve(m_state, QSizeF(m_view.plot()->size()), at, 12);
    if (curve < 0)
        curve = fallbackEntry;
    if (curve < 0)
        return;
    model::GraphMark mark;
    mark.x = m_view.toWorld(at).x();
    m_state.graphs[std::size_t(curve)].marks.push_back(mark);
    m_state.documentChanged = true;
    emit redrawNeeded();
    m_status.showMessage(m_state.graphs[std::size_t(curve)].marks.back().line);
}

void CurveTools::removeTangents(int entry)
{
    if (entry < 0 || m_state.graphs[std::size_t(entry)].marks.empty())
        return;
    m_state.graphs[std::size_t(entry)].marks.clear();
    m_state.documentChanged = true;
    emit redrawNeeded();
}

} // namespace curvix::app
