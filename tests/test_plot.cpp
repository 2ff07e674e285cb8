#include "eval/formula.h"
#include "plot/angles.h"
#include "plot/colors.h"
#include "plot/coordinates.h"
#include "model/strings.h"
#include "plot/range_rows.h"
#include "plot/trace.h"
#include "plot/zoom.h"

#include <QTest>

using namespace curvix;
using model::ViewWindow;

class TestPlot : public QObject {
    Q_OBJECT

private slots:
    void defaultsComeFromTheStringTable();
    void safeDivide_data();
    void safeDivide();
    void scaleShowsOneStepBeyondTheRange_data();
    void scaleShowsOneStepBeyondTheRange();
    void zeroSizedSurfaceDoesNotFail();
    void colourValues_data();
    void colourValues();
    void convertAngle_data();
    void convertAngle();
    void marksFollowTheAngleUnit();
    void rangeBoxesTakeTexts_data();
    void rangeBoxesTakeTexts();
    void rowsBecomeAView_data();
    void rowsBecomeAView();
    void rangeNumbers_data();
    void rangeNumbers();
    void zoomedSteps_data();
    void zoomedSteps();
    void zoomingInWritesTheBoxIntoTheRows();
    void zoomingOutWalksTheHistory_data();
    void zoomingOutWalksTheHistory();
    void wheelZoomKeepsThePointInPlace();
    void wheelTurnsAreHistorySteps_data();
    void wheelTurnsAreHistorySteps();
    void traceStartsOnTheBoxFunction_data();
    void traceStartsOnTheBoxFunction();
    void traceStepsStopAtTheViewEnds_data();
    void traceStepsStopAtTheViewEnds();
    void fontSizes_data();
    void fontSizes();
};

void TestPlot::defaultsComeFromTheStringTable()
{
    model::AppState state;
    state.gridColor = 1;
    state.arrows = {false, false, false, false};
    state.coordinateSeparator.clear();
    plot::InitPlotDefaults(state);

    // Presets in the pi notation of the range boxes; the grid in a system colour.
    QCOMPARE(state.presetRadiansX, (model::RangePreset{"-3p", "3p", "0.5p", "1"}));
    QCOMPARE(state.arrows, (model::AxisArrowSwitches{true, true, true, true}));
    QCOMPARE(state.coordinateSeparator, QStringLiteral(","));
    QCOMPARE(state.gridColor, 0x80000010u);
    QCOMPARE(state.view, (ViewWindow{-5, 5, 1, 1, -5, 5, 1, 1}));
    QCOMPARE(state.startView, state.view);
    // The first sample step is the single-precision 0.001, widened.
    QCOMPARE(state.sampleStep, 0.0010000000474974513);
}

void TestPlot::safeDivide_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("expected");
    QTest::newRow("plain") << 12.0 << 800.0 << 0.015;
    QTest::newRow("zero divisor") << 12.0 << 0.0 << 0.0;
    QTest::newRow("negative zero divisor") << 12.0 << -0.0 << 0.0;
    QTest::newRow("zero over zero") << 0.0 << 0.0 << 0.0;
    QTest::newRow("negative") << -3.0 << 2.0 << -1.5;
}

void TestPlot::safeDivide()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(double, expected);
    QCOMPARE(plot::SafeDivide(a, b), expected);
}

void TestPlot::scaleShowsOneStepBeyondTheRange_data()
{
    QTest::addColumn<ViewWindow>("view");
    QTest::addColumn<QSizeF>("pixels");

    QTest::newRow("decimal") << ViewWindow{-5, 5, 1, 1, -5, 5, 1, 1} << QSizeF(600, 400);
    QTest::newRow("degrees") << ViewWindow{-180, 180, 90, 1, -3, 3, 1, 1} << QSizeF(800, 600);
    QTest::newRow("above zero") << ViewWindow{1, 5, 0.5, 0, 2, 9, 1, 0} << QSizeF(333, 217);
    QTest::newRow("below zero") << ViewWindow{-9, -2, 1, 1, -9, -2, 1, 1} << QSizeF(100, 100);
}

