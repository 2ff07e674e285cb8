#include "eval/formula.h"
#include "plot/coordinates.h" // readRangeNumber
#include "plot/range_rows.h"
#include "plot/trace.h"
#include "plot/zoom.h"

#include <QTest>

using namespace curvix;

class TestPlot : public QObject {
    Q_OBJECT

private slots:
    void rangeBoxesTakeTexts_data();
    void rangeBoxesTakeTexts();
    void rowsBecomeAView_data();
    void rowsBecomeAView();
    void zoomingInWritesTheBoxIntoTheRows();
    void zoomingOutWalksTheHistory_data();
    void zoomingOutWalksTheHistory();
    void wheelTurnsAreHistorySteps_data();
    void wheelTurnsAreHistorySteps();
    void traceStartsAndStepsWithinTheView_data();
    void traceStartsAndStepsWithinTheView();
    void pointerTextFollowsTheResolution_data();
    void pointerTextFollowsTheResolution();
    void equalScaleWidensOneRange_data();
    void equalScaleWidensOneRange();
    void fontSizes_data();
    void fontSizes();
};

void TestPlot::rangeBoxesTakeTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("xRow");
    QTest::addColumn<bool>("yRow");
    QTest::addColumn<double>("value"); // the number read, NaN for none
    const double none = std::nan("");
    QTest::newRow("empty") << "" << true << true << none;
    QTest::newRow("decimal comma") << "0,25" << true << true << 0.25;
    QTest::newRow("sign being typed") << "-" << true << true << none;
    QTest::newRow("minus pi") << "-p" << true << false << -eval::kPiValue;
    QTest::newRow("multiple of pi") << "0.5p" << true << false << 0.5 * eval::kPiValue;
    QTest::newRow("pi in the middle") << "2p3" << false << false << none;
    QTest::newRow("exponent") << "1e5" << false << false << none;
}

void TestPlot::rangeBoxesTakeTexts()
{
    QFETCH(QString, text);
    QFETCH(bool, xRow);
    QFETCH(bool, yRow);
    QFETCH(double, value);
    QCOMPARE(plot::acceptsRangeText(text), xRow);
    QCOMPARE(plot::acceptsStepText(text), yRow);
    QCOMPARE(plot::readRangeNumber(text).value_or(std::nan("")), value);
}

void TestPlot::rowsBecomeAView_data()
{
    QTest::addColumn<plot::RangeRow>("x");
    QTest::addColumn<plot::RangeRow>("y");
    // What the refusal says, empty when the rows make a view. Each refusal names its own
    // fault, so the row tells which check fired.
    QTest::addColumn<QString>("problemMentions");

    const plot::RangeRow decimal{"-5", "5", "1", "1"};
    QTest::newRow("decimal") << decimal << decimal << "";
    QTest::newRow("pi preset") << plot::RangeRow{"-3p", "3p", "0.5p", "1"}
                               << plot::RangeRow{"-3", "3", "1", "1"} << "";
    QTest::newRow("min above max") << plot::RangeRow{"5", "-5", "1", "1"} << decimal
                                   << "x minimum must be below";
    QTest::newRow("min equals max") << decimal << plot::RangeRow{"2", "2", "1", "1"}
                                    << "y minimum must be below";
    QTest::newRow("zero step with ticks") << plot::RangeRow{"-5", "5", "0", "1"} << decimal
                                          << "x step";
    QTest::newRow("zero step without ticks") << plot::RangeRow{"-5", "5", "0", "0"} << decimal
                                             << "";
    QTest::newRow("negative step without ticks") << decimal << plot::RangeRow{"-5", "5", "-6", "0"}
                                                 << "y step";
    QTest::newRow("pi on the y row") << decimal << plot::RangeRow{"-p", "p", "1", "1"}
                                     << "not a number (y minimum)";
    const QString huge = "-1" + QString(301, QLatin1Char('0'));
    QTest::newRow("too large to draw") << plot::RangeRow{huge, "5", "1", "1"} << decimal
                                       << "not a number (x minimum)";
    QTest::newRow("too narrow that far from zero")
        << plot::RangeRow{"10000000000000000", "10000000000000100", "1", "1"} << decimal
        << "too close together";
}

void TestPlot::rowsBecomeAView()
{
    QFETCH(plot::RangeRow, x);
    QFETCH(plot::RangeRow, y);
    QFETCH(QString, problemMentions);
    const plot::ViewReading reading = plot::readViewWindow(x, y);
    QCOMPARE(reading.view.has_value(), problemMentions.isEmpty());
    if (reading.view) {
        QVERIFY(reading.problem.isEmpty());
        QCOMPARE(reading.view->XMax, *plot::readRangeNumber(x[1]));
        QCOMPARE(reading.view->YStep, *plot::readRangeNumber(y[2]));
    } else {
        QVERIFY2(reading.problem.contains(problemMentions), qPrintable(reading.problem));
    }
}

