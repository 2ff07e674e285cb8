#pragma once

#include "app/cli_options.h"
#include "eval/compiled_formula.h"
#include "model/app_state.h"

#include <QTextStream>

namespace curvix::app::cli {

// --points: the points of interest of each formula, then the intersections of each pair,
// one "kind<TAB>x<TAB>y" line per point.
int runPoints(const CommandLine& line, QTextStream& out, QTextStream& err);

// --table: the table of values as tab-separated text.
int runTable(const CommandLine& line, QTextStream& out, QTextStream& err);

// A formula compiled as the function box would, in the variable of the line's label (x
// without one), its angle unit and its parameters;
// nothing, with the reason in message, when it does not compile or lacks a parameter.
std::shared_ptr<const eval::CompiledFormula> compileFormula(const QString& text,
                                                           const CommandLine& line,
                                                           QString& message);

// The view a new drawing starts with in the state's angle unit (in cli.cpp).
model::ViewWindow defaultView(const model::AppState& state);

} // namespace curvix::app::cli