void TestPlot::scaleShowsOneStepBeyondTheRange()
{
    QFETCH(ViewWindow, view);
    QFETCH(QSizeF, pixels);
    const plot::PlotScale scale = plot::SetPlotScale(pixels, view);

    QCOMPARE(scale.left(), view.XMin - view.XStep);
    QCOMPARE(scale.right(), view.XMax + view.XStep);
    QCOMPARE(scale.top(), view.YMax + view.YStep);
    QCOMPARE(scale.bottom(), view.YMin - view.YStep);

    // The corners of the surface are the corners of the bordered range, y pointing up.
    const QPointF topLeft = scale.toPixel(scale.left(), scale.top());
    const QPointF bottomRight = scale.toPixel(scale.right(), scale.bottom());
    QVERIFY(qAbs(topLeft.x()) < 1e-9 && qAbs(topLeft.y()) < 1e-9);
    QVERIFY(qAbs(bottomRight.x() - pixels.width()) < 1e-9);
    QVERIFY(qAbs(bottomRight.y() - pixels.height()) < 1e-9);
    QVERIFY(scale.toPixel(0, view.YMax).y() < scale.toPixel(0, view.YMin).y());

    const QPointF world(view.XMin + 0.3 * (view.XMax - view.XMin), view.YMin + 0.7);
    const QPointF back = scale.toWorld(scale.toPixel(world.x(), world.y()));
    QVERIFY(qAbs(back.x() - world.x()) < 1e-9 && qAbs(back.y() - world.y()) < 1e-9);
    QCOMPARE(scale.unitsPerPixelX(), (scale.right() - scale.left()) / pixels.width());
}

void TestPlot::zeroSizedSurfaceDoesNotFail()
{
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(0, 0), ViewWindow{});
    QCOMPARE(scale.unitsPerPixelX(), 0.0);
    QCOMPARE(scale.unitsPerPixelY(), 0.0);
    QVERIFY(qIsFinite(scale.toPixel(1, 1).x()) && qIsFinite(scale.toPixel(1, 1).y()));
}

void TestPlot::colourValues_data()
{
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QColor>("color");
    QTest::newRow("black") << 0u << QColor(0, 0, 0);
    QTest::newRow("red is the low byte") << 0x000000FFu << QColor(255, 0, 0);
    QTest::newRow("green") << 0x0000FF00u << QColor(0, 255, 0);
    QTest::newRow("blue is the third byte") << 0x00FF0000u << QColor(0, 0, 255);
    QTest::newRow("mixed") << 0x00123456u << QColor(0x56, 0x34, 0x12);
    QTest::newRow("system: dark") << 0x80000010u << QColor(1, 2, 3);
    QTest::newRow("system: button face") << 0x8000000Fu << QColor(4, 5, 6);
}

void TestPlot::colourValues()
{
    QFETCH(quint32, value);
    QFETCH(QColor, color);
    QPalette palette;
    palette.setColor(QPalette::Dark, QColor(1, 2, 3));
    palette.setColor(QPalette::Button, QColor(4, 5, 6));
    QCOMPARE(plot::colorFromValue(value, palette), color);
    if (value < 0x80000000u)
        QCOMPARE(plot::colorValueFromColor(color), value);
}

void TestPlot::convertAngle_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("conversion");
    QTest::addColumn<double>("expected");
    QTest::newRow("rad to deg, whole degrees") << 1.5708 << 1 << 90.0;
    QTest::newRow("deg to rad, two decimals") << 90.0 << 2 << 1.57;
    QTest::newRow("deg to grad") << 90.0 << 3 << 100.0;
    QTest::newRow("grad to deg") << 50.0 << 4 << 45.0;
    QTest::newRow("rad to grad") << 3.14159265358979 << 5 << 200.0;
    QTest::newRow("grad to rad") << 100.0 << 6 << 1.57;
    QTest::newRow("half to even, down") << 6.5 << 4 << 6.0;   // 5.85 → 6
    QTest::newRow("ties to even at .5") << 2.5 * 400 / 360 << 4 << 2.0;
    QTest::newRow("other case unchanged") << 1.2345 << 7 << 1.2345;
    QTest::newRow("negative") << -1.5708 << 1 << -90.0;
}

void TestPlot::convertAngle()
{
    QFETCH(double, value);
    QFETCH(int, conversion);
    QFETCH(double, expected);
    QCOMPARE(plot::convertAngle(value, conversion), expected);
}

