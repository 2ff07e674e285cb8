#include "app/area_dialog.h"
#include "app/parameter_panel.h"
#include "eval/formula.h"
#include "widget_lookup.h"

#include <QtTest>
#include <QtWidgets>

using namespace curvix;
using eval::Parameter;
using Bounds = std::optional<std::pair<double, double>>;
Q_DECLARE_METATYPE(Bounds)

namespace {

QString typed(const char* text) // a number as typed in this locale
{
    return QString::fromUtf8(text).replace(QLatin1Char('.'), QLocale().decimalPoint());
}

// The values sent with this dragging flag, to three decimals.
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

} // namespace

class TestParameterPanel : public QObject {
    Q_OBJECT
private slots:
    void addProposesFreeLetter_data()
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

    void addProposesFreeLetter()
    {
        QFETCH(QString, taken);
        QFETCH(QString, variable);
        QFETCH(QString, proposed);
        app::ParameterPanel panel;
        panel.setVariable(variable);
        eval::ParameterList list;
        for (QChar c : taken)
            list.push_back({QString(c)});
        panel.setParameters(list);
        child<QPushButton>(&panel, QStringLiteral("addParameter"))->click();
        auto* dialog = child<QDialog>(&panel, QStringLiteral("parameterDialog"));
        QCOMPARE(child<QLineEdit>(dialog, QStringLiteral("name"))->text(), proposed);
    }

    void sliderAndValueBoxAgree_data()
    {
        QTest::addColumn<Parameter>("parameter");
        QTest::addColumn<QString>("typedValue"); // typed into the value box first, when given
        QTest::addColumn<QList<int>>("keys");   // then pressed on the slider
        QTest::addColumn<double>("expected");
        const Parameter usual{"a", 1, -5, 5, 0.1};
        QTest::newRow("arrow: one step") << usual << "" << QList<int>{Qt::Key_Right} << 1.1;
        QTest::newRow("page: ten steps") << usual << "" << QList<int>{Qt::Key_PageUp} << 2.0;
        QTest::newRow("steps from -5 stay decimal")
            << Parameter{"a", -5, -5, 5, 0.1} << "" << QList<int>{Qt::Key_Right, Qt::Key_Right, Qt::Key_Right} << -4.7;
        QTest::newRow("typed sign, stops at the minimum") << usual << typed("-4.5") << QList<int>{Qt::Key_PageDown} << -5.0;
        QTest::newRow("uneven range ends at maximum") << Parameter{"b", 0.9, 0, 1, 0.3} << "" << QList<int>{Qt::Key_Right} << 1.0;
        QTest::newRow("typed value moves the slider") << usual << typed("2.5") << QList<int>{Qt::Key_Left} << 2.4;
    }

    void sliderAndValueBoxAgree()
    {
        QFETCH(Parameter, parameter);
        QFETCH(QString, typedValue);
        QFETCH(QList<int>, keys);
        QFETCH(double, expected);
        app::ParameterPanel panel;
        panel.setParameters({{"z"}, parameter});
        QSignalSpy changed(&panel, &app::ParameterPanel::valueChanged);
        auto* box = panel.findChildren<QDoubleSpinBox*>()[1];
        if (!typedValue.isEmpty()) {
            box->selectAll();
            QTest::keyClicks(box, typedValue + QLatin1Char('\r'));
        }
        for (int key : keys)
            QTest::keyClick(panel.findChildren<QSlider*>()[1], Qt::Key(key));
        QVERIFY(!changed.isEmpty());
        QCOMPARE(changed.last()[0].toInt(), 1);
        QCOMPARE(values(changed, false).last(), expected);
        QCOMPARE(box->value(), expected);
        QVERIFY(values(changed, true).isEmpty());
    }

    // The drawing answers every slider position with new parameters; the slider must stay held.
    void dragSurvivesNewParameters()
    {
        app::ParameterPanel panel;
        panel.setParameters({{"a"}});
        QSignalSpy changed(&panel, &app::ParameterPanel::valueChanged);
        auto* slider = child<QSlider>(&panel, QStringLiteral("parameterSlider"));
        slider->setSliderDown(true);
        slider->setValue(70);
        panel.setParameters({{"a", 1.5}, {"b"}}); // an answer to an earlier position
        QVERIFY(slider->isSliderDown());
        QCOMPARE(slider->value(), 70);
        slider->setSliderDown(false);
        QCOMPARE(values(changed, true), QList<double>{2.0});
        QCOMPARE(values(changed, false), QList<double>{2.0});
    }

    void playSweepsAndStops_data()
    {
        QTest::addColumn<int>("stop"); // 0 the play button again, 1 the slider taken, 2 the row removed
        QTest::newRow("play again") << 0;
        QTest::newRow("slider taken") << 1;
        QTest::newRow("row removed") << 2;
    }

    void playSweepsAndStops()
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

