#include "plot/area.h"

#include "plot/root_finding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <queue>
#include <vector>

namespace curvix::plot {

namespace {

using Kind = AreaValue::Kind;

constexpr double kRelativeAccuracy = 1e-10;
// Bisections of one piece before the quadrature stops and looks at why it did not converge.
constexpr int kMaxBisections = 2000;
// Cells of the scans for zeros, gaps in the domain and a primitive's poles.
constexpr int kScanCells = 2048;
// The scans sample off the cell edges so that a pole at a round number (0, 1) is not hit.
constexpr double kScanOffset = 0.3819660112501051;

// The 21-point Kronrod rule and the 10-point Gauss rule inside it, on [-1, 1].
constexpr std::array<double, 11> kKronrodNodes{
    0.995657163025808080735527280689003, 0.973906528517171720077964012084452,
    0.930157491355708226001207180059508, 0.865063366688984510732096688423493,
    0.780817726586416897063717578345042, 0.679409568299024406234327365114874,
    0.562757134668604683339000099272694, 0.433395394129247190799265943165784,
    0.294392862701460198131126603103866, 0.148874338981631210884826001129720,
    0.0};
constexpr std::array<double, 11> kKronrodWeights{
    0.011694638867371874278064396062192, 0.032558162307964727478818972459390,
    0.054755896574351996031381300244580, 0.075039674810919952767043140916190,
    0.093125454583697605535065465083366, 0.109387158802297641899210590325805,
    0.123491976262065851077208931837210, 0.134709217311473325928054001771707,
    0.142775938577060080797094273138717, 0.147739104901338491374841515972068,
    0.149445554002916905664936468389821};
// For the Kronrod nodes 1, 3, 5, 7 and 9.
constexpr std::array<double, 5> kGaussWeights{
    0.066671344308688137593568809893332, 0.149451349150580593145776339657697,
    0.219086362515982043995534934228163, 0.269266719309996355091226921569469,
    0.295524224714752870173892994651338};

// What a segment's nodes met besides finite values: a pole hit, or a point where f is
// not defined.
enum class NodeTrouble {
    None,
    Infinite,
    Undefined,
};

struct Segment {
    double lo = 0;
    double hi = 0;
    double value = 0;    // the Kronrod estimate of the integral
    double absValue = 0; // ... of the integral of |f|
    double error = 0;
    NodeTrouble trouble = NodeTrouble::None;

