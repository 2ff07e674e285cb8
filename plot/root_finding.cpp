#include "plot/root_finding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace curvix::plot::numeric {

namespace {

constexpr double kEps = std::numeric_limits<double>::epsilon();

} // namespace

double brentZero(const Function& f, double a, double b, double fa, double fb, double absTol)
{
    double c = a, fc = fa, d = b - a, e = d;
    for (int iteration = 0; iteration < 200; ++iteration) {
        if ((fb > 0) == (fc > 0)) {
            c = a;
            fc = fa;
            d = e = b - a;
        }
        if (std::abs(fc) < std::abs(fb)) {
            a = b, b = c, c = a;
            fa = fb, fb = fc, fc = fa;
        }
        const double tol = 2 * kEps * std::abs(b) + absTol / 2;
        const double m = (c - b) / 2;
        if (std::abs(m) <= tol || fb == 0)
            return b;
        if (std::abs(e) < tol || std::abs(fa) <= std::abs(fb)) {
            d = e = m;
        } else {
            double p, q;
            const double s = fb / fa;
            if (a == c) {
                p = 2 * m * s;
                q = 1 - s;
            } else {
                const double qa = fa / fc, r = fb / fc;
                p = s * (2 * m * qa * (qa - r) - (b - a) * (r - 1));
                q = (qa - 1) * (r - 1) * (s - 1);
            }
            if (p > 0)
                q = -q;
            else
                p = -p;
            if (2 * p < std::min(3 * m * q - std::abs(tol * q), std::abs(e * q))) {
                e = d;
                d = p / q;
            } else {
                d = e = m;
            }
        }
        a = b;
        fa = fb;
        b += std::abs(d) > tol ? d : (m > 0 ? tol : -tol);
        fb = f(b);
        if (!std::isfinite(fb))
            return std::numeric_limits<double>::quiet_NaN();
    }
    return b;
}

double goldenExtremum(const Function& f, double a, double b, double sign)
{
    const double ratio = (std::sqrt(5.0) - 1) / 2;
    double c = b - ratio * (b - a), d = a + ratio * (b - a);
    double fc = sign * f(c), fd = sign * f(d);
    for (int i = 0; i < 100 && b - a > 4 * kEps * std::max(std::abs(a), std::abs(b)); ++i) {
        if (fc > fd) {
            b = d, d = c, fd = fc;
            c = b - ratio * (b - a);
            fc = sign * f(c);
        } else {
            a = c, c = d, fc = fd;
            d = a + ratio * (b - a);
            fd = sign * f(d);
        }
    }
    return (a + b) / 2;
}

double slopeAt(const Function& f, double x, double k)
{
    return (f(x - 2 * k) - 8 * f(x - k) + 8 * f(x + k) - f(x + 2 * k)) / (12 * k);
}

double curvatureAt(const Function& f, double x, double k)
{
    const double sum = -f(x + 2 * k) + 16 * f(x + k) - 30 * f(x) + 16 * f(x - k) - f(x - 2 * k);
    return sum / (12 * k * k);
}

bool continuousOn(const Function& f, double a, double b, double fa, double fb)
{
    const double change = std::abs(fb - fa);
    for (int i = 0; i < 60 && b - a > 4 * kEps * std::max(std::abs(a), std::abs(b)); ++i) {
        const double m = a + (b - a) / 2;
        const double fm = f(m);
        if (!std::isfinite(fm))
            return false;
        if (std::abs(fm - fa) > std::abs(fb - fm))
            b = m, fb = fm;
        else
            a = m, fa = fm;
    }
    return std::abs(fb - fa) <= 1e-6 * change + 64 * kEps * (std::abs(fa) + std::abs(fb));
}

} // namespace curvix::plot::numeric
