#include "app/frmtangent.h"

#include "app/tool_icons.h"
#include "eval/numtext.h"
#include "model/strings.h"
#include "plot/coordinates.h"
#include "plot/demonstration.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPolygonF>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace curvix::app {

using model::LoadResString;

namespace {

template <typename W>
W* named(W* widget, const char* name)
{
    widget->setObjectName(QLatin1String(name));
    return widget;
}

} // namespace

QIcon demoIcon(int button, const QColor& ink)
{
    return paintedIcon(32, [button, ink](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(ink);
        switch (button) {
        case DemoStart:
            p.drawPolygon(QPolygonF{{QPointF(9, 6), QPointF(26, 16), QPointF(9, 26)}});
            break;
        case DemoPause:
            p.drawRect(QRectF(8, 6, 6, 20));
            p.drawRect(QRectF(18, 6, 6, 20));
            break;
        case DemoStep:
            p.drawPolygon(QPolygonF{{QPointF(6, 6), QPointF(20, 16), QPointF(6, 26)}});
            p.drawRect(QRectF(21, 6, 5, 20));
            break;
        default:
            p.drawRect(QRectF(7, 7, 18, 18));
            break;
        }
    });
}

QWidget* frmtangent::createRangePanel()
{
    m_demoPanel = named(new QGroupBox, "demoPanel");
    auto* range = new QGridLayout(m_demoPanel);
    m_from = named(new QLineEdit(QStringLiteral("-3")), "xfrom");
    m_to = named(new QLineEdit(QStringLiteral("3")), "xto");
    m_step = named(new QLineEdit(QStringLiteral("0.1")), "steplength");
    const int captions[3] = {4001, 4002, 4003};
    QLineEdit* fields[3] = {m_from, m_to, m_step};
    for (int i = 0; i < 3; ++i) {
        auto* caption = new QLabel(LoadResString(captions[i]));
        caption->setBuddy(fields[i]); // names the box for a screen reader
        range->addWidget(caption, 0, i);
        fields[i]->setToolTip(LoadResString(2040));
        range->addWidget(fields[i], 1, i);
    }
    m_step->setText(eval::numberText(0.1));
    m_derivative = named(new QCheckBox(LoadResString(4004)), "derivative");
    range->addWidget(m_derivative, 2, 0, 1, 3);
    return m_demoPanel;
}

