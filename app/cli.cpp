#include "app/cli.h"

#include "eval/evaluator.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "eval/symbolic.h"
#include "model/graph_list.h"
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
};

int usageError(QTextStream& err, const QString& problem)
{
    err << "curvix: " << problem << "\n" << usageText();
    err.flush();
    return kExitUsage;
}

// Reads "--eval FORMULA --at X [--at X ...] [--label f(t)]"; a message on failure.
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
                               ? eval::SymbolicDerivative(formula, variable, 1, report)
                               : eval::SymbolicPrimitive(formula, variable, report);
    err.flush();
    if (answer.isEmpty())
        return kExitCompileError;
    out << answer << "\n";
    out.flush();
    return 0;
}

// Messages of the core go to stderr; questions are answered with Cancel.
class StreamPrompter final : public model::Prompter {
public:
    explicit StreamPrompter(QTextStream& err) : m_err(err) {}
    void message(const QString& text) override
    {
        m_err << text << "\n";
        m_err.flush();
        ++count;
    }
    Button ask(const QString& text, Buttons) override
    {
        message(text);
        return Button::Cancel;
    }
    std::optional<quint32> chooseColor(const QString&, quint32) override { return {}; }
    std::optional<QString> inputText(const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    bool printerSetup(QPrinter&) override { return false; }

    int count = 0;

private:
    QTextStream& m_err;
};

struct ExportRequest {
    QString file;
    QSize size{800, 600};
    std::optional<model::ViewWindow> view;
    model::AngleUnit angle = model::AngleUnit::Radians;
    bool exactTrig = false;
    bool grid = true;
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

std::optional<ExportRequest> parseExport(const QStringList& args, QString& problem)
{
    ExportRequest request;
    request.file = args.value(1);
    if (request.file.isEmpty() || request.file.startsWith(QLatin1String("--"))) {
        problem = QStringLiteral("--export needs a file name");
        return std::nullopt;
    }
    for (qsizetype i = 2; i < args.size(); ++i) {
        const QString& a = args[i];
        auto value = [&]() -> std::optional<QString> {
            if (i + 1 >= args.size()) {
                problem = QStringLiteral("%1 needs a value").arg(a);
                return std::nullopt;
            }
            return args[++i];
        };
        if (a == QLatin1String("--size")) {
            const auto v = value();
            if (!v)
                return std::nullopt;
            const QStringList wh = v->split(QLatin1Char('x'));
            bool okW = false, okH = false;
            const int w = wh.value(0).toInt(&okW), h = wh.value(1).toInt(&okH);
            if (wh.size() != 2 || !okW || !okH || w < 1 || h < 1 || w > 20000 || h > 20000) {
                problem = QStringLiteral("'%1' is not a size such as 800x600").arg(*v);
                return std::nullopt;
            }
            request.size = QSize(w, h);
        } else if (a == QLatin1String("--view")) {
            const auto v = value();
            if (!v)
                return std::nullopt;
            const plot::ViewReading reading = parseView(*v);
            if (!reading.view) {
                problem = QStringLiteral("'%1' is not a view xmin,xmax,xstep,ymin,ymax,ystep: %2")
                              .arg(*v, reading.problem);
                return std::nullopt;
            }
            request.view = reading.view;
        } else if (a == QLatin1String("--angle")) {
            const auto v = value();
            if (!v)
                return std::nullopt;
            if (*v == QLatin1String("rad"))
                request.angle = model::AngleUnit::Radians;
            else if (*v == QLatin1String("deg"))
                request.angle = model::AngleUnit::Degrees;
            else if (*v == QLatin1String("grad"))
                request.angle = model::AngleUnit::Gradians;
            else {
                problem = QStringLiteral("--angle takes rad, deg or grad");
                return std::nullopt;
            }
        } else if (a == QLatin1String("--exact-trig")) {
            request.exactTrig = true;
        } else if (a == QLatin1String("--no-grid")) {
            request.grid = false;
        } else if (a == QLatin1String("--colors")) {
            const auto v = value();
            if (!v)
                return std::nullopt;
            if (*v != QLatin1String("auto")) {
                problem = QStringLiteral("--colors takes auto");
                return std::nullopt;
            }
            request.autoColors = true;
        } else if (a == QLatin1String("--equal-scale")) {
            request.equalScale = true;
        } else if (a == QLatin1String("--smooth")) {
            request.smooth = true;
        } else if (a.startsWith(QLatin1String("--"))) {
            problem = QStringLiteral("unexpected argument '%1'").arg(a);
            return std::nullopt;
        } else {
            request.formulas << a;
        }
    }
    if (request.exactTrig && request.angle != model::AngleUnit::Radians) {
        problem = QStringLiteral("--exact-trig goes with radians only");
        return std::nullopt;
    }
    return request;
}

model::ViewWindow presetView(const model::AppState& state, const ExportRequest& request)
{
    const model::RangePreset* x = &state.presetDecimalX;
    const model::RangePreset* y = &state.presetDecimalY;
    if (request.angle == model::AngleUnit::Degrees) {
        x = &state.presetDegreesX;
        y = &state.presetDegreesY;
    } else if (request.angle == model::AngleUnit::Gradians) {
        x = &state.presetGradiansX;
        y = &state.presetGradiansY;
    } else if (request.exactTrig) {
        x = &state.presetRadiansX;
        y = &state.presetRadiansY;
    }
    auto n = [](const QString& text) { return plot::readRangeNumber(text).value_or(0); };
    return {n((*x)[0]), n((*x)[1]), n((*x)[2]), n((*x)[3]),
            n((*y)[0]), n((*y)[1]), n((*y)[2]), n((*y)[3])};
}

int runExport(const QStringList& args, QTextStream& out, QTextStream& err)
{
    QString problem;
    const std::optional<ExportRequest> request = parseExport(args, problem);
    if (!request)
        return usageError(err, problem);
    const QString suffix = QFileInfo(request->file).suffix().toLower();
    if (!QStringList{"png", "bmp", "pdf", "svg"}.contains(suffix))
        return usageError(err, QStringLiteral("the file must end in .png, .bmp, .pdf or .svg"));

    model::AppState state;
    plot::InitPlotDefaults(state);
    state.angleUnit = request->angle;
    state.autoColors = request->autoColors;
    state.smoothCurves = request->smooth;
    state.view = request->view.value_or(presetView(state, *request));
    if (request->equalScale)
        state.view = plot::equalScaleView(state.view, QSizeF(request->size));
    StreamPrompter prompter(err);
    // Nothing is pending here, so the link check is never asked.
    model::SymbolicLinkCheck links([&](const QString& m) { prompter.message(m); });
    for (const QString& formula : request->formulas)
        model::addFunction(state, prompter, links, formula, QStringLiteral("f(x)"));

    QImage picture(request->size, QImage::Format_ARGB32_Premultiplied);
    plot::RedrawOptions options;
    options.grid = request->grid;
    options.exactTrig = request->exactTrig;
    options.font = QGuiApplication::font();
    plot::redraw(state, picture, options, [&](const QString& m) { prompter.message(m); });
    QString error;
    if (!output::writePlotFile(state, picture, options, request->file, &error)) {
        err << "curvix: " << error << "\n";
        err.flush();
        return kExitCompileError;
    }
    out.flush();
    return prompter.count > 0 ? kExitCompileError : 0;
}

} // namespace

QString usageText()
{
    return QStringLiteral(
        "usage: curvix                       open the main window\n"
        "       curvix --eval FORMULA --at X [--at X ...] [--label f(t)]\n"
        "                                    print the formula's value at each X\n"
        "       curvix --derivative FORMULA [--label f(t)]\n"
        "       curvix --primitive FORMULA [--label f(t)]\n"
        "                                    print the derivative or a primitive function\n"
        "       curvix --export FILE [--size WxH] [--view xmin,xmax,xstep,ymin,ymax,ystep]\n"
        "                    [--angle rad|deg|grad] [--exact-trig] [--no-grid] [--colors auto]\n"
        "                    [--equal-scale] [--smooth]\n"
        "                    FORMULA ...\n"
        "                                    draw the formulas into FILE (.png .bmp .pdf .svg)\n"
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
    if (command == QLatin1String("--export"))
        return runExport(args, out, err);
    return usageError(err, QStringLiteral("unknown command '%1'").arg(command));
}

} // namespace curvix::app
