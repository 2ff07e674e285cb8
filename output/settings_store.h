#pragma once

#include "model/app_state.h"

#include <QString>

namespace curvix::output {

// Writes the grid, axis and function colours to the per-user settings store, as signed
// decimal text. Nothing reads them back: every start begins with the default colours.
// Returns false, with a description of the failure in *error, when the store could not
// be written.
bool writeColorSettings(const model::AppState& state, QString* error = nullptr);

} // namespace curvix::output
