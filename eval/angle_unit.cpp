#include "eval/ast.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace curvix::eval {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A right angle in the unit.
double rightAngle(AngleUnit unit)
{
    return unit == AngleUnit::Gradians ? 100 : 90;
}

// v = quadrant * q + rest, modulo a full turn, with |rest| about q / 2 at most. fmod is
// exact and rest is a difference of two close numbers, so a whole number of right angles
// leaves rest exactly 0: sin(180) comes out 0, not the sine of a rounded pi.
struct Reduced {
    int quadrant = 0; // 0 to 3
    double rest = 0;
};

Reduced reduce(double v, double q)
{
    const double turn = std::fmod(v, 4 * q);
    const double n = std::nearbyint(turn / q);
    return {int(n) & 3, turn - n * q};
}

// sin and cos of a reduced rest in the unit; 30 degrees is given exactly, as a pupil
// checks sin(30) = 0.5 first.
double restSin(double rest, double q)
{
    if (q == 90 && std::fabs(rest) == 30)
        return std::copysign(0.5, rest);
    return std::sin(rest * (std::numbers::pi / 2 / q));
}

double restCos(double rest, double q)
{
    return std::cos(rest * (std::numbers::pi / 2 / q));
}

// 0 - v rather than -v, so that sin(180) is +0 and not -0.
double sinInUnit(double v, double q, int shift)
{
    const Reduced r = reduce(v, q);
    switch ((r.quadrant + shift) & 3) {
    case 0: return restSin(r.rest, q);
    case 1: return restCos(r.rest, q);
    case 2: return 0.0 - restSin(r.rest, q);
    default: return 0.0 - restCos(r.rest, q);
    }
}

double tanInUnit(double v, double q)
{
    const Reduced r = reduce(v, q);
    const double t = std::fabs(r.rest) * 2 == q ? std::copysign(1.0, r.rest)
                                                : std::tan(r.rest * (std::numbers::pi / 2 / q));
    if ((r.quadrant & 1) == 0)
        return t;
    // An odd number of right angles: tan is -cot of the rest, undefined at the pole itself.
    return t == 0 ? kNaN : -1 / t;
}

// An angle in radians turned into the unit; multiplying by 180/pi keeps the right angles
// exact (asin(1) is 90), and the common sines of 30 and 150 degrees answer exactly too.
double inverseInUnit(Function function, double v, AngleUnit unit)
{
    const double q = rightAngle(unit);
    if (unit == AngleUnit::Degrees && std::fabs(v) == 0.5) {
        if (function == Function::Asin)
            return std::copysign(30.0, v);
        if (function == Function::Acos)
            return v > 0 ? 60.0 : 120.0;
    }
    return applyFunction(function, v) * (2 * q / std::numbers::pi);
}

} // namespace

bool isAngleFunction(Function function)
{
    switch (function) {
    case Function::Sin:
    case Function::Cos:
    case Function::Tan:
    case Function::Asin:
    case Function::Acos:
    case Function::Atan: return true;
    default: return false;
    }
}

double applyFunction(Function function, double v, AngleUnit unit)
{
    if (unit == AngleUnit::Radians || !isAngleFunction(function))
        return applyFunction(function, v);
    const double q = rightAngle(unit);
    switch (function) {
    case Function::Sin: return std::isfinite(v) ? sinInUnit(v, q, 0) : kNaN;
    case Function::Cos: return std::isfinite(v) ? sinInUnit(v, q, 1) : kNaN;
    case Function::Tan: return std::isfinite(v) ? tanInUnit(v, q) : kNaN;
    default: return inverseInUnit(function, v, unit);
    }
}

} // namespace curvix::eval
