#include "eval/evaluator.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "eval/parameters.h"
#include "eval/parser.h"

#include <QRegularExpression>
#include <QtTest>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numbers>

using namespace curvix::eval;
using Code = CompileError::Code;

Q_DECLARE_METATYPE(curvix::eval::CompileError::Code)
Q_DECLARE_METATYPE(curvix::eval::AngleUnit)

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
    void compiledMatchesTreeAndBatchMatchesPointwise_data();
    void compiledMatchesTreeAndBatchMatchesPointwise();
    void batchAndState();
    void angleUnits_data();
    void angleUnits();

    void numberText_data();
    void numberText();
    void textHelpers_data();
    void textHelpers();
    void prepareExpressionText_data();
    void prepareExpressionText();
    void parametersInFormulas_data();
    void parametersInFormulas();
    void tangentLineText_data();
    void tangentLineText();
    void slopeAgreesWithTheDerivative_data();
    void slopeAgreesWithTheDerivative();
    void tangentReadout_data();
    void tangentReadout();
};

// ---- evaluator ---------------------------------------------------------------------------

void TestEval::values_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("expected");
    const auto row = [](const char* text, double x, double expected) {
        QTest::newRow(text) << QString::fromLatin1(text) << x << expected;
    };

    row(".5+5.", 0, 5.5);
    row("1+2*3-4/2", 0, 5);
    row("10-4-3", 0, 3);
    row("2^3^2", 0, 512);
    row("-x^2", 3, -9);
    row("2^-x", 3, 0.125);
    row("2x^2", 3, 18);
    row("1/2x", 3, 1.5);
    row("8/4/2", 0, 1);
    row("x(x+1)", 3, 12);
    row("2^3x", 2, 16);
    // Every function name, weighted apart, so that none is bound to its neighbour's function.
    row("sqrt(x)+2sin(x)+4cos(x)+8tan(x)", 0.5,
        std::sqrt(0.5) + 2 * std::sin(0.5) + 4 * std::cos(0.5) + 8 * std::tan(0.5));
    row("asin(x)+2acos(x)+4atan(x)+8abs(-x)", 0.5,
        std::asin(0.5) + 2 * std::acos(0.5) + 4 * std::atan(0.5) + 4);
    row("exp(x)+2Exp(x)+4ln(x)+8log10(x)+16log(x)", 2, 3 * std::exp(2.0) + 4 * std::log(2.0) + 24 * std::log10(2.0));
    row("sinh(x)+2cosh(x)+4tanh(x)+8sign(-x)", 0.5,
        std::sinh(0.5) + 2 * std::cosh(0.5) + 4 * std::tanh(0.5) - 8);
    row("asinh(x)+2acosh(x+1)+4atanh(x)+8sign(0x)", 0.5,
        std::asinh(0.5) + 2 * std::acosh(1.5) + 4 * std::atanh(0.5));
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
}

// The code and the place the box marks; the message wording is pinned where it is shown
// (the CLI, PrepareExpressionText).
void TestEval::errors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Code>("code");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("length");

    QTest::newRow("blanks") << "   " << Code::Empty << 1 << 0;
    QTest::newRow("dangling plus") << "2+  " << Code::UnexpectedEnd << 5 << 0;
    QTest::newRow("wide character") << QString::fromUtf8("x+\U0001D465") << Code::UnexpectedChar << 3 << 2;
    QTest::newRow("two operators") << "2+*3" << Code::UnexpectedToken << 3 << 1;
    QTest::newRow("run of letters") << "x+xsin(x)" << Code::UnknownName << 3 << 4;
    QTest::newRow("missing paren") << "2*x(x+1" << Code::MissingParen << 4 << 1;
    QTest::newRow("extra paren") << "(x+1))" << Code::ExtraParen << 6 << 1;
    QTest::newRow("two points") << "1.2.3" << Code::BadNumber << 1 << 5;
    QTest::newRow("x3.14") << "x3.14" << Code::NumberAfterName << 2 << 4;
    QTest::newRow("no argument") << "2+ln" << Code::MissingArgument << 3 << 2;
    // Refused before the parser or the compiler could run out of stack.
    QTest::newRow("deep nesting") << QString(100000, u'(') << Code::UnexpectedToken << 501 << 1;
    QTest::newRow("power tower") << QString("x^").repeated(50000) + u'x' << Code::UnexpectedToken << 1001 << 1;
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
    QCOMPARE(evaluator.LastError().code, code);
    QCOMPARE(evaluator.LastError().position, position);
    QCOMPARE(evaluator.LastError().length, length);
    QVERIFY(std::isnan(evaluator.EvaluateText(text)));
    QVERIFY(evaluator.HasError());

    // The formula compiled for a redraw is refused alike.
    CompileError error;
    QString said;
    const AngleUnit rad = AngleUnit::Radians;
    QVERIFY(!CompiledFormula::compile(text, QStringLiteral("x"), rad, &error, &said));
    QCOMPARE(error.code, code);
    QCOMPARE(said, evaluator.ErrorText());
}

