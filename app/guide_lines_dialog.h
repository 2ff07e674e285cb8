#pragma once

#include <QDialog>

#include <vector>

class QLineEdit;
class QListWidget;

namespace curvix::app {

// Edits one list of guide lines (x = a for the vertical ones, y = b for the horizontal
// ones). Every change is applied at once and reported, so the plot follows while it is open.
class GuideLinesDialog : public QDialog {
    Q_OBJECT
public:
    GuideLinesDialog(std::vector<double>& values, const QString& title, const QString& axis,
                     QWidget* parent);

signals:
    void changed();

private:
    void add();
    void removeSelected();
    void removeAll();
    void showValues();

    std::vector<double>& m_values;
    QListWidget* m_list = nullptr;
    QLineEdit* m_entry = nullptr;
};

} // namespace curvix::app
