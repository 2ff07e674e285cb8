// Compiled with -mavx2 -mfma -ffp-contract=off: the compiler may widen every loop to four
// values, but never fuse a multiplication and an addition, so that sums and products come
// out as on the baseline, bit for bit.

#include "eval/batch_loops.h"

#include <immintrin.h>
#include <sleef.h>

#include <cfloat>
#include <cstdint>

namespace curvix::eval::batch {

namespace {

using VectorFunction = __m256d (*)(__m256d);

__m256d vectorSqrt(__m256d v)
{
    return _mm256_sqrt_pd(v);
}

// SLEEF declares its functions with a const return type; this gives them the plain one.
template <auto F>
__m256d through(__m256d v)
{
    return F(v);
}

// SLEEF's versions within 1 ulp; the rest stay one value at a time.
VectorFunction vectorFunction(Function function)
{
    switch (function) {
    case Function::Sqrt: return vectorSqrt;
    case Function::Sin: return through<Sleef_sind4_u10avx2>;
    case Function::Cos: return through<Sleef_cosd4_u10avx2>;
    case Function::Tan: return through<Sleef_tand4_u10avx2>;
    case Function::Asin: return through<Sleef_asind4_u10avx2>;
    case Function::Acos: return through<Sleef_acosd4_u10avx2>;
    case Function::Atan: return through<Sleef_atand4_u10avx2>;
    case Function::Exp: return through<Sleef_expd4_u10avx2>;
    case Function::Ln: return through<Sleef_logd4_u10avx2>;
    case Function::Log10: return through<Sleef_log10d4_u10avx2>;
    case Function::Sinh: return through<Sleef_sinhd4_u10avx2>;
    case Function::Cosh: return through<Sleef_coshd4_u10avx2>;
    case Function::Tanh: return through<Sleef_tanhd4_u10avx2>;
    case Function::Asinh: return through<Sleef_asinhd4_u10avx2>;
    case Function::Acosh: return through<Sleef_acoshd4_u10avx2>;
    case Function::Atanh: return through<Sleef_atanhd4_u10avx2>;
    default: return nullptr;
    }
}

// The lanes whose vector result may differ from the scalar one by more than rounding: an
// argument that is infinite or NaN, or a result that is zero (its sign), subnormal, infinite
// or NaN. Domain edges, poles and overflow all end up there.
inline int lanesToRedo(__m256d x, __m256d r)
{
    const __m256d magnitude = _mm256_castsi256_pd(_mm256_set1_epi64x(INT64_MAX));
    const __m256d largest = _mm256_set1_pd(DBL_MAX);
    const __m256d ax = _mm256_and_pd(x, magnitude);
    const __m256d ar = _mm256_and_pd(r, magnitude);
    const __m256d badX = _mm256_cmp_pd(ax, largest, _CMP_NLE_UQ);
    const __m256d goodR = _mm256_and_pd(_mm256_cmp_pd(ar, _mm256_set1_pd(DBL_MIN), _CMP_GE_OQ),
                                        _mm256_cmp_pd(ar, largest, _CMP_LE_OQ));
    return (~_mm256_movemask_pd(goodR) & 0xF) | _mm256_movemask_pd(badX);
}

// out[i] = f(in[i]), four at a time, with the scalar function for the lanes it must take and
// for the last n % 4 values. in and out may be the same array.
template <class Scalar>
void mapLanes(const double* in, double* out, int n, VectorFunction f, Scalar scalar)
{
    int i = 0;
    for (; i + 4 <= n; i += 4) {
        const __m256d x = _mm256_loadu_pd(in + i);
        const __m256d r = f(x);
        const int redo = lanesToRedo(x, r);
        _mm256_storeu_pd(out + i, r);
        if (redo == 0)
            continue;
        alignas(32) double args[4];
        _mm256_store_pd(args, x);
        for (int lane = 0; lane < 4; ++lane) {
            if ((redo >> lane & 1) != 0)
                out[i + lane] = scalar(args[lane]);
        }
    }
    for (; i < n; ++i)
        out[i] = scalar(in[i]);
}

// The operand step, the function and the finishing step as three passes over the chunk.
template <class Scalar>
void vectorCall(const Instr& in, const double* a, const double* c, double* out, int n,
                VectorFunction f, Scalar scalar)
{
    alignas(32) double u[kChunk];
    const double* argument = a;
    if (in.preA) {
        const double am = in.am, ac = in.ac;
        for (int i = 0; i < n; ++i)
            u[i] = a[i] * am + ac;
        argument = u;
    }
    if (in.post == Program::PostNone) {
        mapLanes(argument, out, n, f, scalar);
        return;
    }
    mapLanes(argument, u, n, f, scalar);
    unaryPost<false>(in, u, c, out, n, [](double v) { return v; });
}

void vectorCallKernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    const VectorFunction f = vectorFunction(in.function);
    if (f == nullptr)
        return scalarCallKernel(in, a, c, out, n);
    const Function function = in.function;
    vectorCall(in, a, c, out, n, f, [function](double v) { return applyFunction(function, v); });
}

// x^0.5 is the square root except at -0 (+0) and -inf (+inf), which the scalar pow takes.
void vectorPowKKernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    if (in.k != 0.5)
        return scalarPowKKernel(in, a, c, out, n);
    vectorCall(in, a, c, out, n, vectorSqrt, [](double v) { return std::pow(v, 0.5); });
}

} // namespace

void runAvx2(const Program::Instr& in, const double* a, const double* b, const double* c,
             double* out, int n)
{
    runKernel<vectorCallKernel, vectorPowKKernel>(in, a, b, c, out, n);
}

} // namespace curvix::eval::batch
