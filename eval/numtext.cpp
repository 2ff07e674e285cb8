#include "eval/numtext.h"

#include <algorithm>
#include <cfenv>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

namespace curvix::eval {

QString numberText(double value, const QLocale& locale, int significantDigits)
{
    if (!std::isfinite(value))
        return locale.toString(value);
    if (value == 0)
        return QStringLiteral("0"); // also for -0

    // The significant digits as d.ddd…e±x, then written out without exponent.
    char buffer[40];
    const int precision = std::clamp(significantDigits, 1, 17) - 1;
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value,
                                         std::chars_format::scientific, precision);
    (void)ec;
    const std::string scientific(buffer, end);
    const std::size_t e = scientific.find('e');
    const int exponent = std::atoi(scientific.c_str() + e + 1);
    std::string digits;
    for (std::size_t i = 0; i < e; ++i) {
        if (scientific[i] >= '0' && scientific[i] <= '9')
            digits.push_back(scientific[i]);
    }
    while (digits.size() > 1 && digits.back() == '0')
        digits.pop_back();

    // The value is 0.digits * 10^(exponent + 1).
    const int pointAt = exponent + 1;
    std::string whole;
    std::string fraction;
    if (pointAt <= 0) {
        whole = "0";
        fraction = std::string(std::size_t(-pointAt), '0') + digits;
    } else if (pointAt >= int(digits.size())) {
        whole = digits + std::string(std::size_t(pointAt) - digits.size(), '0');
    } else {
        whole = digits.substr(0, std::size_t(pointAt));
        fraction = digits.substr(std::size_t(pointAt));
    }

    QString text;
    if (value < 0)
        text += u'-'; // ASCII: the text may go back into a formula
    text += QLatin1StringView(whole.data(), qsizetype(whole.size()));
    if (!fraction.empty()) {
        text += locale.decimalPoint();
        text += QLatin1StringView(fraction.data(), qsizetype(fraction.size()));
    }
    return text;
}

double roundHalfEven(double value, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    const int previous = std::fegetround();
    std::fesetround(FE_TONEAREST);
    const double rounded = std::nearbyint(value * scale) / scale;
    std::fesetround(previous);
    return rounded;
}

QString roundTripText(double value)
{
    if (std::isnan(value))
        return QStringLiteral("nan");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    char buffer[40];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    (void)ec;
    return QString::fromLatin1(buffer, end - buffer);
}

} // namespace curvix::eval
