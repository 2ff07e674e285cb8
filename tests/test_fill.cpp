#include "plot/flood_fill.h"

#include <QTest>

#include <queue>
#include <random>
#include <vector>

// The span fill on a mask against a plain four-way breadth-first fill on random mazes.
class TestFill : public QObject {
    Q_OBJECT

private slots:
    void matchesAPlainFill();
};

namespace {

const QRgb kWall = qRgb(0, 0, 0);
const QRgb kPaint = qRgb(255, 0, 0);
const QRgb kOpen = qRgb(255, 255, 255);
// The picture's other colours; the paint itself among them, which must not stop the spread.
const QRgb kGround[] = {qRgb(255, 255, 255), qRgb(0, 128, 255), kPaint};

// What the fill must do: every pixel reachable from the seed through pixels that are not
// wall, and only those, takes the paint.
QImage referenceFill(QImage picture, QPoint seed)
{
    if (!picture.rect().contains(seed) || picture.pixel(seed) == kWall)
        return picture;
    std::vector<bool> seen(std::size_t(picture.width() * picture.height()));
    std::queue<QPoint> open;
    const auto visit = [&](QPoint p) {
        const std::size_t index = std::size_t(p.y() * picture.width() + p.x());
        if (picture.rect().contains(p) && !seen[index] && picture.pixel(p) != kWall) {
            seen[index] = true;
            open.push(p);
        }
    };
    visit(seed);
    while (!open.empty()) {
        const QPoint p = open.front();
        open.pop();
        picture.setPixel(p, kPaint);
        for (QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
            visit(p + step);
    }
    return picture;
}

// Scattered single wall pixels and wall runs along rows and columns, many of them ending
// at or beyond the picture's edge.
QImage randomMaze(std::mt19937& random)
{
    const auto pick = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    QImage picture(pick(1, 20), pick(1, 20), QImage::Format_RGB32);
    const int w = picture.width();
    const int h = picture.height();
    const int percent = pick(0, 50);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            picture.setPixel(x, y, pick(0, 99) < percent ? kWall : kGround[pick(0, 2)]);
    for (int n = pick(0, 6); n > 0; --n) {
        const bool across = pick(0, 1);
        const int length = across ? w : h;
        const int at = pick(0, (across ? h : w) - 1);
        const int from = std::max(pick(-2, length - 1), 0);
        const int to = std::min(pick(from, length + 2), length - 1);
        for (int i = from; i <= to; ++i)
            picture.setPixel(across ? i : at, across ? at : i, kWall);
    }
    return picture;
}

QString describe(const QImage& picture, QPoint seed)
{
    QString text = QStringLiteral("seed (%1, %2)\n").arg(seed.x()).arg(seed.y());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            text += picture.pixel(x, y) == kWall ? u'#' : picture.pixel(x, y) == kPaint ? u'o' : u'.';
        text += u'\n';
    }
    return text;
}

} // namespace

void TestFill::matchesAPlainFill()
{
    std::mt19937 random{1};
    for (int round = 0; round < 4000; ++round) {
        const QImage before = randomMaze(random);
        // Now and then a seed outside the picture, which paints nothing.
        const QPoint at(std::uniform_int_distribution<int>(-1, before.width())(random),
                        std::uniform_int_distribution<int>(-1, before.height())(random));
        // The mask is open wherever the picture has no wall.
        QImage mask(before.size(), QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < mask.height(); ++y)
            for (int x = 0; x < mask.width(); ++x)
                mask.setPixel(x, y, before.pixel(x, y) == kWall ? kWall : kOpen);
        QImage filled = before;
        curvix::plot::FloodFillFromMask(mask, filled, at, QColor::fromRgb(kPaint), QColor::fromRgb(kOpen));
        const QImage expected = referenceFill(before, at);
        QVERIFY2(filled.convertToFormat(QImage::Format_RGB32) == expected,
                 qPrintable(QStringLiteral("round %1\n").arg(round) + describe(before, at) +
                            QStringLiteral("expected\n") + describe(expected, at) +
                            QStringLiteral("filled\n") + describe(filled, at)));
    }
}

QTEST_GUILESS_MAIN(TestFill)
#include "test_fill.moc"
