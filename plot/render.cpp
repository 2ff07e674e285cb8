#include "plot/render.h"

#include "eval/numtext.h"
#include "plot/colors.h"
#include "plot/flood_fill.h"

#include <QFontMetricsF>
#include <QStaticText>

#include <algorithm>
#include <array>
#include <map>
#include <cmath>
#include <numeric>

namespace curvix::plot {

namespace {

// Every curve is sampled at about this many x positions, whatever the zoom.
constexpr double kSamplesPerRange = 7000;
// A sample step that would give more points than this is not sampled at all (a range of
// zero width, or an absurd step), so that no redraw can hang.
constexpr std::size_t kMaxSamples = 1'000'000;
// Tick marks reach this far (logical pixels) to each side of their axis.
constexpr double kTickHalfLength = 3;

// Multiples k of `interval` with k * interval inside [from, to], limited to k >= kMin
// (or k <= kMax): the positions of grid lines and ticks counted outwards from 0.
struct MultipleRange {
    double first = 1;
    double last = 0;
    bool empty() const { return first > last; }
};

MultipleRange multiplesWithin(double interval, double from, double to)
{
    if (!(interval > 0) || !std::isfinite(interval) || !(from <= to))
        return {};
    return {std::ceil(from / interval), std::floor(to / interval)};
}

// More labels than pixels would only smear the axis (and take long to write): none then.
bool tooDense(const MultipleRange& range, double pixels)
{
    return !range.empty() && !(range.last - range.first <= pixels);
}

// Calls draw(k · interval) for the multiples of a range. The count is an integer: far from
// zero, k + 1 can equal k in floating point, and a floating counter would never end.
template <typename Draw>
void forEachMultiple(double interval, const MultipleRange& range, Draw draw)
{
    if (range.empty())
        return;
    const qint64 count = qint64(range.last - range.first);
    for (qint64 i = 0; i <= count; ++i)
        draw((range.first + double(i)) * interval);
}

QImage tintedArrow(int number, const QColor& color)
{
    QImage picture(QStringLiteral(":/curvix/pictures/arrow%1.png").arg(number));
    picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    // The pictures are drawn at twice their size so that they stay sharp on dense screens.
    picture.setDevicePixelRatio(2);
    QPainter tint(&picture);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(QRectF(QPointF(0, 0), picture.deviceIndependentSize()), color);
    tint.end();
    return picture;
}

// The arrow pictures are decoded and tinted once per colour, not on every redraw.
const QImage& arrowPicture(int number, const QColor& color)
{
    thread_local std::map<std::pair<int, QRgb>, QImage> cache;
    const auto key = std::make_pair(number, color.rgba());
    auto it = cache.find(key);
    if (it == cache.end()) {
        if (cache.size() > 64)
            cache.clear();
        it = cache.emplace(key, tintedArrow(number, color)).first;
    }
    return it->second;
}

void DrawArrows(Surface& surface, const model::ViewWindow& view,
                const model::AxisArrowSwitches& arrows, const QColor& color)
{
    const PlotScale& s = surface.scale;
    const QPointF origin = s.toPixel(AxisPosition(view.XMin, view.XMax),
                                     AxisPosition(view.YMin, view.YMax));
    const QSizeF area = s.pixels();
    struct End {
        bool on;
        int picture;
    };
    // Painted in this order: y neg, y pos, x neg, x pos.
    const std::array<End, 4> ends{{{arrows.yNeg, 22}, {arrows.yPos, 30}, {arrows.xNeg, 21},
                                    {arrows.xPos, 31}}};
    for (const End& end : ends) {
        if (!end.on)
            continue;
        const QImage& picture = arrowPicture(end.picture, color);
        const QSizeF size = picture.deviceIndependentSize();
        QPointF at;
        switch (end.picture) {
        case 22: at = {origin.x() - size.width() / 2, area.height() - size.height()}; break;
        case 30: at = {origin.x() - size.width() / 2, 0}; break;
        case 21: at = {0, origin.y() - size.height() / 2}; break;
        default: at = {area.width() - size.width(), origin.y() - size.height() / 2}; break;
        }
        surface.painter.drawImage(at, picture);
    }
}

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

// A small ring marking a point: the point of tangency, the trace.
void drawDot(Surface& surface, double x, double y, const QColor& color)
{
    if (!std::isfinite(x) || !std::isfinite(y))
        return;
    QPainter& painter = surface.painter;
    const QPen saved = painter.pen();
    painter.setPen(QPen(color, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(surface.scale.toPixel(x, y), 4, 4);
    painter.setPen(saved);
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

} // namespace

void ComputeTangent(model::AppState& state, const model::ViewWindow& view,
                    const model::GraphEntry& entry, model::GraphMark& mark, const eval::Report& report)
{
    const QString variable = state.listVariable.isEmpty() ? QStringLiteral("x") : state.listVariable;
    const QString label = QStringLiteral("f(%1)").arg(variable);
    const eval::TangentLine line = eval::TangentLineText(state.evaluator, label, mark.x,
                                                         entry.expression, state.sampleStep);
    state.evaluator.Reset();
    mark.text = line.variable;
    mark.slope = line.slope;
    mark.line = line.text;
    // The point of tangency itself, unlifted, for the dot.
    const int id = state.evaluator.DefineVariable(variable);
    state.evaluator.SetVariable(id, mark.x);
    mark.y = state.evaluator.EvaluateText(entry.expression);
    state.evaluator.Reset();

    eval::SampledCurve curve{line.text, {}};
    mark.points.clear();
    // Outside the function's domain there is no tangent: nothing to draw, nothing to say.
    if (!std::isfinite(mark.slope) || !std::isfinite(mark.y))
        return;
    if (!(state.sampleStep > 0) || (view.XMax - view.XMin) / state.sampleStep > 1e6)
        return;
    eval::SizeCurvePoints(view.XMin, view.XMax, curve, state.sampleStep);
    eval::SampleCurve(state.evaluator, view.XMin, view.XMax, label, curve, state.sampleStep, report);
    for (const eval::PointD& p : curve.points)
        if (std::isfinite(p.y))
            mark.points.push_back(p);
}

bool PlaceTracePoint(model::AppState& state)
{
    model::AppState::Trace& trace = state.trace;
    trace.found = false;
    if (trace.entry < 0 || trace.entry >= int(state.graphs.size()))
        return false;
    const std::vector<eval::PointD>& points = state.graphs[std::size_t(trace.entry)].points;
    const double tolerance = state.sampleStep / 2;
    const auto at = std::lower_bound(points.begin(), points.end(), trace.x - tolerance,
                                     [](const eval::PointD& p, double x) { return p.x < x; });
    if (at == points.end())
        return false;
    trace.x = at->x;
    trace.y = at->y;
    trace.found = true;
    return true;
}

QString TraceText(const model::AppState& state)
{
    auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 7)); };
    return QStringLiteral("(%1%2 %3)")
        .arg(text(state.trace.x), state.coordinateSeparator, text(state.trace.y));
}

void ReplayFills(QImage& picture, const model::AppState& state)
{
    const PlotScale deviceScale = SetPlotScale(QSizeF(picture.size()), state.view);
    const QColor boundary = colorFromValue(state.functionColor);
    for (const model::FillPoint& fill : state.fills) {
        const QPointF seed = deviceScale.toPixel(fill.x, fill.y);
        FloodFill(picture, QPoint(int(std::floor(seed.x())), int(std::floor(seed.y()))),
                  colorFromValue(fill.color), boundary);
    }
}

double AxisPosition(double min, double max)
{
    return (min <= 0 && 0 <= max) ? 0.0 : min;
}

double LargerOf(double a, double b)
{
    return a >= b ? a : b;
}

int ComputeCurvePoints(model::AppState& state, const model::ViewWindow& view,
                       model::GraphEntry& entry, std::optional<double> targetX,
                       const eval::Report& report)
{
    entry.points.clear();
    const double step = state.sampleStep;
    if (!(step > 0) || !std::isfinite(step) || !(view.XMin <= view.XMax) ||
        (view.XMax - view.XMin) / step > double(kMaxSamples))
        return -1;

    // The x values accumulate the step, as a counted floating loop does.
    thread_local std::vector<double> xs;
    thread_local std::vector<double> ys;
    xs.clear();
    for (double x = view.XMin; x <= view.XMax && xs.size() < kMaxSamples; x += step) {
        xs.push_back(x);
        if (x + step == x) // the step is lost in x: no further sample would differ
            break;
    }
    ys.resize(xs.size());

    eval::ExpressionEvaluator& evaluator = state.evaluator;
    const QString variable =
        state.listVariable.isEmpty() ? QStringLiteral("x") : state.listVariable;
    const int variableId = evaluator.DefineVariable(variable);
    const int expressionId = evaluator.SetExpression(entry.expression);
    if (evaluator.HasError()) {
        if (report)
            report(evaluator.ErrorText());
        evaluator.Reset();
        return -1;
    }
    evaluator.EvaluateBatch(expressionId, variableId, xs, ys);
    evaluator.Reset();

    entry.points.reserve(xs.size());
    int found = -1;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (!std::isfinite(ys[i]))
            continue;
        if (targetX && found < 0 && std::abs(xs[i] - *targetX) <= step / 2)
            found = static_cast<int>(entry.points.size());
        entry.points.push_back({xs[i], ys[i]});
    }
    return found;
}

