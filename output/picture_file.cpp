#include "output/picture_file.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>
#include <QStandardPaths>

namespace curvix::output {

QString graphsFolder(const QString& folderName)
{
    QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty())
        documents = QDir::homePath();
    const QString folder = QDir(documents).filePath(folderName);
    QDir().mkpath(folder);
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
    return QStringLiteral("Bitmap %1;;PNG (*.png)").arg(bmp);
}

bool writePicture(const QImage& image, const QString& fileName, QString* error)
{
    QString target = fileName;
    QString suffix = QFileInfo(target).suffix().toLower();
    if (suffix.isEmpty()) {
        target += QStringLiteral(".bmp");
        suffix = QStringLiteral("bmp");
    }
    const QByteArray format = suffix == QLatin1String("png") ? "png" : "bmp";

    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    QImageWriter writer(&file, format);
    // A device-independent bitmap has no alpha; PNG keeps every pixel exactly.
    const QImage picture = format == "bmp" ? image.convertToFormat(QImage::Format_RGB32) : image;
    if (!writer.write(picture)) {
        if (error)
            *error = writer.errorString();
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

} // namespace curvix::output