void TestPlot::marksFollowTheAngleUnit()
{
    using U = model::AngleUnit;
    model::AppState state;
    QVERIFY(!plot::convertMarks(state, U::Radians, U::Degrees)); // empty list
    state.graphs.resize(2);
    state.graphs[1].marks.push_back({QStringLiteral("x"), 1.5708, 0, {}, {}, 0});
    QVERIFY(!plot::convertMarks(state, U::Degrees, U::Degrees)); // unit unchanged
    QCOMPARE(state.graphs[1].marks[0].x, 1.5708);
    QVERIFY(plot::convertMarks(state, U::Radians, U::Degrees));
    QCOMPARE(state.graphs[1].marks[0].x, 90.0);
    QVERIFY(plot::convertMarks(state, U::Degrees, U::Radians));
    QCOMPARE(state.graphs[1].marks[0].x, 1.57);
    QCOMPARE(plot::angleConversionCase(U::Gradians, U::Radians), 6);
}

void TestPlot::rangeBoxesTakeTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("xRow");
    QTest::addColumn<bool>("yRow");
    QTest::newRow("empty") << "" << true << true;
    QTest::newRow("number") << "-2.5" << true << true;
    QTest::newRow("decimal comma") << "2,5" << true << true;
    QTest::newRow("sign being typed") << "-" << true << true;
    QTest::newRow("pi") << "p" << true << false;
    QTest::newRow("minus pi") << "-p" << true << false;
    QTest::newRow("multiple of pi") << "2p" << true << false;
    QTest::newRow("pi twice") << "pp" << false << false;
    QTest::newRow("pi in the middle") << "2p3" << false << false;
    QTest::newRow("letters") << "abc" << false << false;
    QTest::newRow("exponent") << "1e5" << false << false;
}

void TestPlot::rangeBoxesTakeTexts()
{
    QFETCH(QString, text);
    QFETCH(bool, xRow);
    QFETCH(bool, yRow);
    QCOMPARE(plot::acceptsRangeText(text), xRow);
    QCOMPARE(plot::acceptsStepText(text), yRow);
}

void TestPlot::rowsBecomeAView_data()
{
    QTest::addColumn<plot::RangeRow>("x");
    QTest::addColumn<plot::RangeRow>("y");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("problemMentions");

    const plot::RangeRow decimal{"-5", "5", "1", "1"};
    QTest::newRow("decimal") << decimal << decimal << true << "";
    QTest::newRow("pi preset") << plot::RangeRow{"-3p", "3p", "0.5p", "1"}
                               << plot::RangeRow{"-3", "3", "1", "1"} << true << "";
    QTest::newRow("min above max") << plot::RangeRow{"5", "-5", "1", "1"} << decimal << false
                                   << "x minimum";
    QTest::newRow("min equals max") << decimal << plot::RangeRow{"2", "2", "1", "1"} << false
                                    << "y minimum";
    QTest::newRow("zero step with ticks") << plot::RangeRow{"-5", "5", "0", "1"} << decimal
                                          << false << "x step";
    QTest::newRow("zero step without ticks") << plot::RangeRow{"-5", "5", "0", "0"} << decimal
                                             << true << "";
    QTest::newRow("negative step") << decimal << plot::RangeRow{"-5", "5", "-1", "2"} << false
                                   << "y step";
    QTest::newRow("half typed") << plot::RangeRow{"-", "5", "1", "1"} << decimal << false
                                << "x minimum";
    QTest::newRow("empty") << decimal << plot::RangeRow{"-5", "", "1", "1"} << false
                           << "y maximum";
    QTest::newRow("pi on the y row") << decimal << plot::RangeRow{"-p", "p", "1", "1"} << false
                                     << "y minimum";
    const QString huge = "-1" + QString(301, QLatin1Char('0'));
    QTest::newRow("too large to draw") << plot::RangeRow{huge, "5", "1", "1"} << decimal
                                       << false << "x minimum";
    QTest::newRow("negative step without ticks") << plot::RangeRow{"-5", "5", "-6", "0"} << decimal
                                                 << false << "x step";
    QTest::newRow("too narrow that far from zero")
        << plot::RangeRow{"10000000000000000", "10000000000000100", "1", "1"} << decimal << false
        << "x minimum";
}

