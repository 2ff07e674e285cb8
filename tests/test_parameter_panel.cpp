#include "app/area_dialog.h"
#include "app/parameter_panel.h"
#include "eval/formula.h"
#include "widget_lookup.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <cmath>

using namespace curvix;
using eval::Parameter;

using Bounds = std::optional<std::pair<double, double>>;
Q_DECLARE_METATYPE(Bounds)

namespace {

eval::ParameterList letters(const QString& names)
{
    eval::ParameterList list;
    for (QChar c : names)
        list.push_back({QString(c)});
    return list;
}

QString typed(const char* text) // a number as typed in this locale
{
    return QString::fromLatin1(text).replace(QLatin1Char('.'), QLocale().decimalPoint());
}

QList<double> values(const QSignalSpy& spy, bool dragging)
{
    QList<double> seen;
    for (const QList<QVariant>& signal : spy)
        if (signal[2].toBool() == dragging)
            seen << std::round(signal[1].toDouble() * 1000) / 1000;
    return seen;
}

void fill(QWidget* dialog, const char* box, const QString& text)
{
    auto* edit = child<QLineEdit>(dialog, QLatin1String(box));
    edit->clear();
    QTest::keyClicks(edit, text);
}

void pressOk(QWidget* dialog)
{
    child<QDialogButtonBox>(dialog, {})->button(QDialogButtonBox::Ok)->click();
}

} // namespace

class TestParameterPanel : public QObject {
    Q_OBJECT
private slots:
    void addProposesFreeLetter_data();
    void addProposesFreeLetter();
    void sliderAndValueBoxAgree_data();
    void sliderAndValueBoxAgree();
    void dragSurvivesNewParameters();
    void playSweepsAndStops_data();
    void playSweepsAndStops();
    void editorRefusesWithReason_data();
    void editorRefusesWithReason();
    void areaBounds_data();
    void areaBounds();
    void rowsFitAndTabAlong();
};

void TestParameterPanel::addProposesFreeLetter_data()
{
    QTest::addColumn<QString>("taken");
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("proposed");
    QTest::newRow("none yet") << "" << "x" << "a";
    QTest::newRow("e is Euler's number") << "abcd" << "x" << "f";
    QTest::newRow("a gap is filled") << "acd" << "x" << "b";
    QTest::newRow("not the variable") << "" << "a" << "b";
    QTest::newRow("every letter taken") << "abcdfghijklmnopqrstuvwyz" << "x" << "";
}

void TestParameterPanel::addProposesFreeLetter()
{
    QFETCH(QString, taken);
    QFETCH(QString, variable);
    QFETCH(QString, proposed);
    app::ParameterPanel panel;
    panel.setVariable(variable);
    panel.setParameters(letters(taken));
    child<QPushButton>(&panel, QStringLiteral("addParameter"))->click();
    auto* dialog = child<QDialog>(&panel, QStringLiteral("parameterDialog"));
    QCOMPARE(child<QLineEdit>(dialog, QStringLiteral("name"))->text(), proposed);
    QSignalSpy added(&panel, &app::ParameterPanel::addRequested);
    pressOk(dialog);
    QCOMPARE(added.size(), proposed.isEmpty() ? 0 : 1); // an empty name is refused
}

void TestParameterPanel::sliderAndValueBoxAgree_data()
{
    QTest::addColumn<Parameter>("parameter");
    QTest::addColumn<QString>("typedValue"); // typed into the value box first, when given
    QTest::addColumn<QList<int>>("keys");   // then pressed on the slider
    QTest::addColumn<double>("expected");
    const Parameter usual{"a", 1, -5, 5, 0.1};
    QTest::newRow("arrow: one step") << usual << "" << QList<int>{Qt::Key_Right} << 1.1;
    QTest::newRow("page: ten steps") << usual << "" << QList<int>{Qt::Key_PageUp} << 2.0;
    QTest::newRow("steps from -5 stay decimal") << Parameter{"a", -5, -5, 5, 0.1} << ""
                                                << QList<int>{Qt::Key_Right, Qt::Key_Right, Qt::Key_Right} << -4.7;
    QTest::newRow("stops at the minimum") << Parameter{"a", -4.5, -5, 5, 0.1} << ""
                                          << QList<int>{Qt::Key_PageDown} << -5.0;
    QTest::newRow("uneven range ends at maximum") << Parameter{"b", 0.9, 0, 1, 0.3} << ""
                                                  << QList<int>{Qt::Key_Right} << 1.0;
    QTest::newRow("typed value moves the slider") << usual << typed("2.5") << QList<int>{Qt::Key_Left} << 2.4;
    QTest::newRow("typed value alone") << usual << typed("-0.3") << QList<int>{} << -0.3;
}

