#include "output/vector_picture.h"

#include "plot/coordinates.h"
#include "plot/formula_picture.h"

#include <QFontMetricsF>
#include <QPageSize>
#include <QPdfWriter>
#include <QRegion>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <optional>

namespace curvix::output {

namespace {

// The size of one logical pixel on vector media: the screen's 96 to the inch.
constexpr double kLogicalDpi = 96;

// The pixels the fills changed, in the fill picture's device pixels: the picture of those
// pixels alone (clear elsewhere) and the region they cover.
struct FillPatch {
    QImage image;
    QPoint corner;
    QRegion region;
};

// The fills as the screen finds them: the plot under the fills painted on a picture at the
// screen's ratio, the fills replayed on a copy, and what differs kept.
std::optional<FillPatch> fillPatch(const VectorScene& scene, QSizeF logical)
{
    if (scene.state.fills.empty())
        return std::nullopt;
    const qreal ratio = scene.fillRatio > 0 && std::isfinite(scene.fillRatio) ? scene.fillRatio : 1;
    QImage plain(QSize(qRound(logical.width() * ratio), qRound(logical.height() * ratio)),
                 QImage::Format_ARGB32_Premultiplied);
    if (plain.isNull())
        return std::nullopt;
    plain.setDevicePixelRatio(ratio);
    plain.fill(scene.options.background);
    {
        QPainter painter(&plain);
        plot::paintPlotLayer(scene.state, painter, plain.deviceIndependentSize(), &plain,
                             scene.options, plot::PlotLayer::UnderFills);
    }
    QImage filled = plain.copy();
    plot::ReplayFills(filled, scene.state, scene.options);

    std::vector<QRect> runs;
    QRect bounds;
    for (int y = 0; y < filled.height(); ++y) {
        const auto* before = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
        auto* after = reinterpret_cast<QRgb*>(filled.scanLine(y));
        int start = -1;
        for (int x = 0; x <= filled.width(); ++x) {
            const bool changed = x < filled.width() && before[x] != after[x];
            if (x < filled.width() && !changed)
                after[x] = 0;
            if (changed && start < 0)
                start = x;
            if (!changed && start >= 0) {
                runs.emplace_back(start, y, x - start, 1);
                bounds |= runs.back();
                start = -1;
            }
        }
    }
    if (runs.empty())
        return std::nullopt;
    FillPatch patch{filled.copy(bounds), bounds.topLeft(), {}};
    patch.image.setDevicePixelRatio(1);
    // One band a row, in order: the form a region is built from directly.
    patch.region.setRects(runs.data(), int(runs.size()));
    return patch;
}

void paintFills(QPainter& painter, const VectorScene& scene, QSizeF logical)
{
    const std::optional<FillPatch> patch = fillPatch(scene, logical);
    if (!patch)
        return;
    const qreal ratio = scene.fillRatio > 0 && std::isfinite(scene.fillRatio) ? scene.fillRatio : 1;
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    painter.setClipRegion(patch->region, Qt::IntersectClip);
    painter.drawImage(patch->corner, patch->image);
    painter.restore();
}

// The formula pictures first, then the texts, as the window stacks them.
void paintLabels(QPainter& painter, const PictureLabels& labels,
                 const eval::ParameterList& parameters)
{
    painter.setPen(Qt::black);
    for (const LabelFormula& formula : labels.formulas)
        plot::paintFormula(painter, formula.at, formula.formula, formula.label, labels.font,
                           parameters);
    painter.setFont(plot::fontForDevice(labels.font, painter.device()));
    const QFontMetricsF metrics(painter.font(), painter.device());
    for (const LabelText& text : labels.texts)
        // The position is the label's top-left corner; the text hangs below it.
        painter.drawText(text.at + QPointF(0, metrics.ascent()), text.text);
}

} // namespace

PictureLabels drawingLabels(const model::Drawing& drawing, const model::ViewWindow& view,
                            QSizeF logical, const QFont& font)
{
    const plot::PlotScale scale = plot::SetPlotScale(logical, view);
    PictureLabels labels;
    labels.font = font;
    auto corner = [&](double x, double y) -> std::optional<QPointF> {
        const QPointF at = scale.toPixel(x, y);
        if (!(std::abs(at.x()) < 1e6 && std::abs(at.y()) < 1e6))
            return std::nullopt;
        return at;
    };
    for (const model::FormulaPicture& f : drawing.formulaPictures)
        if (const std::optional<QPointF> at = corner(f.x, f.y))
            labels.formulas.push_back({f.formula, f.label, *at});
    for (const model::TextLabel& t : drawing.textLabels)
        if (const std::optional<QPointF> at = corner(t.x, t.y))
            labels.texts.push_back({t.text, *at});
    for (const model::PointLabel& p : drawing.pointLabels)
        if (const std::optional<QPointF> at = corner(p.x, p.y))
            labels.texts.push_back({p.text, *at});
    return labels;
}

void paintVectorPicture(QPainter& painter, QSizeF logical, const VectorScene& scene)
{
    plot::RedrawOptions options = scene.options;
    options.font = plot::fontForDevice(options.font, painter.device());
    painter.save();
    painter.setClipRect(QRectF(QPointF(0, 0), logical), Qt::IntersectClip);
    if (options.background.alpha() > 0)
        painter.fillRect(QRectF(QPointF(0, 0), logical), options.background);
    using plot::PlotLayer;
    plot::paintPlotLayer(scene.state, painter, logical, nullptr, options, PlotLayer::UnderFills);
    paintFills(painter, scene, logical);
    plot::paintPlotLayer(scene.state, painter, logical, nullptr, options, PlotLayer::OverFills);
    paintLabels(painter, scene.labels, scene.state.parameters);
    painter.restore();
}

QRectF printoutRect(QSizeF logical, QSizeF printable, double printerDpi, double screenDpi)
{
    const double inset = 100.0 / 1440.0 * printerDpi;
    const double scale = screenDpi > 0 ? printerDpi / screenDpi : 1;
    QSizeF size = logical * scale;
    const QSizeF room(std::max(0.0, printable.width() - 2 * inset),
                      std::max(0.0, printable.height() - 2 * inset));
    if (size.width() > room.width() || size.height() > room.height())
        size = size.scaled(room, Qt::KeepAspectRatio);
    return {QPointF(inset, inset), size};
}

void paintPrintout(QPainter& painter, QSizeF printable, double printerDpi, double screenDpi,
                   QSizeF logical, const VectorScene& scene)
{
    if (logical.isEmpty())
        return;
    const QRectF target = printoutRect(logical, printable, printerDpi, screenDpi);
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(target.width() / logical.width(), target.height() / logical.height());
    paintVectorPicture(painter, logical, scene);
    painter.restore();
}

bool writeVectorPicture(QIODevice& device, VectorFormat format, QSizeF logical,
                        const VectorScene& scene, QString* error)
{
    auto paintOn = [&](QPaintDevice& target) {
        QPainter painter;
        if (!painter.begin(&target)) {
            if (error)
                *error = QStringLiteral("The picture could not be started.");
            return false;
        }
        paintVectorPicture(painter, logical, scene);
        return painter.end();
    };
    if (format == VectorFormat::Pdf) {
        QPdfWriter writer(&device);
        writer.setResolution(int(kLogicalDpi));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setPageSize(QPageSize(logical * 72.0 / kLogicalDpi, QPageSize::Point, QString(),
                                     QPageSize::ExactMatch));
        writer.setCreator(QStringLiteral("Curvix"));
        return paintOn(writer);
    }
    QSvgGenerator svg;
    svg.setOutputDevice(&device);
    svg.setSize(logical.toSize());
    svg.setViewBox(QRectF(QPointF(0, 0), logical));
    svg.setResolution(int(kLogicalDpi));
    svg.setTitle(QStringLiteral("Curvix"));
    return paintOn(svg);
}

} // namespace curvix::output
