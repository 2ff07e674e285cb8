#pragma once

#include "model/app_state.h"

#include <QWidget>

#include <array>

class QCheckBox;
class QComboBox;
class QPushButton;

namespace curvix::app {

// The coordinate-system settings: the separator written between x and y, and which axis
// ends carry an arrow. A separator chosen here is kept only when the user presses OK.
class frmsettings : public QWidget {
    Q_OBJECT
public:
    frmsettings(model::AppState& state, QWidget* owner);

signals:
    // OK or Cancel was pressed; the owner redraws in either case.
    void closedWithRedraw();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void onSeparatorChosen(int index);
    // OK keeps the choices, Cancel drops them; either closes the window.
    void finish(bool accepted);

    model::AppState& m_state;
    QString m_chosen;
    bool m_finished = false;
    QComboBox* m_separatorBox = nullptr;
    std::array<QCheckBox*, 4> m_arrowBoxes{};
    std::array<QPushButton*, 2> m_buttons{};
};

} // namespace curvix::app
