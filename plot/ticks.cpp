#include "plot/ticks.h"

#include "eval/formula.h"
#include "eval/numtext.h"

#include <QFontMetricsF>
#include <QStaticText>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <numeric>

namespace curvix::plot {

namespace {

// Tick marks reach this far (logical pixels) to each side of their axis.
constexpr double kTickHalfLength = 3;

// Tick labels repeat from one redraw to the next: each text is laid out once per font.
const QStaticText& laidOut(const QPainter& painter, const QString& text)
{
    thread_local std::map<std::pair<QString, QString>, QStaticText> cache;
    const auto key = std::make_pair(painter.font().key(), text);
    auto it = cache.find(key);
    if (it == cache.end()) {
        if (cache.size() > 4096)
            cache.clear();
        QStaticText label(text);
        label.setTextFormat(Qt::PlainText);
        label.setPerformanceHint(QStaticText::AggressiveCaching);
        label.prepare(QTransform(), painter.font());
        it = cache.emplace(key, label).first;
    }
    return it->second;
}

// Draws one label with its centre at pixel x and its top at pixel y.
void drawCentredBelow(QPainter& painter, const QString& text, double x, double top)
{
    const QStaticText& label = laidOut(painter, text);
    painter.drawStaticText(QPointF(x - label.size().width() / 2, top), label);
}

void drawTickMark(Surface& surface, int axis, double position, double axisAt)
{
    const PlotScale& s = surface.scale;
    if (axis == 0) {
        const QPointF p = s.toPixel(position, axisAt);
        surface.painter.drawLine(QPointF(p.x(), p.y() - kTickHalfLength),
                                 QPointF(p.x(), p.y() + kTickHalfLength));
    } else {
        const QPointF p = s.toPixel(axisAt, position);
        surface.painter.drawLine(QPointF(p.x() - kTickHalfLength, p.y()),
                                 QPointF(p.x() + kTickHalfLength, p.y()));
    }
}

// Calls draw(position) for every label position of the x axis: outwards from one interval
// beyond 0, within the range widened by 5 %, skipping those that cannot reach the surface.
template <typename Draw>
void forEachXTick(const Surface& surface, const model::ViewWindow& view, double interval,
                  Draw draw)
{
    const PlotScale& s = surface.scale;
    const double margin = s.unitsPerPixelX() * 200; // a wide label centred off the surface
    const double left = s.left() - margin;
    const double right = s.right() + margin;
    const MultipleRange up = multiplesWithin(interval, std::max(left, interval), std::min(right, view.XMax * 1.05));
    const MultipleRange down = multiplesWithin(interval, std::max(left, view.XMin * 1.05), std::min(right, -interval));
    if (tooDense(up, s.pixels().width()) || tooDense(down, s.pixels().width()))
        return;
    forEachMultiple(interval, up, draw);
    forEachMultiple(interval, down, draw);
}

// The top of the x labels: 1.8 vertical label offsets below the larger of YMin and 0.
double xLabelTop(const Surface& surface, const model::ViewWindow& view)
{
    const double offset = view.YStep * 0.3;
    return surface.scale.toPixel(0, LargerOf(view.YMin, 0) - 1.8 * offset).y();
}

int greatestCommonDivisor(long long a, long long b)
{
    return static_cast<int>(std::gcd(a, b));
}

// The multiple as a reduced fraction n/d with a small denominator, when it is one.
bool asPiFraction(double multiple, long long& numerator, long long& denominator)
{
    for (long long d = 1; d <= 12; ++d) {
        const double scaled = multiple * static_cast<double>(d);
        const double n = std::round(scaled);
        if (std::abs(scaled - n) <= 1e-6 * std::max(1.0, std::abs(scaled)) && std::abs(n) < 1e9) {
            const long long whole = static_cast<long long>(n);
            const int g = std::max(1, greatestCommonDivisor(std::llabs(whole), d));
            numerator = whole / g;
            denominator = d / g;
            return true;
        }
    }
    return false;
}

QString piNumeratorText(long long numerator)
{
    const QString sign = numerator < 0 ? QStringLiteral("\u2212") : QString();
    const long long magnitude = std::llabs(numerator);
    return sign + (magnitude == 1 ? QString() : QString::number(magnitude)) + QChar(0x03C0);
}

void drawDecimalTickLabels(Surface& surface, const model::ViewWindow& view, int axis,
                           const QColor& color)
{
    QPainter& painter = surface.painter;
    painter.setPen(QPen(color, 0));
    const PlotScale& s = surface.scale;
    if (axis == 0) {
        const double interval = view.XTicks * view.XStep;
        const double top = xLabelTop(surface, view);
        const double axisAt = AxisPosition(view.YMin, view.YMax);
        forEachXTick(surface, view, interval, [&](double x) {
            drawTickMark(surface, 0, x, axisAt);
            drawCentredBelow(painter, eval::numberText(x), s.toPixel(x, 0).x(), top);
        });
        return;
    }
    // The y numbers stand right-aligned left of the y axis, centred on their ticks.
    const double interval = view.YTicks * view.YStep;
    const double axisAt = AxisPosition(view.XMin, view.XMax);
    const double right = s.toPixel(axisAt, 0).x() - kTickHalfLength - 2;
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double margin = s.unitsPerPixelY() * metrics.height();
    auto draw = [&](double y) {
        drawTickMark(surface, 1, y, axisAt);
        const QStaticText& label = laidOut(painter, eval::numberText(y));
        const QSizeF size = label.size();
        painter.drawStaticText(QPointF(right - size.width(), s.toPixel(0, y).y() - size.height() / 2), label);
    };
    const MultipleRange up = multiplesWithin(interval, std::max(interval, s.bottom() - margin), std::min(view.YMax * 1.05, s.top() + margin));
    const MultipleRange down = multiplesWithin(interval, std::max(view.YMin * 1.05, s.bottom() - margin), std::min(-interval, s.top() + margin));
    if (tooDense(up, s.pixels().height()) || tooDense(down, s.pixels().height()))
        return;
    forEachMultiple(interval, up, draw);
    forEachMultiple(interval, down, draw);
}

void drawPiTickLabels(Surface& surface, const model::ViewWindow& view, bool degrees,
                      const QColor& color)
{
    QPainter& painter = surface.painter;
    painter.setPen(QPen(color, 0));
    const double top = xLabelTop(surface, view);
    const double axisAt = AxisPosition(view.YMin, view.YMax);
    forEachXTick(surface, view, view.XTicks * view.XStep, [&](double x) {
        drawTickMark(surface, 0, x, axisAt);
        const QString text = degrees ? eval::numberText(x) + QChar(0x00B0)
                                     : piMultipleText(x / eval::kPiValue);
        drawCentredBelow(painter, text, surface.scale.toPixel(x, 0).x(), top);
    });
}

void drawFractionTickLabels(Surface& surface, const model::ViewWindow& view, const QColor& color)
{
    QPainter& painter = surface.painter;
    painter.setPen(QPen(color, 0));
    const double top = xLabelTop(surface, view);
    const double axisAt = AxisPosition(view.YMin, view.YMax);
    const QFontMetricsF metrics(painter.font(), painter.device());
    forEachXTick(surface, view, view.XTicks * view.XStep, [&](double x) {
        drawTickMark(surface, 0, x, axisAt);
        const double centre = surface.scale.toPixel(x, 0).x();
        long long numerator = 0;
        long long denominator = 1;
        if (!asPiFraction(x / eval::kPiValue, numerator, denominator) || denominator == 1) {
            drawCentredBelow(painter, piMultipleText(x / eval::kPiValue), centre, top);
            return;
        }
        // A stacked fraction: the multiple of pi over a bar over the denominator.
        const QString upper = piNumeratorText(numerator);
        const QString lower = QString::number(denominator);
        drawCentredBelow(painter, upper, centre, top);
        const double barY = top + metrics.height() + 1;
        const double half = std::max(metrics.horizontalAdvance(upper), metrics.horizontalAdvance(lower)) / 2;
        painter.drawLine(QPointF(centre - half, barY), QPointF(centre + half, barY));
        drawCentredBelow(painter, lower, centre, barY + 1);
    });
}

} // namespace

QString piMultipleText(double multiple)
{
    long long numerator = 0;
    long long denominator = 1;
    if (!asPiFraction(multiple, numerator, denominator))
        return eval::numberText(multiple) + QChar(0x03C0);
    if (numerator == 0)
        return QStringLiteral("0");
    QString text = piNumeratorText(numerator);
    if (denominator != 1)
        text += QLatin1Char('/') + QString::number(denominator);
    return text;
}

void drawTickLabels(Surface& surface, const model::ViewWindow& view,
                    const RedrawOptions& options, model::AngleUnit angleUnit, const QColor& color)
{
    if (!options.tickLabels)
        return;
    if (view.XTicks > 0) {
        if (options.exactTrig && options.fractionForm)
            drawFractionTickLabels(surface, view, color);
        else if (options.exactTrig)
            drawPiTickLabels(surface, view, angleUnit == model::AngleUnit::Degrees, color);
        else
            drawDecimalTickLabels(surface, view, 0, color);
    }
    if (view.YTicks > 0)
        drawDecimalTickLabels(surface, view, 1, color);
}

} // namespace curvix::plot
