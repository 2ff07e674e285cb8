#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>

namespace curvix::plot {

// Paints every pixel connected to the seed (sideways and up or down) that is not of the
// boundary colour. A seed outside the picture or on the boundary paints nothing. The picture
// is opaque, as the plot's always is.
void FloodFill(QImage& picture, QPoint seed, const QColor& fill, const QColor& boundary);

// The same region found on a mask: every pixel connected to the seed that has the mask's
// open colour. The fill colour goes into the picture (same size) where the mask was reached;
// the mask is left as it was, ready for the next fill.
void FloodFillFromMask(QImage& mask, QImage& picture, QPoint seed, const QColor& fill,
                       const QColor& open);

} // namespace curvix::plot
