#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

// The command line, run as a separate process the way a script would run it.
class TestCli : public QObject {
    Q_OBJECT

private slots:
    void commands_data();
    void commands();
    void exports_data();
    void exports();
    void equalScaleDrawsAtFortyFiveDegrees();
    void drawingFiles();

private:
    QTemporaryDir m_dir;
};

namespace {

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};

// How a row runs beyond its arguments.
struct Setting {
    bool withDisplay = true;  // also with a display (without one it always runs)
    bool stdoutFull = false;  // standard output to /dev/full
    QStringList environment = {}; // NAME=value over the test's own
};

Run runCurvix(const QStringList& args,
              const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment(),
              const QString& workingDir = QString(), bool stdoutFull = false)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingDir);
    if (stdoutFull)
        process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(CURVIX_EXE), args);
    Run run;
    if (!process.waitForFinished(30000))
        return run;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

QRegularExpression exact(const QString& text)
{
    return QRegularExpression(
        QRegularExpression::anchoredPattern(QRegularExpression::escape(text)));
}

QRegularExpression pattern(const char* text)
{
    return QRegularExpression(QString::fromUtf8(text),
                              QRegularExpression::DotMatchesEverythingOption);
}

// A refused argument: one line that says why, then the hint.
QRegularExpression usage(const char* why)
{
    const QString line = QRegularExpression::escape(QString::fromUtf8(why));
    return QRegularExpression(
        QStringLiteral("\\Acurvix: [^\\n]*%1[^\\n]*\\nTry 'curvix --help' for more information.\\n\\z")
            .arg(line));
}

// A file that opens, to ask the window for.
const char* const kFixture = "empty.curvix";

} // namespace

Q_DECLARE_METATYPE(Setting)

