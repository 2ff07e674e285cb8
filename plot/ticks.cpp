#include "plot/ticks.h"

#include "eval/formula.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QStaticText>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <map>
#include <numeric>

namespace curvix::plot {

namespace {

// Tick marks reach this far (logical pixels) to each side of their axis.
constexpr double kTickHalfLength = 3;
// The least room (logical pixels) between two labels, so that their halos never touch.
constexpr double kLabelGap = 3;
constexpr int kMaxLabelChars = 8;
constexpr int kMaxDigits = 6;
const QChar kMinus(0x2212);
const QChar kPi(0x03C0);

// Tick labels repeat from one redraw to the next: each text is laid out once per font.
const QStaticText& laidOut(const QPainter& painter, const QString& text)
{
    thread_local std::map<std::pair<QString, QString>, QStaticText> cache;
    const auto key = std::make_pair(painter.font().key(), text);
    auto it = cache.find(key);
    if (it == cache.end()) {
        if (cache.size() > 4096)
            cache.clear();
        QStaticText label(text);
        label.setTextFormat(Qt::PlainText);
        label.setPerformanceHint(QStaticText::AggressiveCaching);
        label.prepare(QTransform(), painter.font());
        it = cache.emplace(key, label).first;
    }
    return it->second;
}

// ---- texts ----

// The magnitude with a number of decimals, trailing zeros dropped, no group separator.
QString fixedText(double magnitude, int decimals)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QString text = locale.toString(magnitude, 'f', decimals);
    const QString point = locale.decimalPoint();
    if (decimals > 0 && text.contains(point)) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(point))
            text.chop(point.size());
    }
    return text;
}

// A number with at most the given decimals, 6 significant digits and budget characters.
QString decimalText(double value, int decimals, int budget)
{
    const double magnitude = std::abs(value);
    if (!(magnitude > 0) || !std::isfinite(magnitude))
        return QStringLiteral("0");
    const int exponent = int(std::floor(std::log10(magnitude)));
    const int integerDigits = std::max(1, exponent + 1);
    const int sign = value < 0 ? 1 : 0;
    int d = std::min(decimals, kMaxDigits - std::max(0, exponent + 1) - std::min(0, exponent + 1));
    d = std::max(0, std::min(d, budget - sign - integerDigits - 1));
    QString text = fixedText(magnitude, d);
    if (text == QLatin1String("0"))
        return text;
    return sign ? kMinus + text : text;
}

QString superscript(int number)
{
    static const char16_t digits[] =
        u"\u2070\u00B9\u00B2\u00B3\u2074\u2075\u2076\u2077\u2078\u2079";
    QString text = number < 0 ? QString(QChar(0x207B)) : QString();
    for (const QChar c : QString::number(std::abs(number)))
        text += QChar(digits[c.digitValue()]);
    return text;
}

// The fewest decimals that write every value exactly (but for floating-point noise) with
// the interval in at most 6 significant digits; -1 when there are none.
int exactDecimals(const std::vector<double>& values, double interval)
{
    const int most = std::min(15, kMaxDigits - 1 - int(std::floor(std::log10(interval))));
    for (int d = 0; d <= most; ++d) {
        const double scale = std::pow(10.0, d);
        if (std::all_of(values.begin(), values.end(), [&](double v) {
                return std::abs(std::round(v * scale) / scale - v) <= interval * 1e-9;
            }))
            return d;
    }
    return -1;
}

// "1.5·10⁶": the mantissa as short as it is exact, within the budget.
QString powerText(double value, int budget)
{
    if (value == 0)
        return QStringLiteral("0");
    int exponent = int(std::floor(std::log10(std::abs(value))));
    double mantissa = value / std::pow(10.0, exponent);
    if (std::abs(mantissa) >= 9.999995) {
        ++exponent;
        mantissa /= 10;
    }
    const QString suffix = QChar(0x00B7) + QStringLiteral("10") + superscript(exponent);
    const int decimals = std::max(0, exactDecimals({mantissa}, 1.0));
    const int mantissaBudget = budget - int(suffix.size());
    return decimalText(mantissa, std::min(decimals, kMaxDigits - 1), mantissaBudget) + suffix;
}

