#include "app/parameter_dialog.h"

#include "app/form_names.h"
#include "app/pi_line_edit.h"
#include "eval/numtext.h"
#include "plot/coordinates.h"
#include "plot/range_rows.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>

#include <cmath>

namespace curvix::app {

ParameterDialog::ParameterDialog(const eval::Parameter& shown, bool nameEditable, QWidget* parent)
    : QDialog(parent), m_parameter(shown)
{
    setObjectName(QStringLiteral("parameterDialog"));
    setWindowTitle(nameEditable ? tr("Add a parameter") : tr("Parameter %1").arg(shown.name));
    auto* form = new QFormLayout(this);
    m_name = named(new QLineEdit(shown.name), QStringLiteral("name"));
    m_name->setReadOnly(!nameEditable);
    m_name->setEnabled(nameEditable); // a row keeps its name: formulas use it
    m_name->setMaxLength(1);
    // One small letter; which letters are free is checked at OK, where the reason can be said.
    const QRegularExpression oneLetter(QStringLiteral("[a-z]?"));
    m_name->setValidator(new QRegularExpressionValidator(oneLetter, m_name));
    form->addRow(tr("&Name:"), m_name);
    const char* names[4] = {"value", "minimum", "maximum", "step"};
    const QString labels[4] = {tr("&Value:"), tr("M&inimum:"), tr("M&aximum:"), tr("&Step:")};
    const double values[4] = {shown.value, shown.minimum, shown.maximum, shown.step};
    for (int i = 0; i < 4; ++i) {
        m_numbers[i] = named(new PiLineEdit, QLatin1String(names[i]));
        m_numbers[i]->setRule(plot::acceptsRangeText);
        m_numbers[i]->setText(eval::numberText(values[i]));
        m_numbers[i]->setAlignment(Qt::AlignRight);
        form->addRow(labels[i], m_numbers[i]);
    }
    m_problem = named(new QLabel, QStringLiteral("problem"));
    m_problem->setWordWrap(true);
    m_problem->setVisible(false);
    form->addRow(m_problem);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
    (nameEditable ? static_cast<QWidget*>(m_name) : m_numbers[0])->setFocus();
}

std::pair<QString, QWidget*> ParameterDialog::readBoxes(eval::Parameter& read) const
{
    read.name = m_name->text();
    if (!m_name->isReadOnly()) {
        if (read.name.isEmpty())
            return {tr("The name must be one small letter, such as a."), m_name};
        if (read.name == QLatin1String("e"))
            return {tr("The name cannot be e: e is Euler's number."), m_name};
        if (read.name == m_variable)
            return {tr("The name cannot be %1: it is the drawing's variable.").arg(read.name),
                    m_name};
        if (m_taken.contains(read.name))
            return {tr("There is already a parameter %1.").arg(read.name), m_name};
    }
    const QString boxes[4] = {tr("Value"), tr("Minimum"), tr("Maximum"), tr("Step")};
    double* fields[4] = {&read.value, &read.minimum, &read.maximum, &read.step};
    for (int i = 0; i < 4; ++i) {
        const std::optional<double> number = plot::readRangeNumber(m_numbers[i]->storedText());
        if (!number || !std::isfinite(*number))
            return {tr("The %1 box needs a number, such as 2, %2 or 2π.")
                        .arg(boxes[i], eval::numberText(0.5)),
                    m_numbers[i]};
        *fields[i] = *number;
    }
    if (read.minimum >= read.maximum)
        return {tr("The minimum must be below the maximum."), m_numbers[1]};
    if (read.step <= 0)
        return {tr("The step must be above 0."), m_numbers[3]};
    if (read.value < read.minimum || read.value > read.maximum)
        return {tr("The value must lie between the minimum and the maximum."), m_numbers[0]};
    return {};
}

void ParameterDialog::accept()
{
    eval::Parameter read;
    const auto [problem, box] = readBoxes(read);
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    adjustSize(); // room for the lines of the problem
    if (box) {
        box->setFocus();
        return;
    }
    m_parameter = read;
    QDialog::accept();
}

} // namespace curvix::app