void TestPlot::rowsBecomeAView()
{
    QFETCH(plot::RangeRow, x);
    QFETCH(plot::RangeRow, y);
    QFETCH(bool, valid);
    QFETCH(QString, problemMentions);
    const plot::ViewReading reading = plot::readViewWindow(x, y);
    QCOMPARE(reading.view.has_value(), valid);
    if (valid) {
        QVERIFY(reading.problem.isEmpty());
        QCOMPARE(reading.view->XMax, *plot::readRangeNumber(x[1]));
        QCOMPARE(reading.view->YStep, *plot::readRangeNumber(y[2]));
    } else {
        QVERIFY2(reading.problem.contains(problemMentions), qPrintable(reading.problem));
    }
}

void TestPlot::rangeNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("decimal comma") << "0,25" << 0.25;
    QTest::newRow("pi") << "p" << eval::kPiValue;
    QTest::newRow("minus pi") << "-p" << -eval::kPiValue;
    QTest::newRow("multiple of pi") << "2p" << 2 * eval::kPiValue;
    QTest::newRow("half pi") << "0.5p" << 0.5 * eval::kPiValue;
}

void TestPlot::rangeNumbers()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(plot::readRangeNumber(text).value_or(-99), value);
}

void TestPlot::zoomedSteps_data()
{
    QTest::addColumn<double>("boxWidth"); // over -5..5 with step 1: visible width 12
    QTest::addColumn<double>("step");
    QTest::newRow("half the width") << 6.0 << 0.5;
    QTest::newRow("narrow box gives 0.1") << 0.3 << 0.1;
    QTest::newRow("exactly 0.05 gives 0.1") << 0.6 << 0.1;
    QTest::newRow("ties to even: 0.25 → 0.2") << 3.0 << 0.2;
    QTest::newRow("ties to even: 0.35 → 0.4") << 4.2 << 0.4;
    QTest::newRow("the whole width") << 12.0 << 1.0;
    QTest::newRow("no width at all") << 0.0 << 0.1;
}

void TestPlot::zoomedSteps()
{
    QFETCH(double, boxWidth);
    QFETCH(double, step);
    QCOMPARE(plot::zoomedStep(boxWidth / 12, 1), step);
    QCOMPARE(plot::zoomedStep(std::nan(""), 1), 0.1);
}

void TestPlot::zoomingInWritesTheBoxIntoTheRows()
{
    model::AppState state;
    plot::RangeRow x{"-5", "5", "1", "2"};
    plot::RangeRow y{"-5", "5", "1", "0"};
    const plot::ZoomBox box = plot::initialZoomBox(state.view);
    QCOMPARE(box.left, 0.0);
    QCOMPARE(box.top, 0.0);
    QCOMPARE(box.width, 5.0);
    plot::zoomIn(state, {1.0 / 3, 2, 6, 3}, x, y);
    const QString point = QLocale().decimalPoint();
    // Edges in single precision (7 digits), steps as doubles, ticks left alone.
    QCOMPARE(x, (plot::RangeRow{"0" + point + "3333333", "6" + point + "333333", "0" + point + "5", "2"}));
    QCOMPARE(y, (plot::RangeRow{"-1", "2", "0" + point + "2", "0"}));
    QCOMPARE(int(state.zoomCount), 1);
    QCOMPARE(state.zoomHistory.size(), std::size_t(1));
    QCOMPARE(state.zoomHistory[0], model::ViewWindow{});
}

void TestPlot::zoomingOutWalksTheHistory_data()
{
    QTest::addColumn<int>("zoomsIn");
    QTest::addColumn<bool>("toBeginning");
    QTest::addColumn<int>("restored"); // index of the view restored, -1 for no change
    QTest::addColumn<int>("countAfter");
    QTest::newRow("three in, to beginning") << 3 << true << 0 << 0;
    QTest::newRow("two in, stepwise") << 2 << false << 1 << 1;
    QTest::newRow("one in, stepwise") << 1 << false << 0 << 0;
    QTest::newRow("nothing to undo") << 0 << false << -1 << 0;
    QTest::newRow("nothing to undo, to beginning") << 0 << true << -1 << 0;
}

