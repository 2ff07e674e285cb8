#include "eval/evaluator.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "eval/parser.h"

#include <QtTest>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numbers>
#include <random>

using namespace curvix::eval;
using Code = CompileError::Code;

Q_DECLARE_METATYPE(curvix::eval::CompileError::Code)

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

bool sameValue(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || a == b;
}

bool close(double actual, double expected, double tolerance = 1e-13)
{
    if (!std::isfinite(expected) || !std::isfinite(actual))
        return sameValue(actual, expected);
    return std::fabs(actual - expected) <= tolerance * std::max(1.0, std::fabs(expected));
}

// The formula written with the operators as in the text, for comparing structure.
QString shape(const Node& n)
{
    switch (n.kind) {
    case Node::Kind::Number: return n.text;
    case Node::Kind::Variable: return n.text;
    case Node::Kind::Pi: return QStringLiteral("pi");
    case Node::Kind::Negate: return QStringLiteral("(-%1)").arg(shape(n.args[0]));
    case Node::Kind::Call:
        return QStringLiteral("%1[%2](%3)")
            .arg(n.text, QString::fromLatin1(functionName(n.function)), shape(n.args[0]));
    default: break;
    }
    static const char* const ops[] = {"", "", "", "", "+", "-", "*", "/", "^"};
    const QString op = n.implicit ? QStringLiteral("·") : QString::fromLatin1(ops[int(n.kind)]);
    return QStringLiteral("(%1%2%3)").arg(shape(n.args[0]), op, shape(n.args[1]));
}

// A plain walk over the parse tree: the meaning the compiled program must keep.
double reference(const Node& n, double x)
{
    switch (n.kind) {
    case Node::Kind::Number: return n.value;
    case Node::Kind::Variable: return x;
    case Node::Kind::Pi: return std::numbers::pi;
    case Node::Kind::Negate: return -reference(n.args[0], x);
    case Node::Kind::Call: return applyFunction(n.function, reference(n.args[0], x));
    case Node::Kind::Add: return reference(n.args[0], x) + reference(n.args[1], x);
    case Node::Kind::Subtract: return reference(n.args[0], x) - reference(n.args[1], x);
    case Node::Kind::Multiply: return reference(n.args[0], x) * reference(n.args[1], x);
    case Node::Kind::Divide: return reference(n.args[0], x) / reference(n.args[1], x);
    case Node::Kind::Power: return std::pow(reference(n.args[0], x), reference(n.args[1], x));
    }
    return kNaN;
}

std::vector<double> sampleXs()
{
    std::vector<double> xs;
    for (int i = 0; i <= 1200; ++i)
        xs.push_back(-12 + i * 0.02);
    for (double v : {0.0, -0.0, 1.0, -1.0, 2.0, 1e-300, -1e300, 1e200, kInf, -kInf, kNaN})
        xs.push_back(v);
    return xs;
}

QString inLocale(QString cText, const QLocale& locale = QLocale())
{
    return cText.replace(u'.', locale.decimalPoint());
}

} // namespace

class TestEval : public QObject {
    Q_OBJECT

private slots:
    void values_data();
    void values();
    void errors_data();
    void errors();
    void errorMessages_data();
    void errorMessages();
    void treeKeepsTheWrittenStructure_data();
    void treeKeepsTheWrittenStructure();
    void compiledMatchesTreeAndBatchMatchesPointwise_data();
    void compiledMatchesTreeAndBatchMatchesPointwise();
    void batchEdges();
    void evaluatorState();
    void longTextsFinish_data();
    void longTextsFinish();

    void numberText_data();
    void numberText();
    void roundTripTextReadsBack();

    void textHelpers_data();
    void textHelpers();
    void prepareExpressionText_data();
    void prepareExpressionText();
    void compiledFormulaMatchesTheEvaluator_data();
    void compiledFormulaMatchesTheEvaluator();
    void tangentLineText_data();
    void tangentLineText();
    void rewriteLog10_data();
    void rewriteLog10();
};

// ---- evaluator ---------------------------------------------------------------------------

