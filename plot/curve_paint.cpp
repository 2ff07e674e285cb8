#include "plot/surface.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace curvix::plot {

namespace {

// Puts single points straight into a picture's pixels, much faster than the painter; a
// point is a square of one logical pixel, so that curves keep their weight on dense screens.
void setPicturePixels(QImage& picture, const PlotScale& deviceScale,
                      const std::vector<eval::PointD>& points, QRgb rgb, double widthFactor)
{
    const int width = picture.width();
    const int height = picture.height();
    const int dot = std::max(1, int(std::lround(picture.devicePixelRatio() * widthFactor)));
    uchar* bits = picture.bits();
    const qsizetype stride = picture.bytesPerLine();
    if (dot == 1) {
        // The common case, a pixel a point, without the loops a wider dot takes.
        for (const eval::PointD& point : points) {
            const QPointF p = deviceScale.toPixel(point.x, point.y);
            if (p.x() >= 0 && p.x() < width && p.y() >= 0 && p.y() < height)
                reinterpret_cast<QRgb*>(bits + stride * int(p.y()))[int(p.x())] = rgb;
        }
        return;
    }
    for (const eval::PointD& point : points) {
        const QPointF p = deviceScale.toPixel(point.x, point.y);
        // A comparison that is false for NaN skips points the surface cannot hold.
        if (!(p.x() >= 0 && p.x() < width && p.y() >= 0 && p.y() < height))
            continue;
        const int left = int(p.x());
        const int top = int(p.y());
        for (int row = top; row < std::min(top + dot, height); ++row) {
            auto* line = reinterpret_cast<QRgb*>(bits + stride * row);
            std::fill(line + left, line + std::min(left + dot, width), rgb);
        }
    }
}

// Dots as strokes: each run of touching pixels in a column (or a row) one stroke from the
// run's first pixel to a dot's width past its last; the caller moves the strokes half a
// dot across, so that they cover the dots a picture gets.
QPainterPath pixelStrokes(std::vector<QPoint> cells, bool columns, double dot)
{
    auto along = [columns](QPoint p) { return columns ? p.y() : p.x(); };
    auto across = [columns](QPoint p) { return columns ? p.x() : p.y(); };
    std::sort(cells.begin(), cells.end(), [&](QPoint a, QPoint b) {
        return across(a) != across(b) ? across(a) < across(b) : along(a) < along(b);
    });
    auto point = [columns](double acrossAt, double alongAt) {
        return columns ? QPointF(acrossAt, alongAt) : QPointF(alongAt, acrossAt);
    };
    QPainterPath path;
    for (std::size_t i = 0; i < cells.size();) {
        std::size_t last = i;
        while (last + 1 < cells.size() && across(cells[last + 1]) == across(cells[i]) &&
               along(cells[last + 1]) <= along(cells[last]) + 1)
            ++last;
        path.moveTo(point(across(cells[i]), along(cells[i])));
        path.lineTo(point(across(cells[i]), along(cells[last]) + dot));
        i = last + 1;
    }
    return path;
}

// One smooth curve on a picture: the coverage of its lines is gathered first, taking the
// larger coverage where two segments meet, and then laid on the picture in the curve's
// colour, so that joints are not darker than the line. The painter's stroker takes some
// fifty times longer for the thousands of short segments of a curve.
class CurveCoverage {
public:
    void begin(int width, int height)
    {
        if (width != m_width || height != m_height) {
            m_width = width;
            m_height = height;
            m_cells.assign(std::size_t(width) * std::size_t(height), 0);
        }
        m_top.assign(std::size_t(width), height);
        m_bottom.assign(std::size_t(width), -1);
    }

