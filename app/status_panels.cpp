#include "app/status_panels.h"

#include "app/form_names.h"
#include "model/strings.h"

#include <QLabel>
#include <QStatusBar>

namespace curvix::app {

StatusPanels::StatusPanels(QStatusBar* bar) : QObject(bar)
{
    for (std::size_t i = 0; i < m_panels.size(); ++i) {
        m_panels[i] = new QLabel;
        m_panels[i]->setObjectName(formNameAt(formName::statusPanel, int(i) + 1));
        m_panels[i]->setAccessibleName(model::LoadResString(5066).arg(i + 1));
        bar->addWidget(m_panels[i], i == 4 ? 1 : 0);
    }
}

void StatusPanels::setReadout(int panel, const QString& text)
{
    m_panels[std::size_t(panel)]->setText(text);
}

void StatusPanels::clearReadouts()
{
    for (QLabel* panel : m_panels)
        panel->clear();
}

void StatusPanels::showMessage(const QString& text)
{
    m_panels[4]->setText(text);
}

QString StatusPanels::message() const
{
    return m_panels[4]->text();
}

} // namespace curvix::app
