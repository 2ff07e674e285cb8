// The main window's side of its drawing as a document: the drawing taken from the window
// and put back into it, and drawing files dropped on it.

#include "app/cli.h"
#include "app/document_actions.h"
#include "app/entry_panel.h"
#include "app/frmgraph.h"
#include "app/plot_labels.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "app/range_panel.h"
#include "model/drawing_file.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>

namespace curvix::app {

namespace {

// The drawing file among the dropped URLs, "" when none.
QString droppedDrawing(const QMimeData* data)
{
    for (const QUrl& url : data->urls()) {
        if (QString path = url.toLocalFile(); isDrawingFileName(path))
            return path;
    }
    return {};
}

} // namespace

model::Drawing frmgraph::captureDrawing() const
{
    model::Drawing drawing = model::drawingFromState(m_state);
    drawing.display = plot::displayOf(redrawOptions());
    drawing.display.fontSize = plotArea()->font().pointSize();
    m_plotView->labels().writeInto(drawing);
    return drawing;
}

bool frmgraph::showDrawing(const model::Drawing& drawing, QString* error)
{
    // The tools end first: they let go of what the state holds for them.
    stopTools();
    if (!model::applyDrawing(m_state, drawing, error))
        return false;
    m_ranges->showSaved(drawing.display, m_state.angleUnit, m_state.view);
    if (drawing.display.fontSize > 0) {
        QFont font = plotArea()->font();
        font.setPointSize(drawing.display.fontSize);
        plotArea()->setFont(font);
    }
    m_plotView->labels().showFrom(drawing);
    showFunctionItems();
    redraw();
    return true;
}

void frmgraph::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedDrawing(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void frmgraph::dropEvent(QDropEvent* event)
{
    const QString path = droppedDrawing(event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    m_document->openFile(path);
}

} // namespace curvix::app