    void editorRefusesWithReason_data()
    {
        QTest::addColumn<QStringList>("texts"); // value, minimum, maximum, step
        QTest::addColumn<QString>("problem");   // empty: accepted
        QTest::newRow("accepted") << QStringList{"2", "-3p", "4", typed("0.5")} << "";
        QTest::newRow("minimum above maximum") << QStringList{"1", "5", "-5", "1"} << "minimum must be below";
        QTest::newRow("step 0") << QStringList{"1", "-5", "5", "0"} << "step must be above 0";
        QTest::newRow("value outside") << QStringList{"7", "-5", "5", "1"} << "between the minimum";
        QTest::newRow("empty box") << QStringList{"1", "", "5", "1"} << "Minimum box";
        QTest::newRow("sign alone") << QStringList{"1", "-5", "5", "-"} << "Step box";
    }

    void editorRefusesWithReason()
    {
        QFETCH(QStringList, texts);
        QFETCH(QString, problem);
        app::ParameterPanel panel;
        panel.setParameters({{"a"}, {"b"}});
        QSignalSpy changes(&panel, &app::ParameterPanel::changeRequested);
        // The window answers at once, rebuilding the rows while the dialog's answer is sent.
        connect(&panel, &app::ParameterPanel::changeRequested, &panel,
                [&panel](int, const Parameter& p) { panel.setParameters({{"a"}, p}); });
        panel.findChildren<QToolButton*>(QStringLiteral("parameterEdit"))[1]->click();
        auto* dialog = child<QDialog>(&panel, QStringLiteral("parameterDialog"));
        for (int i = 0; i < 4; ++i)
            fill(dialog, std::array{"value", "minimum", "maximum", "step"}[i], texts[i]);
        child<QDialogButtonBox>(dialog, {})->button(QDialogButtonBox::Ok)->click();
        QCOMPARE(changes.size(), problem.isEmpty() ? 1 : 0);
        QCOMPARE(dialog->isVisible(), !problem.isEmpty());
        if (problem.isEmpty())
            QCOMPARE(changes[0], (QList<QVariant>{1, QVariant::fromValue(Parameter{"b", 2, -3 * eval::kPiValue, 4, 0.5})}));
        else
            QVERIFY(child<QLabel>(dialog, QStringLiteral("problem"))->text().contains(problem));
    }

    void areaBounds_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("problem"); // the box named when OK is refused; then Cancel
        QTest::addColumn<Bounds>("bounds");
        QTest::newRow("pi") << "0" << "p" << "" << Bounds(std::pair(0.0, eval::kPiValue));
        QTest::newRow("decimals, reversed") << typed("2.5") << "-2p" << "" << Bounds(std::pair(2.5, -2 * eval::kPiValue));
        QTest::newRow("empty From") << "" << "1" << "From" << Bounds();
        QTest::newRow("sign alone in To") << "1" << "-" << "To" << Bounds();
        QTest::newRow("calculations") << "-pi/2" << "3p/4+1/4" << "" << Bounds(std::pair(-eval::kPiValue / 2, 0.75 * eval::kPiValue + 0.25));
        QTest::newRow("the variable is no number") << "0" << "2x" << "To" << Bounds();
    }

    void areaBounds()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, problem);
        QFETCH(Bounds, bounds);
        QString shown, said;
        QTimer::singleShot(0, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            shown = child<QLineEdit>(dialog, QStringLiteral("areaFrom"))->text() + QLatin1Char(' ') +
                    child<QLineEdit>(dialog, QStringLiteral("areaTo"))->text();
            fill(dialog, "areaFrom", from);
            fill(dialog, "areaTo", to);
            child<QDialogButtonBox>(dialog, {})->button(QDialogButtonBox::Ok)->click();
            said = child<QLabel>(dialog, QStringLiteral("problem"))->text();
            if (dialog->isVisible())
                child<QDialogButtonBox>(dialog, {})->button(QDialogButtonBox::Cancel)->click();
        });
        QCOMPARE(app::askAreaBounds(nullptr, QStringLiteral("sin(x)"), QStringLiteral("x"), -eval::kPiValue / 2, 3.25), bounds);
        QCOMPARE(shown, typed("-0.5π 3.25"));
        QCOMPARE(said.contains(QStringLiteral("The %1 box").arg(problem)), !problem.isEmpty());
    }

    // Three rows as the dock shows them: Tab walks each row, then Add, and says what each is.
    // CURVIX_SHOT_DIR keeps a picture of the panel to look at.
    void rowsTabAlongWithNames()
    {
        app::ParameterPanel panel;
        panel.setParameters({{"a", 1.5}, {"b", -0.25, -1, 1, 0.01}, {"c", 100, -1000, 1000, 1}});
        panel.show();
        panel.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        if (const QString dir = qEnvironmentVariable("CURVIX_SHOT_DIR"); !dir.isEmpty())
            panel.grab().save(dir + QStringLiteral("/parameter-panel.png"));
        panel.findChild<QDoubleSpinBox*>()->setFocus();
        QStringList names{QApplication::focusWidget()->accessibleName()}, expected;
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
};

QTEST_MAIN(TestParameterPanel)
#include "test_parameter_panel.moc"