void DrawGrid(Surface& surface, const model::ViewWindow& view, const QColor& color)
{
    const PlotScale& s = surface.scale;
    QPainter& painter = surface.painter;
    painter.setPen(QPen(color, 0));

    // Lines through 0 spaced by the steps, up to 5 % beyond each range end (so that the line
    // at an end survives rounding). Lines that cannot reach the surface are not drawn, and
    // lines denser than the pixels fill their band.
    auto lines = [&](double step, double lo, double hi, double visibleLo, double visibleHi,
                     auto drawAt, auto fillBand, double pixels) {
        const MultipleRange up = multiplesWithin(step, std::max(0.0, visibleLo), std::min(hi * 1.05, visibleHi));
        const MultipleRange down = multiplesWithin(step, std::max(lo * 1.05, visibleLo), std::min(0.0, visibleHi));
        for (const MultipleRange& r : {up, down}) {
            if (r.empty())
                continue;
            if (tooDense(r, pixels)) {
                fillBand(r.first * step, r.last * step);
                continue;
            }
            forEachMultiple(step, r, drawAt);
        }
    };
    lines(
        view.XStep, view.XMin, view.XMax, s.left(), s.right(),
        [&](double x) {
            painter.drawLine(s.toPixel(x, view.YMin), s.toPixel(x, view.YMax));
        },
        [&](double a, double b) {
            painter.fillRect(QRectF(s.toPixel(a, view.YMax), s.toPixel(b, view.YMin)), color);
        },
        s.pixels().width());
    lines(
        view.YStep, view.YMin, view.YMax, s.bottom(), s.top(),
        [&](double y) {
            painter.drawLine(s.toPixel(view.XMin, y), s.toPixel(view.XMax, y));
        },
        [&](double a, double b) {
            painter.fillRect(QRectF(s.toPixel(view.XMin, b), s.toPixel(view.XMax, a)), color);
        },
        s.pixels().height());
}

