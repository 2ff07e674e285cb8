#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The headless command line, run as a separate process the way a script would run it.
class TestCli : public QObject {
    Q_OBJECT

private slots:
    void evaluates_data();
    void evaluates();
    void rejects_data();
    void rejects();
    void exports_data();
    void exports();
    void exportsVectorFiles_data();
    void exportsVectorFiles();
    void exportRefuses_data();
    void exportRefuses();
    void symbolic_data();
    void symbolic();

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

void TestCli::evaluates_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("out");

    QTest::newRow("polynomial at two points")
        << QStringList{"--eval", "2x^2+1", "--at", "1", "--at", "0.5"} << "3\n1.5\n";
    QTest::newRow("full precision") << QStringList{"--eval", "1/3", "--at", "0"}
                                    << "0.3333333333333333\n";
    QTest::newRow("pi is the program's 15-digit pi")
        << QStringList{"--eval", "¶", "--at", "0"} << "3.14159265358979\n";
    QTest::newRow("decimal comma typed") << QStringList{"--eval", "2,5x", "--at", "2"} << "5\n";
    QTest::newRow("outside the domain")
        << QStringList{"--eval", "sqrt(x)", "--at", "-1", "--at", "4"} << "nan\n2\n";
    QTest::newRow("pole") << QStringList{"--eval", "1/x", "--at", "0", "--at", "-0"}
                          << "inf\n-inf\n";
    QTest::newRow("label names the variable")
        << QStringList{"--eval", "t^2", "--label", "f(t)", "--at", "-3"} << "9\n";
    QTest::newRow("negative value after --at") << QStringList{"--eval", "-x^2", "--at", "-2"}
                                                << "-4\n";
}

void TestCli::evaluates()
{
    QFETCH(QStringList, args);
    QFETCH(QString, out);
    const Run run = runCurvix(args);
    QCOMPARE(run.err, QString());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.out, out);
}

void TestCli::rejects_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("errContains");

    QTest::newRow("compile error") << QStringList{"--eval", "2x+", "--at", "1"} << 1 << "position";
    QTest::newRow("unknown name") << QStringList{"--eval", "xsin(x)", "--at", "1"} << 1
                                  << "xsin";
    QTest::newRow("wrong variable") << QStringList{"--eval", "t", "--at", "1"} << 1 << "'t'";
    QTest::newRow("no --at") << QStringList{"--eval", "x"} << 2 << "usage";
    QTest::newRow("bad number") << QStringList{"--eval", "x", "--at", "abc"} << 2 << "abc";
    QTest::newRow("missing value") << QStringList{"--eval", "x", "--at"} << 2 << "usage";
    QTest::newRow("unknown command") << QStringList{"--frobnicate"} << 2 << "usage";
    QTest::newRow("unknown option") << QStringList{"--eval", "x", "--at", "1", "--zap", "1"}
                                    << 2 << "--zap";
}

void TestCli::rejects()
{
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, errContains);
    const Run run = runCurvix(args);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2(run.err.contains(errContains), qPrintable(run.err));
    QCOMPARE(run.out, QString());
}

void TestCli::exports_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("view");     // options that set up the plot
    QTest::addColumn<QStringList>("formulas");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<bool>("curves"); // whether anything beyond the bare axes is drawn

    QTest::newRow("png, defaults") << "a.png" << QStringList{} << QStringList{"sin(x)", "x^2-2"}
                                   << QSize(800, 600) << 0 << true;
    QTest::newRow("bmp with a size") << "b.bmp" << QStringList{"--size", "320x200"}
                                     << QStringList{"x"} << QSize(320, 200) << 0 << true;
    QTest::newRow("view with pi")
        << "c.png" << QStringList{"--exact-trig", "--view", "-2p,2p,0.5p,-2,2,1"}
        << QStringList{"tan(x)"} << QSize(800, 600) << 0 << true;
    QTest::newRow("no formula at all") << "e.png" << QStringList{} << QStringList{}
                                       << QSize(800, 600) << 0 << false;
    QTest::newRow("one bad formula, the rest drawn")
        << "f.png" << QStringList{} << QStringList{"2x+", "x^2"} << QSize(800, 600) << 1 << true;
    QTest::newRow("only a bad formula") << "g.png" << QStringList{} << QStringList{"2x+"}
                                        << QSize(800, 600) << 1 << false;
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

