#include "model/graph_list.h"
#include "output/vector_picture.h"
#include "plot/colors.h"
#include "plot/coordinates.h"
#include "plot/ticks.h"
#include "scripted_prompter.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <map>
#include <memory>
#include <optional>

using namespace curvix;

namespace {

// Curve colours none of the plot's own parts take (0x00BBGGRR).
const std::vector<quint32> kCurveColors{0x000000C0, 0x00C00000, 0x0000A000};
const char* const kFormulas[] = {"sin(x)", "x^2-3", "1/(x-1)"};

struct Scene {
    model::AppState state;
    ScriptedPrompter prompter;
    plot::RedrawOptions options;
    output::PictureLabels labels;
    QImage picture{800, 600, QImage::Format_ARGB32_Premultiplied};

    Scene(int curves, bool smooth)
    {
        plot::InitPlotDefaults(state);
        state.smoothCurves = smooth;
        options.font = QFont(QStringLiteral("DejaVu Sans"), 9);
        labels.font = options.font;
        model::SymbolicLinkCheck links({});
        for (int i = 0; i < curves; ++i) {
            model::addFunction(state, prompter, links, QString::fromLatin1(kFormulas[i]),
                               QStringLiteral("f(x)"));
            state.graphs.back().color = kCurveColors[std::size_t(i)];
        }
    }
    void draw() { plot::redraw(state, picture, options); }
    output::VectorScene vectorScene() const { return {state, options, labels, 1}; }
    QByteArray write(output::VectorFormat format) const
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QString error;
        if (!output::writeVectorPicture(buffer, format, picture.deviceIndependentSize(),
                                        vectorScene(), &error))
            qWarning("not written: %s", qPrintable(error));
        return buffer.data();
    }
    // The numbers at the ticks, as the screen's picture lays them out.
    QStringList tickTexts()
    {
        const plot::TickLayout layout =
            plot::layoutTicks(state.view, options, state.angleUnit, picture.deviceIndependentSize(),
                              options.font, &picture);
        QStringList texts;
        for (const plot::TickLabel& label : layout.labels) {
            texts << label.text;
            if (!label.denominator.isEmpty())
                texts << label.denominator;
        }
        texts.sort();
        return texts;
    }
};

// What an SVG holds: its texts, its pictures, the paths drawn in each colour (stroke or
// fill of the group around them) and the thinnest stroke.
struct SvgContents {
    bool wellFormed = false;
    QStringList texts;
    int images = 0;
    std::map<QString, int> pathsByColor;
    double thinnestStroke = 1e9;
};

SvgContents readSvg(const QByteArray& bytes)
{
    SvgContents contents;
    QXmlStreamReader xml(bytes);
    std::vector<QString> colors{QString()};
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement() && xml.name() == QLatin1String("g"))
            colors.pop_back();
        if (!xml.isStartElement())
            continue;
        const QXmlStreamAttributes a = xml.attributes();
        if (xml.name() == QLatin1String("g")) {
            const QString stroke = a.value(QLatin1String("stroke")).toString();
            const QString fill = a.value(QLatin1String("fill")).toString();
            colors.push_back(stroke != QLatin1String("none") && !stroke.isEmpty() ? stroke : fill);
            if (!stroke.isEmpty() && stroke != QLatin1String("none") &&
                a.hasAttribute(QLatin1String("stroke-width")))
                contents.thinnestStroke = std::min(
                    contents.thinnestStroke, a.value(QLatin1String("stroke-width")).toDouble());
        } else if (xml.name() == QLatin1String("path")) {
            ++contents.pathsByColor[colors.back().toLower()];
        } else if (xml.name() == QLatin1String("image")) {
            ++contents.images;
        } else if (xml.name() == QLatin1String("text")) {
            contents.texts
                << xml.readElementText(QXmlStreamReader::IncludeChildElements).simplified();
        }
    }
    contents.wellFormed = !xml.hasError();
    return contents;
}

QString svgColor(quint32 value) { return plot::colorFromValue(value).name().toLower(); }

// The words pdftotext reads from a PDF, or none when the tool is missing.
std::optional<QStringList> pdfWords(const QString& file)
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        return std::nullopt;
    QProcess tool;
    tool.start(QStringLiteral("pdftotext"), {file, QStringLiteral("-")});
    tool.waitForFinished();
    QStringList words = QString::fromUtf8(tool.readAllStandardOutput())
                            .split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    words.sort();
    return words;
}

