#include "model/graph_list.h"
#include "plot/colors.h"
#include "plot/coordinates.h"
#include "plot/render.h"
#include "plot/ticks.h"
#include "plot/trace.h"
#include "scripted_prompter.h"

#include <QGuiApplication>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>

using namespace curvix;
using model::ViewWindow;

namespace {

constexpr quint32 kRed = 0x000000FF;   // axes and labels
constexpr quint32 kBlue = 0x00FF0000;  // curves, guide lines
constexpr quint32 kGreen = 0x0000FF00; // grid
constexpr quint32 kWhite = 0x00FFFFFF; // the background

struct Scene {
    model::AppState state;
    ScriptedPrompter prompter;
    QImage picture{600, 400, QImage::Format_ARGB32_Premultiplied};
    plot::RedrawOptions options;
    QStringList reports;

    explicit Scene(const ViewWindow& view = ViewWindow{})
    {
        plot::InitPlotDefaults(state);
        state.view = view;
        state.axisColor = kRed;
        state.functionColor = kBlue;
        state.gridColor = kGreen;
        options.font = QFont(QStringLiteral("DejaVu Sans"), 9);
    }
    void add(const QString& formula)
    {
        model::SymbolicLinkCheck links({});
        QCOMPARE(model::addFunction(state, prompter, links, formula, QStringLiteral("f(x)")),
                 model::AddResult::Added);
    }
    void draw()
    {
        plot::redraw(state, picture, options, [this](const QString& m) { reports << m; });
    }
    plot::PlotScale scale() const { return plot::SetPlotScale(picture.size(), state.view); }
    int column(double x) const { return int(std::floor(scale().toPixel(x, 0).x())); }
    int row(double y) const { return int(std::floor(scale().toPixel(0, y).y())); }
    bool is(double x, double y, quint32 value) const
    {
        return count(value, QRect(column(x), row(y), 1, 1)) == 1;
    }
    // Pixels of a colour inside a rectangle of the picture.
    int count(quint32 value, QRect area = {}) const
    {
        area = area.isNull() ? picture.rect() : area & picture.rect();
        int n = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                n += picture.pixelColor(x, y) == plot::colorFromValue(value);
        return n;
    }
    // Whether one of the three columns (rows) around a pixel is mostly the axis colour.
    bool axisColumnNear(int x) const { return axisNear(QRect(x - 1, 0, 1, 400), QPoint(1, 0)); }
    bool axisRowNear(int y) const { return axisNear(QRect(0, y - 1, 600, 1), QPoint(0, 1)); }
    bool axisNear(QRect line, QPoint across) const
    {
        for (int i = 0; i < 3; ++i, line.translate(across))
            if (count(kRed, line) > std::max(line.width(), line.height()) * 0.8)
                return true;
        return false;
    }
};

} // namespace

class TestRender : public QObject {
    Q_OBJECT

private slots:
    void axesStandAtZeroOrAtTheLowerEnd_data();
    void axesStandAtZeroOrAtTheLowerEnd();
    void gridFollowsItsCheckBoxAndTheRange();
    void tickLabelsFollowTheTicksEntries_data();
    void tickLabelsFollowTheTicksEntries();
    void curvesAreDotsWithoutJoins();
    void pointsOutsideTheDomainAreSkipped();
    void everyZoomSamplesAbout7000Points_data();
    void everyZoomSamplesAbout7000Points();
    void guideLinesOvershootByOneUnit();
    void fillsAreReplayedInOrder();
    void smoothCurvesBreakOnlyWhereTheCurveDoes_data();
    void smoothCurvesBreakOnlyWhereTheCurveDoes();
    void smoothCurvesLeaveNoGap_data();
    void smoothCurvesLeaveNoGap();
    void curvesKeepTheirWeightOnDenseScreens_data();
    void curvesKeepTheirWeightOnDenseScreens();
    void fillsStopAtCurvesOfAnyColour_data();
    void fillsStopAtCurvesOfAnyColour();
    void tangentIsDrawnThroughTheView();
    void sineInDegreesIsOnePeriod();
    void traceStandsOnDefinedPoints_data();
    void traceStandsOnDefinedPoints();
    void traceStartsAtTheVisiblePointNearestTheMiddle_data();
    void traceStartsAtTheVisiblePointNearestTheMiddle();
    void piMultiples_data();
    void piMultiples();
    void pictureIgnoresTheApplicationPalette();
    void gridLinesSetStraightMatchThePainter_data();
    void gridLinesSetStraightMatchThePainter();
    void parallelSamplingGivesTheSamePicture_data();
    void parallelSamplingGivesTheSamePicture();
};

