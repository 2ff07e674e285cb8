#include "app/help_topics.h"

#include "app/help_window.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QRegularExpression>
#include <QWidget>

namespace curvix::app {

namespace {

struct TopicEntry {
    const char* window; // the object name of the control's window
    const char* control; // its object name, without the index of a row or pad
    const char* topic;
};

// Controls without an entry take their parent's topic, so a whole dialog needs one entry. A
// window whose topic changes with its use names it itself, in the property "helpTopic".
constexpr TopicEntry kTopics[] = {
    {"frmgraph", "frmgraph", "getting-started.html#main-window"},
    {"frmgraph", "Text5", "typing-functions.html#variable"},
    {"frmgraph", "imgcombfunc", "typing-functions.html"},
    {"frmgraph", "Command1", "getting-started.html#first-curve"},
    {"frmgraph", "Text2", "keypad.html#pi-key"},
    {"frmgraph", "cmdtoken", "keypad.html#keys"},
    {"frmgraph", "Text4", "ranges.html#boxes"},
    {"frmgraph", "Text6", "ranges.html#boxes"},
    {"frmgraph", "fracinput", "angles.html#fractions"},
    {"frmgraph", "Option1", "angles.html#units"},
    {"frmgraph", "Check1", "angles.html#exact"},
    {"frmgraph", "Check2", "ranges.html#grid"},
    {"frmgraph", "Check3", "ranges.html#grid"},
    {"frmgraph", "Check4", "ranges.html#grid"},
    {"frmgraph", "Picture1", "zoom.html#zoom-in"},
    {"frmgraph", "piczoombox", "zoom.html#zoom-in"},
    {"frmgraph", "lblGrip", "ranges.html#plot-size"},
    {"frmgraph", "traceControls", "trace.html"},
    {"frmgraph", "demoControls", "demonstration.html"},
    {"frmgraph", "parameterPanel", "parameters.html#sliders"},
    {"parameterDialog", "parameterDialog", "parameters.html#declaring"},
    {"areaDialog", "areaDialog", "parameters.html#area"},
    {"frmsettings", "frmsettings", "ranges.html#settings"},
    {"frmAbout1", "frmAbout1", "curvix-help.html#about"},
};

// "cmdtoken_16" and "Text4_0" are keys of a pad or boxes of a row: they share the topic.
QString withoutIndex(const QString& name)
{
    static const QRegularExpression index(QStringLiteral("_\\d+$"));
    return QString(name).remove(index);
}

const char* topicOf(const QString& window, const QString& control)
{
    for (const TopicEntry& entry : kTopics)
        if (window == QLatin1String(entry.window) && control == QLatin1String(entry.control))
            return entry.topic;
    return nullptr;
}

class ContextHelp : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
            return false;
        if (!static_cast<QKeyEvent*>(event)->matches(QKeySequence::HelpContents))
            return false;
        auto* widget = qobject_cast<QWidget*>(watched);
        // Menus keep their own keys, and inside the manual F1 has nothing to explain.
        if (!widget || widget->window()->windowType() == Qt::Popup ||
            qobject_cast<HelpWindow*>(widget->window()))
            return false;
        // Claiming the shortcut makes F1 arrive as a key press here rather than as the
        // Help › Contents command, which would only show the contents.
        event->accept();
        if (event->type() == QEvent::KeyPress)
            showHelp(widget->window(), HelpTab::Contents)->openPage(helpTopicFor(widget));
        return true;
    }
};

} // namespace

QString helpTopicFor(const QWidget* focused)
{
    const QString window = focused ? focused->window()->objectName() : QString();
    for (const QWidget* w = focused; w; w = w->isWindow() ? nullptr : w->parentWidget()) {
        if (QString own = w->property("helpTopic").toString(); !own.isEmpty())
            return own;
        const QString name = w->objectName();
        if (const char* topic = topicOf(window, name))
            return QLatin1String(topic);
        if (const char* topic = topicOf(window, withoutIndex(name)))
            return QLatin1String(topic);
    }
    return helpStartPage();
}

void installContextHelp()
{
    static QPointer<ContextHelp> filter;
    if (filter || !qApp)
        return;
    filter = new ContextHelp(qApp);
    qApp->installEventFilter(filter);
}

} // namespace curvix::app
