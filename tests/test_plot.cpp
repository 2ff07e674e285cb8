#include "plot/colors.h"
#include "plot/coordinates.h"

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
    void systemColoursComeFromThePalette();
};

void TestPlot::defaultsComeFromTheStringTable()
{
    model::AppState state;
    state.gridColor = 1;
    state.arrows = {false, false, false, false};
    state.coordinateSeparator.clear();
    plot::InitPlotDefaults(state);

    QCOMPARE(state.presetRadiansX, (model::RangePreset{"-3p", "3p", "0.5p", "1"}));
    QCOMPARE(state.presetRadiansY, (model::RangePreset{"-3", "3", "1", "1"}));
    QCOMPARE(state.presetDegreesX, (model::RangePreset{"-180", "180", "90", "1"}));
    QCOMPARE(state.presetGradiansX, (model::RangePreset{"-200", "200", "100", "1"}));
    QCOMPARE(state.presetDecimalX, (model::RangePreset{"-5", "5", "1", "1"}));
    QCOMPARE(state.presetDecimalY, state.presetDecimalX);
    QCOMPARE(state.arrows, (model::AxisArrowSwitches{true, true, true, true}));
    QCOMPARE(state.coordinateSeparator, QStringLiteral(","));
    QCOMPARE(state.gridColor, 0x80000010u);
    QCOMPARE(state.axisColor, 0u);
    QCOMPARE(state.functionColor, 0u);
    QCOMPARE(state.view, (ViewWindow{-5, 5, 1, 1, -5, 5, 1, 1}));
    QCOMPARE(state.startView, state.view);
    // The first sample step is the single-precision 0.001, widened.
    QCOMPARE(state.sampleStep, 0.0010000000474974513);
    QVERIFY(state.settingUp);
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
    const QPointF p = scale.toPixel(1, 1);
    QVERIFY(qIsFinite(p.x()) && qIsFinite(p.y()));
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
}

void TestPlot::colourValues()
{
    QFETCH(quint32, value);
    QFETCH(QColor, color);
    QCOMPARE(plot::colorFromValue(value, QPalette()), color);
    QCOMPARE(plot::colorValueFromColor(color), value);
}

void TestPlot::systemColoursComeFromThePalette()
{
    QPalette palette;
    palette.setColor(QPalette::Dark, QColor(1, 2, 3));
    palette.setColor(QPalette::Button, QColor(4, 5, 6));
    QCOMPARE(plot::colorFromValue(0x80000010u, palette), QColor(1, 2, 3));
    QCOMPARE(plot::colorFromValue(0x8000000Fu, palette), QColor(4, 5, 6));
}

QTEST_GUILESS_MAIN(TestPlot)
#include "test_plot.moc"
