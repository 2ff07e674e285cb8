#pragma once

#include "model/app_state.h"
#include "model/drawing.h"
#include "plot/render.h"

#include <QFont>
#include <QIODevice>
#include <QPainter>
#include <QPointF>
#include <QSizeF>
#include <QString>

#include <vector>

namespace curvix::output {

// A text lying over the plot, its top-left corner in the plot's logical pixels.
struct LabelText {
    QString text;
    QPointF at;
};
// A typeset formula lying over the plot: what was typed, the label in front ("f(x)", or
// empty), and the top-left corner of its picture.
struct LabelFormula {
    QString formula;
    QString label;
    QPointF at;
};

// The labels over the plot as data, so that media keeping text write them as text.
struct PictureLabels {
    std::vector<LabelText> texts;
    std::vector<LabelFormula> formulas;
    QFont font;
};

// A drawing's text labels, point labels and formula pictures on a plot of a view and
// logical size, each with its top-left corner at its world position; labels far outside
// the plot are left out.
PictureLabels drawingLabels(const model::Drawing& drawing, const model::ViewWindow& view,
                            QSizeF logical, const QFont& font);

// Everything a picture shows: the sampled state, the window's switches, the labels, and
// the device pixels per logical pixel at which the fills are found (the screen's), so that
// a fill stops where it stops on the screen.
struct VectorScene {
    const model::AppState& state;
    plot::RedrawOptions options;
    PictureLabels labels;
    qreal fillRatio = 1;
};

enum class VectorFormat { Pdf, Svg };

// Paints the whole picture at a logical size onto any painter as text and shapes: the
// background (none when transparent), the plot, the fills as pictures clipped to their
// regions, the read-outs, the label texts and the formulas. A device of another
// resolution than 96 dpi (a printer) takes the painter's scale for the logical size.
void paintVectorPicture(QPainter& painter, QSizeF logical, const VectorScene& scene);

// Where a printout puts a picture of a logical size, in the printer's pixels from the
// corner of the printable area: its corner 100 twips in, at the size it has on the screen,
// scaled down (keeping its shape) when it would not fit the printable area.
QRectF printoutRect(QSizeF logical, QSizeF printable, double printerDpi, double screenDpi);

// Paints the picture as a printout on a painter in a printer's pixels (the printable area's
// corner at 0, 0), placed by printoutRect.
void paintPrintout(QPainter& painter, QSizeF printable, double printerDpi, double screenDpi,
                   QSizeF logical, const VectorScene& scene);

// The picture as a PDF page of its size at 96 pixels to the inch, or an SVG drawing of
// its logical size, written to an open device; false with a message when it cannot be.
bool writeVectorPicture(QIODevice& device, VectorFormat format, QSizeF logical,
                        const VectorScene& scene, QString* error);

} // namespace curvix::output