namespace {

// Each row runs with a display and, as a script on a server would, without one.
void row(const char* name, const QStringList& args, int exitCode, const QRegularExpression& out,
         const QRegularExpression& err, const Setting& setting = {})
{
    for (const bool display : {true, false}) {
        if (display && !setting.withDisplay)
            continue;
        QTest::addRow("%s, %s", name, display ? "display" : "no display")
            << args << display << setting << exitCode << out << err;
    }
}

const QRegularExpression none = exact(QString());

QRegularExpression value(const char* text)
{
    return exact(QString::fromUtf8(text));
}

// What the commands print.
void answerRows()
{
    row("version", {"--version"}, 0, pattern("\\Acurvix \\d+\\.\\d+\\.\\d+\\n\\z"), none);
    row("help", {"--help"}, 0, pattern("\\AUsage: curvix .*\\n  --eval=FORMULA +\\w.*\\n  --version +\\w"), none);
    row("help, short", {"-h"}, 0, pattern("\\AUsage: curvix "), none);
    row("value after an equals sign", {"--eval=x^2", "--at=3", "--at=-1"}, 0, value("9\n1\n"), none);
    row("decimal comma after --at", {"--eval", "2x", "--at", "0,5", "--at", "-1,25"}, 0, value("1\n-2.5\n"), none);
    row("pi after --at, as the range boxes read it", {"--eval", "x", "--at", "2p"}, 0, value("6.28318530717958\n"), none);
    row("formulas after the options and before them", {"-x", "--points", "--view=-3,3,1,-3,3,1", "x-1"}, 0,
        value("zero\t0\t0\nzero\t1\t0\nintersection\t0.5\t-0.5\n"), none);

    row("polynomial at two points", {"--eval", "2x^2+1", "--at", "1", "--at", "0.5"}, 0, value("3\n1.5\n"), none);
    row("full precision", {"--eval", "1/3", "--at", "0"}, 0, value("0.3333333333333333\n"), none);
    row("decimal comma in the formula", {"--eval", "2,5x", "--at", "2"}, 0, value("5\n"), none);
    row("nan and infinities", {"--eval", "sqrt(x)+1/x", "--at", "-1", "--at", "0", "--at", "-0"}, 0,
        value("nan\ninf\n-inf\n"), none);
    row("label names the variable", {"--eval", "t^2", "--label", "f(t)", "--at", "-3"}, 0, value("9\n"), none);
    row("compile error", {"--eval", "2x+", "--at", "1"}, 1, none, value("Unexpected end of formula at position 4\n"));
    row("degrees", {"--eval", "sin(x)+asin(x/90)", "--angle", "deg", "--at", "90", "--at", "180"}, 0,
        value("91\nnan\n"), none);
    row("gradians", {"--eval", "cos(x)", "--angle", "grad", "--at", "200"}, 0, value("-1\n"), none);
    row("a derivative in degrees", {"--derivative", "sin(x)", "--angle", "deg"}, 0, value("¶cos(x)/180\n"), none);
    row("primitive in the label's variable", {"--primitive", "t^2", "--label", "g(t)"}, 0, value("t^3/3\n"), none);
    // The integrator warns about abs: nothing of that may reach the terminal.
    row("the library prints nothing", {"--primitive", "abs(x)"}, 0, value("x*abs(x)/2\n"), none);
    row("derivative fails", {"--derivative", "2x+"}, 1, none, value("Error in derivative calculation\n"));
    row("no elementary primitive: one message", {"--primitive", "exp(x^2)"}, 1, none,
        value("Error in calculation of primitive function\n"));
    row("points of a curve, then where two meet", {"--points", "x^3-3x", "x"}, 0,
        value("zero\t-1.732050808\t0\nmaximum\t-1\t2\nzero\t0\t0\ninflection\t0\t0\nminimum\t1\t-2\n"
              "zero\t1.732050808\t0\nzero\t0\t0\nintersection\t-2\t-2\nintersection\t0\t0\nintersection\t2\t2\n"),
        none);
    row("no zeros at the poles of tan", {"--points", "--view", "-2p,2p,1,-3,3,1", "tan(x)"}, 0,
        value("zero\t-3.141592654\t0\ninflection\t-3.141592654\t0\ninflection\t0\t0\nzero\t0\t0\n"
              "inflection\t3.141592654\t0\nzero\t3.141592654\t0\n"),
        none);
    row("points in degrees", {"--points", "--angle", "deg", "--view", "-10,200,10,-2,2,1", "cos(x)"}, 0,
        value("maximum\t0\t1\nzero\t90\t0\ninflection\t90\t0\nminimum\t180\t-1\n"), none);
    row("points of a bad formula", {"--points", "x", "2x+"}, 1, none,
        value("Unexpected end of formula at position 4\n"));
    row("parameters glued to the variable", {"--eval", "ax^2+bx", "--param", "a=2", "--param=b=-1", "--at", "3"}, 0,
        value("15\n"), none);
    row("parameters with a comma and pi", {"--table", "0,1,1", "2ab", "--param", "a=0,5", "--param", "b=p"}, 0,
        value("x\t2ab\n0\t3.14159265358979\n1\t3.14159265358979\n"), none);
    row("points with a parameter", {"--points", "--view=-3,3,1,-5,5,1", "x^2-a", "--param", "a=4"}, 0,
        value("zero\t-2\t0\nminimum\t0\t-4\nzero\t2\t0\n"), none);
    row("table backwards in steps of pi", {"--table", "p,-p,p", "x/pi", "sqrt(x)"}, 0,
        value("x\tx/pi\tsqrt(x)\n3.14159265358979\t0.999999999999999\t1.7724538509055152\n0\t0\t0\n"
              "-3.14159265358979\t-0.999999999999999\t\u2014\n"),
        none);
    row("area where the curve crosses the axis", {"--area", "-2,2", "x^2-1"}, 0, value("1.333333333\t4\n"), none);
    row("area backwards over pi, in degrees", {"--area", "180,0", "--angle", "deg", "sin(x)"}, 0,
        value("-114.591559\t114.591559\n"), none);
    row("area with decimal commas", {"--area", "0,5;1,5", "2x"}, 0, value("2\t2\n"), none);
    row("area between calculated bounds", {"--area", "-p/2,pi/2", "cos(x)"}, 0, value("2\t2\n"), none);
    row("area with a parameter not given", {"--area", "0,1", "a*x"}, 1, none,
        value("curvix: 'a*x' uses a, which is not a parameter; give it a value with --param a=VALUE\n"));
    row("area of a divergent integral", {"--area", "-1,1", "1/x"}, 1, none,
        value("The integral diverges on [−1, 1].\n"));
    row("area where the formula is undefined", {"--area", "-1,2", "ln(x)"}, 1, none,
        value("The function is not defined on the whole interval [−1, 2].\n"));
    row("area of a bad formula", {"--area", "0,1", "2x+"}, 1, none, value("Unexpected end of formula at position 4\n"));
}

// Arguments that make no sense: nothing runs.
void refusalRows()
{
    row("unknown option", {"--frobnicate"}, 2, none, usage("Unknown option 'frobnicate'"));
    row("a value missing", {"--eval", "x", "--at"}, 2, none, usage("--at needs a value"));
    row("an option for the next value", {"--export", "--size", "3x3", "x"}, 2, none, usage("--export needs a value"));
    row("a switch with a value", {"--export=x.png", "--no-grid=yes", "x"}, 2, none, usage("'--no-grid'"));
    row("no --at", {"--eval", "x"}, 2, none, usage("--at"));
    row("not a number", {"--eval", "x", "--at", "abc"}, 2, none, usage("'abc' is not a number"));
    row("two commands", {"--eval", "x", "--at", "1", "--points"}, 2, none, usage("one command at a time"));
    row("an option without a command", {"--size", "3x3"}, 2, none, usage("--size goes with a command"));
    row("an option of another command", {"--eval", "x", "--at", "1", "--size", "3x3"}, 2, none,
        usage("--size does not go with --eval"));
    row("a formula for the window", {"sin(x)"}, 2, none, usage("'sin(x)' is not a drawing file"));
    row("a formula for --eval", {"--eval", "x", "--at", "1", "x^2"}, 2, none, usage("'x^2'"));
    row("two drawings", {"a.curvix", "b.curvix"}, 2, none, usage("one drawing at a time"));
    row("no formula", {"--primitive"}, 2, none, usage("--primitive needs a value"));
    row("area needs two bounds", {"--area", "0,1,2", "x"}, 2, none, usage("'0,1,2' is not A,B"));
    row("area of one formula", {"--area", "0,1", "x", "x^2"}, 2, none, usage("one formula"));
    row("table needs three values", {"--table", "0,1", "x"}, 2, none, usage("FROM,TO,STEP"));
    row("unknown kind of picture", {"--export", "x.gif", "x"}, 2, none, usage(".png"));
    row("a drawing not called .curvix", {"--write-drawing", "x.txt", "x"}, 2, none, usage(".curvix"));
    row("bad size", {"--export", "x.png", "--size", "0x5", "x"}, 2, none, usage("'0x5'"));
    row("size in inches", {"--export", "x.png", "--size", "4x3in", "x"}, 2, none, usage("'4x3in'"));
    row("centimetres beyond the largest picture", {"--export", "x.png", "--size", "200x8cm", "x"}, 2, none,
        usage("more than 20000 pixels"));
    row("a resolution for pixels", {"--export", "x.png", "--size", "800x600", "--dpi", "300"}, 2, none,
        usage("--dpi goes with a size in centimetres"));
    row("a resolution too fine", {"--export", "x.png", "--size", "10x8cm", "--dpi", "9000"}, 2, none,
        usage("'9000' is not a resolution"));
    row("no background for a bitmap", {"--export", "x.bmp", "--transparent", "x"}, 2, none,
        usage("--transparent goes with .png and .svg"));
    row("no line width", {"--export", "x.png", "--line-width", "0", "x"}, 2, none, usage("'0' is not a factor"));
    row("line width not a number", {"--export", "x.png", "--line-width", "thick", "x"}, 2, none,
        usage("'thick' is not a factor"));
    row("transparency for a drawing", {"--write-drawing", "x.curvix", "--transparent"}, 2, none,
        usage("--transparent does not go with --write-drawing"));
    row("view min above max", {"--export", "x.png", "--view", "5,-5,1,-5,5,1", "x"}, 2, none, usage("must be below"));
    row("view min equals max", {"--points", "--view", "-5,5,1,2,2,1", "x"}, 2, none, usage("must be below"));
    row("view with a zero step", {"--export", "x.png", "--view", "-5,5,0,-5,5,1", "x"}, 2, none, usage("step"));
    row("too few view values", {"--export", "x.png", "--view", "1,2"}, 2, none, usage("six values"));
    row("bad angle", {"--export", "x.png", "--angle", "turns"}, 2, none, usage("--angle takes"));
    row("unknown colours", {"--export", "x.png", "--colors", "rainbow", "x"}, 2, none, usage("--colors takes"));
    row("a parameter without a value", {"--eval", "a*x", "--at", "1", "--param", "a"}, 2, none, usage("'a' is not NAME=VALUE"));
    row("the variable as a parameter", {"--eval", "t", "--label", "f(t)", "--at", "1", "--param", "t=1"}, 2, none,
        usage("'t' is not a parameter name"));
    row("a parameter twice", {"--table", "0,1,1", "a", "--param", "a=1", "--param", "a=2"}, 2, none, usage("a is given twice"));
    row("exact trig in degrees", {"--export", "x.png", "--angle", "deg", "--exact-trig"}, 2, none, usage("radians"));
}

// Files and a display that are not there.
void failureRows()
{
    row("standard output on a full disk", {"--eval", "x", "--at", "1"}, 1, none,
        pattern("\\Acurvix: [^\\n]*standard output\\n\\z"), {.stdoutFull = true});
    row("a letter not declared", {"--eval", "sin(bx)", "--at", "1"}, 1, none,
        value("curvix: 'sin(bx)' uses b, which is not a parameter; give it a value with --param b=VALUE\n"));
    row("letters not declared in a drawing", {"--write-drawing", "@/p.curvix", "--param", "a=1", "ax+bx^2+c"}, 1, none,
        pattern("\\Acurvix: [^\\n]*uses b, c, [^\\n]*--param b=VALUE --param c=VALUE\\n\\z"));
    row("export to a missing folder", {"--export", "@/missing/x.png", "x"}, 1, none,
        pattern("\\Acurvix: [^\\n]*/missing/x\\.png: [^\\n]+\\n\\z"));
    row("drawing to a read-only place", {"--write-drawing", "/proc/x.curvix", "x"}, 1, none,
        pattern("\\Acurvix: [^\\n]*/proc/x\\.curvix: [^\\n]+\\n\\z"));
    row("a drawing that does not exist", {"@/none.curvix"}, 1, none,
        pattern("\\Acurvix: [^\\n]*/none\\.curvix: No such file[^\\n]*\\n\\z"));
    row("the window without a display", {QStringLiteral("@/") + kFixture}, 1, none,
        pattern("\\Acurvix: no display[^\\n]*\\n\\z"), {.withDisplay = false});
    // A display that is named but cannot be reached: a message, not Qt's abort.
    row("an unreachable display", {}, 1, none, pattern("curvix: the window cannot start: [^\\n]*\\n\\z"),
        {.environment = {"QT_QPA_PLATFORM=xcb", "DISPLAY=:54321"}});
}

} // namespace