void TestRender::axesStandAtZeroOrAtTheLowerEnd_data()
{
    // On 600 x 400 pixels, which show the range and one step beyond each end.
    QTest::addColumn<ViewWindow>("view");
    QTest::addColumn<int>("yAxisColumn");
    QTest::addColumn<int>("xAxisRow");
    QTest::newRow("around zero") << ViewWindow{-5, 5, 1, 1, -5, 5, 1, 1} << 300 << 200;
    QTest::newRow("y range below zero") << ViewWindow{-5, 5, 1, 1, -9, -2, 1, 1} << 300 << 355;
    QTest::newRow("zero in the border") << ViewWindow{0.5, 5, 1, 1, -5, 5, 1, 1} << 92 << 200;
}

void TestRender::axesStandAtZeroOrAtTheLowerEnd()
{
    QFETCH(ViewWindow, view);
    QFETCH(int, yAxisColumn);
    QFETCH(int, xAxisRow);
    Scene scene(view);
    scene.options.grid = false;
    scene.options.tickLabels = false;
    scene.draw();
    QVERIFY(scene.axisColumnNear(yAxisColumn));
    QVERIFY(scene.axisRowNear(xAxisRow));
    if (view.XMin > 0)
        QVERIFY(!scene.axisColumnNear(scene.column(0)));
}

void TestRender::gridFollowsItsCheckBoxAndTheRange()
{
    Scene scene(ViewWindow{-4, 4, 1, 1, -3, 3, 1, 1});
    scene.options.tickLabels = false;
    scene.options.arrows = false;
    scene.draw();
    QVERIFY(scene.count(kGreen) > 0);
    // The grid covers the range only; the border of one step stays free of it.
    QCOMPARE(scene.count(kGreen, QRect(0, 0, scene.column(-4) - 1, 400)), 0);
    QCOMPARE(scene.count(kGreen, QRect(scene.column(4) + 2, 0, 600, 400)), 0);
    QCOMPARE(scene.count(kGreen, QRect(0, 0, 600, scene.row(3) - 1)), 0);

    scene.options.grid = false;
    scene.draw();
    QCOMPARE(scene.count(kGreen), 0);
}

void TestRender::tickLabelsFollowTheTicksEntries_data()
{
    QTest::addColumn<double>("xTicks");
    QTest::addColumn<double>("yTicks");
    QTest::addColumn<bool>("piFractions"); // x ticks as multiples of pi, as fractions
    QTest::addColumn<bool>("xLabels");
    QTest::addColumn<bool>("yLabels");
    QTest::newRow("both") << 1.0 << 1.0 << false << true << true;
    QTest::newRow("negative ticks entry") << -1.0 << -2.0 << false << false << false;
    QTest::newRow("fraction labels") << 1.0 << 0.0 << true << true << false;
    QTest::newRow("no pi labels without ticks") << 0.0 << 0.0 << true << false << false;
}

void TestRender::tickLabelsFollowTheTicksEntries()
{
    QFETCH(double, xTicks);
    QFETCH(double, yTicks);
    QFETCH(bool, piFractions);
    QFETCH(bool, xLabels);
    QFETCH(bool, yLabels);
    const double step = piFractions ? eval::kPiValue / 2 : 1;
    Scene scene(ViewWindow{-6 * step, 6 * step, step, xTicks, -3, 3, 1, yTicks});
    scene.options.grid = false;
    scene.options.arrows = false;
    scene.options.exactTrig = piFractions;
    scene.options.fractionForm = piFractions;
    scene.draw();

    // x labels hang below the x axis; y labels stand left of the y axis. Both are drawn in
    // the axis colour, away from the axis lines themselves.
    const int axisRow = scene.row(0);
    const int axisColumn = scene.column(0);
    const QRect belowX(scene.column(step) - 20, axisRow + 6, scene.column(3 * step) - scene.column(step) + 40, 40);
    const QRect leftOfY(axisColumn - 60, scene.row(2) - 10, 55, scene.row(1) - scene.row(2) + 20);
    QCOMPARE(scene.count(kRed, belowX) > 0, xLabels);
    QCOMPARE(scene.count(kRed, leftOfY) > 0, yLabels);
}

