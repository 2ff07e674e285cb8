#include "output/picture_file.h"

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
                   const plot::RedrawOptions& options, const QString& fileName, QString* error,
                   const PictureLabels& labels)
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
        const bool pdf = suffix == QLatin1String("pdf");
        if (!writeVector(state, picture, options, labels, file, pdf, error)) {
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

} // namespace curvix::output
