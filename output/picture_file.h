#pragma once

#include <QImage>
#include <QString>

namespace curvix::output {

// The folder for saved pictures, inside the user's documents folder; created when missing.
QString graphsFolder(const QString& folderName);
// The save dialog's filter: the table's "description|pattern" filter, then PNG.
QString saveFilter(const QString& tableFilter);
// Writes the picture as BMP, or as PNG when the name ends in .png (a name without a suffix
// gets .bmp). The file appears only when it was written whole; false with a message if not.
bool writePicture(const QImage& image, const QString& fileName, QString* error);

} // namespace curvix::output
