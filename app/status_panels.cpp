#include "app/status_panels.h"

#include "app/form_names.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QStatusBar>

namespace curvix::app {

namespace {

// A status panel as a screen reader sees it: its name says what it is, its value is the
// text it shows (a plain label would offer one or the other). The text is also offered as
// read-only text, which is how the Linux bridge hands a label's words to a screen reader.
class ReadoutAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit ReadoutAccessible(QWidget* w) : QAccessibleWidget(w, QAccessible::StaticText) {}

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value)
            return shown();
        return QAccessibleWidget::text(t);
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(int start, int end) const override { return shown().mid(start, end - start); }
    int characterCount() const override { return int(shown().size()); }
    // Nothing to select or place a caret in, and no character geometry worth telling.
    void selection(int, int* start, int* end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint&) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int* start, int* end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    QString shown() const { return static_cast<const QLabel*>(widget())->text(); }
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
    const QString old = this->text();
    if (text == old)
        return;
    setText(text);
    QAccessibleTextUpdateEvent textEvent(this, 0, old, text);
    QAccessible::updateAccessibility(&textEvent);
    QAccessibleValueChangeEvent valueEvent(this, text);
    QAccessible::updateAccessibility(&valueEvent);
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
