// Thousands of random actions on the real window, with the window's invariants checked
// after each. A failure prints the seed and a shorter action list that still fails.
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

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include <cmath>
#include <random>

using namespace curvix;
using app::frmgraph;
using Button = model::Prompter::Button;

namespace {

constexpr int kActionCount = 5000;
constexpr quint32 kDefaultSeed = 20240610;
// Shrinking a failure stops after this long; the list found so far is printed.
constexpr qint64 kShrinkBudgetMs = 120000;

// Each action carries two random numbers a and b in 0..999 that it reads as it needs.
enum class Kind { Type, Token, Delete, New, Angle, Check, Range, Zoom, Wheel, RightClick, Trace, Tangent, Label, Symbolic, Demo };
// How often each kind comes; the symbolic library takes up to milliseconds.
constexpr int kWeights[] = {230, 100, 80, 20, 40, 60, 100, 70, 30, 50, 80, 50, 20, 15, 20};
const char* const kNames[] = {"Type",  "Token", "Delete",     "New",   "Angle",   "Check", "Range",   "Zoom",
                              "Wheel", "RightClick", "Trace", "Tangent", "Label", "Symbolic", "Demo"};

struct Action {
    Kind kind;
    int a;
    int b;
    QString text; // typed into the function box, a range box or the label box
};

// Texts that draw, so that there are curves to click, delete, trace and derive, and pieces
// of malformed and odd ones.
const QStringList kGoodFormulas{"x^2",   "sin(x)", "2x+1",   "x^3-2x", "sqrt(x)", "1/x",    "tan(x)", "ln(x)",
                                "abs(x)", "exp(x)", "cos(x)", "x/2",    "2^x",     "-x^2+3", "¶x",     "log(x)"};
const QStringList kPieces{"x",   "2",   "3.5", "1,5",   "sin(", "tan(", "sqrt(", "ln(", "log10(", "(", ")",
                          "+",   "-",   "*",   "/",     "^",    "pi",   "e",     "¶",   "t",      "y", "xsin",
                          "Exp(", "asin(", " ", "@",    "1e5",  "√",    "^^",    ".",   ",",      "0", "ä",
                          "999999999999999999999", "-(", "x("};
const QStringList kRangeTexts{"-5", "5", "1", "0", "-1", "10", "p", "-2p", "0.5", "1,5",
                              "",   "abc", "-", "1e3", "999999", "-999999", "0.001"};
const QStringList kLabels{"f(x)", "f(x)", "f(x)", "g(t)", "t", "F(X)", "f(", "1"};

Action randomAction(std::mt19937& rng)
{
    auto pick = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
    std::discrete_distribution<int> kinds(std::begin(kWeights), std::end(kWeights));
    Action act{Kind(kinds(rng)), pick(1000), pick(1000), {}};
    if (act.kind == Kind::Type && pick(2) == 0)
        act.text = kGoodFormulas[pick(int(kGoodFormulas.size()))];
    else if (act.kind == Kind::Type)
        for (int n = 1 + pick(8); n > 0; --n)
            act.text += kPieces[pick(int(kPieces.size()))];
    else if (act.kind == Kind::Range)
        act.text = kRangeTexts[pick(int(kRangeTexts.size()))];
    else if (act.kind == Kind::Label)
        act.text = kLabels[pick(int(kLabels.size()))];
    return act;
}

const QStringList kSymbolicFailures{"too long expression", "Error in derivative calculation",
                                    "Error in calculation of primitive function", "Error in primitive calculation"};

// One run of a list of actions on a fresh window.
class Run {
public:
    explicit Run(const QString& saveFolder) : m_saveFolder(saveFolder)
    {
        window.resize(1000, 700);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowExposed(&window))
            qWarning("window not exposed");
    }

    // The first broken invariant after the actions, or "" when all held.
    QString play(const std::vector<Action>& actions, int* failedAt = nullptr)
    {
        for (std::size_t i = 0; i < actions.size(); ++i) {
            if (const QString problem = step(actions[i]); !problem.isEmpty()) {
                if (failedAt)
                    *failedAt = int(i);
                return problem;
            }
        }
        return {};
    }

private:
    ScriptedPrompter prompter;
    frmgraph window{prompter};
    app::FunctionBox* box = child<app::FunctionBox>(&window, QStringLiteral("imgcombfunc"));
    QWidget* plot = window.plotArea();
    QString m_saveFolder;
    int m_saves = 0;
    int m_removed = 0;

