#include "eval/symbolic.h"
#include "tests/symbolic_problems.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

#include <cstring>
#include <future>
#include <thread>

using namespace curvix::eval;
namespace problems = curvix::symbolic_problems;

// The symbolic derivative and primitive: the library's answers to school problems (right,
// and where it matters in readable form), the requests the procedures build, how they read
// answers and report failures, time limit and cancel.
class TestSymbolic : public QObject {
    Q_OBJECT

private slots:
    void schoolProblems_data();
    void schoolProblems();
    void withParameters_data();
    void withParameters();
    void throughTheLibrary_data();
    void throughTheLibrary();
    void libraryRequests_data();
    void libraryRequests();
    void linking_data();
    void linking();
    void timeOrCancelStopsTheComputation_data();
    void timeOrCancelStopsTheComputation();
};

namespace {

struct Messages {
    QStringList list;
    Report report() { return [this](const QString& m) { list << m; }; }
};

const QStringList kPrimitiveFailure{QStringLiteral("Error in calculation of primitive function"),
                                    QStringLiteral("Error in primitive calculation")};
const QStringList kDerivativeFailure{QStringLiteral("Error in derivative calculation")};

} // namespace

void TestSymbolic::schoolProblems_data()
{
    QTest::addColumn<int>("index");
    int i = 0;
    for (const problems::Problem& p : problems::allProblems()) {
        QTest::addRow("%s %s (unit %d)", qPrintable(problems::kindName(p.kind)),
                      qPrintable(p.formula), p.angleUnit)
            << i;
        ++i;
    }
    QVERIFY(i >= 400);
}

void TestSymbolic::schoolProblems()
{
    QFETCH(int, index);
    const problems::Problem& p = problems::allProblems()[std::size_t(index)];
    const QString variable = problems::variableOf(p);
    Messages messages;
    SymbolicOptions options;
    options.angleUnit = p.angleUnit;
    const QString answer =
        p.kind == problems::Kind::Derivative
            ? SymbolicDerivative(p.formula, variable, 1, messages.report(), options)
            : SymbolicPrimitive(p.formula, variable, messages.report(), options);
    if (p.kind == problems::Kind::NoElementaryPrimitive && answer.isEmpty()) {
        QCOMPARE(messages.list, kPrimitiveFailure);
        return;
    }
    QVERIFY2(!answer.isEmpty(), qPrintable(messages.list.join(u'|')));
    QCOMPARE(messages.list, QStringList());
    if (!p.answer.isEmpty())
        QCOMPARE(answer, p.answer); // the readable form: collected, pi as its sign
    const QString problem = problems::checkAnswer(p, answer);
    QVERIFY2(problem.isEmpty(), qPrintable(answer + QStringLiteral(": ") + problem));
    // No longer than the textbook's answer, which must hold itself.
    const QString wrongReference = problems::checkAnswer(p, p.reference);
    QVERIFY2(wrongReference.isEmpty(),
             qPrintable(p.reference + QLatin1String(": ") + wrongReference));
    QVERIFY2(!problems::longerThanReference(p, answer),
             qPrintable(answer + QLatin1String(" > ") + p.reference));
    // No exponent notation, never a "pi" left (the box shows the pi sign), no comma.
    QVERIFY2(!answer.contains(QRegularExpression(QStringLiteral("[0-9.]e[-+]?[0-9]"))),
             qPrintable(answer));
    QVERIFY2(!answer.contains(QLatin1String("pi")), qPrintable(answer));
    QVERIFY2(!answer.contains(u','), qPrintable(answer));
}

