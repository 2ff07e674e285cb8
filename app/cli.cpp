#include "app/cli.h"
#include "app/cli_points.h"

#include "eval/evaluator.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "eval/symbolic.h"
#include "model/drawing_file.h"
#include "model/graph_list.h"
#include "output/capture.h"
#include "output/picture_file.h"
#include "plot/coordinates.h"
#include "plot/range_rows.h"
#include "plot/render.h"
#include "plot/zoom.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>

#include <optional>
#include <utility>
#include <vector>

namespace curvix::app {

namespace {

constexpr int kExitCompileError = 1;
constexpr int kExitUsage = 2;

struct EvalRequest {
    QString formula;
    QString label = QStringLiteral("f(x)");
    std::vector<double> xs;
    model::AngleUnit angle = model::AngleUnit::Radians;
};

// The value of "--angle": rad, deg or grad; a message on failure.
std::optional<model::AngleUnit> angleByName(const QString& name, QString& problem)
{
    if (name == QLatin1String("rad"))
        return model::AngleUnit::Radians;
    if (name == QLatin1String("deg"))
        return model::AngleUnit::Degrees;
    if (name == QLatin1String("grad"))
        return model::AngleUnit::Gradians;
    problem = QStringLiteral("--angle takes rad, deg or grad");
    return std::nullopt;
}

int usageError(QTextStream& err, const QString& problem)
{
    err << "curvix: " << problem << "\n" << usageText();
    err.flush();
    return kExitUsage;
}

// Reads "--eval FORMULA --at X [--at X ...] [--label f(t)] [--angle U]"; a message on failure.
std::optional<EvalRequest> parseEval(const QStringList& args, QString& problem)
{
    EvalRequest request;
    bool haveFormula = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& option = args[i];
        if (i + 1 >= args.size()) {
            problem = QStringLiteral("%1 needs a value").arg(option);
            return std::nullopt;
        }
        const QString& value = args[++i];
        if (option == QLatin1String("--eval") && !haveFormula) {
            request.formula = value;
            haveFormula = true;
        } else if (option == QLatin1String("--at")) {
            bool ok = false;
            const double x = QLocale::c().toDouble(value.trimmed(), &ok);
            if (!ok) {
                problem = QStringLiteral("'%1' is not a number").arg(value);
                return std::nullopt;
            }
            request.xs.push_back(x);
        } else if (option == QLatin1String("--label")) {
            request.label = value;
        } else if (option == QLatin1String("--angle")) {
            const std::optional<model::AngleUnit> unit = angleByName(value, problem);
            if (!unit)
                return std::nullopt;
            request.angle = *unit;
        } else {
            problem = QStringLiteral("unexpected argument '%1'").arg(option);
            return std::nullopt;
        }
    }
    if (request.xs.empty()) {
        problem = QStringLiteral("--eval needs at least one --at X");
        return std::nullopt;
    }
    return request;
}

int runEval(const QStringList& args, QTextStream& out, QTextStream& err)
{
    QString problem;
    const std::optional<EvalRequest> request = parseEval(args, problem);
    if (!request)
        return usageError(err, problem);

    eval::ExpressionEvaluator evaluator;
    QString compileMessage;
    const QString prepared =
        eval::PrepareExpressionText(evaluator, request->formula, request->label,
                                    [&](const QString& m) { compileMessage = m; });
    if (prepared.isEmpty()) {
        err << (compileMessage.isEmpty() ? QStringLiteral("empty formula") : compileMessage)
            << "\n";
        err.flush();
        return kExitCompileError;
    }
    const QString variable = model::labelVariable(request->label);
    const int variableId = evaluator.DefineVariable(variable);
    evaluator.SetAngleUnit(request->angle);
    const int expressionId = evaluator.SetExpression(prepared);
    for (double x : request->xs) {
        evaluator.SetVariable(variableId, x);
        out << eval::roundTripText(evaluator.Evaluate(expressionId)) << "\n";
    }
    out.flush();
    return 0;
}

// "--derivative FORMULA [--label f(t)]" or "--primitive ...": prints what the popup command
// would put into the function box, or the messages and exit code 1.
int runSymbolic(const QStringList& args, QTextStream& out, QTextStream& err)
{
    const QString& command = args.first();
    QString formula;
    bool haveFormula = false;
    QString label = QStringLiteral("f(x)");
    eval::SymbolicOptions options; // the answer is read and written in the angle unit
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& option = args[i];
        if (i + 1 >= args.size())
            return usageError(err, QStringLiteral("%1 needs a value").arg(option));
        const QString& value = args[++i];
        if (option == command && !haveFormula) {
            formula = value;
            haveFormula = true;
        } else if (option == QLatin1String("--label")) {
            label = value;
        } else if (option == QLatin1String("--angle")) {
            QString problem;
            const std::optional<model::AngleUnit> unit = angleByName(value, problem);
            if (!unit)
                return usageError(err, problem);
            options.angleUnit = int(*unit);
        } else {
            return usageError(err, QStringLiteral("unexpected argument '%1'").arg(option));
        }
    }
    if (formula.isEmpty())
        return usageError(err, QStringLiteral("%1 needs a formula").arg(command));

