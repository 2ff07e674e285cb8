#include "plot/points_of_interest.h"

#include "plot/root_finding.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace curvix::plot {

namespace {

using namespace numeric;

// Samples across the view's width: fine enough to tell apart the zeros and extrema of the
// school families at any sensible zoom, cheap enough to mark the points at once.
constexpr int kIntervals = 4000;
constexpr double kEps = std::numeric_limits<double>::epsilon();

struct Samples {
    std::vector<double> xs;
    std::vector<double> ys;
    // How far from 0 a value may be and still count as 0: rounding in a difference of curves.
    std::vector<double> noise;
    double step = 0;
    double span = 0;
};

std::vector<double> sampleXs(const model::ViewWindow& view)
{
    std::vector<double> xs;
    const double span = view.XMax - view.XMin;
    if (!(span > 0) || !std::isfinite(span))
        return xs;
    xs.reserve(kIntervals + 1);
    // Each x from its index, so that no rounding piles up and the ends are exact.
    for (int i = 0; i <= kIntervals; ++i)
        xs.push_back(i == kIntervals ? view.XMax : view.XMin + span * i / kIntervals);
    return xs;
}


struct Extremum {
    double x = 0;
    double y = 0;
    bool maximum = false;
    bool zero = false; // touches 0: a double root
};

// The searches on one function's samples.
class Finder {
public:
    Finder(Function f, Samples samples) : m_f(std::move(f)), m_s(std::move(samples))
    {
        m_absTol = 1e-13 * m_s.span;
    }

    std::vector<double> zeros();
    const std::vector<Extremum>& extrema() { return m_extrema; }
    std::vector<double> inflections();
    void findExtrema();

private:
    bool defined(std::size_t i) const { return std::isfinite(m_s.ys[i]); }
    // -1, 0 or 1; 0 also for an undefined sample.
    int signAt(std::size_t i) const
    {
        const double y = m_s.ys[i];
        if (!std::isfinite(y) || std::abs(y) <= m_s.noise[i])
            return 0;
        return y > 0 ? 1 : -1;
    }
    bool isZeroSample(std::size_t i) const { return defined(i) && signAt(i) == 0; }
    // No pole and no jump from sample lo to sample hi.
    bool continuousBetween(std::size_t lo, std::size_t hi) const
    {
        for (std::size_t j = lo; j < hi; ++j)
            if (!continuousOn(m_f, m_s.xs[j], m_s.xs[j + 1], m_s.ys[j], m_s.ys[j + 1]))
                return false;
        return true;
    }
    void addRoot(std::vector<double>& out, std::size_t lo, std::size_t hi);
    void addDomainEdge(std::vector<double>& out, std::size_t inside, std::size_t outside);
    void refineExtremum(std::size_t lo, std::size_t hi, bool maximum);
    void refineInflection(std::vector<double>& out, std::size_t lo, std::size_t hi);
    // Whether the curvature has opposite signs just left and right of x, measured over less
    // than the distance to x: a kink (2-sqrt(abs(x)) at 0) changes the sign of the samples'
    // differences only.
    bool curvatureChangesSign(double x) const
    {
        const double q = m_s.step / 4, k = q / 4;
        const double left = curvatureAt(m_f, x - q, k), right = curvatureAt(m_f, x + q, k);
        return (left > 0 && right < 0) || (left < 0 && right > 0);
    }

