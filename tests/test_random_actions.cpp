// Thousands of random actions on the real window, with the window's invariants checked
// after each. A failure prints the seed and the shortest action list that still fails.
#include "app/curve_tools.h"
#include "app/demonstration.h"
#include "app/frmgraph.h"
#include "app/function_box.h"
#include "app/plot_widget.h"
#include "app/symbolic_runner.h"
#include "app/zoom_box.h"
#include "eval/evaluator.h"
#include "eval/formula.h"
#include "model/graph_list.h"
#include "model/strings.h"
#include "plot/demonstration.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
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

enum class Kind {
    Type,        // text: typed into the function box, then Enter (a) or Draw
    Token,       // a: keypad key
    Delete,      // a: drop-down row to pick first, or -1 for the text in the box
    New,         // a: answer 0 No, 1 Cancel, 2 Yes and save, 3 Yes and cancel the dialog
    Angle,       // a: option
    Check,       // a: 0..3 for Check1..Check4
    NumberForm,  // a: 0 decimal, 1 fractional
    Range,       // a: box 0..7 (x row, y row), text
    ZoomIn,      // a: 0 double-click the box, 1 Esc
    ZoomOut,     // a: 0 stepwise, 1 to the beginning
    Wheel,       // a, b: place in per mille of the plot, text: the turn
    RightClick,  // a, b: place; text "fill" to fill there afterwards
    GuideLines,  // a: 1 vertical, 2 horizontal; b: 1 OK, 0 Cancel; text: values, ';'
    Color,       // a: which colour command; b: 0 cancel, otherwise the colour
    FontSize,    // text: the answer
    Trace,       // a: 0 toggle, 1 step right, 2 step left
    Tangent,     // a: 0 toggle, 1 click at (b, b)
    DoubleClick, // a, b: place on the plot
    Label,       // text: the label box
    Symbolic,    // a: 0 derivative, 1 primitive
    Demo,        // a: 0 start, 1 step, 2 stop, 3 play; b: picks the function and the walk
};

struct Action {
    Action(Kind k, int first = 0, int second = 0, QString t = {})
        : kind(k), a(first), b(second), text(std::move(t))
    {
    }
    Kind kind;
    int a;
    int b;
    QString text;
};

QString describe(const Action& action)
{
    static const char* names[] = {"Type",  "Token",  "Delete",     "New",     "Angle",
                                  "Check", "NumberForm", "Range",  "ZoomIn",  "ZoomOut",
                                  "Wheel", "RightClick", "GuideLines", "Color", "FontSize",
                                  "Trace", "Tangent", "DoubleClick", "Label", "Symbolic", "Demo"};
    return QStringLiteral("%1(%2, %3, \"%4\")")
        .arg(QLatin1String(names[int(action.kind)]))
        .arg(action.a)
        .arg(action.b)
        .arg(action.text);
}

// Texts that draw, so that there are curves to click, delete, trace and derive.
const QStringList kGoodFormulas{
    "x^2",     "sin(x)", "2x+1",  "x^3-2x", "sqrt(x)", "1/x",    "tan(x)", "ln(x)",
    "abs(x)",  "exp(x)", "cos(x)", "x/2",   "2^x",     "-x^2+3", "¶x",     "log(x)",
};
// Pieces of malformed and odd texts.
const QStringList kPieces{
    "x",    "2",     "3.5",   "1,5",  "sin(", "cos(", "tan(", "sqrt(", "ln(", "log10(",
    "log(", "abs(",  "(",     ")",    "+",    "-",    "*",    "/",     "^",   "pi",
    "e",    "¶",     "t",     "y",    "xsin", "x3.14", "exp(", "Exp(", "asin(", "sign(",
    " ",    "@",     "1e5",   "√",    "((",   "))",   "^^",   ".",     ",",   "0",
    "atanh(", "Z",   "ä",     "999999999999999999999", "-(", "x(",
};
const QStringList kRangeTexts{"-5", "5", "1", "0", "-1", "10", "p", "-2p", "0.5", "1,5",
                              "",   "abc", "-", "1e3", "999999", "-999999", "2", "0.001"};

class Generator {
public:
    explicit Generator(quint32 seed) : m_rng(seed) {}

