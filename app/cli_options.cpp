#include "app/cli_options.h"

#include "app/cli.h"
#include "app/cli_values.h"
#include "model/graph_list.h"
#include "plot/coordinates.h"
#include "plot/range_rows.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QLocale>

#include <iterator>

namespace curvix::app {

namespace {

using CommandSet = unsigned;

constexpr CommandSet bit(CliCommand command)
{
    return 1u << unsigned(command);
}

constexpr CommandSet kCalculating =
    bit(CliCommand::Eval) | bit(CliCommand::Derivative) | bit(CliCommand::Primitive);
constexpr CommandSet kDrawing = bit(CliCommand::Export) | bit(CliCommand::WriteDrawing);
constexpr CommandSet kViewing = kDrawing | bit(CliCommand::Points);
constexpr CommandSet kHeadless = kCalculating | kDrawing | bit(CliCommand::Points) |
                                 bit(CliCommand::Table) | bit(CliCommand::Area);

// One option: the parser's and the help text's. An option that is a command gives it in
// `command`; any other option names the commands it goes with.
struct OptionInfo {
    const char* name;
    const char* valueName; // empty for a switch
    const char* description;
    CliCommand command = CliCommand::Window;
    CommandSet goesWith = 0;
};

constexpr OptionInfo kCommands[] = {
    {"eval", "FORMULA", "print the formula's value at each --at, one a line", CliCommand::Eval},
    {"derivative", "FORMULA", "print the derivative as the window's command gives it",
     CliCommand::Derivative},
    {"primitive", "FORMULA", "print a primitive function the same way", CliCommand::Primitive},
    {"export", "FILE", "draw the formulas into FILE: .png, .jpg, .bmp, .pdf or .svg",
     CliCommand::Export},
    {"write-drawing", "FILE", "write the drawing they describe to FILE.curvix",
     CliCommand::WriteDrawing},
    {"points", "", "print the formulas' points of interest (see below)", CliCommand::Points},
    {"table", "FROM,TO,STEP", "print a table of the formulas' values", CliCommand::Table},
    {"area", "A,B", "print the integral from A to B and the area (see below)", CliCommand::Area},
};

constexpr OptionInfo kOptions[] = {
    {"at", "X", "a value of the variable for --eval (once for each)", {}, bit(CliCommand::Eval)},
    {"label", "f(t)", "the function's label, which names its variable", {}, kCalculating},
    {"angle", "UNIT", "the angle unit: rad (the default), deg or grad", {}, kHeadless},
    {"param", "a=2", "a parameter the formulas use and its value (once for each)", {},
     kHeadless},
    {"view", "V", "the view xmin,xmax,xstep,ymin,ymax,ystep", {}, kViewing},
    {"size", "WxH", "the picture's size: 800x600 pixels (the default) or 10x8cm", {}, kDrawing},
    {"dpi", "N", "the resolution of a size in centimetres (300 by default)", {}, kDrawing},
    {"transparent", "", "no background (.png and .svg)", {}, bit(CliCommand::Export)},
    {"line-width", "F", "the width of curves and axes times F (1 by default)", {},
     bit(CliCommand::Export)},
    {"exact-trig", "", "number the x axis in multiples of pi (radians only)", {}, kDrawing},
    {"no-grid", "", "draw no grid", {}, kDrawing},
    {"colors", "auto", "give each new curve a colour of its own", {}, kDrawing},
    {"equal-scale", "", "make a unit as long on both axes", {}, kDrawing},
    {"smooth", "", "draw smooth (antialiased) curves", {}, kDrawing},
    {"help", "", "show this help and exit", CliCommand::Help},
    {"version", "", "show the version and exit", CliCommand::Version},
};

template <typename Visit>
void forEachOption(Visit visit)
{
    for (const OptionInfo& option : kCommands)
        visit(option);
    for (const OptionInfo& option : kOptions)
        visit(option);
}

const OptionInfo* findOption(const QString& name)
{
    const OptionInfo* found = nullptr;
    forEachOption([&](const OptionInfo& option) {
        const bool shortHelp = name == QLatin1String("h") && option.command == CliCommand::Help;
        if (name == QLatin1String(option.name) || shortHelp)
            found = &option;
    });
    return found;
}

// The option an argument names ("--at", "--at=3", "-h"), if it names one we know.
const OptionInfo* optionOfArgument(const QString& argument)
{
    if (argument == QLatin1String("-h"))
        return findOption(QStringLiteral("h"));
    if (!argument.startsWith(QLatin1String("--")))
        return nullptr;
    return findOption(argument.mid(2).section(QLatin1Char('='), 0, 0));
}

// The options first, then "--" and the other arguments in their order: a formula such as
// "-x^2" is then never taken for an option, wherever it stands.
std::optional<QStringList> optionsFirst(const QStringList& args, QString& problem)
{
    QStringList options{QStringLiteral("curvix")};
    QStringList positional;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& argument = args[i];
        if (argument == QLatin1String("--")) {
            positional += args.mid(i + 1);
            break;
        }
        if (!argument.startsWith(QLatin1String("--")) && argument != QLatin1String("-h")) {
            positional << argument;
            continue;
        }
        options << argument;
        const OptionInfo* option = optionOfArgument(argument);
        if (!option || !*option->valueName || argument.contains(QLatin1Char('=')))
            continue;
        // The value may begin with a minus ("--at -2"), but it is not the next option.
        if (i + 1 >= args.size() || optionOfArgument(args[i + 1])) {
            problem = QStringLiteral("%1 needs a value (%1 %2)")
                          .arg(argument, QLatin1String(option->valueName));
            return std::nullopt;
        }
        options << args[++i];
    }
    return options + QStringList{QStringLiteral("--")} + positional;
}


// --size, --dpi, --transparent and --line-width, which shape the picture.
bool readPictureValues(const QCommandLineParser& parser, CommandLine& line, QString& problem)
{
    const auto value = [&](const char* name) { return parser.value(QLatin1String(name)); };
    const auto isSet = [&](const char* name) { return parser.isSet(QLatin1String(name)); };
    output::ExportOptions& picture = line.picture;
    if (isSet("size")) {
        const std::optional<output::PictureSize> size = cli::readSize(value("size"));
        if (!size) {
            problem = QStringLiteral("--size: '%1' is not a size such as 800x600 or 10x8cm")
                          .arg(value("size"));
            return false;
        }
        picture.size = *size;
    }
    if (isSet("dpi")) {
        bool ok = false;
        picture.size.dpi = value("dpi").toInt(&ok);
        if (!ok || picture.size.dpi < output::kMinDpi || picture.size.dpi > output::kMaxDpi) {
            problem = QStringLiteral("--dpi: '%1' is not a resolution from %2 to %3")
                          .arg(value("dpi")).arg(output::kMinDpi).arg(output::kMaxDpi);
            return false;
        }
        if (picture.size.unit != output::SizeUnit::Centimetres) {
            problem = QStringLiteral("--dpi goes with a size in centimetres, such as --size 10x8cm");
            return false;
        }
    }
    if (!output::isPossible(picture.size)) {
        problem = QStringLiteral("--size: '%1' makes a picture of more than %2 pixels a side")
                      .arg(value("size")).arg(output::kMaxPixels);
        return false;
    }
    if (isSet("line-width")) {
        bool ok = false;
        picture.lineWidth = QLocale::c().toDouble(value("line-width").replace(QLatin1Char(','), QLatin1Char('.')), &ok);
        if (!ok || !(picture.lineWidth >= output::kMinLineWidth && picture.lineWidth <= output::kMaxLineWidth)) {
            problem = QStringLiteral("--line-width: '%1' is not a factor from %2 to %3")
                          .arg(value("line-width")).arg(output::kMinLineWidth).arg(output::kMaxLineWidth);
            return false;
        }
    }
    picture.transparent = isSet("transparent");
    return true;
}

// The one command among the options; Window when none is given.
std::optional<CliCommand> commandOf(const QCommandLineParser& parser, QString& problem)
{
    if (parser.isSet(QStringLiteral("help")))
        return CliCommand::Help;
    if (parser.isSet(QStringLiteral("version")))
        return CliCommand::Version;
    QStringList given;
    for (const QString& name : parser.optionNames()) {
        if (findOption(name)->command != CliCommand::Window)
            given << QStringLiteral("--") + name;
    }
    if (given.size() > 1) {
        problem = QStringLiteral("one command at a time, not %1 and %2").arg(given[0], given[1]);
        return std::nullopt;
    }
    return given.isEmpty() ? CliCommand::Window : findOption(given[0].mid(2))->command;
}

QString commandName(CliCommand command)
{
    for (const OptionInfo& option : kCommands) {
        if (option.command == command)
            return QStringLiteral("--") + QLatin1String(option.name);
    }
    return QString();
}

// Every option given goes with the command.
bool optionsFit(const QCommandLineParser& parser, CliCommand command, QString& problem)
{
    for (const QString& name : parser.optionNames()) {
        const OptionInfo* option = findOption(name);
        if (option->command != CliCommand::Window || (option->goesWith & bit(command)))
            continue;
        problem = command == CliCommand::Window
                      ? QStringLiteral("--%1 goes with a command such as --export").arg(name)
                      : QStringLiteral("--%1 does not go with %2").arg(name, commandName(command));
        return false;
    }
    return true;
}

// The values of the options that are not commands.
bool readValues(const QCommandLineParser& parser, CommandLine& line, QString& problem)
{
    const auto value = [&](const char* name) { return parser.value(QLatin1String(name)); };
    const auto isSet = [&](const char* name) { return parser.isSet(QLatin1String(name)); };
    for (const QString& text : parser.values(QStringLiteral("at"))) {
        const std::optional<double> x = cli::readNumberArgument(text);
        if (!x) {
            problem = QStringLiteral("--at: '%1' is not a number").arg(text);
            return false;
        }
        line.xs.push_back(*x);
    }
    if (isSet("label"))
        line.label = value("label");
    if (!cli::readParameterArguments(parser.values(QStringLiteral("param")),
                                     model::labelVariable(line.label), line.parameters, problem))
        return false;
    if (isSet("angle") && !(line.angle = cli::angleByName(value("angle")))) {
        problem = QStringLiteral("--angle takes rad, deg or grad, not '%1'").arg(value("angle"));
        return false;
    }
    if (isSet("view")) {
        const QStringList parts = value("view").split(QLatin1Char(','));
        const QString ticks = QStringLiteral("1");
        const plot::ViewReading reading =
            parts.size() != 6
                ? plot::ViewReading{std::nullopt, QStringLiteral("six values are needed")}
                : plot::readViewWindow({parts[0], parts[1], parts[2], ticks},
                                       {parts[3], parts[4], parts[5], ticks});
        line.view = reading.view;
        if (!line.view) {
            problem = QStringLiteral("--view: '%1' is not xmin,xmax,xstep,ymin,ymax,ystep: %2")
                          .arg(value("view"), reading.problem);
            return false;
        }
    }
    if (!readPictureValues(parser, line, problem))
        return false;
    if (isSet("colors") && value("colors") != QLatin1String("auto")) {
        problem = QStringLiteral("--colors takes auto, not '%1'").arg(value("colors"));
        return false;
    }
    line.autoColors = isSet("colors");
    line.exactTrig = isSet("exact-trig");
    line.noGrid = isSet("no-grid");
    line.equalScale = isSet("equal-scale");
    line.smooth = isSet("smooth");
    return true;
}

// The command's own value.
bool readCommandValue(const QCommandLineParser& parser, CommandLine& line, QString& problem)
{
    const QString name = commandName(line.command);
    const QString value = name.isEmpty() ? QString() : parser.value(name.mid(2));
    switch (line.command) {
    case CliCommand::Eval:
    case CliCommand::Derivative:
    case CliCommand::Primitive:
        line.formula = value;
        if (value.trimmed().isEmpty())
            problem = QStringLiteral("%1 needs a formula").arg(name);
        else if (line.command == CliCommand::Eval && line.xs.empty())
            problem = QStringLiteral("--eval needs at least one --at X");
        break;
    case CliCommand::Export: {
        line.file = value;
        const std::optional<output::PictureType> type = output::pictureTypeOf(value);
        if (!type)
            problem = QStringLiteral("--export: the file must end in .png, .jpg, .bmp, .pdf or .svg");
        else if (line.picture.transparent && !output::keepsTransparency(*type))
            problem = QStringLiteral("--transparent goes with .png and .svg pictures");
        break;
    }
    case CliCommand::WriteDrawing:
        line.file = value;
        if (!isDrawingFileName(value))
            problem = QStringLiteral("--write-drawing: the file must end in .curvix");
        break;
    case CliCommand::Table: {
        const QStringList parts = value.split(QLatin1Char(','));
        std::optional<plot::TableRange> range;
        if (parts.size() != 3)
            problem = QStringLiteral("three values are needed");
        else
            range = plot::readTableRange(parts[0], parts[1], parts[2], &problem);
        if (range)
            line.tableRange = *range;
        else
            problem = QStringLiteral("--table: '%1' is not FROM,TO,STEP: %2").arg(value, problem);
        break;
    }
    case CliCommand::Area: {
        // A semicolon parts bounds written with decimal commas: 0,5;1,5.
        const QStringList parts = value.split(QLatin1Char(value.contains(u';') ? ';' : ','));
        const bool two = parts.size() == 2;
        const std::optional<double> a = two ? cli::readNumberArgument(parts[0]) : std::nullopt;
        const std::optional<double> b = two ? cli::readNumberArgument(parts[1]) : std::nullopt;
        if (a && b) {
            line.areaFrom = *a;
            line.areaTo = *b;
        } else {
            problem = QStringLiteral("--area: '%1' is not A,B").arg(value);
        }
        break;
    }
    default:
        break;
    }
    return problem.isEmpty();
}

// The drawing files and formulas: which the command takes, and how many.
bool readPositional(const QStringList& arguments, CommandLine& line, QString& problem)
{
    const CliCommand command = line.command;
    const bool listsFormulas = command == CliCommand::Points || command == CliCommand::Table ||
                               command == CliCommand::Area;
    const bool takesFormulas = listsFormulas || (bit(command) & kDrawing);
    const bool takesDrawing = command == CliCommand::Window || (bit(command) & kDrawing);
    for (const QString& argument : arguments) {
        if (takesDrawing && isDrawingFileName(argument)) {
            if (!line.drawingFile.isEmpty()) {
                problem = QStringLiteral("one drawing at a time, not %1 and %2")
                              .arg(line.drawingFile, argument);
                return false;
            }
            line.drawingFile = argument;
        } else if (takesFormulas) {
            line.formulas << argument;
        } else {
            problem = command == CliCommand::Window
                          ? QStringLiteral("'%1' is not a drawing file (.curvix); formulas go with a "
                                           "command such as --export")
                                .arg(argument)
                          : QStringLiteral("unexpected argument '%1'").arg(argument);
            return false;
        }
    }
    if (line.formulas.isEmpty() && listsFormulas) {
        problem = QStringLiteral("%1 needs a formula").arg(commandName(command));
        return false;
    }
    if (command == CliCommand::Area && line.formulas.size() > 1) {
        problem = QStringLiteral("--area takes one formula");
        return false;
    }
    return true;
}

} // namespace