// The multiple as a reduced fraction n/d with a small denominator, when it is one.
bool asPiFraction(double multiple, long long& numerator, long long& denominator)
{
    for (long long d = 1; d <= 12; ++d) {
        const double scaled = multiple * static_cast<double>(d);
        const double n = std::round(scaled);
        if (std::abs(scaled - n) <= 1e-6 * std::max(1.0, std::abs(scaled)) && std::abs(n) < 1e9) {
            const auto whole = static_cast<long long>(n);
            const long long g = std::max(1LL, std::gcd(std::llabs(whole), d));
            numerator = whole / g;
            denominator = d / g;
            return true;
        }
    }
    return false;
}

QString piFractionText(long long numerator, long long denominator)
{
    if (numerator == 0)
        return QStringLiteral("0");
    const long long magnitude = std::llabs(numerator);
    const QString sign = numerator < 0 ? QString(kMinus) : QString();
    QString text = sign + (magnitude == 1 ? QString() : QString::number(magnitude)) + kPi;
    if (denominator != 1)
        text += QLatin1Char('/') + QString::number(denominator);
    return text;
}

// The pi multiples as fractions, when every one is short and one; else nothing.
QStringList piFractionTexts(const std::vector<double>& multiples)
{
    QStringList texts;
    for (const double m : multiples) {
        long long numerator = 0;
        long long denominator = 1;
        if (!asPiFraction(m, numerator, denominator))
            return {};
        texts << piFractionText(numerator, denominator);
        if (texts.back().size() > kMaxLabelChars)
            return {};
    }
    return texts;
}

double smallestGap(const std::vector<double>& values)
{
    double gap = 0;
    for (std::size_t i = 1; i < values.size(); ++i) {
        const double d = std::abs(values[i] - values[i - 1]);
        if (d > 0 && (gap == 0 || d < gap))
            gap = d;
    }
    if (gap == 0)
        gap = values.empty() || values.front() == 0 ? 1 : std::abs(values.front());
    return gap;
}

// ---- layout ----

// The tick positions of one axis within [lo, hi], 0 left out (the other axis stands there);
// none when they would be denser than the pixels.
std::vector<double> tickPositions(double interval, double lo, double hi, double pixels)
{
    const double tolerance = std::abs(interval) * 1e-6;
    const MultipleRange range = multiplesWithin(interval, lo - tolerance, hi + tolerance);
    std::vector<double> positions;
    if (range.empty() || tooDense(range, pixels))
        return positions;
    forEachMultiple(interval, range, [&](double v) {
        if (v != 0)
            positions.push_back(v);
    });
    return positions;
}

struct Candidate {
    TickLabel label;
    double multiple; // the tick's multiple of the interval, for keeping every k-th
};

// Every 1st, 2nd, 5th, 10th, 20th, ... label of an axis in order along it: the first
// choice whose labels keep apart.
double strideAt(int index)
{
    return std::array<double, 3>{1, 2, 5}[std::size_t(index % 3)] * std::pow(10.0, index / 3);
}

std::vector<TickLabel> thinned(const std::vector<Candidate>& candidates, int firstStride)
{
    std::vector<TickLabel> kept;
    for (int i = firstStride; i < 54; ++i) {
        const double stride = strideAt(i);
        kept.clear();
        for (const Candidate& c : candidates) {
            if (std::fmod(c.multiple, stride) == 0)
                kept.push_back(c.label);
        }
        bool apart = true;
        for (std::size_t k = 1; k < kept.size() && apart; ++k) {
            const QRectF halo = kept[k].rect.adjusted(-kLabelGap, -kLabelGap, kLabelGap, kLabelGap);
            apart = !halo.intersects(kept[k - 1].rect);
        }
        if (apart && !kept.empty())
            return kept;
        if (kept.size() <= 1)
            break;
    }
    // No multiple of the stride on the view: one label alone always fits.
    kept.clear();
    if (!candidates.empty())
        kept.push_back(candidates.front().label);
    return kept;
}

double clamped(double value, double lo, double hi)
{
    return std::max(lo, std::min(value, hi));
}

TickStyle xStyle(const RedrawOptions& options, model::AngleUnit angleUnit)
{
    if (!options.exactTrig)
        return TickStyle::Decimal;
    if (options.fractionForm)
        return TickStyle::PiFractions;
    return angleUnit == model::AngleUnit::Degrees ? TickStyle::Degrees : TickStyle::PiMultiples;
}