    Function m_f;
    Samples m_s;
    double m_absTol = 0;
    std::vector<Extremum> m_extrema;
    // Where an extremum dips through 0 between samples of one sign: two zeros.
    std::vector<double> m_hiddenZeros;
};

// A zero bracketed by two samples of opposite sign; none where the function jumps.
void Finder::addRoot(std::vector<double>& out, std::size_t lo, std::size_t hi)
{
    if (!continuousBetween(lo, hi))
        return;
    const double ya = m_s.ys[lo], yb = m_s.ys[hi];
    const double x = brentZero(m_f, m_s.xs[lo], m_s.xs[hi], ya, yb, m_absTol);
    const double y = std::isfinite(x) ? m_f(x) : x;
    if (std::abs(y) <= 1e-6 * std::max(std::abs(ya), std::abs(yb)) + m_s.noise[lo])
        out.push_back(x);
}

// The last defined point before the domain ends is a zero when the value there vanishes
// (sqrt(x) at 0, sqrt(4-x^2) at 2).
void Finder::addDomainEdge(std::vector<double>& out, std::size_t inside, std::size_t outside)
{
    double in = m_s.xs[inside], out_ = m_s.xs[outside];
    double value = m_s.ys[inside];
    for (int i = 0; i < 80; ++i) {
        const double m = in + (out_ - in) / 2;
        if (m == in || m == out_)
            break;
        const double fm = m_f(m);
        if (std::isfinite(fm))
            in = m, value = fm;
        else
            out_ = m;
    }
    if (std::abs(value) <= 1e-6 * std::max(1.0, std::abs(m_s.ys[inside])))
        out.push_back(in);
}

std::vector<double> Finder::zeros()
{
    std::vector<double> out;
    const std::size_t n = m_s.xs.size();
    for (std::size_t i = 0; i < n; ++i) {
        if (isZeroSample(i)) {
            // A zero sample alone; a run of them is a stretch where the curve lies on the
            // axis (or two curves coincide), which has no single point to mark.
            const bool zeroBefore = i > 0 && isZeroSample(i - 1);
            const bool zeroAfter = i + 1 < n && isZeroSample(i + 1);
            if (zeroBefore || zeroAfter)
                continue;
            if (i > 0 && i + 1 < n && signAt(i - 1) * signAt(i + 1) < 0)
                addRoot(out, i - 1, i + 1);
            else
                out.push_back(m_s.xs[i]);
            continue;
        }
        if (i + 1 >= n)
            continue;
        if (signAt(i) * signAt(i + 1) < 0)
            addRoot(out, i, i + 1);
        else if (defined(i) != defined(i + 1))
            defined(i) ? addDomainEdge(out, i, i + 1) : addDomainEdge(out, i + 1, i);
    }
    // Double roots: extrema of value 0.
    for (const Extremum& e : m_extrema) {
        if (e.zero)
            out.push_back(e.x);
    }
    out.insert(out.end(), m_hiddenZeros.begin(), m_hiddenZeros.end());
    return out;
}

void Finder::refineExtremum(std::size_t lo, std::size_t hi, bool maximum)
{
    if (!continuousBetween(lo, hi))
        return; // a pole between rising and falling samples
    const double a = m_s.xs[lo], b = m_s.xs[hi];
    const double scale = std::max(1.0, std::max(std::abs(a), std::abs(b)));
    const double k = std::min(1e-3 * scale, m_s.step / 4);
    const Function slope = [&](double x) { return slopeAt(m_f, x, k); };
    const double sa = slope(a), sb = slope(b);
    double x;
    if (std::isfinite(sa) && std::isfinite(sb) && (sa > 0) != (sb > 0) && sa != 0 && sb != 0)
        x = brentZero(slope, a, b, sa, sb, m_absTol);
    else
        x = goldenExtremum(m_f, a, b, maximum ? 1 : -1);
    if (!std::isfinite(x) || !(a <= x && x <= b))
        return;
    const double y = m_f(x);
    double low = m_s.ys[lo], high = low;
    for (std::size_t i = lo; i <= hi; ++i)
        low = std::min(low, m_s.ys[i]), high = std::max(high, m_s.ys[i]);
    // The refinement ran away from what the samples showed.
    const double allowance = (high - low) + 64 * kEps * (std::abs(high) + std::abs(low));
    if (!std::isfinite(y) || y > high + allowance || y < low - allowance)
        return;
    const double zeroTolerance =
        1e-10 * (1 + std::max(std::abs(low), std::abs(high))) + m_s.noise[lo];
    m_extrema.push_back({x, y, maximum, std::abs(y) <= zeroTolerance});
    // Every sample on one side of 0 and the extremum on the other: the curve dips through.
    const int side = signAt(lo);
    bool oneSide = side != 0;
    for (std::size_t i = lo; i <= hi && oneSide; ++i)
        oneSide = signAt(i) == side;
    if (oneSide && (y > m_s.noise[lo] ? 1 : y < -m_s.noise[lo] ? -1 : 0) == -side) {
        const double fa = m_s.ys[lo], fb = m_s.ys[hi];
        for (const double z :
             {brentZero(m_f, a, x, fa, y, m_absTol), brentZero(m_f, x, b, y, fb, m_absTol)})
            if (std::isfinite(z))
                m_hiddenZeros.push_back(z);
    }
}

void Finder::findExtrema()
{
    // The sign of each step between samples, ignoring steps lost in rounding.
    int lastSign = 0;
    std::size_t lastIndex = 0;
    for (std::size_t i = 0; i + 1 < m_s.xs.size(); ++i) {
        if (!defined(i) || !defined(i + 1)) {
            lastSign = 0;
            continue;
        }
        const double d = m_s.ys[i + 1] - m_s.ys[i];
        const double noise = 16 * kEps * (std::abs(m_s.ys[i]) + std::abs(m_s.ys[i + 1])) +
                             m_s.noise[i] + m_s.noise[i + 1];
        const int sign = d > noise ? 1 : d < -noise ? -1 : 0;
        if (sign == 0)
            continue;
        if (lastSign != 0 && sign != lastSign)
            refineExtremum(lastIndex, i + 1, lastSign > 0);
        lastSign = sign;
        lastIndex = i;
    }
}

// The curvature changes sign between the samples lo and hi (as the samples' second
// differences say): where, on a finer five-point curvature.
void Finder::refineInflection(std::vector<double>& out, std::size_t lo, std::size_t hi)
{
    const auto& xs = m_s.xs;
    const auto& ys = m_s.ys;
    const double scale = std::max({1.0, std::abs(xs[lo]), std::abs(xs[hi])});
    const double k = std::min(4e-3 * scale, m_s.step / 2);
    Function curvature = [&](double x) { return curvatureAt(m_f, x, k); };
    // The fine curvature may keep its sign at a sample that is the inflection point itself
    // (its error is about 1e-11): then one sample further on each side.
    double a = xs[lo], b = xs[hi];
    double ca = curvature(a), cb = curvature(b);
    if (!((ca > 0 && cb < 0) || (ca < 0 && cb > 0)) && hi + 1 < xs.size()) {
        a = xs[lo - 1], b = xs[hi + 1];
        ca = curvature(a), cb = curvature(b);
    }
    if (!((ca > 0 && cb < 0) || (ca < 0 && cb > 0))) {
        // The fine curvature is lost in rounding: the samples' own difference.
        const double h = m_s.step;
        curvature = [&, h](double x) { return m_f(x + h) - 2 * m_f(x) + m_f(x - h); };
        a = xs[lo], b = xs[hi];
        ca = ys[lo + 1] - 2 * ys[lo] + ys[lo - 1];
        cb = ys[hi + 1] - 2 * ys[hi] + ys[hi - 1];
    }
    const double x = brentZero(curvature, a, b, ca, cb, m_absTol);
    if (std::isfinite(x) && std::isfinite(m_f(x)) && curvatureChangesSign(x))
        out.push_back(x);
}

std::vector<double> Finder::inflections()
{
    std::vector<double> out;
    const auto& xs = m_s.xs;
    const auto& ys = m_s.ys;
    int lastSign = 0;
    std::size_t lastIndex = 0;
    for (std::size_t i = 1; i + 1 < xs.size(); ++i) {
        if (!defined(i - 1) || !defined(i) || !defined(i + 1)) {
            lastSign = 0;
            continue;
        }
        const double s = ys[i + 1] - 2 * ys[i] + ys[i - 1];
        // Rounding of the values, and of the x positions themselves, which a straight line
        // turns into a curvature of about 1e-12 of its steps.
        const double noise =
            256 * kEps * (std::abs(ys[i - 1]) + 2 * std::abs(ys[i]) + std::abs(ys[i + 1])) +
            1e-9 * (std::abs(ys[i + 1] - ys[i]) + std::abs(ys[i] - ys[i - 1]));
        const int sign = s > noise ? 1 : s < -noise ? -1 : 0;
        if (sign == 0)
            continue;
        if (lastSign != 0 && sign != lastSign) {
            // The curvature changes sign somewhere among these samples: no pole or jump
            // may lie there.
            if (continuousBetween(lastIndex - 1, i + 1))
                refineInflection(out, lastIndex, i);
        }
        lastSign = sign;
        lastIndex = i;
    }
    return out;
}

bool inView(const model::ViewWindow& view, double x, double y)
{
    const double yLow = std::min(view.YMin, view.YMax), yHigh = std::max(view.YMin, view.YMax);
    return x >= view.XMin && x <= view.XMax && y >= yLow && y <= yHigh;
}

// Sorted by x; of one kind, points closer than rounding could tell apart become one.
std::vector<PointOfInterest> tidy(std::vector<PointOfInterest> points,
                                  const model::ViewWindow& view)
{
    std::erase_if(points, [&](const PointOfInterest& p) { return !inView(view, p.x, p.y); });
    std::sort(points.begin(), points.end(), [](const PointOfInterest& a, const PointOfInterest& b) {
        return a.x != b.x ? a.x < b.x : a.kind < b.kind;
    });
    const double close = 1e-8 * (view.XMax - view.XMin);
    std::vector<PointOfInterest> kept;
    for (const PointOfInterest& p : points) {
        const bool same = std::any_of(kept.rbegin(), kept.rend(), [&](const PointOfInterest& q) {
            return q.kind == p.kind && std::abs(q.x - p.x) <= close;
        });
        if (!same)
            kept.push_back(p);
    }
    return kept;
}

} // namespace