void TestPlot::zoomingInWritesTheBoxIntoTheRows()
{
    model::AppState state;
    plot::RangeRow x{"-5", "5", "1", "2"};
    plot::RangeRow y{"-5", "5", "1", "0"};
    plot::zoomIn(state, {1.0 / 3, 2, 6, 3}, x, y);
    const QString point = QLocale().decimalPoint();
    // Edges in single precision (7 digits), steps as doubles, ticks left alone.
    QCOMPARE(x, (plot::RangeRow{"0" + point + "3333333", "6" + point + "333333", "0" + point + "5", "2"}));
    QCOMPARE(y, (plot::RangeRow{"-1", "2", "0" + point + "2", "0"}));
    QCOMPARE(int(state.zoomCount), 1);
    QCOMPARE(state.zoomHistory, std::vector<model::ViewWindow>{model::ViewWindow{}});
}

void TestPlot::zoomingOutWalksTheHistory_data()
{
    QTest::addColumn<int>("zoomsIn");
    QTest::addColumn<bool>("toBeginning");
    QTest::addColumn<int>("restored"); // index of the view restored, -1 for no change
    QTest::newRow("three in, to beginning") << 3 << true << 0;
    QTest::newRow("two in, stepwise") << 2 << false << 1;
    QTest::newRow("one in, stepwise") << 1 << false << 0;
    QTest::newRow("nothing to undo, to beginning") << 0 << true << -1;
}

void TestPlot::zoomingOutWalksTheHistory()
{
    QFETCH(int, zoomsIn);
    QFETCH(bool, toBeginning);
    QFETCH(int, restored);
    model::AppState state;
    std::vector<model::ViewWindow> views{state.view};
    plot::RangeRow x{"-5", "5", "1", "1"}, y = x;
    for (int i = 0; i < zoomsIn; ++i) {
        // The centre quarter each time, the new view read back as the window reads its rows.
        plot::zoomIn(state, plot::initialZoomBox(state.view), x, y);
        state.view = *plot::readViewWindow(x, y).view;
        views.push_back(state.view);
    }
    const model::ViewWindow before = state.view;
    QCOMPARE(plot::zoomOut(state, toBeginning, x, y), restored >= 0);
    QCOMPARE(state.view, restored >= 0 ? views[std::size_t(restored)] : before);
    QCOMPARE(int(state.zoomCount), std::max(restored, 0));
    if (restored >= 0) {
        QCOMPARE(*plot::readRangeNumber(x[0]), views[std::size_t(restored)].XMin);
        QCOMPARE(*plot::readRangeNumber(y[2]), views[std::size_t(restored)].YStep);
    }
    // A further step back after going to the beginning does nothing.
    if (toBeginning)
        QVERIFY(!plot::zoomOut(state, false, x, y));
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
    QCOMPARE(x[3], QStringLiteral("2"));
    QCOMPARE(y[3], QStringLiteral("0"));
    // Stepwise zoom-out walks back through every turn to the start.
    for (std::size_t back = views.size() - 1; back-- > 0;) {
        QVERIFY(plot::zoomOut(state, false, x, y));
        QCOMPARE(state.view, views[back]);
    }
    QVERIFY(!plot::zoomOut(state, false, x, y));
}

void TestPlot::pointerTextFollowsTheResolution_data()
{
    QTest::addColumn<QSizeF>("pixels"); // of the default view, 12 units each way
    QTest::addColumn<QPointF>("world");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    const QPointF point(1.23456, -2.3456);
    QTest::newRow("hundredths and tenths") << QSizeF(1200, 120) << point << "C" << "(1.23; -2.3)";
    QTest::newRow("decimal comma") << QSizeF(1200, 120) << point << "sv_SE" << "(1,23; -2,3)";
    QTest::newRow("0.025 a pixel: hundredths") << QSizeF(480, 480) << point << "C" << "(1.23; -2.35)";
    QTest::newRow("whole units, no minus zero") << QSizeF(12, 12) << QPointF(1.4, -0.4) << "C" << "(1; 0)";
}

void TestPlot::pointerTextFollowsTheResolution()
{
    QFETCH(QSizeF, pixels);
    QFETCH(QPointF, world);
    QFETCH(QString, locale);
    QFETCH(QString, text);
    const plot::PlotScale scale = plot::SetPlotScale(pixels, model::ViewWindow{});
    QCOMPARE(plot::pointerText(world, scale, QStringLiteral(";"), QLocale(locale)), text);
}

