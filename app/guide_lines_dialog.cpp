#include "app/guide_lines_dialog.h"

#include "eval/numtext.h"
#include "model/strings.h"
#include "plot/coordinates.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace curvix::app {

using model::LoadResString;

GuideLinesDialog::GuideLinesDialog(std::vector<double>& values, const QString& title,
                                   const QString& axis, QWidget* parent)
    : QDialog(parent), m_values(values)
{
    setObjectName(QStringLiteral("guidelines"));
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);

    auto* layout = new QVBoxLayout(this);
    auto* entryRow = new QHBoxLayout;
    entryRow->addWidget(new QLabel(axis + QStringLiteral(" =")));
    m_entry = new QLineEdit;
    m_entry->setObjectName(QStringLiteral("value"));
    m_entry->setToolTip(LoadResString(2040));
    entryRow->addWidget(m_entry, 1);
    auto* addButton = new QPushButton(LoadResString(2041));
    addButton->setObjectName(QStringLiteral("add"));
    entryRow->addWidget(addButton);
    layout->addLayout(entryRow);

    m_list = new QListWidget;
    m_list->setObjectName(QStringLiteral("values"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    layout->addWidget(m_list, 1);

    auto* buttons = new QHBoxLayout;
    auto* remove = new QPushButton(LoadResString(2042));
    remove->setObjectName(QStringLiteral("remove"));
    auto* removeAllButton = new QPushButton(LoadResString(2043));
    removeAllButton->setObjectName(QStringLiteral("removeAll"));
    auto* close = new QPushButton(LoadResString(2044));
    buttons->addWidget(remove);
    buttons->addWidget(removeAllButton);
    buttons->addStretch();
    buttons->addWidget(close);
    layout->addLayout(buttons);

    connect(addButton, &QPushButton::clicked, this, &GuideLinesDialog::add);
    connect(m_entry, &QLineEdit::returnPressed, this, &GuideLinesDialog::add);
    connect(remove, &QPushButton::clicked, this, &GuideLinesDialog::removeSelected);
    connect(removeAllButton, &QPushButton::clicked, this, &GuideLinesDialog::removeAll);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    showValues();
}

void GuideLinesDialog::add()
{
    const std::optional<double> value = plot::readRangeNumber(m_entry->text());
    if (!value) {
        m_entry->selectAll();
        m_entry->setFocus();
        return;
    }
    m_values.push_back(*value);
    m_entry->clear();
    showValues();
    emit changed();
}

void GuideLinesDialog::removeSelected()
{
    std::vector<double> kept;
    for (int row = 0; row < m_list->count(); ++row)
        if (!m_list->item(row)->isSelected())
            kept.push_back(m_values[std::size_t(row)]);
    if (kept.size() == m_values.size())
        return;
    m_values = kept;
    showValues();
    emit changed();
}

void GuideLinesDialog::removeAll()
{
    if (m_values.empty())
        return;
    m_values.clear();
    showValues();
    emit changed();
}

void GuideLinesDialog::showValues()
{
    m_list->clear();
    for (double v : m_values)
        m_list->addItem(eval::numberText(v));
}

} // namespace curvix::app