    Action next()
    {
        const int r = pick(1000);
        if (r < 230) {
            QString text;
            if (pick(2) == 0) {
                text = kGoodFormulas[pick(int(kGoodFormulas.size()))];
            } else {
                for (int n = 1 + pick(8); n > 0; --n)
                    text += kPieces[pick(int(kPieces.size()))];
            }
            return {Kind::Type, pick(2), 0, text};
        }
        if (r < 330) return {Kind::Token, pick(32)};
        if (r < 390) return {Kind::Delete, pick(4) - 1};
        if (r < 410) return {Kind::New, pick(4)};
        if (r < 450) return {Kind::Angle, pick(3)};
        if (r < 510) return {Kind::Check, pick(4)};
        if (r < 530) return {Kind::NumberForm, pick(2)};
        if (r < 610)
            return {Kind::Range, pick(8), 0, kRangeTexts[pick(int(kRangeTexts.size()))]};
        if (r < 650) return {Kind::ZoomIn, pick(2)};
        if (r < 680) return {Kind::ZoomOut, pick(2)};
        if (r < 710) return {Kind::Wheel, pick(1000), pick(1000), QString::number(pick(5) - 2)};
        if (r < 760)
            return {Kind::RightClick, pick(1000), pick(1000),
                    pick(2) ? QStringLiteral("fill") : QString()};
        if (r < 790) {
            QStringList values;
            for (int n = pick(4); n > 0; --n)
                values << kRangeTexts[pick(int(kRangeTexts.size()))];
            return {Kind::GuideLines, 1 + pick(2), pick(2), values.join(QLatin1Char(';'))};
        }
        if (r < 820) return {Kind::Color, pick(5), pick(3) == 0 ? 0 : 1 + pick(0xFFFFFF)};
        if (r < 830) {
            const QStringList answers{"7", "5", "10", "12", "abc", "", "8,5"};
            return {Kind::FontSize, 0, 0, answers[pick(int(answers.size()))]};
        }
        if (r < 890) return {Kind::Trace, pick(3)};
        if (r < 940) return {Kind::Tangent, pick(2), pick(1000)};
        if (r < 960) return {Kind::DoubleClick, pick(1000), pick(1000)};
        if (r < 975) return {Kind::Demo, pick(4), pick(1000)};
        if (r < 990) {
            const QStringList labels{"f(x)", "f(x)", "f(x)", "g(t)", "t", "F(X)", "f(", "1"};
            return {Kind::Label, 0, 0, labels[pick(int(labels.size()))]};
        }
        // The symbolic library takes up to milliseconds: these stay rare.
        return {Kind::Symbolic, pick(2)};
    }

private:
    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_rng); }
    std::mt19937 m_rng;
};

// Types text as keys; characters beyond ASCII arrive as the text of an unnamed key.
void typeText(QWidget* widget, const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() >= 0x20 && c.unicode() < 0x7F)
            QTest::keyClick(widget, char(c.unicode()));
        else
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
}

const QStringList kSymbolicFailures{
    "too long expression", "Error in derivative calculation",
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
        box = child<app::FunctionBox>(&window, QStringLiteral("imgcombfunc"));
        plot = window.plotArea();
    }

    // The first broken invariant after the actions, or "" when all held.
    QString play(const std::vector<Action>& actions, int* failedAt = nullptr)
    {
        for (std::size_t i = 0; i < actions.size(); ++i) {
            const QString problem = step(actions[i]);
            if (!problem.isEmpty()) {
                if (failedAt)
                    *failedAt = int(i);
                return problem;
            }
        }
        return {};
    }

    ScriptedPrompter prompter;
    frmgraph window{prompter};

