#pragma once

#include "eval/parameters.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QString>

namespace curvix::plot {

// The formula as a textbook writes it: "f(x) = " label in front, powers raised and smaller,
// fractions stacked with a bar, square roots under a radical sign with an overline, π for
// pi/¶, · only where the typed text had an explicit * before a number (2·3, x·2; a stacked
// fraction counts as one), function names upright, the variable in italics; black on a
// transparent background, sized for the font. Returns a null image when the text does not
// parse (the caller shows nothing then).
//
// The typed text is read as the function box reads it: "¶" is π, "e" Euler's number, ","
// a decimal point, and the variable is the letter the label names ("x" when it names none).
// An empty label leaves out the "label = " part. The image's logical size is a whole number
// of pixels at every device pixel ratio.
// The drawing's parameters are set as symbols; another letter does not parse.
QImage typesetFormula(const QString& typed, const QString& label, const QFont& font,
                      qreal devicePixelRatio = 1.0, const eval::ParameterList& parameters = {});

// The same formula painted as text and shapes onto any painter, the picture's top-left
// corner at topLeft, for media that keep text (PDF, SVG, a printer): the size the picture
// would have, or an empty size when the text does not parse (nothing is painted then).
QSizeF paintFormula(QPainter& painter, QPointF topLeft, const QString& typed,
                    const QString& label, const QFont& font,
                    const eval::ParameterList& parameters = {});

} // namespace curvix::plot