void TestParameterPanel::sliderAndValueBoxAgree()
{
    QFETCH(Parameter, parameter);
    QFETCH(QString, typedValue);
    QFETCH(QList<int>, keys);
    QFETCH(double, expected);
    app::ParameterPanel panel;
    panel.setParameters({{"z"}, parameter});
    QSignalSpy changed(&panel, &app::ParameterPanel::valueChanged);
    auto* box = panel.findChildren<QDoubleSpinBox*>()[1];
    auto* slider = panel.findChildren<QSlider*>()[1];
    if (!typedValue.isEmpty()) {
        box->selectAll();
        QTest::keyClicks(box, typedValue);
        QTest::keyClick(box, Qt::Key_Return);
    }
    for (int key : keys)
        QTest::keyClick(slider, Qt::Key(key));
    QVERIFY(!changed.isEmpty());
    QCOMPARE(changed.last()[0].toInt(), 1);
    QCOMPARE(changed.last()[1].toDouble(), expected);
    QCOMPARE(changed.last()[2].toBool(), false);
    QCOMPARE(box->value(), expected);
    QVERIFY(values(changed, true).isEmpty());
}

// The drawing answers every slider position with new parameters; the slider must stay held.
void TestParameterPanel::dragSurvivesNewParameters()
{
    app::ParameterPanel panel;
    panel.setParameters({{"a"}});
    QSignalSpy changed(&panel, &app::ParameterPanel::valueChanged);
    auto* slider = child<QSlider>(&panel, QStringLiteral("parameterSlider"));
    slider->setSliderDown(true);
    slider->setValue(70);
    panel.setParameters({{"a", 2.0}, {"b"}});
    QCOMPARE(panel.findChildren<QSlider*>().size(), 2);
    QVERIFY(slider->isSliderDown());
    QCOMPARE(slider->value(), 70);
    slider->setSliderDown(false);
    QCOMPARE(values(changed, true), QList<double>{2.0});
    QCOMPARE(values(changed, false), QList<double>{2.0});
}

void TestParameterPanel::playSweepsAndStops_data()
{
    QTest::addColumn<int>("stop"); // 0 the play button again, 1 the slider taken, 2 the row removed
    QTest::newRow("play again") << 0;
    QTest::newRow("slider taken") << 1;
    QTest::newRow("row removed") << 2;
}

void TestParameterPanel::playSweepsAndStops()
{
    QFETCH(int, stop);
    app::ParameterPanel panel;
    panel.setParameters({{"a", 11.8, 0, 12, 0.1}});
    QSignalSpy changed(&panel, &app::ParameterPanel::valueChanged);
    auto* play = child<QToolButton>(&panel, QStringLiteral("parameterPlay"));
    play->click();
    QTRY_VERIFY_WITH_TIMEOUT(changed.size() >= 6, 5000);
    QCOMPARE(values(changed, true).mid(0, 6), (QList<double>{11.9, 12, 11.9, 11.8, 11.7, 11.6}));
    if (stop == 0)
        play->click();
    else if (stop == 1)
        child<QSlider>(&panel, QStringLiteral("parameterSlider"))->setSliderDown(true);
    else
        panel.setParameters({});
    QVERIFY(!panel.isPlaying(0));
    const qsizetype seen = changed.size();
    QTest::qWait(150);
    QCOMPARE(changed.size(), seen);
    QCOMPARE(values(changed, false).size(), stop == 2 ? 0 : 1); // the value where it stopped
}

void TestParameterPanel::editorRefusesWithReason_data()
{
    QTest::addColumn<QStringList>("texts"); // value, minimum, maximum, step
    QTest::addColumn<QString>("problem");   // empty: accepted
    QTest::newRow("accepted") << QStringList{"2", "-3p", "4", typed("0.5")} << "";
    QTest::newRow("minimum above maximum") << QStringList{"1", "5", "-5", "1"} << "minimum must be below";
    QTest::newRow("equal bounds") << QStringList{"1", "1", "1", "1"} << "minimum must be below";
    QTest::newRow("step 0") << QStringList{"1", "-5", "5", "0"} << "step must be above 0";
    QTest::newRow("value outside") << QStringList{"7", "-5", "5", "1"} << "between the minimum";
    QTest::newRow("empty box") << QStringList{"1", "", "5", "1"} << "Minimum box";
    QTest::newRow("sign alone") << QStringList{"1", "-5", "5", "-"} << "Step box";
}

