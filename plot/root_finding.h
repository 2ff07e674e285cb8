#pragma once

#include <functional>

// The numerical steps of the points of interest.
namespace curvix::plot::numeric {

using Function = std::function<double(double)>;

// Brent's method on [a, b], where fa = f(a) and fb = f(b) have opposite signs: the root to
// within absTol plus a few units in the last place. NaN when the function is not defined
// somewhere it looks.
double brentZero(const Function& f, double a, double b, double fa, double fb, double absTol);

// Where sign * f is largest on [a, b], by golden section: for an extremum whose numerical
// slope is too noisy to change sign cleanly.
double goldenExtremum(const Function& f, double a, double b, double sign);

// Five-point differences over steps of k: about 1e-13 (slope) and 1e-10 (curvature) of the
// function's size for k near 1e-3.
double slopeAt(const Function& f, double x, double k);
double curvatureAt(const Function& f, double x, double k);

// Whether f has no jump and no pole between a and b (fa, fb its values there): halving
// towards the steeper half, the change of a continuous function dies away, that of a jump
// does not.
bool continuousOn(const Function& f, double a, double b, double fa, double fb);

} // namespace curvix::plot::numeric
