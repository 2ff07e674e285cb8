// The main window as a user meets it: one wiring test per handler (the arithmetic behind
// them has headless tests of its own), the save question, and the symbolic commands that
// run off the GUI thread.
#include "app/document_actions.h"
#include "app/fraction_input.h"
#include "app/frmgraph.h"
#include "app/function_box.h"
#include "app/parameter_actions.h"
#include "app/pi_line_edit.h"
#include "app/plot_label.h"
#include "app/plot_labels.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "app/symbolic_runner.h"
#include "eval/formula.h"
#include "plot/coordinates.h"
#include "plot/zoom.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QtTest>
#include <QtWidgets>

#include <atomic>
#include <cstring>

using namespace curvix;
using app::frmgraph;
using B = model::Prompter::Button;

namespace {

// The symbolic library's stand-in: fixed answers ("" fails), its calls counted. Each call
// waits until the test opens the gate, so the window must not wait for it.
struct FakeLibrary {
    QByteArray derivative;
    QByteArray primitive;
    std::shared_ptr<QSemaphore> gate = std::make_shared<QSemaphore>();
    std::shared_ptr<std::atomic_int> calls = std::make_shared<std::atomic_int>(0);

    void install(frmgraph& window) const
    {
        eval::SymbolicOptions options;
        options.library = [*this](const char* request, char* result, std::int32_t size) -> std::int32_t {
            ++*calls;
            if (!gate->tryAcquire(1, 5000))
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

// A shown, active window, so that focus, shortcuts and the keypad work as for a user.
struct ShownWindow {
    ScriptedPrompter prompter;
    frmgraph window{prompter};
    model::AppState& state = window.state();
    QComboBox* functionBox = child<QComboBox>(&window, QStringLiteral("imgcombfunc"));
    ShownWindow()
    {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qWarning("window not active");
    }
    template <typename W = QWidget>
    W* get(const QString& name) { return child<W>(&window, name); }
    QAction* action(const char* name) { return get<QAction>(QLatin1String(name)); }
    QString status(int panel = 5) { return get<QLabel>(QStringLiteral("StatusBar1_%1").arg(panel))->text(); }
    // Types a function into the function box the way a user does, then presses Enter.
    void type(const QString& text)
    {
        functionBox->lineEdit()->clear();
        QTest::keyClicks(functionBox->lineEdit(), text);
        QTest::keyClick(functionBox->lineEdit(), Qt::Key_Return);
    }
    void focus(QWidget* w)
    {
        w->setFocus();
        QCoreApplication::processEvents();
    }
    // Clicks where a user clicks: a key of the keypad, an angle option on its circle.
    void click(const QString& name)
    {
        QWidget* w = get(name);
        QTest::mouseClick(w, Qt::LeftButton, {}, QPoint(6, w->height() / 2));
    }
    void press(int token) { click(QStringLiteral("cmdtoken_%1").arg(token)); }
    // A popup menu takes the window's activation; closing it gives it back.
    void closePopup(const QString& name)
    {
        auto* menu = get<QMenu>(name);
        QTRY_VERIFY(menu->isVisible());
        menu->close();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    QStringList row(const char* prefix)
    {
        QStringList texts;
        for (int i = 0; i < 4; ++i)
            texts << get<app::PiLineEdit>(QStringLiteral("%1_%2").arg(QLatin1String(prefix)).arg(i))->storedText();
        return texts;
    }
    QStringList graphTexts()
    {
        QStringList texts;
        for (const model::GraphEntry& entry : state.graphs)
            texts << entry.text;
        return texts;
    }
    QPoint pixel(double x, double y)
    {
        return plot::SetPlotScale(QSizeF(window.plotArea()->size()), state.view).toPixel(x, y).toPoint();
    }
    QList<app::PlotLabel*> labels() { return window.plotArea()->findChildren<app::PlotLabel*>(); }
};

} // namespace

class TestWindow : public QObject {
    Q_OBJECT

    // Saving creates a folder in the user's documents: the tests get a home of their own.
    QTemporaryDir m_home;

private slots:

    void initTestCase()
    {
        QVERIFY(useHomeOfItsOwn(m_home));
        QCoreApplication::setOrganizationName(QStringLiteral("Curvix"));
        QCoreApplication::setApplicationName(QStringLiteral("Curvix"));
    }

    void init() { QSettings().clear(); }

    void typedFunctionsAreDrawn_data()
    {
        QTest::addColumn<QStringList>("steps"); // "label|text", Enter; "label|=text": Draw
        QTest::addColumn<QStringList>("drawn");
        QTest::addColumn<QString>("message"); // part of the one message shown, "" for none

        QTest::newRow("enter, draw, a duplicate")
            << QStringList{"f(x)|2x^2+1", "f(x)|=sin(x)", "f(x)|sin(x)"} << QStringList{"2x^2+1", "sin(x)"} << "";
        QTest::newRow("a bad formula names its fault") << QStringList{"f(x)|2xsin(x)"} << QStringList{} << "xsin";
        QTest::newRow("one variable per list")
            << QStringList{"f(t)|t+1", "f(x)|x^2"} << QStringList{"t+1"} << "Endast en variabel per omgång";
        QTest::newRow("a refused label draws nothing") << QStringList{"F(t)|t^2"} << QStringList{} << "";
        QTest::newRow("the start of a drawn function is drawn as typed")
            << QStringList{"f(x)|x^3", "f(x)|x"} << QStringList{"x^3", "x"} << "";
        const QString pi(eval::kPiChar);
        QTest::newRow("pi set as π or as its character")
            << QStringList{"f(x)|=x+π", "f(x)|=2*" + pi} << QStringList{"x+" + pi, "2*" + pi} << "";
    }

    void typedFunctionsAreDrawn()
    {
        QFETCH(QStringList, steps);
        QFETCH(QStringList, drawn);
        QFETCH(QString, message);
        ShownWindow w;
        auto* label = w.get<QLineEdit>(QStringLiteral("Text5"));
        for (const QString& step : steps) {
            label->setText(step.section(QLatin1Char('|'), 0, 0));
            const QString text = step.section(QLatin1Char('|'), 1);
            if (!text.startsWith(QLatin1Char('='))) {
                w.type(text);
            } else {
                w.functionBox->setEditText(text.mid(1));
                w.get<QPushButton>(QStringLiteral("Command1_0"))->click();
            }
        }
        QCOMPARE(w.graphTexts(), drawn);
        // Enter never adds the text to the list by itself: the items mirror the graph list.
        QCOMPARE(w.functionBox->count(), drawn.size());
        for (int i = 0; i < w.functionBox->count(); ++i) // shown with π
            QCOMPARE(w.functionBox->itemText(i), QString(drawn[i]).replace(eval::kPiChar, QChar(0x03C0)));
        QCOMPARE(w.prompter.messages.size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty())
            QVERIFY2(w.prompter.messages[0].contains(message), qPrintable(w.prompter.messages[0]));
        // A refused label takes the focus back and says why.
        if (label->text() == QLatin1String("F(t)")) {
            QTRY_VERIFY(label->hasFocus());
            QVERIFY(!w.status().isEmpty());
        }
    }

    void windowFitsTheScreenAndIsRemembered()
    {
        const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
        QSize chosen;
        {
            ShownWindow w;
            QVERIFY2(available.contains(w.window.frameGeometry()) || w.window.size() == w.window.minimumSizeHint(),
                     qPrintable(QStringLiteral("%1x%2").arg(w.window.width()).arg(w.window.height())));
            chosen = w.window.size() - QSize(40, 30);
            w.window.resize(chosen);
            QVERIFY(w.window.close());
        }
        ShownWindow again;
        QCOMPARE(again.window.size(), chosen);
    }

    void undoAndRedoEveryChange()
    {
        ShownWindow w;
        const QImage start = w.window.plotArea()->image();
        // Ctrl+Z in the function box undoes the typing first, then the drawing's changes.
        w.type(QStringLiteral("x"));
        QTest::keyClicks(w.functionBox->lineEdit(), QStringLiteral("+1"));
        QTest::keyClick(w.functionBox, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(w.functionBox->currentText(), QStringLiteral("x"));
        QTest::keyClick(w.functionBox, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(w.graphTexts(), QStringList{});
        w.type(QStringLiteral("x^2"));
        w.state.fills.push_back({0, 1, 0x00FF00});
        w.window.redraw();
        w.click(QStringLiteral("Option1_0")); // degrees
        const QImage end = w.window.plotArea()->image();
        QVERIFY(w.window.isWindowModified());
        QAction* undo = w.action("mnuundo");
        while (undo->isEnabled())
            undo->trigger();
        QCOMPARE(w.graphTexts(), QStringList{});
        QCOMPARE(w.window.plotArea()->image(), start);
        QVERIFY(!w.window.isWindowModified());
        QAction* redo = w.action("mnuredo");
        while (redo->isEnabled())
            redo->trigger();
        QCOMPARE(w.graphTexts(), QStringList{"x^2"});
        QCOMPARE(w.window.plotArea()->image(), end);
    }

    void drawingsAreSavedAndOpened()
    {
        const QString file = m_home.filePath(QStringLiteral("lesson.curvix"));
        QFile::remove(file);
        QImage saved;
        {
            ShownWindow w;
            w.type(QStringLiteral("x^2"));
            w.window.plotView().labels().addText(QStringLiteral("a parabola"), QPointF(40, 40));
            w.click(QStringLiteral("Option1_0"));
            saved = w.window.plotArea()->image();
            // Closing asks first; Yes offers the drawing type, and the name gets its ending.
            w.prompter.answers.push_back(B::Yes);
            w.prompter.fileNames.push_back(m_home.filePath(QStringLiteral("lesson")));
            QVERIFY(w.window.close());
            QCOMPARE(w.prompter.offeredTypes, QStringList{"Curvix drawing (*.curvix)"});
        }
        ShownWindow w;
        w.type(QStringLiteral("sin(x)"));
        const QImage before = w.window.plotArea()->image();
        // A damaged file is refused by name, and the drawing on screen stays.
        const QString damaged = m_home.filePath(QStringLiteral("damaged.curvix"));
        QFile out(damaged);
        QVERIFY(out.open(QIODevice::WriteOnly) && out.write("{\"format\": \"curvix-drawing\", \"vers") > 0);
        out.close();
        w.prompter.answers.push_back(B::No); // "Save changes?" before opening
        w.prompter.fileNames.push_back(damaged);
        w.action("mnuopen")->trigger();
        QCOMPARE(w.prompter.messages.size(), 1);
        QVERIFY2(w.prompter.messages[0].contains(QLatin1String("damaged.curvix")), qPrintable(w.prompter.messages[0]));
        QCOMPARE(w.graphTexts(), QStringList{"sin(x)"});
        QCOMPARE(w.window.plotArea()->image(), before);

        w.prompter.answers.push_back(B::No);
        QVERIFY(w.window.document().openFile(file)); // as a file manager or Open Recent does
        QCOMPARE(w.graphTexts(), QStringList{"x^2"});
        QCOMPARE(w.window.plotArea()->image(), saved);
        QCOMPARE(w.window.windowTitle(), QStringLiteral("lesson.curvix[*] – Curvix"));
        QVERIFY(!w.window.isWindowModified());
        QCOMPARE(QSettings().value(QStringLiteral("recentDrawings")).toStringList().value(0), file);
    }

    void editingAFunctionInPlace()
    {
        ShownWindow w;
        w.type(QStringLiteral("x^2"));
        w.type(QStringLiteral("x"));
        auto* note = w.get<QLabel>(QStringLiteral("editingNote"));
        w.functionBox->setEditText(QStringLiteral("x^2")); // the curve the popup was opened on
        w.action("mnupopedit")->trigger();
        QVERIFY(note->isVisible());
        w.type(QStringLiteral("2x^2"));
        QCOMPARE(w.graphTexts(), (QStringList{"2x^2", "x"}));
        QVERIFY(!note->isVisible());
        // Escape leaves editing with the function as it was.
        w.action("mnupopedit")->trigger();
        QTest::keyClicks(w.functionBox->lineEdit(), QStringLiteral("+1"));
        QTest::keyClick(w.functionBox->lineEdit(), Qt::Key_Escape);
        QVERIFY(!note->isVisible());
        QCOMPARE(w.functionBox->currentText(), QStringLiteral("2x^2"));
        w.type(QStringLiteral("x^3"));
        QCOMPARE(w.graphTexts(), (QStringList{"2x^2", "x", "x^3"}));
    }

    void commandsNeedAFunction()
    {
        ShownWindow w;
        auto enabled = [&](bool on) {
            for (const char* name : {"mnupop1", "mnuderivative", "mnuprimitive", "mnupopderiv", "mnutrace",
                                     "Command5_3", "Command5_5", "Command5_7"})
                if (w.get<QObject>(QLatin1String(name))->property("enabled").toBool() != on)
                    return false;
            return true;
        };
        QVERIFY(enabled(false));
        w.type(QStringLiteral("x^2"));
        QVERIFY(enabled(true));
        w.action("mnupop1")->trigger();
        QVERIFY(enabled(false));
    }

    void symbolicRequests_data()
    {
        QTest::addColumn<QString>("sources"); // drawn first; the first is asked about
        QTest::addColumn<QString>("command");
        QTest::addColumn<QByteArray>("derivative"); // the library's answer once released; "" fails
        QTest::addColumn<bool>("escape");
        QTest::addColumn<QString>("tree");  // the function box afterwards, "indent:text"

        QTest::newRow("a derivative goes under its source, not at the end")
            << "x^3 2x" << "mnupopderiv" << QByteArray("3x^2") << false << "0:x^3 1:3x^2 0:2x";
        QTest::newRow("a primitive goes above its source, by its button")
            << "2x" << "Command5_6" << QByteArray() << false << "0:x^2 1:2x";
        QTest::newRow("a failure is reported at the end")
            << "x^3" << "mnuderivative" << QByteArray() << false << "0:x^3";
        QTest::newRow("escape: an answer that comes anyway is dropped")
            << "x^3" << "mnuderivative" << QByteArray("3x^2") << true << "0:x^3";
    }

    void symbolicRequests()
    {
        QFETCH(QString, sources);
        QFETCH(QString, command);
        QFETCH(QByteArray, derivative);
        QFETCH(bool, escape);
        QFETCH(QString, tree);
        ShownWindow w;
        FakeLibrary library{derivative, "x^2"};
        library.install(w.window);
        for (const QString& text : sources.split(QLatin1Char(' ')))
            w.type(text);
        QLineEdit* edit = w.functionBox->lineEdit();
        edit->setText(sources.section(QLatin1Char(' '), 0, 0));
        QSignalSpy answered(&w.window.symbolicRunner(), &app::SymbolicRunner::answered);
        QSignalSpy busy(&w.window.symbolicRunner(), &app::SymbolicRunner::busyChanged);
        if (QAction* menu = w.window.findChild<QAction*>(command))
            menu->trigger();
        else
            w.get<QToolButton>(command)->click();

        // The library is still computing, and the window answers meanwhile.
        QTRY_COMPARE(library.calls->load(), 1);
        QVERIFY(edit->isReadOnly() && !w.action("mnuderivative")->isEnabled());
        if (escape)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        library.gate->release();
        QTRY_COMPARE(busy.count(), 2);
        QVERIFY(!edit->isReadOnly() && w.action("mnuderivative")->isEnabled());
        const bool failed = command.contains(QLatin1String("deriv")) && derivative.isEmpty();
        QCOMPARE(w.prompter.messages, failed ? QStringList{"Error in derivative calculation"} : QStringList{});
        QCOMPARE(answered.count(), escape || failed ? 0 : 1);
        if (!answered.isEmpty())
            w.type(edit->text());
        // The link was checked against the remembered answer: the library was asked once.
        QCOMPARE(library.calls->load(), 1);
        auto* box = w.get<app::FunctionBox>(QStringLiteral("imgcombfunc"));
        QStringList items;
        for (int i = 0; i < box->count(); ++i)
            items << QStringLiteral("%1:%2").arg(box->indentAt(i)).arg(box->itemText(i));
        QCOMPARE(items.join(QLatin1Char(' ')), tree);
    }

    void saveQuestionBeforeClosing_data()
    {
        QTest::addColumn<int>("answer");  // to "Save changes?", asked when a function was drawn
        QTest::addColumn<bool>("saveTo"); // a file is named in the save dialog, else it is cancelled
        QTest::addColumn<bool>("proceeds");

        QTest::newRow("unchanged: no question") << -1 << false << true;
        QTest::newRow("Cancel") << int(B::Cancel) << false << false;
        QTest::newRow("Yes, save dialog cancelled") << int(B::Yes) << false << false;
        QTest::newRow("Yes, saved") << int(B::Yes) << true << true;
    }

    void saveQuestionBeforeClosing()
    {
        QFETCH(int, answer);
        QFETCH(bool, saveTo);
        QFETCH(bool, proceeds);
        const QString file = m_home.filePath(QStringLiteral("before.png"));
        QFile::remove(file);
        ShownWindow w;
        const bool changed = answer >= 0;
        if (changed) {
            w.prompter.answers.push_back(B(answer));
            w.type(QStringLiteral("x^2"));
        }
        w.prompter.fileNames.push_back(saveTo ? file : QString());

        QCOMPARE(w.window.close(), proceeds);
        QCOMPARE(w.prompter.questions.size(), changed ? 1 : 0);
        QVERIFY(w.prompter.unexpected.isEmpty());
        QCOMPARE(QImage(file).size(), saveTo ? w.window.plotArea()->image().size() : QSize(0, 0));
        // The colours are stored when the window closes.
        QCOMPARE(QSettings().contains(QStringLiteral("colors/gridcolor")), proceeds);
    }

    void newStartsAFreshDrawing()
    {
        ShownWindow w;
        const QStringList startRows = w.row("Text4");
        w.type(QStringLiteral("x^2"));
        w.click(QStringLiteral("Option1_0"));
        w.window.plotView().labels().addText(QStringLiteral("kept?"), QPointF(10, 10));
        w.get<QToolButton>(QStringLiteral("Command5_3"))->click(); // the trace
        // Cancel to the save question keeps the drawing; No drops it.
        w.prompter.answers = {B::Cancel, B::No};
        w.get<QToolButton>(QStringLiteral("Command5_9"))->click();
        QCOMPARE(w.graphTexts(), QStringList{"x^2"});
        const int redraws = w.window.redrawCount();
        w.get<QToolButton>(QStringLiteral("Command5_9"))->click();
        QCOMPARE(w.graphTexts(), QStringList());
        QCOMPARE(w.row("Text4"), startRows); // in radians again
        QTRY_VERIFY(w.labels().isEmpty());
        QVERIFY(!w.state.trace.on && !w.action("mnutrace")->isChecked());
        QVERIFY(!w.state.documentChanged);
        // New redraws once, however many boxes it sets on the way.
        QCOMPARE(w.window.redrawCount(), redraws + 1);
        // A new drawing may use another variable.
        w.get<QLineEdit>(QStringLiteral("Text5"))->setText(QStringLiteral("f(t)"));
        w.type(QStringLiteral("t^2"));
        QCOMPARE(w.graphTexts(), QStringList{"t^2"});
    }

    void dialogCommandsRedraw()
    {
        ShownWindow w;
        w.type(QStringLiteral("x^2"));
        int redraws = w.window.redrawCount();
        auto redrawn = [&] {
            const int before = std::exchange(redraws, w.window.redrawCount());
            return redraws > before;
        };
        w.prompter.colors = {0x00FF00, 0xFF0000, 0x0000FF};
        w.action("mnucolaxis")->trigger();
        QCOMPARE(w.state.axisColor, 0x00FF00u);
        QVERIFY(redrawn());
        // The function colour is for the curves drawn next; the curve's own menu recolours it.
        w.action("mnucolfunc")->trigger();
        w.type(QStringLiteral("2x"));
        QCOMPARE((QList<quint32>{w.state.axisColor, w.state.graphs[0].color, w.state.graphs[1].color}),
                 (QList<quint32>{0x00FF00, 0, 0xFF0000}));
        w.functionBox->setCurrentText(QStringLiteral("x^2"));
        w.action("mnupopcolor")->trigger();
        QCOMPARE(w.state.graphs[0].color, 0x0000FFu);
        QVERIFY(redrawn());
        // Automatic colours are remembered.
        w.action("mnuautocolor")->trigger();
        QVERIFY(QSettings().value(QStringLiteral("autoColors")).toBool());
        w.type(QStringLiteral("3x"));
        QVERIFY(w.state.graphs[2].color != 0xFF0000);

        w.action("mnucoord")->trigger();
        QWidget* settings = w.get(QStringLiteral("frmsettings"));
        auto* separator = child<QComboBox>(settings, QStringLiteral("Combo1"));
        separator->setCurrentIndex(3);
        emit separator->activated(3);
        child<QPushButton>(settings, QStringLiteral("Command1_0"))->click();
        QCOMPARE(w.state.coordinateSeparator, QStringLiteral("|"));
        QVERIFY(redrawn());
        QVERIFY(w.prompter.unexpected.isEmpty() && w.prompter.messages.isEmpty());
    }

    void keypadTypesIntoItsTarget_data()
    {
        QTest::addColumn<QString>("target"); // widget to focus first
        QTest::addColumn<QList<int>>("tokens");
        QTest::addColumn<QString>("after"); // stored text of the target afterwards, from "2"

        const QString pi(QChar(0x00B6));
        QTest::newRow("pi twice in the function box") << "imgcombfunc" << QList<int>{16, 16} << "2" + pi + pi;
        QTest::newRow("a formula from keys") << "imgcombfunc" << QList<int>{13, 20, 30, 19, 11, 1} << "2*sqrt(x)+1";
        QTest::newRow("pi twice in a range box is one p") << "Text4_1" << QList<int>{16, 16} << "2p";
        QTest::newRow("pi on the y row does nothing") << "Text6_0" << QList<int>{16} << "2";
        QTest::newRow("pi in the label text") << "Text2" << QList<int>{16, 3} << QStringLiteral("2π");
    }

    void keypadTypesIntoItsTarget()
    {
        QFETCH(QString, target);
        QFETCH(QList<int>, tokens);
        QFETCH(QString, after);
        ShownWindow w;
        const bool intoBox = target == QLatin1String("imgcombfunc");
        w.functionBox->setEditText(QStringLiteral("sin(x)"));
        auto* edit = intoBox ? w.functionBox->lineEdit() : w.get<QLineEdit>(target);
        edit->setText(QStringLiteral("2"));
        w.focus(edit);
        for (int token : tokens)
            w.press(token);
        auto* range = qobject_cast<app::PiLineEdit*>(edit);
        auto* box = qobject_cast<app::FunctionBox*>(w.functionBox);
        QCOMPARE(range ? range->storedText() : intoBox ? box->storedText() : edit->text(), after);
        QCOMPARE(box->storedText(), intoBox ? after : QStringLiteral("sin(x)"));
        // C clears the function box from anywhere.
        w.press(31);
        QCOMPARE(w.functionBox->currentText(), QString());
    }

    void rangeBoxesFilterAndApply()
    {
        ShownWindow w;
        const model::ViewWindow& view = w.state.view;
        // A range box keeps a number and one π, typed as p or as π; the others are dropped.
        auto* xMax = w.get<app::PiLineEdit>(QStringLiteral("Text4_1"));
        xMax->clear();
        w.focus(xMax);
        for (const QChar c : QStringLiteral("2xπ!p")) {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
            QApplication::sendEvent(xMax, &key);
        }
        QCOMPARE(xMax->storedText(), QStringLiteral("2p"));
        QCOMPARE(xMax->text(), app::piShown(QStringLiteral("2p")));
        // Enter in the function box reads the rows too.
        w.type(QStringLiteral("x^2"));
        QCOMPARE(view.XMax, 2 * eval::kPiValue);
        QVERIFY(w.status().isEmpty());
        // A bad row keeps the last good view and says why; the function is drawn all the same.
        w.get<QLineEdit>(QStringLiteral("Text6_0"))->setText(QStringLiteral("7"));
        w.type(QStringLiteral("x^3"));
        QCOMPARE(view.YMin, -5.0);
        QVERIFY2(w.status().contains(QStringLiteral("y minimum")), qPrintable(w.status()));
        QCOMPARE(w.graphTexts(), (QStringList{"x^2", "x^3"}));
    }

    void angleUnitsAndExactValues()
    {
        ShownWindow w;
        w.type(QStringLiteral("sin(x)"));
        w.state.graphs[0].marks.push_back({QStringLiteral("x"), 0.5 * eval::kPiValue, 1, {}, {}, 0, {}});
        auto* exact = w.get<QCheckBox>(QStringLiteral("Check1"));
        exact->click();
        w.closePopup(QStringLiteral("mnupop2"));
        w.action("mnupop22")->trigger();
        auto* fraction = w.get<app::FractionInput>(QStringLiteral("fracinput_2"));
        QVERIFY(fraction->isVisible() && !w.get(QStringLiteral("Text4_2"))->isVisible());
        fraction->field(app::FractionInput::Numerator)->setText(QStringLiteral("3p"));
        fraction->field(app::FractionInput::Denominator)->setText(QStringLiteral("4"));
        QTest::keyClick(fraction->field(app::FractionInput::Denominator), Qt::Key_Return);
        QCOMPARE(w.state.view.XStep, 3 * eval::kPiValue / 4);

        // Each unit loads its own rows and converts the tangents; only radians have exact values.
        const model::RangePreset* presets[3] = {&w.state.presetDegreesX, &w.state.presetRadiansX,
                                                &w.state.presetGradiansX};
        const double markX[3] = {90, 1.57, 100}; // back in radians to two decimals
        for (int option : {0, 2, 1}) {
            w.click(QStringLiteral("Option1_%1").arg(option));
            QCOMPARE(w.row("Text4"), QStringList(presets[option]->begin(), presets[option]->end()));
            QCOMPARE(w.state.graphs[0].marks[0].x, markX[option]);
            QCOMPARE(exact->isEnabled(), option == 1);
            QVERIFY(!exact->isChecked() && !fraction->isVisible());
        }
    }

    void deleteRemovesTheNamedFunction_data()
    {
        QTest::addColumn<int>("pick");       // drop-down row selected first, -1 none
        QTest::addColumn<QString>("text");   // then the box's text
        QTest::addColumn<QString>("traced"); // the function traced meanwhile, "" none
        QTest::addColumn<QStringList>("remaining");

        QTest::newRow("the text names what goes, not the selection") << 0 << "x^2" << "" << QStringList{"x"};
        QTest::newRow("the traced function stops the trace") << -1 << "x^2" << "x^2" << QStringList{"x"};
        QTest::newRow("the trace follows its function to its new place") << -1 << "x" << "x^2" << QStringList{"x^2"};
    }

    void deleteRemovesTheNamedFunction()
    {
        QFETCH(int, pick);
        QFETCH(QString, text);
        QFETCH(QString, traced);
        QFETCH(QStringList, remaining);
        ShownWindow w;
        w.type(QStringLiteral("x"));
        w.type(QStringLiteral("x^2"));
        if (!traced.isEmpty()) {
            w.functionBox->setEditText(traced);
            w.action("mnutrace")->trigger();
        }
        if (pick >= 0)
            w.functionBox->setCurrentIndex(pick);
        w.functionBox->setEditText(text);
        w.get<QToolButton>(QStringLiteral("Command5_7"))->click();

        QCOMPARE(w.graphTexts(), remaining);
        const bool traceOn = remaining.contains(traced);
        QCOMPARE(w.state.trace.on, traceOn);
        if (traceOn)
            QCOMPARE(w.state.graphs[std::size_t(w.state.trace.entry)].text, traced);
    }

    void plotClicksAndZoom()
    {
        ShownWindow w;
        w.type(QStringLiteral("x"));
        w.type(QStringLiteral("-x+3"));
        // A right-click near a curve picks it and opens its menu; the next fill starts there.
        QTest::mouseRelease(w.window.plotArea(), Qt::RightButton, {}, w.pixel(2.2, 2.22));
        w.closePopup(QStringLiteral("mnupop"));
        QCOMPARE(w.functionBox->currentText(), QStringLiteral("x"));
        w.state.fillColor = 0xFF0000;
        w.action("mnufill")->trigger();
        QCOMPARE(w.state.fills.back().color, 0xFF0000u);
        QVERIFY(std::abs(w.state.fills.back().x - 2.2) < 0.05 && std::abs(w.state.fills.back().y - 2.22) < 0.05);
        // A double-click near a curve labels its nearest point.
        w.state.coordinateSeparator = QStringLiteral("|");
        QTest::mouseDClick(w.window.plotArea(), Qt::LeftButton, {}, w.pixel(2, 2));
        QCOMPARE(w.labels().size(), 1);
        app::PlotLabel* label = w.labels().value(0);
        // The sample nearest the pixel clicked lies within a pixel of (2, 2).
        QVERIFY2(label->text().contains(QRegularExpression("^\\(2([.,]00\\d*)?\\| 2([.,]00\\d*)?\\)$")), qPrintable(label->text()));
        // Tangent mode, its button pressed, puts a tangent on the curve clicked; dragging it
        // moves it along the curve in one undo step; its popup removes it.
        auto* tangentButton = w.get<QToolButton>(QStringLiteral("Command5_4"));
        tangentButton->click();
        QVERIFY(tangentButton->isChecked());
        QTest::mousePress(w.window.plotArea(), Qt::LeftButton, {}, w.pixel(1, 1));
        QVERIFY2(w.status().contains(QStringLiteral("k = 1   y = x")), qPrintable(w.status()));
        for (double x : {1.5, 2.0})
            QTest::mouseMove(w.window.plotArea(), w.pixel(x, x));
        QTest::mouseRelease(w.window.plotArea(), Qt::LeftButton, {}, w.pixel(2, 2));
        QCOMPARE(w.state.graphs[0].marks.size(), std::size_t(1));
        QVERIFY(std::abs(w.state.graphs[0].marks[0].x - 2) < 0.05);
        w.action("mnuundo")->trigger();
        QVERIFY(w.state.graphs[0].marks.empty());
        w.action("mnuredo")->trigger();
        label = w.labels().value(0); // the drawing shown again made its labels anew
        QTest::mouseRelease(w.window.plotArea(), Qt::RightButton, {}, w.pixel(2, 2));
        w.get<QMenu>(QStringLiteral("tangentPopup"))->actions().value(0)->trigger();
        w.closePopup(QStringLiteral("tangentPopup"));
        QVERIFY(w.state.graphs[0].marks.empty());
        tangentButton->click();

        // The zoom box: Escape leaves the view, a double-click zooms into the box, the quarter
        // below and right of the centre to the nearest pixel.
        const model::ViewWindow& view = w.state.view;
        QWidget* box = w.get(QStringLiteral("piczoombox"));
        w.get<QToolButton>(QStringLiteral("Command5_1"))->click();
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(!box->isVisible() && w.state.zoomCount == 0);
        w.get<QToolButton>(QStringLiteral("Command5_1"))->click();
        QTest::mouseDClick(box, Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(!box->isVisible() && std::abs(view.XMin) < 0.05 && std::abs(view.YMax) < 0.05);
        QCOMPARE(int(w.state.zoomCount), 1);
        // The rows show the new view, and the label stays at its world point.
        QCOMPARE(*plot::readRangeNumber(w.row("Text4")[0]), view.XMin);
        QCOMPARE(*plot::readRangeNumber(w.row("Text6")[1]), view.YMax);
        QVERIFY((label->pos() - w.pixel(2, 2)).manhattanLength() <= 2);
        w.action("mnuzoombeg")->trigger();
        QCOMPARE(view, model::ViewWindow{});
        QTest::keyClick(label, Qt::Key_Delete);
        QTRY_VERIFY(w.labels().isEmpty());
    }

    void dragsMoveTheView_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("middle button") << Qt::MiddleButton << Qt::KeyboardModifiers();
        QTest::newRow("Ctrl and left") << Qt::LeftButton << Qt::KeyboardModifiers(Qt::ControlModifier);
    }

    void dragsMoveTheView()
    {
        QFETCH(Qt::MouseButton, button);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        ShownWindow w;
        QWidget* plot = w.window.plotArea();
        const QPoint from = w.pixel(0, 0);
        const QPoint to = w.pixel(-1, -2);
        QTest::mousePress(plot, button, modifiers, from);
        QTest::mouseMove(plot, to);
        QTest::mouseRelease(plot, button, modifiers, to);
        // The point grabbed follows the pointer; the rows show the view; one history step.
        QVERIFY((w.pixel(0, 0) - to).manhattanLength() <= 2);
        QCOMPARE(*plot::readRangeNumber(w.row("Text4")[0]), w.state.view.XMin);
        QCOMPARE(int(w.state.zoomCount), 1);
        w.action("mnuzoominc")->trigger();
        QCOMPARE(w.state.view, model::ViewWindow{});
    }

    void fastWheelTurnsDrawOnce_data()
    {
        QTest::addColumn<bool>("keyFirst");
        QTest::newRow("drawn when the events are read") << false;
        QTest::newRow("drawn before a key acts") << true;
    }

    // A letter the drawing lacks becomes a parameter when the user agrees. Its slider moves
    // the curve that uses it, one drag is one undo step, and deleting it is refused.
    void parameterSliderDrawsAndUndoes()
    {
        ShownWindow w;
        w.prompter.answers = {model::Prompter::Button::Yes};
        w.type(QStringLiteral("a*x^2"));
        QCOMPARE(w.graphTexts(), QStringList{QStringLiteral("a*x^2")});
        QDockWidget* dock = w.window.parameters().dock();
        QTRY_VERIFY(dock->isVisible());
        QVERIFY(!w.get<QLabel>(QStringLiteral("OLE1"))->pixmap().isNull()); // typeset with a
        auto* slider = dock->findChild<QSlider*>();
        QVERIFY(slider);
        QUndoStack& undo = w.window.document().undoStack();
        const int steps = undo.count();
        slider->setSliderDown(true);
        for (int i = 0; i < 3; ++i) {
            slider->setValue(slider->value() + 5);
            QCoreApplication::processEvents();
        }
        slider->setSliderDown(false);
        QTRY_COMPARE(undo.count(), steps + 1);
        QCOMPARE(w.state.parameters.at(0).value, 2.5);
        QCOMPARE(w.state.graphs.at(0).formula->evaluate(2), 10.0);
        undo.undo();
        QCOMPARE(w.state.parameters.at(0).value, 1.0);
        QCOMPARE(w.state.graphs.at(0).formula->evaluate(2), 4.0);
        // The arrows move a focused slider, not the trace; keys in a row are one step.
        slider->setFocus();
        const int redraws = w.window.redrawCount();
        QTest::keyClick(slider, Qt::Key_Right);
        QTest::keyClick(slider, Qt::Key_Right);
        QCOMPARE(w.state.parameters.at(0).value, 1.2);
        QTRY_COMPARE(w.window.redrawCount(), redraws + 2); // the first key and the rest
        undo.undo();
        QCOMPARE(w.state.parameters.at(0).value, 1.0);
        dock->findChild<QToolButton*>(QStringLiteral("parameterRemove"))->click();
        QCOMPARE(w.state.parameters.size(), std::size_t(1));
        QVERIFY2(w.prompter.messages.last().contains(QStringLiteral("a*x^2")),
                 qPrintable(w.prompter.messages.last()));
    }

    void fastWheelTurnsDrawOnce()
    {
        QFETCH(bool, keyFirst);
        ShownWindow w;
        w.type(QStringLiteral("x^2"));
        QWidget* plot = w.window.plotArea();
        const int redraws = w.window.redrawCount();
        const QPoint at = w.pixel(1, 1);
        for (int turn = 0; turn < 3; ++turn) {
            QWheelEvent wheel(at, plot->mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(plot, &wheel);
        }
        // The view and its rows follow every turn at once; the picture follows once.
        QVERIFY(w.state.view.XMax - w.state.view.XMin < 10 * 0.9 * 0.9);
        QCOMPARE(*plot::readRangeNumber(w.row("Text4")[0]), w.state.view.XMin);
        QCOMPARE(w.window.redrawCount(), redraws);
        if (keyFirst)
            QTest::keyClick(plot, Qt::Key_Shift);
        QTRY_COMPARE(w.window.redrawCount(), redraws + 1);
        const QImage shown = plot->grab().toImage();
        w.window.redraw();
        QCOMPARE(plot->grab().toImage(), shown);
        // The turns drawn as one frame are one step back.
        w.action("mnuundo")->trigger();
        QCOMPARE(w.state.view, model::ViewWindow{});
    }

    void viewReadouts()
    {
        ShownWindow w;
        QWidget* plot = w.window.plotArea();
        // The pointer's coordinates, rounded to the plot's resolution.
        w.state.coordinateSeparator = QStringLiteral("|");
        const QPoint at = w.pixel(1.5, -2);
        QTest::mouseMove(plot, at);
        const plot::PlotScale scale = plot::SetPlotScale(QSizeF(plot->size()), w.state.view);
        QCOMPARE(w.status(), plot::pointerText(scale.toWorld(at), scale, QStringLiteral("|")));
        // Range boxes hold a zoomed number whole: with the caret at its end, nothing scrolls.
        auto* box = w.get<app::PiLineEdit>(QStringLiteral("Text4_0"));
        for (const QString& text : {QStringLiteral("-22.04001"), QStringLiteral("-9.424778")}) {
            box->setText(text);
            box->end(false);
            box->grab(); // a paint places the text
            QCOMPARE(box->cursorPositionAt(QPoint(0, box->height() / 2)), 0);
        }
        // Equal scale: a unit as long on both axes, kept through a resize.
        w.action("mnuequalscale")->trigger();
        const auto equal = [&] {
            const plot::PlotScale s = plot::SetPlotScale(QSizeF(plot->size()), w.state.view);
            return std::abs(s.unitsPerPixelX() / s.unitsPerPixelY() - 1) < 1e-5;
        };
        QVERIFY(equal() && w.state.zoomCount == 1);
        w.window.resize(w.window.size() + QSize(0, 150));
        QTRY_VERIFY(equal());
    }

    // Keyboard users reach every control in the order of the layout, screen readers find a
    // name for each, and every menu command has a letter of its own.
    void keyboardAndScreenReaders()
    {
        ShownWindow w;
        QStringList expected{"Text5", "imgcombfunc", "Command1_0", "Picture1"};
        for (const char* row : {"Text4", "Text6"})
            for (int i = 0; i < 4; ++i)
                expected << QStringLiteral("%1_%2").arg(QLatin1String(row)).arg(i);
        // Tab enters the angle options once; the arrow keys move among them.
        expected << "Option1_0" << "Check1" << "Check2" << "Check3" << "Check4" << "Text2";
        // The keypad row by row: 7 8 9 / ^ C sqrt Exp, then 4 5 6 * p ln sin asin, ...
        for (int token : {7, 8, 9, 14, 15, 31, 20, 27, 4, 5, 6, 13, 16, 28, 21, 24,
                          1, 2, 3, 12, 17, 29, 22, 25, 0, 10, 30, 11, 18, 19, 23, 26})
            expected << QStringLiteral("cmdtoken_%1").arg(token);
        w.focus(w.get(QStringLiteral("Text5")));
        QStringList visited{QStringLiteral("Text5")};
        while (visited.size() < expected.size()) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget* now = QApplication::focusWidget();
            while (now && now->objectName().isEmpty()) // the function box's own line edit
                now = now->parentWidget();
            visited << (now ? now->objectName() : QStringLiteral("(none)"));
            QVERIFY2(!now->accessibleName().isEmpty(), qPrintable(visited.last()));
        }
        QCOMPARE(visited, expected);

        for (QAction* menu : w.window.menuBar()->actions()) {
            QSet<QChar> letters;
            for (QAction* item : menu->menu()->actions()) {
                const QString text = item->menu() ? item->menu()->title() : item->text();
                const qsizetype mark = text.indexOf(QLatin1Char('&'));
                if (item->isSeparator())
                    continue;
                QVERIFY2(mark >= 0 && mark + 1 < text.size(), qPrintable(text));
                QVERIFY2(!letters.contains(text.at(mark + 1).toLower()), qPrintable(text));
                letters.insert(text.at(mark + 1).toLower());
            }
        }
    }

    // Icons are drawn in the theme's text colour and redrawn when the theme turns dark.
    void iconsFollowThePalette_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("print tool") << QStringLiteral("Command5_0");
        QTest::newRow("demonstration start") << QStringLiteral("Command3_0");
    }
    void iconsFollowThePalette()
    {
        QFETCH(QString, button);
        ShownWindow w;
        auto lightestInk = [&] {
            const QImage icon = w.get<QToolButton>(button)->icon().pixmap(48).toImage();
            int lightest = 0;
            for (int y = 0; y < icon.height(); ++y)
                for (int x = 0; x < icon.width(); ++x)
                    if (qAlpha(icon.pixel(x, y)) == 255)
                        lightest = std::max(lightest, qGray(icon.pixel(x, y)));
            return lightest;
        };
        QVERIFY(lightestInk() < 100);
        const auto restore =
            qScopeGuard([saved = QApplication::palette()] { QApplication::setPalette(saved); });
        QPalette dark(QColor(50, 50, 50));
        dark.setColor(QPalette::ButtonText, QColor(235, 235, 235));
        QApplication::setPalette(dark);
        QTRY_VERIFY(lightestInk() > 200);
    }
};

QTEST_MAIN(TestWindow)
#include "test_window.moc"