CommandLineReading readCommandLine(const QStringList& args)
{
    CommandLineReading reading;
    QString& problem = reading.problem;
    // The start-up benchmark's switch is no option of the parser, so the help leaves it out.
    QStringList rest = args;
    const bool quitAfterFirstFrame = rest.removeAll(QStringLiteral("--quit-after-first-frame")) > 0;
    const std::optional<QStringList> ordered = optionsFirst(rest, problem);
    if (!ordered)
        return reading;
    QCommandLineParser parser;
    forEachOption([&](const OptionInfo& option) {
        QStringList names{QLatin1String(option.name)};
        if (option.command == CliCommand::Help)
            names.prepend(QStringLiteral("h"));
        parser.addOption(QCommandLineOption(names, QLatin1String(option.description),
                                            QLatin1String(option.valueName)));
    });
    if (!parser.parse(*ordered)) {
        problem = parser.errorText();
        return reading;
    }
    CommandLine line;
    const std::optional<CliCommand> command = commandOf(parser, problem);
    if (!command)
        return reading;
    line.command = *command;
    if (line.command == CliCommand::Help || line.command == CliCommand::Version) {
        reading.commandLine = line;
        return reading;
    }
    if (optionsFit(parser, line.command, problem) && readValues(parser, line, problem) &&
        readCommandValue(parser, line, problem) &&
        readPositional(parser.positionalArguments(), line, problem)) {
        line.quitAfterFirstFrame = quitAfterFirstFrame;
        reading.commandLine = std::move(line);
    }
    return reading;
}