QString pointKindName(PointKind kind)
{
    switch (kind) {
    case PointKind::Zero:
        return QStringLiteral("zero");
    case PointKind::Minimum:
        return QStringLiteral("minimum");
    case PointKind::Maximum:
        return QStringLiteral("maximum");
    case PointKind::Inflection:
        return QStringLiteral("inflection");
    case PointKind::Intersection:
        return QStringLiteral("intersection");
    }
    return {};
}

std::vector<PointOfInterest> pointsOfInterest(const eval::CompiledFormula& formula,
                                              const model::ViewWindow& view)
{
    Samples s;
    s.xs = sampleXs(view);
    if (s.xs.empty())
        return {};
    s.ys.resize(s.xs.size());
    formula.evaluateBatch(s.xs, s.ys);
    s.noise.assign(s.xs.size(), 0.0);
    s.span = view.XMax - view.XMin;
    s.step = s.span / kIntervals;
    const Function f = [&](double x) { return formula.evaluate(x); };
    Finder finder(f, std::move(s));
    finder.findExtrema();

    std::vector<PointOfInterest> points;
    for (const double x : finder.zeros())
        points.push_back({PointKind::Zero, x, 0});
    for (const Extremum& e : finder.extrema())
        points.push_back({e.maximum ? PointKind::Maximum : PointKind::Minimum, e.x, e.y});
    for (const double x : finder.inflections())
        points.push_back({PointKind::Inflection, x, f(x)});
    return tidy(std::move(points), view);
}

