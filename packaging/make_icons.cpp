// Writes the program's icon as the files a desktop installs: PNG in the hicolor sizes and
// one SVG, all painted by the same function that draws the window's icon.
//
//   curvix_make_icons OUTDIR NAME   ->  OUTDIR/hicolor/<n>x<n>/apps/NAME.png, .../scalable/apps/NAME.svg

#include "app/frmabout1.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgGenerator>

#include <cstdio>

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s OUTDIR NAME\n", argv[0]);
        return 2;
    }
    const QString root = QString::fromLocal8Bit(argv[1]) + QStringLiteral("/hicolor");
    const QString name = QString::fromLocal8Bit(argv[2]);

    for (const int side : {16, 32, 48, 64, 128, 256}) {
        const QString dir = root + QStringLiteral("/%1x%1/apps").arg(side);
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        curvix::app::paintCurvixIcon(painter, side);
        painter.end();
        if (!QDir().mkpath(dir) || !image.save(dir + QLatin1Char('/') + name + QStringLiteral(".png"))) {
            std::fprintf(stderr, "cannot write the %dx%d icon under %s\n", side, side, qPrintable(dir));
            return 1;
        }
    }

    const QString svgDir = root + QStringLiteral("/scalable/apps");
    if (!QDir().mkpath(svgDir)) {
        std::fprintf(stderr, "cannot make %s\n", qPrintable(svgDir));
        return 1;
    }
    QSvgGenerator svg;
    svg.setFileName(svgDir + QLatin1Char('/') + name + QStringLiteral(".svg"));
    svg.setSize(QSize(64, 64));
    svg.setViewBox(QRect(0, 0, 64, 64));
    svg.setTitle(QStringLiteral("Curvix"));
    QPainter painter;
    if (!painter.begin(&svg)) {
        std::fprintf(stderr, "cannot write the SVG icon under %s\n", qPrintable(svgDir));
        return 1;
    }
    curvix::app::paintCurvixIcon(painter, 64);
    painter.end();
    return 0;
}
