#include "plot/formula_picture.h"

#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QTest>

using curvix::plot::typesetFormula;

namespace {

const QString kLabel = QStringLiteral("f(x)");

QImage picture(const QString& typed, const QString& label = kLabel, qreal ratio = 1.0)
{
    return typesetFormula(typed, label, QFont(QStringLiteral("DejaVu Sans"), 14), ratio);
}

bool isInk(QRgb pixel)
{
    return qAlpha(pixel) > 200;
}

// The smallest rectangle that holds every pixel with some ink.
QRect inkBounds(const QImage& image)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

} // namespace

class TestFormulaPicture : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::system()); }

    void schoolFormulas_data()
    {
        QTest::addColumn<QString>("typed");
        for (const char* typed : {"-3x+5", "(x-2)^2+1", "sqrt(x^2+1)", "e^(-x)", "3*0,5^x", "log10(x+1)",
                                   "sin(¶x)", "abs(x-1)", "(x+1)/(x-1)", "1/(1+e^(-x))", "tan(x/2)"})
            QTest::newRow(typed) << QString::fromUtf8(typed);
    }

    // Every school formula becomes black ink on transparency, kept clear of the edges (nothing
    // cut off).
    void schoolFormulas()
    {
        QFETCH(QString, typed);
        const QImage image = picture(typed);
        QVERIFY(image.width() > image.height());
        bool dark = false;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                QCOMPARE(qRed(pixel) | qGreen(pixel) | qBlue(pixel), 0); // black or nothing
                dark = dark || isInk(pixel);
                if (x == 0 || y == 0 || x == image.width() - 1 || y == image.height() - 1)
                    QCOMPARE(qAlpha(pixel), 0);
            }
        }
        QVERIFY(dark);
    }

    void parsing_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("label");
        QTest::addColumn<bool>("drawn");
        QTest::newRow("open parenthesis") << "(x+1" << kLabel << false;
        QTest::newRow("another variable") << "2t+1" << kLabel << false;
        QTest::newRow("the label's variable") << "2t+1" << "g(t)" << true;
        QTest::newRow("Euler's number times x") << "2ex" << kLabel << true;
    }

    void parsing()
    {
        QFETCH(QString, typed);
        QFETCH(QString, label);
        QFETCH(bool, drawn);
        QCOMPARE(!picture(typed, label).isNull(), drawn);
    }

    void comparisons_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("relation");
        const auto row = [](const char* name, const char* first, const char* relation,
                            const char* second) {
            QTest::newRow(name) << QString::fromUtf8(first) << QString::fromUtf8(second)
                                << QString::fromLatin1(relation);
        };
        row("no dot before a letter", "2*x", "same", "2x");
        row("no dot before a parenthesis", "2*(x+1)", "same", "2(x+1)");
        row("pilcrow is pi", "2¶x", "same", "2*pi*x");
        row("exp in either spelling", "exp(x)", "same", "Exp(x)");
        row("dot between numbers", "2*3", "wider", "23");
        row("parentheses of a power's base", "(x+1)^2", "wider", "x+1^2");
        row("parentheses of a product as base", "(2x)^2", "wider", "2x^2");
        row("parentheses of a factor", "2(x+1)", "wider", "2x+1");
        row("parentheses after a minus", "x-(x-1)", "wider", "x-x-1");
        row("base 10 written out", "log10(x)", "wider", "log(x)");
        row("exponent", "2^x", "taller", "2x");
        row("nested exponent", "e^(x^2)", "taller", "e^x");
        row("fraction", "(x+1)/2", "taller", "(x+1)*2");
        row("overline of a root", "sqrt(x+1)", "taller", "x+1");
    }

    void comparisons()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(QString, relation);
        const QImage a = picture(first);
        const QImage b = picture(second);
        QVERIFY(!a.isNull() && !b.isNull());
        if (relation == u"same")
            QVERIFY(a == b);
        else if (relation == u"wider")
            QCOMPARE_GT(a.width(), b.width());
        else
            QCOMPARE_GT(a.height(), b.height());
    }

    void labelInFront()
    {
        const QImage bare = picture(QStringLiteral("x^2"), QString());
        const QImage labelled = picture(QStringLiteral("x^2"));
        // "f(x) = " is about three times as wide as x².
        QVERIFY(labelled.width() > 2 * bare.width());
    }

    void decimalSeparator()
    {
        // The comma reaches below the baseline, the point does not.
        QLocale::setDefault(QLocale::c());
        const QImage point = picture(QStringLiteral("1,5"), QString());
        QLocale::setDefault(QLocale(QLocale::Swedish, QLocale::Sweden));
        const QImage comma = picture(QStringLiteral("1.5"), QString());
        QVERIFY(comma.height() > point.height());
        QVERIFY(picture(QStringLiteral("15"), QString()).height() == point.height());
    }

    // The same logical picture on a sharper screen, drawn with ratio times as many pixels.
    void deviceRatio()
    {
        const qreal ratio = 1.5;
        const QString typed = QStringLiteral("sqrt(x^2+1)/(x-1)");
        const QImage base = picture(typed);
        const QImage sharp = picture(typed, kLabel, ratio);
        QCOMPARE(sharp.devicePixelRatio(), ratio);
        QCOMPARE(sharp.size(), QSize(qRound(base.width() * ratio), qRound(base.height() * ratio)));
        const QRect ink = inkBounds(base);
        const QRect sharpInk = inkBounds(sharp);
        QVERIFY(std::abs(sharpInk.width() - ink.width() * ratio) <= 2 * ratio);
        QVERIFY(std::abs(sharpInk.height() - ink.height() * ratio) <= 2 * ratio);
    }
};

QTEST_MAIN(TestFormulaPicture)
#include "test_formula_picture.moc"