void TestRender::curvesAreDotsWithoutJoins()
{
    Scene scene;
    scene.options.grid = false;
    scene.add(QStringLiteral("tan(x)"));
    scene.draw();
    QVERIFY(scene.count(kBlue) > 300);
    // Colour values are 0x00BBGGRR, as the settings store keeps them: kBlue paints blue.
    QCOMPARE(plot::colorFromValue(kBlue), QColor(Qt::blue));
    // A joined curve would run a stroke down the poles; dots leave each column sparse.
    int densest = 0;
    for (int x = 0; x < scene.picture.width(); ++x)
        densest = std::max(densest, scene.count(kBlue, QRect(x, 0, 1, 400)));
    QVERIFY2(densest < 40, qPrintable(QString::number(densest)));
}

void TestRender::pointsOutsideTheDomainAreSkipped()
{
    // The first sample is at x = -3 exactly, where ln(x+3) is minus infinity.
    Scene scene(ViewWindow{-3, 3, 1, 1, -3, 3, 1, 1});
    scene.add(QStringLiteral("sqrt(x)"));
    scene.add(QStringLiteral("ln(x+3)"));
    scene.draw();
    QVERIFY(scene.reports.isEmpty() && scene.prompter.messages.isEmpty());
    QVERIFY(scene.state.graphs[1].points.front().x > -3);
    for (const model::GraphEntry& entry : scene.state.graphs)
        for (const eval::PointD& p : entry.points)
            QVERIFY(std::isfinite(p.y));
    scene.state.graphs.pop_back();
    scene.draw();
    QCOMPARE(scene.count(kBlue, QRect(0, 0, scene.column(0), 400)), 0);
    QVERIFY(scene.count(kBlue, QRect(scene.column(0), 0, 600, 400)) > 100);
}

void TestRender::everyZoomSamplesAbout7000Points_data()
{
    QTest::addColumn<ViewWindow>("view");
    QTest::newRow("decimal") << ViewWindow{-5, 5, 1, 1, -5, 5, 1, 1};
    QTest::newRow("degrees") << ViewWindow{-180, 180, 90, 1, -3, 3, 1, 1};
    QTest::newRow("far from zero") << ViewWindow{1e6, 1e6 + 1, 0.1, 1, -1, 1, 1, 1};
    // Grid lines and ticks far denser than the pixels must not hold the redraw up.
    QTest::newRow("tiny steps") << ViewWindow{-5, 5, 1e-9, 1, -5, 5, 1e-9, 1};
}

void TestRender::everyZoomSamplesAbout7000Points()
{
    QFETCH(ViewWindow, view);
    Scene scene(view);
    scene.add(QStringLiteral("sin(x)"));
    scene.draw();
    QCOMPARE(scene.state.sampleStep, std::abs(view.XMax - view.XMin) / 7000);
    const std::vector<eval::PointD>& points = scene.state.graphs[0].points;
    QVERIFY2(points.size() >= 6999 && points.size() <= 7002, qPrintable(QString::number(points.size())));
    QCOMPARE(points.front().x, view.XMin);
    QVERIFY(points.back().x <= view.XMax);
}

void TestRender::guideLinesOvershootByOneUnit()
{
    // With a step of 2 the lines stop one unit beyond the range, short of the surface edge.
    Scene scene(ViewWindow{-6, 6, 2, 0, -6, 6, 2, 0});
    scene.options.grid = false;
    scene.options.arrows = false;
    scene.state.verticalLines = {3};
    scene.state.horizontalLines = {-4.5};
    scene.draw();
    const int x = scene.column(3);
    QVERIFY(scene.count(kBlue, QRect(x - 1, scene.row(6.9), 3, 1)) > 0);
    QCOMPARE(scene.count(kBlue, QRect(x - 1, scene.row(7.2), 3, 1)), 0);
    const int y = scene.row(-4.5);
    QVERIFY(scene.count(kBlue, QRect(scene.column(-6.9), y - 1, 1, 3)) > 0);
    QCOMPARE(scene.count(kBlue, QRect(scene.column(-7.2), y - 1, 1, 3)), 0);
}

