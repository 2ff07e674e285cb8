#include <QProcess>
#include <QTest>

// The headless command line, run as a separate process the way a script would run it.
class TestCli : public QObject {
    Q_OBJECT

private slots:
    void evaluates_data();
    void evaluates();
    void rejects_data();
    void rejects();
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

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