void TestPlot::zoomingOutWalksTheHistory()
{
    QFETCH(int, zoomsIn);
    QFETCH(bool, toBeginning);
    QFETCH(int, restored);
    QFETCH(int, countAfter);
    model::AppState state;
    std::vector<model::ViewWindow> views{state.view};
    plot::RangeRow x{"-5", "5", "1", "1"}, y = x;
    for (int i = 0; i < zoomsIn; ++i) {
        plot::zoomIn(state, plot::initialZoomBox(state.view), x, y);
        state.view = *plot::readViewWindow(x, y).view; // as the window reads its rows
        views.push_back(state.view);
    }
    const model::ViewWindow before = state.view;
    QCOMPARE(plot::zoomOut(state, toBeginning, x, y), restored >= 0);
    QCOMPARE(state.view, restored >= 0 ? views[std::size_t(restored)] : before);
    QCOMPARE(int(state.zoomCount), countAfter);
    QCOMPARE(state.zoomHistory.size(), std::size_t(countAfter + (zoomsIn ? 1 : 0)));
    if (restored >= 0) {
        QCOMPARE(*plot::readRangeNumber(x[0]), views[std::size_t(restored)].XMin);
        QCOMPARE(*plot::readRangeNumber(y[2]), views[std::size_t(restored)].YStep);
    }
    // A further step back after going to the beginning does nothing.
    if (toBeginning)
        QVERIFY(!plot::zoomOut(state, false, x, y));
}

void TestPlot::wheelZoomKeepsThePointInPlace()
{
    const model::ViewWindow view{-5, 5, 1, 1, -4, 6, 1, 1};
    const model::ViewWindow in = plot::scaledView(view, 0.5, 1, 2);
    QCOMPARE(in.XMin, -2.0);
    QCOMPARE(in.XMax, 3.0);
    QCOMPARE(in.YMin, -1.0);
    QCOMPARE(in.YMax, 4.0);
    QCOMPARE(in.XStep, 0.5);
    QCOMPARE(plot::niceStep(1e-6), 1e-7);
    QCOMPARE(plot::niceStep(300), 20.0);
    QCOMPARE(plot::niceStep(70), 5.0);
}

void TestPlot::wheelTurnsAreHistorySteps_data()
{
    QTest::addColumn<QList<double>>("turns"); // notches of each turn, positive zooms in
    QTest::addColumn<QPointF>("at");          // the world point under the pointer

    QTest::newRow("one notch in") << QList<double>{1} << QPointF(1, 2);
    QTest::newRow("in, in, out") << QList<double>{1, 1, -2} << QPointF(-3.3, 0.7);
    QTest::newRow("a fast turn out") << QList<double>{-3} << QPointF(0, 0);
}

void TestPlot::wheelTurnsAreHistorySteps()
{
    QFETCH(QList<double>, turns);
    QFETCH(QPointF, at);
    model::AppState state;
    const model::ViewWindow start = state.view;
    plot::RangeRow x{"-5", "5", "1", "2"}, y{"-5", "5", "1", "0"};
    std::vector<model::ViewWindow> views{start};
    for (double steps : turns) {
        const model::ViewWindow before = state.view;
        const model::ViewWindow next = plot::wheelZoom(state, steps, at.x(), at.y());
        // The point keeps its place and the width shrinks by 0.8 a notch.
        const double share = (at.x() - before.XMin) / (before.XMax - before.XMin);
        QCOMPARE((at.x() - next.XMin) / (next.XMax - next.XMin), share);
        QCOMPARE((next.YMax - next.YMin) / (before.YMax - before.YMin), std::pow(0.8, steps));
        QCOMPARE(state.view, before); // the window reads the new view back from its rows
        plot::writeViewRows(next, x, y);
        state.view = *plot::readViewWindow(x, y).view;
        views.push_back(state.view);
    }
    QCOMPARE(int(state.zoomCount), int(turns.size()));
    QCOMPARE(x[3], QStringLiteral("2"));
    QCOMPARE(y[3], QStringLiteral("0"));
    // Stepwise zoom-out walks back through every turn to the start.
    for (std::size_t back = views.size() - 1; back-- > 0;) {
        QVERIFY(plot::zoomOut(state, false, x, y));
        QCOMPARE(state.view, views[back]);
    }
    QCOMPARE(state.view, start);
    QVERIFY(!plot::zoomOut(state, false, x, y));
}