void TestEval::compiledMatchesTreeAndBatchMatchesPointwise_data()
{
    QTest::addColumn<QString>("text");

    QFile shapes(QStringLiteral(CURVIX_TEST_DATA "/compiler_shapes.txt"));
    QVERIFY(shapes.open(QIODevice::ReadOnly | QIODevice::Text));
    while (!shapes.atEnd()) {
        const QString text = QString::fromUtf8(shapes.readLine()).trimmed();
        if (!text.isEmpty() && !text.startsWith(u'#'))
            QTest::newRow(qPrintable(text)) << text;
    }

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

    // The formula as compiled once for a redraw, here in the variable t.
    static const QRegularExpression loneX(QStringLiteral("(?<![a-z])x(?![a-z])"));
    const auto compiled =
        CompiledFormula::compile(QString(text).replace(loneX, QStringLiteral("t")), QStringLiteral("t"));
    QVERIFY(compiled);

    const std::vector<double> xs = sampleXs();
    std::vector<double> ys(xs.size(), 12345);
    evaluator.EvaluateBatch(id, x, xs, ys);
    std::vector<double> redraw(xs.size());
    compiled->evaluateBatch(xs, redraw);
    // Bit for bit, NaN included: a redraw must not move a single pixel.
    QCOMPARE(std::memcmp(redraw.data(), ys.data(), xs.size() * sizeof(double)), 0);
    for (std::size_t i = 0; i < xs.size(); ++i) {
        evaluator.SetVariable(x, xs[i]);
        const double pointwise = evaluator.Evaluate(id);
        // Powers become multiplications, which may differ from pow in the last bits.
        const double expected = reference(parsed.tree, xs[i]);
        // The batch's vector functions may differ from the scalar ones in the last bits;
        // infinities and NaN stay exactly where they were.
        QVERIFY2(close(ys[i], pointwise) && sameValue(compiled->evaluate(xs[i]), pointwise) &&
                     (close(pointwise, expected, 1e-12) || (std::isinf(expected) && std::isinf(pointwise))),
                 qPrintable(QStringLiteral("x=%1: batch %2, per point %3, tree %4")
                                .arg(xs[i])
                                .arg(ys[i], 0, 'g', 17)
                                .arg(pointwise, 0, 'g', 17)
                                .arg(expected, 0, 'g', 17)));
    }
}

void TestEval::batchAndState()
{
    ExpressionEvaluator evaluator;
    const int x = evaluator.DefineVariable(QStringLiteral("x"));
    const int a = evaluator.DefineVariable(QStringLiteral("a"));
    QCOMPARE(evaluator.DefineVariable(QStringLiteral("x")), x);
    evaluator.SetVariable(a, 3);
    evaluator.SetVariable(x, 100);
    const int id = evaluator.SetExpression(QStringLiteral("a x^2 - x"));

    // In place, over the other variable (lengths across the chunks: the compiler shapes).
    std::vector<double> values{1, 2};
    evaluator.EvaluateBatch(id, a, values, values);
    QCOMPARE(values, (std::vector<double>{100 * 100.0 - 100, 2 * 100 * 100.0 - 100}));
    evaluator.EvaluateBatch(99, x, values, values);
    QVERIFY(std::isnan(values[0]) && std::isnan(evaluator.Evaluate(-1)));

    // A failure is remembered until the next compile succeeds; ids already given stay valid.
    QCOMPARE(evaluator.SetExpression(QStringLiteral("x+")), -1);
    QCOMPARE(evaluator.EvaluateText(QStringLiteral("a^2")), 9.0);
    QVERIFY(!evaluator.HasError() && evaluator.ErrorText().isEmpty());
    QCOMPARE(evaluator.Evaluate(id), 3 * 100.0 * 100.0 - 100.0);

    evaluator.Reset();
    QVERIFY(std::isnan(evaluator.Evaluate(id)));
    QCOMPARE(evaluator.DefineVariable(QStringLiteral("a")), 0);
    QCOMPARE(evaluator.EvaluateText(QStringLiteral("a+1")), 1.0); // a new variable starts at 0
}