void TestEval::values_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("expected");

    QTest::newRow("number") << "42" << 0.0 << 42.0;
    QTest::newRow("leading point") << ".5" << 0.0 << 0.5;
    QTest::newRow("trailing point") << "5." << 0.0 << 5.0;
    QTest::newRow("blanks") << " 2 * x + 1 " << 3.0 << 7.0;
    QTest::newRow("precedence") << "1+2*3-4/2" << 0.0 << 5.0;
    QTest::newRow("left assoc minus") << "10-4-3" << 0.0 << 3.0;
    QTest::newRow("power right assoc") << "2^3^2" << 0.0 << 512.0;
    QTest::newRow("negative exponent") << "2^-1" << 0.0 << 0.5;
    QTest::newRow("variable exponent") << "2^-x" << 3.0 << 0.125;
    QTest::newRow("double minus") << "2--x" << 3.0 << 5.0;
    QTest::newRow("times minus") << "2*-x" << 3.0 << -6.0;
    QTest::newRow("2x") << "2x" << 3.0 << 6.0;
    QTest::newRow("2x^2") << "2x^2" << 3.0 << 18.0;
    QTest::newRow("1/2x") << "1/2x" << 3.0 << 1.5;
    QTest::newRow("2sin(x)") << "2sin(x)" << 0.5 << 2 * std::sin(0.5);
    QTest::newRow("(x+1)(x-1)") << "(x+1)(x-1)" << 3.0 << 8.0;
    QTest::newRow("x(x+1)") << "x(x+1)" << 3.0 << 12.0;
    QTest::newRow("2pi") << "2pi" << 0.0 << 2 * std::numbers::pi;
    QTest::newRow("sin(x)cos(x)") << "sin(x)cos(x)" << 0.3 << std::sin(0.3) * std::cos(0.3);
    QTest::newRow("2^3x") << "2^3x" << 2.0 << 16.0;
    QTest::newRow("x^0 of NaN") << "x^0" << kNaN << 1.0;
    QTest::newRow("sqrt") << "sqrt(x)" << 2.0 << std::sqrt(2.0);
    QTest::newRow("sin") << "sin(x)" << 1.0 << std::sin(1.0);
    QTest::newRow("cos") << "cos(x)" << 1.0 << std::cos(1.0);
    QTest::newRow("tan") << "tan(x)" << 1.0 << std::tan(1.0);
    QTest::newRow("asin") << "asin(x)" << 0.5 << std::asin(0.5);
    QTest::newRow("acos") << "acos(x)" << 0.5 << std::acos(0.5);
    QTest::newRow("atan") << "atan(x)" << 2.0 << std::atan(2.0);
    QTest::newRow("Exp") << "Exp(x)" << 2.0 << std::exp(2.0);
    QTest::newRow("exp") << "exp(x)" << 2.0 << std::exp(2.0);
    QTest::newRow("ln") << "ln(x)" << 2.0 << std::log(2.0);
    QTest::newRow("log10") << "log10(x)" << 1000.0 << 3.0;
    QTest::newRow("log") << "log(x)" << 0.01 << -2.0;
    QTest::newRow("abs") << "abs(x)" << -2.5 << 2.5;
    QTest::newRow("sign -") << "sign(x)" << -2.5 << -1.0;
    QTest::newRow("sign 0") << "sign(x)" << 0.0 << 0.0;
    QTest::newRow("sign +") << "sign(x)" << 7.0 << 1.0;
    QTest::newRow("sinh") << "sinh(x)" << 1.0 << std::sinh(1.0);
    QTest::newRow("cosh") << "cosh(x)" << 1.0 << std::cosh(1.0);
    QTest::newRow("tanh") << "tanh(x)" << 1.0 << std::tanh(1.0);
    QTest::newRow("asinh") << "asinh(x)" << 1.0 << std::asinh(1.0);
    QTest::newRow("acosh") << "acosh(x)" << 2.0 << std::acosh(2.0);
    QTest::newRow("atanh") << "atanh(x)" << 0.5 << std::atanh(0.5);
    QTest::newRow("nested") << "sin(cos(x^2))" << 1.5 << std::sin(std::cos(2.25));
    QTest::newRow("constant folded call") << "sqrt(16)+x" << 1.0 << 5.0;
    QTest::newRow("ln(-1)") << "ln(x)" << -1.0 << kNaN;
    QTest::newRow("sqrt(-1)") << "sqrt(x)" << -1.0 << kNaN;
    QTest::newRow("asin(2)") << "asin(x)" << 2.0 << kNaN;
    QTest::newRow("1/0") << "1/x" << 0.0 << kInf;
    QTest::newRow("-1/0") << "-1/x" << 0.0 << -kInf;
    QTest::newRow("ln(0)") << "ln(x)" << 0.0 << -kInf;
    QTest::newRow("0/0") << "x/x" << 0.0 << kNaN;
    QTest::newRow("overflow") << "Exp(x)" << 1000.0 << kInf;
    QTest::newRow("huge number") << "1" + QString(400, u'0') << 0.0 << kInf;
}

void TestEval::values()
{
    QFETCH(QString, text);
    QFETCH(double, x);
    QFETCH(double, expected);
    ExpressionEvaluator evaluator;
    evaluator.SetVariable(evaluator.DefineVariable(QStringLiteral("x")), x);

    const double byText = evaluator.EvaluateText(text);
    QVERIFY2(!evaluator.HasError(), qPrintable(evaluator.ErrorText()));
    QVERIFY2(close(byText, expected), qPrintable(QString::number(byText, 'g', 17)));

    const int id = evaluator.SetExpression(text);
    QVERIFY(id >= 0);
    QVERIFY(sameValue(evaluator.Evaluate(id), byText));
}

