#pragma once

#include "model/app_state.h"
#include "model/view_window.h"

#include <QPointF>
#include <QSizeF>
#include <QString>

#include <optional>

namespace curvix::plot {

// a / b, or 0 when b is 0, so that a surface of zero size never fails.
double SafeDivide(double a, double b);

// The world coordinate system of the plot surface: one step of border beyond the range on
// every side, y growing upwards.
class PlotScale {
public:
    PlotScale() = default;
    PlotScale(QSizeF pixels, const model::ViewWindow& view);

    double left() const { return m_left; }
    double right() const { return m_right; }
    double top() const { return m_top; }
    double bottom() const { return m_bottom; }
    QSizeF pixels() const { return m_pixels; }
    // World units per pixel; 0 for a surface of zero size.
    double unitsPerPixelX() const { return m_unitsPerPixelX; }
    double unitsPerPixelY() const { return m_unitsPerPixelY; }

    QPointF toPixel(double x, double y) const
    {
        return {(x - m_left) * m_pixelsPerUnitX, (m_top - y) * m_pixelsPerUnitY};
    }
    QPointF toWorld(QPointF pixel) const;

private:
    double m_left = 0, m_right = 1, m_top = 1, m_bottom = 0;
    QSizeF m_pixels;
    double m_unitsPerPixelX = 0, m_unitsPerPixelY = 0;
    double m_pixelsPerUnitX = 0, m_pixelsPerUnitY = 0;
};

PlotScale SetPlotScale(QSizeF pixels, const model::ViewWindow& view);

// The process defaults: presets, arrow switches and separator from the string table, the
// decimal view, the colours and the first sample step.
void InitPlotDefaults(model::AppState& state);

// Copies a preset's four texts into one row of range boxes (anything with setText).
template <typename Row>
void FillRangeRow(Row& row, const model::RangePreset& preset)
{
    for (std::size_t i = 0; i < preset.size(); ++i)
        row[i]->setText(preset[i]);
}

} // namespace curvix::plot

namespace curvix::plot {

// Reads a range text: a decimal number ("." or "," as decimal point), or a multiple of pi
// written with a final "p" ("p", "-p", "2p", "0.5p"). Nothing for any other text.
std::optional<double> readRangeNumber(const QString& text);

// A range text, or else a calculation in the formula language in which p, pi and π stand
// for pi: "p/2", "-3π/4", "sqrt(2)", "1/3". Nothing for a text that gives no finite number
// (one that uses the variable x, for one).
std::optional<double> readNumberExpression(const QString& text);

} // namespace curvix::plot