void TestRender::fillsAreReplayedInOrder()
{
    // y = x^2 - 4 and the axes (in a colour of their own) close two regions below the x axis.
    Scene scene(ViewWindow{-5, 5, 1, 0, -5, 5, 1, 0});
    scene.options.grid = false;
    scene.options.arrows = false;
    scene.add(QStringLiteral("x^2-4"));
    scene.state.fills = {{1, -1, kGreen}, {-1, -2, kGreen}, {1.5, -1, kRed}};
    scene.draw();
    QVERIFY(scene.is(0.2, -3.5, kRed)); // the later fill wins
    QVERIFY(scene.is(-1, -1, kGreen));
    QVERIFY(scene.is(0.5, 2, kWhite)); // outside stays clear
    QVERIFY(scene.is(4, -3, kWhite));
}

void TestRender::smoothCurvesBreakOnlyWhereTheCurveDoes_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QList<double>>("singularities"); // no line may cross these x
    QTest::addColumn<int>("runs");                    // lines the curve is drawn as
    QTest::addColumn<QPointF>("reaches");             // an end point near the domain edge
    const double h = M_PI / 2;
    QTest::newRow("tan, poles") << "tan(x)" << QList<double>{-3 * h, -h, h, 3 * h} << 5
                                << QPointF(qQNaN(), qQNaN());
    QTest::newRow("1/x, pole") << "1/x" << QList<double>{0} << 2 << QPointF(qQNaN(), qQNaN());
    QTest::newRow("sign, jump") << "sign(x)" << QList<double>{0} << 2 << QPointF(qQNaN(), qQNaN());
    QTest::newRow("sign, jump off zero") << "sign(x-0.3)" << QList<double>{0.3} << 2 << QPointF(qQNaN(), qQNaN());
    // Edges between two samples: the line is followed to them.
    QTest::newRow("sqrt, edge") << "sqrt(3x-1)" << QList<double>{} << 1 << QPointF(1.0 / 3, 0);
    QTest::newRow("ln, edge") << "ln(3x-1)" << QList<double>{} << 1 << QPointF(1.0 / 3, -12);
    QTest::newRow("steep but continuous") << "10x^3-x" << QList<double>{} << 1 << QPointF(qQNaN(), qQNaN());
    QTest::newRow("gap in the domain") << "sqrt(x^2-4)" << QList<double>{-1, 1} << 2 << QPointF(2, 0);
}

void TestRender::smoothCurvesBreakOnlyWhereTheCurveDoes()
{
    QFETCH(QString, formula);
    QFETCH(QList<double>, singularities);
    QFETCH(int, runs);
    QFETCH(QPointF, reaches);
    Scene scene;
    scene.state.smoothCurves = true;
    scene.add(formula);
    scene.draw();
    const model::GraphEntry& entry = scene.state.graphs[0];
    QCOMPARE(int(entry.breaks.size()) + 1, runs);
    auto joined = [&](std::size_t i) {
        return std::find(entry.breaks.begin(), entry.breaks.end(), i) == entry.breaks.end();
    };
    for (std::size_t i = 1; i < entry.points.size(); ++i) {
        if (!joined(i))
            continue;
        for (double at : singularities)
            QVERIFY2(!(entry.points[i - 1].x <= at && at <= entry.points[i].x),
                     qPrintable(QStringLiteral("joined across %1").arg(at)));
    }
    if (!std::isnan(reaches.x())) {
        // The line goes on to the edge of the domain (or beyond the view), not one sample short.
        const bool reached = std::any_of(entry.points.begin(), entry.points.end(), [&](const eval::PointD& p) {
            return std::abs(p.x - reaches.x()) < 1e-7 && (reaches.y() < -10 ? p.y < reaches.y() : std::abs(p.y - reaches.y()) < 1e-3);
        });
        QVERIFY(reached);
    }
    QVERIFY(scene.count(kBlue) > 100);
}

