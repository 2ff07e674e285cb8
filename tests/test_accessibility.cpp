// What a screen reader, a keyboard user and a small or dense screen meet: the accessible
// tree of every window, the status bar's read-outs, a keyboard way for the plot's mouse
// actions, and the first window at the usual scale factors.
#include "app/frmabout1.h"
#include "app/frmgraph.h"
#include "app/plot_labels.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

using namespace curvix;
using app::frmgraph;

namespace {

bool isInteractive(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::MenuItem:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::PageTab:
        return true;
    default:
        return false;
    }
}

// The text a control shows on screen, where it shows one.
QString shownText(QObject* object)
{
    if (auto* edit = qobject_cast<QLineEdit*>(object))
        return edit->echoMode() == QLineEdit::Normal ? edit->text() : QString();
    if (auto* box = qobject_cast<QComboBox*>(object))
        return box->currentText();
    if (auto* spin = qobject_cast<QAbstractSpinBox*>(object))
        return spin->text();
    return {};
}

// Qt on Linux gives a box its text as its name and leaves the name proper to the box's own
// accessible name or to its label's relation, which screen readers read.
QString nameOf(QAccessibleInterface* iface)
{
    if (iface->role() != QAccessible::ComboBox)
        return iface->text(QAccessible::Name);
    if (auto* w = qobject_cast<QWidget*>(iface->object()); w && !w->accessibleName().isEmpty())
        return w->accessibleName();
    const auto labels = iface->relations(QAccessible::Labelled);
    return labels.isEmpty() ? QString() : labels.first().first->text(QAccessible::Name);
}

// The faults of one accessible subtree, one line each, named by its path of roles.
void collectProblems(QAccessibleInterface* iface, const QString& path, QStringList& problems, int depth = 0)
{
    if (!iface || depth > 40 || iface->state().invisible)
        return;
    const QAccessible::Role role = iface->role();
    const QString here = path + QLatin1Char('/') +
                         (iface->object() && !iface->object()->objectName().isEmpty()
                              ? iface->object()->objectName()
                              : QString::number(role, 16));
    if (isInteractive(role)) {
        const QString name = nameOf(iface).trimmed();
        const QString shown = shownText(iface->object());
        if (name.isEmpty())
            problems << here + QStringLiteral(": no name");
        else if (name == shown)
            problems << here + QStringLiteral(": named only by its value '%1'").arg(shown);
        if (!shown.isEmpty() && iface->text(QAccessible::Value) != shown)
            problems << here + QStringLiteral(": value '%1' for '%2'").arg(iface->text(QAccessible::Value), shown);
    }
    for (int i = 0; i < iface->childCount(); ++i)
        collectProblems(iface->child(i), here, problems, depth + 1);
}

QWidget* topLevel(const char* name)
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->objectName() == QLatin1String(name))
            return w;
    return nullptr;
}

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
    void trigger(const char* action) { child<QAction>(&window, QLatin1String(action))->trigger(); }
    void draw(const QString& formula)
    {
        auto* box = child<QComboBox>(&window, QStringLiteral("imgcombfunc"));
        box->lineEdit()->setText(formula);
        QTest::keyClick(box->lineEdit(), Qt::Key_Return);
    }
    model::ViewWindow view() const { return window.state().view; }
};

using Opener = std::function<QWidget*(ShownWindow&)>;

