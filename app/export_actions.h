#pragma once

#include "model/app_state.h"
#include "model/prompter.h"
#include "output/vector_picture.h"
#include "output/export_picture.h"
#include "plot/render.h"

#include <QObject>

#include <QTemporaryDir>

#include <functional>
#include <memory>

class QAction;
class QMenu;
class QMimeData;
class QPrinter;
class QWidget;

namespace curvix::app {

class PlotView;

// The ways the picture leaves the program: the clipboard, the printer, a file and a drag.
// Each takes the plot as the last redraw left it with the labels burnt in, recording the
// screen's resolution (96 dpi times its scaling); the plot is drawn again afterwards.
// Export draws the plot afresh at the size and resolution the user chooses.
class ExportActions : public QObject {
    Q_OBJECT
public:
    using OptionsSource = std::function<plot::RedrawOptions()>;
    ExportActions(const model::AppState& state, model::Prompter& prompter, PlotView& view,
                  OptionsSource options, QWidget* window);

    // The picture and its SVG onto the clipboard.
    // Puts File › Export before the given command of the menu.
    void addToMenu(QMenu* fileMenu, QAction* before);

    void copy();
    // Prints the picture as text and shapes, after the printer dialog.
    void print();
    // The printout in a preview window, from which it can be printed.
    void printPreview();
    // File › Export: the export dialog, then the file name; false when cancelled or not
    // written.
    bool exportPicture();
    // Writes the plot drawn afresh at the options' size, resolution, background and line
    // width into a file of the type its ending names; false, with a message naming the
    // file and the reason, when it cannot be written.
    bool exportTo(const QString& fileName, const output::ExportOptions& options);
    // The picture into a file of the type its ending names (a bitmap without one); false,
    // with a message naming the file and the reason, when it cannot be written.
    bool savePicture(const QString& fileName);
    // The picture as drag data: the image, and a PNG file of it in a folder of its own
    // (kept until the next drag) for file managers and desktops.
    QMimeData* dragData();
    // A left-button press on the plot that no tool claims: only a copy leaves the program.
    void startDrag();

private:
    output::VectorScene sceneFor(const QImage& picture, const plot::RedrawOptions& options) const;
    void paintPrintout(QPrinter& printer);
    // Shows a failed export's reason and tells whether it failed.
    bool failed(bool ok, const QString& reason);
    // The screen picture with the labels and its resolution; endCapture() follows.
    QImage screenPicture(const plot::RedrawOptions& options);

    const model::AppState& m_state;
    model::Prompter& m_prompter;
    PlotView& m_view;
    OptionsSource m_options;
    QWidget* m_window;
    std::unique_ptr<QTemporaryDir> m_dragFolder;
    // The type of the last export, offered first by the next.
    QString m_exportType = QStringLiteral("PNG (*.png)");
};

} // namespace curvix::app
