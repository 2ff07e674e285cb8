#include "app/export_actions.h"

#include "app/export_dialog.h"
#include "app/plot_labels.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "model/strings.h"
#include "output/picture_file.h"
#include "output/save_name.h"
#include "output/vector_picture.h"

#include <QAction>
#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QDrag>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QUrl>

namespace curvix::app {

using model::LoadResString;

ExportActions::ExportActions(const model::AppState& state, model::Prompter& prompter,
                             PlotView& view, OptionsSource options, QWidget* window)
    : QObject(window), m_state(state), m_prompter(prompter), m_view(view),
      m_options(std::move(options)), m_window(window)
{
}

void ExportActions::addToMenu(QMenu* fileMenu, QAction* before)
{
    auto* action = new QAction(LoadResString(2098), fileMenu);
    action->setObjectName(QStringLiteral("mnuexport"));
    fileMenu->insertAction(before, action);
    connect(action, &QAction::triggered, this, &ExportActions::exportPicture);
}

bool ExportActions::failed(bool ok, const QString& reason)
{
    if (!ok)
        m_prompter.message(reason);
    return !ok;
}

QImage ExportActions::screenPicture(const plot::RedrawOptions& options)
{
    QImage picture = m_view.capturePicture(options);
    output::setResolution(picture, output::kScreenDpi * picture.devicePixelRatio());
    return picture;
}

void ExportActions::copy()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (failed(clipboard != nullptr, LoadResString(2050)))
        return;
    const plot::RedrawOptions options = m_options();
    const QImage picture = screenPicture(options);
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
    const QImage picture = screenPicture(options);
    QString error;
    const bool written = output::writePlotFile(m_state, picture, options, fileName, &error,
                                               m_view.pictureLabels());
    m_view.endCapture();
    return !failed(written, LoadResString(2097).arg(QDir::toNativeSeparators(fileName), error));
}

bool ExportActions::exportPicture()
{
    ExportDialog dialog(m_window);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const output::ExportOptions options = dialog.options();
    const QString title = LoadResString(2110);
    const QString types = output::saveFilter(LoadResString(23));
    const QString fileName = output::askSaveName(m_prompter, title, output::graphsFolder(LoadResString(9)),
                                                 types, &m_exportType);
    return !fileName.isEmpty() && exportTo(fileName, options);
}

bool ExportActions::exportTo(const QString& fileName, const output::ExportOptions& exportOptions)
{
    const std::optional<output::PictureType> type = output::pictureTypeOf(fileName);
    const plot::RedrawOptions options =
        output::exportRedrawOptions(m_options(), exportOptions, type.value_or(output::PictureType::Bmp));
    model::Drawing labels;
    m_view.labels().writeInto(labels);
    const QImage picture =
        output::exportPicture(m_state, labels, m_view.labels().shownFont(), options, exportOptions.size);
    QString error;
    const bool written = output::writePlotFile(
        m_state, picture, options, fileName, &error,
        output::drawingLabels(labels, m_state.view, picture.deviceIndependentSize(),
                              m_view.labels().shownFont()));
    return !failed(written, LoadResString(2097).arg(QDir::toNativeSeparators(fileName), error));
}

QMimeData* ExportActions::dragData()
{
    auto* data = new QMimeData;
    const plot::RedrawOptions options = m_options();
    const QImage picture = screenPicture(options);
    m_view.endCapture();
    data->setImageData(picture);
    // A file manager takes a file, not an image: one in a folder of its own, which lives
    // until the next drag so that a slow drop target can still read it.
    m_dragFolder = std::make_unique<QTemporaryDir>();
    const QString file = m_dragFolder->filePath(LoadResString(2099) + QStringLiteral(".png"));
    if (m_dragFolder->isValid() &&
        output::writePlotFile(m_state, picture, options, file, nullptr, m_view.pictureLabels()))
        data->setUrls({QUrl::fromLocalFile(file)});
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