// Runs the first window in a child process with the given scale factor on a 1366x768
// screen, and reads back what it measured.
QStringList firstWindowAt(double scale)
{
    QTemporaryDir dir;
    QFile config(dir.filePath(QStringLiteral("screen.json")));
    if (!config.open(QIODevice::WriteOnly))
        return {};
    config.write(R"({"screens": [{"name": "s", "x": 0, "y": 0, "width": 1366, "height": 768,
                                  "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    config.close();
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen:configfile=") + config.fileName());
    env.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(scale));
    env.insert(QStringLiteral("HOME"), dir.path());
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), dir.filePath(QStringLiteral("config")));
    child.setProcessEnvironment(env);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--first-window")});
    if (!child.waitForFinished(60000))
        return {QStringLiteral("timeout")};
    return QString::fromUtf8(child.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

Q_DECLARE_METATYPE(Opener)

class TestAccessibility : public QObject {
    Q_OBJECT

    QTemporaryDir m_home;

private slots:
    void initTestCase()
    {
        QVERIFY(useHomeOfItsOwn(m_home));
        QCoreApplication::setOrganizationName(QStringLiteral("Curvix"));
        QCoreApplication::setApplicationName(QStringLiteral("Curvix"));
    }

    void init() { QSettings().clear(); }

    void everyControlIsNamed_data()
    {
        QTest::addColumn<Opener>("open");
        const auto main = [](ShownWindow& s) -> QWidget* { return &s.window; };
        QTest::newRow("main window") << Opener(main);
        QTest::newRow("main window, trace") << Opener([](ShownWindow& s) -> QWidget* {
            s.draw(QStringLiteral("x^2"));
            s.trigger("mnutrace");
            return &s.window;
        });
        QTest::newRow("main window, fractions of pi") << Opener([](ShownWindow& s) -> QWidget* {
            child<QCheckBox>(&s.window, QStringLiteral("Check1"))->click();
            child<QMenu>(&s.window, QStringLiteral("mnupop2"))->close();
            s.trigger("mnupop22");
            const bool shown = child<QWidget>(&s.window, QStringLiteral("fracinput_0"))->isVisible();
            return shown ? &s.window : nullptr;
        });
        QTest::newRow("main window, zoom box") << Opener([](ShownWindow& s) -> QWidget* {
            s.trigger("mnuzoomin");
            return &s.window;
        });
        for (const char* name : {"mnupop", "mnupop2", "tangentPopup"})
            QTest::addRow("popup %s", name) << Opener([name](ShownWindow& s) -> QWidget* {
                auto* popup = child<QMenu>(&s.window, QLatin1String(name));
                popup->popup(s.window.geometry().center());
                return popup;
            });
        const auto fromMenu = [](const char* action, const char* window, const char* formula) {
            return Opener([=](ShownWindow& s) -> QWidget* {
                if (formula)
                    s.draw(QLatin1String(formula));
                s.trigger(action);
                return topLevel(window);
            });
        };
        QTest::newRow("settings") << fromMenu("mnucoord", "frmsettings", nullptr);
        QTest::newRow("guide lines") << fromMenu("mnuvertical", "frmtangent", nullptr);
        QTest::newRow("demonstration") << fromMenu("mnudemo", "frmtangent", "sin(x)");
        QTest::newRow("value table") << fromMenu("mnutable", "valueTable", "x^2");
        QTest::newRow("help") << fromMenu("mnucont", "helpWindow", nullptr);
        QTest::newRow("about") << Opener([](ShownWindow& s) -> QWidget* {
            auto* about = new app::frmAbout1(s.prompter, &s.window);
            about->setAttribute(Qt::WA_DeleteOnClose);
            about->show();
            return about;
        });
    }

    // Every button, box, edit and menu command has a name and a role, and a box says the
    // text it shows.
    void everyControlIsNamed()
    {
        QFETCH(Opener, open);
        ShownWindow s;
        QWidget* window = open(s);
        QVERIFY(window);
        QTRY_VERIFY(window->isVisible());
        QAccessibleInterface* root = QAccessible::queryAccessibleInterface(window);
        QVERIFY(root);
        QStringList problems;
        collectProblems(root, QString(), problems);
        // The menu bar's menus are walked closed: their commands are children of their items.
        QCOMPARE(problems.join(QLatin1Char('\n')), QString());
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w != &s.window && w->isVisible())
                w->close();
    }

    void statusPanelsSpeak_data()
    {
        QTest::addColumn<Opener>("act");
        QTest::addColumn<int>("panel");
        QTest::newRow("pointer position") << Opener([](ShownWindow& s) -> QWidget* {
            QTest::mouseMove(s.window.plotArea(), QPoint(40, 30));
            return nullptr;
        }) << 5;
        for (int panel = 1; panel <= 4; ++panel)
            QTest::addRow("trace, panel %d", panel) << Opener([](ShownWindow& s) -> QWidget* {
                s.draw(QStringLiteral("x^2"));
                s.trigger("mnutrace");
                QTest::keyClick(s.window.plotArea(), Qt::Key_Right);
                return nullptr;
            }) << panel;
    }

    // A panel's name says what it is and stays; its value is the text shown. (Without a
    // platform bridge Qt sends no change events, so those are not seen here.)
    void statusPanelsSpeak()
    {
        QFETCH(Opener, act);
        QFETCH(int, panel);
        ShownWindow s;
        auto* label = child<QLabel>(&s.window, QStringLiteral("StatusBar1_%1").arg(panel));
        QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(label);
        QVERIFY(iface);
        const QString name = iface->text(QAccessible::Name);
        act(s);
        QTRY_VERIFY(!label->text().isEmpty());
        QCOMPARE(iface->text(QAccessible::Value), label->text());
        QVERIFY(iface->textInterface());
        QCOMPARE(iface->textInterface()->text(0, iface->textInterface()->characterCount()), label->text());
        QVERIFY(!iface->text(QAccessible::Name).isEmpty());
        QVERIFY(!iface->text(QAccessible::Name).contains(label->text()));
        if (panel == 5)
            QCOMPARE(iface->text(QAccessible::Name), name);
        // Five different parts, five different names.
        QSet<QString> names;
        for (int i = 1; i <= 5; ++i)
            names << child<QLabel>(&s.window, QStringLiteral("StatusBar1_%1").arg(i))->accessibleName();
        QCOMPARE(names.size(), 5);
    }

    void keyboardReachesThePlot_data()
    {
        QTest::addColumn<QKeyCombination>("key");
        QTest::addColumn<bool>("zoomBoxFirst");
        // The change of the view: signs of its left, bottom and width (-1, 0, 1).
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("bottom");
        QTest::addColumn<int>("width");
        QTest::newRow("Enter confirms the zoom box") << (Qt::NoModifier | Qt::Key_Return) << true << 1 << 1 << -1;
        QTest::newRow("Enter on the keypad too") << (Qt::KeypadModifier | Qt::Key_Enter) << true << 1 << 1 << -1;
        QTest::newRow("Page Up zooms in as the wheel") << (Qt::NoModifier | Qt::Key_PageUp) << false << 1 << 1 << -1;
        QTest::newRow("Page Down zooms out") << (Qt::NoModifier | Qt::Key_PageDown) << false << -1 << -1 << 1;
        QTest::newRow("Ctrl+Right pans right") << (Qt::ControlModifier | Qt::Key_Right) << false << 1 << 0 << 0;
        QTest::newRow("Ctrl+Left pans left") << (Qt::ControlModifier | Qt::Key_Left) << false << -1 << 0 << 0;
        QTest::newRow("Ctrl+Up pans up") << (Qt::ControlModifier | Qt::Key_Up) << false << 0 << 1 << 0;
        QTest::newRow("Ctrl+Down pans down") << (Qt::ControlModifier | Qt::Key_Down) << false << 0 << -1 << 0;
    }

    // The plot's mouse actions by keyboard, with the focus on the plot.
    void keyboardReachesThePlot()
    {
        QFETCH(QKeyCombination, key);
        QFETCH(bool, zoomBoxFirst);
        QFETCH(int, left);
        QFETCH(int, bottom);
        QFETCH(int, width);
        ShownWindow s;
        QWidget* target = s.window.plotArea();
        target->setFocus();
        if (zoomBoxFirst) {
            s.trigger("mnuzoomin");
            target = QApplication::focusWidget();
            QVERIFY(target && target->objectName() == QLatin1String("piczoombox"));
        }
        const model::ViewWindow before = s.view();
        QTest::keyClick(target, key.key(), key.keyboardModifiers());
        const model::ViewWindow after = s.view();
        const auto sign = [](double d) { return std::abs(d) < 1e-9 ? 0 : d > 0 ? 1 : -1; };
        QCOMPARE(sign(after.XMin - before.XMin), left);
        QCOMPARE(sign(after.YMin - before.YMin), bottom);
        QCOMPARE(sign((after.XMax - after.XMin) - (before.XMax - before.XMin)), width);
    }

    // Ctrl+0 goes back to the view before the first zoom, whatever came between.
    void ctrlZeroZoomsToTheBeginning()
    {
        ShownWindow s;
        const model::ViewWindow start = s.view();
        for (int i = 0; i < 2; ++i) {
            s.trigger("mnuzoomin");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        QTest::keyClick(s.window.plotArea(), Qt::Key_Right, Qt::ControlModifier);
        QVERIFY(s.view() != start);
        QTest::keyClick(s.window.plotArea(), Qt::Key_0, Qt::ControlModifier);
        QVERIFY(s.view() == start);
    }

    void enterActsAtTheTrace_data()
    {
        QTest::addColumn<bool>("tangentMode");
        QTest::newRow("a point label") << false;
        QTest::newRow("a tangent in tangent mode") << true;
    }

    // Enter on the plot does what a click or a double-click does, where the trace stands.
    void enterActsAtTheTrace()
    {
        QFETCH(bool, tangentMode);
        ShownWindow s;
        s.draw(QStringLiteral("x^2"));
        s.trigger("mnutrace");
        QWidget* plot = s.window.plotArea();
        for (int i = 0; i < 15; ++i)
            QTest::keyClick(plot, Qt::Key_Right);
        if (tangentMode)
            s.trigger("mnutangent");
        const auto labels = [plot] { return plot->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly).size(); };
        const qsizetype labelsBefore = labels();
        QTest::keyClick(plot, Qt::Key_Return);
        const model::GraphEntry& entry = s.window.state().graphs.at(0);
        QCOMPARE(entry.marks.size(), std::size_t(tangentMode ? 1 : 0));
        if (tangentMode)
            QVERIFY(std::abs(entry.marks[0].x - s.window.state().trace.x) < 0.05);
        QCOMPARE(labels(), labelsBefore + (tangentMode ? 0 : 1));
    }

    // Shift+F10 on the plot opens the tools, as a right click does, and sets where Fill fills.
    void shiftF10OpensThePlotsMenu()
    {
        ShownWindow s;
        auto* fill = child<QAction>(&s.window, QStringLiteral("mnufill"));
        fill->setEnabled(false);
        QTest::keyClick(s.window.plotArea(), Qt::Key_F10, Qt::ShiftModifier);
        auto* tools = child<QMenu>(&s.window, QStringLiteral("mnutool"));
        QTRY_VERIFY(tools->isVisible());
        QVERIFY(fill->isEnabled());
        tools->close();
    }

    void labelsMoveByKeys_data()
    {
        QTest::addColumn<QKeyCombination>("key");
        QTest::addColumn<QPoint>("moved");
        QTest::newRow("Right") << (Qt::NoModifier | Qt::Key_Right) << QPoint(1, 0);
        QTest::newRow("Shift+Up, a longer step") << (Qt::ShiftModifier | Qt::Key_Up) << QPoint(0, -10);
    }

    // A focused label takes the arrow keys from the window's shortcuts (trace, plot size),
    // and keeps its new place when the plot is drawn again.
    void labelsMoveByKeys()
    {
        QFETCH(QKeyCombination, key);
        QFETCH(QPoint, moved);
        ShownWindow s;
        QLabel* label = s.window.plotView().labels().addText(QStringLiteral("Vertex"), QPoint(60, 60));
        label->setFocus();
        QTRY_VERIFY(label->hasFocus());
        const QPoint before = label->pos();
        const QSize plotSize = s.window.plotArea()->size();
        QTest::keyClick(label, key.key(), key.keyboardModifiers());
        s.window.redraw();
        QCOMPARE(label->pos() - before, moved);
        QCOMPARE(s.window.plotArea()->size(), plotSize);
    }

    void firstWindowFits_data()
    {
        QTest::addColumn<double>("scale");
        for (double scale : {1.0, 1.25, 1.5, 2.0})
            QTest::addRow("scale %g", scale) << scale;
    }

    // With fresh settings the first window lies within a 1366x768 screen, every control at
    // least at its smallest size, and the plot still there.
    void firstWindowFits()
    {
        QFETCH(double, scale);
        const QStringList lines = firstWindowAt(scale);
        QVERIFY2(lines.contains(QStringLiteral("shown")), qPrintable(lines.join(QLatin1Char('\n'))));
        QStringList faults = lines;
        faults.removeAll(QStringLiteral("shown"));
        QCOMPARE(faults.join(QLatin1Char('\n')), QString());
    }

    void paintedIconsAreSharp_data()
    {
        QTest::addColumn<double>("ratio");
        // A fractional ratio, and one above the size the pictures were once drawn at.
        for (double ratio : {1.25, 3.0})
            QTest::addRow("ratio %g", ratio) << ratio;
    }

    // The tool bar's and the demonstration's pictures are drawn for the screen's density,
    // never scaled up from a smaller one.
    void paintedIconsAreSharp()
    {
        QFETCH(double, ratio);
        ScriptedPrompter prompter;
        frmgraph window(prompter);
        QList<QAbstractButton*> buttons;
        for (int i = 0; i < 11; ++i)
            buttons << child<QAbstractButton>(&window, QStringLiteral("Command5_%1").arg(i));
        for (int i = 0; i < 4; ++i)
            buttons << child<QAbstractButton>(&window, QStringLiteral("Command3_%1").arg(i));
        for (QAbstractButton* button : buttons) {
            const QSize logical = button->iconSize();
            const QPixmap pixmap = button->icon().pixmap(logical, ratio);
            QCOMPARE(pixmap.size(), (QSizeF(logical) * ratio).toSize());
            QCOMPARE(pixmap.devicePixelRatio(), ratio);
            const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
            bool inked = false;
            for (int y = 0; y < image.height() && !inked; ++y)
                for (int x = 0; x < image.width() && !inked; ++x)
                    inked = qAlpha(image.pixel(x, y)) > 0;
            QVERIFY2(inked, qPrintable(button->objectName()));
        }
    }
};

