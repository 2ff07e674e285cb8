#include "app/cli.h"
#include "app/cli_area.h"
#include "app/cli_values.h"
#include "app/cli_points.h"

#include "eval/evaluator.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "eval/symbolic.h"
#include "model/drawing_file.h"
#include "model/graph_list.h"
#include "model/parameter_list.h"
#include "output/export_picture.h"
#include "output/picture_file.h"
#include "plot/area.h"
#include "plot/coordinates.h"
#include "plot/range_rows.h"
#include "plot/render.h"
#include "plot/zoom.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <unistd.h>

#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

namespace curvix::app {

namespace {

constexpr int kExitFailure = 1; // a formula that does not compile, a file not read or written
constexpr int kExitUsage = 2;

int runEval(const CommandLine& line, QTextStream& out, QTextStream& err)
{
    QString message;
    const auto formula = cli::compileFormula(line.formula, line, message);
    if (!formula) {
        err << message << "\n";
        return kExitFailure;
    }
    for (double x : line.xs)
        out << eval::roundTripText(formula->evaluate(x)) << "\n";
    return 0;
}

// --derivative and --primitive: what the popup command would put into the function box,
// or the message and exit code 1.
int runSymbolic(const CommandLine& line, QTextStream& out, QTextStream& err)
{
    eval::SymbolicOptions options; // the answer is read and written in the angle unit
    if (line.angle)
        options.angleUnit = int(*line.angle);
    options.parameters = eval::parameterNames(line.parameters);
    const QString variable = model::labelVariable(line.label);
    if (const auto missing = cli::undeclaredParameters(line.formula, variable, line.parameters)) {
        err << *missing << "\n";
        return kExitFailure;
    }
    // One line for one failure: the primitive's two message boxes say the same thing.
    bool reported = false;
    const eval::Report report = [&](const QString& message) {
        if (!std::exchange(reported, true))
            err << message << "\n";
    };
    const QString answer =
        line.command == CliCommand::Derivative
            ? eval::SymbolicDerivative(line.formula, variable, 1, report, options)
            : eval::SymbolicPrimitive(line.formula, variable, report, options);
    if (answer.isEmpty())
        return kExitFailure;
    out << answer << "\n";
    return 0;
}

// Messages of the core go to stderr; questions are answered with Cancel.
class StreamPrompter final : public model::DialogFreePrompter {
public:
    explicit StreamPrompter(QTextStream& err)
        : DialogFreePrompter([this, &err](const QString& text) {
              err << text << "\n";
              err.flush();
              ++count;
          })
    {
    }