    QPoint at(int a, int b) const
    {
        return QPoint(std::max(1, plot->width() - 2) * a / 1000 + 1, std::max(1, plot->height() - 2) * b / 1000 + 1);
    }
    QAction* action(const char* name) { return child<QAction>(&window, QLatin1String(name)); }
    template <typename W>
    W* widget(const QString& name) { return child<W>(&window, name); }

    // Types text as keys; characters beyond ASCII arrive as the text of an unnamed key.
    static void typeText(QWidget* widget, const QString& text)
    {
        for (const QChar c : text) {
            if (c.unicode() >= 0x20 && c.unicode() < 0x7F)
                QTest::keyClick(widget, char(c.unicode()));
            else
                QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
        }
    }

    // Does the action; returns the messages it may show, or a problem on its own.
    QStringList perform(const Action& act, QString& problem)
    {
        model::AppState& state = window.state();
        switch (act.kind) {
        case Kind::Type: {
            box->lineEdit()->clear();
            typeText(box->lineEdit(), act.text);
            const QStringList allowed = expectedOnDraw(box->currentText());
            if (act.a % 2 == 0)
                QTest::keyClick(box->lineEdit(), Qt::Key_Return);
            else
                widget<QPushButton>(QStringLiteral("Command1_0"))->click();
            return allowed;
        }
        case Kind::Token:
            QTest::mouseClick(widget<QToolButton>(QStringLiteral("cmdtoken_%1").arg(act.a % 32)), Qt::LeftButton);
            break;
        case Kind::Delete:
            if (act.a % 4 < box->count())
                box->setCurrentIndex(act.a % 4);
            action("mnupop1")->trigger();
            break;
        case Kind::New: {
            // No; Cancel; Yes and save; Yes and cancel the save dialog.
            const int answer = act.a % 4;
            prompter.answers.push_back(answer == 0 ? Button::No : answer == 1 ? Button::Cancel : Button::Yes);
            prompter.fileNames.push_back(answer == 2 ? m_saveFolder + QStringLiteral("/d%1.png").arg(m_saves++) : QString());
            action("mnunew")->trigger();
            if (state.graphs.empty())
                m_removed = 0;
            break;
        }
        case Kind::Angle:
        case Kind::Check: {
            // On the circle or the box, where a user clicks.
            auto* button = act.kind == Kind::Angle ? widget<QWidget>(QStringLiteral("Option1_%1").arg(act.a % 3))
                                                   : widget<QWidget>(QStringLiteral("Check%1").arg(1 + act.a % 4));
            QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
            break;
        }
        case Kind::Range: {
            auto* edit = widget<QLineEdit>(QStringLiteral("%1_%2").arg(act.a % 2 ? "Text4" : "Text6").arg(act.b % 4));
            if (!edit->isVisible())
                break;
            edit->setFocus();
            edit->selectAll();
            QTest::keyClick(edit, Qt::Key_Backspace);
            typeText(edit, act.text);
            QTest::keyClick(edit, Qt::Key_Return);
            break;
        }
        case Kind::Zoom:
            // In by the zoom box, double-clicked or escaped; out one step or to the beginning.
            if (act.a % 4 >= 2) {
                action(act.a % 2 ? "mnuzoominc" : "mnuzoombeg")->trigger();
                break;
            }
            action("mnuzoomin")->trigger();
            if (auto* zoomBox = window.findChild<app::ZoomBoxWidget*>(); act.a % 2)
                QTest::keyClick(zoomBox, Qt::Key_Escape);
            else
                QTest::mouseDClick(zoomBox, Qt::LeftButton, {}, zoomBox->rect().center());
            break;
        case Kind::Wheel: {
            const QPointF p = at(act.a, act.b);
            QWheelEvent wheel(p, plot->mapToGlobal(p), QPoint(), QPoint(0, 120 * (act.a % 5 - 2)), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(plot, &wheel);
            break;
        }
        case Kind::RightClick:
            QTest::mouseClick(plot, Qt::RightButton, {}, at(act.a, act.b));
            if (QWidget* popup = QApplication::activePopupWidget())
                popup->close();
            if (act.a % 2)
                action("mnufill")->trigger();
            break;
        case Kind::Trace:
            if (act.a % 3 == 0)
                action("mnutrace")->trigger();
            else
                window.curveTools().stepTrace(act.a % 3 == 1 ? 1 : -1);
            break;
        case Kind::Tangent:
            if (act.a % 2 == 0)
                action("mnutangent")->trigger();
            else if (action("mnutangent")->isChecked())
                QTest::mouseClick(plot, Qt::LeftButton, {}, at(act.b, act.b));
            break;
        case Kind::Label:
            widget<QLineEdit>(QStringLiteral("Text5"))->setText(act.text);
            box->setFocus();
            break;
        case Kind::Symbolic: {
            // The answer comes by a signal; the action ends when the request does.
            QSignalSpy busy(&window.symbolicRunner(), &app::SymbolicRunner::busyChanged);
            action(act.a % 2 ? "mnuprimitive" : "mnuderivative")->trigger();
            if (!busy.isEmpty() && !QTest::qWaitFor([&] { return busy.size() >= 2; }, 10000))
                problem = QStringLiteral("the symbolic request never ended");
            return kSymbolicFailures;
        }
        case Kind::Demo: {
            const auto items = state.functionItems;
            const QStringList texts = graphTexts();
            demonstrate(act);
            if (state.functionItems != items || graphTexts() != texts)
                problem = QStringLiteral("the demonstration changed the graph list");
            return {QStringLiteral("Ingen aktiv funktion")};
        }
        }
        return {};
    }

    QString step(const Action& action)
    {
        const qsizetype before = prompter.messages.size();
        const std::size_t graphsBefore = window.state().graphs.size();
        QString problem;
        const QStringList allowed = perform(action, problem);
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
        // A dialog the action did not open would have found nothing here; leftovers go.
        prompter.answers.clear();
        prompter.fileNames.clear();
        if (action.kind == Kind::Delete)
            m_removed += int(graphsBefore - window.state().graphs.size());
        for (qsizetype i = before; i < prompter.messages.size() && problem.isEmpty(); ++i)
            if (!allowed.contains(prompter.messages[i]))
                problem = QStringLiteral("unexpected message \"%1\"").arg(prompter.messages[i]);
        if (problem.isEmpty() && !prompter.unexpected.isEmpty())
            problem = QStringLiteral("unexpected dialog \"%1\"").arg(prompter.unexpected.join('|'));
        return problem.isEmpty() ? invariants() : problem;
    }

    QStringList graphTexts() const
    {
        QStringList texts;
        for (const model::GraphEntry& entry : window.state().graphs)
            texts << entry.text;
        return texts;
    }

    // Starts a walk as the demonstration window plans it (or a list of its own), steps, stops
    // or plays.
    void demonstrate(const Action& act)
    {
        app::Demonstration& demo = window.demonstration();
        const std::vector<model::GraphEntry>& graphs = window.state().graphs;
        const double from = act.b % 10 - 5;
        const std::vector<double> xs = plot::planDemonstration(from, from + act.b % 7, 0.25 * (act.b % 5), {}).xs;
        switch (act.a % 4) {
        case 0:
            demo.start(graphs.empty() || act.b % 4 == 0 ? box->currentText() : graphs[std::size_t(act.b) % graphs.size()].text,
                       xs.empty() ? std::vector<double>{2, -1, 0.5} : xs, xs.empty(), act.b % 3 != 0);
            break;
        case 1: demo.step(); break;
        case 2: demo.stop(); break;
        default: demo.play(!demo.playing());
        }
    }

    // What Draw may say about this text: the variable rule, or the evaluator's own
    // complaint, worked out on an evaluator of its own.
    QStringList expectedOnDraw(const QString& text)
    {
        QStringList said{QStringLiteral("Endast en variabel per omgång")};
        eval::ExpressionEvaluator evaluator;
        eval::PrepareExpressionText(evaluator, text, widget<QLineEdit>(QStringLiteral("Text5"))->text(),
                                    [&](const QString& m) { said << m; });
        // Whether a typed text is a derivative or primitive of its source asks the library.
        if (window.state().pendingDerivativeOf >= 0 || window.state().pendingPrimitiveOf >= 0)
            said << kSymbolicFailures;
        return said;
    }

    QString invariants() const
    {
        const model::AppState& s = window.state();
        const int size = int(s.graphs.size());
        if (s.graphCount != size || int(s.functionItems.size()) != size || box->count() != size)
            return QStringLiteral("graphCount %1, %2 items, %3 in the box, list %4")
                .arg(s.graphCount).arg(s.functionItems.size()).arg(box->count()).arg(size);
        // The box shows the items as a tree, each at most one level below the one before, and
        // the items are the graph list's texts.
        QStringList items;
        for (int i = 0, previous = -1; i < size; ++i) {
            const model::FunctionItem& item = s.functionItems[std::size_t(i)];
            if (box->itemText(i) != item.text || box->indentAt(i) != item.indent)
                return QStringLiteral("box item %1 is \"%2\", not \"%3\"").arg(i).arg(box->itemText(i), item.text);
            if (item.indent < 0 || item.indent > previous + 1)
                return QStringLiteral("item %1 is indented %2 after %3").arg(i).arg(item.indent).arg(previous);
            previous = item.indent;
            items << item.text;
        }
        QStringList texts = graphTexts();
        items.sort();
        texts.sort();
        if (items != texts)
            return QStringLiteral("the items are not the graph list's texts");
        // Links are not renumbered when an entry goes, so a link past the end is explained
        // only by as many removals as it reaches past.
        for (const model::GraphEntry& entry : s.graphs)
            for (const qint32 link : {entry.derivativeIndex, entry.primitiveIndex})
                if (link < -1 || link >= size + m_removed)
                    return QStringLiteral("a link to %1 with %2 entries and %3 removed").arg(link).arg(size).arg(m_removed);
        const model::ViewWindow& v = s.view;
        if (!std::isfinite(v.XMin + v.XMax + v.XStep + v.YMin + v.YMax + v.YStep) || !(v.XMin < v.XMax) ||
            !(v.YMin < v.YMax) || v.XStep < 0 || v.YStep < 0)
            return QStringLiteral("invalid view x %1..%2 step %3, y %4..%5 step %6")
                .arg(v.XMin).arg(v.XMax).arg(v.XStep).arg(v.YMin).arg(v.YMax).arg(v.YStep);
        if (s.trace.on && (s.trace.entry < 0 || s.trace.entry >= size))
            return QStringLiteral("the trace follows entry %1 of %2").arg(s.trace.entry).arg(size);
        const model::Demonstration& d = s.demonstration;
        const bool playing = window.demonstration().playing();
        if (d.running != window.demonstration().running() || (d.running && (d.next > d.xs.size() || !d.formula)))
            return QStringLiteral("the walk is at %1 of %2 steps").arg(d.next).arg(d.xs.size());
        if (!d.running && (!d.xs.empty() || d.tangent || !d.curve.empty() || playing))
            return QStringLiteral("a stopped demonstration keeps its walk or plays");
        if (!d.derivative.empty() && !d.withDerivative)
            return QStringLiteral("a derivative's graph that was not asked for");
        for (const eval::PointD& p : d.derivative)
            if (!std::isfinite(p.x) || !std::isfinite(p.y))
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
        QVERIFY(m_home.isValid());
        qputenv("HOME", m_home.path().toLocal8Bit());
        qunsetenv("XDG_DOCUMENTS_DIR");
        QStandardPaths::setTestModeEnabled(true);
    }

    void invariantsHoldUnderRandomActions()
    {
        bool ok = false;
        const quint32 fromEnvironment = qEnvironmentVariable("CURVIX_SEED").toUInt(&ok);
        const quint32 seed = ok ? fromEnvironment : kDefaultSeed;
        std::mt19937 rng(seed);
        std::vector<Action> actions;
        for (int i = 0; i < kActionCount; ++i)
            actions.push_back(randomAction(rng));
        int failedAt = -1;
        QString problem = Run(m_home.path()).play(actions, &failedAt);
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
                if (!shorter.empty() && !Run(m_home.path()).play(shorter).isEmpty())
                    actions = shorter;
                else
                    from += chunk;
            }
        }
        QString list;
        for (const Action& act : actions)
            list += QStringLiteral("\n  %1(%2, %3, \"%4\")").arg(QLatin1String(kNames[int(act.kind)])).arg(act.a).arg(act.b).arg(act.text);
        QFAIL(qPrintable(QStringLiteral("seed %1 (CURVIX_SEED), action %2: %3\nshorter list (%4):%5")
                             .arg(seed).arg(failedAt).arg(problem).arg(actions.size()).arg(list)));
    }
};

QTEST_MAIN(TestRandomActions)
#include "test_random_actions.moc"
