#include "eval/batch_loops.h"

namespace curvix::eval::batch {

void runBaseline(const Program::Instr& in, const double* a, const double* b, const double* c,
                 double* out, int n)
{
    runKernel<scalarCallKernel, scalarPowKKernel>(in, a, b, c, out, n);
}

} // namespace curvix::eval::batch