    int count = 0;
};

model::ViewWindow presetView(const model::AppState& state, bool exactTrig)
{
    const model::RangePreset* x = &state.presetDecimalX;
    const model::RangePreset* y = &state.presetDecimalY;
    if (state.angleUnit == model::AngleUnit::Degrees) {
        x = &state.presetDegreesX;
        y = &state.presetDegreesY;
    } else if (state.angleUnit == model::AngleUnit::Gradians) {
        x = &state.presetGradiansX;
        y = &state.presetGradiansY;
    } else if (exactTrig) {
        x = &state.presetRadiansX;
        y = &state.presetRadiansY;
    }
    auto n = [](const QString& text) { return plot::readRangeNumber(text).value_or(0); };
    return {n((*x)[0]), n((*x)[1]), n((*x)[2]), n((*x)[3]),
            n((*y)[0]), n((*y)[1]), n((*y)[2]), n((*y)[3])};
}

// The scene of an export: a loaded drawing (or a new one), the options laid over it and the
// formulas added to it. Returns an exit code when it cannot be set up.
struct Scene {
    model::AppState state;
    model::Drawing drawing; // the display and labels the state does not hold
    plot::RedrawOptions options;
};

// --param: a new value for a parameter the drawing declares, otherwise a new parameter.
std::optional<int> setParameters(const CommandLine& line, model::AppState& state, QTextStream& err)
{
    for (const eval::Parameter& parameter : line.parameters) {
        const int k = eval::parameterIndex(state.parameters, parameter.name);
        if (k >= 0) {
            model::setParameterValue(state, k, parameter.value);
        } else if (const auto problem = model::parameterProblem(state, parameter)) {
            return reportUsageError(err, QStringLiteral("--param: ") + *problem);
        } else {
            state.parameters.push_back(parameter);
        }
    }
    return std::nullopt;
}

std::optional<int> setUpScene(const CommandLine& line, Scene& scene, StreamPrompter& prompter,
                              QTextStream& err)
{
    model::AppState& state = scene.state;
    plot::InitPlotDefaults(state);
    scene.options.font = QGuiApplication::font();
    if (!line.drawingFile.isEmpty()) {
        QString error;
        std::optional<model::Drawing> loaded = model::openDrawingFile(line.drawingFile, &error);
        if (loaded && !model::applyDrawing(state, *loaded, &error))
            loaded.reset();
        if (!loaded) {
            err << "curvix: " << error << "\n";
            return kExitFailure;
        }
        scene.drawing = std::move(*loaded);
        scene.options = plot::redrawOptionsFor(scene.drawing.display, scene.options.font);
    }
    if (line.angle)
        state.angleUnit = *line.angle;
    state.autoColors = state.autoColors || line.autoColors;
    state.smoothCurves = line.smooth;
    scene.options.exactTrig = scene.options.exactTrig || line.exactTrig;
    scene.options.grid = scene.options.grid && !line.noGrid;
    if (scene.options.exactTrig && state.angleUnit != model::AngleUnit::Radians)
        return reportUsageError(err, QStringLiteral("--exact-trig goes with radians only"));
    // A new drawing, or a new angle unit, starts from the unit's preset as the window does.
    if (line.view)
        state.view = *line.view;
    else if (line.drawingFile.isEmpty() || line.angle)
        state.view = presetView(state, scene.options.exactTrig);
    if (line.equalScale)
        state.view = plot::equalScaleView(state.view, output::logicalSizeOf(line.picture.size));
    if (line.drawingFile.isEmpty())
        state.startView = state.view;
    if (const std::optional<int> failed = setParameters(line, state, err))
        return failed;
    // Nothing is pending here, so the link check is never asked.
    model::SymbolicLinkCheck links([&](const QString& m) { prompter.message(m); });
    const QString variable =
        state.variable();
    for (const QString& formula : line.formulas) {
        if (const auto missing = cli::undeclaredParameters(formula, variable, state.parameters)) {
            err << *missing << "\n";
            return kExitFailure;
        }
        model::addFunction(state, prompter, links, formula, QStringLiteral("f(%1)").arg(variable));
    }
    return std::nullopt;
}

int writeScene(Scene& scene, const CommandLine& line, StreamPrompter& prompter)
{
    QString error;
    bool written = false;
    if (line.command == CliCommand::WriteDrawing) {
        model::Drawing result = model::drawingFromState(scene.state);
        const int fontSize = scene.drawing.display.fontSize;
        result.display = plot::displayOf(scene.options);
        result.display.fontSize = fontSize; // the font of this machine is no part of it
        result.textLabels = scene.drawing.textLabels;
        result.pointLabels = scene.drawing.pointLabels;
        result.formulaPictures = scene.drawing.formulaPictures;
        written = model::saveDrawingFile(line.file, result, &error);
    } else {
        const plot::RedrawOptions options = output::exportRedrawOptions(
            scene.options, line.picture, *output::pictureTypeOf(line.file));
        plot::sampleDrawing(scene.state, [&](const QString& m) { prompter.message(m); });
        plot::computeAreas(scene.state);
        const QImage picture = output::exportPicture(scene.state, scene.drawing, options.font,
                                                     options, line.picture.size);
        written = output::writePlotFile(
            scene.state, picture, options, line.file, &error,
            output::drawingLabels(scene.drawing, scene.state.view, picture.deviceIndependentSize(),
                                  options.font));
        if (!written)
            error = QStringLiteral("Could not write the picture %1: %2")
                        .arg(QDir::toNativeSeparators(line.file), error);
    }
    if (!written) {
        prompter.message(QStringLiteral("curvix: ") + error);
        return kExitFailure;
    }
    return prompter.count > 0 ? kExitFailure : 0;
}

int runExport(const CommandLine& line, QTextStream& err)
{
    StreamPrompter prompter(err);
    Scene scene;
    if (const std::optional<int> failed = setUpScene(line, scene, prompter, err))
        return *failed;
    return writeScene(scene, line, prompter);
}

int runCommand(const CommandLine& line, QTextStream& out, QTextStream& err)
{
    switch (line.command) {
    case CliCommand::Help:
        out << helpText();
        return 0;
    case CliCommand::Version:
        out << versionText();
        return 0;
    case CliCommand::Eval:
        return runEval(line, out, err);
    case CliCommand::Derivative:
    case CliCommand::Primitive:
        return runSymbolic(line, out, err);
    case CliCommand::Export:
    case CliCommand::WriteDrawing:
        return runExport(line, err);
    case CliCommand::Points:
        return cli::runPoints(line, out, err);
    case CliCommand::Table:
        return cli::runTable(line, out, err);
    case CliCommand::Area:
        return cli::runArea(line, out, err);
    case CliCommand::Window:
        break;
    }
    return reportUsageError(err, QStringLiteral("the window is no headless command"));
}

// Without a session the platform plugin warns about a missing runtime folder on every
// run; a headless command makes the same private folder itself, silently.
void quietRuntimeDir()
{
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    const QString dir = QDir::tempPath() + QStringLiteral("/runtime-") + QString::number(getuid());
    if (QDir().mkpath(dir)) {
        QFile::setPermissions(dir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(dir));
    }
}

} // namespace

namespace cli {

model::ViewWindow defaultView(const model::AppState& state)
{
    return presetView(state, false);
}

} // namespace cli

int runHeadless(const CommandLine& line, QTextStream& out, QTextStream& err)
{
    // Qt's own options are not ours: the application objects see the program's name only.
    static char programName[] = "curvix";
    char* argv[] = {programName, nullptr};
    int argc = 1;
    int code = 0;
    if (line.command == CliCommand::Export || line.command == CliCommand::WriteDrawing) {
        // Drawing needs fonts but no display; the picture is the same whatever display
        // the command happens to run under.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        quietRuntimeDir();
        QGuiApplication gui(argc, argv);
        code = runCommand(line, out, err);
    } else {
        QCoreApplication core(argc, argv);
        code = runCommand(line, out, err);
    }
    // A full disk or a closed pipe must not pass for success.
    out.flush();
    if (out.status() != QTextStream::Ok || std::fflush(stdout) != 0 || std::ferror(stdout)) {
        err << "curvix: could not write to the standard output\n";
        code = code == 0 ? kExitFailure : code;
    }
    err.flush();
    return code;
}

int reportUsageError(QTextStream& err, const QString& problem)
{
    err << "curvix: " << problem << "\nTry 'curvix --help' for more information.\n";
    err.flush();
    return kExitUsage;
}

std::optional<QString> windowStartProblem(const CommandLine& line)
{
    if (!line.drawingFile.isEmpty()) {
        QFile file(line.drawingFile);
        if (!file.open(QIODevice::ReadOnly))
            return QStringLiteral("Could not open the drawing %1: %2")
                .arg(QDir::toNativeSeparators(line.drawingFile), file.errorString());
    }
    // A platform chosen by hand (offscreen, vnc, ...) is Qt's to find.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return QStringLiteral("no display to show the window on (neither DISPLAY nor "
                              "WAYLAND_DISPLAY is set); the commands of --help need none");
    return std::nullopt;
}

bool isDrawingFileName(const QString& name)
{
    return QFileInfo(name).suffix().compare(QLatin1String(model::kDrawingFileSuffix),
                                            Qt::CaseInsensitive) == 0;
}

} // namespace curvix::app