void TestEval::errors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Code>("code");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("length");

    QTest::newRow("empty") << "" << Code::Empty << 1 << 0;
    QTest::newRow("blanks") << "   " << Code::Empty << 1 << 0;
    QTest::newRow("dangling plus") << "2*x+" << Code::UnexpectedEnd << 5 << 0;
    QTest::newRow("dangling plus blanks") << "2+  " << Code::UnexpectedEnd << 5 << 0;
    QTest::newRow("open call") << "sin(" << Code::UnexpectedEnd << 5 << 0;
    QTest::newRow("character") << "2#x" << Code::UnexpectedChar << 2 << 1;
    QTest::newRow("pilcrow") << QString("2") + kPiChar << Code::UnexpectedChar << 2 << 1;
    QTest::newRow("decimal comma") << "2,5" << Code::UnexpectedChar << 2 << 1;
    QTest::newRow("two operators") << "2+*3" << Code::UnexpectedToken << 3 << 1;
    QTest::newRow("leading times") << "*x" << Code::UnexpectedToken << 1 << 1;
    QTest::newRow("two numbers") << "2 3" << Code::UnexpectedToken << 3 << 1;
    QTest::newRow("empty parens") << "()" << Code::UnexpectedToken << 2 << 1;
    QTest::newRow("empty argument") << "sin()" << Code::UnexpectedToken << 5 << 1;
    QTest::newRow("number in parens") << "(2 3)" << Code::UnexpectedToken << 4 << 1;
    QTest::newRow("run of letters") << "xsin(x)" << Code::UnknownName << 1 << 4;
    QTest::newRow("later unknown") << "x+xsin(x)" << Code::UnknownName << 3 << 4;
    QTest::newRow("wrong case") << "X+1" << Code::UnknownName << 1 << 1;
    QTest::newRow("Sin") << "Sin(x)" << Code::UnknownName << 1 << 3;
    QTest::newRow("e") << "2e" << Code::UnknownName << 2 << 1;
    QTest::newRow("missing paren") << "2*x(x+1" << Code::MissingParen << 4 << 1;
    QTest::newRow("missing call paren") << "sqrt(x+1" << Code::MissingParen << 5 << 1;
    QTest::newRow("extra paren") << "(x+1))" << Code::ExtraParen << 6 << 1;
    QTest::newRow("lone close") << "x)" << Code::ExtraParen << 2 << 1;
    QTest::newRow("two points") << "1.2.3" << Code::BadNumber << 1 << 5;
    QTest::newRow("lone point") << "x+." << Code::BadNumber << 3 << 1;
    QTest::newRow("x3.14") << "x3.14" << Code::NumberAfterName << 2 << 4;
    QTest::newRow("pi2") << "pi2" << Code::NumberAfterName << 3 << 1;
    QTest::newRow("sin2") << "sin2(x)" << Code::NumberAfterName << 4 << 1;
    QTest::newRow("log100") << "log100(x)" << Code::NumberAfterName << 6 << 1;
    QTest::newRow("log2") << "log2(x)" << Code::NumberAfterName << 4 << 1;
    QTest::newRow("no argument") << "sin x" << Code::MissingArgument << 1 << 3;
    QTest::newRow("no argument at end") << "2+ln" << Code::MissingArgument << 3 << 2;
    QTest::newRow("first error wins") << "x3 + #" << Code::NumberAfterName << 2 << 1;
    QTest::newRow("deep nesting") << QString(100000, u'(') << Code::UnexpectedToken << 501 << 1;
    QTest::newRow("long chain") << "x" + QString("+x").repeated(2000) << Code::UnexpectedToken
                                << 1000 << 1;
}

void TestEval::errors()
{
    QFETCH(QString, text);
    QFETCH(Code, code);
    QFETCH(int, position);
    QFETCH(int, length);
    ExpressionEvaluator evaluator;
    evaluator.DefineVariable(QStringLiteral("x"));

    QCOMPARE(evaluator.SetExpression(text), -1);
    QVERIFY(evaluator.HasError());
    QCOMPARE(evaluator.LastError().code, code);
    QCOMPARE(evaluator.LastError().position, position);
    QCOMPARE(evaluator.LastError().length, length);
    QVERIFY(!evaluator.ErrorText().isEmpty());

    QVERIFY(std::isnan(evaluator.EvaluateText(text)));
    QVERIFY(evaluator.HasError());
}

void TestEval::errorMessages_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");

    QTest::newRow("unknown") << "2*xsin(x)" << "Unknown name 'xsin' at position 3";
    QTest::newRow("paren") << "2*x(x+1" << "Missing ')' for '(' at position 4";
    QTest::newRow("end") << "2*x+" << "Unexpected end of formula at position 5";
    QTest::newRow("number after name")
        << "x3.14" << "A number cannot follow the name 'x' at position 2";
    QTest::newRow("bad number") << "1.2.3" << "Invalid number '1.2.3' at position 1";
    QTest::newRow("extra paren") << "x+1)" << "Missing '(' for ')' at position 4";
    QTest::newRow("argument") << "sin x" << "Missing '(' after the function 'sin' at position 1";
    QTest::newRow("character") << "x%2" << "Unexpected character '%' at position 2";
    QTest::newRow("wide character")
        << QString::fromUtf8("x+\U0001D465")
        << QString::fromUtf8("Unexpected character '\U0001D465' at position 3");
    QTest::newRow("operator") << "x+/2" << "Unexpected '/' at position 3";
}

