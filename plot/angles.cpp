#include "plot/angles.h"

#include "eval/numtext.h"

namespace curvix::plot {

namespace {

// The full turn in radians, as the program has always written it.
constexpr double kFullTurn = 6.28318530717958;

} // namespace

int angleConversionCase(model::AngleUnit from, model::AngleUnit to)
{
    using U = model::AngleUnit;
    if (from == U::Radians && to == U::Degrees) return 1;
    if (from == U::Degrees && to == U::Radians) return 2;
    if (from == U::Degrees && to == U::Gradians) return 3;
    if (from == U::Gradians && to == U::Degrees) return 4;
    if (from == U::Radians && to == U::Gradians) return 5;
    if (from == U::Gradians && to == U::Radians) return 6;
    return 0;
}

double convertAngle(double value, int conversionCase)
{
    switch (conversionCase) {
    case 1: return eval::roundHalfEven(360 / kFullTurn * value, 0);
    case 2: return eval::roundHalfEven(kFullTurn / 360 * value, 2);
    case 3: return eval::roundHalfEven(400.0 / 360 * value, 0);
    case 4: return eval::roundHalfEven(360.0 / 400 * value, 0);
    case 5: return eval::roundHalfEven(400 / kFullTurn * value, 0);
    case 6: return eval::roundHalfEven(kFullTurn / 400 * value, 2);
    default: return value;
    }
}

bool convertMarks(model::AppState& state, model::AngleUnit from, model::AngleUnit to)
{
    const int conversion = angleConversionCase(from, to);
    if (state.graphs.empty() || conversion == 0)
        return false;
    for (model::GraphEntry& entry : state.graphs)
        for (model::GraphMark& mark : entry.marks)
            mark.x = convertAngle(mark.x, conversion);
    return true;
}

} // namespace curvix::plot
