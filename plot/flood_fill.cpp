#include "plot/flood_fill.h"

#include <vector>

namespace curvix::plot {

void FloodFill(QImage& picture, QPoint seed, const QColor& fill, const QColor& boundary)
{
    if (picture.format() != QImage::Format_ARGB32_Premultiplied &&
        picture.format() != QImage::Format_RGB32 && picture.format() != QImage::Format_ARGB32)
        picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int width = picture.width();
    const int height = picture.height();
    if (!QRect(0, 0, width, height).contains(seed))
        return;
    const QRgb wall = boundary.rgba();
    const QRgb paint = qPremultiply(fill.rgba());
    auto row = [&](int y) { return reinterpret_cast<QRgb*>(picture.scanLine(y)); };
    if (row(seed.y())[seed.x()] == wall)
        return;

    // A pixel is done once painted; the mark keeps pixels that already had the fill colour
    // from stopping the spread.
    std::vector<bool> done(std::size_t(width) * std::size_t(height), false);
    auto open = [&](int x, int y) {
        return !done[std::size_t(y) * width + x] && row(y)[x] != wall;
    };
    std::vector<QPoint> stack{seed};
    while (!stack.empty()) {
        const QPoint p = stack.back();
        stack.pop_back();
        const int y = p.y();
        if (!open(p.x(), y))
            continue;
        int left = p.x();
        while (left > 0 && open(left - 1, y))
            --left;
        int right = p.x();
        while (right + 1 < width && open(right + 1, y))
            ++right;
        QRgb* line = row(y);
        for (int x = left; x <= right; ++x) {
            line[x] = paint;
            done[std::size_t(y) * width + x] = true;
        }
        // Seed one point per open run in the rows above and below.
        for (int ny : {y - 1, y + 1}) {
            if (ny < 0 || ny >= height)
                continue;
            bool inRun = false;
            for (int x = left; x <= right; ++x) {
                const bool o = open(x, ny);
                if (o && !inRun)
                    stack.emplace_back(x, ny);
                inRun = o;
            }
        }
    }
}

} // namespace curvix::plot