void TestEval::errorMessages()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    ExpressionEvaluator evaluator;
    evaluator.DefineVariable(QStringLiteral("x"));
    evaluator.SetExpression(text);
    QCOMPARE(evaluator.ErrorText(), message);
}

void TestEval::treeKeepsTheWrittenStructure_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("no folding") << "2*3+pi" << "((2*3)+pi)";
    QTest::newRow("spellings kept") << "log(Exp(x))" << "log[log10](Exp[exp](x))";
    QTest::newRow("products") << "(x+1)(x-1)" << "((x+1)·(x-1))";
    QTest::newRow("second variable") << "2t x" << "((2·t)·x)";
}

void TestEval::treeKeepsTheWrittenStructure()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const ParseResult parsed = parseFormula(text, {QStringLiteral("x"), QStringLiteral("t")});
    QVERIFY2(parsed.ok(), qPrintable(parsed.message));
    QCOMPARE(shape(parsed.tree), expected);
}

void TestEval::compiledMatchesTreeAndBatchMatchesPointwise_data()
{
    QTest::addColumn<QString>("text");

    // Shapes the compiler rewrites: constants beside an operation, negations, integer powers.
    for (const char* text :
         {"x", "2x^2+1", "3x^3-2x^2+x-5", "(x^2+1)/(x-2)", "sin(x)*cos(2x)", "exp(-x^2)+ln(x^2+1)",
          "sqrt(x^2+1)", "sin(cos(x^2))", "abs(x)^0.5*tan(x/3)", "10-(2x+1)", "-(3-x)*2+7",
          "-(x/3+1)", "5-3x", "1-(x^2+1)", "(x+1)+2", "(2x)*3", "-(-x)", "x*x", "x/8", "x/0.5",
          "x/3", "3/x", "x^7", "x^-3", "x^-1", "x^0", "x^64", "x^65", "(x+1)^0.5", "2^(x/3)",
          "x^x", "1.5^x", "sign(x-1)*atanh(x/20)", "-x^2-x^4", "x-x", "pi x + sin(pi)",
          "sin(x)^0 + x", "x^2+x", "x+x^2", "x-x^3", "sin(x)-2x^2", "(x+1)-(x-1)*3",
          "-(x^2+x)", "(x^2+x)*3", "(x^2+x)+5", "1-(x^2-x)", "x^2/3+x^3/3-x/3", "-x", "2x",
          "x+1", "3(x+1)", "(x-2)^2", "(x+1)(x-1)", "(x+1)(x+1)", "(x-2)/(x+3)", "1/(x-2)",
          "sin(2x)", "exp(-x)", "2^(x-1)", "(x+1)^7", "(x+1)^-2", "-(2x-1)", "((x+1)+2)*3",
          "x^2-(x+1)", "(2x)*3", "-(-x+1)", "ln(1-x)", "(x/4+1)^2", "(1-x)-(x+1)",
          "x^2+(2x+1)", "(x+1)+x^2", "2x+x^2", "x^3-x", "x-x^4", "x+x", "-x^2+3x",
          "x^2*3-x^3/4", "x^4-3x^2+2x+7", "(x^2-x)*2", "-(x^3+x)", "x^3-x^2-x^2", "x^2+x^5",
          "x^6*2-x+1", "3-x^5"})
        QTest::newRow(text) << QString::fromLatin1(text);

    // Each "cos(x)*(" holds a slot until its ")": more slots than the fast paths keep.
    QString deep = QStringLiteral("sin(x)");
    for (int i = 0; i < 20; ++i)
        deep = QStringLiteral("cos(x+%1)*(%2)").arg(i).arg(deep);
    QTest::newRow("many slots") << deep;
}

void TestEval::compiledMatchesTreeAndBatchMatchesPointwise()
{
    QFETCH(QString, text);
    ExpressionEvaluator evaluator;
    const int x = evaluator.DefineVariable(QStringLiteral("x"));
    const int id = evaluator.SetExpression(text);
    QVERIFY2(id >= 0, qPrintable(evaluator.ErrorText()));
    const ParseResult parsed = parseFormula(text, {QStringLiteral("x")});
    QVERIFY(parsed.ok());

    const std::vector<double> xs = sampleXs();
    std::vector<double> ys(xs.size(), 12345);
    evaluator.EvaluateBatch(id, x, xs, ys);
    for (std::size_t i = 0; i < xs.size(); ++i) {
        evaluator.SetVariable(x, xs[i]);
        const double pointwise = evaluator.Evaluate(id);
        QVERIFY2(sameValue(ys[i], pointwise),
                 qPrintable(QStringLiteral("x=%1: batch %2, per point %3")
                                .arg(xs[i])
                                .arg(ys[i], 0, 'g', 17)
                                .arg(pointwise, 0, 'g', 17)));
        // Powers become multiplications, which may differ from pow in the last bits.
        const double expected = reference(parsed.tree, xs[i]);
        QVERIFY2(close(pointwise, expected, 1e-12) ||
                     (std::isinf(expected) && std::isinf(pointwise)),
                 qPrintable(QStringLiteral("x=%1: %2, tree gives %3")
                                .arg(xs[i])
                                .arg(pointwise, 0, 'g', 17)
                                .arg(expected, 0, 'g', 17)));
    }
}

