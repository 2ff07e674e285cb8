#include "app/fraction_input.h"
#include "app/frmgraph.h"
#include "app/function_box.h"
#include "app/pi_line_edit.h"
#include "app/plot_label.h"
#include "app/plot_widget.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "plot/coordinates.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QApplication>
#include <QKeyEvent>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QWheelEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <map>
#include <QToolButton>

using namespace curvix;
using app::frmgraph;

namespace {

// Types a function into the function box the way a user does, then presses Enter.
void typeFunction(frmgraph& window, const QString& text)
{
    auto* box = child<QComboBox>(&window, QStringLiteral("imgcombfunc"));
    box->lineEdit()->clear();
    QTest::keyClicks(box->lineEdit(), text);
    QTest::keyClick(box->lineEdit(), Qt::Key_Return);
}

void setLabel(frmgraph& window, const QString& label)
{
    auto* box = child<QLineEdit>(&window, QStringLiteral("Text5"));
    box->setText(label);
}

QStringList colourSettings()
{
    QSettings settings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
    settings.beginGroup(QStringLiteral("colors"));
    return {settings.value(QStringLiteral("gridcolor")).toString(),
            settings.value(QStringLiteral("axiscolor")).toString(),
            settings.value(QStringLiteral("funccolor")).toString()};
}

void clearSettings()
{
    QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix")).clear();
}

} // namespace

class TestWindow : public QObject {
    Q_OBJECT

    // Saving creates a folder in the user's documents: the tests get a home of their own.
    QTemporaryDir m_home;

private slots:
    void initTestCase();
    void init();
    void startsInItsDefaultState();
    void captionsComeFromTheStringTable_data();
    void captionsComeFromTheStringTable();
    void enterAndDrawAddFunctions();
    void functionBoxShowsTheTree();
    void oneVariablePerList();
    void aBadFormulaShowsTheEvaluatorsMessage();
    void checkBoxesRedrawOnlyAfterSetUp();
    void closing_data();
    void closing();
    void anUnwritableSettingsStoreIsReported();
    void settingsWindow_data();
    void settingsWindow();
    void keypadTypesIntoItsTarget_data();
    void keypadTypesIntoItsTarget();
    void angleUnitLoadsPresets_data();
    void angleUnitLoadsPresets();
    void angleUnitConvertsMarks();
    void angleUnitDoesNothingDuringSetUp();
    void rangeBoxesKeepTheirLastGoodText();
    void aBadRangeKeepsTheLastGoodView();
    void exactTrigOffersDecimalsOrFractions();
    void labelBoxMustHoldALabel();
    void newAsksFirst_data();
    void newAsksFirst();
    void deletingFunctions();
    void shiftArrowsResizeThePlot();
    void zoomBoxZoomsIntoItsQuarter();
    void escapePutsTheZoomBoxAway();
    void wheelStepsAreHistory();
    void colourEntries_data();
    void colourEntries();
    void fillAtTheRightClick();
    void fontSizeDialog_data();
    void fontSizeDialog();
    void guideLinesDialog_data();
    void guideLinesDialog();
    void derivativeAndPrimitiveAreLinked_data();
    void derivativeAndPrimitiveAreLinked();
    void aFailedPrimitiveKeepsTheBox();
    void rightClickNearACurvePicksIt();
    void aRefusedLabelDrawsNothing();
    void yesSavesBeforeNewAndClose_data();
    void yesSavesBeforeNewAndClose();
    void deleteTakesTheSelectedItem();
    void tangentModePutsTangents();
    void traceWalksTheCurve();
    void traceStopsWithItsFunction_data();
    void traceStopsWithItsFunction();
    void labelsStayAtTheirWorldPosition();
    void doubleClickDropsAPointLabel();
    void formulaObjectIsTypesetAndEdited();
    void gripResizesThePlot();
    void everyWidgetIsNamedAndExplained_data();
    void everyWidgetIsNamedAndExplained();
    void tabFollowsTheLayout();
    void everyMenuCommandHasALetter();
};

void TestWindow::initTestCase()
{
    QVERIFY(m_home.isValid());
    qputenv("HOME", m_home.path().toLocal8Bit());
    qunsetenv("XDG_DOCUMENTS_DIR");
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("Curvix"));
    QCoreApplication::setApplicationName(QStringLiteral("Curvix"));
}

void TestWindow::init()
{
    clearSettings();
}

void TestWindow::startsInItsDefaultState()
{
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    QVERIFY(window.state().settingUp);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    // The first resize of the plot area is the first redraw, which ends the set-up.
    QVERIFY(!window.state().settingUp);
    const QStringList row{"-5", "5", "1", "1"};
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(child<QLineEdit>(&window, QStringLiteral("Text4_%1").arg(i))->text(), row[i]);
        QCOMPARE(child<QLineEdit>(&window, QStringLiteral("Text6_%1").arg(i))->text(), row[i]);
    }
    QVERIFY(child<QRadioButton>(&window, QStringLiteral("Option1_1"))->isChecked());
    QVERIFY(!child<QCheckBox>(&window, QStringLiteral("Check1"))->isChecked());
    for (const char* name : {"Check2", "Check3", "Check4"})
        QVERIFY(child<QCheckBox>(&window, QLatin1String(name))->isChecked());
    QCOMPARE(child<QLineEdit>(&window, QStringLiteral("Text5"))->text(), QStringLiteral("f(x)"));
    const QImage& image = window.plotArea()->image();
    QCOMPARE(image.size(), window.plotArea()->devicePixelSize());
    QVERIFY(prompter.messages.isEmpty());
}

void TestWindow::captionsComeFromTheStringTable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("tooltip");

    QTest::newRow("draw") << "Command1_0" << "Draw" << false;
    QTest::newRow("degrees") << "Option1_0" << "&Degrees" << false;
    QTest::newRow("radians") << "Option1_1" << "Ra&dians" << false;
    QTest::newRow("gradians") << "Option1_2" << "&Gradient" << false;
    QTest::newRow("exact trig") << "Check1" << "Exact trigs&cale" << false;
    QTest::newRow("ticks x") << "Text4_3" << "0 for no ticks" << true;
    QTest::newRow("ticks y") << "Text6_3" << "0 for no ticks" << true;
    const QStringList tips{"Print",   "Zoom in",    "Zoom out",           "Trace",
                           "Tangents", "Derivative", "Primitive function", "Delete",
                           "Save As",  "New",        "Change color"};
    for (int i = 0; i < tips.size(); ++i)
        QTest::addRow("tool %d", i) << QStringLiteral("Command5_%1").arg(i) << tips[i] << true;
}

void TestWindow::captionsComeFromTheStringTable()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(bool, tooltip);
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    QWidget* widget = child<QWidget>(&window, name);
    if (tooltip)
        QCOMPARE(widget->toolTip(), text);
    else
        QCOMPARE(widget->property("text").toString(), text);
}

void TestWindow::enterAndDrawAddFunctions()
{
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    typeFunction(window, QStringLiteral("2x^2+1"));
    auto* box = child<QComboBox>(&window, QStringLiteral("imgcombfunc"));
    box->lineEdit()->setText(QStringLiteral("sin(x)"));
    QTest::mouseClick(child<QPushButton>(&window, QStringLiteral("Command1_0")), Qt::LeftButton);
    typeFunction(window, QStringLiteral("sin(x)"));

    const model::AppState& state = window.state();
    QCOMPARE(int(state.graphCount), 2);
    QCOMPARE(state.graphs[0].text, QStringLiteral("2x^2+1"));
    QCOMPARE(state.graphs[1].text, QStringLiteral("sin(x)"));
    // Enter never adds the text to the list by itself: the items mirror the graph list.
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->itemText(0), QStringLiteral("2x^2+1"));
    QCOMPARE(box->itemText(1), QStringLiteral("sin(x)"));
    QCOMPARE(box->currentText(), QStringLiteral("sin(x)"));
    QVERIFY(state.documentChanged);
    QVERIFY(prompter.messages.isEmpty());
}

