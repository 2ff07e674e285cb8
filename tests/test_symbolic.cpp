#include "eval/symbolic.h"
#include "tests/symbolic_problems.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QTest>

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <future>
#include <iostream>
#include <thread>

using namespace curvix::eval;
namespace problems = curvix::symbolic_problems;

// The symbolic derivative and primitive: the requests the procedures build, how they read
// answers and report failures, and the library's answers to school problems.
class TestSymbolic : public QObject {
    Q_OBJECT

private slots:
    void schoolProblems_data();
    void schoolProblems();
    void readableAnswers_data();
    void readableAnswers();
    void throughTheLibrary_data();
    void throughTheLibrary();
    void formulaFillingTheBuffer();
    void libraryRequests_data();
    void libraryRequests();
    void linking_data();
    void linking();
    void timeOrCancelStopsTheComputation_data();
    void timeOrCancelStopsTheComputation();
    void casPrintsNothing();
};

namespace {

struct Messages {
    QStringList list;
    Report report() { return [this](const QString& m) { list << m; }; }
};

const QStringList kPrimitiveFailure{QStringLiteral("Error in calculation of primitive function"),
                                    QStringLiteral("Error in primitive calculation")};
const QStringList kDerivativeFailure{QStringLiteral("Error in derivative calculation")};

// A library that records the request and answers with a fixed result.
struct FakeLibrary {
    QByteArray answer; // copied into the result buffer as it is (NUL included where given)
    std::int32_t rc = 1;
    QByteArray request;
    int calls = 0;

    SymbolicOptions options()
    {
        SymbolicOptions o;
        o.library = [this](const char* req, char* result, std::int32_t size) {
            ++calls;
            request = QByteArray(req);
            std::memcpy(result, answer.constData(), std::size_t(std::min<qsizetype>(answer.size(), size)));
            return rc;
        };
        return o;
    }
};

QString calculate(const QByteArray& request, std::int32_t* rc, std::int32_t size = kSymbolicResultSize)
{
    QByteArray buffer = request.leftJustified(kSymbolicRequestLength, ' ', true);
    QByteArray result(kSymbolicResultSize, 'z');
    *rc = symbolic_calculate(buffer.constData(), result.data(), size);
    return QString::fromLatin1(result.constData(), qsizetype(std::strlen(result.constData())));
}

} // namespace

void TestSymbolic::schoolProblems_data()
{
    QTest::addColumn<int>("index");
    int i = 0;
    for (const problems::Problem& p : problems::allProblems()) {
        QTest::addRow("%s %s", qPrintable(problems::kindName(p.kind)), qPrintable(p.formula)) << i;
        ++i;
    }
    QVERIFY(i >= 150);
}

void TestSymbolic::schoolProblems()
{
    QFETCH(int, index);
    const problems::Problem& p = problems::allProblems()[std::size_t(index)];
    const QString& formula = p.formula;
    const QString variable = problems::variableOf(p);
    Messages messages;
    const QString answer = p.kind == problems::Kind::Derivative
                               ? SymbolicDerivative(formula, variable, 1, messages.report())
                               : SymbolicPrimitive(formula, variable, messages.report());
    if (p.kind == problems::Kind::NoElementaryPrimitive && answer.isEmpty()) {
        QCOMPARE(messages.list, kPrimitiveFailure);
        return;
    }
    QVERIFY2(!answer.isEmpty(), qPrintable(messages.list.join(u'|')));
    QCOMPARE(messages.list, QStringList());
    const QString problem = problems::checkAnswer(p, answer);
    QVERIFY2(problem.isEmpty(), qPrintable(answer + QStringLiteral(": ") + problem));
    // No exponent notation, never a "pi" left (the box shows the pi sign), no comma.
    QVERIFY2(!answer.contains(QRegularExpression(QStringLiteral("[0-9.]e[-+]?[0-9]"))),
             qPrintable(answer));
    QVERIFY2(!answer.contains(QLatin1String("pi")), qPrintable(answer));
    QVERIFY2(!answer.contains(u','), qPrintable(answer));
}

