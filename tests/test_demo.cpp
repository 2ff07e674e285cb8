#include "app/frmgraph.h"
#include "app/frmtangent.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "eval/symbolic.h"
#include "model/strings.h"
#include "plot/render.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <cmath>

using namespace curvix;
using app::frmgraph;
using app::frmtangent;

Q_DECLARE_METATYPE(std::vector<double>)

namespace {

// The main window with one drawn function, and the demonstration window opened for it.
struct Demo {
    ScriptedPrompter prompter;
    frmgraph window{prompter};
    frmtangent* tangent = nullptr;

    explicit Demo(const QString& function = QStringLiteral("x^2"))
    {
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qWarning("window not exposed");
        auto* box = child<QComboBox>(&window, QStringLiteral("imgcombfunc"));
        QTest::keyClicks(box->lineEdit(), function);
        QTest::keyClick(box->lineEdit(), Qt::Key_Return);
        child<QAction>(&window, QStringLiteral("mnudemo"))->trigger();
        tangent = window.findChild<frmtangent*>(QStringLiteral("frmtangent"));
    }
    void setRange(const QString& from, const QString& to, const QString& step)
    {
        child<QLineEdit>(tangent, QStringLiteral("xfrom"))->setText(from);
        child<QLineEdit>(tangent, QStringLiteral("xto"))->setText(to);
        child<QLineEdit>(tangent, QStringLiteral("steplength"))->setText(step);
    }
    void click(const char* button) { child<QPushButton>(tangent, QLatin1String(button))->click(); }
    QToolButton* command3(int i) { return child<QToolButton>(&window, QStringLiteral("Command3_%1").arg(i)); }
    QString panel(int i) { return child<QLabel>(&window, QStringLiteral("StatusBar1_%1").arg(i))->text(); }
    const model::GraphEntry* entry(qint32 tag)
    {
        for (const model::GraphEntry& e : window.state().graphs)
            if (e.tag == tag)
                return &e;
        return nullptr;
    }
    // Where the tangent stands now; NaN when there is none.
    double tangentX()
    {
        const model::GraphEntry* curve = entry(plot::kDemoCurveTag);
        return curve && !curve->marks.empty() ? curve->marks[0].x : std::nan("");
    }
    // Start, paused at once, then the Step button until the walk ends: the x values shown.
    std::vector<double> walk()
    {
        click("start");
        click("pause");
        std::vector<double> xs{tangentX()};
        for (int i = 0; i < 100; ++i) {
            click("step");
            if (tangentX() == xs.back())
                break;
            xs.push_back(tangentX());
        }
        return xs;
    }
};

} // namespace

class TestDemo : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void walksTheRangeOrTheList_data();
    void walksTheRangeOrTheList();
    void derivativeAgreesWithTheSymbolicOne_data();
    void derivativeAgreesWithTheSymbolicOne();
    void pauseStepAndStopFromBothWindows_data();
    void pauseStepAndStopFromBothWindows();
    void badValuesDoNotStart_data();
    void badValuesDoNotStart();
    void needsADrawnFunction();
    void activationBuildsTheDemonstration();
    void demonstrationCurvesAreNotRecomputed();
};

void TestDemo::walksTheRangeOrTheList_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("step");
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<bool>("sort");
    QTest::addColumn<std::vector<double>>("expected");
    QTest::newRow("range reaching x to") << "-1" << "1" << "0.5" << QStringList{} << false
                                         << std::vector<double>{-1, -0.5, 0, 0.5, 1};
    QTest::newRow("range stopping short of x to") << "0" << "1" << "0,3" << QStringList{} << false
                                                  << std::vector<double>{0, 0.3, 0.6, 0.9};
    QTest::newRow("multiples of pi") << "-p" << "p" << "p" << QStringList{} << false
                                     << std::vector<double>{-eval::kPiValue, 0, eval::kPiValue};
    QTest::newRow("a tenth step ends at x to") << "0" << "0.3" << "0.1" << QStringList{} << false
                                               << std::vector<double>{0, 0.1, 0.2, 0.3};
    QTest::newRow("the list, in its order, instead of the range")
        << "-1" << "1" << "0.5" << QStringList{"2", "-1", "0.5"} << false
        << std::vector<double>{2, -1, 0.5};
    QTest::newRow("the sorted list; the range is not even read")
        << "9" << "1" << "nonsense" << QStringList{"2", "-1", "p"} << true
        << std::vector<double>{-1, 2, eval::kPiValue};
}

