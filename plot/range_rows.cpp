#include "plot/range_rows.h"

#include "eval/numtext.h"
#include "model/strings.h"
#include "plot/coordinates.h"

#include <QRegularExpression>

#include <cmath>

namespace curvix::plot {

namespace {

bool beginsANumber(const QString& text)
{
    static const QRegularExpression start(QStringLiteral("^-?[.,]?$"));
    return start.match(text).hasMatch();
}

// The names of the eight boxes, for messages: x minimum, y step, ...
QString boxName(int axis, int field)
{
    return model::LoadResString(2030 + axis).arg(model::LoadResString(2020 + field).toLower());
}

} // namespace

bool acceptsRangeText(const QString& text)
{
    return beginsANumber(text) || readRangeNumber(text).has_value();
}

bool acceptsStepText(const QString& text)
{
    return beginsANumber(text) ||
           (!text.contains(QLatin1Char('p')) && readRangeNumber(text).has_value());
}

ViewReading readViewWindow(const RangeRow& xRow, const RangeRow& yRow)
{
    double values[2][4];
    const RangeRow* rows[2] = {&xRow, &yRow};
    for (int axis = 0; axis < 2; ++axis) {
        for (int field = 0; field < 4; ++field) {
            const QString& text = (*rows[axis])[field];
            std::optional<double> value = readRangeNumber(text);
            if (value && axis == 1 && text.contains(QLatin1Char('p')))
                value.reset();
            if (!value || !std::isfinite(*value) || std::abs(*value) > 1e300)
                return {std::nullopt, model::LoadResString(2032).arg(text, boxName(axis, field))};
            values[axis][field] = *value;
        }
        const double* v = values[axis];
        if (!(v[0] < v[1]) || !std::isfinite(v[1] - v[0]))
            return {std::nullopt, model::LoadResString(2033).arg(boxName(axis, 0), boxName(axis, 1))};
        // The step is also the border: never negative, and above 0 where it spaces ticks.
        if (v[2] < 0 || (v[3] > 0 && !(v[2] > 0)))
            return {std::nullopt, model::LoadResString(2034).arg(boxName(axis, 2))};
        // Doubles cannot tell apart the points of a range that narrow so far from zero.
        if (std::max(std::abs(v[0]), std::abs(v[1])) > 1e12 * (v[1] - v[0]))
            return {std::nullopt, model::LoadResString(2035).arg(boxName(axis, 0), boxName(axis, 1))};
    }
    const double (&x)[4] = values[0];
    const double (&y)[4] = values[1];
    return {model::ViewWindow{x[0], x[1], x[2], x[3], y[0], y[1], y[2], y[3]}, QString()};
}

QString fontSizePrompt()
{
    return model::LoadResString(468) + model::LoadResString(2045);
}

FontSizeAnswer readFontSize(const QString& text)
{
    if (text.trimmed().isEmpty())
        return {};
    const std::optional<double> size =
        text.contains(QLatin1Char('p')) ? std::nullopt : readRangeNumber(text);
    if (!size)
        return {std::nullopt, fontSizePrompt()};
    if (*size < 5 || *size > 10)
        return {std::nullopt, model::LoadResString(443) + QStringLiteral("max5min10")};
    return {int(eval::roundHalfEven(*size)), QString()};
}

} // namespace curvix::plot
