#include "app/export_actions.h"
#include "app/export_dialog.h"
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

Q_DECLARE_METATYPE(curvix::output::ExportOptions)

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

// The bounding box of the pixels inside the rectangle that differ between two pictures of
// one size.
QRect changedBox(const QImage& a, const QImage& b, QRect area)
{
    QRect box;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                box |= QRect(x, y, 1, 1);
    return box;
}

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
        const QImage dragged = qvariant_cast<QImage>(data->imageData());
        QCOMPARE(dragged, plain);
        // ... at the screen's resolution, and as a PNG file for file managers.
        QCOMPARE(dragged.dotsPerMeterX(), qRound(96 * plain.devicePixelRatio() / 0.0254));
        QCOMPARE(data->urls().size(), 1);
        QImageReader file(data->urls().value(0).toLocalFile());
        QCOMPARE(file.format(), QByteArray("png"));
        QCOMPARE(file.read().convertToFormat(dragged.format()), dragged);

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
        QTest::newRow("jpeg") << "plot.jpg" << "plot.jpg" << QByteArray("\xff\xd8\xff");
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
        if (written.isEmpty()) { // the message names the file and the reason
            QCOMPARE(w.prompter.messages.size(), 1);
            QVERIFY2(w.prompter.messages[0].contains(QDir::toNativeSeparators(folder.filePath(name)) + ": "),
                     qPrintable(w.prompter.messages[0]));
        }
        QCOMPARE(folder.entryList(QDir::Files), written.isEmpty() ? QStringList() : QStringList{written});
        if (written.isEmpty())
            return;
        QFile file(folder.filePath(written));
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().startsWith(starts));
        const QImage back(file.fileName());
        if (!back.isNull() && !written.endsWith(QLatin1String(".svg")) && !written.endsWith(QLatin1String(".jpg")))
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
        QVERIFY2(output::writePlotFile(state, picture, plot::RedrawOptions(), name, &error, {}),
                 qPrintable(error));
        const QImage back(name);
        QCOMPARE(qRound(back.dotsPerMeterX() * 0.0254), qRound(96 * ratio));
        QCOMPARE(qRound(back.dotsPerMeterY() * 0.0254), qRound(96 * ratio));
    }

    // The type chosen in the dialog and the names typed, in turn (the dialog opens again
    // after a refusal or a No); the files there before; the answers to the questions.
    void saveAsTypes_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<QStringList>("existing");
        QTest::addColumn<QString>("answers"); // Y or N for each question
        QTest::addColumn<QString>("written");
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<int>("questions");
        QTest::addColumn<int>("messages");

        const QStringList none;
        QTest::newRow("bitmap kept") << "" << QStringList{"graph"} << none << "" << "graph.bmp" << QByteArray("bmp") << 0 << 0;
        QTest::newRow("png chosen") << "PNG (*.png)" << QStringList{"graph"} << none << "" << "graph.png" << QByteArray("png") << 0 << 0;
        QTest::newRow("jpeg chosen") << "JPEG (*.jpg *.jpeg)" << QStringList{"graph"} << none << "" << "graph.jpg" << QByteArray("jpeg") << 0 << 0;
        QTest::newRow("the typed ending wins") << "PNG (*.png)" << QStringList{"pic.jpg"} << none << "" << "pic.jpg" << QByteArray("jpeg") << 0 << 0;
        QTest::newRow("ending in capitals") << "" << QStringList{"PIC.PNG"} << none << "" << "PIC.PNG" << QByteArray("png") << 0 << 0;
        QTest::newRow("a drawing chosen") << "Curvix drawing (*.curvix)" << QStringList{"graph"} << none << "" << "graph.curvix" << QByteArray() << 0 << 0;
        QTest::newRow("replacing the final name, yes") << "PNG (*.png)" << QStringList{"graph"} << QStringList{"graph.png"} << "Y"
                                                       << "graph.png" << QByteArray("png") << 1 << 0;
        QTest::newRow("replacing, no, then another name") << "PNG (*.png)" << QStringList{"graph", "other"} << QStringList{"graph.png"}
                                                          << "N" << "other.png" << QByteArray("png") << 1 << 0;
        QTest::newRow("the typed name exists, the final one not") << "PNG (*.png)" << QStringList{"graph"} << QStringList{"graph"}
                                                                  << "" << "graph.png" << QByteArray("png") << 0 << 0;
        QTest::newRow("unknown ending refused") << "" << QStringList{"pic.gif", "pic"} << none << "" << "pic.bmp" << QByteArray("bmp") << 0 << 1;
        QTest::newRow("cancelled after a refusal") << "" << QStringList{"graph.txt", ""} << none << "" << "" << QByteArray() << 0 << 1;
    }

    void saveAsTypes()
    {
        QFETCH(QString, chosen);
        QFETCH(QStringList, typed);
        QFETCH(QStringList, existing);
        QFETCH(QString, answers);
        QFETCH(QString, written);
        QFETCH(QByteArray, format);
        QFETCH(int, questions);
        QFETCH(int, messages);
        Window w;
        QTemporaryDir dir;
        for (const QString& name : existing) {
            QFile file(dir.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
        }
        if (!chosen.isEmpty())
            w.prompter.chosenTypes.push_back(chosen);
        for (const QString& name : typed)
            w.prompter.fileNames.push_back(name.isEmpty() ? QString() : dir.filePath(name));
        for (const QChar answer : answers)
            w.prompter.answers.push_back(answer == 'Y' ? ScriptedPrompter::Button::Yes : ScriptedPrompter::Button::No);
        w.trigger("mnusaveas");
        QCOMPARE(w.prompter.questions.size(), questions);
        if (questions > 0) // asked for the name that is written
            QVERIFY(w.prompter.questions[0].contains(QDir::toNativeSeparators(dir.filePath(existing[0]))));
        QCOMPARE(w.prompter.messages.size(), messages);
        if (messages > 0) // the refusal lists the types
            QVERIFY(w.prompter.messages[0].contains("JPEG (*.jpg *.jpeg)") && w.prompter.messages[0].contains("*.curvix"));
        QVERIFY(w.prompter.unexpected.isEmpty());
        QStringList files = existing;
        if (!written.isEmpty() && !files.contains(written))
            files << written;
        QDir folder(dir.path());
        QStringList there = folder.entryList(QDir::Files);
        there.sort();
        files.sort();
        QCOMPARE(there, files);
        if (!written.isEmpty()) {
            QCOMPARE(QFileInfo(dir.filePath(written)).size() > 3, true);
            QCOMPARE(QImageReader(dir.filePath(written)).format(), format);
        }
        for (const QString& name : existing)
            if (name != written)
                QCOMPARE(QFileInfo(dir.filePath(name)).size(), 3);
    }

    // A picture drawn afresh for the export: its pixels, the resolution it records, its
    // background.
    void exportSizes_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<output::ExportOptions>("options");
        QTest::addColumn<QSize>("pixels");
        QTest::addColumn<int>("dpi");
        QTest::addColumn<bool>("clearCorner");

        using output::SizeUnit;
        QTest::newRow("pixels") << "a.png" << output::ExportOptions{{SizeUnit::Pixels, 640, 480}} << QSize(640, 480) << 96 << false;
        QTest::newRow("centimetres at 300 dpi") << "b.png" << output::ExportOptions{{SizeUnit::Centimetres, 10, 8, 300}}
                                                << QSize(1181, 945) << 300 << false;
        QTest::newRow("centimetres at 150 dpi, jpeg") << "c.jpg" << output::ExportOptions{{SizeUnit::Centimetres, 5.08, 2.54, 150}}
                                                      << QSize(300, 150) << 150 << false;
        QTest::newRow("transparent png") << "d.png" << output::ExportOptions{{SizeUnit::Pixels, 300, 200}, true}
                                         << QSize(300, 200) << 96 << true;
        QTest::newRow("a bitmap is never transparent") << "e.bmp" << output::ExportOptions{{SizeUnit::Pixels, 300, 200}, true}
                                                       << QSize(300, 200) << 96 << false;
    }

    void exportSizes()
    {
        QFETCH(QString, file);
        QFETCH(output::ExportOptions, options);
        QFETCH(QSize, pixels);
        QFETCH(int, dpi);
        QFETCH(bool, clearCorner);
        Window w;
        const QString path = m_home.filePath(file);
        QVERIFY(w.window.exportActions().exportTo(path, options));
        QImageReader reader(path);
        const QImage image = reader.read();
        QCOMPARE(image.size(), pixels);
        QCOMPARE(qRound(image.dotsPerMeterX() * 0.0254), dpi);
        QCOMPARE(qAlpha(image.pixel(0, 0)) == 0, clearCorner);
        QCOMPARE(image.pixel(0, 0) == QColor(Qt::white).rgb(), !clearCorner);
    }

    void labelsKeepTheChangedFontSize()
    {
        Window w;
        app::PlotLabels& labels = w.window.plotView().labels();
        QLabel* label = labels.addText(QStringLiteral("MMMM"), QPoint(20, 20));
        const QImage plain = w.picture();
        auto inkWidth = [&] {
            std::unique_ptr<QMimeData> data(w.window.exportActions().dragData());
            const QRect area(label->pos() * plain.devicePixelRatio(), QSize(300, 80) * plain.devicePixelRatio());
            return changedBox(qvariant_cast<QImage>(data->imageData()), w.picture(), area).width();
        };
        QFont font = w.window.plotArea()->font();
        font.setPointSize(8);
        w.window.plotArea()->setFont(font);
        w.window.redraw();
        const int small = inkWidth();
        font.setPointSize(20);
        w.window.plotArea()->setFont(font);
        w.window.redraw();
        const int big = inkWidth();
        QVERIFY2(big > 2 * small && small > 0, qPrintable(QString::number(small)));
    }

    void exportFromTheMenu()
    {
        Window w;
        const output::ExportOptions chosen{{output::SizeUnit::Centimetres, 12.5, 9, 200}, true, 2.5};
        output::ExportOptions shown;
        // Answers the dialog when it opens: the choices it offers are read, then replaced.
        auto answer = [&](bool accept) {
            QTimer::singleShot(0, [&, accept] {
                auto* dialog = qobject_cast<app::ExportDialog*>(QApplication::activeModalWidget());
                QVERIFY(dialog);
                shown = dialog->options();
                dialog->setOptions(chosen);
                accept ? dialog->accept() : dialog->reject();
            });
        };
        QTemporaryDir dir;
        w.prompter.fileNames.push_back(dir.filePath("graph"));
        answer(true);
        w.trigger("mnuexport");
        QCOMPARE(shown, output::ExportOptions{}); // the defaults the first time
        // PNG is offered first: the name gets its ending, and the picture the size chosen.
        const QImage image(dir.filePath("graph.png"));
        QCOMPARE(image.size(), QSize(984, 709));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        // A cancelled dialog asks for no name, and the choices were remembered.
        answer(false);
        w.trigger("mnuexport");
        QCOMPARE(shown, chosen);
        QCOMPARE(w.prompter.saveDialogs.size(), 1);
        QVERIFY(w.prompter.unexpected.isEmpty());

        // Another unit keeps the size on paper, pixels being the screen's 96 dpi.
        app::ExportDialog dialog;
        child<QComboBox>(&dialog, "exportUnit")->setCurrentIndex(0);
        QCOMPARE(dialog.options().size, (output::PictureSize{output::SizeUnit::Pixels, 472, 340, 200}));
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