// Pixels whose colour differs by more than a quarter in some channel.
int differentPixels(const QImage& a, const QImage& b)
{
    const QImage x = a.convertToFormat(QImage::Format_RGB32);
    const QImage y = b.convertToFormat(QImage::Format_RGB32);
    int count = 0;
    for (int row = 0; row < x.height(); ++row)
        for (int column = 0; column < x.width(); ++column) {
            const QRgb p = x.pixel(column, row);
            const QRgb q = y.pixel(column, row);
            if (std::abs(qRed(p) - qRed(q)) > 64 || std::abs(qGreen(p) - qGreen(q)) > 64 ||
                std::abs(qBlue(p) - qBlue(q)) > 64)
                ++count;
        }
    return count;
}

} // namespace

class TestVector : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;

    static void addSceneColumns()
    {
        QTest::addColumn<int>("curves");
        QTest::addColumn<bool>("smooth");
        QTest::addColumn<bool>("filled");
        QTest::addColumn<bool>("exactTrig");
        QTest::addColumn<double>("lineWidth");
        QTest::newRow("dots") << 3 << false << false << false << 1.0;
        QTest::newRow("smooth") << 3 << true << false << false << 1.0;
        QTest::newRow("filled") << 2 << false << true << false << 1.0;
        QTest::newRow("multiples of pi") << 1 << true << false << true << 1.0;
        QTest::newRow("thick lines") << 2 << true << false << false << 2.5;
        QTest::newRow("no curves") << 0 << false << false << false << 1.0;
    }

    static std::unique_ptr<Scene> sceneFromRow()
    {
        QFETCH(int, curves);
        QFETCH(bool, smooth);
        QFETCH(bool, filled);
        QFETCH(bool, exactTrig);
        QFETCH(double, lineWidth);
        auto scene = std::make_unique<Scene>(curves, smooth);
        if (filled)
            scene->state.fills.push_back(
                {0.5, -2, 0x0080FF}); // inside the parabola, beside the axis
        scene->options.exactTrig = exactTrig;
        scene->options.lineWidth = lineWidth;
        scene->draw();
        return scene;
    }