void TestWindow::functionBoxShowsTheTree()
{
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    window.state().derivativeCheck = [](const QString&, const QString&) { return true; };
    typeFunction(window, QStringLiteral("x^3"));
    typeFunction(window, QStringLiteral("x"));
    window.state().pendingDerivativeOf = 0;
    typeFunction(window, QStringLiteral("3x^2"));

    auto* box = child<app::FunctionBox>(&window, QStringLiteral("imgcombfunc"));
    QCOMPARE(box->count(), 3);
    QCOMPARE(box->itemText(1), QStringLiteral("3x^2"));
    QCOMPARE(box->indentAt(0), 0);
    QCOMPARE(box->indentAt(1), 1);
    QCOMPARE(box->indentAt(2), 0);
}

void TestWindow::oneVariablePerList()
{
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    setLabel(window, QStringLiteral("f(t)"));
    typeFunction(window, QStringLiteral("t+1"));
    setLabel(window, QStringLiteral("f(x)"));
    typeFunction(window, QStringLiteral("x^2"));

    QCOMPARE(prompter.messages, QStringList{QStringLiteral("Endast en variabel per omgång")});
    QCOMPARE(int(window.state().graphCount), 1);
    QCOMPARE(window.state().listVariable, QStringLiteral("t"));
}

void TestWindow::aBadFormulaShowsTheEvaluatorsMessage()
{
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    typeFunction(window, QStringLiteral("2xsin(x)"));
    QCOMPARE(prompter.messages.size(), 1);
    QVERIFY2(prompter.messages[0].contains(QStringLiteral("xsin")), qPrintable(prompter.messages[0]));
    QCOMPARE(int(window.state().graphCount), 0);
    QCOMPARE(child<QComboBox>(&window, QStringLiteral("imgcombfunc"))->count(), 0);
}

void TestWindow::checkBoxesRedrawOnlyAfterSetUp()
{
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    auto* grid = child<QCheckBox>(&window, QStringLiteral("Check2"));
    // Before the first redraw the window is still being set up: a click redraws nothing.
    QVERIFY(window.state().settingUp);
    grid->click();
    QVERIFY(window.plotArea()->image().isNull());
    QVERIFY(window.state().settingUp);

    window.frmPicture1_Resize();
    QVERIFY(!window.state().settingUp);
    window.plotArea()->image().fill(Qt::red);
    grid->click();
    QVERIFY(window.plotArea()->image().pixelColor(0, 0) != QColor(Qt::red));
}

void TestWindow::closing_data()
{
    QTest::addColumn<bool>("changed");
    QTest::addColumn<QList<int>>("answers"); // Prompter::Button values
    QTest::addColumn<bool>("closes");
    QTest::addColumn<int>("questions");

    using B = model::Prompter::Button;
    QTest::newRow("unchanged closes without asking") << false << QList<int>{} << true << 0;
    QTest::newRow("changed, No") << true << QList<int>{int(B::No)} << true << 1;
    QTest::newRow("changed, Cancel") << true << QList<int>{int(B::Cancel)} << false << 1;
    QTest::newRow("changed, Yes, save dialog cancelled")
        << true << QList<int>{int(B::Yes)} << false << 1;
}

void TestWindow::closing()
{
    QFETCH(bool, changed);
    QFETCH(QList<int>, answers);
    QFETCH(bool, closes);
    QFETCH(int, questions);

    ScriptedPrompter prompter;
    for (int a : answers)
        prompter.answers.push_back(model::Prompter::Button(a));
    prompter.fileNames.push_back(QString()); // the save dialog, if it opens, is cancelled
    frmgraph window(prompter);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (changed)
        typeFunction(window, QStringLiteral("x^2"));
    window.state().gridColor = 0x80000010;
    window.state().axisColor = 0x000000FF;
    window.state().functionColor = 0x00FF8000;

    QCOMPARE(window.close(), closes);
    QCOMPARE(prompter.questions.size(), questions);
    if (questions)
        QCOMPARE(prompter.questions[0], QStringLiteral("Save changes?"));
    QVERIFY(prompter.unexpected.isEmpty());
    if (closes)
        QCOMPARE(colourSettings(), (QStringList{"-2147483632", "255", "16744448"}));
    else
        QCOMPARE(colourSettings(), (QStringList{"", "", ""}));
}

void TestWindow::anUnwritableSettingsStoreIsReported()
{
    // A folder where the settings file should be: no one, not even root, writes it.
    const QString file = QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix")).fileName();
    QFile::remove(file);
    QVERIFY(QDir().mkpath(file));
    ScriptedPrompter prompter;
    prompter.answers.push_back(model::Prompter::Button::No);
    frmgraph window(prompter);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    typeFunction(window, QStringLiteral("x^2"));

    const bool closed = window.close();
    QDir(file).removeRecursively();
    QVERIFY(closed);
    QCOMPARE(prompter.messages.size(), 1);
    QVERIFY2(prompter.messages[0].contains(file), qPrintable(prompter.messages[0]));
    QVERIFY(prompter.unexpected.isEmpty());
}

void TestWindow::settingsWindow_data()
{
    QTest::addColumn<int>("choice"); // combo index, -1 for none
    QTest::addColumn<QList<bool>>("checks"); // y neg, y pos, x neg, x pos
    QTest::addColumn<int>("button");         // 0 OK, 1 Cancel
    QTest::addColumn<QString>("separator");
    QTest::addColumn<model::AxisArrowSwitches>("arrows");

    const QList<bool> all{true, true, true, true};
    const model::AxisArrowSwitches allOn{true, true, true, true};
    QTest::newRow("vertical bar") << 3 << all << 0 << "|" << allOn;
    QTest::newRow("colon") << 1 << all << 0 << ":" << allOn;
    QTest::newRow("nothing chosen keeps the separator") << -1 << all << 0 << "," << allOn;
    QTest::newRow("only x pos") << -1 << QList<bool>{false, false, false, true} << 0 << ","
                                << model::AxisArrowSwitches{false, true, false, false};
    QTest::newRow("cancel stores nothing")
        << 2 << QList<bool>{false, false, false, false} << 1 << "," << allOn;
}

void TestWindow::settingsWindow()
{
    QFETCH(int, choice);
    QFETCH(QList<bool>, checks);
    QFETCH(int, button);
    QFETCH(QString, separator);
    QFETCH(model::AxisArrowSwitches, arrows);

    ScriptedPrompter prompter;
    frmgraph window(prompter);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    child<QAction>(&window, QStringLiteral("mnucoord"))->trigger();
    QWidget* settings = child<QWidget>(&window, QStringLiteral("frmsettings"));
    QCOMPARE(settings->windowTitle(), QStringLiteral("Coordinate system settings"));

    auto* combo = child<QComboBox>(settings, QStringLiteral("Combo1"));
    QCOMPARE(combo->count(), 4);
    if (choice >= 0) {
        combo->setCurrentIndex(choice);
        emit combo->activated(choice);
    }
    for (int i = 0; i < 4; ++i)
        child<QCheckBox>(settings, QStringLiteral("Check1_%1").arg(i))->setChecked(checks[i]);

    // Either button redraws: the set-up flag, raised here, is lowered by the redraw.
    window.state().settingUp = true;
    QTest::mouseClick(child<QPushButton>(settings, QStringLiteral("Command1_%1").arg(button)),
                      Qt::LeftButton);
    QCOMPARE(window.state().coordinateSeparator, separator);
    QCOMPARE(window.state().arrows, arrows);
    QVERIFY(!window.state().settingUp);
    QTRY_VERIFY(!window.findChild<QWidget*>(QStringLiteral("frmsettings")));
}