void TestPlot::equalScaleWidensOneRange_data()
{
    QTest::addColumn<QSizeF>("pixels"); // of the default view, 12 units each way
    QTest::addColumn<QRectF>("ranges"); // XMin, YMin, width and height expected
    QTest::newRow("wide plot: x widens") << QSizeF(600, 300) << QRectF(-11, -5, 22, 10);
    QTest::newRow("tall plot: y widens") << QSizeF(300, 600) << QRectF(-5, -11, 10, 22);
    QTest::newRow("square: unchanged") << QSizeF(400, 400) << QRectF(-5, -5, 10, 10);
}

void TestPlot::equalScaleWidensOneRange()
{
    QFETCH(QSizeF, pixels);
    QFETCH(QRectF, ranges);
    const model::ViewWindow view = plot::equalScaleView(model::ViewWindow{}, pixels);
    QCOMPARE(QRectF(view.XMin, view.YMin, view.XMax - view.XMin, view.YMax - view.YMin), ranges);
    const plot::PlotScale scale = plot::SetPlotScale(pixels, view);
    QCOMPARE(scale.unitsPerPixelX(), scale.unitsPerPixelY());
}

void TestPlot::traceStartsAndStepsWithinTheView_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("boxText");
    QTest::addColumn<int>("entry");   // the entry traced, -1 for none
    QTest::addColumn<double>("from"); // in a view from 0 to 200, a step of 1
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("moves");   // steps taken out of five before one is refused
    QTest::addColumn<double>("to");
    const QStringList two{"x", "x^2"};
    QTest::newRow("the function in the box, rightwards") << two << "x^2" << 1 << 0.0 << 1 << 5 << 5.0;
    QTest::newRow("text not drawn: the first, leftwards") << two << "x^3" << 0 << 0.0 << -1 << 0 << 0.0;
    QTest::newRow("onto the right end, then stop") << two << "x" << 0 << 198.0 << 1 << 2 << 200.0;
    QTest::newRow("onto the left end, then stop") << two << "x" << 0 << 2.0 << -1 << 2 << 0.0;
    QTest::newRow("empty list: no trace") << QStringList{} << "x" << -1 << 0.0 << 1 << 0 << 3.0;
}

void TestPlot::traceStartsAndStepsWithinTheView()
{
    QFETCH(QStringList, entries);
    QFETCH(QString, boxText);
    QFETCH(int, entry);
    QFETCH(double, from);
    QFETCH(int, direction);
    QFETCH(int, moves);
    QFETCH(double, to);
    model::AppState state;
    state.view.XMin = 0;
    state.view.XMax = 200;
    for (const QString& text : entries) {
        state.graphs.push_back({});
        state.graphs.back().text = text;
    }
    state.trace = {false, 5, 3, 4, true};
    QCOMPARE(plot::traceEntryFor(state, boxText), entry);
    QCOMPARE(plot::startTrace(state, entry), entry >= 0);
    if (entry >= 0) {
        // At the middle of the view (no points sampled), its point to be found by the next redraw.
        QCOMPARE(state.trace.entry, entry);
        QCOMPARE(state.trace.x, 100.0);
        QVERIFY(!state.trace.found);
        plot::traceTo(state, from);
    }
    int taken = 0;
    while (taken < 5 && plot::traceStep(state, direction))
        ++taken;
    QCOMPARE(taken, moves);
    QCOMPARE(state.trace.x, to);
    plot::stopTrace(state);
    QVERIFY(!plot::traceStep(state, 1));
}

void TestPlot::fontSizes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("size");      // -1: no new size
    QTest::addColumn<bool>("refused");  // the answer asks again
    QTest::newRow("highest, blanks around") << " 10 " << 10 << false;
    QTest::newRow("half rounds to even, down") << "6,5" << 6 << false;
    QTest::newRow("below") << "4.9" << -1 << true;
    QTest::newRow("above") << "10.5" << -1 << true;
    QTest::newRow("pi is no size") << "2p" << -1 << true;
    QTest::newRow("blank: no change") << "  " << -1 << false;
}

void TestPlot::fontSizes()
{
    QFETCH(QString, text);
    QFETCH(int, size);
    QFETCH(bool, refused);
    const plot::FontSizeAnswer answer = plot::readFontSize(text);
    QCOMPARE(answer.size.value_or(-1), size);
    QCOMPARE(!answer.problem.isEmpty(), refused);
}

QTEST_GUILESS_MAIN(TestPlot)
#include "test_plot.moc"