void TestDemo::walksTheRangeOrTheList()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, step);
    QFETCH(QStringList, list);
    QFETCH(bool, sort);
    QFETCH(std::vector<double>, expected);
    Demo d;
    QVERIFY(d.tangent && d.tangent->isVisible());
    QCOMPARE(d.tangent->usage(), 0);
    d.setRange(from, to, step);
    auto* value = child<QLineEdit>(d.tangent, QStringLiteral("value"));
    for (const QString& x : list) {
        value->setText(x);
        d.click("add");
    }
    if (sort)
        d.click("sort");
    const std::vector<double> xs = d.walk();
    QCOMPARE(xs.size(), expected.size());
    for (std::size_t i = 0; i < xs.size(); ++i)
        QVERIFY2(std::abs(xs[i] - expected[i]) < 1e-9, qPrintable(QString::number(xs[i])));
    QVERIFY(d.prompter.messages.isEmpty());
}

void TestDemo::derivativeAgreesWithTheSymbolicOne_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::newRow("polynomial") << "x^3-2x" << "-2" << "2";
    QTest::newRow("sine") << "sin(x)" << "-p" << "p";
    QTest::newRow("quotient") << "1/(x^2+1)" << "-3" << "3";
    QTest::newRow("logarithm, inside its domain") << "x*ln(x)" << "0.5" << "4";
}

void TestDemo::derivativeAgreesWithTheSymbolicOne()
{
    QFETCH(QString, function);
    QFETCH(QString, from);
    QFETCH(QString, to);
    Demo d(function);
    d.setRange(from, to, QStringLiteral("0.25"));
    child<QCheckBox>(d.tangent, QStringLiteral("derivative"))->setChecked(true);
    d.click("start");
    d.click("pause");
    // The derivative's graph grows with every step.
    std::size_t before = d.entry(plot::kDemoDerivativeTag)->points.size();
    QVERIFY(before > 0);
    for (int i = 0; i < 3; ++i) {
        d.click("step");
        const std::size_t now = d.entry(plot::kDemoDerivativeTag)->points.size();
        QVERIFY(now > before);
        before = now;
    }
    // Played to the end, by the window's timer.
    d.command3(app::DemoStart)->click();
    QTRY_VERIFY_WITH_TIMEOUT(!d.window.demoPlaying(), 10000);

    const QString derivative = eval::SymbolicDerivative(function, QStringLiteral("x"), 1, {});
    QVERIFY(!derivative.isEmpty());
    eval::ExpressionEvaluator evaluator;
    const QString prepared = eval::PrepareExpressionText(evaluator, derivative, QStringLiteral("f(x)"), {});
    QVERIFY(!prepared.isEmpty());
    const model::GraphEntry* graph = d.entry(plot::kDemoDerivativeTag);
    QVERIFY(graph);
    QCOMPARE(graph->color, d.window.state().functionColor);
    QVERIFY(graph->points.front().x <= from.toDouble() + 1e-9 || from.endsWith(QLatin1Char('p')));
    for (const eval::PointD& p : graph->points) {
        evaluator.Reset();
        evaluator.SetVariable(evaluator.DefineVariable(QStringLiteral("x")), p.x);
        const double exact = evaluator.EvaluateText(prepared);
        QVERIFY2(std::abs(p.y - exact) < 1e-3,
                 qPrintable(QStringLiteral("x=%1: %2 against %3").arg(p.x).arg(p.y).arg(exact)));
    }
    // At the end the derivative's graph stays drawn, and after Stop too.
    d.command3(app::DemoStop)->click();
    QVERIFY(d.entry(plot::kDemoDerivativeTag));
    QVERIFY(!d.entry(plot::kDemoCurveTag));
}