void TestCli::commands_data()
{
    QTest::addColumn<QStringList>("args"); // "@" stands for the row's own folder
    QTest::addColumn<bool>("display");
    QTest::addColumn<Setting>("setting");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QRegularExpression>("out");
    QTest::addColumn<QRegularExpression>("err");
    answerRows();
    refusalRows();
    failureRows();
}

void TestCli::commands()
{
    QFETCH(QStringList, args);
    QFETCH(bool, display);
    QFETCH(Setting, setting);
    QFETCH(int, exitCode);
    QFETCH(QRegularExpression, out);
    QFETCH(QRegularExpression, err);

    QTemporaryDir dir;
    QFile fixture(dir.filePath(QLatin1String(kFixture)));
    QVERIFY(fixture.open(QIODevice::WriteOnly));
    fixture.close();
    for (QString& arg : args)
        arg.replace(QLatin1Char('@'), dir.path());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (display) {
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    } else {
        for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
            environment.remove(QLatin1String(name));
    }
    for (const QString& variable : setting.environment)
        environment.insert(variable.section(QLatin1Char('='), 0, 0),
                           variable.section(QLatin1Char('='), 1));

    const Run run = runCurvix(args, environment, dir.path(), setting.stdoutFull);
    QVERIFY2(err.match(run.err).hasMatch(), qPrintable(run.err));
    QVERIFY2(out.match(run.out).hasMatch(), qPrintable(run.out));
    QCOMPARE(run.exitCode, exitCode);
    // What fails leaves nothing behind.
    if (exitCode != 0)
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{kFixture});
}

