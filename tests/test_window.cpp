// The main window as a user meets it: one wiring test per handler (the arithmetic behind
// them has headless tests of its own), the save question, and the symbolic commands that
// run off the GUI thread.
#include "app/curve_tools.h"
#include "app/color_actions.h"
#include "app/fraction_input.h"
#include "app/frmgraph.h"
#include "app/function_box.h"
#include "app/pi_line_edit.h"
#include "app/plot_label.h"
#include "app/plot_labels.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "app/symbolic_runner.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "plot/coordinates.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSemaphore>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QToolButton>
#include <QWheelEvent>

#include <atomic>
#include <cstring>

using namespace curvix;
using app::frmgraph;
using B = model::Prompter::Button;

namespace {

// Types a function into the function box the way a user does, then presses Enter.
void typeFunction(frmgraph& window, const QString& text)
{
    auto* box = child<QComboBox>(&window, QStringLiteral("imgcombfunc"));
    box->lineEdit()->clear();
    QTest::keyClicks(box->lineEdit(), text);
    QTest::keyClick(box->lineEdit(), Qt::Key_Return);
}

QString storedGridColour()
{
    QSettings settings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
    return settings.value(QStringLiteral("colors/gridcolor")).toString();
}

// The symbolic library's stand-in: fixed answers ("" fails), its calls counted and the
// thread it ran on kept. With a gate, each call waits until the test releases it.
struct FakeLibrary {
    FakeLibrary(QByteArray d, QByteArray p, bool gated = false)
        : derivative(std::move(d)), primitive(std::move(p)), gate(gated ? std::make_shared<QSemaphore>() : nullptr)
    {
    }
    QByteArray derivative;
    QByteArray primitive;
    std::shared_ptr<QSemaphore> gate;
    std::shared_ptr<std::atomic_int> calls = std::make_shared<std::atomic_int>(0);
    std::shared_ptr<std::atomic<QThread*>> thread = std::make_shared<std::atomic<QThread*>>(nullptr);

    void install(frmgraph& window) const
    {
        eval::SymbolicOptions options;
        options.library = [*this](const char* request, char* result, std::int32_t size) -> std::int32_t {
            thread->store(QThread::currentThread());
            ++*calls;
            if (gate && !gate->tryAcquire(1, 5000))
                return 0;
            const QByteArray& answer = QByteArray(request).startsWith("DIFF(") ? derivative : primitive;
            if (answer.isEmpty() || answer.size() >= size)
                return 0;
            std::memcpy(result, answer.constData(), std::size_t(answer.size()) + 1);
            return 1;
        };
        window.symbolicRunner().setBaseOptions(options);
    }
};

// The function box as "indent:text" items.
QString tree(frmgraph& window)
{
    auto* box = child<app::FunctionBox>(&window, QStringLiteral("imgcombfunc"));
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << QStringLiteral("%1:%2").arg(box->indentAt(i)).arg(box->itemText(i));
    return items.join(QLatin1Char(' '));
}

// A shown, active window, so that focus, shortcuts and the keypad work as for a user.
struct ShownWindow {
    ScriptedPrompter prompter;
    frmgraph window{prompter};
    ShownWindow()
    {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qWarning("window not active");
    }
    template <typename W>
    W* get(const QString& name) { return child<W>(&window, name); }
    app::PiLineEdit* box(const char* name) { return get<app::PiLineEdit>(QLatin1String(name)); }
    QAction* action(const char* name) { return get<QAction>(QLatin1String(name)); }
    QString status(int panel = 5) { return get<QLabel>(QStringLiteral("StatusBar1_%1").arg(panel))->text(); }
    QString functionText() { return get<QComboBox>(QStringLiteral("imgcombfunc"))->currentText(); }
    void focus(QWidget* w)
    {
        w->setFocus();
        QCoreApplication::processEvents();
    }
    void press(int token)
    {
        QTest::mouseClick(get<QToolButton>(QStringLiteral("cmdtoken_%1").arg(token)), Qt::LeftButton);
    }
    // A popup menu takes the window's activation; closing it gives it back.
    void closePopup(QMenu* menu)
    {
        menu->close();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    // Clicks an angle option on its circle, where a user clicks it.
    void option(int index)
    {
        auto* button = get<QRadioButton>(QStringLiteral("Option1_%1").arg(index));
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
    }
    QStringList row(const char* prefix)
    {
        QStringList texts;
        for (int i = 0; i < 4; ++i)
            texts << get<app::PiLineEdit>(QStringLiteral("%1_%2").arg(QLatin1String(prefix)).arg(i))->storedText();
        return texts;
    }
    QPointF pixel(double x, double y)
    {
        return plot::SetPlotScale(QSizeF(window.plotArea()->size()), window.state().view).toPixel(x, y);
    }
    void wheel(QPointF at, int delta)
    {
        QWidget* plot = window.plotArea();
        QWheelEvent event(at, plot->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(plot, &event);
    }
    QList<app::PlotLabel*> labels() { return window.plotArea()->findChildren<app::PlotLabel*>(); }
};

QStringList presetTexts(const model::RangePreset& preset)
{
    return {preset[0], preset[1], preset[2], preset[3]};
}

} // namespace

class TestWindow : public QObject {
    Q_OBJECT

    // Saving creates a folder in the user's documents: the tests get a home of their own.
    QTemporaryDir m_home;

private slots:

    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        qputenv("HOME", m_home.path().toLocal8Bit());
        qunsetenv("XDG_DOCUMENTS_DIR");
        QStandardPaths::setTestModeEnabled(true);
        QCoreApplication::setOrganizationName(QStringLiteral("Curvix"));
        QCoreApplication::setApplicationName(QStringLiteral("Curvix"));
    }

    void init()
    {
        QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix")).clear();
    }

    void setUpEndsWithTheFirstRedraw()
    {
        ScriptedPrompter prompter;
        frmgraph window(prompter);
        auto* grid = child<QCheckBox>(&window, QStringLiteral("Check2"));
        auto* degrees = child<QRadioButton>(&window, QStringLiteral("Option1_0"));
        // Before the first redraw the window is being set up: the handlers change nothing.
        grid->click();
        degrees->click();
        QCOMPARE(window.redrawCount(), 0);
        QCOMPARE(window.state().angleUnit, model::AngleUnit::Radians);
        QVERIFY(window.plotArea()->image().isNull());

        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(window.redrawCount() > 0);
        QCOMPARE(window.plotArea()->image().size(), window.plotArea()->devicePixelSize());
        const int redraws = window.redrawCount();
        grid->click();
        QCOMPARE(window.redrawCount(), redraws + 1);
        degrees->click();
        QCOMPARE(window.state().angleUnit, model::AngleUnit::Degrees);
        QVERIFY(prompter.messages.isEmpty());
    }

