#pragma once

#include "model/app_state.h"
#include "plot/render.h"
#include "plot/surface.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <vector>

namespace curvix::plot {

// How the numbers of one axis are written.
enum class TickStyle {
    Decimal,     // 1.571, −0.25, 1.5·10⁶
    PiMultiples, // π/2, 3π/2, 0.6366π
    PiFractions, // as PiMultiples; the painter stacks n·π over the denominator
    Degrees,     // 90°
};

// The label texts of one axis's ticks (ascending, evenly spaced): the shortest texts that
// still tell neighbours apart, at most 6 significant digits and 8 characters, a real minus
// sign, the locale's decimal separator. An axis whose largest tick is at least 10⁶ or below
// 10⁻³ (and not 0) is written in powers of ten, "1.5·10⁶".
QStringList tickLabelTexts(const std::vector<double>& values, TickStyle style);

// The text of a tick at a multiple of pi: "π", "−π/2", "3π/2"; value is the multiple.
QString piMultipleText(double multiple);

// One label as drawn: its text (for a stacked fraction, the part above the bar and the
// denominator below it) and its rectangle in logical pixels.
struct TickLabel {
    QString text;
    QString denominator;
    QRectF rect;
};

// The tick marks of both axes and the labels that are drawn, for a view on a surface of a
// size and font. When one axis's labels would overlap, only every 2nd, 5th, 10th, ... label
// stays (the first that fits); labels stay inside the surface, and an axis off the view has
// its numbers at the surface's edge (x at the bottom, y at the left).
struct TickLayout {
    std::vector<double> xMarks; // x positions of the marks on the x axis
    std::vector<double> yMarks;
    std::vector<TickLabel> labels;
};
TickLayout layoutTicks(const model::ViewWindow& view, const RedrawOptions& options,
                       model::AngleUnit angleUnit, QSizeF logical, const QFont& font,
                       QPaintDevice* device = nullptr);

// The tick marks, drawn with the axes (under the curves).
void drawTickMarks(Surface& surface, const model::ViewWindow& view,
                   const RedrawOptions& options, const QColor& color);

// Patches of the background where the numbers will stand, so that no grid line or tick
// strikes through them; drawn before the curves, which stay whole.
void drawTickPatches(Surface& surface, const model::ViewWindow& view,
                     const RedrawOptions& options, model::AngleUnit angleUnit);
// The numbers themselves, drawn last: over the curves and the fills, so that nothing hides one.
void drawTickLabels(Surface& surface, const model::ViewWindow& view,
                    const RedrawOptions& options, model::AngleUnit angleUnit, const QColor& color);

} // namespace curvix::plot