void TestEval::batchEdges()
{
    ExpressionEvaluator evaluator;
    const int x = evaluator.DefineVariable(QStringLiteral("x"));
    const int a = evaluator.DefineVariable(QStringLiteral("a"));
    evaluator.SetVariable(a, 3);
    evaluator.SetVariable(x, 100);
    const int id = evaluator.SetExpression(QStringLiteral("a x^2 - x"));

    // Lengths around the chunking, the other variable held at its value.
    for (int n : {0, 1, 255, 256, 257, 1000}) {
        std::vector<double> xs(n);
        for (int i = 0; i < n; ++i)
            xs[i] = i * 0.5 - 40;
        std::vector<double> ys(n);
        evaluator.EvaluateBatch(id, x, xs, ys);
        for (int i = 0; i < n; ++i)
            QCOMPARE(ys[i], 3 * (xs[i] * xs[i]) - xs[i]);
    }
    QCOMPARE(evaluator.Evaluate(id), 3 * 100.0 * 100.0 - 100.0); // x itself untouched

    // In place: ys is xs.
    std::vector<double> values{1, 2, 3, 4};
    evaluator.EvaluateBatch(id, x, values, values);
    QCOMPARE(values, (std::vector<double>{2, 10, 24, 44}));

    // Over the other variable.
    std::vector<double> as{0, 1}, ys(2);
    evaluator.EvaluateBatch(id, a, as, ys);
    QCOMPARE(ys, (std::vector<double>{-100, 100 * 100.0 - 100}));

    // A constant formula, and an unknown id.
    const int constant = evaluator.SetExpression(QStringLiteral("2^10"));
    evaluator.EvaluateBatch(constant, x, as, ys);
    QCOMPARE(ys, (std::vector<double>{1024, 1024}));
    evaluator.EvaluateBatch(99, x, as, ys);
    QVERIFY(std::isnan(ys[0]) && std::isnan(ys[1]));
}

void TestEval::evaluatorState()
{
    ExpressionEvaluator evaluator;
    const int x = evaluator.DefineVariable(QStringLiteral("x"));
    const int t = evaluator.DefineVariable(QStringLiteral("t"));
    QVERIFY(x != t);
    QCOMPARE(evaluator.DefineVariable(QStringLiteral("x")), x);

    const int first = evaluator.SetExpression(QStringLiteral("x+t"));
    const int second = evaluator.SetExpression(QStringLiteral("x*t"));
    QVERIFY(first >= 0 && second >= 0 && first != second);
    evaluator.SetVariable(x, 2);
    evaluator.SetVariable(t, 5);
    QCOMPARE(evaluator.Evaluate(first), 7.0);
    QCOMPARE(evaluator.Evaluate(second), 10.0);
    QVERIFY(std::isnan(evaluator.Evaluate(-1)));
    QVERIFY(std::isnan(evaluator.Evaluate(2)));

    // A failure is remembered until the next compile succeeds; ids already given stay valid.
    QCOMPARE(evaluator.SetExpression(QStringLiteral("x+")), -1);
    QVERIFY(evaluator.HasError());
    QCOMPARE(evaluator.EvaluateText(QStringLiteral("t^2")), 25.0);
    QVERIFY(!evaluator.HasError());
    QVERIFY(evaluator.ErrorText().isEmpty());
    QCOMPARE(evaluator.Evaluate(second), 10.0);

    evaluator.Reset();
    QVERIFY(std::isnan(evaluator.Evaluate(first)));
    QCOMPARE(evaluator.SetExpression(QStringLiteral("x")), -1);
    QCOMPARE(evaluator.LastError().code, Code::UnknownName);
    QCOMPARE(evaluator.DefineVariable(QStringLiteral("t")), 0);
    QCOMPARE(evaluator.EvaluateText(QStringLiteral("t+1")), 1.0); // a new variable starts at 0
}