void TestEval::angleUnits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<AngleUnit>("unit");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("expected");
    const auto row = [](const char* name, const char* text, AngleUnit unit, double x, double y) {
        QTest::newRow(name) << QString::fromLatin1(text) << unit << x << y;
    };
    constexpr AngleUnit rad = AngleUnit::Radians, deg = AngleUnit::Degrees,
                        grad = AngleUnit::Gradians;
    constexpr double pi = std::numbers::pi;
    // Whole right angles and the usual angles are exact, however many turns lie before them.
    row("sin 90 deg", "sin(x)", deg, 90, 1);
    row("sin 180 deg", "sin(x)", deg, 180, 0);
    row("sin infinite deg", "sin(x)", deg, kInf, kNaN);
    row("sin far turn deg", "sin(x)", deg, 360000030, 0.5);
    row("sin 1 deg", "sin(x)", deg, 1, std::sin(pi / 180));
    row("cos 90 deg", "cos(x)", deg, 90, 0);
    row("cos 60 deg", "cos(x)", deg, 60, 0.5);
    row("tan 45 deg", "tan(x)", deg, 45, 1);
    row("tan pole deg", "tan(x)", deg, -270, kNaN);
    row("asin 1 deg", "asin(x)", deg, 1, 90);
    row("asin -0.5 deg", "asin(x)", deg, -0.5, -30);
    row("acos -1 deg", "acos(x)", deg, -1, 180);
    row("acos 0.5 deg", "acos(x)", deg, 0.5, 60);
    row("atan 1 deg", "atan(x)", deg, 1, 45);
    row("sin 100 grad", "sin(x)", grad, 100, 1);
    row("tan 50 grad", "tan(x)", grad, 50, 1);
    row("asin 1 grad", "asin(x)", grad, 1, 100);
    row("acos -1 grad", "acos(x)", grad, -1, 200);
    row("radians", "sin(x)+2cos(x)+4tan(x)+8asin(x)+16acos(x)+32atan(x)", rad, 0.5,
        std::sin(0.5) + 2 * std::cos(0.5) + 4 * std::tan(0.5) + 8 * std::asin(0.5) +
            16 * std::acos(0.5) + 32 * std::atan(0.5));
    // Hyperbolic functions take no angle; shifted and scaled operands still convert.
    row("sinh deg", "sinh(x)+cosh(x)", deg, 1, std::sinh(1.0) + std::cosh(1.0));
    row("operand step deg", "2sin(x-30)+1", deg, 120, 3);
    row("constant deg", "cos(180)+x", deg, 1, 0);
}

// The tree evaluator, the compiled formula per point and its batch give one value.
void TestEval::angleUnits()
{
    QFETCH(QString, text);
    QFETCH(AngleUnit, unit);
    QFETCH(double, x);
    QFETCH(double, expected);
    ExpressionEvaluator evaluator;
    evaluator.SetAngleUnit(unit);
    evaluator.SetVariable(evaluator.DefineVariable(QStringLiteral("x")), x);
    const auto compiled = CompiledFormula::compile(text, QStringLiteral("x"), unit);
    QVERIFY(compiled);
    const std::vector<double> xs(3, x);
    std::vector<double> ys(3);
    compiled->evaluateBatch(xs, ys);
    for (double y : {evaluator.EvaluateText(text), compiled->evaluate(x), ys[0], ys[2]})
        QVERIFY2(sameValue(y, expected), qPrintable(QString::number(y, 'g', 17)));
}

// ---- numbers as text ---------------------------------------------------------------------

void TestEval::numberText_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected"); // with "." for the locale's separator

    QTest::newRow("negative") << -2.5 << "-2.5";
    QTest::newRow("no group separator") << 1234567.25 << "1234567.25";
    QTest::newRow("rounds up") << 2.0 / 3 << "0.666666666666667";
    QTest::newRow("binary noise dropped") << 0.1 + 0.2 << "0.3";
    QTest::newRow("large, no exponent") << 1e20 << "100000000000000000000";
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

// ---- formula texts -----------------------------------------------------------------------

void TestEval::textHelpers_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");

    // Every splice searches again from the start.
    QTest::newRow("replace rescans") << "replace" << "xxxy|xy|y" << "y";
    QTest::newRow("paren fall-through") << "paren" << "x+1)" << "4";
    QTest::newRow("paren nested early") << "paren" << "(x))+1" << "4";
    QTest::newRow("log10 nested") << "log10" << "log10(log10(x))" << "(ln((ln(x)/ln(10)))/ln(10))";
    QTest::newRow("log10 only the first") << "log10" << "log10(x)+log10((x+1)*2)"
                                          << "(ln(x)/ln(10))+log10((x+1)*2)";
}

