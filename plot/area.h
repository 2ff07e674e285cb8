#pragma once

#include "eval/compiled_formula.h"
#include "model/app_state.h"
#include "model/view_window.h"

#include <QLocale>
#include <QString>

#include <utility>

namespace curvix::plot {

using AreaValue = model::AreaValue;

// The integral of f from a to b and the geometric area between f and the x axis, by adaptive
// Gauss-Kronrod quadrature to 1e-10 relative, split at the zeros of f. An improper integral
// that converges (1/sqrt(x) on [0, 1]) gives its number; one that diverges, or a function
// undefined on part of the interval, gives the kind and a message. With a primitive of f
// that is finite on [a, b], the value is F(b) - F(a) when the quadrature agrees with it.
// b < a turns the sign of the integral, not of the area.
AreaValue integrateArea(const eval::CompiledFormula& f, double a, double b,
                        const eval::CompiledFormula* primitive = nullptr);

// Why a Divergent or Undefined value has no number, for [a, b] written in the locale; ""
// for a Finite one. integrateArea fills the value's message with this in the default locale.
QString areaMessage(const AreaValue& value, double a, double b,
                    const QLocale& locale = QLocale());

// The view's x range clipped to where f is defined at its ends: sqrt(x) starts at 0. The
// whole range when f is defined nowhere in it.
std::pair<double, double> defaultAreaBounds(const eval::CompiledFormula& f,
                                            const model::ViewWindow& view);

// The status bar's read-out: "∫ from 0 to 1 = 0.5000   area = 0.5000", or the message.
QString areaStatusText(const AreaValue& value, double a, double b,
                       const QLocale& locale = QLocale());
// The label on the plot: "∫ = 0.5000", with "   area = …" where f changes sign (the two
// differ), or a short "diverges" / "not defined".
QString areaLabelText(const AreaValue& value, const QLocale& locale = QLocale());

// Brings AppState::areaReadouts to one per area and recomputes each whose curve, bounds,
// parameters, angle unit or primitive changed, compiling with state.parameters. An area
// naming no curve of the list reads Undefined.
void computeAreas(model::AppState& state);

} // namespace curvix::plot