// Texts of 100,000 characters in the shapes that could make a parser or compiler slow
// (deep nesting, long chains, long names and numbers) finish: compiled or refused. Their
// time is bounded by CTest's timeout, not asserted here; the fuzz targets look for slow
// texts with a per-input time limit.
void TestEval::longTextsFinish_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("compiles");
    QTest::addColumn<double>("atTwo");

    constexpr int n = 100000;
    const auto repeated = [](const char* piece, int count) {
        return QString::fromLatin1(piece).repeated(count);
    };
    // 400 terms spread out by blanks: every blank is read, the tree stays small.
    QString spread = QStringLiteral("x");
    for (int i = 1; i < 400; ++i)
        spread += QString(n / 400 - 4, u' ') + QStringLiteral(" + x");

    QTest::newRow("blanks around a few terms") << spread << true << 800.0;
    QTest::newRow("blanks then x") << QString(n, u' ') + u'x' << true << 2.0;
    QTest::newRow("flat sum") << repeated("x+", n / 2) + u'x' << false << kNaN;
    QTest::newRow("flat product") << repeated("x*", n / 2) + u'x' << false << kNaN;
    QTest::newRow("implicit products") << repeated("2(x)", n / 4) << false << kNaN;
    QTest::newRow("power tower") << repeated("x^", n / 2) + u'x' << false << kNaN;
    QTest::newRow("nested parentheses")
        << repeated("(", n / 2) + u'x' + repeated(")", n / 2) << false << kNaN;
    QTest::newRow("open parentheses") << repeated("(", n) << false << kNaN;
    QTest::newRow("close parentheses") << u'x' + repeated(")", n) << false << kNaN;
    QTest::newRow("nested calls")
        << repeated("sin(", n / 4) + u'x' + repeated(")", n / 4) << false << kNaN;
    QTest::newRow("signs") << repeated("-", n) + u'x' << false << kNaN;
    QTest::newRow("long name") << repeated("x", n) << false << kNaN;
    QTest::newRow("long number") << repeated("1", n) << true << kInf;
    QTest::newRow("long fraction") << QStringLiteral("0.") + repeated("5", n) << true << 5.0 / 9;
    QTest::newRow("decimal points") << repeated(".", n) << false << kNaN;
}

void TestEval::longTextsFinish()
{
    QFETCH(QString, text);
    QFETCH(bool, compiles);
    QFETCH(double, atTwo);
    ExpressionEvaluator evaluator;
    const int x = evaluator.DefineVariable(QStringLiteral("x"));
    const int id = evaluator.SetExpression(text);
    QCOMPARE(id >= 0, compiles);
    if (!compiles) {
        QVERIFY(!evaluator.ErrorText().isEmpty());
        return;
    }
    evaluator.SetVariable(x, 2);
    QVERIFY2(close(evaluator.Evaluate(id), atTwo, 1e-12),
             qPrintable(QString::number(evaluator.Evaluate(id), 'g', 17)));
}

// ---- numbers as text ---------------------------------------------------------------------

void TestEval::numberText_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected"); // with "." for the locale's separator

    QTest::newRow("integer") << 42.0 << "42";
    QTest::newRow("fraction") << 0.1 << "0.1";
    QTest::newRow("negative") << -2.5 << "-2.5";
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("negative zero") << -0.0 << "0";
    QTest::newRow("no group separator") << 1234567.25 << "1234567.25";
    QTest::newRow("15 digits") << 1.0 / 3 << "0.333333333333333";
    QTest::newRow("rounds up") << 2.0 / 3 << "0.666666666666667";
    QTest::newRow("binary noise dropped") << 0.1 + 0.2 << "0.3";
    QTest::newRow("step sum") << 1 + 0.0010000000474974513 << "1.0010000000475";
    QTest::newRow("pi") << kPiValue << "3.14159265358979";
    QTest::newRow("e") << kEValue << "2.71828183";
    QTest::newRow("large, no exponent") << 1e20 << "100000000000000000000";
    QTest::newRow("large rounded") << 123456789012345678.0 << "123456789012346000";
    QTest::newRow("small, no exponent") << 1.5e-7 << "0.00000015";
    QTest::newRow("tiny negative") << -2.5e-12 << "-0.0000000000025";
}

void TestEval::numberText()
{
    QFETCH(double, value);
    QFETCH(QString, expected);
    QCOMPARE(curvix::eval::numberText(value), inLocale(expected));
    QCOMPARE(curvix::eval::numberText(value, QLocale::c()), expected);
    QCOMPARE(curvix::eval::numberText(value, QLocale(QLocale::Swedish)),
             QString(expected).replace(u'.', u','));
}

void TestEval::roundTripTextReadsBack()
{
    QCOMPARE(roundTripText(0.1 + 0.2), QStringLiteral("0.30000000000000004"));
    QCOMPARE(roundTripText(-3), QStringLiteral("-3"));
    QCOMPARE(roundTripText(kNaN), QStringLiteral("nan"));
    QCOMPARE(roundTripText(-kInf), QStringLiteral("-inf"));
    std::mt19937_64 random(7);
    for (int i = 0; i < 2000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value))
            continue;
        const QString text = curvix::eval::roundTripText(value);
        QVERIFY(!text.contains(u','));
        const QByteArray ascii = text.toLatin1();
        double back = 0;
        const auto [end, ec] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), back);
        QVERIFY(ec == std::errc() && end == ascii.data() + ascii.size());
        QCOMPARE(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value));
    }
}

// ---- formula texts -----------------------------------------------------------------------