    // A segment halfWidth pixels to each side, with round ends; without antialiasing a pixel
    // is either in or out.
    void addSegment(QPointF a, QPointF b, double halfWidth, bool antialias)
    {
        const double reach = halfWidth + 0.5;
        const double dx = b.x() - a.x();
        const double dy = b.y() - a.y();
        const double length2 = dx * dx + dy * dy;
        const int firstRow = std::max(0, int(std::floor(std::min(a.y(), b.y()) - reach)));
        const int lastRow = std::min(m_height - 1, int(std::ceil(std::max(a.y(), b.y()) + reach)));
        for (int row = firstRow; row <= lastRow; ++row) {
            const double cy = row + 0.5;
            // Only the columns where the segment passes within reach of this row.
            double t0 = 0, t1 = 1;
            if (dy != 0) {
                t0 = std::clamp((cy - reach - a.y()) / dy, 0.0, 1.0);
                t1 = std::clamp((cy + reach - a.y()) / dy, 0.0, 1.0);
            }
            const double xa = a.x() + std::min(t0, t1) * dx;
            const double xb = a.x() + std::max(t0, t1) * dx;
            const int firstColumn = std::max(0, int(std::floor(std::min(xa, xb) - reach)));
            const int lastColumn = std::min(m_width - 1, int(std::ceil(std::max(xa, xb) + reach)));
            for (int column = firstColumn; column <= lastColumn; ++column) {
                const double cx = column + 0.5;
                const double t =
                    length2 > 0 ? std::clamp(((cx - a.x()) * dx + (cy - a.y()) * dy) / length2, 0.0, 1.0) : 0.0;
                const double ex = cx - (a.x() + t * dx);
                const double ey = cy - (a.y() + t * dy);
                const double distance2 = ex * ex + ey * ey;
                if (distance2 >= reach * reach)
                    continue;
                if (!antialias) {
                    if (distance2 <= halfWidth * halfWidth)
                        mark(column, row, 255);
                    continue;
                }
                const double cover = std::min(1.0, reach - std::sqrt(distance2));
                // Cover is never negative, so adding a half rounds; lround costs a tenth of the paint.
                mark(column, row, uchar(cover * 255 + 0.5)); // NOLINT(bugprone-incorrect-roundings)
            }
        }
    }

    // Lays the gathered coverage on the picture and clears it for the next curve.
    void finish(QImage& picture, QRgb color)
    {
        const QRgb source = qPremultiply(color);
        uchar* bits = picture.bits();
        const qsizetype stride = picture.bytesPerLine();
        for (int column = 0; column < m_width; ++column) {
            for (int row = m_top[std::size_t(column)]; row <= m_bottom[std::size_t(column)]; ++row) {
                uchar& cell = m_cells[std::size_t(row) * std::size_t(m_width) + std::size_t(column)];
                if (cell == 0)
                    continue;
                auto* pixel = reinterpret_cast<QRgb*>(bits + stride * row) + column;
                *pixel = blend(source, *pixel, cell);
                cell = 0;
            }
        }
    }

private:
    void mark(int column, int row, uchar cover)
    {
        uchar& cell = m_cells[std::size_t(row) * std::size_t(m_width) + std::size_t(column)];
        cell = std::max(cell, cover);
        int& top = m_top[std::size_t(column)];
        int& bottom = m_bottom[std::size_t(column)];
        top = std::min(top, row);
        bottom = std::max(bottom, row);
    }

    static QRgb blend(QRgb source, QRgb target, uint cover)
    {
        auto channel = [&](int shift) {
            const uint s = (source >> shift) & 0xFFu;
            const uint t = (target >> shift) & 0xFFu;
            return ((s * cover + t * (255 - cover) + 127) / 255) << shift;
        };
        return channel(24) | channel(16) | channel(8) | channel(0);
    }

    int m_width = 0;
    int m_height = 0;
    std::vector<uchar> m_cells;
    std::vector<int> m_top;    // the first row marked in each column
    std::vector<int> m_bottom; // the last
};

// The runs of a curve, each a list of places between two breaks, points within 2 pixels
// (counted along x plus along y) of the last one kept merged into it: they add nothing a
// line 2 pixels wide can show.
template <typename Place, typename DrawRun>
void forEachRun(const std::vector<eval::PointD>& points, const std::vector<std::size_t>& breaks,
                Place place, DrawRun drawRun)
{
    QPolygonF run;
    auto nextBreak = breaks.begin();
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (nextBreak != breaks.end() && *nextBreak == i) {
            drawRun(run);
            run.clear();
            ++nextBreak;
        }
        const QPointF p = place(points[i]);
        const bool endsRun =
            i + 1 == points.size() || (nextBreak != breaks.end() && *nextBreak == i + 1);
        if (!run.isEmpty() && !endsRun && (p - run.back()).manhattanLength() < 2)
            continue;
        run << p;
    }
    drawRun(run);
}

} // namespace

