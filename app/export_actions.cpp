#include "app/export_actions.h"

#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "model/strings.h"
#include "output/picture_file.h"

#include <QClipboard>
#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <QPrinter>

namespace curvix::app {

using model::LoadResString;

ExportActions::ExportActions(const model::AppState& state, model::Prompter& prompter,
                             PlotView& view, OptionsSource options, QWidget* window)
    : QObject(window), m_state(state), m_prompter(prompter), m_view(view),
      m_options(std::move(options)), m_window(window)
{
}

bool ExportActions::failed(bool ok, const QString& reason)
{
    if (!ok)
        m_prompter.message(reason);
    return !ok;
}

void ExportActions::copy()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (failed(clipboard != nullptr, LoadResString(2050)))
        return;
    clipboard->clear();
    clipboard->setImage(m_view.capturePicture(m_options()));
    m_view.endCapture();
}

void ExportActions::print()
{
    QPrinter printer;
    if (m_prompter.printerSetup(printer)) {
        const QImage picture = m_view.capturePicture(m_options());
        QPainter painter;
        if (!failed(painter.begin(&printer), LoadResString(2051))) {
            painter.drawImage(output::printRect(picture.deviceIndependentSize(), printer.resolution(),
                                                m_view.plot()->logicalDpiX()),
                              picture);
            painter.end();
        }
        m_view.endCapture();
    }
}

bool ExportActions::savePicture(const QString& fileName)
{
    const plot::RedrawOptions options = m_options();
    const QImage picture = m_view.capturePicture(options);
    QString error;
    const bool saved =
        !failed(output::writePlotFile(m_state, picture, options, fileName, &error), error);
    m_view.endCapture();
    return saved;
}

QMimeData* ExportActions::dragData()
{
    auto* data = new QMimeData;
    data->setImageData(m_view.capturePicture(m_options()));
    m_view.endCapture();
    return data;
}

void ExportActions::startDrag()
{
    auto* drag = new QDrag(m_window);
    drag->setMimeData(dragData());
    const QImage& picture = m_view.plot()->image();
    drag->setPixmap(QPixmap::fromImage(picture.scaledToWidth(std::min(160, picture.width()),
                                                             Qt::SmoothTransformation)));
    drag->exec(Qt::CopyAction);
}

} // namespace curvix::app