void TestEval::textHelpers_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");

    QTest::newRow("label f(x)") << "label" << "f(x)" << "x";
    QTest::newRow("label g(t)") << "label" << "g(t)" << "t";
    QTest::newRow("label first paren") << "label" << "f(a)(b)" << "a";
    QTest::newRow("label no paren") << "label" << "f" << "";
    QTest::newRow("label empty") << "label" << "" << "";
    QTest::newRow("label paren last") << "label" << "f(" << "";

    QTest::newRow("find first") << "find" << "abcabc|c" << "3";
    QTest::newRow("find case") << "find" << "abc|B" << "0";
    QTest::newRow("find absent") << "find" << "abc|x" << "0";
    QTest::newRow("find capped") << "find" << QString(40000, u'a') + "b|b" << "32767";

    // Every splice searches again from the start.
    QTest::newRow("replace all") << "replace" << "x,5+x,25|,|." << "x.5+x.25";
    QTest::newRow("replace rescans") << "replace" << "aaaa|aa|a" << "a";
    QTest::newRow("replace rescans 2") << "replace" << "xxxy|xy|y" << "y";
    QTest::newRow("replace none") << "replace" << "abc|z|y" << "abc";
    QTest::newRow("replace growing") << "replace" << "e|e|ee" << "ee";

    QTest::newRow("paren fall-through") << "paren" << "x+1)" << "4";
    QTest::newRow("paren first close") << "paren" << "x)+(y)" << "2";
    QTest::newRow("paren nested") << "paren" << "(x))" << "4";
    QTest::newRow("paren nested early") << "paren" << "(x))+1" << "4";
    QTest::newRow("paren none") << "paren" << "abc" << "3";
    QTest::newRow("paren single") << "paren" << ")" << "1";
}

void TestEval::textHelpers()
{
    QFETCH(QString, function);
    QFETCH(QString, input);
    QFETCH(QString, expected);
    const QStringList parts = input.split(u'|');
    QString actual;
    if (function == u"label")
        actual = VariableNameFromLabel(input);
    else if (function == u"find")
        actual = QString::number(FindText(parts[0], parts[1]));
    else if (function == u"replace")
        actual = ReplaceText(parts[0], parts[1], parts[2]);
    else
        actual = QString::number(MatchingParenPosition(input));
    QCOMPARE(actual, expected);
}

void TestEval::prepareExpressionText_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("message"); // reported when nothing is returned

    const QString pi(kPiChar), fx("f(x)");
    QTest::newRow("plain") << "2x^2+1" << fx << "2x^2+1" << "";
    QTest::newRow("2pi") << "2" + pi << fx << "2*3.14159265358979" << "";
    QTest::newRow("pi/2") << pi + "/2" << fx << "3.14159265358979/2" << "";
    QTest::newRow("first pi decides, no star") << "x+" + pi + "+2" + pi << fx
                                               << "x+3.14159265358979+23.14159265358979" << "";
    QTest::newRow("exp and e") << "exp(x)+e" << fx << "Exp(x)+2.71828183" << "";
    QTest::newRow("2e") << "2e^x" << fx << "2*2.71828183^x" << "";
    QTest::newRow("comma") << "0,5x+1,25" << fx << "0.5x+1.25" << "";
    QTest::newRow("variable t") << "t^2" << "f(t)" << "t^2" << "";
    QTest::newRow("no label") << "x^2" << "" << "x^2" << "";
    // A pi after a letter gets no "*", and the evaluator rejects the result.
    QTest::newRow("x pi") << "x" + pi << fx << ""
                          << "A number cannot follow the name 'x' at position 2";
    QTest::newRow("first pi decides a star") << "3" + pi + "+" + pi << fx << ""
                                             << "Unexpected '*' at position 20";
    QTest::newRow("other variable") << "t+1" << fx << "" << "Unknown name 't' at position 1";
    QTest::newRow("empty") << "" << fx << "" << "The formula is empty";
}

void TestEval::prepareExpressionText()
{
    QFETCH(QString, formula);
    QFETCH(QString, label);
    QFETCH(QString, expected);
    QFETCH(QString, message);
    ExpressionEvaluator evaluator;
    for (const QLocale& locale : {QLocale(), QLocale::c(), QLocale(QLocale::Swedish)}) {
        QStringList messages;
        const Report report = [&](const QString& m) { messages << m; };
        QCOMPARE(PrepareExpressionText(evaluator, formula, label, report, locale), expected);
        QCOMPARE(messages, message.isEmpty() ? QStringList() : QStringList{message});
        QVERIFY(!evaluator.HasError());
        QCOMPARE(evaluator.DefineVariable(QStringLiteral("zz")), 0); // reset: variables gone
    }
    QCOMPARE(PrepareExpressionText(evaluator, formula, label, nullptr), expected);
}

