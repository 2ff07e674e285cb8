// Thousands of random actions on the real window, with the window's invariants checked
// after each: the function box's tree, the links, the view, the trace and the
// demonstration. A failure prints the seed and a shorter action list that still fails.
#include "app/curve_tools.h"
#include "app/demonstration.h"
#include "app/frmgraph.h"
#include "app/function_box.h"
#include "app/plot_widget.h"
#include "app/symbolic_runner.h"
#include "app/zoom_box.h"
#include "eval/evaluator.h"
#include "eval/formula.h"
#include "plot/demonstration.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QtTest>
#include <QtWidgets>

#include <cmath>
#include <random>

using namespace curvix;
using Button = model::Prompter::Button;

namespace {

constexpr int kActionCount = 5000;
constexpr quint32 kDefaultSeed = 20240610;
// Shrinking a failure stops after this long; the list found so far is printed.
constexpr qint64 kShrinkBudgetMs = 120000;

// Each action carries two random numbers a and b in 0..999 that it reads as it needs.
enum class Kind { Type, Delete, New, Button, Range, Zoom, RightClick, Trace, Symbolic, Demo, Undo };
// How often each kind comes; the symbolic library takes up to milliseconds.
constexpr int kWeights[] = {250, 80, 20, 100, 160, 120, 60, 100, 20, 30, 60};

struct Action {
    Kind kind;
    int a;
    int b;
    QString text; // typed into the function box or a range box
};

// Texts that draw, so that there are curves to click, delete, trace and derive; pieces of
// malformed and odd ones; texts for the range boxes.
const QStringList kGoodFormulas{"x^2", "sin(x)", "2x+1", "x^3-2x", "sqrt(x)", "1/x", "tan(x)", "ln(x)",
                                "abs(x)", "exp(x)", "cos(x)", "x/2", "2^x", "-x^2+3", "¶x", "log(x)"};
const QStringList kPieces{"x", "2", "3.5", "1,5", "sin(", "sqrt(", "log10(", "(", ")", "+", "-", "*", "/", "^",
                          "pi", "e", "¶", "t", "y", "xsin", "Exp(", " ", "@", "1e5", "^^", ".", ",", "ä", "-(",
                          "999999999999999999999"};
const QStringList kRangeTexts{"-5", "5", "1", "0", "-1", "10", "p", "-2p", "0.5", "1,5",
                              "",   "abc", "-", "1e3", "999999", "-999999", "0.001"};
const QStringList kSymbolicFailures{"too long expression", "Error in derivative calculation",
                                    "Error in calculation of primitive function", "Error in primitive calculation"};

Action randomAction(std::mt19937& rng)
{
    auto pick = [&](const QStringList& texts) { return texts[int(rng() % texts.size())]; };
    std::discrete_distribution<int> kinds(std::begin(kWeights), std::end(kWeights));
    Action act{Kind(kinds(rng)), int(rng() % 1000), int(rng() % 1000), {}};
    if (act.kind == Kind::Type && act.b % 2)
        act.text = pick(kGoodFormulas);
    else if (act.kind == Kind::Type)
        for (int n = 1 + act.b % 8; n > 0; --n)
            act.text += pick(kPieces);
    else if (act.kind == Kind::Range)
        act.text = pick(kRangeTexts);
    return act;
}

// Types text as keys; characters beyond ASCII arrive as the text of an unnamed key.
void typeText(QWidget* widget, const QString& text)
{
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, widget, c.unicode() < 0x80 ? QTest::asciiToKey(char(c.unicode())) : Qt::Key_unknown,
                            QString(c), Qt::NoModifier);
}

// One run of a list of actions on a fresh window.
class Run {
public:
    Run()
    {
        window.resize(1000, 700);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowExposed(&window))
            qWarning("window not exposed");
    }

    // The first broken invariant after the actions, or "" when all held. At the end, undoing
    // every step must give the first picture back, and redoing them the last.
    QString play(const std::vector<Action>& actions, int* failedAt = nullptr)
    {
        if (failedAt)
            *failedAt = int(actions.size()) - 1;
        const QImage first = window.plotArea()->image();
        for (std::size_t i = 0; i < actions.size(); ++i) {
            if (const QString problem = step(actions[i]); !problem.isEmpty()) {
                if (failedAt)
                    *failedAt = int(i);
                return problem;
            }
        }
        return undoneAndRedone(first);
    }

