#include "eval/formula.h"
#include "plot/area.h"
#include "plot/coordinates.h"
#include "plot/render.h"

#include <QFile>
#include <QTest>

using namespace curvix;

namespace {

using Kind = plot::AreaValue::Kind;

using Formula = std::shared_ptr<const eval::CompiledFormula>;

Formula compile(const QString& text, eval::AngleUnit unit = eval::AngleUnit::Radians)
{
    if (text.isEmpty())
        return nullptr;
    eval::ExpressionEvaluator evaluator;
    return eval::CompiledFormula::compile(
        eval::PrepareExpressionText(evaluator, text, QStringLiteral("f(x)"), {}, QLocale::c()),
        QStringLiteral("x"), unit);
}

} // namespace

class TestArea : public QObject {
    Q_OBJECT

private slots:
    void knownIntegrals_data();
    void knownIntegrals();
    void defaultBounds_data();
    void defaultBounds();
    void readoutsFollowTheState();
    void shadingBetweenCurveAndAxis();
};

// Rows of data/areas.tsv: formula, a, b, a primitive ("" for the quadrature alone), the
// integral or "divergent" / "undefined", the area, and flags: exact (the primitive's value
// must stand), deg (degrees), loose (an end singularity at x != 0 limits the accuracy).
void TestArea::knownIntegrals_data()
{
    QTest::addColumn<QStringList>("row");
    QFile file(QStringLiteral(CURVIX_TEST_DATA "/areas.tsv"));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).remove(u'\n');
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QStringList f = line.split(u'\t');
        QCOMPARE(f.size(), 7);
        QTest::addRow("%s on %s..%s %s", qPrintable(f[0]), qPrintable(f[1]), qPrintable(f[2]),
                      qPrintable(f[3]))
            << f;
    }
}

void TestArea::knownIntegrals()
{
    QFETCH(QStringList, row);
    const QStringList flags = row[6].split(u' ', Qt::SkipEmptyParts);
    const auto unit = flags.contains(QStringLiteral("deg")) ? eval::AngleUnit::Degrees
                                                            : eval::AngleUnit::Radians;
    const auto f = compile(row[0], unit);
    const auto primitive = compile(row[3], unit);
    QVERIFY(f);
    QVERIFY(row[3].isEmpty() || primitive);
    const double a = *plot::readRangeNumber(row[1]), b = *plot::readRangeNumber(row[2]);
    const plot::AreaValue value = plot::integrateArea(*f, a, b, primitive.get());
    if (row[4] == QLatin1String("divergent") || row[4] == QLatin1String("undefined")) {
        const bool divergent = row[4] == QLatin1String("divergent");
        QCOMPARE(value.kind, divergent ? Kind::Divergent : Kind::Undefined);
        QVERIFY2(value.message.contains(eval::readoutNumber(a)), qPrintable(value.message));
        return;
    }
    QCOMPARE(value.kind, Kind::Finite);
    const double tolerance = flags.contains(QStringLiteral("loose")) ? 1e-6 : 1e-9;
    const double integral = row[4].toDouble(), area = row[5].toDouble();
    QVERIFY2(std::abs(value.integral - integral) <= tolerance * std::max(1.0, std::abs(integral)),
             qPrintable(QString::number(value.integral, 'g', 17)));
    QVERIFY2(std::abs(value.area - area) <= tolerance * std::max(1.0, area),
             qPrintable(QString::number(value.area, 'g', 17)));
    QCOMPARE(value.exact, flags.contains(QStringLiteral("exact")));
}

void TestArea::defaultBounds_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::newRow("defined everywhere") << "x^2" << -5.0 << 5.0;
    QTest::newRow("sqrt starts at 0") << "sqrt(x)" << 0.0 << 5.0;
    QTest::newRow("ln starts at 0") << "ln(x)" << 0.0 << 5.0;
    QTest::newRow("a half circle") << "sqrt(4-x^2)" << -2.0 << 2.0;
    QTest::newRow("ends at 3") << "sqrt(3-x)" << -5.0 << 3.0;
    QTest::newRow("a pole is no edge") << "1/x" << -5.0 << 5.0;
}

void TestArea::defaultBounds()
{
    QFETCH(QString, formula);
    QFETCH(double, from);
    QFETCH(double, to);
    const auto bounds = plot::defaultAreaBounds(*compile(formula), model::ViewWindow{});
    QCOMPARE(bounds.first, from);
    QCOMPARE(bounds.second, to);
}

// The read-outs follow the list, the parameters and the primitive the window fills in; an
// area of a curve that is gone reads Undefined.
void TestArea::readoutsFollowTheState()
{
    model::AppState state;
    state.parameters = {{QStringLiteral("a"), 2}};
    model::GraphEntry entry;
    entry.expression = QStringLiteral("a*x");
    state.graphs.push_back(entry);
    state.areas = {{0, 0, 2}, {5, 0, 1}};
    plot::computeAreas(state);
    QCOMPARE(state.areaReadouts.size(), std::size_t(2));
    QCOMPARE(state.areaReadouts[0].value.integral, 4.0);
    QVERIFY(!state.areaReadouts[0].value.exact);
    QCOMPARE(state.areaReadouts[1].value.kind, Kind::Undefined);

    state.parameters[0].value = -1;
    state.areaReadouts[0].primitive = QStringLiteral("a*x^2/2");
    plot::computeAreas(state);
    QCOMPARE(state.areaReadouts[0].value.integral, -2.0);
    QCOMPARE(state.areaReadouts[0].value.area, 2.0);
    QVERIFY(state.areaReadouts[0].value.exact);

    state.areas.pop_back();
    plot::computeAreas(state);
    QCOMPARE(state.areaReadouts.size(), std::size_t(1));
}

// The shading covers the region between the curve and the x axis from a to b, on both
// sides of the axis, and nothing beyond the bounds or between the curve and the view's edge.
void TestArea::shadingBetweenCurveAndAxis()
{
    model::AppState state;
    plot::InitPlotDefaults(state);
    state.view = model::ViewWindow{-4, 4, 1, 1, -4, 4, 1, 1};
    model::GraphEntry entry;
    entry.expression = QStringLiteral("2-x");
    entry.color = 0x00FF0000; // blue
    state.graphs.push_back(entry);
    state.areas = {{0, -1, 3}};
    QImage picture(400, 400, QImage::Format_ARGB32_Premultiplied);
    plot::RedrawOptions options;
    options.grid = false;
    plot::redraw(state, picture, options);
    QCOMPARE(state.areaReadouts.size(), std::size_t(1));
    QCOMPARE(state.areaReadouts[0].value.integral, 4.0);
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(picture.size()), state.view);
    auto tinted = [&](double x, double y) {
        const QColor c = picture.pixelColor(scale.toPixel(x, y).toPoint());
        return c.blue() > c.red() + 20;
    };
    QVERIFY(tinted(-0.5, 1.5) && tinted(1.5, 0.25) && tinted(2.8, -0.5));
    QVERIFY(!tinted(-1.5, 1.5) && !tinted(3.5, -0.5) && !tinted(0.5, 2.5) && !tinted(0.5, -1));
}

QTEST_MAIN(TestArea)
#include "test_area.moc"