void DrawAxis(Surface& surface, const model::ViewWindow& view, int axis, const QColor& color)
{
    QPainter& painter = surface.painter;
    const QPen saved = painter.pen();
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::FlatCap));
    const PlotScale& s = surface.scale;
    if (axis == 0) {
        const double y = AxisPosition(view.YMin, view.YMax);
        painter.drawLine(s.toPixel(view.XMin - view.XStep, y), s.toPixel(view.XMax + view.XStep, y));
    } else {
        const double x = AxisPosition(view.XMin, view.XMax);
        painter.drawLine(s.toPixel(x, view.YMax + view.YStep), s.toPixel(x, view.YMin - view.YStep));
    }
    painter.setPen(saved);
}

void DrawCurvePoints(Surface& surface, const std::vector<eval::PointD>& points,
                     const QColor& color)
{
    if (!surface.picture) {
        // A vector medium gets each point as a dot of one pixel of the plot.
        QPolygonF dots;
        dots.reserve(qsizetype(points.size()));
        const QSizeF area = surface.scale.pixels();
        for (const eval::PointD& point : points) {
            const QPointF p = surface.scale.toPixel(point.x, point.y);
            if (p.x() >= 0 && p.x() < area.width() && p.y() >= 0 && p.y() < area.height())
                dots << p;
        }
        const QPen saved = surface.painter.pen();
        surface.painter.setPen(QPen(color, 1, Qt::SolidLine, Qt::SquareCap));
        surface.painter.drawPoints(dots);
        surface.painter.setPen(saved);
        return;
    }
    // On a picture the points go straight into its pixels: much faster than the painter.
    QImage& picture = *surface.picture;
    const int width = picture.width();
    const int height = picture.height();
    const QRgb rgb = color.rgba();
    const PlotScale& s = surface.deviceScale;
    uchar* bits = picture.bits();
    const qsizetype stride = picture.bytesPerLine();
    for (const eval::PointD& point : points) {
        const QPointF p = s.toPixel(point.x, point.y);
        // A comparison that is false for NaN skips points the surface cannot hold.
        if (!(p.x() >= 0 && p.x() < width && p.y() >= 0 && p.y() < height))
            continue;
        auto* line = reinterpret_cast<QRgb*>(bits + stride * static_cast<qsizetype>(p.y()));
        line[static_cast<int>(p.x())] = rgb;
    }
}

