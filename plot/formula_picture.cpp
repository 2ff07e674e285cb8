#include "plot/formula_picture.h"

#include "plot/formula_layout.h"
#include "plot/render.h"

#include <QPainter>

#include <cmath>
#include <optional>

namespace curvix::plot {

namespace {

using formula::Box;
using formula::LaidOutFormula;
using formula::layOut;

// Paints a laid-out formula with its picture's corner at the painter's origin; snap rounds
// a length to the device's pixels (none on a vector medium).
template <typename Snap>
void paintLaidOut(QPainter& painter, const LaidOutFormula& formula, qreal onePixel, Snap snap)
{
    const Box& box = formula.box;
    const QRectF& area = formula.area;
    const QPointF origin(snap(-area.left() + (formula.logical.width() - area.width()) / 2),
                         snap(-area.top() + (formula.logical.height() - area.height()) / 2));
    painter.save();
    painter.translate(origin);
    for (const QRectF& rule : box.rules) {
        const qreal top = snap(rule.top() + origin.y()) - origin.y();
        const qreal height = std::max(snap(rule.height()), onePixel);
        painter.fillRect(QRectF(rule.left(), top, rule.width(), height), Qt::black);
    }
    painter.setPen(Qt::black);
    for (const Box::Run& run : box.runs) {
        painter.setFont(fontForDevice(run.font, painter.device()));
        painter.drawText(run.at, run.text);
    }
    for (const Box::Shape& shape : box.shapes) {
        if (shape.pen > 0)
            painter.strokePath(shape.path,
                               QPen(Qt::black, shape.pen, Qt::SolidLine, Qt::RoundCap,
                                    Qt::RoundJoin));
        else
            painter.fillPath(shape.path, Qt::black);
    }
    painter.restore();
}

} // namespace

QImage typesetFormula(const QString& typed, const QString& label, const QFont& font,
                      qreal devicePixelRatio, const eval::ParameterList& parameters)
{
    const std::optional<LaidOutFormula> formula = layOut(typed, label, font, parameters);
    if (!formula)
        return {};
    const qreal ratio =
        std::isfinite(devicePixelRatio) && devicePixelRatio > 0 ? devicePixelRatio : 1.0;
    const QSize logical = formula->logical;
    QImage image(QSize(qRound(logical.width() * ratio), qRound(logical.height() * ratio)),
                 QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);

    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    // Whole device pixels from the image's corner to the baseline, and rules snapped to the
    // pixel grid: a bar one pixel thick stays one black row instead of two grey ones.
    paintLaidOut(painter, *formula, 1 / ratio,
                 [ratio](qreal v) { return std::round(v * ratio) / ratio; });
    return image;
}

QSizeF paintFormula(QPainter& painter, QPointF topLeft, const QString& typed,
                    const QString& label, const QFont& font,
                    const eval::ParameterList& parameters)
{
    const std::optional<LaidOutFormula> formula = layOut(typed, label, font, parameters);
    if (!formula)
        return {};
    painter.save();
    painter.translate(topLeft);
    paintLaidOut(painter, *formula, 0.5, [](qreal v) { return v; });
    painter.restore();
    return QSizeF(formula->logical);
}

} // namespace curvix::plot
