#include "app/window_actions.h"

#include "app/help_topics.h"
#include "app/language.h"
#include "model/strings.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace curvix::app {

using model::LoadResString;

namespace {

QAction* addCommand(QMenu* menu, const char* name, const QString& text)
{
    QAction* action = menu->addAction(text);
    action->setObjectName(QLatin1String(name));
    return action;
}

QMenu* addMenu(QMenuBar* bar, QMenu* parent, const char* name, const QString& title)
{
    QMenu* menu = parent ? parent->addMenu(title) : bar->addMenu(title);
    menu->setObjectName(QLatin1String(name));
    return menu;
}

void createFileAndEditMenus(QMenuBar* bar, WindowActions& a)
{
    a.fileMenu = addMenu(bar, nullptr, "mnufile", LoadResString(2000));
    a.newDrawing = addCommand(a.fileMenu, "mnunew", LoadResString(426));
    a.saveAs = addCommand(a.fileMenu, "mnusaveas", LoadResString(428) + QStringLiteral("..."));
    a.printPreview =
        addCommand(a.fileMenu, "mnuprintpreview", LoadResString(2100) + QStringLiteral("..."));
    a.print = addCommand(a.fileMenu, "mnuprint", LoadResString(429) + QStringLiteral("..."));
    a.fileMenu->addSeparator();
    a.exit = addCommand(a.fileMenu, "mnuexit", LoadResString(2001));

    a.editMenu = addMenu(bar, nullptr, "mnuedit", LoadResString(2002));
    a.copy = addCommand(a.editMenu, "mnucopy", LoadResString(427));

    a.zoomMenu = addMenu(bar, nullptr, "mnuzoom", LoadResString(2003));
    a.zoomIn = addCommand(a.zoomMenu, "mnuzoomin", LoadResString(5073));
    a.zoomOutMenu = addMenu(bar, a.zoomMenu, "mnuzoomout", LoadResString(5074));
    a.zoomOutStep = addCommand(a.zoomOutMenu, "mnuzoominc", LoadResString(5075));
    a.zoomToStart = addCommand(a.zoomOutMenu, "mnuzoombeg", LoadResString(5076));
    a.equalScale = addCommand(a.zoomMenu, "mnuequalscale", LoadResString(5085));
    a.equalScale->setCheckable(true);
}

void createToolsMenu(QMenuBar* bar, WindowActions& a)
{
    a.toolsMenu = addMenu(bar, nullptr, "mnutool", LoadResString(2004));
    a.tangentMode = addCommand(a.toolsMenu, "mnutangent", LoadResString(475));
    a.trace = addCommand(a.toolsMenu, "mnutrace", LoadResString(5070));
    a.derivative = addCommand(a.toolsMenu, "mnuderivative", LoadResString(5071));
    a.primitive = addCommand(a.toolsMenu, "mnuprimitive", LoadResString(5072));
    a.deleteFunction = addCommand(a.toolsMenu, "mnupop1", LoadResString(469));
    a.toolsMenu->addSeparator();
    a.fill = addCommand(a.toolsMenu, "mnufill", LoadResString(477));
    a.verticalLines = addCommand(a.toolsMenu, "mnuvertical", LoadResString(478));
    a.horizontalLines = addCommand(a.toolsMenu, "menuhoriz", LoadResString(480));
    a.toolsMenu->addSeparator();
    a.demonstration = addCommand(a.toolsMenu, "mnudemo", LoadResString(5077) + QStringLiteral("..."));
    a.pointsOfInterest = addCommand(a.toolsMenu, "mnupoints", QObject::tr("P&oints of interest"));
    a.valueTable = addCommand(a.toolsMenu, "mnutable", QObject::tr("Ta&ble of values..."));
    a.tangentMode->setCheckable(true);
    a.trace->setCheckable(true);
}

void createSettingsAndHelpMenus(QMenuBar* bar, WindowActions& a)
{
    a.settingsMenu = addMenu(bar, nullptr, "mnusettings", LoadResString(2005));
    a.colorMenu = addMenu(bar, a.settingsMenu, "mnucolor", LoadResString(431));
    a.gridColor = addCommand(a.colorMenu, "mnucolgrid", LoadResString(433));
    a.axisColor = addCommand(a.colorMenu, "mnucolaxis", LoadResString(434));
    a.functionColor = addCommand(a.colorMenu, "mnucolfunc", LoadResString(435));
    a.windowColor = addCommand(a.colorMenu, "mnucolwind", LoadResString(488));
    a.fillColor = addCommand(a.colorMenu, "mnucolfill", LoadResString(479));
    a.autoColors = addCommand(a.settingsMenu, "mnuautocolor", LoadResString(5140));
    a.autoColors->setCheckable(true);
    a.smoothCurves = addCommand(a.settingsMenu, "mnusmooth", LoadResString(5142));
    a.smoothCurves->setCheckable(true);
    a.fontSize = addCommand(a.settingsMenu, "mnufontsize", LoadResString(470));
    a.settings = addCommand(a.settingsMenu, "mnucoord", LoadResString(2006));

    a.helpMenu = addMenu(bar, nullptr, "mnuhelp", LoadResString(2007));
    a.helpContents = addCommand(a.helpMenu, "mnucont", LoadResString(2008));
    a.helpSearch = addCommand(a.helpMenu, "mnusearch", LoadResString(2009));
    a.helpMenu->addSeparator();
    a.about = addCommand(a.helpMenu, "mnuabout", LoadResString(2010));
}

void createFunctionPopup(QMainWindow* window, WindowActions& a)
{
    a.functionPopup = new QMenu(window);
    a.functionPopup->setObjectName(QStringLiteral("mnupop"));
    a.popupDerivative = addCommand(a.functionPopup, "mnupopderiv", QObject::tr("&Derivata"));
    a.popupPrimitive = addCommand(a.functionPopup, "mnupopprim", QObject::tr("&Primitiv funktion"));
    a.functionPopup->addAction(a.tangentMode);
    a.functionPopup->addAction(a.pointsOfInterest);
    a.removeTangents = addCommand(a.functionPopup, "mnuremovetangents", LoadResString(2060));
    a.popupDemonstration =
        addCommand(a.functionPopup, "mnupopdemo", LoadResString(5077) + QStringLiteral("..."));
    a.popupColor = addCommand(a.functionPopup, "mnupopcolor", LoadResString(5141));
    a.popupEdit = addCommand(a.functionPopup, "mnupopedit", LoadResString(5145));
    a.functionPopup->addSeparator();
    a.functionPopup->addAction(a.deleteFunction);
}

} // namespace

WindowActions createWindowActions(QMainWindow* window, model::Prompter& prompter)
{
    WindowActions a;
    QMenuBar* bar = window->menuBar();
    createFileAndEditMenus(bar, a);
    createToolsMenu(bar, a);
    createSettingsAndHelpMenus(bar, a);
    addLanguageMenu(a.settingsMenu, prompter);
    createFunctionPopup(window, a);

    a.saveAs->setShortcut(QKeySequence::Save);
    a.print->setShortcut(QKeySequence::Print);
    a.copy->setShortcut(QKeySequence::Copy);
    a.exit->setShortcut(QKeySequence::Quit);
    a.newDrawing->setShortcut(QKeySequence::New);
    a.helpContents->setShortcut(QKeySequence::HelpContents);
    installContextHelp(); // F1 on a control, here and in the dialogs, opens its topic
    a.zoomIn->setShortcut(QKeySequence::ZoomIn);
    a.zoomOutStep->setShortcut(QKeySequence::ZoomOut);
    a.zoomToStart->setShortcut(Qt::CTRL | Qt::Key_0);
    return a;
}

} // namespace curvix::app
