#include "plot/flood_fill.h"

#include <algorithm>
#include <vector>

namespace curvix::plot {

namespace {

// The mask is opaque everywhere, so a fully transparent pixel can mark what the fill has
// reached: none is visited twice, without a second mask beside the first.
constexpr QRgb kReached = 0x00000000;

// Span filling: each entry is a span of row y - dy that is filled; row y next to it is
// explored, and only the parts of the parent row that stick out are looked at again.
class SpanFill {
public:
    SpanFill(QImage& mask, QRgb open)
        // One detach, then raw rows: scanLine() on a non-const image checks for sharing
        // each call.
        : m_base(reinterpret_cast<QRgb*>(mask.bits())),
          m_stride(mask.bytesPerLine() / qsizetype(sizeof(QRgb))), m_width(mask.width()),
          m_height(mask.height()), m_open(open), m_firstX(std::size_t(m_height), m_width),
          m_lastX(std::size_t(m_height), -1)
    {
    }

    bool open(QPoint at) const { return open(m_base[at.y() * m_stride + at.x()]); }

    void run(QPoint seed)
    {
        m_top = m_bottom = seed.y();
        push(seed.y(), seed.x(), seed.x(), 1);
        push(seed.y() + 1, seed.x(), seed.x(), -1);
        while (!m_stack.empty()) {
            const Span span = m_stack.back();
            m_stack.pop_back();
            fillRow(span);
        }
    }

    // Paints the reached pixels into another picture of the same size and opens them again,
    // so that the same mask serves the next fill.
    void paintReachedInto(QImage& target, QRgb paint)
    {
        auto* targetBase = reinterpret_cast<QRgb*>(target.bits());
        const qsizetype targetStride = target.bytesPerLine() / qsizetype(sizeof(QRgb));
        for (int y = m_top; y <= m_bottom; ++y) {
            QRgb* line = m_base + y * m_stride;
            QRgb* into = targetBase + y * targetStride;
            for (int x = m_firstX[std::size_t(y)]; x <= m_lastX[std::size_t(y)]; ++x) {
                if (line[x] == kReached) {
                    line[x] = m_open;
                    into[x] = paint;
                }
            }
        }
    }

private:
    struct Span {
        int y, left, right, dy;
    };

    bool open(QRgb pixel) const
    {
        return pixel == m_open;
    }

    void push(int y, int left, int right, int dy)
    {
        if (y + dy >= 0 && y + dy < m_height)
            m_stack.push_back({y, left, right, dy});
    }

    void reached(int y, int from, int to)
    {
        m_top = std::min(m_top, y);
        m_bottom = std::max(m_bottom, y);
        m_firstX[std::size_t(y)] = std::min(m_firstX[std::size_t(y)], from);
        m_lastX[std::size_t(y)] = std::max(m_lastX[std::size_t(y)], to);
    }

    // The next open pixel of the line after x, within the span; past x2 when none.
    int nextOpen(const QRgb* line, int x, int x2) const
    {
        for (++x; x <= x2 && !open(line[x]); ++x) {
        }
        return x;
    }

    void fillRow(const Span& span)
    {
        const int dy = span.dy;
        const int y = span.y + dy;
        const int x1 = span.left;
        const int x2 = span.right;
        QRgb* line = m_base + y * m_stride;
        int x = x1;
        while (x >= 0 && open(line[x]))
            line[x--] = kReached;
        int left;
        if (x < x1) {
            left = x + 1;
            reached(y, left, x1);
            if (left < x1)
                push(y, left, x1 - 1, -dy); // leaks round the left end
            x = x1 + 1;
        } else {
            // The first pixel was closed: look for the next open one under the span.
            x = left = nextOpen(line, x, x2);
            if (x > x2)
                return;
        }
        for (;;) {
            const int from = x;
            while (x < m_width && open(line[x]))
                line[x++] = kReached;
            reached(y, from, x - 1);
            push(y, left, x - 1, dy);
            if (x > x2 + 1)
                push(y, x2 + 1, x - 1, -dy); // leaks round the right end
            x = left = nextOpen(line, x, x2);
            if (x > x2)
                return;
        }
    }

    QRgb* const m_base;
    const qsizetype m_stride;
    const int m_width;
    const int m_height;
    const QRgb m_open;
    std::vector<Span> m_stack;
    std::vector<int> m_firstX;
    std::vector<int> m_lastX;
    int m_top = 0;
    int m_bottom = 0;
};

} // namespace

void FloodFillFromMask(QImage& mask, QImage& picture, QPoint seed, const QColor& fill,
                       const QColor& open)
{
    if (mask.size() != picture.size() || !mask.rect().contains(seed))
        return;
    if (picture.format() != QImage::Format_ARGB32_Premultiplied)
        picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (mask.format() != QImage::Format_ARGB32_Premultiplied)
        mask = mask.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    SpanFill span(mask, qPremultiply(open.rgba()));
    if (!span.open(seed))
        return;
    span.run(seed);
    span.paintReachedInto(picture, qPremultiply(fill.rgba()));
}

} // namespace curvix::plot
