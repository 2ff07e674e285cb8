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

// The derivative and tangent demonstration window, which is also the editor of the guide
// lines. The demonstration shows: a range or a list of x values, the derivative's
// check box and Start, Pause, Step, Stop. The other usages edit the vertical or horizontal
// guide lines: the list is a copy that OK writes back and Cancel drops.
class frmtangent : public QWidget {
    Q_OBJECT
public:
    frmtangent(model::AppState& state, model::Prompter& prompter, QWidget* parent);

    enum class Usage { Demonstration, VerticalLines, HorizontalLines };
    void setUsage(Usage usage);
    Usage usage() const { return m_usage; }
    // Fills the list view, one item per value.
    void setValues(const std::vector<double>& values);
    std::vector<double> values() const { return m_values; }
    // The function being demonstrated, as typed.
    void setFunction(const QString& text);
    QString function() const { return m_function; }

signals:
    // Start was accepted: the function, the x values to walk (from the list when
    // fromList) and whether the derivative's graph is drawn.
    void startRequested(const QString& function, const std::vector<double>& xs, bool fromList,
                        bool withDerivative);
    void pauseRequested();
    void stepRequested();
    void stopRequested();
    // OK wrote the list back into the guide lines of the state.
    void guideLinesChanged();

private:
    // The demonstration's range: x from, x to, the step and the derivative's check box.
    QWidget* createRangePanel();
    void add();
    void removeSelected();
    void removeAll();
    void sortValues();
    void showValues();
    void start();
    void accept();

    model::AppState& m_state;
    model::Prompter& m_prompter;
    Usage m_usage = Usage::Demonstration;
    QString m_function;
    std::vector<double> m_values;
    // The demonstration's list while the window edits guide lines: each usage its own.
    std::vector<double> m_demoValues;

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