    const QString variable = model::labelVariable(label);
    // One line for one failure: the primitive's two message boxes say the same thing.
    bool reported = false;
    const eval::Report report = [&](const QString& message) {
        if (!std::exchange(reported, true))
            err << message << "\n";
    };
    const QString answer = command == QLatin1String("--derivative")
                               ? eval::SymbolicDerivative(formula, variable, 1, report, options)
                               : eval::SymbolicPrimitive(formula, variable, report, options);
    err.flush();
    if (answer.isEmpty())
        return kExitCompileError;
    out << answer << "\n";
    out.flush();
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

// What --export and --write-drawing make of the scene they set up.
enum class SceneOutput { Picture, Drawing };

// Options left unset keep what a loaded drawing says (or the defaults of a new one).
struct ExportRequest {
    SceneOutput output = SceneOutput::Picture;
    QString file;
    QString drawingFile; // a .curvix drawing to start from
    QSize size{800, 600};
    std::optional<model::ViewWindow> view;
    std::optional<model::AngleUnit> angle;
    bool exactTrig = false;
    bool noGrid = false;
    bool autoColors = false;
    bool equalScale = false;
    bool smooth = false;
    QStringList formulas;
};

// Reads "xmin,xmax,xstep,ymin,ymax,ystep" by the rules of the window's range rows.
plot::ViewReading parseView(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 6)
        return {std::nullopt, QStringLiteral("six values are needed")};
    const QString ticks = QStringLiteral("1");
    return plot::readViewWindow({parts[0], parts[1], parts[2], ticks},
                                {parts[3], parts[4], parts[5], ticks});
}


// One option with a value; false (and the problem) when it is not understood.
bool parseValueOption(const QString& a, const QString& v, ExportRequest& request, QString& problem)
{
    if (a == QLatin1String("--size")) {
        const QStringList wh = v.split(QLatin1Char('x'));
        bool okW = false, okH = false;
        const int w = wh.value(0).toInt(&okW), h = wh.value(1).toInt(&okH);
        if (wh.size() != 2 || !okW || !okH || w < 1 || h < 1 || w > 20000 || h > 20000) {
            problem = QStringLiteral("'%1' is not a size such as 800x600").arg(v);
            return false;
        }
        request.size = QSize(w, h);
    } else if (a == QLatin1String("--view")) {
        const plot::ViewReading reading = parseView(v);
        if (!reading.view) {
            problem = QStringLiteral("'%1' is not a view xmin,xmax,xstep,ymin,ymax,ystep: %2")
                          .arg(v, reading.problem);
            return false;
        }
        request.view = reading.view;
    } else if (a == QLatin1String("--angle")) {
        const std::optional<model::AngleUnit> unit = angleByName(v, problem);
        if (!unit)
            return false;
        request.angle = *unit;
    } else if (a == QLatin1String("--colors")) {
        if (v != QLatin1String("auto")) {
            problem = QStringLiteral("--colors takes auto");
            return false;
        }
        request.autoColors = true;
    } else {
        problem = QStringLiteral("unexpected argument '%1'").arg(a);
        return false;
    }
    return true;
}