void TestSymbolic::readableAnswers_data()
{
    QTest::addColumn<bool>("derivative");
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("answer");

    const auto row = [](bool derivative) {
        return [derivative](const char* name, const char* formula, const char* answer, const char* v = "x") {
            QTest::newRow(name) << derivative << QString::fromUtf8(formula) << QString::fromUtf8(v)
                                << QString::fromUtf8(answer);
        };
    };
    const auto d = row(true), p = row(false);
    d("terms collected", "x^3+2x^2", "3x^2+4x");
    d("root in a denominator", "sqrt(x)", "1/(2sqrt(x))");
    d("decimal kept as typed", "2,5x", "2.5");
    d("pi glued to its coefficient", "¶x^2", "2¶x");
    d("pi alone", "¶x", "¶");
    d("pi inside and outside", "sin(¶x)", "¶cos(¶x)");
    d("product rule", "x*sin(x)", "sin(x)+x*cos(x)");
    d("quotient with factored denominator", "(x+1)/(x-1)", "-2/(x-1)^2");
    d("exponential of a constant base", "2^x", "2^x*ln(2)");
    d("log10", "log10(x)", "1/(x*ln(10))");
    d("Euler's number", "e^x", "exp(x)");
    d("negative power as a quotient", "1/x^2", "-2/x^3");
    d("cube root", "x^(1/3)", "1/(3x^(2/3))");
    d("label variable", "t^3", "3t^2", "t");
    d("positive term first", "sqrt(1-x^2)", "-x/sqrt(1-x^2)");
    d("sum in an argument collected", "sin(x+x)", "2cos(2x)");
    d("trigonometric identity used", "cos(x)/(1+sin(x))", "-1/(sin(x)+1)");
    p("fraction coefficient", "x^2", "x^3/3");
    p("decimal coefficient", "2,5x", "1.25x^2");
    p("small decimal without exponent", "0.00001x", "0.000005x^2");
    p("pi constant", "¶", "¶x");
    p("by parts", "x*exp(x)", "(x-1)exp(x)");
    p("logarithm with abs", "1/x", "ln(abs(x))");
    p("no half-angle tangent", "1/(1+cos(x))", "sin(x)/(1+cos(x))");
    p("trigonometric power", "sin(x)^2", "x/2-sin(2x)/4");
    p("positive term leads", "tan(x)^2", "tan(x)-x");
}

void TestSymbolic::readableAnswers()
{
    QFETCH(bool, derivative);
    QFETCH(QString, formula);
    QFETCH(QString, variable);
    QFETCH(QString, answer);
    Messages messages;
    const QString got = derivative ? SymbolicDerivative(formula, variable, 1, messages.report())
                                   : SymbolicPrimitive(formula, variable, messages.report());
    QCOMPARE(got, answer);
    QCOMPARE(messages.list, QStringList());
}

