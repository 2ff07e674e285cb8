#include "output/capture.h"

#include <QFontMetricsF>
#include <QPainter>

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

} // namespace curvix::output
