#include "output/picture_file.h"

#include "output/export_picture.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>
#include <QStandardPaths>

namespace curvix::output {

namespace {

bool fail(QString* error, const QString& message)
{
    if (error)
        *error = message;
    return false;
}

bool writeVector(const model::AppState& state, const QImage& picture, const plot::RedrawOptions& options,
                 const PictureLabels& labels, QSaveFile& file, bool pdf, QString* error)
{
    // The picture gives the size and the screen's ratio; its pixels, labels burnt in, are
    // painted again as text and shapes.
    const VectorScene scene{state, options, labels, picture.devicePixelRatio()};
    return writeVectorPicture(file, pdf ? VectorFormat::Pdf : VectorFormat::Svg,
                              picture.deviceIndependentSize(), scene, error);
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
                   const plot::RedrawOptions& options, const QString& fileName, QString* error,
                   const PictureLabels& labels)
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
        if (!writeVector(state, picture, options, labels, file, *type == PictureType::Pdf, error)) {
            file.cancelWriting();
            return false;
        }
    } else {
        // The picture is in device pixels: at ratio 2 it has 192 of them to the screen's inch,
        // so that it prints and is placed in a document at the size it had on screen.
        QImage raster = picture;
        setResolution(raster, kScreenDpi * picture.devicePixelRatio());
        if (!writeRaster(raster, *type, file, error)) {
            file.cancelWriting();
            return false;
        }
    }
    if (!file.commit())
        return fail(error, file.errorString());
    return true;
}

} // namespace curvix::output