void DrawVerticalLine(Surface& surface, const model::ViewWindow& view, double x,
                      const QColor& color)
{
    QPainter& painter = surface.painter;
    const QPen saved = painter.pen();
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::FlatCap));
    // One world unit beyond the range, not one step: the ends follow the units.
    painter.drawLine(surface.scale.toPixel(x, view.YMin - 1), surface.scale.toPixel(x, view.YMax + 1));
    painter.setPen(saved);
}

void DrawHorizontalLine(Surface& surface, const model::ViewWindow& view, double y,
                        const QColor& color)
{
    QPainter& painter = surface.painter;
    const QPen saved = painter.pen();
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(surface.scale.toPixel(view.XMin - 1, y), surface.scale.toPixel(view.XMax + 1, y));
    painter.setPen(saved);
}

void DrawDecimalTickLabels(Surface& surface, const model::ViewWindow& view, int axis,
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

void DrawPiTickLabels(Surface& surface, const model::ViewWindow& view, bool degrees,
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

void DrawFractionTickLabels(Surface& surface, const model::ViewWindow& view, const QColor& color)
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

void PaintPlot(model::AppState& state, QPainter& painter, QSizeF logical, QImage* raster,
               const RedrawOptions& options, const eval::Report& report)
{
    const model::ViewWindow view = state.view;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setFont(options.font);
    const PlotScale scale = SetPlotScale(logical, view);
    Surface surface{raster, painter, scale, raster ? SetPlotScale(QSizeF(raster->size()), view) : scale};
    state.sampleStep = std::abs(view.XMax - view.XMin) / kSamplesPerRange;

    const QColor gridColor = colorFromValue(state.gridColor);
    const QColor axisColor = colorFromValue(state.axisColor);

    if (options.grid)
        DrawGrid(surface, view, gridColor);
    DrawAxis(surface, view, 0, axisColor);
    DrawAxis(surface, view, 1, axisColor);
    if (options.arrows)
        DrawArrows(surface, view, state.arrows, axisColor);

    if (options.tickLabels && view.XTicks > 0) {
        if (options.exactTrig && options.fractionForm)
            DrawFractionTickLabels(surface, view, axisColor);
        else if (options.exactTrig)
            DrawPiTickLabels(surface, view, state.angleUnit == model::AngleUnit::Degrees, axisColor);
        else
            DrawDecimalTickLabels(surface, view, 0, axisColor);
    }
    if (options.tickLabels && view.YTicks > 0)
        DrawDecimalTickLabels(surface, view, 1, axisColor);

    // Labels dropped on the plot are placed here once the plot can hold them.

    const QColor tangentColor = colorFromValue(state.tangentColor);
    for (model::GraphEntry& entry : state.graphs) {
        if (!isPointByPoint(entry))
            ComputeCurvePoints(state, view, entry, std::nullopt, report);
        for (model::GraphMark& mark : entry.marks) {
            ComputeTangent(state, view, entry, mark, report);
            DrawCurvePoints(surface, mark.points, tangentColor);
            drawDot(surface, mark.x, mark.y, tangentColor);
        }
        DrawCurvePoints(surface, entry.points, colorFromValue(entry.color));
    }

    // Guide lines share the function colour of this redraw with the fills' boundary.
    const QColor guideColor = colorFromValue(state.functionColor);
    for (double x : state.verticalLines)
        DrawVerticalLine(surface, view, x, guideColor);
    for (double y : state.horizontalLines)
        DrawHorizontalLine(surface, view, y, guideColor);

    if (state.trace.on && PlaceTracePoint(state)) {
        const QColor traceColor = colorFromValue(state.tangentColor);
        drawDot(surface, state.trace.x, state.trace.y, traceColor);
        const QPointF at = surface.scale.toPixel(state.trace.x, state.trace.y);
        painter.setPen(traceColor);
        painter.drawText(at + QPointF(8, -8), TraceText(state));
    }
}

void frmPicture1_Resize(model::AppState& state, QImage& picture, const RedrawOptions& options,
                        const eval::Report& report)
{
    if (picture.isNull() || picture.width() == 0 || picture.height() == 0)
        return;
    picture.fill(options.background);
    {
        QPainter painter(&picture);
        PaintPlot(state, painter, picture.deviceIndependentSize(), &picture, options, report);
    }
    ReplayFills(picture, state);
}

} // namespace curvix::plot