std::optional<ExportRequest> parseExport(const QStringList& args, QString& problem)
{
    ExportRequest request;
    request.output = args.first() == QLatin1String("--write-drawing") ? SceneOutput::Drawing
                                                                       : SceneOutput::Picture;
    request.file = args.value(1);
    if (request.file.isEmpty() || request.file.startsWith(QLatin1String("--"))) {
        problem = QStringLiteral("%1 needs a file name").arg(args.first());
        return std::nullopt;
    }
    for (qsizetype i = 2; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--exact-trig")) {
            request.exactTrig = true;
        } else if (a == QLatin1String("--no-grid")) {
            request.noGrid = true;
        } else if (a == QLatin1String("--equal-scale")) {
            request.equalScale = true;
        } else if (a == QLatin1String("--smooth")) {
            request.smooth = true;
        } else if (a.startsWith(QLatin1String("--"))) {
            if (i + 1 >= args.size()) {
                problem = QStringLiteral("%1 needs a value").arg(a);
                return std::nullopt;
            }
            if (!parseValueOption(a, args[++i], request, problem))
                return std::nullopt;
        } else if (isDrawingFileName(a)) {
            if (!request.drawingFile.isEmpty()) {
                problem = QStringLiteral("only one drawing can be drawn at a time");
                return std::nullopt;
            }
            request.drawingFile = a;
        } else {
            request.formulas << a;
        }
    }
    return request;
}

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

std::optional<int> setUpScene(const ExportRequest& request, Scene& scene, StreamPrompter& prompter,
                              QTextStream& err)
{
    model::AppState& state = scene.state;
    plot::InitPlotDefaults(state);
    scene.options.font = QGuiApplication::font();
    if (!request.drawingFile.isEmpty()) {
        QString error;
        std::optional<model::Drawing> loaded = model::openDrawingFile(request.drawingFile, &error);
        if (loaded && !model::applyDrawing(state, *loaded, &error))
            loaded.reset();
        if (!loaded) {
            err << "curvix: " << error << "\n";
            err.flush();
            return kExitCompileError;
        }
        scene.drawing = std::move(*loaded);
        scene.options = plot::redrawOptionsFor(scene.drawing.display, scene.options.font);
    }
    if (request.angle)
        state.angleUnit = *request.angle;
    state.autoColors = state.autoColors || request.autoColors;
    state.smoothCurves = request.smooth;
    scene.options.exactTrig = scene.options.exactTrig || request.exactTrig;
    scene.options.grid = scene.options.grid && !request.noGrid;
    if (scene.options.exactTrig && state.angleUnit != model::AngleUnit::Radians)
        return usageError(err, QStringLiteral("--exact-trig goes with radians only"));
    // A new drawing, or a new angle unit, starts from the unit's preset as the window does.
    if (request.view)
        state.view = *request.view;
    else if (request.drawingFile.isEmpty() || request.angle)
        state.view = presetView(state, scene.options.exactTrig);
    if (request.equalScale)
        state.view = plot::equalScaleView(state.view, QSizeF(request.size));
    if (request.drawingFile.isEmpty())
        state.startView = state.view;
    // Nothing is pending here, so the link check is never asked.
    model::SymbolicLinkCheck links([&](const QString& m) { prompter.message(m); });
    const QString label = QStringLiteral("f(%1)").arg(
        state.listVariable.isEmpty() ? QStringLiteral("x") : state.listVariable);
    for (const QString& formula : request.formulas)
        model::addFunction(state, prompter, links, formula, label);
    return std::nullopt;
}

int writeScene(Scene& scene, const ExportRequest& request, StreamPrompter& prompter)
{
    QString error;
    bool written = false;
    if (request.output == SceneOutput::Drawing) {
        model::Drawing result = model::drawingFromState(scene.state);
        const int fontSize = scene.drawing.display.fontSize;
        result.display = plot::displayOf(scene.options);
        result.display.fontSize = fontSize; // the font of this machine is no part of it
        result.textLabels = scene.drawing.textLabels;
        result.pointLabels = scene.drawing.pointLabels;
        result.formulaPictures = scene.drawing.formulaPictures;
        written = model::saveDrawingFile(request.file, result, &error);
    } else {
        QImage picture(request.size, QImage::Format_ARGB32_Premultiplied);
        plot::redraw(scene.state, picture, scene.options,
                     [&](const QString& m) { prompter.message(m); });
        output::burnDrawingLabels(picture, scene.drawing, scene.state.view, scene.options.font);
        written = output::writePlotFile(scene.state, picture, scene.options, request.file, &error);
    }
    if (!written) {
        prompter.message(QStringLiteral("curvix: ") + error);
        return kExitCompileError;
    }
    return prompter.count > 0 ? kExitCompileError : 0;
}

