// The main window's side of the plot: zooms and pans into the range rows, and what a click
// or a double-click on the plot does.

#include "app/frmgraph.h"

#include "app/color_actions.h"
#include "app/curve_tools.h"
#include "app/entry_panel.h"
#include "app/export_actions.h"
#include "app/plot_labels.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "app/range_panel.h"
#include "app/symbolic_runner.h"
#include "app/window_actions.h"
#include "model/graph_list.h"
#include "model/strings.h"
#include "plot/picking.h"
#include "plot/zoom.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QShortcut>

namespace curvix::app {

using model::LoadResString;

void frmgraph::zoomIntoBox(const plot::ZoomBox& box)
{
    plot::RangeRow x = m_ranges->xTexts();
    plot::RangeRow y = m_ranges->yTexts();
    plot::zoomIn(m_state, box, x, y);
    m_ranges->showDecimalRows(x, y);
    m_state.documentChanged = true;
    m_ranges->applyToView();
    redraw();
}

bool frmgraph::stepBackInHistory(bool toBeginning)
{
    plot::RangeRow x = m_ranges->xTexts();
    plot::RangeRow y = m_ranges->yTexts();
    if (!plot::zoomOut(m_state, toBeginning, x, y))
        return false;
    m_ranges->showDecimalRows(x, y);
    m_state.documentChanged = true;
    return true;
}

void frmgraph::zoomOut(bool toBeginning)
{
    if (stepBackInHistory(toBeginning))
        redraw();
}

void frmgraph::zoomByWheel(double steps, QPointF world)
{
    applyView(plot::wheelZoom(m_state, steps, world.x(), world.y()));
    redrawSoon(false);
}

void frmgraph::dragView(const model::ViewWindow& view, bool first)
{
    if (first)
        plot::recordZoomStep(m_state);
    applyView(view);
    redrawSoon(!first);
}

void frmgraph::redrawSoon(bool continuing)
{
    if (!m_redrawTimer) {
        m_redrawTimer = new QTimer(this);
        m_redrawTimer->setSingleShot(true);
        m_redrawTimer->setInterval(0);
        connect(m_redrawTimer, &QTimer::timeout, this, &frmgraph::drawPendingRedraw);
    }
    if (m_redrawTimer->isActive()) {
        // One undo step merges into the one before only if every move it draws did.
        m_pendingContinues = m_pendingContinues && continuing;
        return;
    }
    m_pendingContinues = continuing;
    m_redrawTimer->start();
    qApp->installEventFilter(this);
}

void frmgraph::drawPendingRedraw()
{
    m_dragContinues = m_pendingContinues;
    redraw();
    m_dragContinues = false;
}

void frmgraph::forgetPendingRedraw()
{
    if (m_redrawTimer && m_redrawTimer->isActive()) {
        m_redrawTimer->stop();
        qApp->removeEventFilter(this);
    }
}

bool frmgraph::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::Drop:
        if (m_redrawTimer && m_redrawTimer->isActive())
            drawPendingRedraw();
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmgraph::applyView(const model::ViewWindow& view)
{
    plot::RangeRow x = m_ranges->xTexts();
    plot::RangeRow y = m_ranges->yTexts();
    plot::writeViewRows(view, x, y);
    m_ranges->showDecimalRows(x, y);
    m_state.documentChanged = true;
    m_ranges->applyToView();
}

void frmgraph::onPlotLeftPressed(QPointF at)
{
    if (m_actions->tangentMode->isChecked())
        m_curveTools->addTangentAt(at, selectedEntry());
    else if (m_state.trace.on)
        m_curveTools->traceTo(at);
    else
        m_export->startDrag();
}

void frmgraph::onPlotRightReleased(QPointF at)
{
    m_colors->setFillAnchor(m_plotView->toWorld(at));
    m_actions->fill->setEnabled(true);
    if (m_curveTools->offerTangentMenu(at))
        return;
    // Near a curve, the click is about that function: it is picked in the function box.
    const int curve = plot::nearestCurve(m_state, QSizeF(plotArea()->size()), at);
    if (curve >= 0) {
        const QString text = m_state.graphs[std::size_t(curve)].text;
        m_entry->pickItem(text, model::findItemByText(m_state, text) - 1);
    }
    if (isVisible())
        (curve >= 0 ? m_actions->functionPopup : m_actions->toolsMenu)
            ->popup(plotArea()->mapToGlobal(at.toPoint()));
}

void frmgraph::onPlotDoubleClicked(QPointF at)
{
    const int curve = plot::nearestCurve(m_state, QSizeF(plotArea()->size()), at, 6);
    if (curve >= 0)
        m_plotView->labels().addPointLabel(curve, at);
}

void frmgraph::onPlotKeyActivated(QPointF at)
{
    if (m_actions->tangentMode->isChecked())
        m_curveTools->addTangentAt(at, selectedEntry());
    else
        onPlotDoubleClicked(at);
}

void frmgraph::editFormulaPicture()
{
    const std::optional<QString> forBox =
        m_plotView->labels().editLastFormula(m_entry->functionText(), m_entry->labelText());
    if (forBox)
        m_entry->setFunctionText(*forBox);
}

void frmgraph::createKeyboardShortcuts()
{
    auto shortcut = [this](const QKeySequence& keys, auto&& action) {
        auto* s = new QShortcut(keys, this);
        connect(s, &QShortcut::activated, this, action);
        return s;
    };
    shortcut(Qt::ALT | Qt::Key_F, [this] { m_entry->focusFunctionBox(); });
    shortcut(Qt::ALT | Qt::Key_X, [this] { m_ranges->focusFirstBox(); });
    shortcut(Qt::ALT | Qt::Key_T, [this] { m_entry->focusLabelText(); });
    shortcut(Qt::ALT | Qt::Key_I, [this] { m_ranges->rerunExactTrig(); });
    shortcut(Qt::ALT | Qt::Key_U, [this] { redraw(); });
    shortcut(Qt::ALT | Qt::Key_Q, [this] { editFormulaPicture(); });
    // The arrow keys step the trace (text boxes keep them for their caret).
    shortcut(Qt::Key_Left, [this] { m_curveTools->stepTrace(-1); });
    shortcut(Qt::Key_Right, [this] { m_curveTools->stepTrace(1); });
    // Escape gives up a symbolic calculation while one runs; otherwise the key is the
    // focused widget's (the zoom box puts itself away with it).
    QShortcut* cancel = shortcut(Qt::Key_Escape, [this] { m_symbolic->cancel(); });
    cancel->setEnabled(false);
    connect(m_symbolic, &SymbolicRunner::busyChanged, cancel, &QShortcut::setEnabled);
    // The plot area is resized from its lower right corner.
    const int step = 10;
    shortcut(Qt::SHIFT | Qt::Key_Left, [this] { m_plotView->resizePlotBy(-step, 0); });
    shortcut(Qt::SHIFT | Qt::Key_Right, [this] { m_plotView->resizePlotBy(step, 0); });
    shortcut(Qt::SHIFT | Qt::Key_Up, [this] { m_plotView->resizePlotBy(0, -step); });
    shortcut(Qt::SHIFT | Qt::Key_Down, [this] { m_plotView->resizePlotBy(0, step); });
    // Ctrl with the arrow keys pans a tenth of the view, as a drag with the middle button.
    const std::pair<Qt::Key, QPoint> pans[4] = {{Qt::Key_Left, {-1, 0}}, {Qt::Key_Right, {1, 0}},
                                                {Qt::Key_Up, {0, 1}}, {Qt::Key_Down, {0, -1}}};
    for (const auto& pan : pans)
        shortcut(Qt::CTRL | pan.first, [this, direction = pan.second] {
            const model::ViewWindow& v = m_state.view;
            dragView(plot::shiftedView(v, direction.x() * (v.XMax - v.XMin) / 10,
                                       direction.y() * (v.YMax - v.YMin) / 10),
                     true);
        });
}

} // namespace curvix::app
