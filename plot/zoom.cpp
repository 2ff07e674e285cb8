#include "plot/zoom.h"

#include "eval/numtext.h"

#include <algorithm>
#include <cmath>

namespace curvix::plot {

namespace {

// Single-precision edges are written the way single-precision numbers read: 7 digits.
QString singleText(double value)
{
    return eval::numberText(static_cast<double>(static_cast<float>(value)), QLocale(), 7);
}

void writeRow(RangeRow& row, double min, double max, double step)
{
    row[0] = eval::numberText(min);
    row[1] = eval::numberText(max);
    row[2] = eval::numberText(step);
}

} // namespace

ZoomBox initialZoomBox(const model::ViewWindow& view)
{
    return {(view.XMin + view.XMax) / 2, (view.YMin + view.YMax) / 2,
            (view.XMax - view.XMin) / 2, (view.YMax - view.YMin) / 2};
}

double zoomedStep(double share, double step)
{
    const double scaled = share * step;
    if (!(scaled > 0.05))
        return 0.1;
    return eval::roundHalfEven(scaled, 1);
}

void zoomIn(model::AppState& state, const ZoomBox& box, RangeRow& x, RangeRow& y)
{
    auto& history = state.zoomHistory;
    history.resize(std::size_t(state.zoomCount) + 1);
    history[std::size_t(state.zoomCount)] = state.view;
    const model::ViewWindow& saved = history.back();

    const double kx = box.width / (saved.XMax - saved.XMin + 2 * saved.XStep);
    const double ky = box.height / (saved.YMax - saved.YMin + 2 * saved.YStep);
    x[0] = singleText(box.left);
    x[1] = singleText(box.left + box.width);
    x[2] = eval::numberText(zoomedStep(kx, saved.XStep), QLocale(), 7);
    y[0] = singleText(box.top - box.height);
    y[1] = singleText(box.top);
    y[2] = eval::numberText(zoomedStep(ky, saved.YStep), QLocale(), 7);
    ++state.zoomCount;
}

bool zoomOut(model::AppState& state, bool toBeginning, RangeRow& x, RangeRow& y)
{
    if (state.zoomCount <= 0)
        return false;
    state.zoomCount = toBeginning ? qint16(0) : qint16(state.zoomCount - 1);
    const model::ViewWindow restored = state.zoomHistory[std::size_t(state.zoomCount)];
    state.view = restored;
    writeRow(x, restored.XMin, restored.XMax, restored.XStep);
    writeRow(y, restored.YMin, restored.YMax, restored.YStep);
    state.zoomHistory.resize(std::size_t(state.zoomCount) + 1);
    return true;
}

double niceStep(double width)
{
    if (!(width > 0) || !std::isfinite(width))
        return 1;
    const double rough = width / 10;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (double nice : {1.0, 2.0, 5.0})
        if (rough <= nice * power * 1.5)
            return nice * power;
    return 10 * power;
}

model::ViewWindow scaledView(const model::ViewWindow& view, double factor, double x, double y)
{
    model::ViewWindow scaled = view;
    scaled.XMin = x - (x - view.XMin) * factor;
    scaled.XMax = x + (view.XMax - x) * factor;
    scaled.YMin = y - (y - view.YMin) * factor;
    scaled.YMax = y + (view.YMax - y) * factor;
    scaled.XStep = niceStep(scaled.XMax - scaled.XMin);
    scaled.YStep = niceStep(scaled.YMax - scaled.YMin);
    return scaled;
}

model::ViewWindow wheelZoom(model::AppState& state, double steps, double worldX, double worldY)
{
    recordZoomStep(state);
    return scaledView(state.view, std::pow(0.8, steps), worldX, worldY);
}

void writeViewRows(const model::ViewWindow& view, RangeRow& x, RangeRow& y)
{
    const auto text = [](double v) { return eval::numberText(v, QLocale(), 7); };
    x[0] = text(view.XMin);
    x[1] = text(view.XMax);
    x[2] = text(view.XStep);
    y[0] = text(view.YMin);
    y[1] = text(view.YMax);
    y[2] = text(view.YStep);
}

model::ViewWindow shiftedView(const model::ViewWindow& view, double dx, double dy)
{
    model::ViewWindow shifted = view;
    shifted.XMin += dx;
    shifted.XMax += dx;
    shifted.YMin += dy;
    shifted.YMax += dy;
    return shifted;
}

void recordZoomStep(model::AppState& state)
{
    auto& history = state.zoomHistory;
    history.resize(std::size_t(state.zoomCount) + 1);
    history.back() = state.view;
    ++state.zoomCount;
}

model::ViewWindow equalScaleView(const model::ViewWindow& view, QSizeF pixels)
{
    if (!(pixels.width() > 0) || !(pixels.height() > 0))
        return view;
    // The surface spans one step more on each side than the range.
    const double spanX = view.XMax - view.XMin + 2 * view.XStep;
    const double spanY = view.YMax - view.YMin + 2 * view.YStep;
    const double perPixelX = spanX / pixels.width();
    const double perPixelY = spanY / pixels.height();
    if (!(perPixelX > 0) || !(perPixelY > 0))
        return view;
    model::ViewWindow equal = view;
    if (perPixelX < perPixelY) {
        const double grow = (perPixelY * pixels.width() - spanX) / 2;
        equal.XMin -= grow;
        equal.XMax += grow;
    } else if (perPixelY < perPixelX) {
        const double grow = (perPixelX * pixels.height() - spanY) / 2;
        equal.YMin -= grow;
        equal.YMax += grow;
    }
    return equal;
}

double roundToResolution(double value, double unitsPerPixel)
{
    if (!(unitsPerPixel > 0) || !std::isfinite(unitsPerPixel) || !std::isfinite(value))
        return value;
    const int decimals = int(std::ceil(-std::log10(unitsPerPixel)));
    // Adding zero turns a rounded -0 into 0.
    if (decimals >= 0)
        return eval::roundHalfEven(value, std::min(decimals, 15)) + 0.0;
    const double place = std::pow(10.0, -decimals);
    return std::round(value / place) * place + 0.0;
}

QString pointerText(QPointF world, const PlotScale& scale, const QString& separator,
                    const QLocale& locale)
{
    const QString x = eval::numberText(roundToResolution(world.x(), scale.unitsPerPixelX()), locale);
    const QString y = eval::numberText(roundToResolution(world.y(), scale.unitsPerPixelY()), locale);
    return QStringLiteral("(%1%2 %3)").arg(x, separator, y);
}

} // namespace curvix::plot
