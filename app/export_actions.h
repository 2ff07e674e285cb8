#pragma once

#include "model/app_state.h"
#include "model/prompter.h"
#include "output/vector_picture.h"
#include "plot/render.h"

#include <QObject>

#include <functional>

class QMimeData;
class QPrinter;
class QWidget;

namespace curvix::app {

class PlotView;

// The ways the picture leaves the program: the clipboard, the printer, a file and a drag.
// Each takes the plot as the last redraw left it with the labels burnt in; the plot is
// drawn again afterwards.
class ExportActions : public QObject {
    Q_OBJECT
public:
    using OptionsSource = std::function<plot::RedrawOptions()>;
    ExportActions(const model::AppState& state, model::Prompter& prompter, PlotView& view,
                  OptionsSource options, QWidget* window);

    // The picture and its SVG onto the clipboard.
    void copy();
    // Prints the picture as text and shapes, after the printer dialog.
    void print();
    // The printout in a preview window, from which it can be printed.
    void printPreview();
    // The picture into a file of the type its ending names (a bitmap without one); false,
    // with a message naming the file and the reason, when it cannot be written.
    bool savePicture(const QString& fileName);
    // The picture as drag data.
    QMimeData* dragData();
    // A left-button press on the plot that no tool claims: only a copy leaves the program.
    void startDrag();

private:
    output::VectorScene sceneFor(const QImage& picture, const plot::RedrawOptions& options) const;
    void paintPrintout(QPrinter& printer);
    // Shows a failed export's reason and tells whether it failed.
    bool failed(bool ok, const QString& reason);

    const model::AppState& m_state;
    model::Prompter& m_prompter;
    PlotView& m_view;
    OptionsSource m_options;
    QWidget* m_window;
};

} // namespace curvix::app
