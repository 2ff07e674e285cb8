// The batch evaluator's vector functions against the scalar ones a single point uses.

#include "eval/compiled_formula.h"

#include <QtTest>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

using namespace curvix::eval;

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kSanitized = false;
#endif

// Random arguments per function: two million, a tenth of that under the sanitizers.
int randomCount()
{
    return kSanitized ? 200'000 : 2'000'000;
}

// Doubles in the order of their bit patterns, so that neighbours differ by one.
std::int64_t ordered(double v)
{
    std::int64_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
}

// How many doubles lie between a and b; 0 for two NaN, huge for NaN beside a number.
std::int64_t ulpsApart(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b) ? 0 : std::numeric_limits<std::int64_t>::max();
    const std::int64_t d = ordered(a) - ordered(b);
    return d < 0 ? -d : d;
}

// Arguments where functions have edges: zeros, infinities, NaN, the ends of the domains,
// poles of tan, overflow of exp and the hyperbolics, subnormals, huge angles; each with
// its neighbours.
std::vector<double> edgeArguments()
{
    std::vector<double> centres = {0, 1, 2, 0.5, DBL_MIN, DBL_TRUE_MIN, DBL_MAX, DBL_EPSILON,
                                   kInf, kNaN, 709.782712893384, 745.1332191019411,
                                   710.4758600739439, 1e-300, 1e15, 1e22, 1e300, 6.0e7};
    for (int k = 1; k <= 9; k += 2)
        centres.push_back(k * std::numbers::pi / 2);
    centres.push_back(std::numbers::pi);
    centres.push_back(1e6 * std::numbers::pi);
    std::vector<double> edges;
    for (const double c : centres) {
        for (const double v : {c, -c}) {
            edges.push_back(v);
            edges.push_back(std::nextafter(v, kInf));
            edges.push_back(std::nextafter(v, -kInf));
        }
    }
    return edges;
}

// Every argument an edge or random: uniform over where the function is used, and any bit
// pattern at all, huge, tiny and NaN included.
std::vector<double> arguments(double lo, double hi)
{
    std::vector<double> xs = edgeArguments();
    std::mt19937_64 random(20);
    std::uniform_real_distribution<double> uniform(lo, hi);
    const int count = randomCount();
    xs.reserve(xs.size() + count);
    for (int i = 0; i < count; ++i) {
        if (i % 4 == 3) {
            const std::uint64_t bits = random();
            double v = 0;
            std::memcpy(&v, &bits, sizeof v);
            xs.push_back(v);
        } else {
            xs.push_back(uniform(random));
        }
    }
    return xs;
}

} // namespace

class TestBatchMath : public QObject {
    Q_OBJECT

private slots:
    void vectorMatchesScalar_data();
    void vectorMatchesScalar();
};

void TestBatchMath::vectorMatchesScalar_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<double>("lo");
    QTest::addColumn<double>("hi");
    QTest::addColumn<int>("ulps");

    QTest::newRow("sqrt") << "sqrt(x)" << -1.0 << 1e6 << 1;
    QTest::newRow("exp") << "exp(x)" << -750.0 << 720.0 << 1;
    QTest::newRow("ln") << "ln(x)" << -1.0 << 1e6 << 1;
    QTest::newRow("log") << "log(x)" << -1.0 << 1e6 << 2;
    QTest::newRow("sin") << "sin(x)" << -100.0 << 100.0 << 2;
    QTest::newRow("cos") << "cos(x)" << -100.0 << 100.0 << 2;
    QTest::newRow("tan") << "tan(x)" << -100.0 << 100.0 << 2;
    QTest::newRow("asin") << "asin(x)" << -1.1 << 1.1 << 2;
    QTest::newRow("acos") << "acos(x)" << -1.1 << 1.1 << 2;
    QTest::newRow("atan") << "atan(x)" << -50.0 << 50.0 << 2;
    QTest::newRow("sinh") << "sinh(x)" << -720.0 << 720.0 << 2;
    QTest::newRow("cosh") << "cosh(x)" << -720.0 << 720.0 << 2;
    QTest::newRow("tanh") << "tanh(x)" << -30.0 << 30.0 << 2;
    QTest::newRow("asinh") << "asinh(x)" << -1e6 << 1e6 << 2;
    QTest::newRow("acosh") << "acosh(x)" << 0.5 << 1e6 << 2;
    QTest::newRow("atanh") << "atanh(x)" << -1.1 << 1.1 << 2;
    QTest::newRow("square root as power") << "x^0.5" << -1.0 << 1e6 << 1;
    // The operand and finishing steps around the call, done by the same loops.
    QTest::newRow("steps around sin") << "3sin(2x-1)+x^2+5" << -100.0 << 100.0 << 2;
}

void TestBatchMath::vectorMatchesScalar()
{
    QFETCH(QString, formula);
    QFETCH(double, lo);
    QFETCH(double, hi);
    QFETCH(int, ulps);
    const auto compiled = CompiledFormula::compile(formula, QStringLiteral("x"));
    QVERIFY(compiled);

    const std::vector<double> xs = arguments(lo, hi);
    std::vector<double> ys(xs.size());
    compiled->evaluateBatch(xs, ys);
    std::int64_t worst = 0;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        const double scalar = compiled->evaluate(xs[i]);
        const std::int64_t apart = ulpsApart(ys[i], scalar);
        // Zeros, infinities and NaN exactly, the sign of zero included.
        const bool exact = ys[i] == 0 || !std::isfinite(ys[i]) || scalar == 0 ||
                           !std::isfinite(scalar);
        const bool same = std::signbit(ys[i]) == std::signbit(scalar) || std::isnan(scalar);
        if (exact ? apart != 0 || !same : apart > ulps) {
            QFAIL(qPrintable(QStringLiteral("%1 at %2: batch %3, point %4")
                                 .arg(formula)
                                 .arg(xs[i], 0, 'g', 17)
                                 .arg(ys[i], 0, 'g', 17)
                                 .arg(scalar, 0, 'g', 17)));
        }
        worst = std::max(worst, apart);
    }
    static const char* const setNames[] = {"baseline", "AVX2", "AVX-512"};
    qInfo("%s: %zu arguments, at most %lld ulp apart (%s)", qPrintable(formula), xs.size(),
          static_cast<long long>(worst), setNames[int(Program::batchInstructionSet())]);
}

QTEST_GUILESS_MAIN(TestBatchMath)
#include "test_batch_math.moc"