void TestRender::smoothCurvesLeaveNoGap_data()
{
    QTest::addColumn<QString>("formula");
    QTest::newRow("sin") << "sin(x)";
    QTest::newRow("steep wave") << "3sin(5x)";
    QTest::newRow("cube") << "x^3";
}

void TestRender::smoothCurvesLeaveNoGap()
{
    // Large and dense: a line between samples more than 2 pixels apart would show corners.
    QFETCH(QString, formula);
    Scene scene;
    scene.picture = QImage(2400, 1800, QImage::Format_ARGB32_Premultiplied);
    scene.state.smoothCurves = true;
    scene.add(formula);
    scene.draw();
    const model::GraphEntry& entry = scene.state.graphs[0];
    QVERIFY(entry.breaks.empty());
    const plot::PlotScale scale = scene.scale();
    double widest = 0;
    for (std::size_t i = 1; i < entry.points.size(); ++i) {
        const QPointF a = scale.toPixel(entry.points[i - 1].x, entry.points[i - 1].y);
        const QPointF b = scale.toPixel(entry.points[i].x, entry.points[i].y);
        const bool seen = std::max(a.y(), b.y()) >= 0 && std::min(a.y(), b.y()) < 1800;
        if (seen)
            widest = std::max(widest, std::hypot(b.x() - a.x(), b.y() - a.y()));
    }
    QVERIFY2(widest <= 2, qPrintable(QString::number(widest)));
}

void TestRender::curvesKeepTheirWeightOnDenseScreens_data()
{
    QTest::addColumn<bool>("smooth");
    QTest::newRow("dots") << false;
    QTest::newRow("smooth") << true;
}

void TestRender::curvesKeepTheirWeightOnDenseScreens()
{
    // At twice the pixel density a curve covers four times the pixels: a dot or a line's
    // width is counted in logical pixels.
    QFETCH(bool, smooth);
    Scene scene;
    scene.options.grid = false;
    scene.state.smoothCurves = smooth;
    scene.add(QStringLiteral("2sin(x)"));
    // The blue ink of the picture, its antialiased edges counted by their share of blue.
    auto ink = [&] {
        double sum = 0;
        for (int y = 0; y < scene.picture.height(); ++y)
            for (int x = 0; x < scene.picture.width(); ++x) {
                const QColor c = scene.picture.pixelColor(x, y);
                if (c.blue() == 255 && c.red() == c.green())
                    sum += (255 - c.red()) / 255.0;
            }
        return sum;
    };
    scene.draw();
    const double plain = ink();
    scene.picture = QImage(1200, 800, QImage::Format_ARGB32_Premultiplied);
    scene.picture.setDevicePixelRatio(2);
    scene.draw();
    const double ratio = ink() / plain;
    QVERIFY2(ratio > 3 && ratio < 5, qPrintable(QString::number(ratio)));
}

void TestRender::fillsStopAtCurvesOfAnyColour_data()
{
    // The curves are drawn in blue, then red; the function colour is green afterwards.
    QTest::addColumn<QStringList>("formulas");
    QTest::addColumn<QPointF>("seed");
    QTest::addColumn<QPointF>("beyond"); // across a curve from the seed
    QTest::addColumn<bool>("smooth");
    for (bool smooth : {false, true}) {
        const char* mode = smooth ? "smooth" : "dots";
        QTest::addRow("parabola, %s", mode) << QStringList{"x^2"} << QPointF(0.5, 3) << QPointF(2.5, 3) << smooth;
        QTest::addRow("two curves of two colours, %s", mode)
            << QStringList{"-3x", "3x"} << QPointF(0.5, 3) << QPointF(3, 0.5) << smooth;
    }
    // Antialiased edges must not let a fill through where a steep curve crosses the view.
    QTest::newRow("steep wave, smooth") << QStringList{"3sin(5x)+x"} << QPointF(-4, 4) << QPointF(-4, -4) << true;
}