private:
    ScriptedPrompter prompter;
    app::frmgraph window{prompter};
    const model::AppState& state = window.state();
    app::FunctionBox* box = child<app::FunctionBox>(&window, QStringLiteral("imgcombfunc"));
    QWidget* plot = window.plotArea();
    int m_removed = 0;
    QString m_problem;

    void trigger(const char* action) { child<QAction>(&window, QLatin1String(action))->trigger(); }
    // A button, an angle option or a check box, where a user clicks it.
    void click(const QString& name)
    {
        QWidget* w = child<QWidget>(&window, name);
        QTest::mouseClick(w, Qt::LeftButton, {}, QPoint(6, w->height() / 2));
    }

    // The function box, the range rows and the buttons beside them.
    void performOnEntries(const Action& act)
    {
        switch (act.kind) {
        case Kind::Type:
            box->lineEdit()->clear();
            typeText(box->lineEdit(), act.text);
            prompter.answers = {Button::No}; // a letter offered as a parameter is declined
            if (act.a % 2)
                QTest::keyClick(box->lineEdit(), Qt::Key_Return);
            else
                click(QStringLiteral("Command1_0"));
            prompter.answers.clear();
            break;
        case Kind::Delete:
            if (act.a % 4 < box->count())
                box->setCurrentIndex(act.a % 4);
            trigger("mnupop1");
            break;
        case Kind::New: // No; Cancel; Yes and cancel the save dialog
            prompter.answers = {act.a % 3 == 0 ? Button::No : act.a % 3 == 1 ? Button::Cancel : Button::Yes};
            prompter.fileNames = {QString()};
            trigger("mnunew");
            break;
        case Kind::Undo:
            trigger(act.a % 3 ? "mnuundo" : "mnuredo");
            break;
        case Kind::Button: // the angle options, the exact values, the grid, ...
            click(act.a % 2 ? QStringLiteral("Option1_%1").arg(act.b % 3) : QStringLiteral("Check%1").arg(1 + act.b % 4));
            break;
        case Kind::Range:
            if (auto* edit = child<QLineEdit>(&window, QStringLiteral("Text%1_%2").arg(act.a % 2 ? 4 : 6).arg(act.b % 4));
                edit->isVisible()) {
                edit->clear();
                typeText(edit, act.text);
                QTest::keyClick(edit, Qt::Key_Return);
            }
            break;
        default: {
            // The answer comes by a signal; the action ends when the request does.
            QSignalSpy busy(&window.symbolicRunner(), &app::SymbolicRunner::busyChanged);
            trigger(act.a % 2 ? "mnuprimitive" : "mnuderivative");
            if (!busy.isEmpty() && !QTest::qWaitFor([&] { return busy.size() >= 2; }, 10000))
                m_problem = QStringLiteral("the symbolic request never ended");
            if (act.b % 4) // the answer drawn as it came: linked to its source in the tree
                QTest::keyClick(box->lineEdit(), Qt::Key_Return);
        }
        }
    }

    // The plot and its tools.
    void performOnPlot(const Action& act)
    {
        const QPoint p(plot->width() * act.a / 1000, plot->height() * act.b / 1000);
        if (act.kind == Kind::Zoom && act.a % 5 == 4) {
            QWheelEvent wheel(p, plot->mapToGlobal(p), QPoint(), QPoint(0, 120 * (act.b % 5 - 2)), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(plot, &wheel);
        } else if (act.kind == Kind::Zoom && act.a % 5 >= 2) {
            trigger(act.a % 2 ? "mnuzoominc" : "mnuzoombeg");
        } else if (act.kind == Kind::Zoom) { // into the zoom box
            trigger("mnuzoomin");
            QWidget* zoomBox = window.findChild<app::ZoomBoxWidget*>();
            QTest::mouseDClick(zoomBox, Qt::LeftButton, {}, zoomBox->rect().center());
        } else if (act.kind == Kind::RightClick) { // picks the curve near the click; a fill may start there
            QTest::mouseClick(plot, Qt::RightButton, {}, p);
            if (QWidget* popup = QApplication::activePopupWidget())
                popup->close();
            if (act.a % 2)
                trigger("mnufill");
        } else if (act.kind == Kind::Trace) {
            if (act.a % 3 == 0)
                trigger("mnutrace");
            else
                window.curveTools().stepTrace(act.a % 3 == 1 ? 1 : -1);
        }
    }

    // Starts a walk as the demonstration window plans it (or a list of its own), steps,
    // stops or plays; the graph list stays as it was but for the derivatives a walk keeps.
    void demonstrate(const Action& act)
    {
        app::Demonstration& demo = window.demonstration();
        const auto items = state.functionItems;
        const double from = act.b % 10 - 5;
        const std::vector<double> xs = plot::planDemonstration(from, from + act.b % 7, 0.25 * (act.b % 5), {}).xs;
        if (act.a % 4 == 0) // the function in the box, drawn or not
            demo.start(box->storedText(), xs.empty() ? std::vector<double>{2, -1, 0.5} : xs, xs.empty(), act.b % 3 != 0);
        else if (act.a % 4 == 1)
            demo.step();
        else if (act.a % 4 == 2)
            demo.stop();
        else
            demo.play(!demo.playing());
        const auto& kept = state.demonstration.keptDerivatives;
        auto isNew = [&](const model::FunctionItem& item) {
            return std::none_of(items.begin(), items.end(), [&](const auto& i) { return i.text == item.text; }) &&
                   std::none_of(kept.begin(), kept.end(), [&](const auto& k) { return k.second == item.text; });
        };
        if (state.functionItems.size() < items.size() ||
            std::any_of(state.functionItems.begin(), state.functionItems.end(), isNew))
            m_problem = QStringLiteral("the demonstration changed the graph list");
    }

    QString step(const Action& act)
    {
        const qsizetype before = prompter.messages.size();
        const int graphsBefore = int(state.graphs.size());
        // What Draw may say about the text in the box: the variable rule, or the evaluator's
        // own complaint, worked out on an evaluator of its own.
        QStringList allowed{QStringLiteral("Endast en variabel per omgång"), QStringLiteral("Ingen aktiv funktion")};
        if (state.pendingDerivativeOf >= 0 || state.pendingPrimitiveOf >= 0 || act.kind == Kind::Symbolic)
            allowed << kSymbolicFailures;
        m_problem.clear();
        if (act.kind == Kind::Demo)
            demonstrate(act);
        else if (act.kind == Kind::Zoom || act.kind == Kind::RightClick || act.kind == Kind::Trace)
            performOnPlot(act);
        else
            performOnEntries(act);
        eval::ExpressionEvaluator evaluator;
        eval::PrepareExpressionText(evaluator, box->storedText(), child<QLineEdit>(&window, QStringLiteral("Text5"))->text(),
                                    [&](const QString& m) { allowed << m; });
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
        // Links are not renumbered when an entry goes: count the removals they may reach past.
        m_removed = state.graphs.empty() ? 0 : m_removed + std::max(0, graphsBefore - int(state.graphs.size()));
        for (qsizetype i = before; i < prompter.messages.size() && m_problem.isEmpty(); ++i)
            if (!allowed.contains(prompter.messages[i]))
                m_problem = QStringLiteral("unexpected message \"%1\"").arg(prompter.messages[i]);
        if (m_problem.isEmpty() && !prompter.unexpected.isEmpty())
            m_problem = QStringLiteral("unexpected dialog \"%1\"").arg(prompter.unexpected.join('|'));
        return m_problem.isEmpty() ? invariants() : m_problem;
    }

    QString undoneAndRedone(const QImage& first)
    {
        // The tools end, as showing a drawing ends them: they are no part of it.
        window.symbolicRunner().cancel();
        window.demonstration().stop();
        child<QAction>(&window, QStringLiteral("mnutrace"))->setChecked(false);
        child<QAction>(&window, QStringLiteral("mnutangent"))->setChecked(false);
        window.redraw();
        const QImage last = window.plotArea()->image();
        QAction* undo = child<QAction>(&window, QStringLiteral("mnuundo"));
        QAction* redo = child<QAction>(&window, QStringLiteral("mnuredo"));
        while (undo->isEnabled())
            undo->trigger();
        if (window.plotArea()->image() != first)
            return QStringLiteral("undoing every step does not give the first picture back");
        while (redo->isEnabled())
            redo->trigger();
        if (window.plotArea()->image() != last)
            return QStringLiteral("redoing every step does not give the last picture back");
        return invariants();
    }

    QString invariants() const
    {
        const int size = int(state.graphs.size());
        if (state.graphCount != size || int(state.functionItems.size()) != size || box->count() != size)
            return QStringLiteral("the list, its count, the items and the box differ in length");
        // The box shows the items as a tree, each at most one level below the one before, and
        // the items are the graph list's texts.
        QStringList items, texts;
        for (int i = 0, previous = -1; i < size; ++i) {
            const model::FunctionItem& item = state.functionItems[std::size_t(i)];
            if (box->storedItemText(i) != item.text || box->indentAt(i) != item.indent)
                return QStringLiteral("box item %1 is \"%2\", not \"%3\"").arg(i).arg(box->storedItemText(i), item.text);
            if (item.indent < 0 || item.indent > previous + 1)
                return QStringLiteral("item %1 is indented %2 after %3").arg(i).arg(item.indent).arg(previous);
            previous = item.indent;
            items << item.text;
            texts << state.graphs[std::size_t(i)].text;
            // A link past the end is explained only by as many removals as it reaches past.
            for (const qint32 link : {state.graphs[std::size_t(i)].derivativeIndex, state.graphs[std::size_t(i)].primitiveIndex})
                if (link < -1 || link >= size + m_removed)
                    return QStringLiteral("entry %1 links to %2, %3 removed").arg(i).arg(link).arg(m_removed);
        }
        items.sort();
        texts.sort();
        if (items != texts)
            return QStringLiteral("the items are not the graph list's texts");
        const model::ViewWindow& v = state.view;
        if (!std::isfinite(v.XMin + v.XMax + v.XStep + v.YMin + v.YMax + v.YStep) || !(v.XMin < v.XMax) ||
            !(v.YMin < v.YMax) || v.XStep < 0 || v.YStep < 0)
            return QStringLiteral("invalid view x %1..%2, y %3..%4").arg(v.XMin).arg(v.XMax).arg(v.YMin).arg(v.YMax);
        if (state.trace.on && (state.trace.entry < 0 || state.trace.entry >= size))
            return QStringLiteral("the trace follows entry %1 of %2").arg(state.trace.entry).arg(size);
        const model::Demonstration& d = state.demonstration;
        if (d.running != window.demonstration().running() || (d.running && (d.next > d.xs.size() || !d.formula)))
            return QStringLiteral("the walk is at %1 of %2 steps").arg(d.next).arg(d.xs.size());
        if (!d.running && (!d.xs.empty() || d.tangent || !d.curve.empty() || window.demonstration().playing()))
            return QStringLiteral("a stopped demonstration keeps its walk or plays");
        if (!d.derivative.empty() && !d.withDerivative)
            return QStringLiteral("a derivative's graph that was not asked for");
        for (const eval::PointD& p : d.derivative)
            if (!std::isfinite(p.x + p.y))
                return QStringLiteral("the derivative's graph has a point that is not finite");
        return {};
    }
};

} // namespace

