#include "plot/flood_fill.h"

#include <QTest>

#include <queue>
#include <random>
#include <vector>

// The span fill against a plain four-way breadth-first fill on random mazes.
class TestFill : public QObject {
    Q_OBJECT

private slots:
    void matchesAPlainFill_data();
    void matchesAPlainFill();
};

namespace {

const QRgb kWall = qRgb(0, 0, 0);
const QRgb kPaint = qRgb(255, 0, 0);
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

enum class Maze {
    Scattered, // single wall pixels
    Lines,     // wall runs along rows and columns, many ending at or beyond the picture's edge
};

QImage randomMaze(std::mt19937& random, Maze maze)
{
    std::uniform_int_distribution<int> size(1, 20);
    QImage picture(size(random), size(random), QImage::Format_RGB32);
    const auto pick = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, kGround[pick(0, 2)]);
    const auto wall = [&picture](int x, int y) {
        if (picture.rect().contains(x, y))
            picture.setPixel(x, y, kWall);
    };
    const int w = picture.width();
    const int h = picture.height();
    switch (maze) {
    case Maze::Scattered: {
        const int percent = pick(10, 60);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                if (pick(0, 99) < percent)
                    wall(x, y);
        break;
    }
    case Maze::Lines:
        for (int n = pick(1, 8); n > 0; --n) {
            const bool across = pick(0, 1);
            const int at = pick(0, (across ? h : w) - 1);
            const int from = pick(-2, (across ? w : h) - 1);
            const int to = pick(from, (across ? w : h) + 2);
            for (int i = from; i <= to; ++i)
                across ? wall(i, at) : wall(at, i);
        }
        break;
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

Q_DECLARE_METATYPE(Maze)

void TestFill::matchesAPlainFill_data()
{
    QTest::addColumn<Maze>("maze");
    QTest::addColumn<int>("seed");
    QTest::newRow("scattered walls") << Maze::Scattered << 1;
    QTest::newRow("wall lines") << Maze::Lines << 2;
}

void TestFill::matchesAPlainFill()
{
    QFETCH(Maze, maze);
    QFETCH(int, seed);
    std::mt19937 random{std::uint32_t(seed)};
    for (int round = 0; round < 2000; ++round) {
        const QImage before = randomMaze(random, maze);
        // Now and then a seed outside the picture, which paints nothing.
        const QPoint at(std::uniform_int_distribution<int>(-1, before.width())(random),
                        std::uniform_int_distribution<int>(-1, before.height())(random));
        QImage filled = before;
        curvix::plot::FloodFill(filled, at, QColor::fromRgb(kPaint), QColor::fromRgb(kWall));
        const QImage expected = referenceFill(before, at);
        QVERIFY2(filled.convertToFormat(QImage::Format_RGB32) == expected,
                 qPrintable(QStringLiteral("round %1\n").arg(round) + describe(before, at) +
                            QStringLiteral("expected\n") + describe(expected, at) +
                            QStringLiteral("filled\n") + describe(filled, at)));
    }
}

QTEST_GUILESS_MAIN(TestFill)
#include "test_fill.moc"
