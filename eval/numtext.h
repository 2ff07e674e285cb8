#pragma once

#include <QLocale>
#include <QString>

namespace curvix::eval {

// The program's one conversion of a number into text for the user: at most 15 significant
// digits, the shortest form, the locale's decimal separator, never a group separator and
// never exponent notation (an "e" would be read as Euler's number). A single-precision
// number is written with 7 significant digits instead.
QString numberText(double value, const QLocale& locale = QLocale(), int significantDigits = 15);

// Rounds to the given number of decimals, ties to even (2.5 → 2, 3.5 → 4), as the
// platform's rounding of numbers to text does.
double roundHalfEven(double value, int decimals = 0);

// The shortest text that reads back to the same double, with "." as decimal point,
// "nan", "inf" or "-inf" for non-finite values. For machine-readable output.
QString roundTripText(double value);

} // namespace curvix::eval
