#include "plot/render.h"

#include "eval/numtext.h"
#include "model/strings.h"
#include "plot/area.h"
#include "plot/colors.h"
#include "plot/flood_fill.h"
#include "plot/surface.h"
#include "plot/ticks.h"

#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

namespace curvix::plot {

namespace {

// The fills' mask: open where nothing bounds a fill, any other value stops it.
constexpr QRgb kMaskOpen = 0xFFFFFFFF;
constexpr QRgb kMaskBorder = 0xFF000000;

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

// Where an arrow of a size stands: at the end of its axis, centred on the axis.
QPointF arrowCorner(int number, QSizeF size, QPointF origin, QSizeF area)
{
    switch (number) {
    case 22: return {origin.x() - size.width() / 2, area.height() - size.height()};
    case 30: return {origin.x() - size.width() / 2, 0};
    case 21: return {0, origin.y() - size.height() / 2};
    default: return {area.width() - size.width(), origin.y() - size.height() / 2};
    }
}

// The arrow as a shape, for media that keep shapes: the outline of the pictures (12 by 9
// logical pixels pointing right, a notch at the back), turned for each end.
QPainterPath arrowPath(int number, QPointF origin, QSizeF area)
{
    QPainterPath right;
    right.addPolygon(QPolygonF{{0, 0}, {12, 4.5}, {0, 9}, {3, 4.5}});
    right.closeSubpath();
    QTransform turn;
    QSizeF size(12, 9);
    switch (number) {
    case 22:
        turn.rotate(90);
        size.transpose();
        turn = turn * QTransform::fromTranslate(9, 0);
        break;
    case 30:
        turn.rotate(-90);
        size.transpose();
        turn = turn * QTransform::fromTranslate(0, 12);
        break;
    case 21: turn = QTransform(-1, 0, 0, 1, 12, 0); break;
    default: break;
    }
    const QPointF corner = arrowCorner(number, size, origin, area);
    return (turn * QTransform::fromTranslate(corner.x(), corner.y())).map(right);
}

void drawArrows(Surface& surface, const model::ViewWindow& view,
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
        if (!surface.picture) {
            surface.painter.fillPath(arrowPath(end.picture, origin, area), color);
            continue;
        }
        const QImage& picture = arrowPicture(end.picture, color);
        const QSizeF size = picture.deviceIndependentSize();
        surface.painter.drawImage(arrowCorner(end.picture, size, origin, area), picture);
    }
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

void drawGrid(Surface& surface, const model::ViewWindow& view, const QColor& color)
{
    const PlotScale& s = surface.scale;
    QPainter& painter = surface.painter;
    painter.setPen(QPen(color, hairlineWidth(surface), Qt::SolidLine, Qt::FlatCap));

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
            const QPointF from = s.toPixel(x, view.YMin);
            const QPointF to = s.toPixel(x, view.YMax);
            if (!drawVerticalHairline(surface, from.x(), from.y(), to.y(), color))
                painter.drawLine(from, to);
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

void drawAxis(Surface& surface, const model::ViewWindow& view, int axis, const QColor& color)
{
    QPainter& painter = surface.painter;
    const QPen saved = painter.pen();
    painter.setPen(QPen(color, 2 * surface.lineWidth, Qt::SolidLine, Qt::FlatCap));
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

void drawVerticalLine(Surface& surface, const model::ViewWindow& view, double x,
                      const QColor& color)
{
    QPainter& painter = surface.painter;
    const QPen saved = painter.pen();
    painter.setPen(QPen(color, 2 * surface.lineWidth, Qt::SolidLine, Qt::FlatCap));
    // One world unit beyond the range, not one step: the ends follow the units.
    painter.drawLine(surface.scale.toPixel(x, view.YMin - 1), surface.scale.toPixel(x, view.YMax + 1));
    painter.setPen(saved);
}

void drawHorizontalLine(Surface& surface, const model::ViewWindow& view, double y,
                        const QColor& color)
{
    QPainter& painter = surface.painter;
    const QPen saved = painter.pen();
    painter.setPen(QPen(color, 2 * surface.lineWidth, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(surface.scale.toPixel(view.XMin - 1, y), surface.scale.toPixel(view.XMax + 1, y));
    painter.setPen(saved);
}

// The curves with their tangents, the demonstration and the guide lines, in that order;
// all in one colour when given (the fills' mask).
void paintCurves(Surface& surface, const model::AppState& state,
                 const std::optional<QColor>& oneColor = std::nullopt)
{
    const model::ViewWindow& view = state.view;
    auto colorOf = [&](quint32 value) { return oneColor.value_or(colorFromValue(value)); };
    // The mask is never antialiased: a fill must find the same border in every mode.
    const bool antialias = !oneColor;
    auto paintPoints = [&](const std::vector<eval::PointD>& points,
                           const std::vector<std::size_t>& breaks, const QColor& color) {
        if (state.smoothCurves)
            drawJoinedCurve(surface, points, breaks, color, antialias);
        else
            drawCurvePoints(surface, points, color);
    };
    const QColor tangentColor = colorOf(state.tangentColor);
    auto paintMark = [&](const model::GraphMark& mark) {
        paintPoints(mark.points, {}, tangentColor);
        drawDot(surface, mark.x, mark.y, tangentColor);
    };
    for (const model::GraphEntry& entry : state.graphs) {
        for (const model::GraphMark& mark : entry.marks)
            paintMark(mark);
        paintPoints(entry.points, entry.breaks, colorOf(entry.color));
    }

    const model::Demonstration& demo = state.demonstration;
    const QColor demoColor = colorOf(demo.color);
    if (demo.tangent)
        paintMark(*demo.tangent);
    drawCurvePoints(surface, demo.curve, demoColor);
    drawCurvePoints(surface, demo.derivative, colorOf(demo.derivativeColor));

    // Guide lines take the function colour of this redraw.
    const QColor guideColor = colorOf(state.functionColor);
    for (double x : state.verticalLines)
        drawVerticalLine(surface, view, x, guideColor);
    for (double y : state.horizontalLines)
        drawHorizontalLine(surface, view, y, guideColor);
}

} // namespace

void drawTextOnPatch(QPainter& painter, QPointF at, const QString& text, QColor background)
{
    if (background.alpha() > 0) {
        background.setAlpha(210);
        const QRectF box = QRectF(painter.fontMetrics().boundingRect(text)).translated(at);
        painter.fillRect(box.adjusted(-2, 0, 2, 0), background);
    }
    painter.drawText(at, text);
}

namespace {

// The slope and the line of each tangent, beside its point of tangency, on a patch of the
// background so that the curves crossing it do not hide it.
void paintTangentLabels(Surface& surface, const model::AppState& state, const QColor& background)
{
    QPainter& painter = surface.painter;
    painter.setPen(colorFromValue(state.tangentColor));
    auto paintLabel = [&](const model::GraphMark& mark) {
        if (!mark.label.isEmpty() && std::isfinite(mark.y))
            drawTextOnPatch(painter, surface.scale.toPixel(mark.x, mark.y) + QPointF(8, 16), mark.label,
                            background);
    };
    for (const model::GraphEntry& entry : state.graphs)
        std::for_each(entry.marks.begin(), entry.marks.end(), paintLabel);
    if (state.demonstration.tangent)
        paintLabel(*state.demonstration.tangent);
}

// While a demonstration walks, a small legend in the upper left corner names f, f' and the
// tangent in their colours.
void paintDemonstrationLegend(Surface& surface, const model::AppState& state)
{
    const model::Demonstration& demo = state.demonstration;
    if (!demo.running)
        return;
    const QString variable = state.variable();
    std::vector<std::pair<QColor, QString>> rows{
        {colorFromValue(demo.color), QStringLiteral("f(%1) = %2").arg(variable, demo.text)}};
    if (demo.withDerivative)
        rows.emplace_back(colorFromValue(demo.derivativeColor), QStringLiteral("f\u2032(%1)").arg(variable));
    rows.emplace_back(colorFromValue(state.tangentColor), model::LoadResString(5185));
    QPainter& painter = surface.painter;
    const int line = painter.fontMetrics().height();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double y = 8 + line * (double(i) + 0.5);
        painter.setPen(QPen(rows[i].first, 2));
        painter.drawLine(QPointF(8, y), QPointF(28, y));
        painter.drawText(QPointF(34, y + painter.fontMetrics().ascent() / 2.0 - 1), rows[i].second);
    }
}

} // namespace

QString TraceText(const model::AppState& state)
{
    auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 7)); };
    return QStringLiteral("(%1%2 %3)")
        .arg(text(state.trace.x), state.coordinateSeparator, text(state.trace.y));
}

namespace {

// Everything that bounds a fill (axes, their arrows, curves, tangents, guide lines) in one
// colour on an open mask of the picture's size, without antialiasing, so that the region
// does not depend on the colours or the smoothing of what bounds it.
QImage fillMask(const QImage& picture, const model::AppState& state, bool arrows, double lineWidth)
{
    QImage mask(picture.size(), QImage::Format_ARGB32_Premultiplied);
    mask.setDevicePixelRatio(picture.devicePixelRatio());
    mask.fill(kMaskOpen);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const PlotScale scale = SetPlotScale(mask.deviceIndependentSize(), state.view);
    Surface surface{&mask, painter, scale, SetPlotScale(QSizeF(mask.size()), state.view),
                    lineWidth};
    const QColor border(kMaskBorder);
    drawAxis(surface, state.view, 0, border);
    drawAxis(surface, state.view, 1, border);
    if (arrows)
        drawArrows(surface, state.view, state.arrows, border);
    paintCurves(surface, state, border);
    return mask;
}

} // namespace

RedrawOptions redrawOptionsFor(const model::DrawingDisplay& display, const QFont& font)
{
    RedrawOptions options;
    options.grid = display.grid;
    options.arrows = display.axisArrows;
    options.tickLabels = display.tickLabels;
    options.exactTrig = display.exactTrig;
    options.fractionForm = display.fractionForm;
    options.font = font;
    if (display.fontSize > 0)
        options.font.setPointSize(display.fontSize);
    return options;
}

model::DrawingDisplay displayOf(const RedrawOptions& options)
{
    return {options.grid,          options.arrows,       options.tickLabels,
            options.exactTrig,     options.fractionForm, std::max(0, options.font.pointSize())};
}

void ReplayFills(QImage& picture, const model::AppState& state, const RedrawOptions& options)
{
    if (state.fills.empty() || picture.isNull())
        return;
    QImage mask = fillMask(picture, state, options.arrows, options.lineWidth);
    const PlotScale deviceScale = SetPlotScale(QSizeF(picture.size()), state.view);
    for (const model::FillPoint& fill : state.fills) {
        const QPointF seed = deviceScale.toPixel(fill.x, fill.y);
        // A fill left outside by a zoom (or read from a file) starts nowhere; the test also
        // keeps a far-off seed from overflowing the conversion to int.
        if (!(seed.x() >= 0 && seed.y() >= 0 && seed.x() < picture.width() &&
              seed.y() < picture.height()))
            continue;
        FloodFillFromMask(mask, picture, QPoint(int(std::floor(seed.x())), int(std::floor(seed.y()))),
                          colorFromValue(fill.color), QColor(kMaskOpen));
    }
}

namespace {

// Everything but the read-outs, which the caller draws last, over the fills too.
Surface paintUnderLabels(const model::AppState& state, QPainter& painter, QSizeF logical,
                         QImage* raster, const RedrawOptions& options)
{
    const model::ViewWindow& view = state.view;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setFont(options.font);
    const PlotScale scale = SetPlotScale(logical, view);
    const PlotScale deviceScale = raster ? SetPlotScale(QSizeF(raster->size()), view) : scale;
    Surface surface{raster, painter, scale, deviceScale, options.lineWidth};

    const QColor gridColor = colorFromValue(state.gridColor);
    const QColor axisColor = colorFromValue(state.axisColor);
    if (options.grid)
        drawGrid(surface, view, gridColor);
    drawAreaShading(surface, state);
    drawAxis(surface, view, 0, axisColor);
    drawAxis(surface, view, 1, axisColor);
    if (options.arrows)
        drawArrows(surface, view, state.arrows, axisColor);
    drawTickMarks(surface, view, options, axisColor);
    drawTickPatches(surface, view, options, state.angleUnit);

    paintCurves(surface, state);
    return surface;
}

// What is read over everything else, the fills too: the tick labels, then the tangents'
// read-outs, the demonstration's legend and the trace with its read-out.
void paintReadouts(Surface& surface, const model::AppState& state, const RedrawOptions& options)
{
    drawTickLabels(surface, state.view, options, state.angleUnit, colorFromValue(state.axisColor));
    paintTangentLabels(surface, state, options.background);
    drawAreaLabels(surface, state, options.background);
    paintDemonstrationLegend(surface, state);
    if (!state.trace.on || !state.trace.found)
        return;
    QPainter& painter = surface.painter;
    const QColor traceColor = colorFromValue(state.tangentColor);
    const QPointF at = surface.scale.toPixel(state.trace.x, state.trace.y);
    // A filled dot: the ring of a point of tangency is too easily lost on a curve.
    painter.setPen(QPen(traceColor, 1));
    painter.setBrush(traceColor);
    painter.drawEllipse(at, 4.5, 4.5);
    painter.setBrush(Qt::NoBrush);
    drawTextOnPatch(painter, at + QPointF(8, -8), TraceText(state), options.background);
}

} // namespace

void paintPlot(const model::AppState& state, QPainter& painter, QSizeF logical, QImage* raster,
               const RedrawOptions& options)
{
    Surface surface = paintUnderLabels(state, painter, logical, raster, options);
    paintReadouts(surface, state, options);
}

void paintPlotLayer(const model::AppState& state, QPainter& painter, QSizeF logical,
                    QImage* raster, const RedrawOptions& options, PlotLayer layer)
{
    if (layer == PlotLayer::UnderFills) {
        paintUnderLabels(state, painter, logical, raster, options);
        return;
    }
    painter.setFont(options.font);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    const PlotScale scale = SetPlotScale(logical, state.view);
    const PlotScale deviceScale =
        raster ? SetPlotScale(QSizeF(raster->size()), state.view) : scale;
    Surface surface{raster, painter, scale, deviceScale, options.lineWidth};
    paintReadouts(surface, state, options);
}

QFont fontForDevice(QFont font, const QPaintDevice* device)
{
    constexpr double kLogicalDpi = 96;
    const int dpi = device ? device->logicalDpiY() : 0;
    if (font.pointSizeF() > 0 && dpi > 0 && dpi != int(kLogicalDpi))
        font.setPointSizeF(font.pointSizeF() * kLogicalDpi / dpi);
    return font;
}

void redraw(model::AppState& state, QImage& picture, const RedrawOptions& options,
            const eval::Report& report)
{
    sampleDrawing(state, report);
    computeAreas(state);
    paintSampled(state, picture, options);
}

void paintSampled(const model::AppState& state, QImage& picture, const RedrawOptions& options)
{
    if (picture.isNull() || picture.width() == 0 || picture.height() == 0)
        return;
    picture.fill(options.background);
    {
        QPainter painter(&picture);
        paintUnderLabels(state, painter, picture.deviceIndependentSize(), &picture, options);
    }
    ReplayFills(picture, state, options);
    // The numbers go over the fills, so that a fill never hides one.
    QPainter painter(&picture);
    painter.setFont(options.font);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    const PlotScale scale = SetPlotScale(picture.deviceIndependentSize(), state.view);
    Surface surface{&picture, painter, scale, {}};
    paintReadouts(surface, state, options);
}

} // namespace curvix::plot
