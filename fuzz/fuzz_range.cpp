// The range-box readers: one number, the typing filter, and the two rows (the input's first
// eight lines are the x row and the y row).

#include "fuzz_text.h"

#include "plot/coordinates.h"
#include "plot/range_rows.h"

#include <cmath>

using namespace curvix::plot;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = curvix::fuzz::textOf(data, size);
    const QStringList parts = curvix::fuzz::partsOf(text, 8);

    for (const QString& part : parts) {
        const std::optional<double> value = readRangeNumber(part);
        if (value && !acceptsRangeText(part))
            curvix::fuzz::fail("a readable range text is refused while typing", part);
        if (acceptsStepText(part) && !acceptsRangeText(part))
            curvix::fuzz::fail("a step text the x row would refuse", part);
    }

    const RangeRow xRow{parts[0], parts[1], parts[2], parts[3]};
    const RangeRow yRow{parts[4], parts[5], parts[6], parts[7]};
    const ViewReading reading = readViewWindow(xRow, yRow);
    if (!reading.view) {
        if (reading.problem.isEmpty())
            curvix::fuzz::fail("a refused view without a reason", text);
        return 0;
    }
    const auto& v = *reading.view;
    for (double d : {v.XMin, v.XMax, v.XStep, v.XTicks, v.YMin, v.YMax, v.YStep, v.YTicks}) {
        if (!std::isfinite(d))
            curvix::fuzz::fail("a view with a value that is not finite", text);
    }
    if (!(v.XMin < v.XMax) || !(v.YMin < v.YMax) || v.XStep < 0 || v.YStep < 0)
        curvix::fuzz::fail("an empty or reversed view", text);
    return 0;
}