private slots:
    void svgHoldsTextAndOnePathACurve_data() { addSceneColumns(); }
    void svgHoldsTextAndOnePathACurve()
    {
        QFETCH(int, curves);
        QFETCH(bool, filled);
        const std::unique_ptr<Scene> made = sceneFromRow();
        Scene& scene = *made;
        SvgContents svg = readSvg(scene.write(output::VectorFormat::Svg));
        QVERIFY(svg.wellFormed);
        svg.texts.sort();
        // Every number once: no picture of it, no second copy.
        QCOMPARE(svg.texts, scene.tickTexts());
        for (int i = 0; i < curves; ++i) {
            const int paths = svg.pathsByColor[svgColor(kCurveColors[std::size_t(i)])];
            QVERIFY2(paths >= 1 && paths <= 2, qPrintable(QString::number(paths)));
        }
        QCOMPARE(svg.images > 0, filled);
        // A quarter of a point is a third of a pixel at 96 dpi.
        QVERIFY(svg.thinnestStroke >= 1.0 / 3);
    }

    void labelsAreText()
    {
        Scene scene(1, false);
        scene.draw();
        scene.labels.texts.push_back({QStringLiteral("Vertex"), QPointF(40, 40)});
        scene.labels.formulas.push_back(
            {QStringLiteral("x^2/2"), QStringLiteral("f(x)"), QPointF(300, 60)});
        const SvgContents svg = readSvg(scene.write(output::VectorFormat::Svg));
        QVERIFY(svg.texts.contains(QStringLiteral("Vertex")));
        // The formula's letters and numbers are text too, beside the ticks and the label.
        QVERIFY(svg.texts.size() > scene.tickTexts().size() + 1);
        QVERIFY(svg.texts.join(QString()).contains(QLatin1Char('f')));
        QCOMPARE(svg.images, 0);
    }

    void pdfTextAndLook_data() { addSceneColumns(); }
    void pdfTextAndLook()
    {
        const std::unique_ptr<Scene> made = sceneFromRow();
        Scene& scene = *made;
        const QString file = m_folder.filePath(
            QString::fromLatin1(QTest::currentDataTag()).replace(' ', '_') + ".pdf");
        {
            QFile out(file);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(scene.write(output::VectorFormat::Pdf));
        }
        const std::optional<QStringList> words = pdfWords(file);
        if (!words)
            QSKIP("pdftotext (poppler-utils) is not installed");
        QCOMPARE(*words, scene.tickTexts());

        if (QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty())
            QSKIP("pdftoppm (poppler-utils) is not installed");
        const QString stem = file.chopped(4);
        QCOMPARE(
            QProcess::execute(QStringLiteral("pdftoppm"),
                              {QStringLiteral("-r"), QStringLiteral("96"), QStringLiteral("-png"),
                               QStringLiteral("-singlefile"), file, stem}),
            0);
        const QImage rendered(stem + ".png");
        QCOMPARE(rendered.size(), scene.picture.size());
        // Antialiased edges and glyphs differ; curves, lines or fills out of place would not.
        const int differing = differentPixels(rendered, scene.picture);
        QVERIFY2(differing < scene.picture.width() * scene.picture.height() / 200,
                 qPrintable(QString::number(differing)));
    }

    // Lines printed as thick as on the screen: measured across, rendered at 600 dpi.
    void pdfLinesHaveTheirWidth_data()
    {
        QTest::addColumn<QPointF>("at"); // a world point on the line
        QTest::addColumn<bool>("vertical");
        QTest::addColumn<double>("lineWidth");
        QTest::addColumn<double>("pixels"); // its width in screen pixels
        QTest::newRow("grid line") << QPointF(3, 4.5) << true << 1.0 << 1.0;
        QTest::newRow("axis") << QPointF(2.5, 0) << false << 1.0 << 2.0;
        QTest::newRow("axis, twice as wide") << QPointF(2.5, 0) << false << 2.0 << 4.0;
    }
    void pdfLinesHaveTheirWidth()
    {
        QFETCH(QPointF, at);
        QFETCH(bool, vertical);
        QFETCH(double, lineWidth);
        QFETCH(double, pixels);
        if (QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty())
            QSKIP("pdftoppm (poppler-utils) is not installed");
        Scene scene(0, false);
        scene.options.lineWidth = lineWidth;
        scene.draw();
        const QString stem = m_folder.filePath(QStringLiteral("lines"));
        QFile out(stem + ".pdf");
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(scene.write(output::VectorFormat::Pdf));
        out.close();
        QCOMPARE(
            QProcess::execute(QStringLiteral("pdftoppm"),
                              {QStringLiteral("-r"), QStringLiteral("600"), QStringLiteral("-png"),
                               QStringLiteral("-singlefile"), out.fileName(), stem}),
            0);
        const QImage page(stem + ".png");
        constexpr double kScale = 600.0 / 96;
        const QPointF p =
            plot::SetPlotScale(scene.picture.size(), scene.state.view).toPixel(at.x(), at.y()) *
            kScale;
        int inked = 0;
        for (int i = -60; i <= 60; ++i) {
            const QPoint pixel =
                vertical ? QPoint(int(p.x()) + i, int(p.y())) : QPoint(int(p.x()), int(p.y()) + i);
            inked += qGray(page.pixel(pixel)) < 200;
        }
        QVERIFY2(std::abs(inked - pixels * kScale) <= 2, qPrintable(QString::number(inked)));
    }

    void printoutFitsThePage_data()
    {
        QTest::addColumn<QSize>("logical");
        QTest::addColumn<int>("printerDpi");
        QTest::addColumn<bool>("scaledDown");
        // A4 portrait's printable area is some 7.5 by 11 inches.
        QTest::newRow("small picture, screen size") << QSize(400, 300) << 150 << false;
        QTest::newRow("wider than the page") << QSize(1000, 500) << 150 << true;
        QTest::newRow("taller than the page") << QSize(300, 1400) << 100 << true;
    }
    void printoutFitsThePage()
    {
        QFETCH(QSize, logical);
        QFETCH(int, printerDpi);
        QFETCH(bool, scaledDown);
        Scene scene(1, false);
        scene.picture = QImage(logical, QImage::Format_ARGB32_Premultiplied);
        scene.draw();
        const QSizeF printable(7.5 * printerDpi, 11 * printerDpi);
        QImage page(printable.toSize(), QImage::Format_RGB32);
        page.setDotsPerMeterX(qRound(printerDpi / 0.0254));
        page.setDotsPerMeterY(qRound(printerDpi / 0.0254));
        page.fill(Qt::gray);
        {
            QPainter painter(&page);
            output::paintPrintout(painter, printable, printerDpi, 96, QSizeF(logical),
                                  scene.vectorScene());
        }
        // The white background shows where the picture stands.
        QRect white;
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x)
                if (page.pixel(x, y) == qRgb(255, 255, 255))
                    white |= QRect(x, y, 1, 1);
        const int inset = 100 * printerDpi / 1440;
        QVERIFY(std::abs(white.left() - inset) <= 1 && std::abs(white.top() - inset) <= 1);
        QVERIFY(white.right() < page.width() && white.bottom() < page.height());
        const QSizeF screenSize = QSizeF(logical) * printerDpi / 96.0;
        QCOMPARE(white.width() < screenSize.width() - 2, scaledDown);
        // The shape is kept.
        QVERIFY(std::abs(double(white.width()) / white.height() -
                         double(logical.width()) / logical.height()) < 0.02);
    }
};

QTEST_MAIN(TestVector)
#include "test_vector.moc"
