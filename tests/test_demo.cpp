// The demonstration as the user drives it: its window over the main window, and the main
// window's own buttons. The walk itself has headless tests.
#include "app/demonstration.h"
#include "app/frmgraph.h"
#include "app/frmtangent.h"
#include "eval/formula.h"
#include "model/strings.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QtTest>
#include <QtWidgets>

#include <cmath>

using namespace curvix;
using app::frmtangent;

namespace {

// The main window with one drawn function, and the demonstration window opened for it.
struct Demo {
    ScriptedPrompter prompter;
    app::frmgraph window{prompter};
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
        tangent = child<frmtangent>(&window, QStringLiteral("frmtangent"));
    }
    void setRange(const QString& from, const QString& to, const QString& step)
    {
        child<QLineEdit>(tangent, QStringLiteral("xfrom"))->setText(from);
        child<QLineEdit>(tangent, QStringLiteral("xto"))->setText(to);
        child<QLineEdit>(tangent, QStringLiteral("steplength"))->setText(step);
    }
    void click(const char* button) { child<QPushButton>(tangent, QLatin1String(button))->click(); }
    QToolButton* command3(int i) { return child<QToolButton>(&window, QStringLiteral("Command3_%1").arg(i)); }
    // Where the tangent stands now; NaN when there is none.
    double tangentX()
    {
        const auto& mark = window.state().demonstration.tangent;
        return mark ? mark->x : std::nan("");
    }
};

} // namespace

class TestDemo : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void bothWindowsDriveTheWalk()
    {
        Demo d;
        // A trace that runs gives way to the demonstration.
        child<QAction>(&d.window, QStringLiteral("mnutrace"))->trigger();
        d.setRange(QStringLiteral("-2"), QStringLiteral("2"), QStringLiteral("0,1")); // a decimal comma
        d.click("start");
        QVERIFY(!d.window.state().trace.on);
        QVERIFY(d.window.demonstration().playing() && d.command3(app::DemoStop)->isVisible());
        // A redraw while it plays keeps it playing.
        d.window.redraw();
        QVERIFY(d.window.demonstration().playing());

        d.command3(app::DemoPause)->click();
        const double paused = d.tangentX();
        QTest::qWait(100);
        QCOMPARE(d.tangentX(), paused); // nothing moves while paused
        d.click("step");
        QVERIFY(std::abs(d.tangentX() - (paused + 0.1)) < 1e-9);
        d.command3(app::DemoStep)->click();
        QVERIFY(std::abs(d.tangentX() - (paused + 0.2)) < 1e-9);
        d.click("start"); // goes on from where it stands
        QVERIFY(d.window.demonstration().playing() && std::abs(d.tangentX() - (paused + 0.2)) < 1e-9);
        d.click("pause");
        QVERIFY(!d.window.demonstration().playing());
        QVERIFY(child<QLabel>(&d.window, QStringLiteral("StatusBar1_4"))->text().startsWith("f'(x) = "));
        d.command3(app::DemoStop)->click();
        QVERIFY(!d.window.demonstration().running() && !d.command3(app::DemoStop)->isVisible());
        QCOMPARE(int(d.window.state().graphs.size()), 1);

        // A list is walked instead of the range, which is not even read.
        d.setRange(QStringLiteral("-1"), QStringLiteral("1"), QStringLiteral("nonsense"));
        for (const char* x : {"2", "-1", "p"}) {
            child<QLineEdit>(d.tangent, QStringLiteral("value"))->setText(QLatin1String(x));
            d.click("add");
        }
        d.click("sort");
        // The guide lines' editor, cancelled, leaves the demonstration's list alone.
        child<QAction>(&d.window, QStringLiteral("mnuvertical"))->trigger();
        d.click("cancel");
        child<QAction>(&d.window, QStringLiteral("mnudemo"))->trigger();
        QCOMPARE(d.tangent->values().size(), std::size_t(3));
        d.click("start");
        d.click("pause");
        std::vector<double> xs{d.tangentX()};
        for (d.click("step"); d.tangentX() != xs.back() && xs.size() < 10; d.click("step"))
            xs.push_back(d.tangentX());
        QCOMPARE(xs, (std::vector<double>{-1, 2, eval::kPiValue}));
        d.click("stop");
        QVERIFY(!d.window.demonstration().running() && d.prompter.messages.isEmpty());
    }

    void refusals()
    {
        Demo d;
        // Values that make no walk start none.
        d.setRange(QStringLiteral("1"), QStringLiteral("-2"), QStringLiteral("0.1"));
        d.click("start");
        QCOMPARE(d.prompter.messages.size(), 1);
        QCOMPARE(d.prompter.messages[0].left(15), model::LoadResString(4021).left(15));
        QVERIFY(!d.window.demonstration().running());
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
    }
};

QTEST_MAIN(TestDemo)
#include "test_demo.moc"