void TestPlot::traceStartsOnTheBoxFunction_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("boxText");
    QTest::addColumn<int>("entry");

    QTest::newRow("the function in the box") << QStringList{"x", "x^2"} << "x^2" << 1;
    QTest::newRow("text not drawn: the first") << QStringList{"x", "x^2"} << "x^3" << 0;
    QTest::newRow("empty list: none") << QStringList{} << "x" << -1;
}

void TestPlot::traceStartsOnTheBoxFunction()
{
    QFETCH(QStringList, entries);
    QFETCH(QString, boxText);
    QFETCH(int, entry);
    model::AppState state;
    state.view.XMin = -7;
    for (const QString& text : entries) {
        state.graphs.push_back({});
        state.graphs.back().text = text;
    }
    state.trace = {false, 5, 3, 4, true};
    const int k = plot::traceEntryFor(state, boxText);
    QCOMPARE(k, entry);
    QCOMPARE(plot::startTrace(state, k), entry >= 0);
    QCOMPARE(state.trace.on, entry >= 0);
    if (entry >= 0) {
        QCOMPARE(state.trace.entry, entry);
        QCOMPARE(state.trace.x, -7.0);
        QVERIFY(!state.trace.found);
        plot::stopTrace(state);
        QVERIFY(!state.trace.on);
        QVERIFY(!plot::traceStep(state, 1));
    }
}

void TestPlot::traceStepsStopAtTheViewEnds_data()
{
    QTest::addColumn<double>("from"); // in a view from 0 to 200, a step of 1
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("moves");   // steps taken out of five before one is refused
    QTest::addColumn<double>("to");

    QTest::newRow("rightwards from the left end") << 0.0 << 1 << 5 << 5.0;
    QTest::newRow("leftwards from the left end") << 0.0 << -1 << 0 << 0.0;
    QTest::newRow("onto the right end, then stop") << 198.0 << 1 << 2 << 200.0;
    QTest::newRow("onto the left end, then stop") << 2.0 << -1 << 2 << 0.0;
}

void TestPlot::traceStepsStopAtTheViewEnds()
{
    QFETCH(double, from);
    QFETCH(int, direction);
    QFETCH(int, moves);
    QFETCH(double, to);
    model::AppState state;
    state.view.XMin = 0;
    state.view.XMax = 200;
    state.graphs.resize(1);
    QVERIFY(plot::startTrace(state, 0));
    plot::traceTo(state, from);
    int taken = 0;
    while (taken < 5 && plot::traceStep(state, direction))
        ++taken;
    QCOMPARE(taken, moves);
    QCOMPARE(state.trace.x, to);
}

void TestPlot::fontSizes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("size");     // -1: no new size
    QTest::addColumn<QString>("problem");

    const QString prompt = model::LoadResString(468) + model::LoadResString(2045);
    const QString range = QStringLiteral("only digits, - and max5min10");
    QTest::newRow("whole") << "7" << 7 << "";
    QTest::newRow("lowest") << "5" << 5 << "";
    QTest::newRow("highest, blanks around") << " 10 " << 10 << "";
    QTest::newRow("half rounds to even, up") << "7.5" << 8 << "";
    QTest::newRow("half rounds to even, down") << "6,5" << 6 << "";
    QTest::newRow("below") << "4.9" << -1 << range;
    QTest::newRow("above") << "10.5" << -1 << range;
    QTest::newRow("pi is no size") << "2p" << -1 << prompt;
    QTest::newRow("letters") << "abc" << -1 << prompt;
    QTest::newRow("empty: no change") << "" << -1 << "";
    QTest::newRow("blank: no change") << "  " << -1 << "";
}

void TestPlot::fontSizes()
{
    QFETCH(QString, text);
    QFETCH(int, size);
    QFETCH(QString, problem);
    const plot::FontSizeAnswer answer = plot::readFontSize(text);
    QCOMPARE(answer.size.value_or(-1), size);
    QCOMPARE(answer.problem, problem);
}

QTEST_GUILESS_MAIN(TestPlot)
#include "test_plot.moc"