void TestSymbolic::throughTheLibrary_data()
{
    QTest::addColumn<bool>("derivative");
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QByteArray>("request"); // empty: the library is not called
    QTest::addColumn<QByteArray>("result");
    QTest::addColumn<int>("rc");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QStringList>("messages");

    const QByteArray one("1\0", 2);
    const QStringList none;
    QTest::newRow("decimal comma") << true << "2,5x" << "x" << QByteArray("DIFF(2.5x,x,1)") << one << 1 << "1" << none;
    QTest::newRow("pi sign") << true << QString::fromUtf8("¶x") << "x" << QByteArray("DIFF(pix,x,1)") << one << 1 << "1" << none;
    QTest::newRow("log10 rewritten") << false << "log10(x^2)+1" << "x"
                                     << QByteArray("INT((ln(x^2)/ln(10))+1,x)") << one << 1 << "1" << none;
    QTest::newRow("label variable") << true << "t^2" << "t" << QByteArray("DIFF(t^2,t,1)") << one << 1 << "1" << none;
    QTest::newRow("no variable is x") << false << "3" << "" << QByteArray("INT(3,x)") << one << 1 << "1" << none;
    const QString long990 = QStringLiteral("x") + QStringLiteral("+x").repeated(494) + u'+';
    QTest::newRow("cut at the buffer's end") << true << long990 << "x"
                                             << (QByteArray("DIFF(") + long990.toLatin1() + ",x,1)").left(1000)
                                             << one << 1 << "1" << none;
    const QString long1001 = QStringLiteral("x+").repeated(500) + u'1';
    QTest::newRow("too long, derivative") << true << long1001 << "x" << QByteArray() << one << 1 << ""
                                          << QStringList{"too long expression"};
    QTest::newRow("too long, primitive") << false << long1001 << "x" << QByteArray() << one << 1 << ""
                                         << QStringList{"too long expression"};

    const QByteArray dx("DIFF(x,x,1)"), ix("INT(x,x)");
    QTest::newRow("decimal point kept") << true << "x" << "x" << dx << QByteArray("2.5\0", 4) << 1 << "2.5" << none;
    QTest::newRow("pi becomes the sign") << true << "x" << "x" << dx << QByteArray("pi*x+2pi\0", 9) << 1
                                         << QString::fromUtf8("¶*x+2¶") << none;
    QTest::newRow("cut at the first NUL") << false << "x" << "x" << ix << QByteArray("x^2\0junk\0", 9) << 7
                                          << "x^2" << none;
    QTest::newRow("no NUL: nothing") << true << "x" << "x" << dx << QByteArray(kSymbolicResultSize, 'x') << 1
                                     << "" << none;
    QTest::newRow("derivative fails") << true << "x" << "x" << dx << QByteArray("\0", 1) << 0 << ""
                                      << kDerivativeFailure;
    QTest::newRow("primitive fails twice") << false << "x" << "x" << ix << QByteArray("x\0", 2) << 0 << ""
                                           << kPrimitiveFailure;
    QTest::newRow("negative is a failure") << false << "x" << "x" << ix << QByteArray("x\0", 2) << -1 << ""
                                           << kPrimitiveFailure;
}

void TestSymbolic::throughTheLibrary()
{
    QFETCH(bool, derivative);
    QFETCH(QString, formula);
    QFETCH(QString, variable);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, result);
    QFETCH(int, rc);
    QFETCH(QString, answer);
    QFETCH(QStringList, messages);
    FakeLibrary library;
    library.answer = result;
    library.rc = rc;
    Messages shown;
    const QString got = derivative
                            ? SymbolicDerivative(formula, variable, 1, shown.report(), library.options())
                            : SymbolicPrimitive(formula, variable, shown.report(), library.options());
    QCOMPARE(library.calls, request.isEmpty() ? 0 : 1);
    if (!request.isEmpty())
        QCOMPARE(library.request, request.leftJustified(kSymbolicRequestLength, ' '));
    QCOMPARE(got, answer);
    QCOMPARE(shown.list, messages);
}

void TestSymbolic::formulaFillingTheBuffer()
{
    // Passes the length test, but its frame no longer fits the request buffer: the library
    // is called with a request without its end and fails.
    const QString formula = QStringLiteral("2x") + QStringLiteral("+x").repeated(499);
    QCOMPARE(formula.size(), kSymbolicRequestLength);
    int calls = 0;
    QByteArray sent;
    SymbolicOptions options;
    options.library = [&](const char* request, char* result, std::int32_t size) {
        ++calls;
        sent = request;
        return symbolic_calculate(request, result, size);
    };
    Messages derivative;
    QCOMPARE(SymbolicDerivative(formula, "x", 1, derivative.report(), options), QString());
    QCOMPARE(derivative.list, kDerivativeFailure);
    QCOMPARE(sent, "DIFF(" + formula.left(kSymbolicRequestLength - 5).toLatin1());
    Messages primitive;
    QCOMPARE(SymbolicPrimitive(formula, "x", primitive.report(), options), QString());
    QCOMPARE(primitive.list, kPrimitiveFailure);
    QCOMPARE(calls, 2);

    // Shorter by its frame, the same sum is computed.
    const QString fits = formula.left(kSymbolicRequestLength - 12);
    Messages ok;
    QCOMPARE(SymbolicDerivative(fits, "x", 1, ok.report(), options), QStringLiteral("495"));
    QCOMPARE(ok.list, QStringList());
}