void TestEval::textHelpers()
{
    QFETCH(QString, function);
    QFETCH(QString, input);
    QFETCH(QString, expected);
    const QStringList parts = input.split(u'|');
    QString actual;
    if (function == u"replace")
        actual = ReplaceText(parts[0], parts[1], parts[2]);
    else if (function == u"log10")
        actual = RewriteLog10(input);
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
    QTest::newRow("2pi") << "2" + pi << fx << "2*3.14159265358979" << "";
    QTest::newRow("first pi decides, no star") << "x+" + pi + "+2" + pi << fx
                                               << "x+3.14159265358979+23.14159265358979" << "";
    QTest::newRow("exp and e") << "exp(x)+e" << fx << "Exp(x)+2.71828183" << "";
    QTest::newRow("2e") << "2e^x" << fx << "2*2.71828183^x" << "";
    QTest::newRow("comma") << "0,5x+1,25" << fx << "0.5x+1.25" << "";
    QTest::newRow("variable t") << "t^2" << "f(t)" << "t^2" << "";
    QTest::newRow("first pi decides a star") << "3" + pi + "+" + pi << fx << ""
                                             << "Unexpected '*' at position 20";
    QTest::newRow("other variable") << "t+1" << fx << "" << "Unknown name 't' at position 1";
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
        QCOMPARE(evaluator.DefineVariable(QStringLiteral("zz")), 0); // reset: variables gone
    }
    QCOMPARE(PrepareExpressionText(evaluator, formula, label, nullptr), expected);
}

void TestEval::parametersInFormulas_data()
{
    QTest::addColumn<QString>("formula"); // with a = 2, b = 3 and c = 1 declared
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("prepared"); // "" when it does not compile
    QTest::addColumn<QStringList>("undeclared");
    QTest::addColumn<double>("valueAt2");

    QTest::newRow("letters glued to the variable") << "ax^2+bx+c" << "x" << "a*x^2+b*x+c" << QStringList{} << 15.0;
    QTest::newRow("glued after a number") << "2ab" << "x" << "2a*b" << QStringList{} << 12.0;
    QTest::newRow("functions and pi are not split") << "pi*a+exp(0)" << "x" << "pi*a+Exp(0)" << QStringList{}
                                                    << 2 * 3.141592653589793 + 1;
    QTest::newRow("another variable") << "at" << "t" << "a*t" << QStringList{} << 4.0;
    QTest::newRow("one letter to declare") << "sin(dx)" << "x" << "" << QStringList{"d"} << kNaN;
    QTest::newRow("only the missing ones") << "ca+d(x+1)+fx" << "x" << "" << QStringList{"d", "f"} << kNaN;
    QTest::newRow("the variable of another list") << "t*x" << "x" << "" << QStringList{"t"} << kNaN;
    QTest::newRow("a misspelt function") << "xsin(x)" << "x" << "" << QStringList{} << kNaN;
    QTest::newRow("a function without its parenthesis") << "dcos" << "x" << "" << QStringList{} << kNaN;
    QTest::newRow("e inside a name") << "dex" << "x" << "" << QStringList{} << kNaN;
}

void TestEval::parametersInFormulas()
{
    QFETCH(QString, formula);
    QFETCH(QString, variable);
    QFETCH(QString, prepared);
    QFETCH(QStringList, undeclared);
    QFETCH(double, valueAt2);
    const ParameterList parameters{{"a", 2}, {"b", 3}, {"c", 1}};

    ExpressionEvaluator evaluator;
    QCOMPARE(PrepareExpressionText(evaluator, formula, "f(" + variable + ")", {}, QLocale::c(), parameters),
             prepared);
    QCOMPARE(undeclaredLetters(formula, variable, parameters), undeclared);
    const auto compiled = CompiledFormula::compile(prepared, variable, AngleUnit::Radians, nullptr, nullptr, parameters);
    QVERIFY(close(compiled ? compiled->evaluate(2) : kNaN, valueAt2));
    // Without parameters the text is as typed.
    QCOMPARE(splitParameterProducts(formula, variable, {}), formula);
}