// The labels of one axis (0: x, 1: y) at their places on a surface of the given size.
std::vector<TickLabel> axisLabels(const model::ViewWindow& view, int axis, TickStyle style,
                                  const PlotScale& scale, const QFontMetricsF& metrics)
{
    const bool isX = axis == 0;
    const double interval = isX ? view.XTicks * view.XStep : view.YTicks * view.YStep;
    const QSizeF size = scale.pixels();
    // Strides whose labels could not keep apart even at their smallest (one digit wide, one
    // line high) are passed over before any text is written or measured: the labels of a
    // view with more ticks than pixels stand on a coarser grid of ticks.
    const QPointF perTick = scale.toPixel(interval, interval) - scale.toPixel(0, 0);
    const double smallest = isX ? metrics.horizontalAdvance(QLatin1Char('0')) : metrics.height();
    const double pixelsPerTick = std::abs(isX ? perTick.x() : perTick.y());
    int firstStride = 0;
    while (firstStride < 53 && strideAt(firstStride) * pixelsPerTick < smallest + kLabelGap)
        ++firstStride;
    const double coarse = interval * strideAt(firstStride);
    const std::vector<double> ticks =
        isX ? tickPositions(coarse, view.XMin, view.XMax, size.width())
            : tickPositions(coarse, view.YMin, view.YMax, size.height());
    const QStringList texts = tickLabelTexts(ticks, style);
    // Where the other axis stands on the surface; off the view, the labels go to the edge.
    const bool otherOnView =
        isX ? (view.YMin <= 0 && 0 <= view.YMax) : (view.XMin <= 0 && 0 <= view.XMax);
    const QPointF origin = scale.toPixel(0, 0);
    std::vector<Candidate> candidates;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        TickLabel label;
        label.text = texts[qsizetype(i)];
        const qsizetype bar = label.text.indexOf(QLatin1Char('/'));
        if (style == TickStyle::PiFractions && bar > 0) {
            label.denominator = label.text.mid(bar + 1);
            label.text.truncate(bar);
        }
        double w = metrics.horizontalAdvance(label.text);
        double h = metrics.height();
        if (!label.denominator.isEmpty()) {
            w = std::max(w, metrics.horizontalAdvance(label.denominator));
            h = 2 * h + 3;
        }
        if (w > size.width() - 2 || h > size.height() - 2)
            continue;
        double left = 0;
        double top = 0;
        if (isX) {
            left = scale.toPixel(ticks[i], 0).x() - w / 2;
            top = otherOnView ? origin.y() + kTickHalfLength + 2 : size.height() - h - 2;
            if (top + h > size.height() - 1) // no room below the axis: above it
                top = origin.y() - kTickHalfLength - 2 - h;
        } else {
            left = otherOnView ? origin.x() - kTickHalfLength - 2 - w : 2;
            if (left < 1) // no room left of the axis: right of it
                left = origin.x() + kTickHalfLength + 2;
            top = scale.toPixel(0, ticks[i]).y() - h / 2;
        }
        label.rect = QRectF(clamped(left, 1, size.width() - w - 1),
                            clamped(top, 1, size.height() - h - 1), w, h);
        candidates.push_back({label, std::round(ticks[i] / interval)});
    }
    return thinned(candidates, firstStride);
}

} // namespace

QStringList tickLabelTexts(const std::vector<double>& values, TickStyle style)
{
    const bool pi = style == TickStyle::PiMultiples || style == TickStyle::PiFractions;
    std::vector<double> numbers = values;
    if (pi) {
        for (double& n : numbers)
            n /= eval::kPiValue;
        QStringList fractions = piFractionTexts(numbers);
        if (!fractions.isEmpty() || numbers.empty())
            return fractions;
    }
    QString suffix;
    if (pi)
        suffix = kPi;
    else if (style == TickStyle::Degrees)
        suffix = QChar(0x00B0);
    const int budget = kMaxLabelChars - int(suffix.size());
    double largest = 0;
    for (const double n : numbers)
        largest = std::max(largest, std::abs(n));
    const bool powers = largest >= 1e6 || (largest > 0 && largest < 1e-3);
    const double interval = smallestGap(numbers);
    int decimals = exactDecimals(numbers, interval);
    if (decimals < 0) // not exact: four significant digits of the interval tell ticks apart
        decimals = std::max(0, 3 - int(std::floor(std::log10(interval))));
    QStringList texts;
    for (const double n : numbers) {
        QString text = powers ? powerText(n, budget) : decimalText(n, decimals, budget);
        if (text == QLatin1String("0"))
            texts << text;
        else if (pi && (text == QLatin1String("1") || text == QString(kMinus) + QLatin1Char('1')))
            texts << text.chopped(1) + suffix;
        else
            texts << text + suffix;
    }
    return texts;
}

