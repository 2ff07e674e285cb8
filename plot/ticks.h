#pragma once

#include "model/app_state.h"
#include "plot/render.h"
#include "plot/surface.h"

#include <QColor>
#include <QString>

namespace curvix::plot {

// The tick marks and numbers of both axes, as the options ask: decimal numbers, multiples
// of pi (degrees with "°"), or pi fractions stacked over a bar.
void drawTickLabels(Surface& surface, const model::ViewWindow& view,
                    const RedrawOptions& options, model::AngleUnit angleUnit, const QColor& color);

// The text of a tick at a multiple of pi: "π", "−π/2", "3π/2"; value is the multiple.
QString piMultipleText(double multiple);

} // namespace curvix::plot