void TestSymbolic::libraryRequests_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("succeeds");
    QTest::addColumn<QString>("answer");

    QTest::newRow("derivative") << QByteArray("DIFF(x^2,x,1)") << 2000 << true << "2x";
    QTest::newRow("second derivative") << QByteArray("DIFF(x^3,x,2)") << 2000 << true << "6x";
    QTest::newRow("order zero") << QByteArray("DIFF(x^3,x,0)") << 2000 << true << "x^3";
    QTest::newRow("primitive") << QByteArray("INT(x,x)") << 2000 << true << "x^2/2";
    QTest::newRow("pi glued to x") << QByteArray("DIFF(pix^2,x,1)") << 2000 << true << "2pix";
    QTest::newRow("pi glued to a function") << QByteArray("DIFF(pisin(x),x,1)") << 2000 << true
                                            << "picos(x)";
    QTest::newRow("Euler's number glued") << QByteArray("DIFF(ex^2,x,1)") << 2000 << true
                                          << "2x*exp(1)";
    QTest::newRow("answer just fits") << QByteArray("DIFF(x^2,x,1)") << 3 << true << "2x";
    QTest::newRow("answer too long") << QByteArray("DIFF(x^2,x,1)") << 2 << false << "";
    QTest::newRow("unknown name") << QByteArray("DIFF(y^2,x,1)") << 2000 << false << "";
    QTest::newRow("syntax error") << QByteArray("INT(sin(,x)") << 2000 << false << "";
    QTest::newRow("cut request") << QByteArray("DIFF(x^2,x,1") << 2000 << false << "";
    QTest::newRow("numeric integral not built") << QByteArray("APPROX(x,x,0,1)") << 2000 << false
                                                << "";
    QTest::newRow("variable of two letters") << QByteArray("DIFF(x^2,xy,1)") << 2000 << false << "";
    QTest::newRow("order not a number") << QByteArray("DIFF(x^2,x,a)") << 2000 << false << "";
    QTest::newRow("division by zero") << QByteArray("DIFF(1/0,x,1)") << 2000 << false << "";
    QTest::newRow("complex values") << QByteArray("INT(ln(-1)x,x)") << 2000 << false << "";
}

void TestSymbolic::libraryRequests()
{
    QFETCH(QByteArray, request);
    QFETCH(int, size);
    QFETCH(bool, succeeds);
    QFETCH(QString, answer);
    std::int32_t rc = 0;
    QCOMPARE(calculate(request, &rc, size), answer);
    QCOMPARE(rc >= 1, succeeds);
}

void TestSymbolic::linking_data()
{
    QTest::addColumn<bool>("derivative");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("candidate");
    QTest::addColumn<bool>("linked");

    QTest::newRow("derivative as computed") << true << "x^3+2x^2" << "3x^2+4x" << true;
    QTest::newRow("derivative reordered") << true << "x^3+2x^2" << "4x+3x^2" << false;
    QTest::newRow("derivative with a blank") << true << "x^3+2x^2" << "3x^2+4x " << false;
    QTest::newRow("primitive as computed") << false << "2x" << "x^2" << true;
    QTest::newRow("primitive plus a constant") << false << "2x" << "x^2+1" << false;
    QTest::newRow("pi sign") << true << QString::fromUtf8("¶x^2") << QString::fromUtf8("2¶x") << true;
}

void TestSymbolic::linking()
{
    QFETCH(bool, derivative);
    QFETCH(QString, source);
    QFETCH(QString, candidate);
    QFETCH(bool, linked);
    Messages messages;
    const bool got = derivative ? IsDerivativeOf(source, candidate, "x", messages.report())
                                : IsPrimitiveOf(source, candidate, "x", messages.report());
    QCOMPARE(got, linked);
    QCOMPARE(messages.list, QStringList());
}

