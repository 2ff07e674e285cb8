#include "eval/formula.h"
#include "plot/points_of_interest.h"
#include "plot/render.h"
#include "plot/trace.h"
#include "plot/value_table.h"

#include <QFile>
#include <QTest>

using namespace curvix;

namespace {

std::shared_ptr<const eval::CompiledFormula> compile(const QString& text)
{
    eval::ExpressionEvaluator evaluator;
    return eval::CompiledFormula::compile(
        eval::PrepareExpressionText(evaluator, text, QStringLiteral("f(x)"), {}, QLocale::c()),
        QStringLiteral("x"));
}

bool close(double a, double b) { return std::abs(a - b) <= 1e-8 * std::max(1.0, std::abs(b)); }

} // namespace

class TestPoints : public QObject {
    Q_OBJECT

private slots:
    void schoolCurves_data();
    void schoolCurves();
    void traceSnapsWithinFivePixels_data();
    void traceSnapsWithinFivePixels();
    void tableAsTextAndCsv();
};

void TestPoints::schoolCurves_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QString>("second"); // empty: the points of one curve, else intersections
    QTest::addColumn<QString>("expected");
    QFile file(QStringLiteral(CURVIX_TEST_DATA "/points_of_interest.tsv"));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    int curves = 0, pairs = 0;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).remove(u'\n');
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QStringList f = line.split(u'\t');
        QCOMPARE(f.size(), 3);
        ++(f[1].isEmpty() ? curves : pairs);
        QTest::addRow("%s %s", qPrintable(f[0]), qPrintable(f[1])) << f[0] << f[1] << f[2];
    }
    QVERIFY(curves >= 60 && pairs >= 20);
}

void TestPoints::schoolCurves()
{
    QFETCH(QString, formula);
    QFETCH(QString, second);
    QFETCH(QString, expected);
    const auto f = compile(formula), g = second.isEmpty() ? nullptr : compile(second);
    QVERIFY(f && (g || second.isEmpty()));
    const auto found = g ? plot::intersections(*f, *g, {}) : plot::pointsOfInterest(*f, {});
    QString foundText; // for the failure messages
    for (const plot::PointOfInterest& p : found)
        foundText += QStringLiteral("%1 %2 %3; ").arg(plot::pointKindName(p.kind)).arg(p.x).arg(p.y);
    const QStringList points = expected.split(u';', Qt::SkipEmptyParts);
    QVERIFY2(found.size() == std::size_t(points.size()), qPrintable(foundText));
    for (const QString& point : points) {
        const QString kind = point.trimmed().section(u' ', 0, 0);
        const double x = compile(point.trimmed().section(u' ', 1))->evaluate(0);
        const double y = kind == QLatin1String("zero") ? 0 : f->evaluate(x);
        const bool seen = std::any_of(found.begin(), found.end(), [&](const plot::PointOfInterest& p) {
            return plot::pointKindName(p.kind) == kind && close(p.x, x) && close(p.y, y);
        });
        QVERIFY2(seen, qPrintable(point + QStringLiteral(" not among ") + foundText));
    }
}

void TestPoints::traceSnapsWithinFivePixels_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to"); // where the trace stands afterwards
    // x^2-1 with 100 pixels a unit: 2 px from the zero at 1, 2 px from the minimum at 0, and
    // 7 px right but 14 px above the zero.
    QTest::newRow("onto a zero") << 1.01 << 1.0;
    QTest::newRow("onto a minimum") << -0.02 << 0.0;
    QTest::newRow("too far") << 1.07 << 1.07;
}

void TestPoints::traceSnapsWithinFivePixels()
{
    QFETCH(double, from);
    QFETCH(double, to);
    model::AppState state;
    state.graphs.resize(1);
    state.graphs[0].formula = eval::CompiledFormula::compile(QStringLiteral("x^2-1"), QStringLiteral("x"));
    state.trace.on = true;
    state.trace.entry = 0;
    plot::traceTo(state, from);
    plot::snapTrace(state, plot::PlotScale(QSizeF(1200, 1200), state.view));
    plot::sampleDrawing(state);
    QVERIFY(state.trace.found);
    QVERIFY2(std::abs(state.trace.x - to) < state.sampleStep, qPrintable(QString::number(state.trace.x)));
    if (to != from) // a snapped trace stands on the point itself, not on the nearest sample
        QCOMPARE(state.trace.y, to * to - 1);
}

void TestPoints::tableAsTextAndCsv()
{
    const auto pole = compile("1/(x-0.5)"), root = compile("sqrt(x-0.6)"), comma = compile("2,5x");
    const auto range = plot::readTableRange("0", "0,6", "0.1");
    QVERIFY(range);
    const plot::ValueTable table = plot::makeValueTable(
        *range, {{"1/(x-0.5)", pole.get()}, {"sqrt(x-0.6)", root.get()}, {"2,5x", comma.get()}});
    // Tenths add up to 0.3 and 0.6, not 0.30000000000000004: the root is 0 there, not 1e-8.
    QCOMPARE(plot::tableText(table, plot::TableFormat::TabSeparated),
             QString("x\t1/(x-0.5)\tsqrt(x-0.6)\t2,5x\n0\t-2\t—\t0\n0.1\t-2.5\t—\t0.25\n"
                     "0.2\t-3.3333333333333335\t—\t0.5\n0.3\t-5\t—\t0.75\n0.4\t-10.000000000000002\t—\t1\n"
                     "0.5\t—\t—\t1.25\n0.6\t10.000000000000002\t0\t1.5\n"));
    QCOMPARE(plot::tableText(table, plot::TableFormat::Csv),
             QString("x,1/(x-0.5),sqrt(x-0.6),\"2,5x\"\r\n0,-2,,0\r\n0.1,-2.5,,0.25\r\n"
                     "0.2,-3.3333333333333335,,0.5\r\n0.3,-5,,0.75\r\n0.4,-10.000000000000002,,1\r\n"
                     "0.5,,,1.25\r\n0.6,10.000000000000002,0,1.5\r\n"));
    // A typo in the step must not hang the window.
    QVERIFY(!plot::readTableRange("0", "1", "0") && !plot::readTableRange("0", "100", "0.001"));
}

QTEST_GUILESS_MAIN(TestPoints)
#include "test_points.moc"
