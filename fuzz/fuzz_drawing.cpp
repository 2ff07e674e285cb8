// The drawing file reader: whatever the bytes, a refusal has a reason; an accepted drawing
// writes itself back to bytes that read as the same drawing and write the same bytes again;
// applying it either succeeds or leaves the state as it was.

#include "fuzz_text.h"

#include "model/drawing_file.h"

using namespace curvix::model;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    QString error;
    const std::optional<Drawing> drawing = readDrawing(bytes, &error);
    if (!drawing) {
        if (error.isEmpty())
            curvix::fuzz::fail("a refused file without a reason");
        return 0;
    }
    const QByteArray written = writeDrawing(*drawing);
    const std::optional<Drawing> again = readDrawing(written, &error);
    if (!again)
        curvix::fuzz::fail("a written drawing is refused:", error);
    if (!(*again == *drawing))
        curvix::fuzz::fail("a drawing changes on its way through the file",
                           QString::fromUtf8(written));
    if (writeDrawing(*again) != written)
        curvix::fuzz::fail("the second write gives other bytes", QString::fromUtf8(written));

    AppState state;
    state.verticalLines = {42};
    if (!applyDrawing(state, *drawing, &error)) {
        if (error.isEmpty() || state.verticalLines != std::vector<double>{42} || !state.graphs.empty())
            curvix::fuzz::fail("a refused drawing changed the state", error);
    } else if (std::size_t(state.graphCount) != drawing->functions.size()) {
        curvix::fuzz::fail("an applied drawing lost functions");
    }
    return 0;
}
