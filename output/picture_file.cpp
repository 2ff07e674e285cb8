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

// A device-independent bitmap and JPEG have no alpha: they get the picture over white. PNG
// keeps every pixel exactly. Each keeps the picture's dots per metre.
bool writeRaster(const QImage& picture, PictureType type, QIODevice& file, QString* error)
{
    QImage image = picture;
    if (type != PictureType::Png) {
        QImage source = picture;
        source.setDevicePixelRatio(1); // pixel for pixel
        image = QImage(picture.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.drawImage(0, 0, source);
        painter.end();
        image.setDotsPerMeterX(picture.dotsPerMeterX());
        image.setDotsPerMeterY(picture.dotsPerMeterY());
    }
    QImageWriter writer(&file, type == PictureType::Png ? "png" : type == PictureType::Jpeg ? "jpeg" : "bmp");
    if (type == PictureType::Jpeg)
        writer.setQuality(92);
    if (!writer.write(image))
        return fail(error, writer.errorString());
    return true;
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
    return QStringLiteral("Bitmap %1;;PNG (*.png);;JPEG (*.jpg *.jpeg);;PDF (*.pdf);;SVG (*.svg)").arg(bmp);
}

std::optional<PictureType> pictureTypeOf(const QString& fileName)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (suffix == QLatin1String("bmp"))
        return PictureType::Bmp;
    if (suffix == QLatin1String("png"))
        return PictureType::Png;
    if (suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg"))
        return PictureType::Jpeg;
    if (suffix == QLatin1String("pdf"))
        return PictureType::Pdf;
    if (suffix == QLatin1String("svg"))
        return PictureType::Svg;
    return std::nullopt;
}

bool keepsTransparency(PictureType type)
{
    return type == PictureType::Png || type == PictureType::Svg;
}

bool writePlotFile(const model::AppState& state, const QImage& picture,
                   const plot::RedrawOptions& options, const QString& fileName, QString* error)
{
    QString target = fileName;
    if (QFileInfo(target).suffix().isEmpty())
        target += QStringLiteral(".bmp");
    const std::optional<PictureType> type = pictureTypeOf(target);
    if (!type)
        return fail(error, QStringLiteral("the ending .%1 names no picture type (.bmp, .png, .jpg, .pdf, .svg)")
                               .arg(QFileInfo(target).suffix()));
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        return fail(error, file.errorString());
    if (*type == PictureType::Pdf || *type == PictureType::Svg) {
        if (!writeVector(state, picture, options, file, *type == PictureType::Pdf, error)) {
            file.cancelWriting();
            return false;
        }
    } else if (!writeRaster(picture, *type, file, error)) {
        file.cancelWriting();
        return false;
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
