#pragma once

#include "model/app_state.h"
#include "model/prompter.h"

#include <QIcon>
#include <QWidget>

#include <optional>
#include <vector>

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace curvix::app {

// The buttons of the demonstration, in the order of Command3: start, pause, step, stop.
enum DemoButton { DemoStart = 0, DemoPause = 1, DemoStep = 2, DemoStop = 3 };

// The painted pictures of the demonstration buttons, in the ink of the palette.
QIcon demoIcon(int button, const QColor& ink);

// The x values a demonstration walks through: the list when it has values (in its order),
// otherwise from, from + step, ... up to to. Nothing, with the reason, for values that
// cannot be walked (from not below to, a step of 0 or less, too many steps).
struct DemoPlan {
    std::vector<double> xs;
    QString problem;
};
DemoPlan planDemonstration(double from, double to, double step, const std::vector<double>& list);

// The derivative and tangent demonstration window, which is also the editor of the guide
// lines. Mode 0 shows the demonstration: a range or a list of x values, the derivative's
// check box and Start, Pause, Step, Stop. Modes 1 and 2 edit the vertical or horizontal
// guide lines: the list is a copy that OK writes back and Cancel drops.
class frmtangent : public QWidget {
    Q_OBJECT
public:
    frmtangent(model::AppState& state, model::Prompter& prompter, QWidget* parent);

    // The mode-setting method: 0 demonstration, 1 vertical lines, 2 horizontal lines.
    void currentusage(int mode);
    int usage() const { return m_usage; }
    // Fills the list view, one item per value.
    void setValues(const std::vector<double>& values);
    std::vector<double> values() const { return m_values; }
    // The function being demonstrated, as typed.
    void setFunction(const QString& text);
    QString function() const { return m_function; }

    // Set to 1 by Start; the main window's activation handler builds the demonstration
    // and sets it back to 0.
    int requestFlag = 0;
    // The walk that Start accepted, for the main window to play.
    const std::vector<double>& plannedXs() const { return m_planned; }
    bool drawDerivative() const;

signals:
    // Start was accepted and the request flag raised.
    void startRequested();
    void pauseRequested();
    void stepRequested();
    void stopRequested();
    // OK wrote the list back into the guide lines of the state.
    void guideLinesChanged();

private:
    void add();
    void removeSelected();
    void removeAll();
    void sortValues();
    void showValues();
    void start();
    void accept();

    model::AppState& m_state;
    model::Prompter& m_prompter;
    int m_usage = 0;
    QString m_function;
    std::vector<double> m_values;
    std::vector<double> m_planned;

    QGroupBox* m_demoPanel = nullptr;
    QLineEdit* m_from = nullptr;
    QLineEdit* m_to = nullptr;
    QLineEdit* m_step = nullptr;
    QCheckBox* m_derivative = nullptr;
    QWidget* m_demoButtons = nullptr;
    QWidget* m_dialogButtons = nullptr;
    QLineEdit* m_entry = nullptr;
    QListWidget* m_list = nullptr;
};

} // namespace curvix::app
