#include "output/picture_file.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QStandardPaths>
#include <QSvgGenerator>

namespace curvix::output {

namespace {

// The size of one pixel of the screen for vector media.
constexpr double kScreenDpi = 96;

bool fail(QString* error, const QString& message)
{
    if (error)
        *error = message;
    return false;
}

// What the picture holds beyond the plain plot: fills and burnt-in labels, on a clear
// background, for laying over a vector drawing.
QImage overlayOf(const model::AppState& state, const QImage& picture, const plot::RedrawOptions& options)
{
    QImage plain(picture.size(), QImage::Format_ARGB32_Premultiplied);
    plain.setDevicePixelRatio(picture.devicePixelRatio());
    plain.fill(options.background);
    {
        QPainter painter(&plain);
        plot::paintPlot(state, painter, plain.deviceIndependentSize(), &plain, options);
    }
    const QImage drawn = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage overlay(picture.size(), QImage::Format_ARGB32_Premultiplied);
    overlay.setDevicePixelRatio(picture.devicePixelRatio());
    overlay.fill(Qt::transparent);
    bool any = false;
    for (int y = 0; y < drawn.height(); ++y) {
        const auto* a = reinterpret_cast<const QRgb*>(drawn.constScanLine(y));
        const auto* b = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
        auto* out = reinterpret_cast<QRgb*>(overlay.scanLine(y));
        for (int x = 0; x < drawn.width(); ++x) {
            if (a[x] != b[x]) {
                out[x] = a[x];
                any = true;
            }
        }
    }
    return any ? overlay : QImage();
}

void paintVector(const model::AppState& state, const QImage& picture, const plot::RedrawOptions& options,
                 QPainter& painter, QSizeF logical)
{
    const QImage overlay = overlayOf(state, picture, options);
    painter.fillRect(QRectF(QPointF(0, 0), logical), options.background);
    plot::paintPlot(state, painter, logical, nullptr, options);
    if (!overlay.isNull())
        painter.drawImage(QRectF(QPointF(0, 0), logical), overlay);
}

bool paintOn(QPaintDevice& device, const model::AppState& state, const QImage& picture,
             const plot::RedrawOptions& options, QString* error)
{
    QPainter painter;
    if (!painter.begin(&device))
        return fail(error, QStringLiteral("The file could not be started."));
    paintVector(state, picture, options, painter, picture.deviceIndependentSize());
    return true;
}

bool writeVector(const model::AppState& state, const QImage& picture, const plot::RedrawOptions& options,
                 QSaveFile& file, bool pdf, QString* error)
{
    const QSizeF logical = picture.deviceIndependentSize();
    if (pdf) {
        QPdfWriter writer(&file);
        writer.setResolution(int(kScreenDpi));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setPageSize(QPageSize(logical * 72.0 / kScreenDpi, QPageSize::Point, QString(),
                                     QPageSize::ExactMatch));
        writer.setCreator(QStringLiteral("Curvix"));
        return paintOn(writer, state, picture, options, error);
    }
    QSvgGenerator svg;
    svg.setOutputDevice(&file);
    svg.setSize(logical.toSize());
    svg.setViewBox(QRectF(QPointF(0, 0), logical));
    svg.setResolution(int(kScreenDpi));
    svg.setTitle(QStringLiteral("Curvix"));
    return paintOn(svg, state, picture, options, error);
}

} // namespace

QString graphsFolder(const QString& folderName)
{
    QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty())
        documents = QDir::homePath();
    QString folder = QDir(documents).filePath(folderName);
    if (!QDir().mkpath(folder))
        return {};
    return folder;
}

QString saveFilter(const QString& tableFilter)
{
    // "(*.bmp)|*.bmp" pairs a description with its pattern; Qt reads the pattern from the
    // parentheses of the description.
    const QStringList parts = tableFilter.split(QLatin1Char('|'));
    QString bmp = parts.value(0);
    if (!bmp.contains(QLatin1Char('(')))
        bmp = QStringLiteral("(%1)").arg(parts.value(1, QStringLiteral("*.bmp")));
    return QStringLiteral("Bitmap %1;;PNG (*.png);;PDF (*.pdf);;SVG (*.svg)").arg(bmp);
}

bool writePlotFile(const model::AppState& state, const QImage& picture,
                   const plot::RedrawOptions& options, const QString& fileName, QString* error)
{
    QString target = fileName;
    QString suffix = QFileInfo(target).suffix().toLower();
    if (suffix.isEmpty()) {
        target += QStringLiteral(".bmp");
        suffix = QStringLiteral("bmp");
    }
    const bool vector = suffix == QLatin1String("pdf") || suffix == QLatin1String("svg");
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        return fail(error, file.errorString());
    if (vector) {
        if (!writeVector(state, picture, options, file, suffix == QLatin1String("pdf"), error)) {
            file.cancelWriting();
            return false;
        }
    } else {
        const QByteArray format = suffix == QLatin1String("png") ? "png" : "bmp";
        QImageWriter writer(&file, format);
        // A device-independent bitmap has no alpha; PNG keeps every pixel exactly.
        QImage image = format == "bmp" ? picture.convertToFormat(QImage::Format_RGB32) : picture;
        // The picture is in device pixels: at ratio 2 it has 192 of them to the screen's inch,
        // so that it prints and is placed in a document at the size it had on screen.
        const int dotsPerMeter = qRound(kScreenDpi * picture.devicePixelRatio() / 0.0254);
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        if (!writer.write(image)) {
            file.cancelWriting();
            return fail(error, writer.errorString());
        }
    }
    if (!file.commit())
        return fail(error, file.errorString());
    return true;
}

QRectF printRect(QSizeF pictureLogicalSize, double printerDpi, double screenDpi)
{
    const double inset = 100.0 / 1440.0 * printerDpi;
    const double scale = screenDpi > 0 ? printerDpi / screenDpi : 1;
    return {QPointF(inset, inset), pictureLogicalSize * scale};
}

} // namespace curvix::output