namespace {

// Sends wheel turns to the plot as a mouse would.
struct PlotWidgetAccess {
    QWidget* plot;
    explicit PlotWidgetAccess(QWidget* p) : plot(p) {}
    void wheel(QPointF at, int delta)
    {
        QWheelEvent event(at, plot->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(plot, &event);
    }
};


// A shown, active window, so that focus and the keypad's target work as for a user.
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
    QString status() { return get<QLabel>(QStringLiteral("StatusBar1_5"))->text(); }
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
    QString functionText() { return get<QComboBox>(QStringLiteral("imgcombfunc"))->currentText(); }
    QStringList row(const char* prefix)
    {
        QStringList texts;
        for (int i = 0; i < 4; ++i)
            texts << get<app::PiLineEdit>(QStringLiteral("%1_%2").arg(QLatin1String(prefix)).arg(i))->storedText();
        return texts;
    }
};

} // namespace

void TestWindow::keypadTypesIntoItsTarget_data()
{
    QTest::addColumn<QString>("target"); // widget to focus first
    QTest::addColumn<QString>("before");
    QTest::addColumn<QList<int>>("tokens");
    QTest::addColumn<QString>("functionBox");
    QTest::addColumn<QString>("targetText"); // stored text of the target afterwards

    const QString pi(QChar(0x00B6));
    QTest::newRow("log types log10(") << "imgcombfunc" << "" << QList<int>{29} << "log10(" << "";
    QTest::newRow("pi twice in the function box")
        << "imgcombfunc" << "2" << QList<int>{16, 16} << "2" + pi + pi << "";
    QTest::newRow("a formula from keys") << "imgcombfunc" << "" << QList<int>{20, 30, 19, 11, 1}
                                         << "sqrt(x)+1" << "";
    QTest::newRow("functions open their parenthesis") << "imgcombfunc" << "" << QList<int>{27, 28, 26}
                                                      << "Exp(ln(atan(" << "";
    QTest::newRow("pi twice in a range box is one p")
        << "Text4_0" << "" << QList<int>{16, 16} << "" << "p";
    QTest::newRow("pi after a number in a range box") << "Text4_1" << "3" << QList<int>{16} << "" << "3p";
    QTest::newRow("a digit in a range box does nothing")
        << "Text4_0" << "-5" << QList<int>{7, 11, 17} << "" << "-5";
    QTest::newRow("pi on the y row does nothing") << "Text6_0" << "-5" << QList<int>{16} << "" << "-5";
    QTest::newRow("pi in the label text") << "Text2" << "A" << QList<int>{16, 3} << "" << "A" + pi;
    QTest::newRow("C clears the function box from anywhere")
        << "Text4_0" << "-5" << QList<int>{31} << "" << "-5";
}

void TestWindow::keypadTypesIntoItsTarget()
{
    QFETCH(QString, target);
    QFETCH(QString, before);
    QFETCH(QList<int>, tokens);
    QFETCH(QString, functionBox);
    QFETCH(QString, targetText);

    ShownWindow w;
    auto* box = w.get<QComboBox>(QStringLiteral("imgcombfunc"));
    box->setEditText(target == QLatin1String("imgcombfunc") ? before : QStringLiteral("sin(x)"));
    QWidget* widget = w.get<QWidget>(target);
    if (auto* range = qobject_cast<app::PiLineEdit*>(widget))
        range->setText(before);
    else if (auto* line = qobject_cast<QLineEdit*>(widget))
        line->setText(before);
    w.focus(widget);
    for (int token : tokens)
        w.press(token);

    if (target == QLatin1String("imgcombfunc")) {
        QCOMPARE(w.functionText(), functionBox);
        QVERIFY(box->lineEdit()->hasFocus());
        QCOMPARE(box->lineEdit()->cursorPosition(), int(functionBox.size()));
        return;
    }
    const bool clears = tokens.contains(31);
    QCOMPARE(w.functionText(), clears ? QString() : QStringLiteral("sin(x)"));
    if (auto* range = qobject_cast<app::PiLineEdit*>(widget))
        QCOMPARE(range->storedText(), targetText);
    else
        QCOMPARE(qobject_cast<QLineEdit*>(widget)->text(), targetText);
}

void TestWindow::angleUnitLoadsPresets_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<QStringList>("xRow");
    QTest::addColumn<QStringList>("yRow");
    QTest::addColumn<bool>("exactTrigEnabled");
    const QStringList y{"-3", "3", "1", "1"};
    QTest::newRow("degrees") << 0 << QStringList{"-180", "180", "90", "1"} << y << false;
    QTest::newRow("radians") << 1 << QStringList{"-3p", "3p", "0.5p", "1"} << y << true;
    QTest::newRow("gradians") << 2 << QStringList{"-200", "200", "100", "1"} << y << false;
}

void TestWindow::angleUnitLoadsPresets()
{
    QFETCH(int, option);
    QFETCH(QStringList, xRow);
    QFETCH(QStringList, yRow);
    QFETCH(bool, exactTrigEnabled);
    ShownWindow w;
    auto* exact = w.get<QCheckBox>(QStringLiteral("Check1"));
    exact->click(); // ticked first: a unit without it unticks it
    auto* menu = w.get<QMenu>(QStringLiteral("mnupop2"));
    QTRY_VERIFY(menu->isVisible());
    w.closePopup(menu);
    w.option(option);

    QCOMPARE(w.row("Text4"), xRow);
    QCOMPARE(w.row("Text6"), yRow);
    QCOMPARE(exact->isEnabled(), exactTrigEnabled);
    QCOMPARE(exact->isChecked(), exactTrigEnabled);
    // The view follows the rows, pi as its number.
    QCOMPARE(w.window.state().view.XMax, *plot::readRangeNumber(xRow[1]));
    // The π of a range box is shown as π and kept as p.
    QCOMPARE(w.box("Text4_0")->text(), app::piShown(xRow[0]));
}

void TestWindow::angleUnitConvertsMarks()
{
    ShownWindow w;
    typeFunction(w.window, QStringLiteral("sin(x)"));
    w.window.state().graphs[0].marks.push_back({QStringLiteral("x"), 1.5708, 1, {}, {}, 0});
    const double& x = w.window.state().graphs[0].marks[0].x;
    w.option(0);
    QCOMPARE(x, 90.0);
    w.option(0);
    QCOMPARE(x, 90.0); // the same unit again converts nothing
    w.option(1);
    QCOMPARE(x, 1.57);
}

void TestWindow::angleUnitDoesNothingDuringSetUp()
{
    ShownWindow w;
    w.window.state().settingUp = true;
    const QStringList before = w.row("Text4");
    w.option(0);
    QCOMPARE(w.row("Text4"), before);
    QVERIFY(w.get<QCheckBox>(QStringLiteral("Check1"))->isEnabled());
    QCOMPARE(w.window.state().angleUnit, model::AngleUnit::Radians);
}

