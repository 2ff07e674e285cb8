#pragma once

#include "eval/parameters.h"

#include <QDialog>

#include <array>

class QLabel;
class QLineEdit;

namespace curvix::app {

class PiLineEdit;

// The value, bounds and step of one parameter, for Add (the name can be chosen) and for
// editing a row (the name stays). OK with a problem keeps the dialog open and says under the
// boxes what is wrong, with the focus in the box to mend.
class ParameterDialog : public QDialog {
    Q_OBJECT
public:
    ParameterDialog(const eval::Parameter& shown, bool nameEditable, QWidget* parent = nullptr);

    // The names a new parameter may not take besides e: the variable and the parameters there are.
    void setTakenNames(const QString& variable, const QStringList& parameters)
    {
        m_variable = variable;
        m_taken = parameters;
    }
    eval::Parameter parameter() const { return m_parameter; }
    void accept() override;

private:
    // What is wrong with the boxes, and the box that is wrong; an empty text when nothing is.
    std::pair<QString, QWidget*> readBoxes(eval::Parameter& read) const;

    QLineEdit* m_name = nullptr;
    std::array<PiLineEdit*, 4> m_numbers{}; // value, minimum, maximum, step
    QLabel* m_problem = nullptr;
    QString m_variable;
    QStringList m_taken;
    eval::Parameter m_parameter;
};

} // namespace curvix::app