bool drawVerticalHairline(Surface& surface, double x, double y0, double y1, const QColor& color)
{
    QImage* picture = surface.picture;
    const QPainter& painter = surface.painter;
    const bool plain = picture && painter.device() == picture &&
                       painter.deviceTransform().isIdentity() && !painter.hasClipping() &&
                       !painter.testRenderHint(QPainter::Antialiasing) &&
                       painter.compositionMode() == QPainter::CompositionMode_SourceOver &&
                       painter.pen().widthF() == 0 && color.alpha() == 255 &&
                       (picture->format() == QImage::Format_ARGB32_Premultiplied ||
                        picture->format() == QImage::Format_ARGB32 ||
                        picture->format() == QImage::Format_RGB32);
    const double height = plain ? picture->height() : 0;
    // Lines shorter than a pixel, or off the picture, the painter handles its own way.
    if (!plain || !(x >= 0 && x < picture->width()) || !(std::abs(y1 - y0) >= 1) ||
        !std::isfinite(y0) || !std::isfinite(y1))
        return false;
    const double top = std::clamp(std::min(y0, y1), -1.0, height + 1);
    const double bottom = std::clamp(std::max(y0, y1), -1.0, height + 1);
    const int column = int(x);
    const int first = std::max(0, int(std::floor(top + 0.5)));
    const int end = std::min(picture->height(), int(std::floor(bottom + 0.5)));
    const QRgb rgb = color.rgba();
    uchar* bits = picture->bits();
    const qsizetype stride = picture->bytesPerLine();
    for (int row = first; row < end; ++row)
        reinterpret_cast<QRgb*>(bits + stride * row)[column] = rgb;
    return true;
}

void drawCurvePoints(Surface& surface, const std::vector<eval::PointD>& points,
                     const QColor& color)
{
    if (surface.picture) {
        setPicturePixels(*surface.picture, surface.deviceScale, points, color.rgba(),
                         surface.lineWidth);
        return;
    }
    // A vector medium gets the dots as one path: the pixels of the plot they fall on, the
    // touching ones of a column or row one stroke as wide as a dot. A square for each point
    // would make a file of megabytes; whole pixels keep the numbers short.
    const QSizeF area = surface.scale.pixels();
    std::vector<QPoint> cells;
    cells.reserve(points.size());
    for (const eval::PointD& point : points) {
        const QPointF p = surface.scale.toPixel(point.x, point.y);
        if (p.x() >= 0 && p.x() < area.width() && p.y() >= 0 && p.y() < area.height())
            cells.emplace_back(int(p.x()), int(p.y()));
    }
    if (cells.empty())
        return;
    // Steep curves take fewer strokes down the columns, flat ones along the rows.
    const double dot = surface.lineWidth;
    const QPainterPath down = pixelStrokes(cells, true, dot);
    const QPainterPath along = pixelStrokes(cells, false, dot);
    const bool columns = down.elementCount() <= along.elementCount();
    const QPainterPath& path = columns ? down : along;
    QPainter& painter = surface.painter;
    painter.save();
    // Half a dot across keeps the strokes on whole numbers.
    painter.translate(columns ? QPointF(dot / 2, 0) : QPointF(0, dot / 2));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, dot, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawPath(path);
    painter.restore();
}

void drawJoinedCurve(Surface& surface, const std::vector<eval::PointD>& points,
                     const std::vector<std::size_t>& breaks, const QColor& color, bool antialias)
{
    // Far beyond the picture a point is pulled back to a band around it, so that nothing
    // meets huge coordinates; as samples lie well under a pixel apart in x, what can be seen
    // of a steep line keeps its place.
    auto placer = [](const PlotScale& scale) {
        const double height = scale.pixels().height();
        return [&scale, height](const eval::PointD& point) {
            const QPointF p = scale.toPixel(point.x, point.y);
            return QPointF(p.x(), std::clamp(p.y(), -height, 2 * height));
        };
    };
    if (surface.picture) {
        QImage& picture = *surface.picture;
        thread_local CurveCoverage coverage;
        coverage.begin(picture.width(), picture.height());
        // Two logical pixels wide, times the width factor.
        const double halfWidth = picture.devicePixelRatio() * surface.lineWidth;
        forEachRun(points, breaks, placer(surface.deviceScale), [&](const QPolygonF& run) {
            for (qsizetype i = 0; i < run.size(); ++i)
                coverage.addSegment(run[i], run[std::min(i + 1, run.size() - 1)], halfWidth, antialias);
        });
        coverage.finish(picture, color.rgba());
        return;
    }
    // One path for the lines and one for the points standing alone, so that a file holds
    // each curve as at most two shapes.
    QPainterPath lines;
    QPainterPath lone;
    const double width = 2 * surface.lineWidth;
    forEachRun(points, breaks, placer(surface.scale), [&](const QPolygonF& run) {
        if (run.size() == 1)
            lone.addEllipse(run.front(), width / 2, width / 2);
        else if (run.size() > 1)
            lines.addPolygon(run);
    });
    QPainter& painter = surface.painter;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, antialias);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (!lines.isEmpty())
        painter.drawPath(lines);
    if (!lone.isEmpty())
        painter.fillPath(lone, color);
    painter.restore();
}

} // namespace curvix::plot