void TestWindow::rangeBoxesKeepTheirLastGoodText()
{
    ShownWindow w;
    app::PiLineEdit* max = w.box("Text4_1");
    max->clear();
    w.focus(max);
    QTest::keyClicks(max, QStringLiteral("2xp!p"));
    QCOMPARE(max->storedText(), QStringLiteral("2p"));
    QCOMPARE(max->text(), QStringLiteral("2\u03C0"));
    app::PiLineEdit* yStep = w.box("Text6_2");
    yStep->clear();
    w.focus(yStep);
    QTest::keyClicks(yStep, QStringLiteral("0p,5"));
    QCOMPARE(yStep->storedText(), QStringLiteral("0,5"));
    // Typing π itself works as p does.
    app::PiLineEdit* min = w.box("Text4_0");
    min->clear();
    w.focus(min);
    QTest::keyClicks(min, QStringLiteral("-"));
    QKeyEvent typedPi(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(QChar(0x03C0)));
    QApplication::sendEvent(min, &typedPi);
    QCOMPARE(min->storedText(), QStringLiteral("-p"));

    QTest::keyClick(min, Qt::Key_Return);
    const model::ViewWindow& view = w.window.state().view;
    QCOMPARE(view.XMin, -eval::kPiValue);
    QCOMPARE(view.XMax, 2 * eval::kPiValue);
    QCOMPARE(view.YStep, 0.5);
}

void TestWindow::aBadRangeKeepsTheLastGoodView()
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

void TestWindow::exactTrigOffersDecimalsOrFractions()
{
    ShownWindow w;
    auto* exact = w.get<QCheckBox>(QStringLiteral("Check1"));
    auto* menu = w.get<QMenu>(QStringLiteral("mnupop2"));
    exact->click();
    QTRY_VERIFY(menu->isVisible());
    w.closePopup(menu);
    QCOMPARE(w.row("Text4"), (QStringList{"-3p", "3p", "0.5p", "1"}));

    w.get<QAction>(QStringLiteral("mnupop22"))->trigger();
    auto* fraction = w.get<app::FractionInput>(QStringLiteral("fracinput_2"));
    QVERIFY(fraction->isVisible());
    QVERIFY(!w.box("Text4_2")->isVisible());
    QCOMPARE(w.window.state().view.XStep, eval::kPiValue / 2);
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
    QCOMPARE(w.row("Text4"), (QStringList{"-5", "5", "1", "1"}));
}

void TestWindow::labelBoxMustHoldALabel()
{
    ShownWindow w;
    auto* label = w.get<QLineEdit>(QStringLiteral("Text5"));
    auto* variableKey = w.get<QToolButton>(QStringLiteral("cmdtoken_30"));
    w.focus(label);
    label->setText(QStringLiteral("F(x)"));
    w.focus(w.box("Text4_0"));
    QTRY_VERIFY(label->hasFocus());
    QVERIFY(!w.status().isEmpty());
    QCOMPARE(variableKey->text(), QStringLiteral("x"));

    label->setText(QStringLiteral("g(t)"));
    w.focus(w.box("Text4_0"));
    QCOMPARE(variableKey->text(), QStringLiteral("t"));
    QVERIFY(w.status().isEmpty());
    label->setText(QStringLiteral("h"));
    w.focus(label);
    w.focus(w.box("Text4_0"));
    QCOMPARE(variableKey->text(), QStringLiteral("x"));
}

void TestWindow::newAsksFirst_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("cleared");
    using B = model::Prompter::Button;
    QTest::newRow("cancel keeps the functions") << int(B::Cancel) << false;
    QTest::newRow("no starts anew") << int(B::No) << true;
}

void TestWindow::newAsksFirst()
{
    QFETCH(int, answer);
    QFETCH(bool, cleared);
    ShownWindow w;
    w.prompter.answers.push_back(model::Prompter::Button(answer));
    typeFunction(w.window, QStringLiteral("x^2"));
    w.option(0);
    w.get<QCheckBox>(QStringLiteral("Check2"))->click();
    const int redraws = w.window.redrawCount();

    w.get<QToolButton>(QStringLiteral("Command5_9"))->click();
    QCOMPARE(w.prompter.questions, QStringList{QStringLiteral("Save changes?")});
    QCOMPARE(int(w.window.state().graphCount), cleared ? 0 : 1);
    QCOMPARE(w.get<QComboBox>(QStringLiteral("imgcombfunc"))->count(), cleared ? 0 : 1);
    QCOMPARE(w.get<QRadioButton>(QStringLiteral("Option1_1"))->isChecked(), cleared);
    QCOMPARE(w.get<QCheckBox>(QStringLiteral("Check2"))->isChecked(), cleared);
    // New redraws once, however many boxes it sets on the way.
    QCOMPARE(w.window.redrawCount(), redraws + (cleared ? 1 : 0));
    if (!cleared)
        return;
    QCOMPARE(w.row("Text4"), (QStringList{"-5", "5", "1", "1"}));
    QVERIFY(w.window.state().listVariable.isEmpty());
    QVERIFY(!w.window.state().documentChanged);
    QVERIFY(!w.window.state().settingUp);
    // A new drawing may use another variable.
    setLabel(w.window, QStringLiteral("f(t)"));
    typeFunction(w.window, QStringLiteral("t^2"));
    QCOMPARE(int(w.window.state().graphCount), 1);
    QCOMPARE(w.prompter.messages, QStringList{});
}

void TestWindow::deletingFunctions()
{
    ShownWindow w;
    w.window.state().derivativeCheck = [](const QString&, const QString&) { return true; };
    typeFunction(w.window, QStringLiteral("x^3"));
    w.window.state().pendingDerivativeOf = 0;
    typeFunction(w.window, QStringLiteral("3x^2"));
    auto* box = w.get<app::FunctionBox>(QStringLiteral("imgcombfunc"));

    // Deleting the source leaves its derivative drawn, one level up.
    box->setEditText(QStringLiteral("x^3"));
    w.get<QToolButton>(QStringLiteral("Command5_7"))->click();
    QCOMPARE(int(w.window.state().graphCount), 1);
    QCOMPARE(w.window.state().graphs[0].text, QStringLiteral("3x^2"));
    QCOMPARE(box->count(), 1);
    QCOMPARE(box->indentAt(0), 0);
    QVERIFY(!w.window.state().graphs[0].points.empty());
    QCOMPARE(w.functionText(), QString());
    QVERIFY(box->lineEdit()->hasFocus());

    // A text that is not in the list deletes nothing.
    box->setEditText(QStringLiteral("x^9"));
    w.get<QToolButton>(QStringLiteral("Command5_7"))->click();
    QCOMPARE(int(w.window.state().graphCount), 1);

    // Deleting the last function frees the variable letter.
    box->setCurrentIndex(0);
    w.get<QToolButton>(QStringLiteral("Command5_7"))->click();
    QCOMPARE(int(w.window.state().graphCount), 0);
    setLabel(w.window, QStringLiteral("f(t)"));
    typeFunction(w.window, QStringLiteral("t+1"));
    QCOMPARE(int(w.window.state().graphCount), 1);
    QVERIFY(w.prompter.messages.isEmpty());
}