frmtangent::frmtangent(model::AppState& state, model::Prompter& prompter, QWidget* parent)
    : QWidget(parent, Qt::Window), m_state(state), m_prompter(prompter)
{
    setObjectName(QStringLiteral("frmtangent"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(createRangePanel());

    auto* listLabel = new QLabel;
    listLabel->setObjectName(QStringLiteral("listCaption"));
    layout->addWidget(listLabel);
    auto* entryRow = new QHBoxLayout;
    m_entry = named(new QLineEdit, "value");
    m_entry->setToolTip(LoadResString(2040));
    auto* addButton = named(new QPushButton(LoadResString(2041)), "add");
    addButton->setAutoDefault(false);
    entryRow->addWidget(m_entry, 1);
    entryRow->addWidget(addButton);
    layout->addLayout(entryRow);

    m_list = named(new QListWidget, "values");
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* listRow = new QHBoxLayout;
    listRow->addWidget(m_list, 1);
    auto* listButtons = new QVBoxLayout;
    auto* remove = named(new QPushButton(LoadResString(2042)), "remove");
    auto* removeAllButton = named(new QPushButton(LoadResString(2043)), "removeAll");
    auto* sort = named(new QPushButton(LoadResString(4009)), "sort");
    for (QPushButton* b : {remove, removeAllButton, sort}) {
        b->setAutoDefault(false);
        listButtons->addWidget(b);
    }
    listButtons->addStretch();
    listRow->addLayout(listButtons);
    layout->addLayout(listRow, 1);

    m_demoButtons = named(new QWidget, "demoButtons");
    auto* demoRow = new QHBoxLayout(m_demoButtons);
    demoRow->setContentsMargins(0, 0, 0, 0);
    const char* demoNames[4] = {"start", "pause", "step", "stop"};
    const int demoCaptions[4] = {4005, 4006, 4007, 4008};
    for (int i = 0; i < 4; ++i) {
        auto* b = named(new QPushButton(LoadResString(demoCaptions[i])), demoNames[i]);
        setThemedIcon(b, [i](const QColor& ink) { return demoIcon(i, ink); });
        b->setAutoDefault(false);
        demoRow->addWidget(b);
        connect(b, &QPushButton::clicked, this, [this, i] {
            switch (i) {
            case DemoStart: start(); break;
            case DemoPause: emit pauseRequested(); break;
            case DemoStep: emit stepRequested(); break;
            default: emit stopRequested(); break;
            }
        });
    }
    layout->addWidget(m_demoButtons);

    m_dialogButtons = named(new QWidget, "dialogButtons");
    auto* dialogRow = new QHBoxLayout(m_dialogButtons);
    dialogRow->setContentsMargins(0, 0, 0, 0);
    auto* ok = named(new QPushButton(LoadResString(4010)), "ok");
    auto* cancel = named(new QPushButton(LoadResString(4011)), "cancel");
    dialogRow->addStretch();
    dialogRow->addWidget(ok);
    dialogRow->addWidget(cancel);
    layout->addWidget(m_dialogButtons);

    connect(addButton, &QPushButton::clicked, this, &frmtangent::add);
    connect(m_entry, &QLineEdit::returnPressed, this, &frmtangent::add);
    connect(remove, &QPushButton::clicked, this, &frmtangent::removeSelected);
    connect(removeAllButton, &QPushButton::clicked, this, &frmtangent::removeAll);
    connect(sort, &QPushButton::clicked, this, &frmtangent::sortValues);
    connect(ok, &QPushButton::clicked, this, &frmtangent::accept);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    setUsage(Usage::Demonstration);
}

void frmtangent::setUsage(Usage usage)
{
    const bool wasDemo = m_usage == Usage::Demonstration;
    if (wasDemo && usage != Usage::Demonstration)
        m_demoValues = m_values;
    else if (!wasDemo && usage == Usage::Demonstration)
        setValues(m_demoValues);
    m_usage = usage;
    const bool demo = m_usage == Usage::Demonstration;
    const bool vertical = m_usage == Usage::VerticalLines;
    m_demoPanel->setVisible(demo);
    m_demoButtons->setVisible(demo);
    m_dialogButtons->setVisible(!demo);
    setProperty("helpTopic", demo ? "demonstration.html" : "guide-lines.html"); // for F1
    auto* caption = findChild<QLabel*>(QStringLiteral("listCaption"));
    caption->setText(LoadResString(demo ? 4012 : vertical ? 4013 : 4014));
    m_entry->setAccessibleName(caption->text());
    setWindowTitle(demo ? LoadResString(4026)
                        : LoadResString(vertical ? 478 : 480).remove(QLatin1Char('&')));
}

void frmtangent::setValues(const std::vector<double>& values)
{
    m_values = values;
    showValues();
}

void frmtangent::setFunction(const QString& text)
{
    m_function = text;
    m_demoPanel->setTitle(LoadResString(4015) + QStringLiteral(": ") + text);
}

void frmtangent::add()
{
    const QString text = m_entry->text().trimmed();
    if (text.isEmpty())
        return;
    const std::optional<double> value = plot::readRangeNumber(text);
    if (!value) {
        m_prompter.message(LoadResString(4024).arg(text));
        m_entry->selectAll();
        m_entry->setFocus();
        return;
    }
    m_values.push_back(*value);
    m_entry->clear();
    showValues();
}

void frmtangent::removeSelected()
{
    std::vector<double> kept;
    for (int row = 0; row < m_list->count(); ++row)
        if (!m_list->item(row)->isSelected())
            kept.push_back(m_values[std::size_t(row)]);
    m_values = kept;
    showValues();
}

void frmtangent::removeAll()
{
    m_values.clear();
    showValues();
}

void frmtangent::sortValues()
{
    std::sort(m_values.begin(), m_values.end());
    showValues();
}

void frmtangent::showValues()
{
    m_list->clear();
    for (double v : m_values)
        m_list->addItem(eval::numberText(v));
}

void frmtangent::accept()
{
    if (m_usage == Usage::Demonstration)
        return;
    std::vector<double>& lines = m_usage == Usage::VerticalLines ? m_state.verticalLines : m_state.horizontalLines;
    if (lines != m_values) {
        lines = m_values;
        m_state.documentChanged = true;
    }
    close();
    emit guideLinesChanged();
}

void frmtangent::start()
{
    const std::optional<double> from = plot::readRangeNumber(m_from->text().trimmed());
    const std::optional<double> to = plot::readRangeNumber(m_to->text().trimmed());
    const std::optional<double> step = plot::readRangeNumber(m_step->text().trimmed());
    plot::DemoPlan plan;
    if (!m_values.empty())
        plan = plot::planDemonstration(0, 0, 0, m_values);
    else if (!from || !to || !step)
        plan.problem = LoadResString(4020);
    else
        plan = plot::planDemonstration(*from, *to, *step, {});
    if (!plan.problem.isEmpty()) {
        m_prompter.message(plan.problem);
        return;
    }
    emit startRequested(m_function, plan.xs, !m_values.empty(), m_derivative->isChecked());
}

} // namespace curvix::app
