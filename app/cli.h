#pragma once

#include <QStringList>
#include <QTextStream>

namespace curvix::app {

// True when the arguments (without the program name) ask for a headless command.
bool isHeadlessCommand(const QStringList& args);

// Runs a headless command and returns the exit code: 0 on success, 1 when a formula does
// not compile, 2 for arguments that make no sense (with the usage text on err).
int runCommandLine(const QStringList& args, QTextStream& out, QTextStream& err);

QString usageText();

// Whether a file name ends in the drawing file's ending (.curvix, in any case).
bool isDrawingFileName(const QString& name);

} // namespace curvix::app
