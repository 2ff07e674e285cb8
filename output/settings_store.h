#pragma once

#include "model/app_state.h"

namespace curvix::output {

// Writes the grid, axis and function colours to the per-user settings store, as signed
// decimal text. Nothing reads them back: every start begins with the default colours.
void writeColorSettings(const model::AppState& state);

} // namespace curvix::output
