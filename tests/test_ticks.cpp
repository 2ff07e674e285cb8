#include "eval/formula.h"
#include "plot/coordinates.h"
#include "plot/ticks.h"

#include <QTest>

#include <cmath>

Q_DECLARE_METATYPE(curvix::plot::TickStyle)

using namespace curvix;

// "a b c" with "." read as the locale's decimal separator and "-" as the minus sign.
static QStringList localised(const QString& texts)
{
    QString t = texts;
    t.replace(QLatin1Char('.'), QLocale().decimalPoint()).replace(QLatin1Char('-'), QChar(0x2212));
    return t.split(QLatin1Char(' '));
}

class TestTicks : public QObject {
    Q_OBJECT
private slots:
    void labelTexts_data();
    void labelTexts();
    void labelsOfManyViewsKeepApartAndInside();
    void labelsStandOverFills();
};

void TestTicks::labelTexts_data()
{
    QTest::addColumn<std::vector<double>>("values");
    QTest::addColumn<plot::TickStyle>("style");
    QTest::addColumn<QString>("texts");
    const double pi = eval::kPiValue;
    using plot::TickStyle;
    QTest::newRow("radians in decimals") << std::vector<double>{-pi / 2, pi / 2, pi, 3 * pi / 2} << TickStyle::Decimal << "-1.571 1.571 3.142 4.712";
    QTest::newRow("radians in pi") << std::vector<double>{-pi, -pi / 2, pi / 2, pi, 3 * pi / 2} << TickStyle::PiMultiples << "-π -π/2 π/2 π 3π/2";
    QTest::newRow("zoom under exact trig") << std::vector<double>{2, 4, 6} << TickStyle::PiMultiples << "0.6366π 1.2732π 1.9099π";
    QTest::newRow("fractions") << std::vector<double>{pi / 3, 2 * pi / 3} << TickStyle::PiFractions << "π/3 2π/3";
    QTest::newRow("quarters") << std::vector<double>{0.25, 0.5, 0.75, 1} << TickStyle::Decimal << "0.25 0.5 0.75 1";
    QTest::newRow("sums of tenths") << std::vector<double>{0.1, 0.2, 0.1 * 3} << TickStyle::Decimal << "0.1 0.2 0.3";
    QTest::newRow("negative whole") << std::vector<double>{-20, -10, 10} << TickStyle::Decimal << "-20 -10 10";
    QTest::newRow("six digits at most") << std::vector<double>{1234.5625, 1234.75} << TickStyle::Decimal << "1234.56 1234.75";
    QTest::newRow("below the powers") << std::vector<double>{500000, 999000} << TickStyle::Decimal << "500000 999000";
    QTest::newRow("huge") << std::vector<double>{-5e5, 1e6, 1.5e6} << TickStyle::Decimal << "-5·10⁵ 1·10⁶ 1.5·10⁶";
    QTest::newRow("tiny") << std::vector<double>{-2e-5, 2e-5, 4e-4} << TickStyle::Decimal << "-2·10⁻⁵ 2·10⁻⁵ 4·10⁻⁴";
    QTest::newRow("degrees") << std::vector<double>{-90, 90, 180} << TickStyle::Degrees << "-90° 90° 180°";
}

void TestTicks::labelTexts()
{
    QFETCH(std::vector<double>, values);
    QFETCH(plot::TickStyle, style);
    QFETCH(QString, texts);
    QCOMPARE(plot::tickLabelTexts(values, style), localised(texts));
}

// Decimal and pi ranges, tiny to huge, with the axes on, at the edge of and off the view,
// for every tick setting, on a roomy and a cramped picture.
void TestTicks::labelsOfManyViewsKeepApartAndInside()
{
    const QFont font(QStringLiteral("DejaVu Sans"), 9);
    const std::vector<double> spans{1e-6, 1e-3, 0.1, 1, 7, 100, 2e3, 3e7};
    int views = 0;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        for (const int mode : {0, 1, 2}) {
            for (const double centre : {0.0, -0.8, 4.0}) {
                for (const double ticks : {0.0, 1.0, 2.0}) {
                    const double f = mode > 0 && i % 2 == 0 ? eval::kPiValue : 1;
                    const double xs = spans[i];
                    const double ys = spans[(i + 3) % spans.size()];
                    const model::ViewWindow view{(centre - 1) * xs * f, (centre + 1) * xs * f, xs * f / 10, ticks,
                                          (centre - 1) * ys, (centre + 1) * ys, ys / 4, 2 - ticks};
                    plot::RedrawOptions options;
                    options.exactTrig = mode > 0;
                    options.fractionForm = mode == 2;
                    const QSizeF size = views % 3 ? QSizeF(600, 400) : QSizeF(260, 180);
                    const auto labels = plot::layoutTicks(view, options, model::AngleUnit::Radians, size, font).labels;
                    QVERIFY2(!labels.empty(), qPrintable(QString::number(++views)));
                    for (std::size_t a = 0; a < labels.size(); ++a) {
                        const plot::TickLabel& label = labels[a];
                        const QString what = QString::number(views) + QLatin1Char(' ') + label.text;
                        QVERIFY2(QRectF(QPointF(0, 0), size).contains(label.rect), qPrintable(what));
                        QVERIFY2(label.text.size() + label.denominator.size() <= 8, qPrintable(what));
                        for (std::size_t b = a + 1; b < labels.size(); ++b)
                            QVERIFY2(!label.rect.intersects(labels[b].rect), qPrintable(what + QLatin1Char('/') + labels[b].text));
                        // Off the view, an axis's numbers stand at the bottom or left edge.
                        if (centre > 1)
                            QVERIFY2(label.rect.bottom() > size.height() - 6 || label.rect.left() < 6, qPrintable(what));
                    }
                }
            }
        }
    }
    QCOMPARE(views, 216);
}

// Every number stays readable over a fill that floods the whole picture, and a curve that
// runs through a number is not cut by the number's patch: the patch lies under the curves.
void TestTicks::labelsStandOverFills()
{
    model::AppState state;
    plot::InitPlotDefaults(state);
    state.axisColor = 0x000000FF;
    model::GraphEntry level;
    level.expression = level.text = QStringLiteral("0x-2"); // through the label -2 of the y axis
    level.color = 0x00FF0000;
    state.graphs.push_back(level);
    state.fills.push_back({2.5, 2.5, 0x0000FF00});
    QImage picture(600, 400, QImage::Format_ARGB32_Premultiplied);
    const plot::RedrawOptions options{.font = QFont(QStringLiteral("DejaVu Sans"), 9)};
    plot::redraw(state, picture, options);
    const auto labels = plot::layoutTicks(state.view, options, state.angleUnit, picture.size(), options.font, &picture).labels;
    QVERIFY(labels.size() >= 10);
    int curveInLabels = 0;
    for (const plot::TickLabel& label : labels) {
        int inked = 0; // red, or red blended into what lies under the number
        const QRect r = label.rect.toAlignedRect();
        for (int y = r.top(); y <= r.bottom(); ++y)
            for (int x = r.left(); x <= r.right(); ++x) {
                const QColor c = picture.pixelColor(x, y);
                inked += c.red() > 150 && c.blue() < 100 && c.green() < 150;
                curveInLabels += c == QColor(Qt::blue);
            }
        QVERIFY2(inked > 0, qPrintable(label.text));
    }
    QVERIFY(curveInLabels > 0);
}

QTEST_MAIN(TestTicks)
#include "test_ticks.moc"