void TestCli::exportsVectorFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("starts");
    QTest::addColumn<QByteArray>("contains");
    QTest::newRow("pdf") << "v.pdf" << QByteArray("%PDF") << QByteArray("/Page");
    QTest::newRow("svg") << "v.svg" << QByteArray("<?xml") << QByteArray("<svg");
}

void TestCli::exportsVectorFiles()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, starts);
    QFETCH(QByteArray, contains);
    const QString path = m_dir.filePath(file);
    const Run run = runCurvix({"--export", path, "--size", "300x200", "sin(x)"});
    QCOMPARE(run.exitCode, 0);
    QFile written(path);
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QByteArray bytes = written.readAll();
    QVERIFY(bytes.startsWith(starts));
    QVERIFY(bytes.contains(contains));
}

void TestCli::exportRefuses_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("errContains");
    QTest::newRow("no file") << QStringList{"--export"} << "file";
    QTest::newRow("unknown kind of file") << QStringList{"--export", "x.jpg", "x"} << ".png";
    QTest::newRow("bad size") << QStringList{"--export", "x.png", "--size", "0x5", "x"} << "0x5";
    QTest::newRow("min not below max")
        << QStringList{"--export", "x.png", "--view", "5,-5,1,-5,5,1", "x"} << "view";
    QTest::newRow("zero step") << QStringList{"--export", "x.png", "--view", "-5,5,0,-5,5,1", "x"}
                               << "view";
    QTest::newRow("too few view values") << QStringList{"--export", "x.png", "--view", "1,2"} << "view";
    QTest::newRow("bad angle") << QStringList{"--export", "x.png", "--angle", "turns"} << "--angle";
    QTest::newRow("too narrow far from zero")
        << QStringList{"--export", "x.png", "--view", "100000000000000000,100000000000000200,1,-5,5,1", "x"}
        << "view";
    QTest::newRow("unknown kind of vector file") << QStringList{"--export", "x.eps", "x"} << ".pdf";
    QTest::newRow("exact trig in degrees")
        << QStringList{"--export", "x.png", "--angle", "deg", "--exact-trig"} << "radians";
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

void TestCli::symbolic_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err");

    QTest::newRow("derivative") << QStringList{"--derivative", "x^3+2x^2"} << 0 << "3x^2+4x\n"
                                << "";
    QTest::newRow("primitive keeps the decimal point")
        << QStringList{"--primitive", "2,5x"} << 0 << "1.25x^2\n" << "";
    QTest::newRow("pi sign") << QStringList{"--derivative", "¶x^2"} << 0 << "2¶x\n" << "";
    QTest::newRow("label names the variable")
        << QStringList{"--primitive", "t^2", "--label", "g(t)"} << 0 << "t^3/3\n" << "";
    QTest::newRow("derivative fails")
        << QStringList{"--derivative", "2x+"} << 1 << "" << "Error in derivative calculation\n";
    QTest::newRow("no elementary primitive: two messages")
        << QStringList{"--primitive", "exp(x^2)"} << 1 << ""
        << "Error in calculation of primitive function\nError in primitive calculation\n";
    QTest::newRow("too long") << QStringList{"--derivative", QString(1001, u'x')} << 1 << ""
                              << "too long expression\n";
    QTest::newRow("no formula") << QStringList{"--primitive"} << 2 << "" << "usage";
    QTest::newRow("unknown option") << QStringList{"--derivative", "x", "--zap", "1"} << 2 << ""
                                    << "--zap";
}

void TestCli::symbolic()
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

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
