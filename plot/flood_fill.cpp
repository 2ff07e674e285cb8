#include "plot/flood_fill.h"

#include <algorithm>
#include <vector>

namespace curvix::plot {

namespace {

// The plot's picture is opaque everywhere, so a fully transparent pixel can mark what the
// fill has reached: pixels that already had the fill colour do not stop the spread, and
// none is visited twice, without a mask beside the picture.
constexpr QRgb kReached = 0x00000000;

} // namespace

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
    // One detach, then raw rows: scanLine() on a non-const image checks for sharing each call.
    QRgb* const base = reinterpret_cast<QRgb*>(picture.bits());
    const qsizetype stride = picture.bytesPerLine() / qsizetype(sizeof(QRgb));
    auto open = [wall](QRgb pixel) { return pixel != wall && pixel != kReached; };
    if (!open(base[seed.y() * stride + seed.x()]))
        return;

    // Span filling: each entry is a span of row y - dy that is filled; row y next to it is
    // explored, and only the parts of the parent row that stick out are looked at again.
    struct Span {
        int y, left, right, dy;
    };
    std::vector<Span> stack;
    auto push = [&](int y, int left, int right, int dy) {
        if (y + dy >= 0 && y + dy < height)
            stack.push_back({y, left, right, dy});
    };
    // The reached part of each row, so that only it is recoloured at the end: a pass over
    // the whole picture costs as much as the fill itself.
    std::vector<int> firstX(std::size_t(height), width);
    std::vector<int> lastX(std::size_t(height), -1);
    auto reached = [&](int y, int from, int to) {
        firstX[std::size_t(y)] = std::min(firstX[std::size_t(y)], from);
        lastX[std::size_t(y)] = std::max(lastX[std::size_t(y)], to);
    };
    int top = seed.y();
    int bottom = seed.y();
    push(seed.y(), seed.x(), seed.x(), 1);
    push(seed.y() + 1, seed.x(), seed.x(), -1);
    while (!stack.empty()) {
        const Span span = stack.back();
        stack.pop_back();
        const int dy = span.dy;
        const int y = span.y + dy;
        const int x1 = span.left;
        const int x2 = span.right;
        QRgb* line = base + y * stride;
        int x = x1;
        while (x >= 0 && open(line[x]))
            line[x--] = kReached;
        int left;
        if (x < x1) {
            top = std::min(top, y);
            bottom = std::max(bottom, y);
            left = x + 1;
            reached(y, left, x1);
            if (left < x1)
                push(y, left, x1 - 1, -dy); // leaks round the left end
            x = x1 + 1;
        } else {
            // The first pixel was closed: look for the next open one under the span.
            for (++x; x <= x2 && !open(line[x]); ++x) {
            }
            left = x;
            if (x > x2)
                continue;
        }
        for (;;) {
            const int from = x;
            while (x < width && open(line[x]))
                line[x++] = kReached;
            top = std::min(top, y);
            bottom = std::max(bottom, y);
            reached(y, from, x - 1);
            push(y, left, x - 1, dy);
            if (x > x2 + 1)
                push(y, x2 + 1, x - 1, -dy); // leaks round the right end
            for (++x; x <= x2 && !open(line[x]); ++x) {
            }
            left = x;
            if (x > x2)
                break;
        }
    }
    for (int y = top; y <= bottom; ++y) {
        QRgb* line = base + y * stride;
        if (firstX[std::size_t(y)] <= lastX[std::size_t(y)])
            std::replace(line + firstX[std::size_t(y)], line + lastX[std::size_t(y)] + 1, kReached, paint);
    }
}

} // namespace curvix::plot
