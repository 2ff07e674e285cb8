#pragma once

namespace curvix::eval {

// One sampled point of a curve, in world units.
struct PointD {
    double x = 0;
    double y = 0;
};

} // namespace curvix::eval