void TestCli::exports_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("view");     // options that set up the plot
    QTest::addColumn<QStringList>("formulas");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("dpi"); // the resolution the file records
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<bool>("curves"); // whether anything beyond the bare axes is drawn

    const QSize standard(800, 600);
    QTest::newRow("bmp with a size") << "b.bmp" << QStringList{"--size", "320x200"}
                                     << QStringList{"x"} << QSize(320, 200) << 96 << 0 << true;
    QTest::newRow("view with pi")
        << "c.png" << QStringList{"--exact-trig", "--view", "-2p,2p,0.5p,-2,2,1"}
        << QStringList{"tan(x)"} << standard << 96 << 0 << true;
    QTest::newRow("automatic colours") << "d.png" << QStringList{"--colors", "auto"}
                                       << QStringList{"x", "-x"} << standard << 96 << 0 << true;
    QTest::newRow("smooth curves") << "s.png" << QStringList{"--smooth"} << QStringList{"tan(x)"}
                                   << standard << 96 << 0 << true;
    QTest::newRow("one bad formula, the rest drawn")
        << "f.png" << QStringList{} << QStringList{"2x+", "x^2"} << standard << 96 << 1 << true;
    QTest::newRow("centimetres at 300 dpi")
        << "cm.png" << QStringList{"--size", "10x8cm"} << QStringList{"x"} << QSize(1181, 945) << 300 << 0 << true;
    QTest::newRow("centimetres with a comma at 150 dpi")
        << "cm.jpg" << QStringList{"--size", "5,08x2.54cm", "--dpi", "150"} << QStringList{"x^2"}
        << QSize(300, 150) << 150 << 0 << true;
    QTest::newRow("jpeg in pixels") << "j.jpeg" << QStringList{"--size", "400x300"} << QStringList{"sin(x)"}
                                    << QSize(400, 300) << 96 << 0 << true;
    QTest::newRow("transparent") << "t.png" << QStringList{"--transparent"} << QStringList{"x"}
                                 << standard << 96 << 0 << true;
    QTest::newRow("thicker lines") << "w.bmp" << QStringList{"--line-width", "2,5"} << QStringList{"x"}
                                   << standard << 96 << 0 << true;
}

