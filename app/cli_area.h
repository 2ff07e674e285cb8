#pragma once

#include "app/cli_options.h"

#include <QTextStream>

namespace curvix::app::cli {

// --area: the integral of the one formula from line.areaFrom to line.areaTo and the area
// between its curve and the x axis, "integral<TAB>area", with line.parameters' values; the
// exact primitive from the symbolic library where it has one. A divergent integral or a
// formula undefined on part of the interval is told on err with the exit code 1, as is a
// formula that does not compile.
int runArea(const CommandLine& line, QTextStream& out, QTextStream& err);

} // namespace curvix::app::cli