void TestSymbolic::timeOrCancelStopsTheComputation_data()
{
    QTest::addColumn<bool>("derivative");
    QTest::addColumn<QString>("formula");
    QTest::addColumn<int>("order");
    QTest::addColumn<int>("timeLimit");
    QTest::addColumn<int>("cancelAfter"); // ms after the start; -1: never, 0: before it

    // Thousands of ever longer derivatives: stopped between two of them.
    QTest::newRow("time limit, huge order") << true << "exp(x^2)" << 30000 << 300 << -1;
    // A long search inside the CAS's integrator: stopped by its interrupt flag.
    QTest::newRow("time limit, long primitive") << false << "ln(x)^12x^9exp(x)" << 1 << 300 << -1;
    QTest::newRow("cancelled at once") << true << "exp(x^2)" << 30000 << 20000 << 0;
    QTest::newRow("cancelled while running") << false << "ln(x)^12x^9exp(x)" << 1 << 20000 << 100;
}

void TestSymbolic::timeOrCancelStopsTheComputation()
{
    QFETCH(bool, derivative);
    QFETCH(QString, formula);
    QFETCH(int, order);
    QFETCH(int, timeLimit);
    QFETCH(int, cancelAfter);
    SymbolicOptions options;
    options.timeout = std::chrono::milliseconds(timeLimit);
    const auto cancel = std::make_shared<std::atomic_bool>(cancelAfter == 0);
    options.cancel = cancel;
    Messages messages;
    QElapsedTimer timer;
    timer.start();
    // Off the main thread, as the window runs it.
    auto answer = std::async(std::launch::async, [&] {
        return derivative ? SymbolicDerivative(formula, "x", qint16(order), messages.report(), options)
                          : SymbolicPrimitive(formula, "x", messages.report(), options);
    });
    if (cancelAfter > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(cancelAfter));
        cancel->store(true);
    }
    QCOMPARE(answer.get(), QString());
    const qint64 elapsed = timer.elapsed();
    const QStringList failure = derivative ? kDerivativeFailure : kPrimitiveFailure;
    QCOMPARE(messages.list, cancelAfter >= 0 ? QStringList() : failure);
    QCOMPARE(wasCancelled(options), cancelAfter >= 0);
    const int limit = cancelAfter >= 0 ? cancelAfter : timeLimit;
    QVERIFY2(elapsed < limit + 1200, qPrintable(QString::number(elapsed)));

    // The next request waits for the stopped one to end, then runs normally and promptly.
    timer.restart();
    Messages next;
    QCOMPARE(SymbolicDerivative("x^2", "x", 1, next.report()), QStringLiteral("2x"));
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(next.list, QStringList());
}

void TestSymbolic::casPrintsNothing()
{
    // The integrator warns about abs; nothing of that may reach the terminal.
    QTemporaryFile capture;
    QVERIFY(capture.open());
    std::fflush(nullptr);
    std::cout.flush();
    std::cerr.flush();
    const int savedOut = dup(1);
    const int savedErr = dup(2);
    dup2(capture.handle(), 1);
    dup2(capture.handle(), 2);
    Messages messages;
    const QString abs = SymbolicPrimitive("abs(x)", "x", messages.report());
    const QString none = SymbolicPrimitive("exp(x^2)", "x", messages.report());
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    dup2(savedOut, 1);
    dup2(savedErr, 2);
    close(savedOut);
    close(savedErr);
    QVERIFY(!abs.isEmpty());
    QCOMPARE(none, QString());
    capture.seek(0);
    QCOMPARE(capture.readAll(), QByteArray());
    // Other threads still print: the main thread's std::cerr is not swallowed.
    QTemporaryFile other;
    QVERIFY(other.open());
    const int saved = dup(2);
    dup2(other.handle(), 2);
    std::cerr << "visible" << std::flush;
    dup2(saved, 2);
    close(saved);
    other.seek(0);
    QCOMPARE(other.readAll(), QByteArray("visible"));
}

QTEST_GUILESS_MAIN(TestSymbolic)
#include "test_symbolic.moc"
