#include "app/export_actions.h"
#include "app/frmgraph.h"
#include "app/plot_labels.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "output/picture_file.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace curvix;
using app::frmgraph;

namespace {

struct Window {
    ScriptedPrompter prompter;
    frmgraph window{prompter};
    Window()
    {
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qWarning("window not shown");
        auto* box = window.findChild<QComboBox*>(QStringLiteral("imgcombfunc"));
        box->setEditText(QStringLiteral("x^2-2"));
        emit child<QPushButton>(&window, QStringLiteral("Command1_0"))->clicked();
    }
    QImage picture() const { return window.plotArea()->image(); }
    QColor grip() const
    {
        auto* grip = window.findChild<QLabel*>(QStringLiteral("lblGrip"));
        return grip->palette().color(QPalette::Window);
    }
};

void saveAs(Window& w)
{
    child<QAction>(&w.window, QStringLiteral("mnusaveas"))->trigger();
}

// Whether any pixel inside the rectangle (logical pixels) differs between two pictures.
bool differsWithin(const QImage& a, const QImage& b, QRect logical)
{
    const double ratio = a.devicePixelRatio();
    const QRect area = QRect(logical.topLeft() * ratio, logical.size() * ratio) & a.rect();
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                return true;
    return false;
}

} // namespace

class TestOutput : public QObject {
    Q_OBJECT

    QTemporaryDir m_home;

private slots:
    void initTestCase();
    void captureBurnsTheLabelsIn();
    void savingWritesTheFile_data();
    void savingWritesTheFile();
    void aSaveThatDoesNotHappenKeepsTheChanges_data();
    void aSaveThatDoesNotHappenKeepsTheChanges();
    void copyPutsThePictureOnTheClipboard();
    void printingPutsThePictureAtItsOwnSize();
    void printRectIsNeverFittedToThePage_data();
    void printRectIsNeverFittedToThePage();
};

void TestOutput::initTestCase()
{
    QVERIFY(m_home.isValid());
    qputenv("HOME", m_home.path().toLocal8Bit());
    qunsetenv("XDG_DOCUMENTS_DIR");
    QStandardPaths::setTestModeEnabled(true);
}

void TestOutput::captureBurnsTheLabelsIn()
{
    Window w;
    const QImage plain = w.picture();
    // With no labels, the exported picture is the plot as drawn.
    std::unique_ptr<QMimeData> data(w.window.exportActions().dragData());
    QCOMPARE(qvariant_cast<QImage>(data->imageData()), plain);
    QCOMPARE(w.grip(), QColor(Qt::black));

    QLabel* first = w.window.plotView().labels().addText(QStringLiteral("Vertex"), QPoint(20, 20));
    QLabel* removed = w.window.plotView().labels().addText(QStringLiteral("Gone"), QPoint(20, 80));
    QLabel* third = w.window.plotView().labels().addText(QStringLiteral("Root"), QPoint(20, 140));
    QLabel* formula = w.window.plotView().labels().addFormula(QStringLiteral("x^2/2"), QStringLiteral("f(x)"), QPoint(200, 20));
    QVERIFY(formula);
    const QRect removedRect = removed->geometry();
    delete removed;

    data.reset(w.window.exportActions().dragData());
    const QImage exported = qvariant_cast<QImage>(data->imageData());
    QVERIFY(differsWithin(exported, plain, first->geometry()));
    QVERIFY(differsWithin(exported, plain, third->geometry()));
    QVERIFY(!differsWithin(exported, plain, removedRect));
    QVERIFY(differsWithin(exported, plain, formula->geometry()));
    // The plot itself is drawn again without them.
    QCOMPARE(w.picture(), plain);
    QCOMPARE(w.grip(), QColor(Qt::black));
    delete formula;
}

void TestOutput::savingWritesTheFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QByteArray>("starts");
    QTest::newRow("bitmap") << "plot.bmp" << "plot.bmp" << QByteArray("BM");
    QTest::newRow("no ending is a bitmap") << "plot" << "plot.bmp" << QByteArray("BM");
    QTest::newRow("png") << "plot.png" << "plot.png" << QByteArray("\x89PNG");
    QTest::newRow("pdf") << "plot.pdf" << "plot.pdf" << QByteArray("%PDF");
    QTest::newRow("svg") << "plot.svg" << "plot.svg" << QByteArray("<?xml");
}

