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
    m_separatorBox = new QComboBox;
    m_separatorBox->setObjectName(QStringLiteral("Combo1"));
    for (int number = 1001; number <= 1004; ++number)
        m_separatorBox->addItem(LoadResString(number));
    m_separatorBox->setPlaceholderText(LoadResString(1006));
    m_separatorBox->setCurrentIndex(-1);
    m_separatorBox->setAccessibleName(LoadResString(1006));
    layout->addWidget(new QLabel(LoadResString(1006)));
    layout->addWidget(m_separatorBox);

    auto* arrows = new QGroupBox(LoadResString(1007));
    auto* arrowLayout = new QHBoxLayout(arrows);
    const char* captions[4] = {"y neg", "y pos", "x neg", "x pos"};
    const bool states[4] = {state.arrows.yNeg, state.arrows.yPos, state.arrows.xNeg,
                            state.arrows.xPos};
    for (int i = 0; i < 4; ++i) {
        m_arrowBoxes[i] = new QCheckBox(QLatin1String(captions[i]));
        m_arrowBoxes[i]->setObjectName(QStringLiteral("Check1_%1").arg(i));
        m_arrowBoxes[i]->setChecked(states[i]);
        arrowLayout->addWidget(m_arrowBoxes[i]);
    }
    layout->addWidget(arrows);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_buttons[0] = new QPushButton(LoadResString(2011));
    m_buttons[1] = new QPushButton(LoadResString(705));
    for (int i = 0; i < 2; ++i) {
        m_buttons[i]->setObjectName(QStringLiteral("Command1_%1").arg(i));
        buttons->addWidget(m_buttons[i]);
        connect(m_buttons[i], &QPushButton::clicked, this, [this, i] { finish(i == 0); });
    }
    m_buttons[0]->setDefault(true);
    layout->addLayout(buttons);

    connect(m_separatorBox, &QComboBox::activated, this, &frmsettings::onSeparatorChosen);
}

void frmsettings::onSeparatorChosen(int index)
{
    // The character just before the closing parenthesis is the separator itself, so a
    // translated table still yields the right one.
    const QString item = m_separatorBox->itemText(index);
    m_chosen = item.size() >= 2 ? item.mid(item.size() - 2, 1) : QString();
}

void frmsettings::finish(bool accepted)
{
    if (accepted) {
        if (!m_chosen.isEmpty())
            m_state.coordinateSeparator = m_chosen;
        m_state.arrows.yNeg = m_arrowBoxes[0]->isChecked();
        m_state.arrows.yPos = m_arrowBoxes[1]->isChecked();
        m_state.arrows.xNeg = m_arrowBoxes[2]->isChecked();
        m_state.arrows.xPos = m_arrowBoxes[3]->isChecked();
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
