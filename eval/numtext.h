#pragma once

#include <QLocale>
#include <QString>

namespace curvix::eval {

// The program's one conversion of a number into text for the user: at most 15 significant
// digits, the shortest form, the locale's decimal separator, never a group separator and
// never exponent notation (an "e" would be read as Euler's number).
QString numberText(double value, const QLocale& locale = QLocale());

// The shortest text that reads back to the same double, with "." as decimal point,
// "nan", "inf" or "-inf" for non-finite values. For machine-readable output.
QString roundTripText(double value);

} // namespace curvix::eval
