#include "app/point_marks.h"

#include "app/plot_labels.h"
#include "eval/numtext.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QLabel>

#include <algorithm>
#include <cmath>

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

namespace {

const char* const kKindNames[] = {QT_TRANSLATE_NOOP("PointMarks", "zero"),
                                  QT_TRANSLATE_NOOP("PointMarks", "min"),
                                  QT_TRANSLATE_NOOP("PointMarks", "max"),
                                  QT_TRANSLATE_NOOP("PointMarks", "inflection"),
                                  QT_TRANSLATE_NOOP("PointMarks", "intersection")};

// "zero, inflection (0, 0)": the kinds of points that stand together, and where.
QString markText(const QStringList& kinds, const plot::PointOfInterest& point, const QString& separator,
                 const QLocale& locale, QSizeF resolution)
{
    // Below a billionth of the view a coordinate is the rounding of a search, not a value.
    const auto number = [&](double v, double unit) {
        return eval::numberText(std::abs(v) < unit ? 0.0 : v, locale, 4).replace(u'-', QChar(0x2212));
    };
    return QStringLiteral("\u25CF %1 (%2%3 %4)")
        .arg(kinds.join(QStringLiteral(", ")), number(point.x, resolution.width()), separator,
             number(point.y, resolution.height()));
}

QString kindName(plot::PointKind kind)
{
    return QCoreApplication::translate("PointMarks", kKindNames[int(kind)]);
}

} // namespace

int markPointsOfInterest(const model::AppState& state, int curve, PlotLabels& labels,
                         QSizeF plotSize, const QFont& font)
{
    const plot::PlotScale scale = plot::SetPlotScale(plotSize, state.view);
    const model::ViewWindow& view = state.view;
    const QSizeF resolution(std::abs(view.XMax - view.XMin) * 1e-9, std::abs(view.YMax - view.YMin) * 1e-9);
    const std::vector<plot::PointOfInterest> points = pointsToMark(state, curve);
    // The dot, the label's first letter, over the point: the label's corner half a dot to
    // the left and half a line above it.
    const QFontMetrics metrics(font);
    const QPointF dotOffset(metrics.horizontalAdvance(QChar(0x25CF)) / 2.0, metrics.height() / 2.0);
    // Points within 3 pixels of each other (a zero that is an inflection too, a point
    // where two curves meet on an axis) share one label.
    std::vector<bool> taken(points.size(), false);
    std::vector<QRect> placed;
    int marked = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (taken[i])
            continue;
        const QPointF at = scale.toPixel(points[i].x, points[i].y);
        QStringList kinds{kindName(points[i].kind)};
        for (std::size_t j = i + 1; j < points.size(); ++j) {
            if (!taken[j] && (scale.toPixel(points[j].x, points[j].y) - at).manhattanLength() < 3) {
                taken[j] = true;
                if (!kinds.contains(kindName(points[j].kind)))
                    kinds << kindName(points[j].kind);
            }
        }
        QString text = markText(kinds, points[i], state.coordinateSeparator, QLocale(), resolution);
        QPointF corner = at - dotOffset;
        // A label that would cover one before it goes a line lower, an arrow up to its point.
        QRect box(corner.toPoint(), metrics.size(0, text));
        const auto covers = [&](const QRect& b) {
            return std::any_of(placed.begin(), placed.end(), [&](const QRect& p) { return p.intersects(b); });
        };
        if (covers(box)) {
            corner.ry() += metrics.height();
            box.translate(0, metrics.height());
            text.replace(QChar(0x25CF), QChar(0x2191));
        }
        placed.push_back(box);
        // On a patch of the plot's background, so that no grid line strikes through it.
        labels.addText(text, corner)->setAutoFillBackground(true);
        ++marked;
    }
    return marked;
}

} // namespace curvix::app