private:
    QPoint at(int a, int b) const
    {
        return QPoint(std::max(1, plot->width() - 2) * a / 1000 + 1,
                      std::max(1, plot->height() - 2) * b / 1000 + 1);
    }

    void closePopups()
    {
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
    }

    QAction* action(const char* name) { return child<QAction>(&window, QLatin1String(name)); }

    QString step(const Action& act)
    {
        const qsizetype before = prompter.messages.size();
        QStringList allowed;
        model::AppState& state = window.state();
        const std::size_t graphsBefore = state.graphs.size();

        switch (act.kind) {
        case Kind::Type: {
            box->lineEdit()->clear();
            typeText(box->lineEdit(), act.text);
            allowed = expectedOnDraw(box->currentText());
            if (act.a == 0)
                QTest::keyClick(box->lineEdit(), Qt::Key_Return);
            else
                QTest::mouseClick(child<QPushButton>(&window, QStringLiteral("Command1_0")),
                                  Qt::LeftButton);
            break;
        }
        case Kind::Token:
            QTest::mouseClick(child<QToolButton>(&window, QStringLiteral("cmdtoken_%1").arg(act.a)),
                              Qt::LeftButton);
            break;
        case Kind::Delete:
            if (act.a >= 0 && act.a < box->count())
                box->setCurrentIndex(act.a);
            action("mnupop1")->trigger();
            break;
        case Kind::New: {
            static const Button answers[] = {Button::No, Button::Cancel, Button::Yes, Button::Yes};
            prompter.answers.push_back(answers[act.a]);
            prompter.fileNames.push_back(
                act.a == 2 ? m_saveFolder + QStringLiteral("/drawing%1.png").arg(m_saves++)
                           : QString());
            action("mnunew")->trigger();
            break;
        }
        case Kind::Angle: {
            auto* option = child<QRadioButton>(&window, QStringLiteral("Option1_%1").arg(act.a));
            QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(6, option->height() / 2));
            break;
        }
        case Kind::Check: {
            auto* check = child<QCheckBox>(&window, act.a == 0 ? QStringLiteral("Check1")
                                                               : QStringLiteral("Check%1").arg(act.a + 1));
            QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(6, check->height() / 2));
            break;
        }
        case Kind::NumberForm:
            closePopups();
            action(act.a == 0 ? "mnupop21" : "mnupop22")->trigger();
            break;
        case Kind::Range: {
            auto* edit = child<QLineEdit>(&window, QStringLiteral("%1_%2")
                                                       .arg(act.a < 4 ? "Text4" : "Text6")
                                                       .arg(act.a % 4));
            if (!edit->isVisible())
                break;
            edit->setFocus();
            edit->selectAll();
            QTest::keyClick(edit, Qt::Key_Backspace);
            typeText(edit, act.text);
            QTest::keyClick(edit, Qt::Key_Return);
            break;
        }
        case Kind::ZoomIn: {
            action("mnuzoomin")->trigger();
            auto* zoomBox = window.findChild<app::ZoomBoxWidget*>();
            if (act.a == 0) {
                const QPointF centre(zoomBox->width() / 2.0, zoomBox->height() / 2.0);
                QMouseEvent dbl(QEvent::MouseButtonDblClick, centre, zoomBox->mapToGlobal(centre),
                                Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(zoomBox, &dbl);
            } else {
                QTest::keyClick(zoomBox, Qt::Key_Escape);
            }
            break;
        }
        case Kind::ZoomOut:
            action(act.a == 0 ? "mnuzoominc" : "mnuzoombeg")->trigger();
            break;
        case Kind::Wheel: {
            const QPointF p = at(act.a, act.b);
            QWheelEvent wheel(p, plot->mapToGlobal(p), QPoint(), QPoint(0, 120 * act.text.toInt()),
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(plot, &wheel);
            break;
        }
        case Kind::RightClick:
            QTest::mouseClick(plot, Qt::RightButton, {}, at(act.a, act.b));
            closePopups();
            if (act.text == QLatin1String("fill"))
                action("mnufill")->trigger();
            break;
        case Kind::GuideLines: {
            action(act.a == 1 ? "mnuvertical" : "menuhoriz")->trigger();
            QWidget* editor = child<QWidget>(&window, QStringLiteral("frmtangent"));
            auto* value = child<QLineEdit>(editor, QStringLiteral("value"));
            for (const QString& text : act.text.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
                value->setText(text);
                QTest::keyClick(value, Qt::Key_Return);
                allowed << model::LoadResString(4024).arg(text.trimmed());
            }
            QTest::mouseClick(child<QPushButton>(editor, act.b ? QStringLiteral("ok")
                                                               : QStringLiteral("cancel")),
                              Qt::LeftButton);
            editor->hide();
            break;
        }
        case Kind::Color: {
            static const char* commands[] = {"mnucolgrid", "mnucolaxis", "mnucolfunc",
                                             "mnucolwind", "mnucolfill"};
            prompter.colors.push_back(act.b ? std::optional<quint32>(quint32(act.b - 1))
                                            : std::nullopt);
            action(commands[act.a])->trigger();
            break;
        }
        case Kind::FontSize:
            prompter.inputs.push_back(act.text);
            prompter.answers.push_back(Button::Cancel); // a refused size is not retried
            action("mnufontsize")->trigger();
            break;
        case Kind::Trace:
            if (act.a == 0)
                action("mnutrace")->trigger();
            else
                window.curveTools().stepTrace(act.a == 1 ? 1 : -1);
            break;
        case Kind::Tangent:
            if (act.a == 0)
                action("mnutangent")->trigger();
            else if (action("mnutangent")->isChecked() && !window.findChild<app::ZoomBoxWidget*>()->isVisible())
                QTest::mouseClick(plot, Qt::LeftButton, {}, at(act.b, act.b));
            break;
        case Kind::DoubleClick: {
            const QPointF p = at(act.a, act.b);
            QMouseEvent dbl(QEvent::MouseButtonDblClick, p, plot->mapToGlobal(p), Qt::LeftButton,
                            Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(plot, &dbl);
            break;
        }
        case Kind::Label:
            child<QLineEdit>(&window, QStringLiteral("Text5"))->setText(act.text);
            box->setFocus();
            break;
        case Kind::Symbolic: {
            allowed << kSymbolicFailures;
            // The answer comes by a signal; the action ends when the request does.
            QSignalSpy busy(&window.symbolicRunner(), &app::SymbolicRunner::busyChanged);
            action(act.a == 0 ? "mnuderivative" : "mnuprimitive")->trigger();
            if (!busy.isEmpty() && !QTest::qWaitFor([&] { return busy.size() >= 2; }, 10000))
                return QStringLiteral("the symbolic request never ended");
            break;
        }
        case Kind::Demo: {
            allowed << QStringLiteral("Ingen aktiv funktion");
            const auto items = state.functionItems;
            const QStringList texts = graphTexts();
            demonstrate(act);
            if (state.functionItems != items || graphTexts() != texts)
                return QStringLiteral("the demonstration changed the graph list");
            break;
        }
        }
        closePopups();
        // A dialog the action did not open would have found nothing here; leftovers go.
        prompter.answers.clear();
        prompter.colors.clear();
        prompter.inputs.clear();
        prompter.fileNames.clear();

        if (state.graphs.size() < graphsBefore && act.kind == Kind::Delete)
            m_removed += int(graphsBefore - state.graphs.size());
        if (state.graphs.empty() && state.functionItems.empty() && act.kind == Kind::New)
            m_removed = 0;

        for (qsizetype i = before; i < prompter.messages.size(); ++i)
            if (!allowed.contains(prompter.messages[i]))
                return QStringLiteral("unexpected message \"%1\"").arg(prompter.messages[i]);
        if (!prompter.unexpected.isEmpty())
            return QStringLiteral("unexpected dialog \"%1\"").arg(prompter.unexpected.join('|'));
        return invariants();
    }

    QStringList graphTexts() const
    {
        QStringList texts;
        for (const model::GraphEntry& entry : window.state().graphs)
            texts << entry.text;
        return texts;
    }

    // Starts a range walk as the demonstration window plans it (or a list of its own), steps,
    // stops or plays.
    void demonstrate(const Action& act)
    {
        app::Demonstration& demo = window.demonstration();
        const std::vector<model::GraphEntry>& graphs = window.state().graphs;
        const double from = act.b % 10 - 5;
        const std::vector<double> xs = plot::planDemonstration(from, from + act.b % 7, 0.25 * (act.b % 5), {}).xs;
        if (act.a == 0)
            demo.start(graphs.empty() || act.b % 4 == 0 ? box->currentText()
                                                        : graphs[std::size_t(act.b) % graphs.size()].text,
                       xs.empty() ? std::vector<double>{2, -1, 0.5} : xs, xs.empty(), act.b % 3 != 0);
        else if (act.a == 1)
            demo.step();
        else if (act.a == 2)
            demo.stop();
        else
            demo.play(!demo.playing());
    }

    // What Draw may say about this text: the variable rule, or the evaluator's own
    // complaint, worked out on an evaluator of its own.
    QStringList expectedOnDraw(const QString& text) const
    {
        const model::AppState& state = window.state();
        const QString label = child<QLineEdit>(const_cast<frmgraph*>(&window), QStringLiteral("Text5"))->text();
        QStringList said{QStringLiteral("Endast en variabel per omgång")};
        eval::ExpressionEvaluator evaluator;
        eval::PrepareExpressionText(evaluator, text, label, [&](const QString& m) { said << m; });
        // Whether a typed text is a derivative or primitive of its source asks the library.
        if (state.pendingDerivativeOf >= 0 || state.pendingPrimitiveOf >= 0)
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
        // The box shows the items as a tree in list order, each at most one level below the one
        // before, and the items are the graph list's texts.
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
        for (int k = 0; k < size; ++k) {
            for (const qint32 link : {s.graphs[std::size_t(k)].derivativeIndex,
                                      s.graphs[std::size_t(k)].primitiveIndex}) {
                if (link != -1 && (link < 0 || link >= size + m_removed))
                    return QStringLiteral("entry %1 links to %2 with %3 entries and %4 removed")
                        .arg(k).arg(link).arg(size).arg(m_removed);
            }
        }
        const model::ViewWindow& v = s.view;
        for (double d : {v.XMin, v.XMax, v.XStep, v.YMin, v.YMax, v.YStep})
            if (!std::isfinite(d))
                return QStringLiteral("a view value is not finite");
        if (!(v.XMin < v.XMax) || !(v.YMin < v.YMax) || v.XStep < 0 || v.YStep < 0)
            return QStringLiteral("invalid view x %1..%2 step %3, y %4..%5 step %6")
                .arg(v.XMin).arg(v.XMax).arg(v.XStep).arg(v.YMin).arg(v.YMax).arg(v.YStep);
        if (s.trace.on && (s.trace.entry < 0 || s.trace.entry >= size))
            return QStringLiteral("the trace follows entry %1 of %2").arg(s.trace.entry).arg(size);
        return demonstrationProblem();
    }

    QString demonstrationProblem() const
    {
        const model::Demonstration& d = window.state().demonstration;
        if (d.running != window.demonstration().running() || (d.running && (d.next > d.xs.size() || !d.formula)))
            return QStringLiteral("the walk is at %1 of %2 steps").arg(d.next).arg(d.xs.size());
        if (!d.running && (!d.xs.empty() || d.tangent || !d.curve.empty()))
            return QStringLiteral("a stopped demonstration keeps its walk");
        if (window.demonstration().playing() && !d.running)
            return QStringLiteral("a stopped demonstration plays");
        if (!d.derivative.empty() && !d.withDerivative)
            return QStringLiteral("a derivative's graph that was not asked for");
        for (const eval::PointD& p : d.derivative) {
            if (!std::isfinite(p.x) || !std::isfinite(p.y))
                return QStringLiteral("the derivative's graph has a point that is not finite");
        }
        return {};
    }

    app::FunctionBox* box = nullptr;
    QWidget* plot = nullptr;
    QString m_saveFolder;
    int m_saves = 0;
    int m_removed = 0;
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
        Generator generator(seed);
        std::vector<Action> actions;
        for (int i = 0; i < kActionCount; ++i)
            actions.push_back(generator.next());

        int failedAt = -1;
        QString problem;
        {
            Run run(m_home.path());
            problem = run.play(actions, &failedAt);
        }
        if (problem.isEmpty())
            return;

        // Shrink: drop chunks, then single actions, keeping every list that still fails.
        actions.erase(actions.begin() + failedAt + 1, actions.end());
        QElapsedTimer clock;
        clock.start();
        auto fails = [&](const std::vector<Action>& list) {
            Run run(m_home.path());
            return !run.play(list).isEmpty();
        };
        for (std::size_t chunk = actions.size() / 2; chunk >= 1 && clock.elapsed() < kShrinkBudgetMs;
             chunk /= 2) {
            for (std::size_t from = 0; from < actions.size() && clock.elapsed() < kShrinkBudgetMs;) {
                std::vector<Action> shorter = actions;
                shorter.erase(shorter.begin() + std::ptrdiff_t(from),
                              shorter.begin() + std::ptrdiff_t(std::min(from + chunk, shorter.size())));
                if (!shorter.empty() && fails(shorter))
                    actions = shorter;
                else
                    from += chunk;
            }
        }
        QString list;
        for (const Action& action : actions)
            list += QStringLiteral("\n  ") + describe(action);
        {
            Run run(m_home.path());
            const QString last = run.play(actions);
            if (!last.isEmpty())
                problem = last;
        }
        QFAIL(qPrintable(QStringLiteral("seed %1 (CURVIX_SEED), action %2: %3\nshortest list (%4):%5")
                             .arg(seed).arg(failedAt).arg(problem).arg(actions.size()).arg(list)));
    }
};

QTEST_MAIN(TestRandomActions)
#include "test_random_actions.moc"
