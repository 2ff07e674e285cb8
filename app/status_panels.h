#pragma once

#include <QLabel>
#include <QObject>

#include <array>

class QStatusBar;

namespace curvix::app {

// One panel of the status bar. A screen reader hears what the panel is as its name and
// the text shown as its value, and is told when the text changes.
class StatusReadout : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;
    void setReadout(const QString& text);
};

// The five panels of the status bar: four read-outs of the trace or the demonstration
// (panels 0 to 3) and the last one for the pointer's position and messages.
class StatusPanels : public QObject {
    Q_OBJECT
public:
    // Which tool writes the read-outs: their names tell a screen reader what they show.
    enum class ReadoutSource { Trace, Demonstration };

    explicit StatusPanels(QStatusBar* bar);

    void setReadoutSource(ReadoutSource source);
    void setReadout(int panel, const QString& text);
    void clearReadouts();
    void showMessage(const QString& text);
    QString message() const;

private:
    std::array<StatusReadout*, 5> m_panels{};
};

} // namespace curvix::app
