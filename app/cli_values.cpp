#include "app/cli_values.h"

#include "plot/coordinates.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace curvix::app::cli {

std::optional<double> readNumberArgument(const QString& text)
{
    if (const std::optional<double> value = plot::readRangeNumber(text))
        return value;
    bool ok = false;
    double value = QLocale::c().toDouble(text.trimmed(), &ok);
    if (ok)
        return value;
    if (const std::optional<double> calculated = plot::readNumberExpression(text))
        return calculated;
    value = QLocale().toDouble(text.trimmed(), &ok);
    return ok ? std::optional<double>(value) : std::nullopt;
}

bool readParameterArguments(const QStringList& values, const QString& variable,
                            eval::ParameterList& parameters, QString& problem)
{
    for (const QString& text : values) {
        const qsizetype equals = text.indexOf(QLatin1Char('='));
        const QString name = text.left(equals).trimmed();
        const double value =
            equals < 0 ? qQNaN() : readNumberArgument(text.mid(equals + 1)).value_or(qQNaN());
        if (equals < 0)
            problem = QStringLiteral("--param: '%1' is not NAME=VALUE, such as a=2").arg(text);
        else if (!eval::isParameterName(name, variable))
            problem = QStringLiteral("--param: '%1' is not a parameter name: one small letter, "
                                     "neither e nor the variable %2")
                          .arg(name, variable);
        else if (eval::parameterIndex(parameters, name) >= 0)
            problem = QStringLiteral("--param: %1 is given twice").arg(name);
        else if (!std::isfinite(value))
            problem = QStringLiteral("--param: '%1' is not a number").arg(text.mid(equals + 1));
        if (!problem.isEmpty())
            return false;
        eval::Parameter parameter{name, value};
        // The slider's range takes in the value given.
        parameter.minimum = std::min(parameter.minimum, std::floor(value));
        parameter.maximum = std::max(parameter.maximum, std::ceil(value));
        parameters.push_back(parameter);
    }
    return true;
}

std::optional<QString> undeclaredParameters(const QString& formula, const QString& variable,
                                            const eval::ParameterList& parameters)
{
    const QStringList letters = eval::undeclaredLetters(formula, variable, parameters);
    if (letters.isEmpty())
        return std::nullopt;
    QStringList hints;
    for (const QString& letter : letters)
        hints << QStringLiteral("--param %1=VALUE").arg(letter);
    return (letters.size() == 1
                ? QStringLiteral("curvix: '%1' uses %2, which is not a parameter; give it a "
                                 "value with %3")
                : QStringLiteral("curvix: '%1' uses %2, which are not parameters; give each a "
                                 "value with %3"))
        .arg(formula, letters.join(QStringLiteral(", ")), hints.join(QLatin1Char(' ')));
}

std::optional<model::AngleUnit> angleByName(const QString& name)
{
    if (name == QLatin1String("rad"))
        return model::AngleUnit::Radians;
    if (name == QLatin1String("deg"))
        return model::AngleUnit::Degrees;
    if (name == QLatin1String("grad"))
        return model::AngleUnit::Gradians;
    return std::nullopt;
}

std::optional<output::PictureSize> readSize(const QString& text)
{
    output::PictureSize size;
    QString sides = text;
    if (sides.endsWith(QLatin1String("cm"))) {
        size.unit = output::SizeUnit::Centimetres;
        sides.chop(2);
    }
    const QStringList wh = sides.split(QLatin1Char('x'));
    bool okW = false, okH = false;
    if (size.unit == output::SizeUnit::Pixels) {
        size.width = wh.value(0).toInt(&okW);
        size.height = wh.value(1).toInt(&okH);
    } else {
        size.width = QLocale::c().toDouble(wh.value(0).replace(QLatin1Char(','), QLatin1Char('.')), &okW);
        size.height = QLocale::c().toDouble(wh.value(1).replace(QLatin1Char(','), QLatin1Char('.')), &okH);
    }
    if (wh.size() != 2 || !okW || !okH || !(size.width > 0) || !(size.height > 0))
        return std::nullopt;
    return size;
}

} // namespace curvix::app::cli
