#include "app/frmgraph.h"
#include "app/function_box.h"
#include "app/plot_widget.h"
#include "scripted_prompter.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace curvix;
using app::frmgraph;

namespace {

template <typename W>
W* child(QObject* parent, const QString& name)
{
    W* w = parent->findChild<W*>(name);
    if (!w)
        qFatal("no widget %s", qPrintable(name));
    return w;
}

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
    void settingsWindow_data();
    void settingsWindow();
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

QTEST_MAIN(TestWindow)
#include "test_window.moc"