void TestCli::exports()
{
    QFETCH(QString, file);
    QFETCH(QStringList, view);
    QFETCH(QStringList, formulas);
    QFETCH(QSize, size);
    QFETCH(int, dpi);
    QFETCH(int, exitCode);
    QFETCH(bool, curves);
    const QString path = m_dir.filePath(file);
    const Run run = runCurvix(QStringList{"--export", path} + view + formulas);
    QCOMPARE(run.exitCode, exitCode);
    QCOMPARE(run.err.isEmpty(), exitCode == 0);
    QImageReader reader(path);
    const QByteArray format = file.endsWith("jpg") || file.endsWith("jpeg") ? "jpeg" : file.section('.', -1).toLatin1();
    QCOMPARE(reader.format(), format);
    const QImage image = reader.read();
    QCOMPARE(image.size(), size);
    QCOMPARE(qRound(image.dotsPerMeterX() * 0.0254), dpi);
    // Only a transparent picture lets what lies under it show in its corner.
    QCOMPARE(qAlpha(image.pixel(0, 0)) == 0, view.contains("--transparent"));

    // The same view with no formula: the curves are what differs from it.
    const QString bare = m_dir.filePath("bare-" + file);
    QCOMPARE(runCurvix(QStringList{"--export", bare} + view).exitCode, 0);
    QCOMPARE(image != QImage(bare), curves);
}

