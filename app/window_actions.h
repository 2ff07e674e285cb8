#pragma once

class QAction;
class QMainWindow;
class QMenu;

namespace curvix::model {
class Prompter;
}

namespace curvix::app {

// The main window's menus and their commands. The objectName of each is its form name
// (mnunew, mnupop1, ...), by which tests and accessibility find it.
struct WindowActions {
    QMenu* fileMenu = nullptr;
    QMenu* editMenu = nullptr;
    QMenu* zoomMenu = nullptr;
    QMenu* zoomOutMenu = nullptr;
    QMenu* toolsMenu = nullptr;
    QMenu* settingsMenu = nullptr;
    QMenu* colorMenu = nullptr;
    QMenu* helpMenu = nullptr;
    // A right-click near a curve: commands on that function.
    QMenu* functionPopup = nullptr;

    QAction* newDrawing = nullptr;
    QAction* saveAs = nullptr;
    QAction* print = nullptr;
    QAction* printPreview = nullptr;
    QAction* exit = nullptr;
    QAction* copy = nullptr;
    QAction* zoomIn = nullptr;
    QAction* zoomOutStep = nullptr;
    QAction* zoomToStart = nullptr;
    // Checked: one unit is as long on both axes.
    QAction* equalScale = nullptr;
    QAction* tangentMode = nullptr;
    QAction* trace = nullptr;
    QAction* derivative = nullptr;
    QAction* primitive = nullptr;
    QAction* deleteFunction = nullptr;
    QAction* fill = nullptr;
    QAction* verticalLines = nullptr;
    QAction* horizontalLines = nullptr;
    QAction* demonstration = nullptr;
    QAction* pointsOfInterest = nullptr; // also in the function popup
    QAction* valueTable = nullptr;
    QAction* popupDerivative = nullptr;
    QAction* popupPrimitive = nullptr;
    QAction* removeTangents = nullptr;
    QAction* popupDemonstration = nullptr;
    QAction* popupColor = nullptr;
    QAction* popupEdit = nullptr;
    QAction* gridColor = nullptr;
    QAction* axisColor = nullptr;
    QAction* functionColor = nullptr;
    QAction* windowColor = nullptr;
    QAction* fillColor = nullptr;
    QAction* fontSize = nullptr;
    QAction* autoColors = nullptr;
    QAction* smoothCurves = nullptr;
    QAction* settings = nullptr;
    QAction* helpContents = nullptr;
    QAction* helpSearch = nullptr;
    QAction* about = nullptr;
};

// Builds the menu bar of the window with captions from the string table and the standard
// shortcuts; every command has a letter of its own for the keyboard. The prompter tells that
// a new choice under Settings › Language waits for the next start.
WindowActions createWindowActions(QMainWindow* window, model::Prompter& prompter);

} // namespace curvix::app