// Parameters stay symbols: each answer is checked numerically for several values of them
// (sets "a=0.6,b=1.7;a=-2.3,b=-0.45"), and no longer than a textbook's answer. An empty
// reference: the request must fail.
void TestSymbolic::withParameters_data()
{
    QTest::addColumn<bool>("derivative");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("values");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<QString>("reference");

    const auto row = [](const char* name, bool derivative, const char* formula, const char* values,
                        double from, double to, const char* reference, int unit = 1,
                        const char* label = "f(x)") {
        QTest::newRow(name) << derivative << unit << QString::fromUtf8(formula) << QString(label)
                            << QString(values) << from << to << QString::fromUtf8(reference);
    };
    const char* ab = "a=0.6,b=1.7;a=-2.3,b=-0.45;a=3.1,b=2.9";
    row("d polynomial", true, "a*x^2", "a=0.6;a=-2.3", -3, 3, "2a*x");
    row("d several", true, "a*x^3+b*x+c", "a=0.6,b=1.7,c=2;a=-2.3,b=-0.45,c=-1", -3, 3, "3a*x^2+b");
    row("d sine", true, "a*sin(b*x)", ab, -3, 3, "a*b*cos(b*x)");
    row("d tangent", true, "tan(a*x)", "a=0.3;a=-0.2", -2, 2, "a/cos(a*x)^2");
    row("d exp keeps e and k", true, "a*e^(k*x)", "a=0.6,k=1.3;a=-2.3,k=-0.7", -2, 2, "a*k*exp(k*x)");
    row("d ln", true, "ln(a*x)", "a=0.6;a=2.3", 0.5, 4, "1/x");
    row("d root", true, "sqrt(a*x+b)", "a=0.6,b=1.7;a=2.3,b=0.4", 0.5, 3, "a/(2sqrt(a*x+b))");
    row("d pi and a parameter", true, "¶a*x^2", "a=0.6;a=-2.3", -3, 3, "2¶a*x");
    row("d parameter named x", true, "x*t^2", "x=0.6;x=-2.3", -3, 3, "2x*t", 1, "f(t)");
    row("d degrees", true, "sin(b*x)", "b=0.6;b=-2.3", -200, 200, "¶b*cos(b*x)/180", 2);
    row("p sine", false, "a*sin(b*x)", ab, -3, 3, "-a*cos(b*x)/b");
    row("p exp", false, "e^(k*x)", "k=1.3;k=-0.7", -2, 2, "exp(k*x)/k");
    row("p polynomial", false, "a*x^2+b*x+c", "a=0.6,b=1.7,c=2;a=-2.3,b=-0.45,c=-1", -3, 3,
        "a*x^3/3+b*x^2/2+c*x");
    row("p power", false, "x^a", "a=0.6;a=2.3", 0.5, 3, "x^(a+1)/(a+1)");
    row("p reciprocal", false, "a/x", "a=0.6;a=-2.3", 0.5, 3, "a*ln(abs(x))");
    row("p root", false, "sqrt(a*x+b)", "a=0.6,b=1.7;a=2.3,b=0.4", 0.5, 3,
        "2(a*x+b)^(3/2)/(3a)");
    row("p degrees", false, "cos(b*x)", "b=0.6;b=-2.3", -200, 200, "180sin(b*x)/(¶b)", 2);
    row("undeclared name", true, "a*y*x", "a=0.6", -1, 1, "");
    row("p arctangent", false, "1/(x^2+a^2)", "a=0.6;a=-2.3", -3, 3, "atan(x/a)/a");
    row("p by parts", false, "x*exp(a*x)", "a=0.6;a=-2.3", -3, 3, "(a*x-1)exp(a*x)/a^2");
    row("p square of a sine", false, "sin(a*x)^2", "a=0.6;a=-2.3", -3, 3, "x/2-sin(2a*x)/(4a)");
    row("d power of a parameter", true, "a^x", "a=0.6;a=2.3", -3, 3, "a^x*ln(a)");
    row("d product", true, "e^(a*x)*sin(b*x)", ab, -3, 3, "(a*sin(b*x)+b*cos(b*x))exp(a*x)");
    row("p logarithm keeps abs", false, "x/(x^2+a)", "a=0.6;a=2.3", -3, 3, "ln(abs(x^2+a))/2");
    row("d quotient", true, "(a*x+b)/(c*x+d)", "a=1,b=2,c=3,d=4;a=-1,b=2,c=0.5,d=7", 0.5, 3,
        "(a*d-b*c)/(c*x+d)^2");
    row("p tangent", false, "tan(a*x)", "a=0.3;a=-0.2", -2, 2, "-ln(abs(cos(a*x)))/a");

}

