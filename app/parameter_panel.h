#pragma once

#include "eval/parameters.h"

#include <QWidget>

#include <memory>
#include <vector>

class QLabel;
class QPushButton;
class QTimer;
class QVBoxLayout;

namespace curvix::app {

// The first letter a new parameter may take: a, b, c, d, f, … z, skipping e (Euler's
// number), the drawing's variable and the names already taken. Empty when none is left.
QString nextFreeParameterName(const eval::ParameterList& taken, const QString& variable);

// The named numbers of a drawing, a row each: "a =", a value box, a slider over the
// parameter's bounds in its steps, a play button that sweeps the value between the bounds
// and back, an edit and a remove button; under the rows an Add button. The panel shows what
// setParameters gives it and never changes the drawing itself: it asks through its signals.
class ParameterPanel : public QWidget {
    Q_OBJECT
public:
    explicit ParameterPanel(QWidget* parent = nullptr);
    ~ParameterPanel() override;

    // Rows whose parameter kept its name are updated in place, so that a drag or a sweep
    // under way goes on; a row whose name went stops playing and goes.
    void setParameters(const eval::ParameterList& parameters);
    // The drawing's variable, which the Add dialog never proposes.
    void setVariable(const QString& variable);
    bool isPlaying(int index) const;

protected:
    // A focused slider keeps its keys from the window's shortcuts (the trace's arrows).
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    // dragging is true while the slider is held or the value plays, false for a typed value,
    // a key on the slider, the release of the slider and the end of a sweep.
    void valueChanged(int index, double value, bool dragging);
    void addRequested(const eval::Parameter& parameter);
    void changeRequested(int index, const eval::Parameter& parameter);
    void removeRequested(int index);

private:
    struct Row;

    Row* createRow(const eval::Parameter& parameter);
    void showInRow(Row& row, const eval::Parameter& parameter, bool fresh = false);
    void placeRows();
    int indexOf(const Row* row) const;
    void sliderMoved(Row& row, int position);
    void typedValue(Row& row, double value);
    void togglePlay(Row& row, bool on);
    void stopPlaying(Row& row);
    int nextPlayPosition(Row& row);
    void playTick();
    void openEditor(Row* row);

    std::vector<std::unique_ptr<Row>> m_rows;
    QString m_variable = QStringLiteral("x");
    QVBoxLayout* m_rowLayout = nullptr;
    QLabel* m_placeholder = nullptr;
    QPushButton* m_add = nullptr;
    QTimer* m_playTimer = nullptr;
};

} // namespace curvix::app
