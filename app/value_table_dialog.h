#pragma once

#include "model/app_state.h"
#include "model/prompter.h"
#include "plot/value_table.h"

#include <QDialog>

class QLabel;
class QTableWidget;

namespace curvix::app {

class PiLineEdit;

// Tools › Table of values: x from, to and step (π allowed, as in the range boxes), one column
// per drawn function, copied as tab-separated text or saved as CSV.
class ValueTableDialog : public QDialog {
    Q_OBJECT
public:
    ValueTableDialog(const model::AppState& state, model::Prompter& prompter, QWidget* parent);

    // The table for the boxes' texts; false (and the reason shown) when they make none.
    bool fill();
    QString tabSeparatedText() const
    {
        return plot::tableText(m_table, plot::TableFormat::TabSeparated);
    }
    void copy() const;
    void saveCsv();

private:
    const model::AppState& m_state;
    model::Prompter& m_prompter;
    PiLineEdit* m_from = nullptr;
    PiLineEdit* m_to = nullptr;
    PiLineEdit* m_step = nullptr;
    QLabel* m_problem = nullptr;
    QTableWidget* m_grid = nullptr;
    plot::ValueTable m_table;
};

} // namespace curvix::app
