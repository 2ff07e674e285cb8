#pragma once

#include "model/app_state.h"
#include "model/prompter.h"

#include <QMainWindow>

#include <array>

class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class QToolButton;

namespace curvix::app {

class FunctionBox;
class PlotWidget;
class frmsettings;

// The main window: the function box, the range rows, the tool buttons, the menus and the
// plot area. Its handlers are short; the work is done by the procedures of the core.
class frmgraph : public QMainWindow {
    Q_OBJECT
public:
    explicit frmgraph(model::Prompter& prompter, QWidget* parent = nullptr);
    ~frmgraph() override;

    model::AppState& state() { return m_state; }
    const model::AppState& state() const { return m_state; }
    PlotWidget* plotArea() const { return Picture1; }

    // The full redraw of the plot area; every change ends in one call of it.
    void frmPicture1_Resize();
    // The function box's key handler: Enter adds the typed function.
    void imgcombfunc_KeyPress(int keyCode);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void createWidgets();
    void createMenus();
    void loadCaptions();
    void connectHandlers();
    void showFunctionItems();
    void checkBoxClicked();
    void openSettings();
    // Save As; false when the user cancelled or the file could not be written.
    bool saveAs();

    model::AppState m_state;
    model::Prompter& m_prompter;

    QLineEdit* Text5 = nullptr;
    FunctionBox* imgcombfunc = nullptr;
    QPushButton* Command1 = nullptr;
    std::array<QLineEdit*, 4> Text4{};
    std::array<QLineEdit*, 4> Text6{};
    std::array<QRadioButton*, 3> Option1{};
    QCheckBox* Check1 = nullptr;
    QCheckBox* Check2 = nullptr;
    QCheckBox* Check3 = nullptr;
    QCheckBox* Check4 = nullptr;
    std::array<QToolButton*, 11> Command5{};
    std::array<QLabel*, 5> statusPanels{};
    PlotWidget* Picture1 = nullptr;
    frmsettings* m_settings = nullptr;

    QMenu* mnufile = nullptr;
    QMenu* mnuedit = nullptr;
    QMenu* mnuzoom = nullptr;
    QMenu* mnutool = nullptr;
    QMenu* mnusettings = nullptr;
    QMenu* mnucolor = nullptr;
    QMenu* mnuhelp = nullptr;
    QMenu* mnuzoomout = nullptr;
    QAction* mnunew = nullptr;
    QAction* mnusaveas = nullptr;
    QAction* mnuprint = nullptr;
    QAction* mnuexit = nullptr;
    QAction* mnucopy = nullptr;
    QAction* mnuzoomin = nullptr;
    QAction* mnuzoominc = nullptr;
    QAction* mnuzoombeg = nullptr;
    QAction* mnutangent = nullptr;
    QAction* mnutrace = nullptr;
    QAction* mnuderivative = nullptr;
    QAction* mnuprimitive = nullptr;
    QAction* mnudelete = nullptr;
    QAction* mnufill = nullptr;
    QAction* mnuvertical = nullptr;
    QAction* menuhoriz = nullptr;
    QAction* mnucolgrid = nullptr;
    QAction* mnucolaxis = nullptr;
    QAction* mnucolfunc = nullptr;
    QAction* mnucolwind = nullptr;
    QAction* mnucolfill = nullptr;
    QAction* mnufontsize = nullptr;
    QAction* mnucoord = nullptr;
    QAction* mnucont = nullptr;
    QAction* mnusearch = nullptr;
    QAction* mnuabout = nullptr;
};

} // namespace curvix::app