    void typedFunctionsAreDrawn_data()
    {
        QTest::addColumn<QStringList>("steps"); // "label|text", Enter; "label|=text": Draw
        QTest::addColumn<QStringList>("drawn");
        QTest::addColumn<QString>("message"); // part of the one message shown, "" for none
        QTest::addColumn<bool>("labelRefused");

        QTest::newRow("enter, draw, a duplicate")
            << QStringList{"f(x)|2x^2+1", "f(x)|=sin(x)", "f(x)|sin(x)"} << QStringList{"2x^2+1", "sin(x)"}
            << "" << false;
        QTest::newRow("a bad formula names its fault") << QStringList{"f(x)|2xsin(x)"} << QStringList{}
                                                       << "xsin" << false;
        QTest::newRow("one variable per list") << QStringList{"f(t)|t+1", "f(x)|x^2"} << QStringList{"t+1"}
                                               << "Endast en variabel per omgång" << false;
        QTest::newRow("a refused label draws nothing") << QStringList{"F(t)|t^2"} << QStringList{} << ""
                                                       << true;
        QTest::newRow("a mended label draws") << QStringList{"F(t)|t^2", "f(t)|=t^2"} << QStringList{"t^2"}
                                              << "" << false;
        QTest::newRow("the start of a drawn function is drawn as typed")
            << QStringList{"f(x)|x^3", "f(x)|x"} << QStringList{"x^3", "x"} << "" << false;
    }

    void typedFunctionsAreDrawn()
    {
        QFETCH(QStringList, steps);
        QFETCH(QStringList, drawn);
        QFETCH(QString, message);
        QFETCH(bool, labelRefused);
        ShownWindow w;
        auto* box = w.get<QComboBox>(QStringLiteral("imgcombfunc"));
        auto* label = w.get<QLineEdit>(QStringLiteral("Text5"));
        for (int i = 0; i < steps.size(); ++i) {
            const QStringList step = steps[i].split(QLatin1Char('|'));
            label->setText(step[0]);
            if (!step[1].startsWith(QLatin1Char('='))) {
                typeFunction(w.window, step[1]);
            } else {
                box->setEditText(step[1].mid(1));
                QTest::mouseClick(w.get<QPushButton>(QStringLiteral("Command1_0")), Qt::LeftButton);
            }
        }
        const model::AppState& state = w.window.state();
        QStringList texts;
        for (const model::GraphEntry& entry : state.graphs)
            texts << entry.text;
        QCOMPARE(texts, drawn);
        // Enter never adds the text to the list by itself: the items mirror the graph list.
        QStringList items;
        for (int i = 0; i < box->count(); ++i)
            items << box->itemText(i);
        QCOMPARE(items, drawn);
        QCOMPARE(state.documentChanged, !drawn.isEmpty());
        QCOMPARE(w.prompter.messages.size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty())
            QVERIFY2(w.prompter.messages[0].contains(message), qPrintable(w.prompter.messages[0]));
        if (labelRefused) {
            QTRY_VERIFY(label->hasFocus());
            QVERIFY(!w.status().isEmpty());
            QVERIFY(state.listVariable.isEmpty());
        }
    }

