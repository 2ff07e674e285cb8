#include "app/export_actions.h"
#include "app/frmgraph.h"
#include "app/plot_labels.h"
#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "output/picture_file.h"
#include "plot/render.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QtTest>
#include <QtWidgets>

using namespace curvix;
using app::frmgraph;

namespace {

// The main window with a parabola drawn.
struct Window {
    ScriptedPrompter prompter;
    frmgraph window{prompter};
    Window()
    {
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qWarning("window not shown");
        window.findChild<QComboBox*>(QStringLiteral("imgcombfunc"))->setEditText(QStringLiteral("x^2-2"));
        emit child<QPushButton>(&window, QStringLiteral("Command1_0"))->clicked();
    }
    QImage picture() const { return window.plotArea()->image(); }
    void trigger(const char* action) { child<QAction>(&window, QLatin1String(action))->trigger(); }
};

// Whether any pixel inside the rectangle (logical pixels) differs between two pictures.
bool differsWithin(const QImage& a, const QImage& b, QRect logical)
{
    const QRect area(logical.topLeft() * a.devicePixelRatio(), logical.size() * a.devicePixelRatio());
    return a.copy(area) != b.copy(area);
}

} // namespace

class TestOutput : public QObject {
    Q_OBJECT

    QTemporaryDir m_home;

private slots:
    void initTestCase()
    {
        QVERIFY(useHomeOfItsOwn(m_home));
    }

    void captureBurnsTheLabelsIn()
    {
        Window w;
        const QImage plain = w.picture();
        // With no labels, the exported picture is the plot as drawn.
        std::unique_ptr<QMimeData> data(w.window.exportActions().dragData());
        QCOMPARE(qvariant_cast<QImage>(data->imageData()), plain);

        app::PlotLabels& labels = w.window.plotView().labels();
        QLabel* text = labels.addText(QStringLiteral("Vertex"), QPoint(20, 20));
        QLabel* removed = labels.addText(QStringLiteral("Gone"), QPoint(20, 80));
        QLabel* formula = labels.addFormula(QStringLiteral("x^2/2"), QStringLiteral("f(x)"), QPoint(200, 20));
        const QRect removedRect = removed->geometry();
        delete removed;
        data.reset(w.window.exportActions().dragData());
        const QImage exported = qvariant_cast<QImage>(data->imageData());
        QVERIFY(differsWithin(exported, plain, text->geometry()) && differsWithin(exported, plain, formula->geometry()));
        QVERIFY(!differsWithin(exported, plain, removedRect));
        // The plot itself is drawn again without them.
        QCOMPARE(w.picture(), plain);
    }

    void savingWritesTheFile_data()
    {
        QTest::addColumn<QString>("name"); // in a folder that is not there, it fails
        QTest::addColumn<QString>("written");
        QTest::addColumn<QByteArray>("starts");
        QTest::newRow("no ending is a bitmap") << "plot" << "plot.bmp" << QByteArray("BM");
        QTest::newRow("png") << "plot.png" << "plot.png" << QByteArray("\x89PNG");
        QTest::newRow("pdf") << "plot.pdf" << "plot.pdf" << QByteArray("%PDF");
        QTest::newRow("svg") << "plot.svg" << "plot.svg" << QByteArray("<?xml");
        QTest::newRow("unwritable") << "no/such/plot.png" << "" << QByteArray();
    }

    void savingWritesTheFile()
    {
        QFETCH(QString, name);
        QFETCH(QString, written);
        QFETCH(QByteArray, starts);
        Window w;
        w.window.state().fills.push_back({0, -1, 0x00FF00}); // inside the parabola
        w.window.redraw();
        const QImage plot = w.picture();
        QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + "/My Graphs");
        folder.removeRecursively();
        w.prompter.fileNames.push_back(folder.filePath(name));
        w.trigger("mnusaveas");
        QVERIFY(folder.exists()); // created before the dialog opened
        QVERIFY(w.prompter.saveDialogs.value(0).startsWith("Save As|" + folder.path() + '|'));
        QCOMPARE(w.window.state().documentChanged, written.isEmpty());
        QCOMPARE(w.prompter.messages.size(), name.contains(QLatin1Char('/')) ? 1 : 0);
        QCOMPARE(folder.entryList(QDir::Files), written.isEmpty() ? QStringList() : QStringList{written});
        if (written.isEmpty())
            return;
        QFile file(folder.filePath(written));
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().startsWith(starts));
        const QImage back(file.fileName());
        if (!back.isNull() && !written.endsWith(QLatin1String(".svg")))
            QCOMPARE(back.convertToFormat(QImage::Format_RGB32), plot.convertToFormat(QImage::Format_RGB32));
    }

    void picturesCarryTheirDensity_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<double>("ratio");
        for (const QString& suffix : {QStringLiteral("png"), QStringLiteral("bmp")})
            for (double ratio : {1.0, 1.5, 2.0})
                QTest::newRow(qPrintable(QStringLiteral("%1 at %2").arg(suffix).arg(ratio))) << suffix << ratio;
    }

    // A picture of a dense screen says so: at ratio 2 it has 192 dots to the inch, so that
    // it is placed in a document at the size it had on screen.
    void picturesCarryTheirDensity()
    {
        QFETCH(QString, suffix);
        QFETCH(double, ratio);
        model::AppState state;
        plot::InitPlotDefaults(state);
        QImage picture((QSizeF(200, 150) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::white);
        const QString name = m_home.filePath(QStringLiteral("density.") + suffix);
        QString error;
        QVERIFY2(output::writePlotFile(state, picture, plot::RedrawOptions(), name, &error), qPrintable(error));
        const QImage back(name);
        QCOMPARE(qRound(back.dotsPerMeterX() * 0.0254), qRound(96 * ratio));
        QCOMPARE(qRound(back.dotsPerMeterY() * 0.0254), qRound(96 * ratio));
    }

    void copyAndPrint()
    {
        Window w;
        w.window.plotView().labels().addText(QStringLiteral("Vertex"), QPoint(20, 20));
        w.trigger("mnucopy");
        QCOMPARE(QGuiApplication::clipboard()->image().size(), w.picture().size());
        // The SVG beside it has the label as text.
        const QByteArray svg = QGuiApplication::clipboard()->mimeData()->data(QStringLiteral("image/svg+xml"));
        QVERIFY(svg.contains("<svg") && svg.contains(">Vertex</text>"));

        const QString pdf = m_home.filePath(QStringLiteral("printout.pdf"));
        w.prompter.printToPdf = pdf;
        w.trigger("mnuprint");
        QFile file(pdf);
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().startsWith("%PDF"));
        if (!QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
            QProcess text;
            text.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
            QVERIFY(text.waitForFinished() && text.readAllStandardOutput().contains("Vertex"));
        }
        // A cancelled printer dialog prints nothing.
        QFile::remove(pdf);
        w.prompter.printToPdf.clear();
        w.trigger("mnuprint");
        QVERIFY(!QFile::exists(pdf) && w.prompter.printerDialogs == 2);
    }
};

QTEST_MAIN(TestOutput)
#include "test_output.moc"
