// The main window's tool windows: guide lines, the demonstration and the settings, each made
// on first use and raised when asked for again.
#include "app/frmgraph.h"

#include "app/area_tools.h"
#include "app/demonstration.h"
#include "app/entry_panel.h"
#include "app/frmsettings.h"
#include "app/frmtangent.h"
#include "app/parameter_actions.h"
#include "app/window_actions.h"
#include "model/strings.h"

namespace curvix::app {

using model::LoadResString;

void frmgraph::connectParameters()
{
    m_parameters->addToMenus(*m_actions);
    m_areas->addToMenus(*m_actions, [this] { return selectedEntry(); });
    // A slider redraws as the wheel does: moves faster than the frames give one redraw.
    connect(m_parameters, &ParameterActions::valueMoved, this, &frmgraph::redrawSoon);
    connect(m_parameters, &ParameterActions::changed, this, &frmgraph::redraw);
    connect(m_areas, &AreaTools::changed, this, &frmgraph::redraw);
    connect(m_areas, &AreaTools::redrawNeeded, this, &frmgraph::redraw);
}

frmtangent* frmgraph::tangentWindow()
{
    if (!m_tangent) {
        m_tangent = new frmtangent(m_state, m_prompter, this);
        connect(m_tangent, &frmtangent::guideLinesChanged, this, &frmgraph::redraw);
        m_demonstration->attach(m_tangent);
    }
    return m_tangent;
}

void frmgraph::openGuideLines(frmtangent::Usage usage)
{
    frmtangent* window = tangentWindow();
    window->setUsage(usage);
    window->setValues(usage == frmtangent::Usage::VerticalLines ? m_state.verticalLines
                                                                : m_state.horizontalLines);
    window->show();
    window->raise();
    window->activateWindow();
}

void frmgraph::openDemonstration()
{
    if (selectedEntry() < 0) {
        m_prompter.message(LoadResString(2090));
        return;
    }
    frmtangent* window = tangentWindow();
    window->setUsage(frmtangent::Usage::Demonstration);
    window->setFunction(m_entry->functionText());
    window->show();
    window->raise();
    window->activateWindow();
}

void frmgraph::openSettings()
{
    if (!m_settings) {
        m_settings = new frmsettings(m_state, this);
        connect(m_settings, &frmsettings::closedWithRedraw, this, &frmgraph::redraw);
    }
    m_settings->show();
    m_settings->raise();
    m_settings->activateWindow();
}

} // namespace curvix::app