// The child process of firstWindowFits: one line per fault, and "shown" at the end.
static int measureFirstWindow(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTemporaryDir home;
    useHomeOfItsOwn(home);
    QCoreApplication::setOrganizationName(QStringLiteral("Curvix"));
    QCoreApplication::setApplicationName(QStringLiteral("Curvix"));
    ScriptedPrompter prompter;
    frmgraph window(prompter);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return 1;
    QTextStream out(stdout);
    const QRect screen = window.screen()->availableGeometry();
    if (!screen.contains(window.frameGeometry()))
        out << "window " << window.frameGeometry().width() << 'x' << window.frameGeometry().height()
            << " outside the screen " << screen.width() << 'x' << screen.height() << '\n';
    // A control squeezed below its smallest size is cut off; the side panel scrolls instead.
    const auto* side = window.findChild<QScrollArea*>(QStringLiteral("sideScroll"));
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisible() || (side && side->widget()->isAncestorOf(w)) || w->inherits("QMenu"))
            continue;
        const QSize least = w->minimumSize().isNull() ? w->minimumSizeHint() : w->minimumSize();
        if (w->sizePolicy().horizontalPolicy() != QSizePolicy::Ignored && least.isValid() &&
            (w->width() < least.width() || w->height() < least.height()))
            out << w->metaObject()->className() << ' ' << w->objectName() << ' ' << w->width() << 'x'
                << w->height() << " below " << least.width() << 'x' << least.height() << '\n';
    }
    if (window.plotArea()->width() < 100 || window.plotArea()->height() < 60)
        out << "plot " << window.plotArea()->width() << 'x' << window.plotArea()->height() << '\n';
    // A desktop's panel and the window's title bar take about 64 pixels more.
    const QSize least = window.minimumSizeHint();
    if (least.width() > screen.width() || least.height() + 64 > screen.height())
        out << "smallest window " << least.width() << 'x' << least.height() << '\n';
    out << "shown\n";
    return 0;
}

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[argc - 1], "--first-window") == 0)
        return measureFirstWindow(argc, argv);
    QApplication application(argc, argv);
    TestAccessibility test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "test_accessibility.moc"
