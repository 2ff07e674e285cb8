#pragma once

#include "model/app_state.h"
#include "output/vector_picture.h"
#include "plot/render.h"

#include <QImage>
#include <QString>

namespace curvix::output {

// The folder for saved pictures, inside the user's documents folder; created when missing.
// Empty when it cannot be made.
QString graphsFolder(const QString& folderName);
// The save dialog's filter: the table's "description|pattern" filter, then PNG, PDF, SVG.
QString saveFilter(const QString& tableFilter);

// Writes the plot to a file chosen by its ending: .bmp as a device-independent bitmap, .png
// losslessly (both the picture as it is, labels burnt in), .pdf and .svg as vector drawings
// of the same plot painted again from the sampled state, with the labels as text; a name
// without an ending gets .bmp. The file appears only when it was written whole; false with
// a message if not.
bool writePlotFile(const model::AppState& state, const QImage& picture,
                   const plot::RedrawOptions& options, const QString& fileName, QString* error,
                   const PictureLabels& labels);

} // namespace curvix::output