void TestSymbolic::withParameters()
{
    QFETCH(bool, derivative);
    QFETCH(int, unit);
    QFETCH(QString, formula);
    QFETCH(QString, label);
    QFETCH(QString, values);
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(QString, reference);
    std::vector<problems::ParameterValues> sets;
    for (const QString& set : values.split(u';')) {
        problems::ParameterValues named;
        for (const QString& pair : set.split(u','))
            named.emplace_back(pair.section(u'=', 0, 0), pair.section(u'=', 1).toDouble());
        sets.push_back(named);
    }
    SymbolicOptions options;
    options.angleUnit = unit;
    for (const auto& [name, value] : sets.front())
        options.parameters << name;
    const problems::Problem p{derivative ? problems::Kind::Derivative : problems::Kind::Primitive,
                              formula, from, to, reference, label, {}, unit};
    const QString variable = problems::variableOf(p);
    Messages messages;
    const QString answer =
        derivative ? SymbolicDerivative(formula, variable, 1, messages.report(), options)
                   : SymbolicPrimitive(formula, variable, messages.report(), options);
    if (reference.isEmpty()) {
        QCOMPARE(answer, QString());
        QCOMPARE(messages.list, derivative ? kDerivativeFailure : kPrimitiveFailure);
        return;
    }
    QVERIFY2(!answer.isEmpty(), qPrintable(messages.list.join(u'|')));
    for (const problems::ParameterValues& set : sets) {
        QVERIFY2(problems::checkAnswer(p, reference, set).isEmpty(), qPrintable(reference));
        const QString wrong = problems::checkAnswer(p, answer, set);
        QVERIFY2(wrong.isEmpty(), qPrintable(answer + QStringLiteral(": ") + wrong));
    }
    QVERIFY2(!problems::longerThanReference(p, answer), qPrintable(answer + " > " + reference));
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
    QTest::newRow("no variable is x") << false << "3" << "" << QByteArray("INT(3,x)") << one << 1 << "1" << none;
    // The longest formula taken: its frame no longer fits and is cut off.
    const QString longest = QStringLiteral("2x") + QStringLiteral("+x").repeated(499);
    QTest::newRow("cut at the buffer's end") << true << longest << "x"
                                             << ("DIFF(" + longest.toLatin1()).left(kSymbolicRequestLength)
                                             << one << 1 << "1" << none;
    const QString tooLong = longest + u'+';
    QTest::newRow("too long, derivative") << true << tooLong << "x" << QByteArray() << one << 1 << ""
                                          << QStringList{"too long expression"};
    QTest::newRow("too long, primitive") << false << tooLong << "x" << QByteArray() << one << 1 << ""
                                         << QStringList{"too long expression"};

    const QByteArray dx("DIFF(x,x,1)"), ix("INT(x,x)");
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
    // A library that records the request and answers with the row's result as it is.
    int calls = 0;
    QByteArray sent;
    SymbolicOptions options;
    options.library = [&](const char* req, char* out, std::int32_t size) {
        ++calls;
        sent = req;
        std::memcpy(out, result.constData(), std::size_t(std::min<qsizetype>(result.size(), size)));
        return std::int32_t(rc);
    };
    Messages shown;
    const QString got = derivative ? SymbolicDerivative(formula, variable, 1, shown.report(), options)
                                   : SymbolicPrimitive(formula, variable, shown.report(), options);
    QCOMPARE(calls, request.isEmpty() ? 0 : 1);
    if (!request.isEmpty())
        QCOMPARE(sent, request.leftJustified(kSymbolicRequestLength, ' '));
    QCOMPARE(got, answer);
    QCOMPARE(shown.list, messages);
}

// The library itself, the requests only it sees: orders, the result's size, malformed requests.
void TestSymbolic::libraryRequests_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("answer"); // empty: the library fails

    const auto row = [](const char* name, const char* request, const char* answer, int size = 2000) {
        QTest::newRow(name) << QByteArray(request) << size << QString::fromLatin1(answer);
    };
    row("second derivative", "DIFF(x^3,x,2)", "6x");
    row("order zero", "DIFF(x^3,x,0)", "x^3");
    row("answer just fits", "DIFF(x^2,x,1)", "2x", 3);
    row("answer too long", "DIFF(x^2,x,1)", "", 2);
    row("unknown name", "DIFF(y^2,x,1)", "");
    row("syntax error", "INT(sin(,x)", "");
    row("cut request", "DIFF(x^2,x,1", "");
    row("numeric integral not built", "APPROX(x,x,0,1)", "");
    row("variable of two letters", "DIFF(x^2,xy,1)", "");
    row("order not a number", "DIFF(x^2,x,a)", "");
    row("division by zero", "DIFF(1/0,x,1)", "");
    row("complex values", "INT(ln(-1)x,x)", "");
}

void TestSymbolic::libraryRequests()
{
    QFETCH(QByteArray, request);
    QFETCH(int, size);
    QFETCH(QString, answer);
    const QByteArray padded = request.leftJustified(kSymbolicRequestLength, ' ', true);
    QByteArray result(kSymbolicResultSize, 'z');
    const std::int32_t rc = symbolic_calculate(padded.constData(), result.data(), size);
    QCOMPARE(rc >= 1, !answer.isEmpty());
    QCOMPARE(QString::fromLatin1(result.constData()), answer); // up to the NUL, also on failure
}

void TestSymbolic::linking_data()
{
    QTest::addColumn<bool>("derivative");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("candidate");
    QTest::addColumn<bool>("linked");

    QTest::newRow("derivative as computed") << true << "x^3+2x^2" << "3x^2+4x" << true;
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

QTEST_GUILESS_MAIN(TestSymbolic)
#include "test_symbolic.moc"
