#include "app/export_actions.h"

#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "model/strings.h"
#include "output/picture_file.h"
#include "output/vector_picture.h"

#include <QBuffer>
#include <QClipboard>
#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <QPrintPreviewDialog>
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
    const plot::RedrawOptions options = m_options();
    const QImage picture = m_view.capturePicture(options);
    auto* data = new QMimeData;
    data->setImageData(picture);
    // Drawing and word-processing programs take the SVG as shapes they can scale.
    QBuffer svg;
    svg.open(QIODevice::WriteOnly);
    if (output::writeVectorPicture(svg, output::VectorFormat::Svg, picture.deviceIndependentSize(),
                                   sceneFor(picture, options), nullptr))
        data->setData(QStringLiteral("image/svg+xml"), svg.data());
    clipboard->clear();
    clipboard->setMimeData(data);
    m_view.endCapture();
}

output::VectorScene ExportActions::sceneFor(const QImage& picture,
                                            const plot::RedrawOptions& options) const
{
    return {m_state, options, m_view.pictureLabels(), picture.devicePixelRatio()};
}

void ExportActions::paintPrintout(QPrinter& printer)
{
    const plot::RedrawOptions options = m_options();
    const QImage picture = m_view.capturePicture(options);
    QPainter painter;
    if (!failed(painter.begin(&printer), LoadResString(2051))) {
        output::paintPrintout(painter, QSizeF(printer.width(), printer.height()),
                              printer.resolution(), m_view.plot()->logicalDpiX(),
                              picture.deviceIndependentSize(), sceneFor(picture, options));
        painter.end();
    }
    m_view.endCapture();
}

void ExportActions::print()
{
    QPrinter printer;
    if (m_prompter.printerSetup(printer))
        paintPrintout(printer);
}

void ExportActions::printPreview()
{
    QPrinter printer;
    QPrintPreviewDialog dialog(&printer, m_window);
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this,
            [this](QPrinter* target) { paintPrintout(*target); });
    dialog.exec();
}

bool ExportActions::savePicture(const QString& fileName)
{
    const plot::RedrawOptions options = m_options();
    const QImage picture = m_view.capturePicture(options);
    QString error;
    const bool saved =
        !failed(output::writePlotFile(m_state, picture, options, fileName, &error,
                                      m_view.pictureLabels()),
                error);
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
