#include "app/value_table_dialog.h"

#include "app/pi_line_edit.h"
#include "eval/numtext.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <cmath>

namespace curvix::app {

ValueTableDialog::ValueTableDialog(const model::AppState& state, model::Prompter& prompter,
                                   QWidget* parent)
    : QDialog(parent), m_state(state), m_prompter(prompter)
{
    setObjectName(QStringLiteral("valueTable"));
    setWindowTitle(tr("Table of values"));
    auto* boxes = new QFormLayout;
    const auto box = [&](const char* name, const QString& caption, double value) {
        auto* edit = new PiLineEdit(this);
        edit->setObjectName(QLatin1String(name));
        edit->setText(eval::numberText(value, QLocale(), 10));
        boxes->addRow(caption, edit);
        connect(edit, &QLineEdit::editingFinished, this, &ValueTableDialog::fill);
        return edit;
    };
    // The range the plot shows, a row per tick.
    m_from = box("tableFrom", tr("x from"), state.view.XMin);
    m_to = box("tableTo", tr("to"), state.view.XMax);
    m_step = box("tableStep", tr("step"), state.view.XStep);
    m_problem = new QLabel(this);
    m_grid = new QTableWidget(this);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->hide();

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* copyButton = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    QPushButton* saveButton = buttons->addButton(tr("&Save CSV..."), QDialogButtonBox::ActionRole);
    copyButton->setObjectName(QStringLiteral("tableCopy"));
    saveButton->setObjectName(QStringLiteral("tableSave"));
    connect(copyButton, &QPushButton::clicked, this, &ValueTableDialog::copy);
    connect(saveButton, &QPushButton::clicked, this, &ValueTableDialog::saveCsv);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(boxes);
    layout->addWidget(m_problem);
    layout->addWidget(m_grid);
    layout->addWidget(buttons);
    resize(480, 420);
    fill();
}

bool ValueTableDialog::fill()
{
    QString problem;
    const std::optional<plot::TableRange> range = plot::readTableRange(
        m_from->storedText(), m_to->storedText(), m_step->storedText(), &problem);
    m_problem->setText(problem);
    if (!range)
        return false;
    std::vector<plot::TableColumn> columns;
    for (const model::GraphEntry& entry : m_state.graphs) {
        if (entry.formula)
            columns.push_back({entry.text, entry.formula.get()});
    }
    m_table = plot::makeValueTable(*range, columns);
    m_grid->clear();
    m_grid->setColumnCount(int(columns.size()) + 1);
    m_grid->setRowCount(int(m_table.xs.size()));
    m_grid->setHorizontalHeaderLabels(QStringList{QStringLiteral("x")} + m_table.headings);
    // On screen the numbers read as everywhere in the window (the locale's decimal sign, ten
    // digits); Copy and CSV keep every digit.
    const auto shown = [](double value) {
        return std::isfinite(value) ? eval::numberText(value, QLocale(), 10) : plot::tableCellText(value);
    };
    for (std::size_t r = 0; r < m_table.xs.size(); ++r) {
        m_grid->setItem(int(r), 0, new QTableWidgetItem(shown(m_table.xs[r])));
        for (std::size_t c = 0; c < columns.size(); ++c)
            m_grid->setItem(int(r), int(c) + 1, new QTableWidgetItem(shown(m_table.values[r][c])));
    }
    m_grid->resizeColumnsToContents();
    return true;
}

void ValueTableDialog::copy() const
{
    QGuiApplication::clipboard()->setText(tabSeparatedText());
}

void ValueTableDialog::saveCsv()
{
    const QString name = m_prompter.saveFileName(tr("Save table"), QString(),
                                                 tr("CSV files (*.csv)"), nullptr);
    if (name.isEmpty())
        return;
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(plot::tableText(m_table, plot::TableFormat::Csv).toUtf8()) < 0) {
        m_prompter.message(tr("Could not save %1: %2").arg(name, file.errorString()));
    }
}

} // namespace curvix::app