QString helpText()
{
    QString text = QStringLiteral(
        "Usage: curvix [DRAWING.curvix]\n"
        "  or:  curvix --eval FORMULA --at X [--at X]... [--label f(t)] [--angle UNIT]\n"
        "                [--param a=2]...\n"
        "  or:  curvix --derivative FORMULA [--label f(t)] [--angle UNIT] [--param a=2]...\n"
        "  or:  curvix --primitive FORMULA [--label f(t)] [--angle UNIT] [--param a=2]...\n"
        "  or:  curvix --export FILE [OPTION]... [DRAWING.curvix] [FORMULA]...\n"
        "  or:  curvix --write-drawing FILE.curvix [OPTION]... [DRAWING.curvix] [FORMULA]...\n"
        "  or:  curvix --points [--view V] [--angle UNIT] [--param a=2]... FORMULA...\n"
        "  or:  curvix --table FROM,TO,STEP [--angle UNIT] [--param a=2]... FORMULA...\n"
        "  or:  curvix --area A,B [--angle UNIT] [--param a=2]... FORMULA\n"
        "Draw the graphs of functions for school mathematics. Without a command, open the\n"
        "main window, with the drawing when one is given. The commands need no display.\n");
    const auto list = [&text](const char* heading, const OptionInfo* begin, const OptionInfo* end) {
        text += QLatin1String("\n") + QLatin1String(heading) + QLatin1String(":\n");
        for (const OptionInfo* option = begin; option != end; ++option) {
            QString names = option->command == CliCommand::Help ? QStringLiteral("  -h, --")
                                                              : QStringLiteral("  --");
            names += QLatin1String(option->name);
            if (*option->valueName)
                names += QLatin1Char('=') + QLatin1String(option->valueName);
            text += names.leftJustified(25) + QLatin1Char(' ');
            text += QLatin1String(option->description) + QLatin1Char('\n');
        }
    };
    list("Commands", std::begin(kCommands), std::end(kCommands));
    list("Options", std::begin(kOptions), std::end(kOptions));
    text += QStringLiteral(
        "\nAn option's value follows it or an equals sign: --at 2 or --at=2. Formulas are\n"
        "written as in the window's function box; numbers take a decimal point or comma,\n"
        "and the view, the table's range, --at and --param take 2p for 2 pi.\n"
        "\n"
        "A formula may use parameters besides its variable, a*sin(b*x) or ax^2+bx+c, each\n"
        "given a value with --param; --param also sets a parameter of a loaded drawing.\n"
        "\n"
        "--points prints each formula's zeros, minima, maxima and inflection points in the\n"
        "view, then where each two meet: one line KIND<tab>X<tab>Y each, KIND one of zero,\n"
        "minimum, maximum, inflection or intersection, numbers to 10 significant digits.\n"
        "\n"
        "--table prints a column of values for each formula, tab-separated, and a dash\n"
        "where the formula is not defined.\n"
        "\n"
        "--area prints the integral of the formula from A to B and the area between its\n"
        "curve and the x axis, tab-separated, to 10 significant digits; the two differ where\n"
        "the curve crosses the axis. A divergent integral, or a formula not defined on the\n"
        "whole interval, is told on the standard error with the exit status 1.\n"
        "\n"
        "Exit status:\n"
        "  0  success\n"
        "  1  a formula does not compile, a file cannot be read or written, or --area\n"
        "     has no number\n"
        "  2  arguments that make no sense\n");
    return text;
}

QString versionText()
{
    return QStringLiteral("curvix " CURVIX_VERSION "\n");
}

} // namespace curvix::app
