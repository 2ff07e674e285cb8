#pragma once

#include "app/cli_options.h"

#include <QString>
#include <QTextStream>

#include <optional>

namespace curvix::app {

// Runs a command that needs no window (any but CliCommand::Window), with the application
// object it needs, and returns the exit code: 0 on success, 1 when a formula does not
// compile or a file (standard output too) cannot be read or written, 2 for arguments that
// make no sense.
int runHeadless(const CommandLine& line, QTextStream& out, QTextStream& err);

// Tells a problem with the arguments, with a hint to --help; returns the exit code 2.
int reportUsageError(QTextStream& err, const QString& problem);

// Why the window cannot start here: its drawing file cannot be read, or there is no
// display to show it on. Asked before anything needs a display.
std::optional<QString> windowStartProblem(const CommandLine& line);

// Whether a file name ends in the drawing file's ending (.curvix, in any case).
bool isDrawingFileName(const QString& name);

} // namespace curvix::app
