#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>

namespace curvix::plot {

// A fill's region found on a mask: every pixel connected to the seed (sideways and up or
// down) that has the mask's open colour. The fill colour goes into the picture (same size)
// where the mask was reached; the mask is left as it was, ready for the next fill. A seed
// outside the mask or on a closed pixel paints nothing. The mask is opaque.
void FloodFillFromMask(QImage& mask, QImage& picture, QPoint seed, const QColor& fill,
                       const QColor& open);

} // namespace curvix::plot