void TestParameterPanel::editorRefusesWithReason()
{
    QFETCH(QStringList, texts);
    QFETCH(QString, problem);
    app::ParameterPanel panel;
    panel.setParameters({{"a"}, {"b"}});
    QSignalSpy changes(&panel, &app::ParameterPanel::changeRequested);
    panel.findChildren<QToolButton*>(QStringLiteral("parameterEdit"))[1]->click();
    auto* dialog = child<QDialog>(&panel, QStringLiteral("parameterDialog"));
    const char* boxes[] = {"value", "minimum", "maximum", "step"};
    for (int i = 0; i < 4; ++i)
        fill(dialog, boxes[i], texts[i]);
    pressOk(dialog);
    if (problem.isEmpty()) {
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes[0][0].toInt(), 1);
        QCOMPARE(changes[0][1].value<Parameter>(), (Parameter{"b", 2, -3 * eval::kPiValue, 4, 0.5}));
        return;
    }
    QVERIFY(changes.isEmpty());
    QVERIFY(dialog->isVisible());
    QVERIFY2(child<QLabel>(dialog, QStringLiteral("problem"))->text().contains(problem),
             qPrintable(child<QLabel>(dialog, QStringLiteral("problem"))->text()));
}

void TestParameterPanel::areaBounds_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("problem"); // the box named when OK is refused; then Cancel
    QTest::addColumn<Bounds>("bounds");
    QTest::newRow("pi") << "0" << "p" << "" << std::optional(std::pair(0.0, eval::kPiValue));
    QTest::newRow("decimals, reversed") << typed("2.5") << "-2p" << "" << std::optional(std::pair(2.5, -2 * eval::kPiValue));
    QTest::newRow("empty From") << "" << "1" << "From" << Bounds();
    QTest::newRow("sign alone in To") << "1" << "-" << "To" << Bounds();
}

void TestParameterPanel::areaBounds()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, problem);
    QFETCH(Bounds, bounds);
    QString shown;
    QString said;
    QTimer::singleShot(0, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        shown = child<QLineEdit>(dialog, QStringLiteral("areaFrom"))->text() + QLatin1Char(' ') +
                child<QLineEdit>(dialog, QStringLiteral("areaTo"))->text();
        fill(dialog, "areaFrom", from);
        fill(dialog, "areaTo", to);
        pressOk(dialog);
        if (dialog->isVisible()) {
            said = child<QLabel>(dialog, QStringLiteral("problem"))->text();
            child<QDialogButtonBox>(dialog, {})->button(QDialogButtonBox::Cancel)->click();
        }
    });
    QCOMPARE(app::askAreaBounds(nullptr, QStringLiteral("sin(x)"), -eval::kPiValue / 2, 3.25), bounds);
    const QString point = QLocale().decimalPoint();
    QCOMPARE(shown, QStringLiteral("-0") + point + QStringLiteral("5π 3") + point + QStringLiteral("25"));
    QCOMPARE(said.contains(QStringLiteral("The %1 box").arg(problem)), !problem.isEmpty());
}

// Three rows as the dock shows them: nothing cut off, and Tab walks each row, then Add.
// CURVIX_SHOT_DIR keeps a picture of the panel to look at.
void TestParameterPanel::rowsFitAndTabAlong()
{
    app::ParameterPanel panel;
    panel.setParameters({{"a", 1.5}, {"b", -0.25, -1, 1, 0.01}, {"c", 100, -1000, 1000, 1}});
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    for (QDoubleSpinBox* box : panel.findChildren<QDoubleSpinBox*>())
        QVERIFY(box->width() >= box->sizeHint().width());
    if (const QString dir = qEnvironmentVariable("CURVIX_SHOT_DIR"); !dir.isEmpty())
        panel.grab().save(dir + QStringLiteral("/parameter-panel.png"));
    panel.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    panel.findChild<QDoubleSpinBox*>()->setFocus();
    QStringList names{QApplication::focusWidget()->accessibleName()};
    QStringList expected;
    for (const char* name : {"a", "b", "c"})
        for (const char* control : {"Value of %1", "Slider for %1", "Play %1", "Edit %1", "Remove %1"})
            expected << QString::fromLatin1(control).arg(QLatin1String(name));
    expected << QStringLiteral("Add a parameter");
    while (names.size() < expected.size()) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names << QApplication::focusWidget()->accessibleName();
    }
    QCOMPARE(names, expected);
}

QTEST_MAIN(TestParameterPanel)
#include "test_parameter_panel.moc"