QString piMultipleText(double multiple)
{
    return tickLabelTexts({multiple * eval::kPiValue}, TickStyle::PiMultiples).value(0);
}

TickLayout layoutTicks(const model::ViewWindow& view, const RedrawOptions& options,
                       model::AngleUnit angleUnit, QSizeF logical, const QFont& font,
                       QPaintDevice* device)
{
    TickLayout layout;
    if (!options.tickLabels)
        return layout;
    const PlotScale scale = SetPlotScale(logical, view);
    const QFontMetricsF metrics(font, device);
    layout.xMarks = tickPositions(view.XTicks * view.XStep, view.XMin, view.XMax, logical.width());
    layout.yMarks = tickPositions(view.YTicks * view.YStep, view.YMin, view.YMax, logical.height());
    layout.labels = axisLabels(view, 0, xStyle(options, angleUnit), scale, metrics);
    const std::size_t xCount = layout.labels.size();
    // A y label that would sit on an x label gives way.
    const auto yLabels = axisLabels(view, 1, TickStyle::Decimal, scale, metrics);
    for (const TickLabel& y : yLabels) {
        const QRectF halo = y.rect.adjusted(-kLabelGap, -kLabelGap, kLabelGap, kLabelGap);
        if (std::none_of(layout.labels.begin(), layout.labels.begin() + qsizetype(xCount),
                         [&](const TickLabel& x) { return halo.intersects(x.rect); }))
            layout.labels.push_back(y);
    }
    return layout;
}

void drawTickMarks(Surface& surface, const model::ViewWindow& view,
                   const RedrawOptions& options, const QColor& color)
{
    if (!options.tickLabels)
        return;
    const PlotScale& s = surface.scale;
    QPainter& painter = surface.painter;
    painter.setPen(QPen(color, hairlineWidth(surface)));
    const double xAxisAt = AxisPosition(view.YMin, view.YMax);
    const double yAxisAt = AxisPosition(view.XMin, view.XMax);
    const QSizeF size = s.pixels();
    const double xInterval = view.XTicks * view.XStep;
    const double yInterval = view.YTicks * view.YStep;
    for (const double x : tickPositions(xInterval, view.XMin, view.XMax, size.width())) {
        const QPointF p = s.toPixel(x, xAxisAt);
        painter.drawLine(p - QPointF(0, kTickHalfLength), p + QPointF(0, kTickHalfLength));
    }
    for (const double y : tickPositions(yInterval, view.YMin, view.YMax, size.height())) {
        const QPointF p = s.toPixel(yAxisAt, y);
        painter.drawLine(p - QPointF(kTickHalfLength, 0), p + QPointF(kTickHalfLength, 0));
    }
}

void drawTickPatches(Surface& surface, const model::ViewWindow& view,
                     const RedrawOptions& options, model::AngleUnit angleUnit)
{
    if (options.background.alpha() == 0)
        return;
    QPainter& painter = surface.painter;
    const TickLayout layout = layoutTicks(view, options, angleUnit, surface.scale.pixels(),
                                          painter.font(), painter.device());
    for (const TickLabel& label : layout.labels)
        painter.fillRect(label.rect.adjusted(-1, -1, 1, 1), options.background);
}

void drawTickLabels(Surface& surface, const model::ViewWindow& view,
                    const RedrawOptions& options, model::AngleUnit angleUnit, const QColor& color)
{
    QPainter& painter = surface.painter;
    const TickLayout layout = layoutTicks(view, options, angleUnit, surface.scale.pixels(),
                                          painter.font(), painter.device());
    painter.setPen(QPen(color, hairlineWidth(surface), Qt::SolidLine, Qt::FlatCap));
    for (const TickLabel& label : layout.labels) {
        const QRectF& r = label.rect;
        const QStaticText& upper = laidOut(painter, label.text);
        painter.drawStaticText(QPointF(r.center().x() - upper.size().width() / 2, r.top()), upper);
        if (label.denominator.isEmpty())
            continue;
        // A stacked fraction: the multiple of pi over a bar over the denominator.
        const double barY = r.top() + (r.height() - 3) / 2 + 1;
        painter.drawLine(QPointF(r.left(), barY), QPointF(r.right(), barY));
        const QStaticText& lower = laidOut(painter, label.denominator);
        painter.drawStaticText(QPointF(r.center().x() - lower.size().width() / 2, barY + 2), lower);
    }
}

} // namespace curvix::plot
