#pragma once

#include <QObject>

#include <array>

class QLabel;
class QStatusBar;

namespace curvix::app {

// The five panels of the status bar: three read-outs of the trace or the demonstration
// (panels 0 to 3) and the last one for messages.
class StatusPanels : public QObject {
    Q_OBJECT
public:
    explicit StatusPanels(QStatusBar* bar);

    void setReadout(int panel, const QString& text);
    void clearReadouts();
    void showMessage(const QString& text);
    QString message() const;

private:
    std::array<QLabel*, 5> m_panels{};
};

} // namespace curvix::app