void TestDemo::pauseStepAndStopFromBothWindows_data()
{
    QTest::addColumn<bool>("fromMainWindow");
    QTest::newRow("demonstration window") << false;
    QTest::newRow("main window's buttons") << true;
}

void TestDemo::pauseStepAndStopFromBothWindows()
{
    QFETCH(bool, fromMainWindow);
    Demo d;
    d.setRange(QStringLiteral("-2"), QStringLiteral("2"), QStringLiteral("0.1"));
    d.click("start");
    QVERIFY(d.window.demoPlaying());
    auto* timer = d.window.findChild<QTimer*>();
    QVERIFY(timer && timer->isActive());
    // A redraw while it plays keeps it playing.
    d.window.frmPicture1_Resize();
    QVERIFY(timer->isActive());

    auto press = [&](int button) {
        if (fromMainWindow)
            d.command3(button)->click();
        else
            d.click(button == app::DemoPause ? "pause" : button == app::DemoStep ? "step" : "stop");
    };
    press(app::DemoPause);
    QVERIFY(!d.window.demoPlaying());
    QVERIFY(!timer->isActive());
    const double paused = d.tangentX();
    QCOMPARE(d.tangentX(), paused); // nothing moves while paused
    press(app::DemoStep);
    QVERIFY(std::abs(d.tangentX() - (paused + 0.1)) < 1e-9);
    QVERIFY(!d.window.demoPlaying());
    QVERIFY(d.panel(2).contains(eval::numberText(eval::roundHalfEven(d.tangentX(), 4))));
    QVERIFY(d.panel(4).startsWith(QStringLiteral("f'(x) = ")));

    const int graphs = int(d.window.state().graphs.size());
    press(app::DemoStop);
    QVERIFY(!d.window.demoRunning());
    QVERIFY(!timer->isActive());
    QCOMPARE(int(d.window.state().graphs.size()), graphs - 1); // the demonstrated curve goes
    QCOMPARE(int(d.window.state().graphCount), graphs - 1);
    QVERIFY(!d.command3(0)->isVisible());
    QCOMPARE(d.panel(3), QString());
    // Stopped, the steps do nothing.
    press(app::DemoStep);
    QCOMPARE(int(d.window.state().graphs.size()), graphs - 1);
}

void TestDemo::badValuesDoNotStart_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("step");
    QTest::addColumn<int>("message");
    QTest::newRow("from equals to") << "1" << "1" << "0.1" << 4021;
    QTest::newRow("from above to") << "2" << "-2" << "0.1" << 4021;
    QTest::newRow("step of 0") << "-2" << "2" << "0" << 4022;
    QTest::newRow("negative step") << "-2" << "2" << "-0.5" << 4022;
    QTest::newRow("not a number") << "-2" << "two" << "0.1" << 4020;
    QTest::newRow("empty step") << "-2" << "2" << "" << 4020;
    QTest::newRow("far too many steps") << "-1000" << "1000" << "0.0001" << 4023;
}

void TestDemo::badValuesDoNotStart()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, step);
    QFETCH(int, message);
    Demo d;
    d.setRange(from, to, step);
    const int graphs = int(d.window.state().graphs.size());
    d.click("start");
    QCOMPARE(d.prompter.messages.size(), 1);
    QCOMPARE(d.prompter.messages[0].left(15), model::LoadResString(message).left(15));
    QCOMPARE(d.tangent->requestFlag, 0);
    QVERIFY(!d.window.demoRunning());
    QCOMPARE(int(d.window.state().graphs.size()), graphs);
    QVERIFY(!d.command3(0)->isVisible());
}

void TestDemo::needsADrawnFunction()
{
    Demo d;
    auto* box = child<QComboBox>(&d.window, QStringLiteral("imgcombfunc"));
    d.tangent->close();
    for (const char* text : {"", "x^3"}) { // empty, and typed but not drawn
        d.prompter.messages.clear();
        box->setEditText(QLatin1String(text));
        child<QAction>(&d.window, QStringLiteral("mnudemo"))->trigger();
        QCOMPARE(d.prompter.messages, QStringList{QStringLiteral("Ingen aktiv funktion")});
        QVERIFY(!d.tangent->isVisible());
    }
    // The function's own popup menu opens it for that function.
    box->setEditText(QStringLiteral("x^2"));
    child<QAction>(&d.window, QStringLiteral("mnupopdemo"))->trigger();
    QVERIFY(d.tangent->isVisible());
    QCOMPARE(d.tangent->function(), QStringLiteral("x^2"));
}

