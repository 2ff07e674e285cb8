#pragma once

#include "model/app_state.h"
#include "output/vector_picture.h"
#include "plot/render.h"

#include <QImage>
#include <QString>

#include <optional>

namespace curvix::output {

// The kinds of picture file the program writes, each known by its ending.
enum class PictureType { Bmp, Png, Jpeg, Pdf, Svg };

// The type a file name's ending names, in any case (.jpg and .jpeg are both JPEG); none for
// another ending or none at all.
std::optional<PictureType> pictureTypeOf(const QString& fileName);
// PNG and SVG keep a transparent background; the other types are painted on white.
bool keepsTransparency(PictureType type);

// The folder for saved pictures, inside the user's documents folder; created when missing.
// Empty when it cannot be made.
QString graphsFolder(const QString& folderName);
// The save dialog's filter: the table's "description|pattern" filter, then PNG, JPEG, PDF, SVG.
QString saveFilter(const QString& tableFilter);

// Writes the plot to a file chosen by its ending: .bmp as a device-independent bitmap, .png
// losslessly, .jpg and .jpeg as JPEG on white (the picture as it is, labels burnt in), .pdf
// and .svg as vector drawings of the same plot painted again from the sampled state, with
// the labels as text; a name without an ending gets .bmp, and another ending is refused.
// Raster files record the picture's resolution (its dots per metre). The file appears only
// when it was written whole; false with the reason if not.
bool writePlotFile(const model::AppState& state, const QImage& picture,
                   const plot::RedrawOptions& options, const QString& fileName, QString* error,
                   const PictureLabels& labels);

} // namespace curvix::output
