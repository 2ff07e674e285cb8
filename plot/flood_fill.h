#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>

namespace curvix::plot {

// Paints every pixel connected to the seed (sideways and up or down) that is not of the
// boundary colour. A seed outside the picture or on the boundary paints nothing. The picture
// is opaque, as the plot's always is.
void FloodFill(QImage& picture, QPoint seed, const QColor& fill, const QColor& boundary);

} // namespace curvix::plot