void TestCli::equalScaleDrawsAtFortyFiveDegrees()
{
    // y = x climbs a pixel a pixel only when a unit is as long on both axes: 3.6 units up
    // and right of the centre of 400x200 then lie at (260, 40), and otherwise at (260, 70).
    const QString path = m_dir.filePath("equal.png");
    QCOMPARE(runCurvix({"--export", path, "--size", "400x200", "--equal-scale", "--no-grid", "x"}).exitCode, 0);
    const QImage image(path);
    QVERIFY(std::min({qGray(image.pixel(260, 39)), qGray(image.pixel(260, 40)), qGray(image.pixel(260, 41))}) < 128);
}

void TestCli::drawingFiles()
{
    // A written drawing draws as the options that described it, and writes itself again alike.
    const QStringList look{"--view", "-200,200,100,-2,2,1", "--angle", "grad", "--no-grid"};
    const QString drawing = m_dir.filePath("waves.curvix");
    const QStringList formulas{"--param", "a=2", "a*sin(x)", "x/100"};
    QCOMPARE(runCurvix(QStringList{"--write-drawing", drawing} + look + formulas).exitCode, 0);
    const QString direct = m_dir.filePath("direct.png"), fromFile = m_dir.filePath("from-file.png");
    QCOMPARE(runCurvix(QStringList{"--export", direct} + look + formulas).exitCode, 0);
    QCOMPARE(runCurvix({"--export", fromFile, drawing}).exitCode, 0);
    QCOMPARE(QImage(fromFile), QImage(direct));
    const QString again = m_dir.filePath("again.curvix");
    QCOMPARE(runCurvix({"--write-drawing", again, drawing}).exitCode, 0);
    QFile a(drawing), b(again);
    QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
    const QByteArray bytes = a.readAll();
    QCOMPARE(b.readAll(), bytes);
    // --param moves a parameter the drawing declares.
    const QString moved = m_dir.filePath("moved.png");
    QCOMPARE(runCurvix({"--export", moved, "--param", "a=1", drawing}).exitCode, 0);
    QVERIFY(QImage(moved) != QImage(direct));

    // A damaged drawing draws nothing, and the message names the file.
    QFile damaged(m_dir.filePath("damaged.curvix"));
    QVERIFY(damaged.open(QIODevice::WriteOnly) && damaged.write(bytes.left(20)) > 0);
    damaged.close();
    const Run run = runCurvix({"--export", m_dir.filePath("no.png"), damaged.fileName()});
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.err.contains("damaged.curvix") && run.err.contains("damaged:"), qPrintable(run.err));
    QVERIFY(!QFile::exists(m_dir.filePath("no.png")));
}

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
