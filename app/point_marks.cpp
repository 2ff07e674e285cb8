#include "app/point_marks.h"

#include "app/plot_labels.h"
#include "eval/numtext.h"

#include <QCoreApplication>
#include <QFontMetrics>

namespace curvix::app {

std::vector<plot::PointOfInterest> pointsToMark(const model::AppState& state, int curve)
{
    std::vector<plot::PointOfInterest> points;
    const auto& graphs = state.graphs;
    const auto append = [&](std::vector<plot::PointOfInterest> more) {
        points.insert(points.end(), more.begin(), more.end());
    };
    for (std::size_t i = 0; i < graphs.size(); ++i) {
        if (!graphs[i].formula || (curve >= 0 && int(i) != curve))
            continue;
        append(plot::pointsOfInterest(*graphs[i].formula, state.view));
        for (std::size_t j = curve >= 0 ? 0 : i + 1; j < graphs.size(); ++j) {
            if (j != i && graphs[j].formula)
                append(plot::intersections(*graphs[i].formula, *graphs[j].formula, state.view));
        }
    }
    return points;
}

QString pointMarkText(const plot::PointOfInterest& point, const QString& separator,
                      const QLocale& locale)
{
    static const char* const names[] = {QT_TRANSLATE_NOOP("PointMarks", "zero"),
                                        QT_TRANSLATE_NOOP("PointMarks", "min"),
                                        QT_TRANSLATE_NOOP("PointMarks", "max"),
                                        QT_TRANSLATE_NOOP("PointMarks", "inflection"),
                                        QT_TRANSLATE_NOOP("PointMarks", "intersection")};
    const auto number = [&](double v) {
        return eval::numberText(v, locale, 4).replace(u'-', QChar(0x2212));
    };
    return QStringLiteral("\u25CF %1 (%2%3 %4)")
        .arg(QCoreApplication::translate("PointMarks", names[int(point.kind)]), number(point.x),
             separator, number(point.y));
}

int markPointsOfInterest(const model::AppState& state, int curve, PlotLabels& labels,
                         QSizeF plotSize, const QFont& font)
{
    const plot::PlotScale scale = plot::SetPlotScale(plotSize, state.view);
    const std::vector<plot::PointOfInterest> points = pointsToMark(state, curve);
    // The dot, the label's first letter, over the point: the label's corner half a dot to
    // the left and half a line above it.
    const QFontMetrics metrics(font);
    const QPointF corner(metrics.horizontalAdvance(QChar(0x25CF)) / 2.0, metrics.height() / 2.0);
    for (const plot::PointOfInterest& p : points) {
        labels.addText(pointMarkText(p, state.coordinateSeparator),
                       scale.toPixel(p.x, p.y) - corner);
    }
    return int(points.size());
}

} // namespace curvix::app