void TestRender::fillsStopAtCurvesOfAnyColour()
{
    QFETCH(QStringList, formulas);
    QFETCH(QPointF, seed);
    QFETCH(QPointF, beyond);
    QFETCH(bool, smooth);
    constexpr quint32 kYellow = 0x0000FFFF;
    Scene scene(ViewWindow{-5, 5, 1, 0, -5, 5, 1, 0});
    scene.options.grid = false;
    scene.state.smoothCurves = smooth;
    for (qsizetype i = 0; i < formulas.size(); ++i) {
        scene.state.functionColor = i == 0 ? kBlue : kRed;
        scene.add(formulas[i]);
    }
    scene.state.functionColor = kGreen;
    scene.state.fills = {{seed.x(), seed.y(), kYellow}};
    scene.draw();
    QVERIFY(scene.is(seed.x(), seed.y(), kYellow));
    QVERIFY(scene.is(beyond.x(), beyond.y(), kWhite));
    QVERIFY(scene.count(kBlue) > 300); // the curve kept its colour
}

void TestRender::tangentIsDrawnThroughTheView()
{
    // The tangent of x^2 at 1 is y = 1 + 2 (x - 1), up to the lift by one sample step.
    Scene scene;
    scene.add(QStringLiteral("x^2"));
    scene.state.graphs[0].marks.push_back(model::GraphMark{});
    scene.state.graphs[0].marks[0].x = 1;
    scene.state.tangentColor = kGreen;
    scene.options.grid = false;
    scene.draw();
    const model::GraphMark& mark = scene.state.graphs[0].marks[0];
    QCOMPARE(mark.y, 1.0);
    QVERIFY(mark.points.size() >= 6999 && mark.points.size() <= 7002);
    for (const eval::PointD& p : mark.points)
        QVERIFY(std::abs(p.y - (1 + 2 * (p.x - 1))) < 0.02);
    // At x = -1 the tangent is near y = -3; the parabola is far above.
    const int top = scene.row(-2.9), bottom = scene.row(-3.1);
    QVERIFY(scene.count(kGreen, QRect(scene.column(-1) - 1, top, 3, bottom - top + 1)) > 0);
}

void TestRender::sineInDegreesIsOnePeriod()
{
    // Added in radians and drawn after the switch to degrees: the curve follows the unit.
    Scene scene(ViewWindow{-180, 180, 90, 1, -1.5, 1.5, 0.5, 1});
    scene.options.grid = false;
    scene.add(QStringLiteral("sin(x)"));
    scene.state.angleUnit = model::AngleUnit::Degrees;
    scene.draw();
    // The labels of the axes cover the curve near x = -30 and x = -180.
    const int axis = scene.row(0);
    const auto above = [&](int x) { return scene.count(kBlue, QRect(x, 0, 1, axis - 2)); };
    const auto below = [&](int x) { return scene.count(kBlue, QRect(x, axis + 3, 1, axis - 2)); };
    for (int d = 50; d <= 160; d += 10) {
        const int right = scene.column(d), left = scene.column(-d);
        QVERIFY(above(right) > 0 && below(right) == 0 && above(left) == 0 && below(left) > 0);
    }
    // The highest pixels of the curve stand around x = 90 at y = 1.
    int top = 0;
    while (top < axis && scene.count(kBlue, QRect(0, top, 600, 1)) == 0)
        ++top;
    QVERIFY(std::abs(top - scene.row(1)) <= 1);
    const QRect peak(scene.column(80), top, scene.column(100) - scene.column(80), 1);
    QCOMPARE(scene.count(kBlue, peak), scene.count(kBlue, QRect(0, top, 600, 1)));

    // Tangents too: flat at the top, the slope per degree where the curve crosses 0.
    for (double x : {90.0, 0.0}) {
        scene.state.graphs[0].marks.emplace_back();
        scene.state.graphs[0].marks.back().x = x;
    }
    scene.draw();
    QCOMPARE(scene.state.graphs[0].marks[0].y, 1.0);
    QVERIFY(scene.state.graphs[0].marks[0].slope == 0);
    QCOMPARE(scene.state.graphs[0].marks[1].slope, 0.0175);
}

void TestRender::traceStandsOnDefinedPoints_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("found");
    QTest::addColumn<double>("expectedX");
    QTest::addColumn<double>("slope"); // NaN: none read out
    QTest::newRow("on the curve") << "x^2" << 1.0 << true << 1.0 << 2.0;
    QTest::newRow("undefined part passed over") << "sqrt(x)" << -3.0 << true << 0.0 << qQNaN();
    QTest::newRow("nothing after the end") << "sqrt(-x)" << 1.0 << false << 0.0 << qQNaN();
}

