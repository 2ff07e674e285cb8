#include "eval/numtext.h"
#include "model/graph_list.h"
#include "plot/colors.h"
#include "plot/coordinates.h"
#include "plot/flood_fill.h"
#include "plot/render.h"
#include "plot/ticks.h"
#include "scripted_prompter.h"

#include <QGuiApplication>
#include <QPainter>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <tuple>

using namespace curvix;
using model::ViewWindow;

namespace {

constexpr quint32 kRed = 0x000000FF;   // axes and labels
constexpr quint32 kBlue = 0x00FF0000;  // curves, guide lines
constexpr quint32 kGreen = 0x0000FF00; // grid

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
    bool is(int x, int y, quint32 value) const
    {
        return QRect(QPoint(0, 0), picture.size()).contains(x, y) &&
               picture.pixelColor(x, y) == plot::colorFromValue(value);
    }
    // Pixels of a colour inside a rectangle of the picture.
    int count(quint32 value, QRect area = {}) const
    {
        if (area.isNull())
            area = picture.rect();
        area &= picture.rect();
        int n = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                n += is(x, y, value);
        return n;
    }
    // Whether the column (or row) near a pixel holds the axis colour across most of it.
    bool axisColumnNear(int x) const
    {
        for (int dx = -1; dx <= 1; ++dx)
            if (count(kRed, QRect(x + dx, 0, 1, picture.height())) > picture.height() * 0.8)
                return true;
        return false;
    }
    bool axisRowNear(int y) const
    {
        for (int dy = -1; dy <= 1; ++dy)
            if (count(kRed, QRect(0, y + dy, picture.width(), 1)) > picture.width() * 0.8)
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
    void arrowsNeedTheCheckBoxAndTheirSwitch_data();
    void arrowsNeedTheCheckBoxAndTheirSwitch();
    void curvesAreDotsWithoutJoins();
    void pointsOutsideTheDomainAreSkipped();
    void everyZoomSamplesAbout7000Points_data();
    void everyZoomSamplesAbout7000Points();
    void anEntryThatDoesNotCompileIsReported();
    void extremeViewsDoNotHang_data();
    void extremeViewsDoNotHang();
    void guideLinesOvershootByOneUnit();
    void floodFillStopsAtTheBoundary();
    void fillsAreReplayedInOrder();
    void tangentIsLiftedByOneStep();
    void traceStandsOnDefinedPoints_data();
    void traceStandsOnDefinedPoints();
    void piMultiples_data();
    void piMultiples();
};

void TestRender::axesStandAtZeroOrAtTheLowerEnd_data()
{
    QTest::addColumn<ViewWindow>("view");
    QTest::addColumn<double>("yAxisAt");
    QTest::addColumn<double>("xAxisAt");
    QTest::newRow("around zero") << ViewWindow{-5, 5, 1, 1, -5, 5, 1, 1} << 0.0 << 0.0;
    QTest::newRow("x range above zero") << ViewWindow{1, 5, 1, 1, -5, 5, 1, 1} << 1.0 << 0.0;
    QTest::newRow("y range below zero") << ViewWindow{-5, 5, 1, 1, -9, -2, 1, 1} << 0.0 << -9.0;
    QTest::newRow("both off zero") << ViewWindow{-10, -4, 1, 1, 3, 8, 1, 1} << -10.0 << 3.0;
}

void TestRender::axesStandAtZeroOrAtTheLowerEnd()
{
    QFETCH(ViewWindow, view);
    QFETCH(double, yAxisAt);
    QFETCH(double, xAxisAt);
    Scene scene(view);
    scene.options.grid = false;
    scene.options.tickLabels = false;
    scene.draw();
    QVERIFY(scene.axisColumnNear(scene.column(yAxisAt)));
    QVERIFY(scene.axisRowNear(scene.row(xAxisAt)));
    if (yAxisAt != 0 && view.XMin - view.XStep < 0 && 0 < view.XMax + view.XStep)
        QVERIFY(!scene.axisColumnNear(scene.column(0)));
}

void TestRender::gridFollowsItsCheckBoxAndTheRange()
{
    Scene scene(ViewWindow{-4, 4, 1, 1, -3, 3, 1, 1});
    scene.options.tickLabels = false;
    scene.options.arrows = false;
    scene.draw();
    const int gridPixels = scene.count(kGreen);
    QVERIFY(gridPixels > 0);
    // The grid covers the range only; the border of one step stays free of it.
    QCOMPARE(scene.count(kGreen, QRect(0, 0, scene.column(-4) - 1, 400)), 0);
    QCOMPARE(scene.count(kGreen, QRect(scene.column(4) + 2, 0, 600, 400)), 0);
    QCOMPARE(scene.count(kGreen, QRect(0, 0, 600, scene.row(3) - 1)), 0);
    QVERIFY(scene.count(kGreen, QRect(scene.column(-4) - 1, 0, 3, 400)) > 0);

    scene.options.grid = false;
    scene.draw();
    QCOMPARE(scene.count(kGreen), 0);
    QVERIFY(scene.axisColumnNear(scene.column(0)));
    QVERIFY(scene.axisRowNear(scene.row(0)));
}

void TestRender::tickLabelsFollowTheTicksEntries_data()
{
    QTest::addColumn<double>("xTicks");
    QTest::addColumn<double>("yTicks");
    QTest::addColumn<bool>("exactTrig");
    QTest::addColumn<bool>("fractions");
    QTest::addColumn<bool>("xLabels");
    QTest::addColumn<bool>("yLabels");
    QTest::newRow("both") << 1.0 << 1.0 << false << false << true << true;
    QTest::newRow("no x ticks") << 0.0 << 1.0 << false << false << false << true;
    QTest::newRow("no y ticks") << 1.0 << 0.0 << false << false << true << false;
    QTest::newRow("negative ticks entry") << -1.0 << -2.0 << false << false << false << false;
    QTest::newRow("pi labels") << 1.0 << 0.0 << true << false << true << false;
    QTest::newRow("fraction labels") << 1.0 << 0.0 << true << true << true << false;
    QTest::newRow("no pi labels without ticks") << 0.0 << 0.0 << true << true << false << false;
}

void TestRender::tickLabelsFollowTheTicksEntries()
{
    QFETCH(double, xTicks);
    QFETCH(double, yTicks);
    QFETCH(bool, exactTrig);
    QFETCH(bool, fractions);
    QFETCH(bool, xLabels);
    QFETCH(bool, yLabels);
    const double step = exactTrig ? eval::kPiValue / 2 : 1;
    Scene scene(ViewWindow{-6 * step, 6 * step, step, xTicks, -3, 3, 1, yTicks});
    scene.options.grid = false;
    scene.options.arrows = false;
    scene.options.exactTrig = exactTrig;
    scene.options.fractionForm = fractions;
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

void TestRender::arrowsNeedTheCheckBoxAndTheirSwitch_data()
{
    QTest::addColumn<bool>("checkBox");
    QTest::addColumn<model::AxisArrowSwitches>("switches");
    QTest::addColumn<QList<bool>>("expected"); // y neg, y pos, x neg, x pos

    const model::AxisArrowSwitches all{true, true, true, true};
    QTest::newRow("all") << true << all << QList<bool>{true, true, true, true};
    QTest::newRow("check box off") << false << all << QList<bool>{false, false, false, false};
    QTest::newRow("only x pos") << true << model::AxisArrowSwitches{false, true, false, false}
                                << QList<bool>{false, false, false, true};
    QTest::newRow("only y neg") << true << model::AxisArrowSwitches{false, false, true, false}
                                << QList<bool>{true, false, false, false};
}

void TestRender::arrowsNeedTheCheckBoxAndTheirSwitch()
{
    QFETCH(bool, checkBox);
    QFETCH(model::AxisArrowSwitches, switches);
    QFETCH(QList<bool>, expected);
    Scene scene;
    scene.options.grid = false;
    scene.options.tickLabels = false;
    scene.options.arrows = checkBox;
    scene.state.arrows = switches;
    scene.draw();

    // An arrow head covers more of its end of the axis than the bare axis does.
    const int cx = scene.column(0), cy = scene.row(0);
    const QRect ends[4] = {QRect(cx - 8, 386, 16, 14), QRect(cx - 8, 0, 16, 14),
                           QRect(0, cy - 8, 14, 16), QRect(586, cy - 8, 14, 16)};
    Scene bare;
    bare.options = scene.options;
    bare.options.arrows = false;
    bare.draw();
    for (int i = 0; i < 4; ++i) {
        const bool arrow = scene.count(kRed, ends[i]) > bare.count(kRed, ends[i]);
        QVERIFY2(arrow == expected[i], qPrintable(QString::number(i)));
    }
}

void TestRender::curvesAreDotsWithoutJoins()
{
    Scene scene;
    scene.options.grid = false;
    scene.add(QStringLiteral("tan(x)"));
    scene.draw();
    QVERIFY(scene.count(kBlue) > 300);
    // A joined curve would run a stroke down the poles; dots leave each column sparse.
    int densest = 0;
    for (int x = 0; x < scene.picture.width(); ++x)
        densest = std::max(densest, scene.count(kBlue, QRect(x, 0, 1, 400)));
    QVERIFY2(densest < 40, qPrintable(QString::number(densest)));
    QVERIFY(scene.reports.isEmpty());
}

void TestRender::pointsOutsideTheDomainAreSkipped()
{
    Scene scene(ViewWindow{-3, 3, 1, 1, -3, 3, 1, 1});
    scene.add(QStringLiteral("sqrt(x)"));
    scene.add(QStringLiteral("ln(x)+1/(x-1)"));
    scene.draw();
    QVERIFY(scene.reports.isEmpty());
    QVERIFY(scene.prompter.messages.isEmpty());
    QCOMPARE(scene.count(kBlue, QRect(0, 0, scene.column(0), 400)), 0);
    QVERIFY(scene.count(kBlue, QRect(scene.column(0), 0, 600, 400)) > 100);
    for (const model::GraphEntry& entry : scene.state.graphs)
        for (const eval::PointD& p : entry.points)
            QVERIFY(p.x >= 0 && std::isfinite(p.y));
}

void TestRender::everyZoomSamplesAbout7000Points_data()
{
    QTest::addColumn<ViewWindow>("view");
    QTest::newRow("decimal") << ViewWindow{-5, 5, 1, 1, -5, 5, 1, 1};
    QTest::newRow("narrow") << ViewWindow{0.1, 0.8, 0.1, 1, -1, 1, 0.5, 1};
    QTest::newRow("degrees") << ViewWindow{-180, 180, 90, 1, -3, 3, 1, 1};
    QTest::newRow("huge") << ViewWindow{-1e6, 1e6, 1e5, 1, -1, 1, 1, 1};
    QTest::newRow("far from zero") << ViewWindow{1e6, 1e6 + 1, 0.1, 1, -1, 1, 1, 1};
}

void TestRender::everyZoomSamplesAbout7000Points()
{
    QFETCH(ViewWindow, view);
    Scene scene(view);
    scene.add(QStringLiteral("sin(x)"));
    scene.draw();
    QCOMPARE(scene.state.sampleStep, std::abs(view.XMax - view.XMin) / 7000);
    const std::size_t n = scene.state.graphs[0].points.size();
    QVERIFY2(n >= 6999 && n <= 7002, qPrintable(QString::number(n)));
    QCOMPARE(scene.state.graphs[0].points.front().x, view.XMin);
    QVERIFY(scene.state.graphs[0].points.back().x <= view.XMax);
}

void TestRender::anEntryThatDoesNotCompileIsReported()
{
    // An entry made without addFunction is compiled by the redraw; a bad text draws nothing.
    Scene scene;
    scene.add(QStringLiteral("x"));
    scene.state.graphs[0].expression = QStringLiteral("x+");
    scene.state.graphs[0].formula.reset();
    scene.state.graphs[0].marks.push_back(model::GraphMark{});
    scene.draw();
    QCOMPARE(scene.reports, QStringList{QStringLiteral("Unexpected end of formula at position 3")});
    QVERIFY(scene.state.graphs[0].points.empty());
    QVERIFY(scene.state.graphs[0].marks[0].points.empty());
    QVERIFY(scene.axisRowNear(scene.row(0)));
}

void TestRender::extremeViewsDoNotHang_data()
{
    QTest::addColumn<ViewWindow>("view");
    QTest::addColumn<QSize>("size");
    QTest::newRow("far from zero") << ViewWindow{1e12, 1e12 + 10, 1, 1, 1e12, 1e12 + 10, 1, 1}
                                   << QSize(600, 400);
    QTest::newRow("tiny steps") << ViewWindow{-5, 5, 1e-9, 1, -5, 5, 1e-9, 1} << QSize(600, 400);
    QTest::newRow("beyond exact integers")
        << ViewWindow{1e16, 1e16 + 100, 1, 1, 1e16, 1e16 + 100, 1, 1} << QSize(600, 400);
    QTest::newRow("zero-sized picture") << ViewWindow{} << QSize(0, 0);
    QTest::newRow("one pixel") << ViewWindow{} << QSize(1, 1);
    QTest::newRow("empty range") << ViewWindow{2, 2, 1, 1, 2, 2, 1, 1} << QSize(600, 400);
}

void TestRender::extremeViewsDoNotHang()
{
    QFETCH(ViewWindow, view);
    QFETCH(QSize, size);
    Scene scene(view);
    scene.add(QStringLiteral("x^2"));
    scene.picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
    scene.draw();
    QVERIFY(scene.reports.isEmpty());
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
    QVERIFY(scene.count(kBlue, QRect(x - 1, scene.row(-6.9), 3, 1)) > 0);
    QCOMPARE(scene.count(kBlue, QRect(x - 1, scene.row(-7.2), 3, 1)), 0);
    const int y = scene.row(-4.5);
    QVERIFY(scene.count(kBlue, QRect(scene.column(-6.9), y - 1, 1, 3)) > 0);
    QCOMPARE(scene.count(kBlue, QRect(scene.column(-7.2), y - 1, 1, 3)), 0);
    // A line outside the view is simply clipped.
    scene.state.verticalLines = {1000, -1e300};
    scene.draw();
}

void TestRender::floodFillStopsAtTheBoundary()
{
    QImage picture(50, 40, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        painter.setPen(Qt::black);
        painter.drawRect(10, 10, 20, 15); // a closed box
        painter.setPen(Qt::red);
        painter.drawLine(15, 15, 25, 15); // another colour inside does not stop the fill
    }
    plot::FloodFill(picture, QPoint(12, 12), Qt::blue, Qt::black);
    for (auto [x, y, color] : {std::tuple{12, 12, Qt::blue}, {20, 15, Qt::blue}, {29, 24, Qt::blue},
                               {10, 10, Qt::black}, {5, 5, Qt::white}, {31, 26, Qt::white}})
        QCOMPARE(picture.pixelColor(x, y), QColor(color));

    const QImage before = picture;
    plot::FloodFill(picture, QPoint(10, 12), Qt::green, Qt::black); // on the boundary
    plot::FloodFill(picture, QPoint(-1, 500), Qt::green, Qt::black); // off the picture
    QCOMPARE(picture, before);
    // Refilling a region with its own colour still reaches all of it.
    plot::FloodFill(picture, QPoint(12, 12), Qt::blue, Qt::black);
    QCOMPARE(picture, before);
}

void TestRender::fillsAreReplayedInOrder()
{
    // y = x^2 - 4 and the axes (in the curve colour) close two regions below the x axis.
    Scene scene(ViewWindow{-5, 5, 1, 0, -5, 5, 1, 0});
    scene.options.grid = false;
    scene.options.arrows = false;
    scene.state.axisColor = kBlue;
    scene.add(QStringLiteral("x^2-4"));
    scene.state.fills = {{1, -1, kGreen}, {-1, -2, kGreen}, {1.5, -1, kRed}};
    scene.draw();
    QVERIFY(scene.is(scene.column(0.2), scene.row(-3.5), kRed)); // the later fill wins
    QVERIFY(scene.is(scene.column(-1), scene.row(-1), kGreen));
    QVERIFY(scene.is(scene.column(0.5), scene.row(2), 0x00FFFFFF)); // outside stays clear
    QVERIFY(scene.is(scene.column(4), scene.row(-3), 0x00FFFFFF));
}

void TestRender::tangentIsLiftedByOneStep()
{
    Scene scene;
    scene.add(QStringLiteral("x^2"));
    const model::GraphMark mark = plot::tangentMark(*scene.state.graphs[0].formula,
                                                    QStringLiteral("x"), 1, scene.state.view, 0.001);
    QCOMPARE(mark.slope, 2.001); // (1.001² − 1) / 0.001, to 4 decimals
    QCOMPARE(mark.y, 1.0);
    // The line passes one step above the point of tangency.
    const auto at = std::find_if(mark.points.begin(), mark.points.end(),
                                 [](const eval::PointD& p) { return std::abs(p.x - 1) < 5e-4; });
    QVERIFY(at != mark.points.end());
    // Across the view at the fixed step, and every point on the line (none left unsampled).
    QVERIFY(mark.points.size() >= 10000 && mark.points.size() <= 10001);
    for (const eval::PointD& p : mark.points)
        QVERIFY(std::abs(p.y - (1.001 + 2.001 * (p.x - 1))) < 1e-9);

    // Drawn by the redraw in the tangent colour, through the view.
    scene.state.graphs[0].marks.push_back(model::GraphMark{});
    scene.state.graphs[0].marks[0].x = 1;
    scene.state.tangentColor = kGreen;
    scene.options.grid = false;
    scene.draw();
    QVERIFY(scene.count(kGreen) > 400);
    // At x = -1 the tangent is near y = 1 + 2·(-2) = -3; the parabola is far above.
    const int top = scene.row(-2.9), bottom = scene.row(-3.1);
    QVERIFY(scene.count(kGreen, QRect(scene.column(-1) - 1, top, 3, bottom - top + 1)) > 0);
}

void TestRender::traceStandsOnDefinedPoints_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("found");
    QTest::addColumn<double>("expectedX");
    QTest::newRow("on the curve") << "x^2" << 1.0 << true << 1.0;
    QTest::newRow("undefined part passed over") << "sqrt(x)" << -3.0 << true << 0.0;
    QTest::newRow("nothing after the end") << "sqrt(-x)" << 1.0 << false << 0.0;
}

void TestRender::traceStandsOnDefinedPoints()
{
    QFETCH(QString, formula);
    QFETCH(double, x);
    QFETCH(bool, found);
    QFETCH(double, expectedX);
    Scene scene;
    scene.add(formula);
    scene.state.trace = {true, 0, x, 0, false};
    scene.draw();
    QCOMPARE(scene.state.trace.found, found);
    if (!found)
        return;
    QVERIFY(std::abs(scene.state.trace.x - expectedX) <= scene.state.sampleStep);
    scene.state.coordinateSeparator = QStringLiteral("|");
    QVERIFY(plot::TraceText(scene.state).contains(QLatin1Char('|')));
}

void TestRender::piMultiples_data()
{
    QTest::addColumn<double>("multiple");
    QTest::addColumn<QString>("text");
    const QString pi(QChar(0x03C0));
    const QString minus(QChar(0x2212));
    QTest::newRow("one") << 1.0 << pi;
    QTest::newRow("minus one") << -1.0 << minus + pi;
    QTest::newRow("two") << 2.0 << "2" + pi;
    QTest::newRow("half") << 0.5 << pi + "/2";
    QTest::newRow("minus three halves") << -1.5 << minus + "3" + pi + "/2";
    QTest::newRow("quarter") << 0.25 << pi + "/4";
    QTest::newRow("two thirds, rounded") << 0.6666666666666 << "2" + pi + "/3";
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("no small fraction") << 0.123 << "0" + QString(QLocale().decimalPoint()) + "123" + pi;
}

void TestRender::piMultiples()
{
    QFETCH(double, multiple);
    QFETCH(QString, text);
    QCOMPARE(plot::piMultipleText(multiple), text);
}

QTEST_MAIN(TestRender)
#include "test_render.moc"
