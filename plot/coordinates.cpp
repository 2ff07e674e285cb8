#include "plot/coordinates.h"

#include "model/strings.h"

namespace curvix::plot {

double SafeDivide(double a, double b)
{
    return b != 0 ? a / b : 0.0;
}

PlotScale::PlotScale(QSizeF pixels, const model::ViewWindow& view)
    : m_left(view.XMin - view.XStep), m_right(view.XMax + view.XStep),
      m_top(view.YMax + view.YStep), m_bottom(view.YMin - view.YStep), m_pixels(pixels)
{
    m_unitsPerPixelX = SafeDivide(m_right - m_left, pixels.width());
    m_unitsPerPixelY = SafeDivide(m_top - m_bottom, pixels.height());
    m_pixelsPerUnitX = SafeDivide(pixels.width(), m_right - m_left);
    m_pixelsPerUnitY = SafeDivide(pixels.height(), m_top - m_bottom);
}

QPointF PlotScale::toPixel(double x, double y) const
{
    return {(x - m_left) * m_pixelsPerUnitX, (m_top - y) * m_pixelsPerUnitY};
}

QPointF PlotScale::toWorld(QPointF pixel) const
{
    return {m_left + pixel.x() * m_unitsPerPixelX, m_top - pixel.y() * m_unitsPerPixelY};
}

PlotScale SetPlotScale(QSizeF pixels, const model::ViewWindow& view)
{
    return PlotScale(pixels, view);
}

void InitPlotDefaults(model::AppState& state)
{
    using model::LoadResString;
    state.gridColor = model::kButtonShadowColor;
    state.axisColor = 0;
    state.functionColor = 0;
    state.fillColor = 0;
    state.tangentColor = model::kDefaultTangentColor;

    // The half step is put together from the table's decimal point, so that a translated
    // table writes it the way its users read it.
    const QString halfStep = QStringLiteral("0") + LoadResString(25) + QStringLiteral("5p");
    const model::RangePreset yShort{QStringLiteral("-3"), QStringLiteral("3"),
                                    QStringLiteral("1"), QStringLiteral("1")};
    state.presetRadiansX = {QStringLiteral("-3p"), QStringLiteral("3p"), halfStep,
                            QStringLiteral("1")};
    state.presetRadiansY = yShort;
    state.presetDegreesX = {QStringLiteral("-180"), QStringLiteral("180"), QStringLiteral("90"),
                            QStringLiteral("1")};
    state.presetDegreesY = yShort;
    state.presetGradiansX = {QStringLiteral("-200"), QStringLiteral("200"),
                             QStringLiteral("100"), QStringLiteral("1")};
    state.presetGradiansY = yShort;
    state.presetDecimalX = {QStringLiteral("-5"), QStringLiteral("5"), QStringLiteral("1"),
                            QStringLiteral("1")};
    state.presetDecimalY = state.presetDecimalX;

    // A switch is on when its entry holds the boolean true written as text.
    auto on = [](int number) { return LoadResString(number) == QLatin1String("-1"); };
    state.arrows.xNeg = on(32);
    state.arrows.yNeg = on(33);
    state.arrows.yPos = on(34);
    state.arrows.xPos = on(35);
    state.coordinateSeparator = LoadResString(29);

    state.view = model::ViewWindow{};
    state.startView = state.view;
    state.sampleStep = static_cast<double>(0.001f);
    state.angleUnit = model::AngleUnit::Radians;
    state.settingUp = true;
}

} // namespace curvix::plot