void TestEval::tangentLineText_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<double>("x0");
    QTest::addColumn<QString>("text"); // with "." for the locale's separator
    QTest::addColumn<double>("slope");

    QTest::newRow("example") << "2x-1" << 1.0 << "2*x+1.001-2*1" << 2.0;
    QTest::newRow("negative y0") << "2x-5" << 1.0 << "2*x-2.999-2*1" << 2.0;
    QTest::newRow("negative slope") << "-2x" << 1.0 << "-2*x-1.999+2*1" << -2.0;
    QTest::newRow("negative x0") << "x^2" << -1.0 << "-1.999*x+1.001-1.999*1" << -1.999;
    QTest::newRow("y0 rounded") << "x/3" << 1.0 << "0.3333*x+0.3343-0.3333*1" << 0.3333;
    QTest::newRow("y0 just below 0") << "x-0.0004" << 0.0 << "1*x--0.0006-1*0" << 1.0;
}

void TestEval::tangentLineText()
{
    QFETCH(QString, expression);
    QFETCH(double, x0);
    QFETCH(QString, text);
    QFETCH(double, slope);
    const auto curve = CompiledFormula::compile(expression, QStringLiteral("x"));
    QVERIFY(curve);

    const double step = 0.001;
    const TangentLine line = TangentLineText(*curve, QStringLiteral("x"), x0, step);
    QCOMPARE(line.text, inLocale(text));
    QCOMPARE(line.slope, slope);
    const QLocale swedish(QLocale::Swedish);
    QCOMPARE(TangentLineText(*curve, QStringLiteral("x"), x0, step, swedish).text,
             QString(text).replace(u'.', u','));

    QCOMPARE(line.y, curve->evaluate(x0)); // the point of tangency itself, not rounded
}

void TestEval::slopeAgreesWithTheDerivative_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QString>("derivative");
    QTest::addColumn<double>("from"); // ten points from here on, 0.97 apart
    QTest::newRow("cubic") << "x^3-3x" << "3x^2-3" << -4.5;
    QTest::newRow("sine") << "sin(x)" << "cos(x)" << -4.5;
    QTest::newRow("exponential") << "exp(x/2)" << "exp(x/2)/2" << -4.5;
    QTest::newRow("logarithm") << "ln(x)" << "1/x" << 0.05;
    QTest::newRow("rational") << "1/(x^2+1)" << "-2x/(x^2+1)^2" << -4.5;
}

void TestEval::slopeAgreesWithTheDerivative()
{
    QFETCH(QString, curve);
    QFETCH(QString, derivative);
    QFETCH(double, from);
    const auto f = CompiledFormula::compile(curve, QStringLiteral("x"));
    const auto d = CompiledFormula::compile(derivative, QStringLiteral("x"));
    QVERIFY(f && d);
    for (int i = 0; i < 10; ++i) {
        const double x = from + 0.97 * i;
        const CurveSlope difference = SlopeAt(*f, x);
        QVERIFY(difference.kind == SlopeKind::Finite);
        QVERIFY2(close(difference.slope, d->evaluate(x), 1e-8), qPrintable(QString::number(x)));
        // With the derivative's formula the slope is the formula's value.
        QCOMPARE(SlopeAt(*f, x, d.get()).slope, d->evaluate(x));
    }
}

void TestEval::tangentReadout_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<double>("x0");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text"); // with "." for the locale's separator
    const int finite = int(SlopeKind::Finite);
    QTest::newRow("a minimum reads 0") << "x^3-3x" << 1.0 << finite << "k = 0   y = \u22122";
    QTest::newRow("real minus signs") << "x^2" << 1.0 << finite << "k = 2   y = 2x \u2212 1";
    QTest::newRow("4 digits") << "1/x" << 3.0 << finite << "k = \u22120.1111   y = \u22120.1111x + 0.6667";
    QTest::newRow("not defined") << "ln(x)" << -2.0 << int(SlopeKind::Undefined) << "";
    QTest::newRow("vertical at an end") << "sqrt(x)" << 0.0 << int(SlopeKind::Vertical) << "";
    QTest::newRow("vertical cusp") << "sqrt(abs(x))" << 0.0 << int(SlopeKind::Vertical) << "";
}

void TestEval::tangentReadout()
{
    QFETCH(QString, curve);
    QFETCH(double, x0);
    QFETCH(int, kind);
    QFETCH(QString, text);
    const auto f = CompiledFormula::compile(curve, QStringLiteral("x"));
    const CurveSlope slope = SlopeAt(*f, x0);
    QCOMPARE(int(slope.kind), kind);
    if (slope.kind == SlopeKind::Finite)
        QCOMPARE(TangentEquationText(slope.slope, x0, slope.y, QStringLiteral("x")), inLocale(text));
}

QTEST_GUILESS_MAIN(TestEval)
#include "test_eval.moc"
