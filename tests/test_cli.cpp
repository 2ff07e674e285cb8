#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

// The headless command line, run as a separate process the way a script would run it.
class TestCli : public QObject {
    Q_OBJECT

private slots:
    void commands_data();
    void commands();
    void exports_data();
    void exports();
    void equalScaleDrawsAtFortyFiveDegrees();
    void exportRefuses_data();
    void exportRefuses();
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

Run runCurvix(const QStringList& args)
{
    QProcess process;
    process.start(QStringLiteral(CURVIX_EXE), args);
    Run run;
    if (!process.waitForFinished(30000))
        return run;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

} // namespace

void TestCli::commands_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err"); // exact on success and exit 1, a fragment for usage errors

    const auto row = [](const char* name, QStringList args, int exitCode, const char* out,
                        const char* err = "") {
        QTest::newRow(name) << args << exitCode << QString::fromUtf8(out) << QString::fromUtf8(err);
    };
    row("polynomial at two points", {"--eval", "2x^2+1", "--at", "1", "--at", "0.5"}, 0, "3\n1.5\n");
    row("full precision", {"--eval", "1/3", "--at", "0"}, 0, "0.3333333333333333\n");
    row("decimal comma typed", {"--eval", "2,5x", "--at", "2"}, 0, "5\n");
    row("nan and infinities", {"--eval", "sqrt(x)+1/x", "--at", "-1", "--at", "0", "--at", "-0"}, 0,
        "nan\ninf\n-inf\n");
    row("label names the variable", {"--eval", "t^2", "--label", "f(t)", "--at", "-3"}, 0, "9\n");
    row("negative value after --at", {"--eval", "-x^2", "--at", "-2"}, 0, "-4\n");
    row("compile error", {"--eval", "2x+", "--at", "1"}, 1, "",
        "Unexpected end of formula at position 4\n");
    row("no --at", {"--eval", "x"}, 2, "", "usage");
    row("bad number", {"--eval", "x", "--at", "abc"}, 2, "", "abc");
    row("degrees", {"--eval", "sin(x)+asin(x/90)", "--angle", "deg", "--at", "90", "--at", "180"},
        0, "91\nnan\n");
    row("gradians", {"--eval", "cos(x)", "--angle", "grad", "--at", "200"}, 0, "-1\n");
    row("a derivative in degrees", {"--derivative", "sin(x)", "--angle", "deg"}, 0, "¶cos(x)/180\n");
    row("unknown command", {"--frobnicate"}, 2, "", "usage");

    row("primitive in the label's variable", {"--primitive", "t^2", "--label", "g(t)"}, 0, "t^3/3\n");
    // The integrator warns about abs: nothing of that may reach the terminal.
    row("the library prints nothing", {"--primitive", "abs(x)"}, 0, "x*abs(x)/2\n");
    row("derivative fails", {"--derivative", "2x+"}, 1, "", "Error in derivative calculation\n");
    row("no elementary primitive: one message", {"--primitive", "exp(x^2)"}, 1, "",
        "Error in calculation of primitive function\n");
    row("no formula", {"--primitive"}, 2, "", "usage");

    row("points of a curve, then where two meet", {"--points", "x^3-3x", "x"}, 0,
        "zero\t-1.732050808\t0\nmaximum\t-1\t2\nzero\t0\t0\ninflection\t0\t0\nminimum\t1\t-2\n"
        "zero\t1.732050808\t0\nzero\t0\t0\nintersection\t-2\t-2\nintersection\t0\t0\nintersection\t2\t2\n");
    row("no zeros at the poles of tan", {"--points", "--view", "-2p,2p,1,-3,3,1", "tan(x)"}, 0,
        "zero\t-3.141592654\t0\ninflection\t-3.141592654\t0\ninflection\t0\t0\nzero\t0\t0\n"
        "inflection\t3.141592654\t0\nzero\t3.141592654\t0\n");
    row("points in degrees", {"--points", "--angle", "deg", "--view", "-10,200,10,-2,2,1", "cos(x)"}, 0,
        "maximum\t0\t1\nzero\t90\t0\ninflection\t90\t0\nminimum\t180\t-1\n");
    row("points of a bad formula", {"--points", "x", "2x+"}, 1, "", "Unexpected end of formula at position 4\n");
    row("table backwards in steps of pi", {"--table", "p,-p,p", "x/pi", "sqrt(x)"}, 0,
        "x\tx/pi\tsqrt(x)\n3.14159265358979\t0.999999999999999\t1.7724538509055152\n0\t0\t0\n"
        "-3.14159265358979\t-0.999999999999999\t\u2014\n");
    row("table needs three values", {"--table", "0,1", "x"}, 2, "", "FROM,TO,STEP");
}