void TestOutput::savingWritesTheFile()
{
    QFETCH(QString, name);
    QFETCH(QString, written);
    QFETCH(QByteArray, starts);
    Window w;
    w.window.state().fills.push_back({0, -1, 0x00FF00}); // inside the parabola
    w.window.redraw();
    const QImage plot = w.picture();
    const QString folder = QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
                               .filePath(QStringLiteral("My Graphs"));
    QDir(folder).removeRecursively();
    w.prompter.fileNames.push_back(QDir(folder).filePath(name));
    QVERIFY(w.window.state().documentChanged);

    saveAs(w);
    QVERIFY(QDir(folder).exists()); // created before the dialog opened
    QVERIFY(w.prompter.saveDialogs.value(0).startsWith(QStringLiteral("Save As|") + folder + QLatin1Char('|')));
    QVERIFY(w.prompter.saveDialogs.value(0).contains(QStringLiteral("(*.bmp)")));
    QVERIFY(!w.window.state().documentChanged);
    QVERIFY(w.prompter.messages.isEmpty());
    QFile file(QDir(folder).filePath(written));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.startsWith(starts));
    if (written.endsWith(QLatin1String(".svg")))
        QVERIFY(bytes.contains("<svg"));
    if (written.endsWith(QLatin1String(".bmp")) || written.endsWith(QLatin1String(".png"))) {
        const QImage back(file.fileName());
        QCOMPARE(back.size(), plot.size());
        QCOMPARE(back.convertToFormat(QImage::Format_RGB32), plot.convertToFormat(QImage::Format_RGB32));
    }
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{written}); // no temporary left
}

void TestOutput::aSaveThatDoesNotHappenKeepsTheChanges_data()
{
    QTest::addColumn<QString>("name"); // empty: the dialog is cancelled
    QTest::newRow("cancelled") << QString();
    QTest::newRow("unwritable") << QStringLiteral("no/such/folder/plot.png");
}

void TestOutput::aSaveThatDoesNotHappenKeepsTheChanges()
{
    QFETCH(QString, name);
    Window w;
    const QString path = name.isEmpty() ? name : m_home.filePath(name);
    w.prompter.fileNames.push_back(path);
    const int redraws = w.window.redrawCount();
    saveAs(w);
    QVERIFY(w.window.state().documentChanged);
    if (name.isEmpty()) {
        QCOMPARE(w.window.redrawCount(), redraws); // nothing was captured
    } else {
        QCOMPARE(w.grip(), QColor(Qt::black));
        QCOMPARE(w.prompter.messages.size(), 1);
        QVERIFY(!w.prompter.messages[0].isEmpty());
        QVERIFY(!QFile::exists(path));
    }
}

void TestOutput::copyPutsThePictureOnTheClipboard()
{
    Window w;
    QGuiApplication::clipboard()->setText(QStringLiteral("old"));
    w.window.findChild<QAction*>(QStringLiteral("mnucopy"))->trigger();
    const QImage copied = QGuiApplication::clipboard()->image();
    QCOMPARE(copied.size(), w.picture().size());
    QCOMPARE(QGuiApplication::clipboard()->text(), QString());
    QCOMPARE(w.grip(), QColor(Qt::black));
}

void TestOutput::printingPutsThePictureAtItsOwnSize()
{
    Window w;
    const QString pdf = m_home.filePath(QStringLiteral("printout.pdf"));
    w.prompter.printToPdf = pdf;
    w.window.findChild<QAction*>(QStringLiteral("mnuprint"))->trigger();
    QCOMPARE(w.prompter.printerDialogs, 1);
    QFile file(pdf);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith("%PDF"));
    QVERIFY(w.prompter.messages.isEmpty());

    // A cancelled printer dialog prints nothing.
    QFile::remove(pdf);
    w.prompter.printToPdf.clear();
    w.window.findChild<QAction*>(QStringLiteral("mnuprint"))->trigger();
    QVERIFY(!QFile::exists(pdf));
    QCOMPARE(w.grip(), QColor(Qt::black));
}

void TestOutput::printRectIsNeverFittedToThePage_data()
{
    QTest::addColumn<QSizeF>("picture");
    QTest::addColumn<double>("printerDpi");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("same resolution") << QSizeF(800, 600) << 96.0 << QRectF(6.6666666666666667, 6.6666666666666667, 800, 600);
    QTest::newRow("1200 dpi printer") << QSizeF(800, 600) << 1200.0 << QRectF(83.33333333333333, 83.33333333333333, 10000, 7500);
    QTest::newRow("wider than any page") << QSizeF(5000, 100) << 600.0 << QRectF(41.666666666666664, 41.666666666666664, 31250, 625);
}

void TestOutput::printRectIsNeverFittedToThePage()
{
    QFETCH(QSizeF, picture);
    QFETCH(double, printerDpi);
    QFETCH(QRectF, expected);
    const QRectF r = output::printRect(picture, printerDpi, 96);
    QVERIFY(qFuzzyCompare(r.left(), expected.left()) && qFuzzyCompare(r.top(), expected.top()));
    QVERIFY(qFuzzyCompare(r.width(), expected.width()) && qFuzzyCompare(r.height(), expected.height()));
}

QTEST_MAIN(TestOutput)
#include "test_output.moc"
