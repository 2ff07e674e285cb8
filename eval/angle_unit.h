#pragma once

namespace curvix::eval {

// The unit sin, cos and tan take their argument in and asin, acos and atan give their
// answer in. The numbers are those the program has always stored for the unit.
enum class AngleUnit { Radians = 1, Degrees = 2, Gradians = 3 };

} // namespace curvix::eval