    void commandsNeedAFunction()
    {
        ShownWindow w;
        FakeLibrary library("2x", "x^2/2");
        library.install(w.window);
        const QStringList needy{"mnupop1", "mnuderivative", "mnuprimitive", "mnupopderiv", "mnutrace",
                                "Command5_3", "Command5_5", "Command5_7"};
        auto enabled = [&] {
            QList<bool> states;
            for (const QString& name : needy)
                states << w.get<QObject>(name)->property("enabled").toBool();
            return states;
        };
        const QList<bool> off(needy.size(), false);
        const QList<bool> on(needy.size(), true);
        QCOMPARE(enabled(), off);
        typeFunction(w.window, QStringLiteral("x^2"));
        QCOMPARE(enabled(), on);
        // An empty box asks the library nothing.
        w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QString());
        w.action("mnuderivative")->trigger();
        QVERIFY(!w.window.symbolicRunner().busy());
        QCOMPARE(library.calls->load(), 0);
        w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QStringLiteral("x^2"));
        w.action("mnupop1")->trigger();
        QCOMPARE(enabled(), off);
    }

    void symbolicAnswersAreLinked_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("others"); // drawn after the source, before the answer
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("edited"); // the answer changed before Enter
        QTest::addColumn<QString>("tree");

        QTest::newRow("derivative below its source") << "x^3" << QStringList{} << "Command5_5" << false
                                                     << "0:x^3 1:3x^2";
        QTest::newRow("derivative under its source, not at the end")
            << "x^3" << QStringList{"2x"} << "mnupopderiv" << false << "0:x^3 1:3x^2 0:2x";
        QTest::newRow("primitive above its source") << "2x" << QStringList{} << "mnupopprim" << false
                                                    << "0:x^2 1:2x";
        QTest::newRow("an edited answer is an ordinary function")
            << "x^3" << QStringList{} << "mnuderivative" << true << "0:x^3 0:3x^2+1";
    }

    void symbolicAnswersAreLinked()
    {
        QFETCH(QString, source);
        QFETCH(QStringList, others);
        QFETCH(QString, command);
        QFETCH(bool, edited);
        QFETCH(QString, tree);
        ShownWindow w;
        const FakeLibrary library("3x^2", "x^2");
        library.install(w.window);
        typeFunction(w.window, source);
        for (const QString& other : others)
            typeFunction(w.window, other);
        w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(source);
        QSignalSpy answered(&w.window.symbolicRunner(), &app::SymbolicRunner::answered);
        if (QAction* menu = w.window.findChild<QAction*>(command))
            menu->trigger();
        else
            w.get<QToolButton>(command)->click();
        QTRY_COMPARE(answered.count(), 1);
        QString answer = w.functionText();
        QCOMPARE(answer, QString::fromLatin1(command.contains(QLatin1String("prim")) ? library.primitive
                                                                                       : library.derivative));
        if (edited)
            answer += QStringLiteral("+1");
        typeFunction(w.window, answer);

        QCOMPARE(::tree(w.window), tree);
        // The link was checked against the remembered answer: the library was asked once.
        QCOMPARE(library.calls->load(), 1);
        QVERIFY(library.thread->load() != QThread::currentThread());
        QVERIFY(w.prompter.messages.isEmpty());
    }

    void symbolicRequestRunsOffTheGuiThread_data()
    {
        QTest::addColumn<QByteArray>("reply"); // what the library gives once released; "" fails
        QTest::addColumn<bool>("escape");
        QTest::addColumn<QStringList>("messages");

        QTest::newRow("the answer arrives by signal") << QByteArray("3x^2") << false << QStringList{};
        QTest::newRow("a failure is reported at the end")
            << QByteArray() << false << QStringList{"Error in derivative calculation"};
        QTest::newRow("escape: an interrupted call says nothing") << QByteArray() << true << QStringList{};
        QTest::newRow("escape: an answer that comes anyway is dropped")
            << QByteArray("3x^2") << true << QStringList{};
    }

    void symbolicRequestRunsOffTheGuiThread()
    {
        QFETCH(QByteArray, reply);
        QFETCH(bool, escape);
        QFETCH(QStringList, messages);
        ShownWindow w;
        FakeLibrary library(reply, reply, true);
        library.install(w.window);
        typeFunction(w.window, QStringLiteral("x^3"));
        auto* box = w.get<QComboBox>(QStringLiteral("imgcombfunc"));
        QSignalSpy answered(&w.window.symbolicRunner(), &app::SymbolicRunner::answered);
        QSignalSpy busy(&w.window.symbolicRunner(), &app::SymbolicRunner::busyChanged);
        w.action("mnuderivative")->trigger();

        // The library is still computing, and the window answers meanwhile.
        QTRY_COMPARE(library.calls->load(), 1);
        QVERIFY(box->lineEdit()->isReadOnly());
        QVERIFY(!w.action("mnuderivative")->isEnabled());
        if (escape)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        library.gate->release();
        QTRY_COMPARE(busy.count(), 2);
        QVERIFY(!box->lineEdit()->isReadOnly());
        QVERIFY(w.action("mnuderivative")->isEnabled());
        QCOMPARE(w.prompter.messages, messages);
        const bool answers = !escape && !reply.isEmpty();
        QCOMPARE(box->currentText(), answers ? QString::fromLatin1(reply) : QStringLiteral("x^3"));
        QCOMPARE(answered.count(), answers ? 1 : 0);
    }

    void saveQuestionBeforeNewAndClose_data()
    {
        QTest::addColumn<bool>("close"); // else New
        QTest::addColumn<bool>("changed");
        QTest::addColumn<int>("answer");    // to "Save changes?"
        QTest::addColumn<bool>("saveTo");   // a file is named in the save dialog, else it is cancelled
        QTest::addColumn<bool>("proceeds");

        QTest::newRow("close unchanged: no question") << true << false << -1 << false << true;
        QTest::newRow("close, No") << true << true << int(B::No) << false << true;
        QTest::newRow("close, Cancel") << true << true << int(B::Cancel) << false << false;
        QTest::newRow("close, Yes, save dialog cancelled") << true << true << int(B::Yes) << false << false;
        QTest::newRow("close, Yes, saved") << true << true << int(B::Yes) << true << true;
        QTest::newRow("new, Cancel") << false << true << int(B::Cancel) << false << false;
        QTest::newRow("new, Yes, saved") << false << true << int(B::Yes) << true << true;
    }

    void saveQuestionBeforeNewAndClose()
    {
        QFETCH(bool, close);
        QFETCH(bool, changed);
        QFETCH(int, answer);
        QFETCH(bool, saveTo);
        QFETCH(bool, proceeds);
        const QString file = m_home.filePath(QStringLiteral("before.png"));
        QFile::remove(file);
        ShownWindow w;
        if (answer >= 0)
            w.prompter.answers.push_back(B(answer));
        w.prompter.fileNames.push_back(saveTo ? file : QString());
        if (changed)
            typeFunction(w.window, QStringLiteral("x^2"));

        if (close)
            QCOMPARE(w.window.close(), proceeds);
        else
            w.action("mnunew")->trigger();
        QCOMPARE(w.prompter.questions.size(), changed ? 1 : 0);
        QVERIFY(w.prompter.unexpected.isEmpty());
        QCOMPARE(QFile::exists(file), saveTo);
        if (saveTo) {
            QCOMPARE(QImage(file).size(), w.window.plotArea()->image().size());
            QVERIFY(!w.window.state().documentChanged);
        }
        // The colours are stored when the window closes.
        QCOMPARE(storedGridColour().isEmpty(), !(close && proceeds));
        if (!close)
            QCOMPARE(int(w.window.state().graphCount), proceeds ? 0 : 1);
    }

    void newStartsAFreshDrawing()
    {
        ShownWindow w;
        const QStringList startRows = w.row("Text4");
        const QSize full = w.window.plotArea()->size();
        typeFunction(w.window, QStringLiteral("x^2"));
        w.option(0);
        w.get<QCheckBox>(QStringLiteral("Check2"))->click();
        QTest::keyClick(&w.window, Qt::Key_Left, Qt::ShiftModifier);
        w.window.plotView().labels().addText(QStringLiteral("kept?"), QPointF(10, 10));
        w.action("mnutrace")->trigger();
        w.get<QToolButton>(QStringLiteral("tracePlay"))->click();
        QVERIFY(w.window.curveTools().tracePlaying());
        w.prompter.answers.push_back(B::No);
        const int redraws = w.window.redrawCount();

        w.get<QToolButton>(QStringLiteral("Command5_9"))->click();
        const model::AppState& state = w.window.state();
        QCOMPARE(int(state.graphCount), 0);
        QCOMPARE(w.get<QComboBox>(QStringLiteral("imgcombfunc"))->count(), 0);
        QVERIFY(w.get<QRadioButton>(QStringLiteral("Option1_1"))->isChecked());
        QVERIFY(w.get<QCheckBox>(QStringLiteral("Check2"))->isChecked());
        QCOMPARE(w.row("Text4"), startRows);
        QCOMPARE(w.window.plotArea()->size(), full);
        QTRY_VERIFY(w.labels().isEmpty());
        QVERIFY(!state.trace.on && !w.window.curveTools().tracePlaying());
        QVERIFY(!w.action("mnutrace")->isChecked());
        QVERIFY(!state.documentChanged);
        // New redraws once, however many boxes it sets on the way.
        QCOMPARE(w.window.redrawCount(), redraws + 1);
        // A new drawing may use another variable.
        w.get<QLineEdit>(QStringLiteral("Text5"))->setText(QStringLiteral("f(t)"));
        typeFunction(w.window, QStringLiteral("t^2"));
        QCOMPARE(int(state.graphCount), 1);
        QVERIFY(w.prompter.messages.isEmpty());
    }

    void anUnwritableSettingsStoreIsReported()
    {
        // A folder where the settings file should be: no one, not even root, writes it.
        const QString file = QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix")).fileName();
        QFile::remove(file);
        QVERIFY(QDir().mkpath(file));
        ScriptedPrompter prompter;
        frmgraph window(prompter);
        const bool closed = window.close();
        QDir(file).removeRecursively();
        QVERIFY(closed);
        QCOMPARE(prompter.messages.size(), 1);
        QVERIFY2(prompter.messages[0].contains(file), qPrintable(prompter.messages[0]));
    }

    void settingsWindow_data()
    {
        QTest::addColumn<int>("choice");         // combo index, -1 for none
        QTest::addColumn<QList<bool>>("checks"); // y neg, y pos, x neg, x pos
        QTest::addColumn<int>("button");         // 0 OK, 1 Cancel
        QTest::addColumn<QString>("separator");
        QTest::addColumn<model::AxisArrowSwitches>("arrows");

        const QList<bool> all{true, true, true, true};
        const model::AxisArrowSwitches allOn{true, true, true, true};
        QTest::newRow("vertical bar") << 3 << all << 0 << "|" << allOn;
        QTest::newRow("nothing chosen keeps the separator") << -1 << all << 0 << "," << allOn;
        QTest::newRow("only x pos") << -1 << QList<bool>{false, false, false, true} << 0 << ","
                                    << model::AxisArrowSwitches{false, true, false, false};
        QTest::newRow("cancel stores nothing") << 2 << QList<bool>{false, false, false, false} << 1 << ","
                                               << allOn;
    }

    void settingsWindow()
    {
        QFETCH(int, choice);
        QFETCH(QList<bool>, checks);
        QFETCH(int, button);
        QFETCH(QString, separator);
        QFETCH(model::AxisArrowSwitches, arrows);
        ShownWindow w;
        w.action("mnucoord")->trigger();
        QWidget* settings = w.get<QWidget>(QStringLiteral("frmsettings"));
        auto* combo = child<QComboBox>(settings, QStringLiteral("Combo1"));
        if (choice >= 0) {
            combo->setCurrentIndex(choice);
            emit combo->activated(choice);
        }
        for (int i = 0; i < 4; ++i)
            child<QCheckBox>(settings, QStringLiteral("Check1_%1").arg(i))->setChecked(checks[i]);
        const int redraws = w.window.redrawCount();
        // Either button redraws.
        QTest::mouseClick(child<QPushButton>(settings, QStringLiteral("Command1_%1").arg(button)),
                          Qt::LeftButton);
        QCOMPARE(w.window.state().coordinateSeparator, separator);
        QCOMPARE(w.window.state().arrows, arrows);
        QCOMPARE(w.window.redrawCount(), redraws + 1);
        QTRY_VERIFY(!w.window.findChild<QWidget*>(QStringLiteral("frmsettings")));
    }

    void keypadTypesIntoItsTarget_data()
    {
        QTest::addColumn<QString>("target"); // widget to focus first
        QTest::addColumn<QString>("before");
        QTest::addColumn<QList<int>>("tokens");
        QTest::addColumn<QString>("functionBox");
        QTest::addColumn<QString>("targetText"); // stored text of the target afterwards

        const QString pi(QChar(0x00B6));
        QTest::newRow("log types log10(") << "imgcombfunc" << "" << QList<int>{29} << "log10(" << "";
        QTest::newRow("pi twice in the function box") << "imgcombfunc" << "2" << QList<int>{16, 16}
                                                      << "2" + pi + pi << "";
        QTest::newRow("a formula from keys") << "imgcombfunc" << "" << QList<int>{20, 30, 19, 11, 1}
                                             << "sqrt(x)+1" << "";
        QTest::newRow("pi twice in a range box is one p") << "Text4_0" << "" << QList<int>{16, 16} << ""
                                                          << "p";
        QTest::newRow("pi after a number in a range box") << "Text4_1" << "3" << QList<int>{16} << "" << "3p";
        QTest::newRow("a digit in a range box does nothing") << "Text4_0" << "-5" << QList<int>{7, 11, 17}
                                                             << "" << "-5";
        QTest::newRow("pi on the y row does nothing") << "Text6_0" << "-5" << QList<int>{16} << "" << "-5";
        QTest::newRow("pi in the label text") << "Text2" << "A" << QList<int>{16, 3} << "" << "A" + pi;
        QTest::newRow("C clears the function box from anywhere") << "Text4_0" << "-5" << QList<int>{31}
                                                                 << "" << "-5";
    }

    void keypadTypesIntoItsTarget()
    {
        QFETCH(QString, target);
        QFETCH(QString, before);
        QFETCH(QList<int>, tokens);
        QFETCH(QString, functionBox);
        QFETCH(QString, targetText);
        ShownWindow w;
        auto* box = w.get<QComboBox>(QStringLiteral("imgcombfunc"));
        const bool intoBox = target == QLatin1String("imgcombfunc");
        box->setEditText(intoBox ? before : QStringLiteral("sin(x)"));
        QWidget* widget = w.get<QWidget>(target);
        auto* range = qobject_cast<app::PiLineEdit*>(widget);
        if (range)
            range->setText(before);
        else if (auto* line = qobject_cast<QLineEdit*>(widget))
            line->setText(before);
        w.focus(widget);
        for (int token : tokens)
            w.press(token);

        if (intoBox) {
            QCOMPARE(w.functionText(), functionBox);
            QVERIFY(box->lineEdit()->hasFocus());
            QCOMPARE(box->lineEdit()->cursorPosition(), int(functionBox.size()));
            return;
        }
        QCOMPARE(w.functionText(), tokens.contains(31) ? QString() : QStringLiteral("sin(x)"));
        QCOMPARE(range ? range->storedText() : qobject_cast<QLineEdit*>(widget)->text(), targetText);
    }

    void angleUnitLoadsItsPreset_data()
    {
        QTest::addColumn<int>("option");
        QTest::addColumn<double>("markX"); // a tangent put at 1.5708 while in radians
        QTest::addColumn<bool>("exactTrig");
        QTest::newRow("degrees") << 0 << 90.0 << false;
        QTest::newRow("radians again converts nothing") << 1 << 1.5708 << true;
        QTest::newRow("gradians") << 2 << 100.0 << false;
    }

    void angleUnitLoadsItsPreset()
    {
        QFETCH(int, option);
        QFETCH(double, markX);
        QFETCH(bool, exactTrig);
        ShownWindow w;
        typeFunction(w.window, QStringLiteral("sin(x)"));
        model::AppState& state = w.window.state();
        state.graphs[0].marks.push_back({QStringLiteral("x"), 1.5708, 1, {}, {}, 0});
        auto* exact = w.get<QCheckBox>(QStringLiteral("Check1"));
        exact->click(); // ticked first: a unit without it unticks it
        auto* menu = w.get<QMenu>(QStringLiteral("mnupop2"));
        QTRY_VERIFY(menu->isVisible());
        w.closePopup(menu);
        const int redraws = w.window.redrawCount();
        w.option(option);

        const model::RangePreset* presets[3][2] = {{&state.presetDegreesX, &state.presetDegreesY},
                                                   {&state.presetRadiansX, &state.presetRadiansY},
                                                   {&state.presetGradiansX, &state.presetGradiansY}};
        QCOMPARE(w.row("Text4"), presetTexts(*presets[option][0]));
        QCOMPARE(w.row("Text6"), presetTexts(*presets[option][1]));
        QCOMPARE(state.view.XMax, *plot::readRangeNumber(w.row("Text4")[1]));
        // The π of a range box is shown as π and kept as p.
        QCOMPARE(w.box("Text4_0")->text(), app::piShown(w.row("Text4")[0]));
        QCOMPARE(exact->isEnabled(), exactTrig);
        QCOMPARE(exact->isChecked(), exactTrig);
        QCOMPARE(state.graphs[0].marks[0].x, markX);
        QVERIFY(w.window.redrawCount() > redraws);
    }

    void rangeBoxesFilterWhatIsTyped_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("typed"); // π stands for the character typed as such
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("field"); // of the view, in the order of its members
        QTest::addColumn<double>("value");
        const QString pi(QChar(0x03C0));
        QTest::newRow("x max") << "Text4_1" << "2xp!p" << "2p" << 1 << 2 * eval::kPiValue;
        QTest::newRow("x min, π typed") << "Text4_0" << "-" + pi << "-p" << 0 << -eval::kPiValue;
        QTest::newRow("y step takes no p") << "Text6_2" << "0p,5" << "0,5" << 6 << 0.5;
    }

    void rangeBoxesFilterWhatIsTyped()
    {
        QFETCH(QString, name);
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        QFETCH(int, field);
        QFETCH(double, value);
        ShownWindow w;
        app::PiLineEdit* box = w.box(qPrintable(name));
        box->clear();
        w.focus(box);
        for (const QChar c : typed) {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
            QApplication::sendEvent(box, &key);
        }
        QCOMPARE(box->storedText(), stored);
        QCOMPARE(box->text(), app::piShown(stored));
        QTest::keyClick(box, Qt::Key_Return);
        const model::ViewWindow& v = w.window.state().view;
        const double fields[8] = {v.XMin, v.XMax, v.XStep, v.XTicks, v.YMin, v.YMax, v.YStep, v.YTicks};
        QCOMPARE(fields[field], value);
    }

    void aBadRangeKeepsTheLastGoodView()
    {
        ShownWindow w;
        const model::ViewWindow before = w.window.state().view;
        w.box("Text6_0")->setText(QStringLiteral("7"));
        typeFunction(w.window, QStringLiteral("x^2"));
        QCOMPARE(w.window.state().view, before);
        QVERIFY2(w.status().contains(QStringLiteral("y minimum")), qPrintable(w.status()));
        QCOMPARE(int(w.window.state().graphCount), 1); // the function is still drawn

        w.box("Text6_0")->setText(QStringLiteral("-7"));
        QTest::mouseClick(w.get<QPushButton>(QStringLiteral("Command1_0")), Qt::LeftButton);
        QCOMPARE(w.window.state().view.YMin, -7.0);
        QVERIFY(w.status().isEmpty());
    }

    void exactTrigOffersDecimalsOrFractions()
    {
        ShownWindow w;
        const QStringList decimal = w.row("Text4");
        auto* exact = w.get<QCheckBox>(QStringLiteral("Check1"));
        auto* menu = w.get<QMenu>(QStringLiteral("mnupop2"));
        exact->click();
        QTRY_VERIFY(menu->isVisible());
        w.closePopup(menu);
        QCOMPARE(w.row("Text4"), presetTexts(w.window.state().presetRadiansX));

        w.action("mnupop22")->trigger();
        auto* fraction = w.get<app::FractionInput>(QStringLiteral("fracinput_2"));
        QVERIFY(fraction->isVisible());
        QVERIFY(!w.box("Text4_2")->isVisible());
        // The pi key types into the numerator unless the whole part is being edited.
        fraction->field(app::FractionInput::Numerator)->setText(QStringLiteral("3"));
        w.focus(fraction->field(app::FractionInput::Numerator));
        w.press(16);
        w.press(16);
        QCOMPARE(fraction->text(app::FractionInput::Numerator), QStringLiteral("3p"));
        fraction->field(app::FractionInput::Denominator)->setText(QStringLiteral("4"));
        QTest::keyClick(fraction->field(app::FractionInput::Denominator), Qt::Key_Return);
        QCOMPARE(w.window.state().view.XStep, 3 * eval::kPiValue / 4);

        exact->click(); // off again: plain decimals, the step boxes back
        QVERIFY(!fraction->isVisible());
        QVERIFY(w.box("Text4_2")->isVisible());
        QCOMPARE(w.row("Text4"), decimal);
    }

    void labelBoxNamesTheVariable()
    {
        ShownWindow w;
        auto* label = w.get<QLineEdit>(QStringLiteral("Text5"));
        auto* variableKey = w.get<QToolButton>(QStringLiteral("cmdtoken_30"));
        const QStringList labels{"F(x)", "g(t)", "h"};
        const QStringList keys{"x", "t", "x"};
        for (int i = 0; i < labels.size(); ++i) {
            w.focus(label);
            label->setText(labels[i]);
            w.focus(w.box("Text4_0"));
            QCOMPARE(variableKey->text(), keys[i]);
            // A refused label takes the focus back and says why.
            const bool refused = i == 0;
            QTRY_COMPARE(label->hasFocus(), refused);
            QCOMPARE(w.status().isEmpty(), !refused);
        }
    }

    void deleteRemovesTheNamedFunction_data()
    {
        QTest::addColumn<int>("pick"); // drop-down row selected first, -1 none
        QTest::addColumn<QString>("text"); // then the box's text
        QTest::addColumn<QString>("traced"); // the function traced meanwhile, "" none
        QTest::addColumn<QStringList>("remaining");
        QTest::addColumn<bool>("traceOn");

        QTest::newRow("the text names what goes, not the selection")
            << 0 << "x^2" << "" << QStringList{"x"} << false;
        QTest::newRow("a text not in the list deletes nothing") << -1 << "x^9" << "" << QStringList{"x", "x^2"}
                                                                << false;
        QTest::newRow("the traced function stops the trace") << -1 << "x^2" << "x^2" << QStringList{"x"}
                                                             << false;
        QTest::newRow("the trace follows its function to its new place")
            << -1 << "x" << "x^2" << QStringList{"x^2"} << true;
    }

    void deleteRemovesTheNamedFunction()
    {
        QFETCH(int, pick);
        QFETCH(QString, text);
        QFETCH(QString, traced);
        QFETCH(QStringList, remaining);
        QFETCH(bool, traceOn);
        ShownWindow w;
        typeFunction(w.window, QStringLiteral("x"));
        typeFunction(w.window, QStringLiteral("x^2"));
        auto* box = w.get<QComboBox>(QStringLiteral("imgcombfunc"));
        if (!traced.isEmpty()) {
            box->setEditText(traced);
            w.action("mnutrace")->trigger();
            w.get<QToolButton>(QStringLiteral("tracePlay"))->click();
        }
        if (pick >= 0)
            box->setCurrentIndex(pick);
        box->setEditText(text);
        w.get<QToolButton>(QStringLiteral("Command5_7"))->click();

        const model::AppState& state = w.window.state();
        QStringList texts;
        for (const model::GraphEntry& entry : state.graphs)
            texts << entry.text;
        QCOMPARE(texts, remaining);
        QCOMPARE(box->count(), int(remaining.size()));
        QCOMPARE(state.trace.on, traceOn);
        QCOMPARE(w.window.curveTools().tracePlaying(), traceOn);
        QCOMPARE(w.action("mnutrace")->isChecked(), traceOn);
        if (traceOn)
            QCOMPARE(state.graphs[std::size_t(state.trace.entry)].text, traced);
        if (remaining.size() < 2) {
            QCOMPARE(w.functionText(), QString());
            QVERIFY(box->lineEdit()->hasFocus());
        }
    }

    void plotResizesFromItsCorner()
    {
        ShownWindow w;
        app::PlotWidget* plot = w.window.plotArea();
        auto* grip = w.get<QLabel>(QStringLiteral("lblGrip"));
        w.focus(w.get<QWidget>(QStringLiteral("Check2")));
        const QSize full = plot->size();
        QTest::keyClick(&w.window, Qt::Key_Left, Qt::ShiftModifier);
        QTest::keyClick(&w.window, Qt::Key_Up, Qt::ShiftModifier);
        QTest::keyClick(&w.window, Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(plot->size(), full - QSize(10, 20));
        QCOMPARE(plot->image().size(), plot->devicePixelSize());
        QTest::keyClick(&w.window, Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClick(&w.window, Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(plot->width(), full.width()); // never past the frame

        QTest::mousePress(grip, Qt::LeftButton, {}, QPoint(4, 4));
        const QPointF to(4 - 60, 4 - 40);
        QMouseEvent move(QEvent::MouseMove, to, grip->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(grip, &move);
        QTest::mouseRelease(grip, Qt::LeftButton, {}, to.toPoint());
        QCOMPARE(plot->size(), full - QSize(60, 60));
        // The grip stays in the plot's corner.
        QCOMPARE(grip->geometry().bottomRight(), plot->rect().bottomRight());
    }

    void zoomCommandsReachTheView_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("zoomed");
        QTest::newRow("zoom box, double-click") << "box" << true;
        QTest::newRow("zoom box, Escape") << "escape" << false;
        QTest::newRow("wheel") << "wheel" << true;
    }

    void zoomCommandsReachTheView()
    {
        QFETCH(QString, how);
        QFETCH(bool, zoomed);
        ShownWindow w;
        const QStringList startRows = w.row("Text4");
        const model::ViewWindow& view = w.window.state().view;
        auto* box = w.get<QWidget>(QStringLiteral("piczoombox"));
        if (how == QLatin1String("wheel")) {
            w.wheel(QPointF(w.window.plotArea()->width() / 2.0, w.window.plotArea()->height() / 2.0), 120);
        } else {
            w.get<QToolButton>(QStringLiteral("Command5_1"))->click();
            QVERIFY(box->isVisible() && box->hasFocus());
            if (how == QLatin1String("box"))
                QTest::mouseDClick(box, Qt::LeftButton, {}, QPoint(5, 5));
            else
                QTest::keyClick(box, Qt::Key_Escape);
            QVERIFY(!box->isVisible());
        }
        QCOMPARE(int(w.window.state().zoomCount), zoomed ? 1 : 0);
        QCOMPARE(view != model::ViewWindow{}, zoomed);
        QCOMPARE(w.window.state().documentChanged, zoomed);
        // The rows show the new view.
        const QStringList x = w.row("Text4");
        QCOMPARE(*plot::readRangeNumber(x[0]), view.XMin);
        QCOMPARE(*plot::readRangeNumber(x[1]), view.XMax);
        if (how == QLatin1String("box")) {
            // The quarter below and right of the centre, to the nearest pixel.
            QVERIFY(std::abs(view.XMin) < 0.05 && std::abs(view.XMax - 5) < 0.05);
            QVERIFY(std::abs(view.YMin + 5) < 0.05 && std::abs(view.YMax) < 0.05);
        }
        w.action("mnuzoombeg")->trigger();
        QCOMPARE(view, model::ViewWindow{});
        QCOMPARE(w.row("Text4"), startRows);
        QCOMPARE(int(w.window.state().zoomCount), 0);
    }

    void colourEntries_data()
    {
        QTest::addColumn<QStringList>("entries");    // menu items in order
        QTest::addColumn<QList<int>>("answers");     // colour per dialog, -1 = cancel
        QTest::addColumn<QStringList>("titles");     // title each dialog showed
        QTest::addColumn<QList<quint32>>("colours"); // grid, axis, function, fill after
        QTest::addColumn<quint32>("curveColour");

        const quint32 shadow = 0x80000010;
        QTest::newRow("axis, then the grid keeps the title")
            << QStringList{"mnucolaxis", "mnucolgrid"} << QList<int>{0x00FF00, 0x0000FF}
            << QStringList{"Axis", "Axis"} << QList<quint32>{0x0000FF, 0x00FF00, 0, 0} << 0u;
        QTest::newRow("function colour goes to the axes and every curve")
            << QStringList{"mnucolfunc"} << QList<int>{0xFF0000} << QStringList{"Axis"}
            << QList<quint32>{shadow, 0xFF0000, 0xFF0000, 0} << 0xFF0000u;
        QTest::newRow("cancel takes the colour chosen last")
            << QStringList{"mnucolaxis", "mnucolfill"} << QList<int>{0x00FF00, -1}
            << QStringList{"Axis", "Axis"} << QList<quint32>{shadow, 0x00FF00, 0, 0x00FF00} << 0u;
        QTest::newRow("window background stores nothing")
            << QStringList{"mnucolwind"} << QList<int>{0x00FFFF} << QStringList{"Axis"}
            << QList<quint32>{shadow, 0, 0, 0} << 0u;
    }

    void colourEntries()
    {
        QFETCH(QStringList, entries);
        QFETCH(QList<int>, answers);
        QFETCH(QStringList, titles);
        QFETCH(QList<quint32>, colours);
        QFETCH(quint32, curveColour);
        ShownWindow w;
        for (int a : answers)
            w.prompter.colors.push_back(a < 0 ? std::nullopt : std::optional<quint32>(quint32(a)));
        typeFunction(w.window, QStringLiteral("x^2"));
        for (const QString& entry : entries)
            w.get<QAction>(entry)->trigger();

        QCOMPARE(w.prompter.colorTitles, titles);
        const model::AppState& state = w.window.state();
        QCOMPARE((QList<quint32>{state.gridColor, state.axisColor, state.functionColor, state.fillColor}),
                 colours);
        QCOMPARE(state.graphs[0].color, curveColour);
        QVERIFY(w.prompter.unexpected.isEmpty());
    }

    void fontSizeDialog_data()
    {
        QTest::addColumn<QStringList>("inputs"); // answers typed, in order; "<cancel>"
        QTest::addColumn<QList<int>>("buttons"); // Retry/Cancel answers
        QTest::addColumn<int>("size");           // -1: unchanged

        QTest::newRow("a size") << QStringList{"7.5"} << QList<int>{} << 8;
        QTest::newRow("cancel") << QStringList{"<cancel>"} << QList<int>{} << -1;
        QTest::newRow("words, retry, then 5") << QStringList{"big", "5"} << QList<int>{int(B::Retry)} << 5;
        QTest::newRow("too small, retry, too big, cancel")
            << QStringList{"4", "12"} << QList<int>{int(B::Retry), int(B::Cancel)} << -1;
    }

    void fontSizeDialog()
    {
        QFETCH(QStringList, inputs);
        QFETCH(QList<int>, buttons);
        QFETCH(int, size);
        ShownWindow w;
        for (const QString& input : inputs)
            w.prompter.inputs.push_back(input == QLatin1String("<cancel>") ? QString() : input);
        for (int b : buttons)
            w.prompter.answers.push_back(B(b));
        const int before = w.window.plotArea()->font().pointSize();
        const int redraws = w.window.redrawCount();
        w.action("mnufontsize")->trigger();
        QCOMPARE(w.prompter.questions.size(), buttons.size());
        QCOMPARE(w.window.plotArea()->font().pointSize(), size < 0 ? before : size);
        QCOMPARE(w.window.redrawCount(), redraws + (size < 0 ? 0 : 1));
        QVERIFY(w.prompter.unexpected.isEmpty() && w.prompter.inputs.empty());
    }

    void guideLinesDialog_data()
    {
        QTest::addColumn<QString>("menu");
        QTest::addColumn<bool>("ok");
        QTest::newRow("vertical, OK") << "mnuvertical" << true;
        QTest::newRow("horizontal, OK") << "menuhoriz" << true;
        QTest::newRow("vertical, Cancel") << "mnuvertical" << false;
    }

    void guideLinesDialog()
    {
        QFETCH(QString, menu);
        QFETCH(bool, ok);
        ShownWindow w;
        model::AppState& state = w.window.state();
        const bool vertical = menu == QLatin1String("mnuvertical");
        std::vector<double>& lines = vertical ? state.verticalLines : state.horizontalLines;
        lines = {4};
        w.get<QAction>(menu)->trigger();
        auto* editor = w.get<QWidget>(QStringLiteral("frmtangent"));
        auto* list = child<QListWidget>(editor, QStringLiteral("values"));
        QCOMPARE(list->count(), 1); // the lines are copied in
        auto* value = child<QLineEdit>(editor, QStringLiteral("value"));
        for (const char* text : {"-1,5", "nonsense"}) {
            value->setText(QLatin1String(text));
            QTest::keyClick(value, Qt::Key_Return);
        }
        QCOMPARE(w.prompter.messages.size(), 1); // the nonsense, named in the message
        QVERIFY(w.prompter.messages[0].contains(QStringLiteral("nonsense")));
        QCOMPARE(lines, std::vector<double>{4}); // nothing reaches the drawing before OK
        const int redraws = w.window.redrawCount();
        QTest::mouseClick(child<QPushButton>(editor, ok ? QStringLiteral("ok") : QStringLiteral("cancel")),
                          Qt::LeftButton);
        QVERIFY(!editor->isVisible());
        QCOMPARE(lines, ok ? std::vector<double>({4, -1.5}) : std::vector<double>({4}));
        QVERIFY((vertical ? state.horizontalLines : state.verticalLines).empty());
        QCOMPARE(state.documentChanged, ok);
        QCOMPARE(w.window.redrawCount() > redraws, ok);
    }

    void traceWalksTheCurve()
    {
        ShownWindow w;
        typeFunction(w.window, QStringLiteral("sqrt(x)"));
        w.get<QToolButton>(QStringLiteral("Command5_3"))->click();
        QVERIFY(w.action("mnutrace")->isChecked());
        QVERIFY(w.get<QWidget>(QStringLiteral("traceControls"))->isVisible());
        QVERIFY(w.status(1).contains(QStringLiteral("sqrt(x)")));
        const model::AppState& state = w.window.state();
        const double start = state.trace.x;
        w.focus(w.get<QWidget>(QStringLiteral("Check2")));
        for (int i = 0; i < 50; ++i) // 50 of the 200 steps across the view
            QTest::keyClick(&w.window, Qt::Key_Right);
        QVERIFY(std::abs(state.trace.x - start - 2.5) < 0.01);
        const QString xText = w.status(2);
        QVERIFY2(xText.startsWith("X = 2" + QLocale().decimalPoint() + "5"), qPrintable(xText));
        w.get<QToolButton>(QStringLiteral("tracePlay"))->click();
        QTRY_VERIFY(state.trace.x > start + 2.6);
        w.get<QToolButton>(QStringLiteral("tracePause"))->click();
        QVERIFY(!w.window.curveTools().tracePlaying());
        w.action("mnutrace")->trigger();
        QVERIFY(!state.trace.on);
        QVERIFY(w.status(1).isEmpty());
    }

    void labelsStayAtTheirWorldPosition()
    {
        ShownWindow w;
        // A text dropped on the plot becomes a label there, π shown for ¶. (Without a real
        // drag in progress the application holds drop events back, so the plot reports it.)
        QVERIFY(w.window.plotArea()->acceptDrops());
        emit w.window.plotArea()->textDropped(QStringLiteral("A = 2") + QChar(0x00B6), w.pixel(2, 3));
        QCOMPARE(w.labels().size(), 1);
        app::PlotLabel* label = w.labels()[0];
        QCOMPARE(label->text(), QStringLiteral("A = 2") + QChar(0x03C0));
        QVERIFY(std::abs(label->worldX() - 2) < 0.05 && std::abs(label->worldY() - 3) < 0.05);

        // It follows a new range: the world point stays under it.
        w.box("Text4_0")->setText(QStringLiteral("0"));
        QTest::keyClick(w.box("Text4_0"), Qt::Key_Return);
        QVERIFY((QPointF(label->pos()) - w.pixel(2, 3)).manhattanLength() <= 2);

        // Dragged elsewhere, it keeps its new world position; Delete removes it.
        QTest::mousePress(label, Qt::LeftButton, {}, QPoint(2, 2));
        QTest::mouseMove(label, QPoint(42, 2));
        QTest::mouseRelease(label, Qt::LeftButton, {}, QPoint(42, 2));
        QVERIFY(label->worldX() > 2.2);
        QTest::keyClick(label, Qt::Key_Delete);
        QTRY_VERIFY(w.labels().isEmpty());
    }

    void plotClicks_data()
    {
        QTest::addColumn<QString>("click"); // right, double, or left in tangent mode
        QTest::addColumn<QPointF>("at");    // in world units; the curves are x and -x+3
        QTest::addColumn<QString>("menu");  // the menu that opens
        QTest::addColumn<QString>("picked"); // the function box's text afterwards
        QTest::addColumn<int>("labels");
        QTest::addColumn<int>("tangents");
        QTest::newRow("right near a curve picks it") << "right" << QPointF(2.2, 2.22) << "mnupop" << "x" << 0 << 0;
        QTest::newRow("right far from the curves") << "right" << QPointF(-4, 4) << "mnutool" << "-x+3" << 0 << 0;
        QTest::newRow("double near a curve: a point label") << "double" << QPointF(2, 2) << "" << "-x+3" << 1 << 0;
        QTest::newRow("double far from the curves") << "double" << QPointF(-4, 2) << "" << "-x+3" << 0 << 0;
        QTest::newRow("tangent mode puts a tangent") << "tangent" << QPointF(1, 1) << "" << "-x+3" << 0 << 1;
    }

    void plotClicks()
    {
        QFETCH(QString, click);
        QFETCH(QPointF, at);
        QFETCH(QString, menu);
        QFETCH(QString, picked);
        QFETCH(int, labels);
        QFETCH(int, tangents);
        ShownWindow w;
        typeFunction(w.window, QStringLiteral("x"));
        typeFunction(w.window, QStringLiteral("-x+3"));
        w.window.state().coordinateSeparator = QStringLiteral("|");
        const QPoint pixel = w.pixel(at.x(), at.y()).toPoint();
        if (click == QLatin1String("right")) {
            QTest::mouseRelease(w.window.plotArea(), Qt::RightButton, {}, pixel);
            auto* popup = w.get<QMenu>(menu);
            QTRY_VERIFY(popup->isVisible());
            w.closePopup(popup);
            // The next fill starts where the right-click was, in the fill colour.
            w.window.state().fillColor = 0xFF0000;
            w.action("mnufill")->trigger();
            QCOMPARE(w.window.state().fills.back().color, 0xFF0000u);
            QVERIFY(std::abs(w.window.state().fills.back().x - at.x()) < 0.05);
        } else if (click == QLatin1String("double")) {
            QTest::mouseDClick(w.window.plotArea(), Qt::LeftButton, {}, pixel);
        } else {
            w.get<QToolButton>(QStringLiteral("Command5_4"))->click();
            QTest::mousePress(w.window.plotArea(), Qt::LeftButton, {}, pixel);
            QVERIFY2(w.status().contains(QStringLiteral("*x+")), qPrintable(w.status()));
        }
        QCOMPARE(w.functionText(), picked);
        QCOMPARE(w.labels().size(), labels);
        if (labels)
            QVERIFY2(w.labels()[0]->text().startsWith(QStringLiteral("(2")) &&
                         w.labels()[0]->text().contains(QStringLiteral("| 2")), qPrintable(w.labels()[0]->text()));
        const std::vector<model::GraphMark>& marks = w.window.state().graphs[0].marks;
        QCOMPARE(int(marks.size()), tangents);
        if (tangents) {
            QVERIFY(std::abs(marks[0].x - at.x()) < 0.05 && std::abs(marks[0].slope - 1) < 0.01);
            // The popup of the function in the box removes its tangents.
            w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QStringLiteral("x"));
            w.action("mnuremovetangents")->trigger();
            QVERIFY(w.window.state().graphs[0].marks.empty());
        }
    }

    void formulaPictureIsTypesetAndEdited()
    {
        ShownWindow w;
        auto* preview = w.get<QLabel>(QStringLiteral("OLE1"));
        w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QStringLiteral("x^2/2"));
        QVERIFY(!preview->pixmap().isNull());
        w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QStringLiteral("2x+"));
        QVERIFY(preview->pixmap().isNull()); // nothing to show for a formula that does not parse

        QLabel* object = w.window.plotView().labels().addFormula(QStringLiteral("sqrt(x)"), QStringLiteral("f(x)"),
                                                                 QPointF(30, 30));
        QVERIFY(object);
        const QSize before = object->pixmap().size();
        w.prompter.inputs.push_back(QStringLiteral("sqrt(x)/(x^2+1)"));
        w.focus(w.get<QWidget>(QStringLiteral("Check2")));
        QTest::keyClick(&w.window, Qt::Key_Q, Qt::AltModifier);
        QVERIFY(object->pixmap().size().height() > before.height()); // a fraction now
        w.prompter.inputs.push_back(QStringLiteral("2x+"));
        QTest::keyClick(&w.window, Qt::Key_Q, Qt::AltModifier);
        QCOMPARE(w.prompter.messages.size(), 1);
    }

    void everyControlHasAnAccessibleName()
    {
        ScriptedPrompter prompter;
        frmgraph window(prompter);
        const QRegularExpression controls(QStringLiteral(
            "^(cmdtoken_\\d+|Text\\d(_\\d)?|imgcombfunc|Command\\d_\\d+|fracinput_\\d|Option1_\\d|"
            "Check\\d|OLE1|Picture1|lblGrip|trace(Play|Pause|Step))$"));
        int seen = 0;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (!controls.match(widget->objectName()).hasMatch())
                continue;
            ++seen;
            const QString name = widget->accessibleName();
            QVERIFY2(!name.isEmpty() && !name.contains(QLatin1Char('&')), qPrintable(widget->objectName()));
        }
        QVERIFY(seen > 60);
    }

    void tabFollowsTheLayout()
    {
        ShownWindow w;
        QStringList expected{"Text5", "imgcombfunc", "Command1_0"};
        for (const char* row : {"Text4", "Text6"})
            for (int i = 0; i < 4; ++i)
                expected << QStringLiteral("%1_%2").arg(QLatin1String(row)).arg(i);
        // Tab enters the angle options once; the arrow keys move among them.
        expected << "Option1_0" << "Check1" << "Check2" << "Check3" << "Check4" << "Text2";
        // The keypad row by row: 7 8 9 / ^ C sqrt Exp, then 4 5 6 * p ln sin asin, ...
        const int pad[32] = {7, 8, 9, 14, 15, 31, 20, 27, 4, 5, 6, 13, 16, 28, 21, 24,
                             1, 2, 3, 12, 17, 29, 22, 25, 0, 10, 30, 11, 18, 19, 23, 26};
        for (int token : pad)
            expected << QStringLiteral("cmdtoken_%1").arg(token);
        expected << "Text5"; // and round again

        w.focus(w.get<QWidget>(QStringLiteral("Text5")));
        QStringList visited{QApplication::focusWidget()->objectName()};
        for (int i = 1; i < expected.size(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget* now = QApplication::focusWidget();
            // The function box's own line edit stands for it.
            while (now && now->objectName().isEmpty())
                now = now->parentWidget();
            visited << (now ? now->objectName() : QStringLiteral("(none)"));
        }
        QCOMPARE(visited.join(QLatin1Char(' ')), expected.join(QLatin1Char(' ')));
    }

    void everyMenuCommandHasALetter()
    {
        ScriptedPrompter prompter;
        frmgraph window(prompter);
        for (QAction* menu : window.menuBar()->actions()) {
            QVERIFY2(menu->text().contains(QLatin1Char('&')), qPrintable(menu->text()));
            QStringList letters;
            for (QAction* item : menu->menu()->actions()) {
                if (item->isSeparator())
                    continue;
                const QString text = item->menu() ? item->menu()->title() : item->text();
                const qsizetype mark = text.indexOf(QLatin1Char('&'));
                QVERIFY2(mark >= 0 && mark + 1 < text.size(), qPrintable(text));
                // No two commands of one menu share a letter.
                const QString letter = text.mid(mark + 1, 1).toLower();
                QVERIFY2(!letters.contains(letter), qPrintable(text));
                letters << letter;
            }
        }
    }
};

QTEST_MAIN(TestWindow)
#include "test_window.moc"