    bool operator<(const Segment& other) const { return error < other.error; }
};

Segment kronrod(const eval::CompiledFormula& f, double lo, double hi)
{
    Segment s{lo, hi};
    const double centre = 0.5 * (lo + hi);
    const double half = 0.5 * (hi - lo);
    double kronrodSum = 0, gaussSum = 0, absSum = 0;
    auto take = [&](double x, int node, double& sum) {
        const double y = f.evaluate(x);
        if (std::isnan(y))
            s.trouble = NodeTrouble::Undefined;
        else if (std::isinf(y) && s.trouble == NodeTrouble::None)
            s.trouble = NodeTrouble::Infinite;
        if (!std::isfinite(y))
            return;
        kronrodSum += kKronrodWeights[std::size_t(node)] * y;
        absSum += kKronrodWeights[std::size_t(node)] * std::abs(y);
        if (node % 2 == 1)
            sum += kGaussWeights[std::size_t(node / 2)] * y;
    };
    for (int node = 0; node < 10; ++node) {
        double left = 0, right = 0;
        take(centre - half * kKronrodNodes[std::size_t(node)], node, left);
        take(centre + half * kKronrodNodes[std::size_t(node)], node, right);
        gaussSum += left + right;
    }
    double unused = 0;
    take(centre, 10, unused);
    s.value = kronrodSum * half;
    s.absValue = absSum * half;
    s.error = s.trouble == NodeTrouble::None ? std::abs((kronrodSum - gaussSum) * half)
                                             : std::numeric_limits<double>::infinity();
    return s;
}

bool bisectable(const Segment& s)
{
    const double mid = 0.5 * (s.lo + s.hi);
    return mid > s.lo && mid < s.hi;
}

// Whether the integral from s towards s + dir * length diverges at s: the pieces between
// s + dir * length / 2^(k+1) and s + dir * length / 2^k of a convergent integral shrink
// geometrically (by 2^(p-1) for |x - s|^-p), those of a divergent one do not.
Kind singularityAt(const eval::CompiledFormula& f, double s, double dir, double length)
{
    std::vector<double> pieces;
    double outer = length;
    for (int k = 0; k < 1100 && pieces.size() < 64; ++k) {
        const double inner = outer / 2;
        const double near = s + dir * inner, far = s + dir * outer;
        // Closer to s than its last digits can tell, the pieces are rounding.
        if (near == s || near == far || inner < 1e-11 * std::abs(s))
            break;
        const Segment piece = kronrod(f, std::min(near, far), std::max(near, far));
        if (piece.trouble == NodeTrouble::Undefined)
            return Kind::Undefined;
        if (piece.trouble == NodeTrouble::Infinite)
            return Kind::Divergent;
        pieces.push_back(std::abs(piece.value));
        outer = inner;
    }
    constexpr std::size_t kSpan = 10;
    if (pieces.size() <= kSpan)
        return Kind::Finite;
    const double last = pieces.back(), earlier = pieces[pieces.size() - 1 - kSpan];
    if (!(earlier > 1e-300))
        return Kind::Finite;
    const double ratio = std::pow(last / earlier, 1.0 / double(kSpan));
    // |x|^-p halves its pieces by 2^(p-1): 1 at p = 1. Nearer 1 than this, a convergent tail
    // would lie below the doubles near the point and be lost: it is told as divergent.
    return ratio > 0.99 ? Kind::Divergent : Kind::Finite;
}

struct PieceResult {
    Kind kind = Kind::Finite;
    double value = 0;
};

// Looks at the singular point a segment of the quadrature was narrowed down to, on both
// sides within [lo, hi].
Kind singularityNear(const eval::CompiledFormula& f, double lo, double hi, const Segment& segment)
{
    const double w = segment.hi - segment.lo;
    if (segment.trouble == NodeTrouble::Undefined && w > 1e-6 * (hi - lo))
        return Kind::Undefined;
    // Where |f| peaks: a pole to the last digit, or the top of a steep but finite hill,
    // whose pieces then shrink as those of a convergent integral do.
    const auto magnitude = [&f](double x) { return std::abs(f.evaluate(x)); };
    double s = numeric::goldenExtremum(magnitude, std::max(lo, segment.lo - w),
                                       std::min(hi, segment.hi + w), 1);
    // The search closes in on an end of the piece without reaching it.
    if (s - lo <= 1e-12 * (hi - lo))
        s = lo;
    else if (hi - s <= 1e-12 * (hi - lo))
        s = hi;
    for (const double dir : {-1.0, 1.0}) {
        const double length = dir > 0 ? hi - s : s - lo;
        if (length <= 0)
            continue;
        const Kind kind = singularityAt(f, s, dir, std::min(length, 0.5 * (hi - lo)));
        if (kind != Kind::Finite)
            return kind;
    }
    return Kind::Finite;
}

// Whether the quadrature's segments hide a divergence or a gap in the domain. One that did
// not converge is looked at where its worst segments are; one that did, where it narrowed
// down far, since near a pole the relative accuracy can be met by a huge, wrong value.
Kind diagnose(const eval::CompiledFormula& f, double lo, double hi, std::vector<Segment> segments,
              bool converged)
{
    if (converged) {
        const auto narrowest = std::min_element(
            segments.begin(), segments.end(),
            [](const Segment& x, const Segment& y) { return x.hi - x.lo < y.hi - y.lo; });
        if (narrowest->hi - narrowest->lo > 1e-7 * (hi - lo))
            return Kind::Finite;
        return singularityNear(f, lo, hi, *narrowest);
    }
    std::sort(segments.begin(), segments.end(),
              [](const Segment& x, const Segment& y) { return y < x; });
    const std::size_t looked = std::min<std::size_t>(segments.size(), 4);
    for (std::size_t i = 0; i < looked; ++i)
        if (const Kind kind = singularityNear(f, lo, hi, segments[i]); kind != Kind::Finite)
            return kind;
    return Kind::Finite;
}

// The running totals of the quadrature's segments; an infinite error is counted apart,
// since it cannot be taken back out of a sum.
struct Totals {
    double error = 0;
    double absValue = 0;
    int infinite = 0;

