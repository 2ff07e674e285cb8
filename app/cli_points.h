#pragma once

#include "model/app_state.h"
#include "plot/range_rows.h"

#include <QStringList>
#include <QTextStream>

#include <optional>

namespace curvix::app::cli {

// "--points [--view V] [--angle U] FORMULA...": the points of interest of each formula, then
// the intersections of each pair, one "kind<TAB>x<TAB>y" line per point.
int runPoints(const QStringList& args, QTextStream& out, QTextStream& err);

// "--table FROM,TO,STEP [--angle U] FORMULA...": the table of values as tab-separated text.
int runTable(const QStringList& args, QTextStream& out, QTextStream& err);

// The option rules of cli.cpp.
std::optional<model::AngleUnit> angleFromName(const QString& name, QString& problem);
int printUsageError(QTextStream& err, const QString& problem);
plot::ViewReading readViewOption(const QString& text);
// The view a new drawing starts with in the state's angle unit.
model::ViewWindow defaultView(const model::AppState& state);

} // namespace curvix::app::cli