class TestRandomActions : public QObject {
    Q_OBJECT

    QTemporaryDir m_home;

private slots:
    void initTestCase()
    {
        QVERIFY(useHomeOfItsOwn(m_home));
    }

    void invariantsHoldUnderRandomActions()
    {
        const quint32 seed = qEnvironmentVariableIsSet("CURVIX_SEED") ? qEnvironmentVariable("CURVIX_SEED").toUInt()
                                                                       : kDefaultSeed;
        std::mt19937 rng(seed);
        std::vector<Action> actions;
        for (int i = 0; i < kActionCount; ++i)
            actions.push_back(randomAction(rng));
        int failedAt = -1;
        const QString problem = Run().play(actions, &failedAt);
        if (problem.isEmpty())
            return;

        // Shrink: drop ever smaller chunks of the actions up to the failure while the rest fails.
        actions.resize(std::size_t(failedAt) + 1);
        QElapsedTimer clock;
        clock.start();
        for (std::size_t chunk = actions.size() / 2; chunk >= 1 && clock.elapsed() < kShrinkBudgetMs; chunk /= 2) {
            for (std::size_t from = 0; from + chunk <= actions.size() && clock.elapsed() < kShrinkBudgetMs;) {
                std::vector<Action> shorter = actions;
                shorter.erase(shorter.begin() + std::ptrdiff_t(from), shorter.begin() + std::ptrdiff_t(from + chunk));
                if (!shorter.empty() && !Run().play(shorter).isEmpty())
                    actions = shorter;
                else
                    from += chunk;
            }
        }
        QString list;
        for (const Action& act : actions)
            list += QStringLiteral("\n  kind %1 (%2, %3, \"%4\")").arg(int(act.kind)).arg(act.a).arg(act.b).arg(act.text);
        QFAIL(qPrintable(QStringLiteral("seed %1 (CURVIX_SEED), action %2: %3\nshorter list (%4):%5")
                             .arg(seed).arg(failedAt).arg(problem).arg(actions.size()).arg(list)));
    }
};

QTEST_MAIN(TestRandomActions)
#include "test_random_actions.moc"
