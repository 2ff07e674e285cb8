#include "app/frmsettings.h"

#include "model/strings.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace curvix::app {

using model::LoadResString;

frmsettings::frmsettings(model::AppState& state, QWidget* owner)
    : QWidget(owner, Qt::Window | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      m_state(state)
{
    setObjectName(QStringLiteral("frmsettings"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(LoadResString(1005));

    auto* layout = new QVBoxLayout(this);
    Combo1 = new QComboBox;
    Combo1->setObjectName(QStringLiteral("Combo1"));
    for (int number = 1001; number <= 1004; ++number)
        Combo1->addItem(LoadResString(number));
    Combo1->setPlaceholderText(LoadResString(1006));
    Combo1->setCurrentIndex(-1);
    layout->addWidget(new QLabel(LoadResString(1006)));
    layout->addWidget(Combo1);

    auto* arrows = new QGroupBox(LoadResString(1007));
    auto* arrowLayout = new QHBoxLayout(arrows);
    const char* captions[4] = {"y neg", "y pos", "x neg", "x pos"};
    const bool states[4] = {state.arrows.yNeg, state.arrows.yPos, state.arrows.xNeg,
                            state.arrows.xPos};
    for (int i = 0; i < 4; ++i) {
        Check1[i] = new QCheckBox(QLatin1String(captions[i]));
        Check1[i]->setObjectName(QStringLiteral("Check1_%1").arg(i));
        Check1[i]->setChecked(states[i]);
        arrowLayout->addWidget(Check1[i]);
    }
    layout->addWidget(arrows);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    Command1[0] = new QPushButton(LoadResString(2011));
    Command1[1] = new QPushButton(LoadResString(705));
    for (int i = 0; i < 2; ++i) {
        Command1[i]->setObjectName(QStringLiteral("Command1_%1").arg(i));
        buttons->addWidget(Command1[i]);
        connect(Command1[i], &QPushButton::clicked, this, [this, i] { Command1_Click(i); });
    }
    Command1[0]->setDefault(true);
    layout->addLayout(buttons);

    connect(Combo1, &QComboBox::activated, this, &frmsettings::Combo1_Click);
}

void frmsettings::Combo1_Click(int index)
{
    // The character just before the closing parenthesis is the separator itself, so a
    // translated table still yields the right one.
    const QString item = Combo1->itemText(index);
    m_chosen = item.size() >= 2 ? item.mid(item.size() - 2, 1) : QString();
}

void frmsettings::Command1_Click(int index)
{
    if (index == 0) {
        if (!m_chosen.isEmpty())
            m_state.coordinateSeparator = m_chosen;
        m_state.arrows.yNeg = Check1[0]->isChecked();
        m_state.arrows.yPos = Check1[1]->isChecked();
        m_state.arrows.xNeg = Check1[2]->isChecked();
        m_state.arrows.xPos = Check1[3]->isChecked();
    }
    close();
}

void frmsettings::closeEvent(QCloseEvent* event)
{
    // Closing by the title bar counts as Cancel; the owner redraws once in every case.
    if (!m_finished) {
        m_finished = true;
        emit closedWithRedraw();
    }
    event->accept();
}

} // namespace curvix::app