int runExport(const QStringList& args, QTextStream& out, QTextStream& err)
{
    QString problem;
    const std::optional<ExportRequest> request = parseExport(args, problem);
    if (!request)
        return usageError(err, problem);
    if (request->output == SceneOutput::Drawing) {
        if (!isDrawingFileName(request->file))
            return usageError(err, QStringLiteral("the drawing file must end in .curvix"));
    } else {
        const QString suffix = QFileInfo(request->file).suffix().toLower();
        if (!QStringList{"png", "bmp", "pdf", "svg"}.contains(suffix))
            return usageError(err, QStringLiteral("the file must end in .png, .bmp, .pdf or .svg"));
    }
    StreamPrompter prompter(err);
    Scene scene;
    if (const std::optional<int> failed = setUpScene(*request, scene, prompter, err))
        return *failed;
    const int code = writeScene(scene, *request, prompter);
    out.flush();
    return code;
}

} // namespace

// The parsing rules above, shared with the commands of cli_points.cpp.
namespace cli {

std::optional<model::AngleUnit> angleFromName(const QString& name, QString& problem)
{
    return angleByName(name, problem);
}

int printUsageError(QTextStream& err, const QString& problem)
{
    return usageError(err, problem);
}

plot::ViewReading readViewOption(const QString& text)
{
    return parseView(text);
}

model::ViewWindow defaultView(const model::AppState& state)
{
    return presetView(state, false);
}

} // namespace cli

bool isDrawingFileName(const QString& name)
{
    return QFileInfo(name).suffix().compare(QLatin1String(model::kDrawingFileSuffix),
                                            Qt::CaseInsensitive) == 0;
}

QString usageText()
{
    return QStringLiteral(
        "usage: curvix [DRAWING.curvix]      open the main window (with a saved drawing)\n"
        "       curvix --eval FORMULA --at X [--at X ...] [--label f(t)] [--angle rad|deg|grad]\n"
        "                                    print the formula's value at each X\n"
        "       curvix --derivative FORMULA [--label f(t)] [--angle rad|deg|grad]\n"
        "       curvix --primitive FORMULA [--label f(t)] [--angle rad|deg|grad]\n"
        "                                    print the derivative or a primitive function\n"
        "       curvix --export FILE [--size WxH] [--view xmin,xmax,xstep,ymin,ymax,ystep]\n"
        "                    [--angle rad|deg|grad] [--exact-trig] [--no-grid] [--colors auto]\n"
        "                    [--equal-scale] [--smooth]\n"
        "                    [DRAWING.curvix] FORMULA ...\n"
        "                                    draw the formulas (over a saved drawing, when one is\n"
        "                                    given) into FILE (.png .bmp .pdf .svg)\n"
        "       curvix --write-drawing FILE.curvix [the options and arguments of --export]\n"
        "                                    write the drawing they describe to FILE\n"
        "       curvix --points [--view xmin,xmax,xstep,ymin,ymax,ystep] [--angle rad|deg|grad]\n"
        "                    FORMULA ...\n"
        "                                    print the zeros, minima, maxima and inflection\n"
        "                                    points of each formula in the view, then where they\n"
        "                                    meet: one line KIND<tab>X<tab>Y each, KIND one of\n"
        "                                    zero minimum maximum inflection intersection, the\n"
        "                                    numbers to 10 significant digits\n"
        "       curvix --table FROM,TO,STEP [--angle rad|deg|grad] FORMULA ...\n"
        "                                    print a table of values, tab-separated, one column\n"
        "                                    per formula, \u2014 where it is not defined (FROM, TO\n"
        "                                    and STEP take a decimal point, and 2p for 2\u03c0)\n"
        "       curvix --help                show this text\n");
}

bool isHeadlessCommand(const QStringList& args)
{
    return !args.isEmpty() &&
           (args.first().startsWith(QLatin1String("--")) || args.first() == QLatin1String("-h"));
}

int runCommandLine(const QStringList& args, QTextStream& out, QTextStream& err)
{
    if (args.isEmpty())
        return usageError(err, QStringLiteral("no command"));
    const QString& command = args.first();
    if (command == QLatin1String("--help") || command == QLatin1String("-h")) {
        out << usageText();
        out.flush();
        return 0;
    }
    if (command == QLatin1String("--eval"))
        return runEval(args, out, err);
    if (command == QLatin1String("--derivative") || command == QLatin1String("--primitive"))
        return runSymbolic(args, out, err);
    if (command == QLatin1String("--export") || command == QLatin1String("--write-drawing"))
        return runExport(args, out, err);
    if (command == QLatin1String("--points"))
        return cli::runPoints(args, out, err);
    if (command == QLatin1String("--table"))
        return cli::runTable(args, out, err);
    return usageError(err, QStringLiteral("unknown command '%1'").arg(command));
}

} // namespace curvix::app
