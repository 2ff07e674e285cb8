#include "output/export_picture.h"

#include "output/capture.h"

#include <cmath>

namespace curvix::output {

namespace {

constexpr double kCentimetresPerInch = 2.54;
constexpr double kMetresPerInch = 0.0254;

} // namespace

double resolutionOf(const PictureSize& size)
{
    return size.unit == SizeUnit::Centimetres ? size.dpi : kScreenDpi;
}

QSize pixelSizeOf(const PictureSize& size)
{
    const double perUnit = size.unit == SizeUnit::Centimetres ? size.dpi / kCentimetresPerInch : 1;
    return {int(std::lround(size.width * perUnit)), int(std::lround(size.height * perUnit))};
}

QSizeF logicalSizeOf(const PictureSize& size)
{
    return QSizeF(pixelSizeOf(size)) * (kScreenDpi / resolutionOf(size));
}

bool isPossible(const PictureSize& size)
{
    // Compared before rounding, so that a huge width cannot overflow the pixel count.
    const double perUnit = size.unit == SizeUnit::Centimetres ? size.dpi / kCentimetresPerInch : 1;
    const bool sides = size.width * perUnit < kMaxPixels + 0.5 && size.height * perUnit < kMaxPixels + 0.5;
    const QSize pixels = sides ? pixelSizeOf(size) : QSize();
    return sides && pixels.width() >= 1 && pixels.height() >= 1 &&
           (size.unit == SizeUnit::Pixels || (size.dpi >= kMinDpi && size.dpi <= kMaxDpi));
}

void setResolution(QImage& picture, double dpi)
{
    const int dotsPerMetre = int(std::lround(dpi / kMetresPerInch));
    picture.setDotsPerMeterX(dotsPerMetre);
    picture.setDotsPerMeterY(dotsPerMetre);
}

plot::RedrawOptions exportRedrawOptions(plot::RedrawOptions options, const ExportOptions& exportOptions,
                                        PictureType type)
{
    if (exportOptions.transparent && keepsTransparency(type))
        options.background = Qt::transparent;
    else if (options.background.alpha() < 255)
        options.background = Qt::white;
    options.lineWidth = exportOptions.lineWidth;
    return options;
}

QImage exportPicture(const model::AppState& state, const model::Drawing& labels,
                     const QFont& labelFont, const plot::RedrawOptions& options,
                     const PictureSize& size)
{
    QImage picture(pixelSizeOf(size), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        return picture;
    picture.setDevicePixelRatio(resolutionOf(size) / kScreenDpi);
    plot::paintSampled(state, picture, options);
    burnDrawingLabels(picture, labels, state.view, labelFont);
    setResolution(picture, resolutionOf(size));
    return picture;
}

} // namespace curvix::output
