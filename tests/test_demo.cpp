#include "app/demonstration.h"
#include "app/frmgraph.h"
#include "app/frmtangent.h"
#include "eval/formula.h"
#include "model/strings.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
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

    Demo()
    {
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qWarning("window not exposed");
        auto* box = child<QComboBox>(&window, QStringLiteral("imgcombfunc"));
        QTest::keyClicks(box->lineEdit(), QStringLiteral("x^2"));
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
    // Where the tangent stands now; NaN when there is none.
    double tangentX()
    {
        const auto& mark = window.state().demonstration.tangent;
        return mark ? mark->x : std::nan("");
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

    void walksTheRangeOrTheList_data()
    {
        QTest::addColumn<QString>("step");
        QTest::addColumn<QStringList>("list");
        QTest::addColumn<bool>("sort");
        QTest::addColumn<std::vector<double>>("expected");
        QTest::newRow("range, decimal comma") << "0,5" << QStringList{} << false
                                              << std::vector<double>{-1, -0.5, 0, 0.5, 1};
        QTest::newRow("the list, in its order, instead of the range")
            << "0.5" << QStringList{"2", "-1", "0.5"} << false << std::vector<double>{2, -1, 0.5};
        QTest::newRow("the sorted list; the range is not even read")
            << "nonsense" << QStringList{"2", "-1", "p"} << true << std::vector<double>{-1, 2, eval::kPiValue};
    }

    void walksTheRangeOrTheList()
    {
        QFETCH(QString, step);
        QFETCH(QStringList, list);
        QFETCH(bool, sort);
        QFETCH(std::vector<double>, expected);
        Demo d;
        QCOMPARE(d.tangent->usage(), frmtangent::Usage::Demonstration);
        d.setRange(QStringLiteral("-1"), QStringLiteral("1"), step);
        for (const QString& x : list) {
            child<QLineEdit>(d.tangent, QStringLiteral("value"))->setText(x);
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

    void pauseStepAndStopFromBothWindows_data()
    {
        QTest::addColumn<bool>("fromMainWindow");
        QTest::newRow("demonstration window") << false;
        QTest::newRow("main window's buttons") << true;
    }

    void pauseStepAndStopFromBothWindows()
    {
        QFETCH(bool, fromMainWindow);
        Demo d;
        // A trace that runs gives way to the demonstration.
        child<QAction>(&d.window, QStringLiteral("mnutrace"))->trigger();
        d.setRange(QStringLiteral("-2"), QStringLiteral("2"), QStringLiteral("0.1"));
        d.click("start");
        QVERIFY(!d.window.state().trace.on);
        QVERIFY(d.window.demonstration().playing());
        QVERIFY(d.command3(0)->isVisible() && d.command3(3)->isVisible());
        // A redraw while it plays keeps it playing.
        d.window.redraw();
        QVERIFY(d.window.demonstration().playing());

        auto press = [&](int button) {
            if (fromMainWindow)
                d.command3(button)->click();
            else
                d.click(button == app::DemoPause ? "pause" : button == app::DemoStep ? "step" : "stop");
        };
        press(app::DemoPause);
        QVERIFY(!d.window.demonstration().playing());
        const double paused = d.tangentX();
        QTest::qWait(100);
        QCOMPARE(d.tangentX(), paused); // nothing moves while paused
        press(app::DemoStep);
        QVERIFY(std::abs(d.tangentX() - (paused + 0.1)) < 1e-9);
        QVERIFY(!d.window.demonstration().playing());
        QVERIFY(d.panel(4).startsWith(QStringLiteral("f'(x) = ")));

        press(app::DemoStop);
        QVERIFY(!d.window.demonstration().running());
        QCOMPARE(int(d.window.state().graphs.size()), 1);
        QVERIFY(!d.command3(0)->isVisible());
        QCOMPARE(d.panel(4), QString());
    }

    void refusals()
    {
        Demo d;
        // Values that make no walk start none.
        d.setRange(QStringLiteral("1"), QStringLiteral("-2"), QStringLiteral("0.1"));
        d.click("start");
        QCOMPARE(d.prompter.messages.size(), 1);
        QCOMPARE(d.prompter.messages[0].left(15), model::LoadResString(4021).left(15));
        QVERIFY(!d.window.demonstration().running() && !d.command3(0)->isVisible());
        // Only a drawn function is demonstrated: neither an empty box nor one typed, not drawn.
        auto* box = child<QComboBox>(&d.window, QStringLiteral("imgcombfunc"));
        d.tangent->close();
        for (const char* text : {"", "x^3"}) {
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
};

QTEST_MAIN(TestDemo)
#include "test_demo.moc"