void TestWindow::shiftArrowsResizeThePlot()
{
    ShownWindow w;
    w.focus(w.get<QWidget>(QStringLiteral("Check2")));
    const QSize full = w.window.plotArea()->size();
    QTest::keyClick(&w.window, Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(&w.window, Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(&w.window, Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(w.window.plotArea()->size(), full - QSize(10, 20));
    QCOMPARE(w.window.plotArea()->image().size(), w.window.plotArea()->devicePixelSize());
    QTest::keyClick(&w.window, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&w.window, Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(w.window.plotArea()->width(), full.width()); // never past the frame
    QTest::keyClick(&w.window, Qt::Key_Up, Qt::ShiftModifier);
    w.get<QAction>(QStringLiteral("mnunew"))->trigger();
    QCOMPARE(w.window.plotArea()->size(), full);
}

void TestWindow::zoomBoxZoomsIntoItsQuarter()
{
    ShownWindow w;
    auto* box = w.get<QWidget>(QStringLiteral("piczoombox"));
    QVERIFY(!box->isVisible());
    w.get<QToolButton>(QStringLiteral("Command5_1"))->click();
    QVERIFY(box->isVisible());
    QVERIFY(box->hasFocus());
    QCOMPARE(box->toolTip(), QStringLiteral("Doubleclick to start zoom in"));
    QTest::mouseDClick(box, Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(!box->isVisible());
    // The quarter below and right of the centre, to the nearest pixel.
    const model::ViewWindow& view = w.window.state().view;
    QVERIFY(std::abs(view.XMin) < 0.05 && std::abs(view.XMax - 5) < 0.05);
    QVERIFY(std::abs(view.YMin + 5) < 0.05 && std::abs(view.YMax) < 0.05);
    QCOMPARE(view.XStep, 0.4); // 5/12 of the step, to one decimal
    QVERIFY(w.window.state().documentChanged);

    // Stepwise back restores the first range, in the rows as well.
    w.get<QAction>(QStringLiteral("mnuzoominc"))->trigger();
    QCOMPARE(w.window.state().view, model::ViewWindow{});
    QCOMPARE(w.row("Text4"), (QStringList{"-5", "5", "1", "1"}));
}

void TestWindow::escapePutsTheZoomBoxAway()
{
    ShownWindow w;
    w.get<QAction>(QStringLiteral("mnuzoomin"))->trigger();
    auto* box = w.get<QWidget>(QStringLiteral("piczoombox"));
    QTest::keyClick(box, Qt::Key_Escape);
    QVERIFY(!box->isVisible());
    QCOMPARE(w.window.state().view, model::ViewWindow{});
    QCOMPARE(int(w.window.state().zoomCount), 0);
}

void TestWindow::wheelStepsAreHistory()
{
    ShownWindow w;
    PlotWidgetAccess plot(w.window.plotArea());
    const QPointF centre(w.window.plotArea()->width() / 2.0, w.window.plotArea()->height() / 2.0);
    plot.wheel(centre, 120);
    plot.wheel(centre, 120);
    QCOMPARE(int(w.window.state().zoomCount), 2);
    QVERIFY(w.window.state().view.XMax - w.window.state().view.XMin < 7);
    w.get<QAction>(QStringLiteral("mnuzoombeg"))->trigger();
    QCOMPARE(w.window.state().view, model::ViewWindow{});
    QCOMPARE(int(w.window.state().zoomCount), 0);
}

void TestWindow::colourEntries_data()
{
    QTest::addColumn<QStringList>("entries");       // menu items in order
    QTest::addColumn<QList<int>>("answers");        // colour per dialog, -1 = cancel
    QTest::addColumn<QStringList>("titles");        // title each dialog showed
    QTest::addColumn<QList<quint32>>("colours");    // grid, axis, function, fill after
    QTest::addColumn<quint32>("curveColour");

    const quint32 shadow = 0x80000010;
    QTest::newRow("grid first: no title")
        << QStringList{"mnucolgrid"} << QList<int>{0x0000FF} << QStringList{""}
        << QList<quint32>{0x0000FF, 0, 0, 0} << 0u;
    QTest::newRow("axis, then the grid keeps the title")
        << QStringList{"mnucolaxis", "mnucolgrid"} << QList<int>{0x00FF00, 0x0000FF}
        << QStringList{"Axis", "Axis"} << QList<quint32>{0x0000FF, 0x00FF00, 0, 0} << 0u;
    QTest::newRow("function colour goes to the axes and every curve")
        << QStringList{"mnucolfunc"} << QList<int>{0xFF0000} << QStringList{"Axis"}
        << QList<quint32>{shadow, 0xFF0000, 0xFF0000, 0} << 0xFF0000u;
    QTest::newRow("fill colour")
        << QStringList{"mnucolfill"} << QList<int>{0x123456} << QStringList{"Axis"}
        << QList<quint32>{shadow, 0, 0, 0x123456} << 0u;
    QTest::newRow("cancel takes the colour chosen last")
        << QStringList{"mnucolaxis", "mnucolfill"} << QList<int>{0x00FF00, -1}
        << QStringList{"Axis", "Axis"} << QList<quint32>{shadow, 0x00FF00, 0, 0x00FF00} << 0u;
    QTest::newRow("window background stores nothing")
        << QStringList{"mnucolwind"} << QList<int>{0x00FFFF} << QStringList{"Axis"}
        << QList<quint32>{shadow, 0, 0, 0} << 0u;
}

void TestWindow::colourEntries()
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

void TestWindow::fillAtTheRightClick()
{
    ShownWindow w;
    auto* fill = w.get<QAction>(QStringLiteral("mnufill"));
    // Before any right-click the fill is seeded at the origin.
    fill->trigger();
    QCOMPARE(w.window.state().fills.size(), std::size_t(1));
    QCOMPARE(w.window.state().fills[0].x, 0.0);
    QCOMPARE(w.window.state().fills[0].y, 0.0);

    w.window.state().functionColor = 0x0000FF;
    typeFunction(w.window, QStringLiteral("x^2"));
    w.window.state().graphs[0].color = 0x00FF00;
    w.window.state().fillColor = 0xFF0000;
    const plot::PlotScale scale =
        plot::SetPlotScale(QSizeF(w.window.plotArea()->size()), w.window.state().view);
    const QPointF at = scale.toPixel(2, -3);
    QTest::mouseRelease(w.window.plotArea(), Qt::RightButton, {}, at.toPoint());
    auto* tools = w.get<QMenu>(QStringLiteral("mnutool"));
    QTRY_VERIFY(tools->isVisible());
    w.closePopup(tools);
    QVERIFY(std::abs(w.window.fillAnchor().x() - 2) < 0.05);
    fill->trigger();
    QCOMPARE(w.window.state().fills.back().color, 0xFF0000u);
    QVERIFY(std::abs(w.window.state().fills.back().y + 3) < 0.05);
    // A fill gives every curve the function colour again.
    QCOMPARE(w.window.state().graphs[0].color, 0x0000FFu);
}

void TestWindow::fontSizeDialog_data()
{
    QTest::addColumn<QStringList>("inputs");     // answers typed, in order; "<cancel>"
    QTest::addColumn<QList<int>>("buttons");     // Retry/Cancel answers
    QTest::addColumn<QStringList>("questions");
    QTest::addColumn<int>("size");               // -1: unchanged

    const QString prompt = "Please set size between min 5 and max 10(min 5,  max 10)";
    const QString range = "only digits, - and max5min10";
    using B = model::Prompter::Button;
    QTest::newRow("7.5 rounds to 8") << QStringList{"7.5"} << QList<int>{} << QStringList{} << 8;
    QTest::newRow("6.5 rounds to 6") << QStringList{"6.5"} << QList<int>{} << QStringList{} << 6;
    QTest::newRow("decimal comma") << QStringList{"9,5"} << QList<int>{} << QStringList{} << 10;
    QTest::newRow("cancel") << QStringList{"<cancel>"} << QList<int>{} << QStringList{} << -1;
    QTest::newRow("empty answer") << QStringList{""} << QList<int>{} << QStringList{} << -1;
    QTest::newRow("words, retry, then 5")
        << QStringList{"big", "5"} << QList<int>{int(B::Retry)} << QStringList{prompt} << 5;
    QTest::newRow("too big, cancel")
        << QStringList{"11"} << QList<int>{int(B::Cancel)} << QStringList{range} << -1;
    QTest::newRow("too small, retry, too big, cancel")
        << QStringList{"4", "12"} << QList<int>{int(B::Retry), int(B::Cancel)}
        << QStringList{range, range} << -1;
}

void TestWindow::fontSizeDialog()
{
    QFETCH(QStringList, inputs);
    QFETCH(QList<int>, buttons);
    QFETCH(QStringList, questions);
    QFETCH(int, size);
    ShownWindow w;
    for (const QString& input : inputs)
        w.prompter.inputs.push_back(input == QLatin1String("<cancel>") ? QString() : input);
    for (int b : buttons)
        w.prompter.answers.push_back(model::Prompter::Button(b));
    const int before = w.window.plotArea()->font().pointSize();
    w.get<QAction>(QStringLiteral("mnufontsize"))->trigger();
    QCOMPARE(w.prompter.questions, questions);
    QCOMPARE(w.window.plotArea()->font().pointSize(), size < 0 ? before : size);
    QVERIFY(w.prompter.unexpected.isEmpty());
}

void TestWindow::guideLinesDialog_data()
{
    QTest::addColumn<QString>("menu");
    QTest::addColumn<bool>("ok");
    QTest::newRow("vertical, OK") << "mnuvertical" << true;
    QTest::newRow("horizontal, OK") << "menuhoriz" << true;
    QTest::newRow("vertical, Cancel") << "mnuvertical" << false;
}

void TestWindow::guideLinesDialog()
{
    QFETCH(QString, menu);
    QFETCH(bool, ok);
    const bool vertical = menu == QLatin1String("mnuvertical");
    ShownWindow w;
    model::AppState& state = w.window.state();
    (vertical ? state.verticalLines : state.horizontalLines) = {4};
    w.get<QAction>(menu)->trigger();
    auto* editor = w.get<QWidget>(QStringLiteral("frmtangent"));
    QVERIFY(editor->isVisible());
    auto* list = child<QListWidget>(editor, QStringLiteral("values"));
    QCOMPARE(list->count(), 1); // the list's values are copied in
    auto* value = child<QLineEdit>(editor, QStringLiteral("value"));
    for (const char* text : {"2", "p", "nonsense", "-1,5"}) {
        value->setText(QLatin1String(text));
        QTest::keyClick(value, Qt::Key_Return);
    }
    QCOMPARE(w.prompter.messages.size(), 1); // the nonsense, named in the message
    QVERIFY(w.prompter.messages[0].contains(QStringLiteral("nonsense")));
    QCOMPARE(list->count(), 4);
    list->item(2)->setSelected(true);
    QTest::mouseClick(child<QPushButton>(editor, QStringLiteral("remove")), Qt::LeftButton);
    QTest::mouseClick(child<QPushButton>(editor, QStringLiteral("sort")), Qt::LeftButton);
    QCOMPARE(list->item(0)->text(), eval::numberText(-1.5));
    QCOMPARE(list->item(2)->text(), QStringLiteral("4"));
    // Nothing reaches the drawing before OK.
    QCOMPARE(vertical ? state.verticalLines : state.horizontalLines, std::vector<double>{4});
    const int redraws = w.window.redrawCount();

    QTest::mouseClick(child<QPushButton>(editor, ok ? QStringLiteral("ok") : QStringLiteral("cancel")),
                      Qt::LeftButton);
    QVERIFY(!editor->isVisible());
    const std::vector<double> expected = ok ? std::vector<double>{-1.5, 2, 4} : std::vector<double>{4};
    QCOMPARE(vertical ? state.verticalLines : state.horizontalLines, expected);
    QVERIFY((vertical ? state.horizontalLines : state.verticalLines).empty());
    QCOMPARE(state.documentChanged, ok);
    QCOMPARE(w.window.redrawCount() > redraws, ok);

    // Opened again, it shows the lines as they are; remove all empties the copy only.
    w.get<QAction>(menu)->trigger();
    QCOMPARE(list->count(), int(expected.size()));
    QTest::mouseClick(child<QPushButton>(editor, QStringLiteral("removeAll")), Qt::LeftButton);
    QCOMPARE(list->count(), 0);
    QCOMPARE(vertical ? state.verticalLines : state.horizontalLines, expected);
}

void TestWindow::derivativeAndPrimitiveAreLinked_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("tool");      // 5 derivative, 6 primitive
    QTest::addColumn<bool>("edited");   // the answer changed before Enter
    QTest::addColumn<QString>("tree");  // indentation:text of the items, %1 the answer
    QTest::newRow("derivative below its source") << "x^3" << 5 << false << "0:x^3 1:%1";
    QTest::newRow("primitive above its source") << "2x" << 6 << false << "0:%1 1:2x";
    QTest::newRow("an edited answer is an ordinary function")
        << "x^3" << 5 << true << "0:x^3 0:%1";
}

void TestWindow::derivativeAndPrimitiveAreLinked()
{
    QFETCH(QString, source);
    QFETCH(int, tool);
    QFETCH(bool, edited);
    QFETCH(QString, tree);
    ShownWindow w;
    typeFunction(w.window, source);
    w.get<QToolButton>(QStringLiteral("Command5_%1").arg(tool))->click();
    QString answer = w.functionText();
    QVERIFY(!answer.isEmpty() && answer != source);
    const model::AppState& state = w.window.state();
    QCOMPARE(tool == 5 ? state.pendingDerivativeOf : state.pendingPrimitiveOf, 0);
    if (edited)
        answer += QStringLiteral("+1");
    typeFunction(w.window, answer);

    QCOMPARE(int(state.graphCount), 2);
    auto* box = w.get<app::FunctionBox>(QStringLiteral("imgcombfunc"));
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << QStringLiteral("%1:%2").arg(box->indentAt(i)).arg(box->itemText(i));
    QCOMPARE(items.join(QLatin1Char(' ')), tree.arg(answer));
    const int link = tool == 5 ? state.graphs[0].derivativeIndex : state.graphs[0].primitiveIndex;
    QCOMPARE(link, edited ? -1 : 1);
    QVERIFY(w.prompter.messages.isEmpty());
}

void TestWindow::aFailedPrimitiveKeepsTheBox()
{
    ShownWindow w;
    typeFunction(w.window, QStringLiteral("exp(x^2)"));
    w.get<QAction>(QStringLiteral("mnupopprim"))->trigger();
    QCOMPARE(w.prompter.messages, (QStringList{"Error in calculation of primitive function",
                                               "Error in primitive calculation"}));
    QCOMPARE(w.functionText(), QStringLiteral("exp(x^2)"));
    QCOMPARE(w.window.state().pendingPrimitiveOf, -1);
    // An empty box asks nothing.
    w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QString());
    w.get<QAction>(QStringLiteral("mnupopderiv"))->trigger();
    QCOMPARE(w.prompter.messages.size(), 2);
}

void TestWindow::rightClickNearACurvePicksIt()
{
    ShownWindow w;
    typeFunction(w.window, QStringLiteral("x"));
    typeFunction(w.window, QStringLiteral("-x+3"));
    const plot::PlotScale scale =
        plot::SetPlotScale(QSizeF(w.window.plotArea()->size()), w.window.state().view);
    QTest::mouseRelease(w.window.plotArea(), Qt::RightButton, {},
                        (scale.toPixel(2.2, 2.2) + QPointF(0, 2)).toPoint());
    auto* popup = w.get<QMenu>(QStringLiteral("mnupop"));
    QTRY_VERIFY(popup->isVisible());
    w.closePopup(popup);
    QCOMPARE(w.functionText(), QStringLiteral("x"));
    // Far from every curve the tools menu opens instead.
    QTest::mouseRelease(w.window.plotArea(), Qt::RightButton, {}, scale.toPixel(-4, 4).toPoint());
    auto* tools = w.get<QMenu>(QStringLiteral("mnutool"));
    QTRY_VERIFY(tools->isVisible());
    w.closePopup(tools);
    QCOMPARE(w.functionText(), QStringLiteral("x"));
}

void TestWindow::aRefusedLabelDrawsNothing()
{
    ShownWindow w;
    auto* label = w.get<QLineEdit>(QStringLiteral("Text5"));
    label->setText(QStringLiteral("F(t)"));
    w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QStringLiteral("t^2"));
    QTest::mouseClick(w.get<QPushButton>(QStringLiteral("Command1_0")), Qt::LeftButton);
    QCOMPARE(int(w.window.state().graphCount), 0);
    QVERIFY(w.window.state().listVariable.isEmpty());
    QTRY_VERIFY(label->hasFocus());
    QVERIFY(!w.status().isEmpty());
    QVERIFY(w.prompter.messages.isEmpty());
    // Mended, the same text draws.
    label->setText(QStringLiteral("f(t)"));
    QTest::mouseClick(w.get<QPushButton>(QStringLiteral("Command1_0")), Qt::LeftButton);
    QCOMPARE(int(w.window.state().graphCount), 1);
}

void TestWindow::yesSavesBeforeNewAndClose_data()
{
    QTest::addColumn<bool>("close");
    QTest::newRow("new") << false;
    QTest::newRow("close") << true;
}

void TestWindow::yesSavesBeforeNewAndClose()
{
    QFETCH(bool, close);
    ShownWindow w;
    typeFunction(w.window, QStringLiteral("x^2"));
    const QString file = m_home.filePath(QStringLiteral("before.png"));
    w.prompter.answers.push_back(model::Prompter::Button::Yes);
    w.prompter.fileNames.push_back(file);
    if (close)
        QVERIFY(w.window.close());
    else
        w.get<QAction>(QStringLiteral("mnunew"))->trigger();
    QVERIFY(QFile::exists(file));
    QCOMPARE(QImage(file).size(), w.window.plotArea()->image().size());
    QVERIFY(!w.window.state().documentChanged);
    if (!close)
        QCOMPARE(int(w.window.state().graphCount), 0);
}

void TestWindow::deleteTakesTheSelectedItem()
{
    ShownWindow w;
    typeFunction(w.window, QStringLiteral("x"));
    typeFunction(w.window, QStringLiteral("x^2"));
    auto* box = w.get<QComboBox>(QStringLiteral("imgcombfunc"));
    // The edited text differs from the selected item: the text names what goes.
    box->setCurrentIndex(0);
    box->setEditText(QStringLiteral("x^2"));
    w.get<QAction>(QStringLiteral("mnupop1"))->trigger();
    QCOMPARE(int(w.window.state().graphCount), 1);
    QCOMPARE(w.window.state().graphs[0].text, QStringLiteral("x"));
}

void TestWindow::tangentModePutsTangents()
{
    ShownWindow w;
    typeFunction(w.window, QStringLiteral("x^2"));
    w.get<QToolButton>(QStringLiteral("Command5_4"))->click();
    QVERIFY(w.get<QAction>(QStringLiteral("mnutangent"))->isChecked());
    const plot::PlotScale scale =
        plot::SetPlotScale(QSizeF(w.window.plotArea()->size()), w.window.state().view);
    QTest::mousePress(w.window.plotArea(), Qt::LeftButton, {}, scale.toPixel(1, 1).toPoint());
    const model::GraphEntry& entry = w.window.state().graphs[0];
    QCOMPARE(entry.marks.size(), std::size_t(1));
    QVERIFY(std::abs(entry.marks[0].x - 1) < 0.05);
    QVERIFY(std::abs(entry.marks[0].slope - 2) < 0.1);
    QVERIFY(!entry.marks[0].points.empty());
    QVERIFY2(w.status().contains(QStringLiteral("*x+")), qPrintable(w.status()));
    // The function's popup removes its tangents.
    w.get<QAction>(QStringLiteral("mnuremovetangents"))->trigger();
    QVERIFY(w.window.state().graphs[0].marks.empty());
}

void TestWindow::traceWalksTheCurve()
{
    ShownWindow w;
    typeFunction(w.window, QStringLiteral("sqrt(x)"));
    w.get<QToolButton>(QStringLiteral("Command5_3"))->click();
    QVERIFY(w.get<QAction>(QStringLiteral("mnutrace"))->isChecked());
    QVERIFY(w.get<QWidget>(QStringLiteral("traceControls"))->isVisible());
    // The curve starts at 0: the points left of it are passed over.
    QCOMPARE(w.get<QLabel>(QStringLiteral("StatusBar1_1"))->text(), QStringLiteral("TRACE sqrt(x)"));
    QCOMPARE(w.get<QLabel>(QStringLiteral("StatusBar1_2"))->text(), QStringLiteral("X = 0"));
    QVERIFY(w.get<QLabel>(QStringLiteral("StatusBar1_3"))->text().startsWith(QStringLiteral("Y = 0")));
    w.focus(w.get<QWidget>(QStringLiteral("Check2")));
    for (int i = 0; i < 50; ++i) // 50 of the 200 steps across the view: to x = 2.5
        QTest::keyClick(&w.window, Qt::Key_Right);
    const double x = w.window.state().trace.x;
    QVERIFY(std::abs(x - 2.5) < 0.01);
    const QString point = QLocale().decimalPoint();
    const QString xText = w.get<QLabel>(QStringLiteral("StatusBar1_2"))->text();
    QVERIFY2(xText.startsWith("X = 2" + point + "5"), qPrintable(xText));
    QVERIFY(xText.size() <= 4 + 1 + 1 + 7); // at most 7 decimals
    w.get<QToolButton>(QStringLiteral("tracePlay"))->click();
    QVERIFY(w.window.tracePlaying());
    QTRY_VERIFY(w.window.state().trace.x > x + 0.1);
    w.get<QToolButton>(QStringLiteral("tracePause"))->click();
    QVERIFY(!w.window.tracePlaying());
    w.get<QAction>(QStringLiteral("mnutrace"))->trigger();
    QVERIFY(!w.window.state().trace.on);
    QVERIFY(w.get<QLabel>(QStringLiteral("StatusBar1_1"))->text().isEmpty());
}

void TestWindow::traceStopsWithItsFunction_data()
{
    QTest::addColumn<bool>("byNew");
    QTest::newRow("new") << true;
    QTest::newRow("deleting the traced function") << false;
}

void TestWindow::traceStopsWithItsFunction()
{
    QFETCH(bool, byNew);
    ShownWindow w;
    w.prompter.answers.push_back(model::Prompter::Button::No);
    typeFunction(w.window, QStringLiteral("x^2"));
    w.get<QAction>(QStringLiteral("mnutrace"))->trigger();
    w.get<QToolButton>(QStringLiteral("tracePlay"))->click();
    if (byNew)
        w.get<QAction>(QStringLiteral("mnunew"))->trigger();
    else
        w.get<QAction>(QStringLiteral("mnupop1"))->trigger();
    QVERIFY(!w.window.state().trace.on);
    QVERIFY(!w.window.tracePlaying());
    QVERIFY(!w.get<QAction>(QStringLiteral("mnutrace"))->isChecked());
}

void TestWindow::labelsStayAtTheirWorldPosition()
{
    ShownWindow w;
    const plot::PlotScale scale =
        plot::SetPlotScale(QSizeF(w.window.plotArea()->size()), w.window.state().view);
    // A text dropped on the plot becomes a label there, π shown for ¶. (Without a real
    // drag in progress the application holds drop events back, so the plot reports it.)
    QVERIFY(w.window.plotArea()->acceptDrops());
    emit w.window.plotArea()->textDropped(QStringLiteral("A = 2") + QChar(0x00B6), scale.toPixel(2, 3));
    auto labels = w.window.plotArea()->findChildren<app::PlotLabel*>();
    QCOMPARE(labels.size(), 1);
    app::PlotLabel* label = labels[0];
    QCOMPARE(label->text(), QStringLiteral("A = 2") + QChar(0x03C0));
    QVERIFY(std::abs(label->worldX() - 2) < 0.05 && std::abs(label->worldY() - 3) < 0.05);

    // It follows a zoom: the world point stays under it.
    w.box("Text4_0")->setText(QStringLiteral("0"));
    QTest::keyClick(w.box("Text4_0"), Qt::Key_Return);
    const plot::PlotScale zoomed =
        plot::SetPlotScale(QSizeF(w.window.plotArea()->size()), w.window.state().view);
    QVERIFY((QPointF(label->pos()) - zoomed.toPixel(2, 3)).manhattanLength() <= 2);

    // Dragged elsewhere, it keeps its new world position; Delete removes it.
    QTest::mousePress(label, Qt::LeftButton, {}, QPoint(2, 2));
    QTest::mouseMove(label, QPoint(42, 2));
    QTest::mouseRelease(label, Qt::LeftButton, {}, QPoint(42, 2));
    QVERIFY(label->worldX() > 2.2);
    QTest::keyClick(label, Qt::Key_Delete);
    QTRY_VERIFY(w.window.plotArea()->findChildren<app::PlotLabel*>().isEmpty());

    // New removes every label.
    w.window.addPlotLabel(1, QStringLiteral("kept?"), QPointF(10, 10));
    w.prompter.answers.push_back(model::Prompter::Button::No);
    w.get<QAction>(QStringLiteral("mnunew"))->trigger();
    QTRY_VERIFY(w.window.plotArea()->findChildren<app::PlotLabel*>().isEmpty());
}

void TestWindow::doubleClickDropsAPointLabel()
{
    ShownWindow w;
    typeFunction(w.window, QStringLiteral("x^2"));
    w.window.state().coordinateSeparator = QStringLiteral("|");
    const plot::PlotScale scale =
        plot::SetPlotScale(QSizeF(w.window.plotArea()->size()), w.window.state().view);
    QTest::mouseDClick(w.window.plotArea(), Qt::LeftButton, {}, scale.toPixel(2, 4).toPoint());
    const auto labels = w.window.plotArea()->findChildren<app::PlotLabel*>();
    QCOMPARE(labels.size(), 1);
    const QString point = QLocale().decimalPoint();
    QVERIFY2(labels[0]->text().startsWith(QStringLiteral("(2")) &&
                 labels[0]->text().contains(QStringLiteral("| 4")),
             qPrintable(labels[0]->text()));
    // Far from every curve nothing is dropped.
    QTest::mouseDClick(w.window.plotArea(), Qt::LeftButton, {}, scale.toPixel(-4, -4).toPoint());
    QCOMPARE(w.window.plotArea()->findChildren<app::PlotLabel*>().size(), 1);
}

void TestWindow::formulaObjectIsTypesetAndEdited()
{
    ShownWindow w;
    auto* preview = w.get<QLabel>(QStringLiteral("OLE1"));
    w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QStringLiteral("x^2/2"));
    QVERIFY(!preview->pixmap().isNull());
    w.get<QComboBox>(QStringLiteral("imgcombfunc"))->setEditText(QStringLiteral("2x+"));
    QVERIFY(preview->pixmap().isNull()); // nothing to show for a formula that does not parse

    QLabel* object = w.window.addPlotPicture(QStringLiteral("sqrt(x)"), QPointF(30, 30));
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

void TestWindow::gripResizesThePlot()
{
    ShownWindow w;
    auto* grip = w.get<QLabel>(QStringLiteral("lblGrip"));
    const QSize full = w.window.plotArea()->size();
    QTest::mousePress(grip, Qt::LeftButton, {}, QPoint(4, 4));
    QMouseEvent move(QEvent::MouseMove, QPointF(4 - 60, 4 - 40), grip->mapToGlobal(QPointF(4 - 60, 4 - 40)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(grip, &move);
    QTest::mouseRelease(grip, Qt::LeftButton, {}, QPoint(-56, -36));
    QCOMPARE(w.window.plotArea()->size(), full - QSize(60, 40));
    // The grip stays in the plot's corner.
    QCOMPARE(grip->geometry().bottomRight(), w.window.plotArea()->rect().bottomRight());
}

QTEST_MAIN(TestWindow)
#include "test_window.moc"

void TestWindow::everyWidgetIsNamedAndExplained_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("accessible"); // "" when any name will do
    QTest::addColumn<QString>("tooltip");    // "" when any tooltip will do

    const std::map<int, QString> tokens{{16, "pi"},
                                        {20, "square root"},
                                        {21, "sine"},
                                        {28, "natural logarithm"},
                                        {29, "logarithm base 10"},
                                        {31, "clear"},
                                        {15, "power"}};
    for (int i = 0; i < 32; ++i) {
        const QString spoken = tokens.count(i) ? tokens.at(i) : QString();
        QTest::addRow("cmdtoken_%d", i) << QStringLiteral("cmdtoken_%1").arg(i) << spoken
                                        << (spoken.isEmpty() ? QString() : QStringLiteral("Keypad: ") + spoken);
    }
    QTest::newRow("label box") << "Text5" << "Function label" << "";
    QTest::newRow("function box") << "imgcombfunc" << "Function" << "";
    QTest::newRow("draw") << "Command1_0" << "Draw" << "";
    QTest::newRow("x min") << "Text4_0" << "x minimum" << "";
    QTest::newRow("y ticks") << "Text6_3" << "y ticks" << "0 for no ticks";
    QTest::newRow("plot") << "Picture1" << "Plot area" << "";
    QStringList others{"Text4_1", "Text4_2", "Text4_3", "Text6_0", "Text6_1", "Text6_2",
                       "fracinput_0", "fracinput_1", "fracinput_2", "Option1_0", "Option1_1",
                       "Option1_2", "Check1", "Check2", "Check3", "Check4", "Text2", "OLE1",
                       "lblGrip", "tracePlay", "tracePause", "traceStep"};
    for (int i = 0; i < 11; ++i)
        others << QStringLiteral("Command5_%1").arg(i);
    for (int i = 0; i < 4; ++i)
        others << QStringLiteral("Command3_%1").arg(i);
    for (const QString& name : others)
        QTest::newRow(qPrintable(name)) << name << QString() << QString();
}

void TestWindow::everyWidgetIsNamedAndExplained()
{
    QFETCH(QString, name);
    QFETCH(QString, accessible);
    QFETCH(QString, tooltip);
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    QWidget* widget = child<QWidget>(&window, name);
    QVERIFY(!widget->accessibleName().isEmpty());
    QVERIFY(!widget->toolTip().isEmpty());
    QVERIFY(!widget->accessibleName().contains(QLatin1Char('&')));
    if (!accessible.isEmpty())
        QCOMPARE(widget->accessibleName(), accessible);
    if (!tooltip.isEmpty())
        QCOMPARE(widget->toolTip(), tooltip);
}

void TestWindow::tabFollowsTheLayout()
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

void TestWindow::everyMenuCommandHasALetter()
{
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    for (QAction* menu : window.menuBar()->actions()) {
        QVERIFY2(menu->text().contains(QLatin1Char('&')), qPrintable(menu->text()));
        QStringList letters;
        const QList<QAction*> items = menu->menu()->actions();
        for (QAction* item : items) {
            if (item->isSeparator())
                continue;
            const QString text = item->menu() ? item->menu()->title() : item->text();
            const qsizetype mark = text.indexOf(QLatin1Char('&'));
            QVERIFY2(mark >= 0 && mark + 1 < text.size(), qPrintable(text));
            const QString letter = text.mid(mark + 1, 1).toLower();
            // No two commands of one menu share a letter.
            QVERIFY2(!letters.contains(letter), qPrintable(text));
            letters << letter;
        }
    }
}
