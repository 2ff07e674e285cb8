#include "app/area_tools.h"

#include "app/area_dialog.h"
#include "app/status_panels.h"
#include "app/window_actions.h"
#include "eval/formula.h"
#include "eval/symbolic.h"
#include "model/graph_list.h"
#include "plot/area.h"

#include <QAction>
#include <QMenu>
#include <QtConcurrent/QtConcurrentRun>

namespace curvix::app {

AreaTools::AreaTools(model::AppState& state, StatusPanels& status, QWidget* window)
    : QObject(window), m_state(state), m_status(status), m_window(window)
{
    connect(&m_watcher, &QFutureWatcher<QString>::finished, this, &AreaTools::takePrimitive);
}

AreaTools::~AreaTools()
{
    // The worker may not outlive the window that waits for it.
    m_cancel->store(true);
    m_watcher.waitForFinished();
}

void AreaTools::addToMenus(WindowActions& actions, const std::function<int()>& selectedEntry)
{
    m_area = new QAction(tr("&Area…"), this);
    m_area->setObjectName(QStringLiteral("mnupoparea"));
    m_remove = new QAction(tr("Remove area&s"), this);
    m_remove->setObjectName(QStringLiteral("mnupopremoveareas"));
    actions.functionPopup->insertActions(actions.popupDemonstration, {m_area, m_remove});
    connect(actions.functionPopup, &QMenu::aboutToShow, this,
            [this, selectedEntry] { updateActions(selectedEntry()); });
    connect(m_area, &QAction::triggered, this, [this, selectedEntry] { askArea(selectedEntry()); });
    connect(m_remove, &QAction::triggered, this,
            [this, selectedEntry] { removeAreas(selectedEntry()); });
}

void AreaTools::updateActions(int entry)
{
    const bool drawn = entry >= 0 && entry < int(m_state.graphs.size());
    bool hasArea = false;
    for (const model::AreaRegion& region : m_state.areas)
        hasArea = hasArea || region.curve == entry;
    if (m_area) {
        m_area->setEnabled(drawn);
        m_remove->setEnabled(drawn && hasArea);
    }
}

void AreaTools::askArea(int entry)
{
    if (entry < 0 || entry >= int(m_state.graphs.size()))
        return;
    const model::GraphEntry& graph = m_state.graphs[std::size_t(entry)];
    if (!graph.formula)
        return;
    const auto [a, b] = plot::defaultAreaBounds(*graph.formula, m_state.view);
    const QString shown = QString(graph.text).replace(eval::kPiChar, QChar(0x03C0));
    const auto bounds = askAreaBounds(m_window, shown, m_state.variable(), a, b);
    if (!bounds)
        return;
    m_state.areas.push_back({entry, bounds->first, bounds->second});
    m_state.documentChanged = true;
    emit changed();
    if (m_state.areaReadouts.size() == m_state.areas.size())
        m_status.showMessage(plot::areaStatusText(m_state.areaReadouts.back().value,
                                                  bounds->first, bounds->second));
}

void AreaTools::removeAreas(int entry)
{
    const auto before = m_state.areas.size();
    model::removeAreasOf(m_state, entry);
    if (m_state.areas.size() == before)
        return;
    m_state.documentChanged = true;
    emit changed();
}

QString AreaTools::keyFor(const model::GraphEntry& entry) const
{
    return QStringLiteral("%1\n%2\n%3\n%4")
        .arg(entry.text, m_state.variable())
        .arg(int(m_state.angleUnit))
        .arg(entry.parameters.join(u','));
}

void AreaTools::preparePrimitives()
{
    m_state.areaReadouts.resize(m_state.areas.size());
    for (std::size_t i = 0; i < m_state.areas.size(); ++i) {
        const qint32 curve = m_state.areas[i].curve;
        if (curve < 0 || curve >= qint32(m_state.graphs.size()))
            continue;
        const model::GraphEntry& entry = m_state.graphs[std::size_t(curve)];
        const QString key = keyFor(entry);
        if (const auto known = m_primitives.find(key); known != m_primitives.end()) {
            m_state.areaReadouts[i].primitive = known->second;
            continue;
        }
        m_state.areaReadouts[i].primitive.clear();
        if (m_watcher.isRunning())
            continue; // one request at a time: the next redraw asks for the rest
        m_asking = key;
        eval::SymbolicOptions options;
        options.angleUnit = int(m_state.angleUnit);
        options.parameters = entry.parameters;
        options.cancel = m_cancel;
        const QString variable = m_state.variable();
        m_watcher.setFuture(QtConcurrent::run([text = entry.text, variable, options] {
            return eval::SymbolicPrimitive(text, variable, {}, options);
        }));
    }
}

void AreaTools::takePrimitive()
{
    const QString answer = m_watcher.result();
    QString prepared;
    if (!answer.isEmpty()) {
        // The answer is written like a typed formula, with the pi character.
        eval::ExpressionEvaluator evaluator;
        const QString variable = m_asking.section(u'\n', 1, 1);
        const QString label = QStringLiteral("f(%1)").arg(variable);
        // The names the request was made with; their values do not matter here.
        eval::ParameterList asked;
        for (const QString& name : m_asking.section(u'\n', 3, 3).split(u',', Qt::SkipEmptyParts))
            asked.push_back({name});
        prepared = eval::PrepareExpressionText(evaluator, answer, label, {}, QLocale::c(), asked);
    }
    m_primitives[m_asking] = prepared;
    if (!prepared.isEmpty())
        emit redrawNeeded();
    else
        preparePrimitives(); // the next curve still without an answer is asked
}

} // namespace curvix::app
