#include "plot/coordinates.h"

#include "eval/formula.h"
#include "model/strings.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <limits>

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
}

} // namespace curvix::plot

namespace curvix::plot {

std::optional<double> readRangeNumber(const QString& text)
{
    QString number = text.trimmed();
    bool timesPi = false;
    if (number.endsWith(QLatin1Char('p'))) {
        timesPi = true;
        number.chop(1);
        if (number.isEmpty() || number == QLatin1String("-") || number == QLatin1String("+"))
            number += QLatin1Char('1');
    }
    number.replace(QLatin1Char(','), QLatin1Char('.'));
    // Only plain decimals: no exponent (e is Euler's number), no infinities, no blanks inside.
    static const QRegularExpression plain(QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)$"));
    if (!plain.match(number).hasMatch())
        return std::nullopt;
    bool ok = false;
    const double value = QLocale::c().toDouble(number, &ok);
    if (!ok)
        return std::nullopt;
    return timesPi ? value * eval::kPiValue : value;
}

std::optional<double> readNumberExpression(const QString& text)
{
    if (const std::optional<double> plain = readRangeNumber(text))
        return plain;
    QString formula = text.trimmed();
    formula.replace(QChar(0x03C0), eval::kPiChar);
    static const QRegularExpression pi(QStringLiteral("(?<![A-Za-z])pi?(?![A-Za-z])"));
    formula.replace(pi, QString(eval::kPiChar));
    eval::ExpressionEvaluator evaluator;
    const QString prepared =
        eval::PrepareExpressionText(evaluator, formula, QStringLiteral("f(x)"), {}, QLocale::c());
    const auto compiled =
        prepared.isEmpty() ? nullptr : eval::CompiledFormula::compile(prepared, QStringLiteral("x"));
    // A calculation, not a function: an x in it leaves no number.
    const double value =
        compiled ? compiled->evaluate(std::numeric_limits<double>::quiet_NaN()) : NAN;
    if (!std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace curvix::plot
