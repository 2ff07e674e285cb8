#include "output/capture.h"

#include "plot/coordinates.h"
#include "plot/formula_picture.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace curvix::output {

namespace {

void printTexts(QPainter& painter, const std::vector<std::optional<OverlayText>>& texts)
{
    const QFontMetricsF metrics(painter.font(), painter.device());
    for (const std::optional<OverlayText>& text : texts) {
        if (!text)
            continue;
        // The drawing position is the label's top-left corner; text hangs below it.
        painter.drawText(QPointF(text->rect.left(), text->rect.top() + metrics.ascent()), text->text);
    }
}

} // namespace

void burnOverlays(QImage& picture, const std::vector<std::optional<OverlayPicture>>& pictures,
                  const std::vector<std::optional<OverlayText>>& texts1,
                  const std::vector<std::optional<OverlayText>>& texts2, const QFont& labelFont)
{
    if (picture.isNull())
        return;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const std::optional<OverlayPicture>& overlay : pictures)
        if (overlay)
            painter.drawImage(QRectF(overlay->rect), overlay->picture);
    painter.setFont(labelFont);
    painter.setPen(Qt::black);
    printTexts(painter, texts1);
    printTexts(painter, texts2);
}

void burnDrawingLabels(QImage& picture, const model::Drawing& drawing,
                       const model::ViewWindow& view, const QFont& labelFont)
{
    const qreal ratio = picture.devicePixelRatio();
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(picture.size()) / ratio, view);
    // Labels far outside the picture are left out before their place is rounded to pixels.
    auto corner = [&](double x, double y) -> std::optional<QPoint> {
        const QPointF at = scale.toPixel(x, y);
        if (!(std::abs(at.x()) < 1e6 && std::abs(at.y()) < 1e6))
            return std::nullopt;
        return at.toPoint();
    };
    std::vector<std::optional<OverlayPicture>> pictures;
    for (const model::FormulaPicture& f : drawing.formulaPictures) {
        const std::optional<QPoint> at = corner(f.x, f.y);
        const QImage typeset =
            at ? plot::typesetFormula(f.formula, f.label, labelFont, ratio) : QImage();
        if (!typeset.isNull())
            pictures.push_back(
                OverlayPicture{QRect(*at, typeset.deviceIndependentSize().toSize()), typeset});
    }
    std::vector<std::optional<OverlayText>> texts;
    auto addText = [&](double x, double y, const QString& text) {
        if (const std::optional<QPoint> at = corner(x, y))
            texts.push_back(OverlayText{QRect(*at, QSize()), text});
    };
    for (const model::TextLabel& t : drawing.textLabels)
        addText(t.x, t.y, t.text);
    for (const model::PointLabel& p : drawing.pointLabels)
        addText(p.x, p.y, p.text);
    burnOverlays(picture, pictures, texts, {}, labelFont);
}

} // namespace curvix::output