void TestRender::traceStandsOnDefinedPoints()
{
    QFETCH(QString, formula);
    QFETCH(double, x);
    QFETCH(bool, found);
    QFETCH(double, expectedX);
    QFETCH(double, slope);
    Scene scene;
    scene.add(formula);
    scene.state.trace = {true, 0, x, 0, false};
    scene.draw();
    QCOMPARE(scene.state.trace.found, found);
    if (found)
        QVERIFY(std::abs(scene.state.trace.x - expectedX) <= scene.state.sampleStep);
    QCOMPARE(scene.state.trace.hasSlope, !std::isnan(slope));
    if (scene.state.trace.hasSlope)
        QVERIFY(std::abs(scene.state.trace.slope - slope) <= 2 * scene.state.sampleStep);
}

void TestRender::traceStartsAtTheVisiblePointNearestTheMiddle_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<double>("x");
    QTest::newRow("through the middle") << "x^3-3x" << 0.0;
    QTest::newRow("a line: the foot from the middle") << "x-3" << 1.5;
    QTest::newRow("ln: where x^2 = -ln x") << "ln(x)" << 0.6529186;
    QTest::newRow("nothing in the view: the middle's x") << "x+20" << 0.0;
}

void TestRender::traceStartsAtTheVisiblePointNearestTheMiddle()
{
    QFETCH(QString, formula);
    QFETCH(double, x);
    Scene scene;
    scene.add(formula);
    scene.draw();
    QVERIFY(plot::startTrace(scene.state, 0));
    scene.draw();
    QVERIFY(scene.state.trace.found);
    QVERIFY2(std::abs(scene.state.trace.x - x) <= scene.state.sampleStep,
             qPrintable(QString::number(scene.state.trace.x)));
}

void TestRender::piMultiples_data()
{
    QTest::addColumn<double>("multiple");
    QTest::addColumn<QString>("text");
    const QString pi(QChar(0x03C0));
    const QString minus(QChar(0x2212));
    QTest::newRow("one") << 1.0 << pi;
    QTest::newRow("half") << 0.5 << pi + "/2";
    QTest::newRow("minus three halves") << -1.5 << minus + "3" + pi + "/2";
    QTest::newRow("two thirds, rounded") << 0.6666666666666 << "2" + pi + "/3";
    QTest::newRow("no small fraction") << 0.123 << "0" + QString(QLocale().decimalPoint()) + "123" + pi;
}

void TestRender::piMultiples()
{
    QFETCH(double, multiple);
    QFETCH(QString, text);
    QCOMPARE(plot::piMultipleText(multiple), text);
}

// The plot is paper: a dark theme must not darken its grid (a system colour by default)
// nor hide labels drawn in the window's text colour.
void TestRender::pictureIgnoresTheApplicationPalette()
{
    auto picture = [] {
        Scene scene;
        scene.state.gridColor = model::kButtonShadowColor;
        scene.state.axisColor = 0x80000008; // window text
        scene.add(QStringLiteral("x^2-3"));
        scene.draw();
        return scene.picture;
    };
    const QPalette saved = QGuiApplication::palette();
    const QImage light = picture();
    QPalette dark(QColor(60, 60, 60), QColor(40, 40, 40));
    for (auto role : {QPalette::Text, QPalette::WindowText})
        dark.setColor(role, QColor(230, 230, 230));
    for (auto role : {QPalette::Base, QPalette::Dark, QPalette::Shadow})
        dark.setColor(role, QColor(20, 20, 20));
    QGuiApplication::setPalette(dark);
    const QImage inDark = picture();
    QGuiApplication::setPalette(saved);
    QCOMPARE(inDark, light);
}

