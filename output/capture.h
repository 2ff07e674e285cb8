#pragma once

#include "model/drawing.h"

#include <QFont>
#include <QImage>
#include <QRect>
#include <QString>

#include <optional>
#include <vector>

namespace curvix::output {

// A label lying over the plot: its rectangle in the plot's logical pixels and its text or
// picture. A member that was removed from its array is an empty optional.
struct OverlayText {
    QRect rect;
    QString text;
};
struct OverlayPicture {
    QRect rect;
    QImage picture;
};

// Burns the labels into the plot's picture: the formula pictures first, then the texts of
// both text arrays in the label font. Removed members are skipped without a word.
void burnOverlays(QImage& picture, const std::vector<std::optional<OverlayPicture>>& pictures,
                  const std::vector<std::optional<OverlayText>>& texts1,
                  const std::vector<std::optional<OverlayText>>& texts2, const QFont& labelFont);

// Burns a drawing's text labels, point labels and formula pictures into a picture of the
// given view, each with its top-left corner at its world position: what the window shows
// over its plot, for a headless export.
void burnDrawingLabels(QImage& picture, const model::Drawing& drawing,
                       const model::ViewWindow& view, const QFont& labelFont);

} // namespace curvix::output
