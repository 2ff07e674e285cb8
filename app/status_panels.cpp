#include "app/status_panels.h"

#include "app/form_names.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QStatusBar>

namespace curvix::app {

namespace {

// A status panel as a screen reader sees it: its name says what it is, its value is the
// text it shows (a plain label would offer one or the other).
class ReadoutAccessible : public QAccessibleWidget {
public:
    explicit ReadoutAccessible(QWidget* w) : QAccessibleWidget(w, QAccessible::StaticText) {}

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value)
            return static_cast<const QLabel*>(widget())->text();
        return QAccessibleWidget::text(t);
    }
};

QAccessibleInterface* readoutFactory(const QString&, QObject* object)
{
    if (auto* readout = qobject_cast<StatusReadout*>(object))
        return new ReadoutAccessible(readout);
    return nullptr;
}

} // namespace

void StatusReadout::setReadout(const QString& text)
{
    if (text == this->text())
        return;
    setText(text);
    QAccessibleValueChangeEvent event(this, text);
    QAccessible::updateAccessibility(&event);
}

StatusPanels::StatusPanels(QStatusBar* bar) : QObject(bar)
{
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(readoutFactory);
        return true;
    }();
    Q_UNUSED(factoryInstalled);
    for (std::size_t i = 0; i < m_panels.size(); ++i) {
        m_panels[i] = new StatusReadout;
        m_panels[i]->setObjectName(formNameAt(formName::statusPanel, int(i) + 1));
        bar->addWidget(m_panels[i], i == 4 ? 1 : 0);
    }
    m_panels[4]->setAccessibleName(tr("Pointer position and messages"));
    setReadoutSource(ReadoutSource::Trace);
}

void StatusPanels::setReadoutSource(ReadoutSource source)
{
    const bool trace = source == ReadoutSource::Trace;
    const QString names[4] = {trace ? tr("Traced function") : tr("Demonstrated function"),
                              trace ? tr("Trace x") : tr("Demonstration x"),
                              trace ? tr("Trace y") : tr("Demonstration curves"),
                              trace ? tr("Trace slope") : tr("Demonstration slope")};
    for (int i = 0; i < 4; ++i)
        m_panels[std::size_t(i)]->setAccessibleName(names[i]);
}

void StatusPanels::setReadout(int panel, const QString& text)
{
    m_panels[std::size_t(panel)]->setReadout(text);
}

void StatusPanels::clearReadouts()
{
    for (StatusReadout* panel : m_panels)
        panel->setReadout(QString());
}

void StatusPanels::showMessage(const QString& text)
{
    m_panels[4]->setReadout(text);
}

QString StatusPanels::message() const
{
    return m_panels[4]->text();
}

} // namespace curvix::app
