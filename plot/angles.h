#pragma once

#include "model/app_state.h"

namespace curvix::plot {

// The conversion case between two angle units: 1 rad→deg, 2 deg→rad, 3 deg→grad,
// 4 grad→deg, 5 rad→grad, 6 grad→rad; 0 when the units are the same.
int angleConversionCase(model::AngleUnit from, model::AngleUnit to);

// factor × value, rounded half to even: whole degrees and gradians, radians to 2 decimals.
// Any other case returns the value unchanged.
double convertAngle(double value, int conversionCase);

// Converts the x of every tangent mark when the unit changes and the list is not empty.
// Returns whether anything was converted.
bool convertMarks(model::AppState& state, model::AngleUnit from, model::AngleUnit to);

} // namespace curvix::plot