void TestDemo::activationBuildsTheDemonstration()
{
    Demo d;
    d.window.state().functionColor = 0x00FF0000;
    child<QLabel>(&d.window, QStringLiteral("StatusBar1_5"))->setText(QStringLiteral("old"));
    // Without a request the handler does nothing.
    d.window.Form_Activate();
    QCOMPARE(d.window.state().graphs.size(), std::size_t(1));
    QCOMPARE(d.panel(5), QStringLiteral("old"));

    // The request is answered when the main window is activated.
    d.setRange(QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("0.5"));
    // (The platform of the tests does not hand the activation between windows: the
    // main window, active all along, is told that its activation changed.)
    d.tangent->requestFlag = 1;
    QVERIFY(d.window.isActiveWindow());
    QEvent activation(QEvent::ActivationChange);
    QApplication::sendEvent(&d.window, &activation);
    QCOMPARE(d.tangent->requestFlag, 0);
    QCOMPARE(d.panel(3), QStringLiteral("Derivata/tangent"));
    QCOMPARE(d.panel(5), QString());
    for (int i = 0; i < 4; ++i) {
        QVERIFY(d.command3(i)->isVisible());
        QVERIFY(!d.command3(i)->icon().isNull());
    }
    const model::GraphEntry* curve = d.entry(plot::kDemoCurveTag);
    QVERIFY(curve);
    QCOMPARE(int(d.window.state().graphCount), 2);
    QCOMPARE(curve->color, quint32(0x00FF0000));
    QCOMPARE(curve->derivativeIndex, -1);
    QCOMPARE(curve->primitiveIndex, -1);
    QVERIFY(curve->points.size() > 1000); // sampled over the view
    for (const eval::PointD& p : curve->points)
        QVERIFY(std::abs(p.y - p.x * p.x) < 1e-9);
    // Answered once: a second activation builds nothing more.
    d.window.Form_Activate();
    QCOMPARE(int(d.window.state().graphCount), 2);
    // A new start replaces the demonstration instead of piling up curves.
    d.click("start");
    QCOMPARE(int(d.window.state().graphCount), 2);
}

void TestDemo::demonstrationCurvesAreNotRecomputed()
{
    Demo d;
    child<QCheckBox>(d.tangent, QStringLiteral("derivative"))->setChecked(true);
    d.setRange(QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("0.5"));
    d.click("start");
    d.click("pause");
    const std::vector<eval::PointD> curve = d.entry(plot::kDemoCurveTag)->points;
    const std::vector<eval::PointD> derivative = d.entry(plot::kDemoDerivativeTag)->points;
    const std::size_t typed = d.window.state().graphs[0].points.size();
    // A new view resamples the typed function but leaves the built curves as they are.
    d.window.state().view.XMin = -1;
    d.window.state().view.XMax = 1;
    d.window.frmPicture1_Resize();
    QVERIFY(d.window.state().graphs[0].points.front().x >= -1);
    QVERIFY(d.window.state().graphs[0].points.size() > typed / 2);
    QCOMPARE(d.entry(plot::kDemoCurveTag)->points.size(), curve.size());
    QCOMPARE(d.entry(plot::kDemoCurveTag)->points.front().x, curve.front().x);
    QCOMPARE(d.entry(plot::kDemoDerivativeTag)->points.size(), derivative.size());
    // The tangent is still drawn at its x, through the demonstrated curve's mark.
    QCOMPARE(d.entry(plot::kDemoCurveTag)->marks.size(), std::size_t(1));
    QVERIFY(!d.entry(plot::kDemoCurveTag)->marks[0].points.empty());
}

QTEST_MAIN(TestDemo)
#include "test_demo.moc"