void TestEval::compiledFormulaMatchesTheEvaluator_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("message"); // empty when it compiles
    QTest::newRow("polynomial") << "3x^3-2x^2+x-5" << "x" << "";
    QTest::newRow("poles and domains") << "ln(x)+1/(x-1)+sqrt(x)" << "x" << "";
    QTest::newRow("other variable") << "sin(2t)*Exp(-t)" << "t" << "";
    QTest::newRow("constant") << "2^10" << "x" << "";
    QTest::newRow("wrong variable") << "x+1" << "t" << "Unknown name 'x' at position 1";
    QTest::newRow("unfinished") << "t^" << "t" << "Unexpected end of formula at position 3";
}

void TestEval::compiledFormulaMatchesTheEvaluator()
{
    QFETCH(QString, text);
    QFETCH(QString, variable);
    QFETCH(QString, message);
    CompileError error;
    QString said;
    const auto formula = CompiledFormula::compile(text, variable, &error, &said);
    QCOMPARE(said, message);
    QCOMPARE(formula == nullptr, !message.isEmpty());
    QCOMPARE(error.code == CompileError::Code::None, message.isEmpty());
    if (!formula)
        return;

    ExpressionEvaluator evaluator;
    const int x = evaluator.DefineVariable(variable);
    const int id = evaluator.SetExpression(text);
    std::vector<double> xs;
    for (int i = -300; i <= 300; ++i)
        xs.push_back(i / 37.0);
    std::vector<double> expected(xs.size()), batch(xs.size());
    evaluator.EvaluateBatch(id, x, xs, expected);
    formula->evaluateBatch(xs, batch);
    // Bit for bit, NaN included: a redraw must not move a single pixel.
    QCOMPARE(std::memcmp(batch.data(), expected.data(), xs.size() * sizeof(double)), 0);
    for (std::size_t i = 0; i < xs.size(); i += 7) {
        const double one = formula->evaluate(xs[i]);
        QCOMPARE(std::memcmp(&one, &expected[i], sizeof one), 0);
    }
}

void TestEval::tangentLineText_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<double>("x0");
    QTest::addColumn<double>("step");
    QTest::addColumn<QString>("text"); // with "." for the locale's separator
    QTest::addColumn<double>("slope");

    QTest::newRow("example") << "2x-1" << 1.0 << 0.001 << "2*x+1.001-2*1" << 2.0;
    QTest::newRow("negative y0") << "2x-5" << 1.0 << 0.001 << "2*x-2.999-2*1" << 2.0;
    QTest::newRow("negative slope") << "-2x" << 1.0 << 0.001 << "-2*x-1.999+2*1" << -2.0;
    QTest::newRow("negative x0") << "x^2" << -1.0 << 0.001 << "-1.999*x+1.001-1.999*1" << -1.999;
    QTest::newRow("slope rounded") << "x^2" << 1.0 << 0.001 << "2.001*x+1.001-2.001*1" << 2.001;
    QTest::newRow("y0 rounded") << "x/3" << 1.0 << 0.001 << "0.3333*x+0.3343-0.3333*1" << 0.3333;
    QTest::newRow("y0 just below 0") << "x-0.0004" << 0.0 << 0.001 << "1*x--0.0006-1*0" << 1.0;
}

void TestEval::tangentLineText()
{
    QFETCH(QString, expression);
    QFETCH(double, x0);
    QFETCH(double, step);
    QFETCH(QString, text);
    QFETCH(double, slope);
    const auto curve = CompiledFormula::compile(expression, QStringLiteral("x"));
    QVERIFY(curve);

    const TangentLine line = TangentLineText(*curve, QStringLiteral("x"), x0, step);
    QCOMPARE(line.text, inLocale(text));
    QCOMPARE(line.variable, QStringLiteral("x"));
    QCOMPARE(line.slope, slope);
    const QLocale swedish(QLocale::Swedish);
    QCOMPARE(TangentLineText(*curve, QStringLiteral("x"), x0, step, swedish).text,
             QString(text).replace(u'.', u','));

    // The line passes one step above the curve's (rounded) value at x0.
    ExpressionEvaluator check;
    const int x = check.DefineVariable(QStringLiteral("x"));
    check.SetVariable(x, x0);
    const double y0 = check.EvaluateText(expression);
    QCOMPARE(line.y, y0);
    const double lifted = check.EvaluateText(QString(line.text).replace(u',', u'.'));
    QVERIFY2(std::fabs(lifted - (y0 + step)) < 1e-4, qPrintable(QString::number(lifted)));
}

void TestEval::rewriteLog10_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("none") << "ln(x)+1" << "ln(x)+1";
    QTest::newRow("single") << "2*log10(x+1)" << "2*(ln(x+1)/ln(10))";
    QTest::newRow("nested") << "log10(log10(x))" << "(ln((ln(x)/ln(10)))/ln(10))";
    QTest::newRow("only the first") << "log10(x)+log10(x)" << "(ln(x)/ln(10))+log10(x)";
    QTest::newRow("inner parens") << "log10((x+1)*2)-3" << "(ln((x+1)*2)/ln(10))-3";
}

void TestEval::rewriteLog10()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(RewriteLog10(text), expected);
}

QTEST_GUILESS_MAIN(TestEval)
#include "test_eval.moc"