std::vector<PointOfInterest> intersections(const eval::CompiledFormula& first,
                                           const eval::CompiledFormula& second,
                                           const model::ViewWindow& view)
{
    Samples s;
    s.xs = sampleXs(view);
    if (s.xs.empty())
        return {};
    const std::size_t n = s.xs.size();
    std::vector<double> other(n);
    s.ys.resize(n);
    first.evaluateBatch(s.xs, s.ys);
    second.evaluateBatch(s.xs, other);
    // Where both are equal but rounded apart, the difference is noise, not a crossing: the
    // rounding of the largest values met, since a formula such as 1-cos(x)^2 keeps the
    // rounding of its parts where its value is small.
    double largest = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double size = std::abs(s.ys[i]) + std::abs(other[i]);
        if (std::isfinite(size))
            largest = std::max(largest, size);
        s.ys[i] -= other[i];
    }
    s.noise.assign(n, 64 * kEps * largest);
    s.span = view.XMax - view.XMin;
    s.step = s.span / kIntervals;
    const Function difference = [&](double x) { return first.evaluate(x) - second.evaluate(x); };
    Finder finder(difference, std::move(s));
    finder.findExtrema();
    std::vector<PointOfInterest> points;
    for (const double x : finder.zeros())
        points.push_back({PointKind::Intersection, x, first.evaluate(x)});
    return tidy(std::move(points), view);
}

std::optional<PointOfInterest> nearestPointOfInterest(const std::vector<PointOfInterest>& points,
                                                      const PlotScale& scale, QPointF pixel,
                                                      double withinPixels)
{
    std::optional<PointOfInterest> nearest;
    double best = withinPixels;
    for (const PointOfInterest& p : points) {
        const QPointF at = scale.toPixel(p.x, p.y);
        const double distance = std::hypot(at.x() - pixel.x(), at.y() - pixel.y());
        if (distance <= best) {
            best = distance;
            nearest = p;
        }
    }
    return nearest;
}

} // namespace curvix::plot
