#pragma once

// The batch evaluator's loops for each instruction set, chosen once at run time.

#include "eval/program.h"

namespace curvix::eval::batch {

// Values per chunk of a batch: the slots of a chunk stay in the L1 cache while the
// instructions run over it one after the other.
constexpr int kChunk = 512;

// Runs one instruction over n values, a chunk or, for a program of one instruction, the
// whole span: out[i] from a[i], b[i] and, for a finishing step that adds a slot, c[i]. out
// is never one of a, b or c.
using Kernel = void (*)(const Program::Instr& in, const double* a, const double* b,
                        const double* c, double* out, int n);

// Any x86-64 processor: library functions one value at a time, as a single point has them.
void runBaseline(const Program::Instr& in, const double* a, const double* b, const double* c,
                 double* out, int n);
// AVX2 with FMA: four values at a time, library functions from SLEEF.
void runAvx2(const Program::Instr& in, const double* a, const double* b, const double* c,
             double* out, int n);
// AVX-512 (F and DQ): eight values at a time, library functions from SLEEF.
void runAvx512(const Program::Instr& in, const double* a, const double* b, const double* c,
               double* out, int n);

} // namespace curvix::eval::batch
