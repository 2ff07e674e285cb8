#include "app/curve_tools.h"

#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "app/status_panels.h"
#include "app/symbolic_runner.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "model/parameter_list.h"
#include "model/strings.h"
#include "plot/coordinates.h"
#include "plot/picking.h"
#include "plot/render.h"
#include "plot/trace.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
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
        button->setFocusPolicy(Qt::TabFocus); // Tab reaches them; a click leaves the focus
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

    m_tangentMenu = new QMenu(m_view.plot());
    m_tangentMenu->setObjectName(QStringLiteral("tangentPopup"));
    QAction* remove = m_tangentMenu->addAction(LoadResString(5183));
    remove->setObjectName(QStringLiteral("removeThisTangent"));
    connect(remove, &QAction::triggered, this, &CurveTools::removePickedTangent);
    connect(m_view.plot(), &PlotWidget::leftDragged, this, &CurveTools::dragTangentTo);
    connect(m_view.plot(), &PlotWidget::leftButtonReleased, this, &CurveTools::endTangentDrag);
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
        m_status.showMessage(LoadResString(2090));
        return false;
    }
    m_controls->show();
    m_status.setReadoutSource(StatusPanels::ReadoutSource::Trace);
    askSlopeFormula(m_state.trace.entry);
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
    const double from = m_state.trace.x;
    // Playing stops at the end of the view.
    if (!plot::traceStep(m_state, direction)) {
        playTrace(false);
        return;
    }
    // Stepping by hand stops on a point of interest it comes close to (not the one it leaves);
    // playing walks on.
    const double stepped = m_state.trace.x;
    if (!m_playing && plot::snapTrace(m_state, m_view.scale()) && m_state.trace.x == from)
        plot::traceTo(m_state, stepped);
    emit redrawNeeded();
}

void CurveTools::traceTo(QPointF at)
{
    plot::traceTo(m_state, m_view.toWorld(at).x());
    plot::snapTrace(m_state, m_view.scale());
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
        m_status.setReadout(0, tr("TRACE") + QLatin1Char(' ') +
                                   m_state.graphs[std::size_t(trace.entry)].text);
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
    // A press on a point of tangency takes that tangent along; elsewhere a new one is put.
    const QSizeF size(m_view.plot()->size());
    if (const plot::TangentPick pick = plot::nearestTangentPoint(m_state, size, at); pick.found()) {
        m_drag = pick;
        m_dragFirst = true;
        return;
    }
    int curve = plot::nearestCurve(m_state, size, at, 12);
    if (curve < 0)
        curve = fallbackEntry;
    if (curve < 0)
        return;
    const double x = m_view.toWorld(at).x();
    if (!acceptsTangentAt(curve, x))
        return;
    model::GraphEntry& entry = m_state.graphs[std::size_t(curve)];
    model::GraphMark mark;
    mark.x = x;
    entry.marks.push_back(mark);
    m_state.documentChanged = true;
    askSlopeFormula(curve);
    emit redrawNeeded();
    // Held down, the button drags the new tangent on: the same step of the undo history.
    m_drag = {curve, int(entry.marks.size()) - 1};
    m_dragFirst = false;
    m_status.showMessage(entry.marks.back().label);
}

bool CurveTools::acceptsTangentAt(int curve, double x)
{
    const model::GraphEntry& entry = m_state.graphs[std::size_t(curve)];
    if (!entry.formula)
        return false;
    const eval::CurveSlope slope = eval::SlopeAt(*entry.formula, x, plot::exactDerivative(entry));
    if (slope.kind == eval::SlopeKind::Finite)
        return true;
    const int message = slope.kind == eval::SlopeKind::Vertical ? 5182 : 5181;
    m_status.showMessage(LoadResString(message).arg(eval::readoutNumber(x)));
    return false;
}

void CurveTools::dragTangentTo(QPointF at)
{
    if (!m_drag.found() || m_drag.entry >= int(m_state.graphs.size()))
        return;
    model::GraphEntry& entry = m_state.graphs[std::size_t(m_drag.entry)];
    if (m_drag.mark >= int(entry.marks.size()))
        return;
    // Where the curve has no finite slope the tangent waits at its last good place.
    const double x = m_view.toWorld(at).x();
    if (!acceptsTangentAt(m_drag.entry, x))
        return;
    entry.marks[std::size_t(m_drag.mark)].x = x;
    m_state.documentChanged = true;
    emit tangentDragged(m_dragFirst);
    m_dragFirst = false;
    m_status.showMessage(entry.marks[std::size_t(m_drag.mark)].label);
}

void CurveTools::useSymbolic(SymbolicRunner* runner)
{
    m_symbolic = runner;
    connect(runner, &SymbolicRunner::slopeFormulaAnswered, this, &CurveTools::takeSlopeFormula);
}

void CurveTools::askSlopeFormula(int entry)
{
    if (!m_symbolic || entry < 0)
        return;
    model::GraphEntry& graph = m_state.graphs[std::size_t(entry)];
    const auto key = std::make_pair(graph.text, m_state.variable());
    if (const auto known = m_slopeFormulas.find(key); known != m_slopeFormulas.end()) {
        graph.slopeText = known->second;
        model::compileEntry(m_state, graph);
    } else {
        m_symbolic->requestSlopeFormula(key.first, key.second);
    }
}

void CurveTools::takeSlopeFormula(const QString& text, const QString& variable, const QString& answer)
{
    // The answer is a formula like a typed one (with the pi character): prepared, then
    // compiled in radians, the unit the library differentiates in. A failure is kept too,
    // so that the library is not asked again.
    QString prepared;
    if (!answer.isEmpty()) {
        eval::ExpressionEvaluator evaluator;
        prepared = eval::PrepareExpressionText(evaluator, answer,
                                               QStringLiteral("f(%1)").arg(variable), {},
                                               QLocale(), m_state.parameters);
    }
    m_slopeFormulas[{text, variable}] = prepared;
    bool changed = false;
    for (int k = 0; k < int(m_state.graphs.size()); ++k) {
        model::GraphEntry& entry = m_state.graphs[std::size_t(k)];
        if (entry.text == text && m_state.variable() == variable) {
            entry.slopeText = prepared;
            model::compileEntry(m_state, entry);
            changed = changed || entry.slopeFormula != nullptr;
        } else if (!entry.slopeFormula && (!entry.marks.empty() || m_state.trace.entry == k)) {
            askSlopeFormula(k); // one asked at a time: the next waits for this answer
        }
    }
    if (changed)
        emit redrawNeeded();
}

void CurveTools::endTangentDrag()
{
    m_drag = {};
}

bool CurveTools::offerTangentMenu(QPointF at)
{
    const plot::TangentPick pick = plot::nearestTangentPoint(m_state, QSizeF(m_view.plot()->size()), at);
    if (!pick.found())
        return false;
    m_menuPick = pick;
    if (m_view.plot()->isVisible())
        m_tangentMenu->popup(m_view.plot()->mapToGlobal(at.toPoint()));
    return true;
}

void CurveTools::removePickedTangent()
{
    if (!m_menuPick.found() || m_menuPick.entry >= int(m_state.graphs.size()))
        return;
    std::vector<model::GraphMark>& marks = m_state.graphs[std::size_t(m_menuPick.entry)].marks;
    if (m_menuPick.mark < int(marks.size()))
        marks.erase(marks.begin() + m_menuPick.mark);
    m_menuPick = {};
    m_state.documentChanged = true;
    emit redrawNeeded();
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
