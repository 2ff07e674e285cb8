#pragma once

#include "model/app_state.h"
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
// losslessly, .jpg and .jpeg as JPEG on white, .pdf and .svg as vector drawings of the same plot (painted again from the
// sampled state, with the fills and whatever was burnt into the picture laid over it); a
// name without an ending gets .bmp, and another ending is refused. Raster files record the
// picture's resolution (its dots per metre). The file appears only when it was written
// whole; false with the reason if not.
bool writePlotFile(const model::AppState& state, const QImage& picture,
                   const plot::RedrawOptions& options, const QString& fileName, QString* error);

// Where a printout puts the picture, in the printer's pixels: its corner 100 twips in from
// the printable area's, at the size it has on the screen, never fitted to the page.
QRectF printRect(QSizeF pictureLogicalSize, double printerDpi, double screenDpi);

} // namespace curvix::output
