#pragma once

#include "eval/parameters.h"
#include "model/app_state.h"
#include "output/export_picture.h"
#include "plot/value_table.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace curvix::app {

// What a run of the program does. Window opens the main window; every other command runs
// without one (and without a display).
enum class CliCommand {
    Window,
    Help,
    Version,
    Eval,
    Derivative,
    Primitive,
    Export,
    WriteDrawing,
    Points,
    Table,
    Area
};

// The arguments, read and checked. Options left unset keep what a loaded drawing says (or
// the defaults of a new one).
struct CommandLine {
    CliCommand command = CliCommand::Window;
    QString formula; // of --eval, --derivative and --primitive
    QString file;    // of --export and --write-drawing
    std::vector<double> xs;
    // --param a=2, in the order given: declared for the formulas, or set in a loaded drawing.
    eval::ParameterList parameters;
    QString label = QStringLiteral("f(x)");
    std::optional<model::AngleUnit> angle;
    std::optional<model::ViewWindow> view;
    plot::TableRange tableRange;
    double areaFrom = 0; // of --area
    double areaTo = 0;
    output::ExportOptions picture{{output::SizeUnit::Pixels, 800, 600}}; // of --export
    bool exactTrig = false;
    bool noGrid = false;
    bool autoColors = false;
    bool equalScale = false;
    bool smooth = false;
    QString drawingFile; // a .curvix drawing to open or to start from
    QStringList formulas;
    // The window closes once its first frame is painted, telling how long that took (for
    // the start-up benchmark; not in the help).
    bool quitAfterFirstFrame = false;
};

struct CommandLineReading {
    std::optional<CommandLine> commandLine;
    QString problem; // why the arguments make no sense, when they do not
};

// Reads the arguments (without the program's name). Nothing here needs a display or an
// application object, so that bad arguments are told before either is made.
CommandLineReading readCommandLine(const QStringList& args);

// The text of --help (English, in the form help2man reads) and of --version.
QString helpText();
QString versionText();

} // namespace curvix::app
