#pragma once

#include "model/app_state.h"
#include "model/drawing.h"
#include "output/picture_file.h"
#include "plot/render.h"

#include <QFont>
#include <QImage>
#include <QSize>

namespace curvix::output {

// One pixel of the screen picture, and of a picture sized in pixels.
inline constexpr double kScreenDpi = 96;

enum class SizeUnit { Pixels, Centimetres };

// The size of an exported picture: pixels at the screen's 96 dpi, or centimetres at a
// resolution of their own. Either way the plot is laid out as on a screen of that size, so
// a printed picture looks like the window's, only sharper.
struct PictureSize {
    SizeUnit unit = SizeUnit::Pixels;
    double width = 800;
    double height = 600;
    int dpi = 300; // of a size in centimetres

    friend bool operator==(const PictureSize&, const PictureSize&) = default;
};

// What an export makes of the picture beyond the drawing.
struct ExportOptions {
    PictureSize size;
    bool transparent = false; // only for the types that keep transparency
    double lineWidth = 1.0;   // factor on the width of curves and axes

    friend bool operator==(const ExportOptions&, const ExportOptions&) = default;
};

// The largest side of a picture, in pixels, and the range of the resolution and line width.
inline constexpr int kMaxPixels = 20000;
inline constexpr int kMinDpi = 10;
inline constexpr int kMaxDpi = 2400;
inline constexpr double kMinLineWidth = 0.1;
inline constexpr double kMaxLineWidth = 10;

// The resolution the picture records, its size in pixels, and its size in the screen's pixels
// that the plot is laid out in.
double resolutionOf(const PictureSize& size);
QSize pixelSizeOf(const PictureSize& size);
QSizeF logicalSizeOf(const PictureSize& size);
// Whether the size makes a picture: at least a pixel, at most kMaxPixels a side, a
// resolution in range.
bool isPossible(const PictureSize& size);

// Records the resolution in the picture's dots per metre, which files and the clipboard
// pass on, so that it pastes and prints at its size. Set after painting: painting on the
// picture reads it for the size of text.
void setResolution(QImage& picture, double dpi);

// The window's redraw options for an export of the type: a transparent background only
// where the type keeps it, and the export's line width.
plot::RedrawOptions exportRedrawOptions(plot::RedrawOptions options, const ExportOptions& exportOptions,
                                        PictureType type);

// Paints the sampled state into a new picture of the size, with the drawing's labels burnt
// in at the label font, and records its resolution.
QImage exportPicture(const model::AppState& state, const model::Drawing& labels,
                     const QFont& labelFont, const plot::RedrawOptions& options,
                     const PictureSize& size);

} // namespace curvix::output