void TestRender::gridLinesSetStraightMatchThePainter_data()
{
    QTest::addColumn<ViewWindow>("view");
    QTest::newRow("whole pixels") << ViewWindow{-6, 6, 1, 1, -4, 4, 1, 1};
    QTest::newRow("fractions of pixels") << ViewWindow{-3.3, 7.1, 0.7, 1, -2.2, 4.45, 0.3, 1};
    QTest::newRow("half pixels") << ViewWindow{-2.5 / 60, 7.5 - 2.5 / 60, 0.5, 1, -3.3, 3.3, 1, 1};
    QTest::newRow("denser than the pixels") << ViewWindow{-5, 5, 0.001, 1, -5, 5, 1, 1};
    QTest::newRow("far from zero") << ViewWindow{1e6 + 0.3, 1e6 + 9.9, 0.9, 1, -1, 1, 0.25, 1};
}

void TestRender::gridLinesSetStraightMatchThePainter()
{
    QFETCH(ViewWindow, view);
    Scene scene(view);
    scene.add(QStringLiteral("x^2/3-1"));
    plot::sampleDrawing(scene.state);
    std::array<QImage, 2> pictures{scene.picture.copy(), scene.picture.copy()};
    for (std::size_t clipped = 0; clipped < 2; ++clipped) {
        QImage& picture = pictures[clipped];
        picture.fill(Qt::white);
        QPainter painter(&picture);
        // A clip, even of the whole picture, leaves every line to the painter.
        if (clipped != 0)
            painter.setClipRect(picture.rect());
        plot::paintPlot(scene.state, painter, picture.size(), &picture, scene.options);
    }
    scene.picture = pictures[0];
    QVERIFY(scene.count(kGreen) > 300);
    QVERIFY(pictures[0] == pictures[1]);
}

void TestRender::parallelSamplingGivesTheSamePicture_data()
{
    QTest::addColumn<bool>("smooth");
    QTest::addColumn<ViewWindow>("view");
    QTest::newRow("dots") << false << ViewWindow{};
    QTest::newRow("joined") << true << ViewWindow{};
    QTest::newRow("joined, zoomed on the poles") << true << ViewWindow{-0.5, 0.5, 0.1, 0.1, -40, 40, 10, 10};
}

void TestRender::parallelSamplingGivesTheSamePicture()
{
    QFETCH(bool, smooth);
    QFETCH(ViewWindow, view);
    // Poles, domain edges, jumps and fast waves: every kind of refinement, many curves.
    const QStringList formulas{"sin(x)", "1/x", "sqrt(4-x^2)", "tan(x)", "ln(x)", "x^3-2x",
                               "abs(x)/x", "sin(1/x)", "exp(x)", "sqrt(x)", "cos(7x)", "1/(x^2-1)"};
    std::array<Scene, 2> scenes{Scene(view), Scene(view)};
    for (Scene& scene : scenes) {
        scene.state.smoothCurves = smooth;
        for (const QString& formula : formulas)
            scene.add(formula);
        scene.state.graphs[3].marks.push_back(model::GraphMark{});
        scene.state.graphs[3].marks[0].x = 0.25;
    }
    plot::sampleDrawing(scenes[0].state, {}, plot::Sampling::Serial);
    plot::sampleDrawing(scenes[1].state, {}, plot::Sampling::Parallel);
    for (std::size_t i = 0; i < scenes[0].state.graphs.size(); ++i) {
        const model::GraphEntry& serial = scenes[0].state.graphs[i];
        const model::GraphEntry& parallel = scenes[1].state.graphs[i];
        QVERIFY2(!serial.points.empty(), qPrintable(serial.text));
        QCOMPARE(parallel.breaks, serial.breaks);
        QVERIFY2(std::equal(serial.points.begin(), serial.points.end(), parallel.points.begin(),
                            parallel.points.end(),
                            [](eval::PointD a, eval::PointD b) { return a.x == b.x && a.y == b.y; }),
                 qPrintable(serial.text));
        QCOMPARE(parallel.marks.size(), serial.marks.size());
    }
    QCOMPARE(scenes[1].state.graphs[3].marks[0].points.size(), scenes[0].state.graphs[3].marks[0].points.size());
    for (Scene& scene : scenes) {
        scene.picture.fill(Qt::white);
        QPainter painter(&scene.picture);
        plot::paintPlot(scene.state, painter, scene.picture.size(), &scene.picture, scene.options);
    }
    QVERIFY(scenes[0].count(kBlue) > 1000);
    QVERIFY(scenes[1].picture == scenes[0].picture);
}

QTEST_MAIN(TestRender)
#include "test_render.moc"