void TestCli::commands()
{
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, out);
    QFETCH(QString, err);
    const Run run = runCurvix(args);
    QCOMPARE(run.exitCode, exitCode);
    QCOMPARE(run.out, out);
    if (exitCode == 2)
        QVERIFY2(run.err.contains(err), qPrintable(run.err));
    else
        QCOMPARE(run.err, err);
}

void TestCli::exports_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("view");     // options that set up the plot
    QTest::addColumn<QStringList>("formulas");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<bool>("curves"); // whether anything beyond the bare axes is drawn

    QTest::newRow("bmp with a size") << "b.bmp" << QStringList{"--size", "320x200"}
                                     << QStringList{"x"} << QSize(320, 200) << 0 << true;
    QTest::newRow("view with pi")
        << "c.png" << QStringList{"--exact-trig", "--view", "-2p,2p,0.5p,-2,2,1"}
        << QStringList{"tan(x)"} << QSize(800, 600) << 0 << true;
    QTest::newRow("automatic colours") << "d.png" << QStringList{"--colors", "auto"}
                                       << QStringList{"x", "-x"} << QSize(800, 600) << 0 << true;
    QTest::newRow("smooth curves") << "s.png" << QStringList{"--smooth"} << QStringList{"tan(x)"}
                                   << QSize(800, 600) << 0 << true;
    QTest::newRow("one bad formula, the rest drawn")
        << "f.png" << QStringList{} << QStringList{"2x+", "x^2"} << QSize(800, 600) << 1 << true;
}

void TestCli::exports()
{
    QFETCH(QString, file);
    QFETCH(QStringList, view);
    QFETCH(QStringList, formulas);
    QFETCH(QSize, size);
    QFETCH(int, exitCode);
    QFETCH(bool, curves);
    const QString path = m_dir.filePath(file);
    const Run run = runCurvix(QStringList{"--export", path} + view + formulas);
    QCOMPARE(run.exitCode, exitCode);
    QCOMPARE(run.err.isEmpty(), exitCode == 0);
    const QImage image(path);
    QCOMPARE(image.size(), size);

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

void TestCli::exportRefuses_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("errContains");
    const auto row = [](const char* name, QStringList args, const char* errContains) {
        QTest::newRow(name) << QStringList{"--export", "x.png"} + args << QString::fromUtf8(errContains);
    };
    QTest::newRow("unknown kind of file") << QStringList{"--export", "x.jpg", "x"} << ".png";
    row("bad size", {"--size", "0x5", "x"}, "0x5");
    row("min above max", {"--view", "5,-5,1,-5,5,1", "x"}, "must be below");
    row("min equals max", {"--view", "-5,5,1,2,2,1", "x"}, "must be below");
    row("zero step", {"--view", "-5,5,0,-5,5,1", "x"}, "step");
    row("too few view values", {"--view", "1,2"}, "view");
    row("bad angle", {"--angle", "turns"}, "--angle");
    row("unknown colours", {"--colors", "rainbow", "x"}, "--colors");
    row("exact trig in degrees", {"--angle", "deg", "--exact-trig"}, "radians");
}

void TestCli::exportRefuses()
{
    QFETCH(QStringList, args);
    QFETCH(QString, errContains);
    QDir::setCurrent(m_dir.path());
    const Run run = runCurvix(args);
    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.err.contains(errContains), qPrintable(run.err));
    QVERIFY(!QFile::exists(m_dir.filePath(QStringLiteral("x.png"))));
}

void TestCli::drawingFiles()
{
    // A written drawing draws as the options that described it, and writes itself again alike.
    const QStringList look{"--view", "-200,200,100,-2,2,1", "--angle", "grad", "--no-grid"};
    const QString drawing = m_dir.filePath("waves.curvix");
    QCOMPARE(runCurvix(QStringList{"--write-drawing", drawing} + look + QStringList{"sin(x)", "x/100"}).exitCode, 0);
    const QString direct = m_dir.filePath("direct.png"), fromFile = m_dir.filePath("from-file.png");
    QCOMPARE(runCurvix(QStringList{"--export", direct} + look + QStringList{"sin(x)", "x/100"}).exitCode, 0);
    QCOMPARE(runCurvix({"--export", fromFile, drawing}).exitCode, 0);
    QCOMPARE(QImage(fromFile), QImage(direct));
    const QString again = m_dir.filePath("again.curvix");
    QCOMPARE(runCurvix({"--write-drawing", again, drawing}).exitCode, 0);
    QFile a(drawing), b(again);
    QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
    const QByteArray bytes = a.readAll();
    QCOMPARE(b.readAll(), bytes);

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