    void add(const Segment& s, double sign)
    {
        absValue += sign * s.absValue;
        if (std::isinf(s.error))
            infinite += int(sign);
        else
            error += sign * s.error;
    }
    bool converged() const { return infinite == 0 && error <= kRelativeAccuracy * absValue; }
};

// The integral on [lo, hi], lo < hi, where f keeps one sign.
PieceResult integratePiece(const eval::CompiledFormula& f, double lo, double hi)
{
    std::priority_queue<Segment> open;
    std::vector<Segment> closed; // too narrow to bisect
    Totals totals;
    open.push(kronrod(f, lo, hi));
    totals.add(open.top(), 1);
    for (int i = 0; i < kMaxBisections && !open.empty() && !totals.converged(); ++i) {
        const Segment worst = open.top();
        open.pop();
        if (!bisectable(worst)) {
            closed.push_back(worst);
            continue;
        }
        const double mid = 0.5 * (worst.lo + worst.hi);
        const Segment left = kronrod(f, worst.lo, mid), right = kronrod(f, mid, worst.hi);
        totals.add(worst, -1);
        totals.add(left, 1);
        totals.add(right, 1);
        open.push(left);
        open.push(right);
    }
    std::vector<Segment> all = std::move(closed);
    for (; !open.empty(); open.pop())
        all.push_back(open.top());
    PieceResult result;
    for (const Segment& s : all)
        result.value += s.value;
    result.kind = diagnose(f, lo, hi, all, totals.converged());
    return result;
}

double scanX(double lo, double hi, int cell)
{
    return lo + (cell + kScanOffset) * (hi - lo) / kScanCells;
}

// Where f changes sign between two scan points x0 < x1, f(x0) = y0: a zero, or a pole.
double signChange(const eval::CompiledFormula& f, double x0, double x1, double y0)
{
    for (int i = 0; i < 200; ++i) {
        const double mid = 0.5 * (x0 + x1);
        if (!(mid > x0 && mid < x1))
            break;
        const double y = f.evaluate(mid);
        if (y == 0 || !std::isfinite(y))
            return mid;
        if ((y > 0) == (y0 > 0))
            x0 = mid;
        else
            x1 = mid;
    }
    return 0.5 * (x0 + x1);
}

// The points in (lo, hi) where f changes sign; nothing when a scan point is not in the
// domain (and undefined set).
std::vector<double> zerosOn(const eval::CompiledFormula& f, double lo, double hi, bool& undefined)
{
    std::vector<double> zeros;
    double previousX = 0, previousY = 0;
    bool havePrevious = false;
    for (int cell = 0; cell < kScanCells; ++cell) {
        const double x = scanX(lo, hi, cell);
        const double y = f.evaluate(x);
        if (std::isnan(y)) {
            undefined = true;
            return {};
        }
        if (y == 0 || std::isinf(y))
            continue;
        if (havePrevious && (y > 0) != (previousY > 0))
            zeros.push_back(signChange(f, previousX, x, previousY));
        previousX = x;
        previousY = y;
        havePrevious = true;
    }
    return zeros;
}

// F(b) - F(a) for each piece, when F is finite at every scan point and the ends.
bool exactPieces(const eval::CompiledFormula& primitive, const std::vector<double>& ends,
                 std::vector<double>& pieces)
{
    const double lo = ends.front(), hi = ends.back();
    for (int cell = 0; cell < kScanCells; ++cell)
        if (!std::isfinite(primitive.evaluate(scanX(lo, hi, cell))))
            return false;
    std::vector<double> values;
    for (double x : ends) {
        values.push_back(primitive.evaluate(x));
        if (!std::isfinite(values.back()))
            return false;
    }
    pieces.clear();
    for (std::size_t i = 1; i < values.size(); ++i)
        pieces.push_back(values[i] - values[i - 1]);
    return true;
}

// The primitive's value stands when the quadrature's agrees with it to well within what
// the subtraction of two large values of F can keep.
void preferExact(AreaValue& value, const eval::CompiledFormula& primitive,
                 const std::vector<double>& ends)
{
    std::vector<double> pieces;
    if (!exactPieces(primitive, ends, pieces))
        return;
    double integral = 0, area = 0, scale = value.area;
    for (double piece : pieces) {
        integral += piece;
        area += std::abs(piece);
    }
    scale = std::max({scale, std::abs(primitive.evaluate(ends.front())),
                      std::abs(primitive.evaluate(ends.back()))});
    if (!(std::abs(integral - value.integral) <= 1e-7 * scale + 1e-300))
        return;
    value.integral = integral;
    value.area = area;
    value.exact = true;
}

} // namespace

AreaValue integrateArea(const eval::CompiledFormula& f, double a, double b,
                        const eval::CompiledFormula* primitive)
{
    AreaValue value;
    if (!std::isfinite(a) || !std::isfinite(b)) {
        value.message = areaMessage(value, a, b);
        return value;
    }
    value.kind = Kind::Finite;
    if (a == b)
        return value;
    const double lo = std::min(a, b), hi = std::max(a, b);
    bool undefined = false;
    std::vector<double> ends{lo};
    for (double zero : zerosOn(f, lo, hi, undefined))
        if (zero > ends.back() && zero < hi)
            ends.push_back(zero);
    ends.push_back(hi);
    if (undefined)
        value.kind = Kind::Undefined;
    for (std::size_t i = 1; i < ends.size() && value.kind == Kind::Finite; ++i) {
        const PieceResult piece = integratePiece(f, ends[i - 1], ends[i]);
        value.kind = piece.kind;
        value.integral += piece.value;
        value.area += std::abs(piece.value);
    }
    // Values beyond the doubles near a singular point: nothing finite to show.
    if (value.kind == Kind::Finite && !std::isfinite(value.area))
        value.kind = Kind::Divergent;
    if (value.kind != Kind::Finite) {
        value.integral = value.area = 0;
        value.message = areaMessage(value, a, b);
        return value;
    }
    if (primitive)
        preferExact(value, *primitive, ends);
    // What cancels to below the accuracy is 0: 2sin(x+1) over a period reads 0, not 1e-17.
    if (std::abs(value.integral) <= 1e-12 * value.area)
        value.integral = 0;
    if (b < a)
        value.integral = -value.integral;
    return value;
}

} // namespace curvix::plot
