// Compiled with -mavx2 -mfma -ffp-contract=off: the compiler may widen every loop to four
// values, but never fuse a multiplication and an addition, so that sums and products come
// out as on the baseline, bit for bit.

#include "eval/batch_vector.h"

#include <immintrin.h>
#include <sleef.h>

#include <cfloat>
#include <cstdint>

namespace curvix::eval::batch {

namespace {

struct Avx2 {
    using Vector = __m256d;
    static constexpr int kWidth = 4;

    static Vector load(const double* p) { return _mm256_loadu_pd(p); }
    static void store(double* p, Vector v) { _mm256_storeu_pd(p, v); }
    static Vector set1(double v) { return _mm256_set1_pd(v); }
    static Vector mul(Vector a, Vector b) { return _mm256_mul_pd(a, b); }
    static Vector add(Vector a, Vector b) { return _mm256_add_pd(a, b); }
    static Vector sqrt(Vector v) { return _mm256_sqrt_pd(v); }

    // The lanes whose vector result may differ from the scalar one by more than rounding:
    // an argument that is infinite or NaN, or a result that is zero (its sign), subnormal,
    // infinite or NaN. Domain edges, poles and overflow all end up there.
    static unsigned lanesToRedo(Vector x, Vector r)
    {
        const Vector magnitude = _mm256_castsi256_pd(_mm256_set1_epi64x(INT64_MAX));
        const Vector largest = _mm256_set1_pd(DBL_MAX);
        const Vector ax = _mm256_and_pd(x, magnitude);
        const Vector ar = _mm256_and_pd(r, magnitude);
        const Vector badX = _mm256_cmp_pd(ax, largest, _CMP_NLE_UQ);
        const Vector goodR = _mm256_and_pd(_mm256_cmp_pd(ar, _mm256_set1_pd(DBL_MIN), _CMP_GE_OQ),
                                           _mm256_cmp_pd(ar, largest, _CMP_LE_OQ));
        return unsigned(~_mm256_movemask_pd(goodR) & 0xF) | unsigned(_mm256_movemask_pd(badX));
    }

    // SLEEF's versions within 1 ulp; the rest stay one value at a time.
    // (SLEEF declares them with a const return type, hence the type of one of them.)
    using VectorFunction = decltype(&Sleef_sind4_u10avx2);
    static VectorFunction function(Function function)
    {
        switch (function) {
        case Function::Sin: return Sleef_sind4_u10avx2;
        case Function::Cos: return Sleef_cosd4_u10avx2;
        case Function::Tan: return Sleef_tand4_u10avx2;
        case Function::Asin: return Sleef_asind4_u10avx2;
        case Function::Acos: return Sleef_acosd4_u10avx2;
        case Function::Atan: return Sleef_atand4_u10avx2;
        case Function::Exp: return Sleef_expd4_u10avx2;
        case Function::Ln: return Sleef_logd4_u10avx2;
        case Function::Log10: return Sleef_log10d4_u10avx2;
        case Function::Sinh: return Sleef_sinhd4_u10avx2;
        case Function::Cosh: return Sleef_coshd4_u10avx2;
        case Function::Tanh: return Sleef_tanhd4_u10avx2;
        case Function::Asinh: return Sleef_asinhd4_u10avx2;
        case Function::Acosh: return Sleef_acoshd4_u10avx2;
        case Function::Atanh: return Sleef_atanhd4_u10avx2;
        default: return nullptr;
        }
    }
};

} // namespace

void runAvx2(const Program::Instr& in, const double* a, const double* b, const double* c,
             double* out, int n)
{
    runKernel<vectorCallKernel<Avx2>, vectorPowKKernel<Avx2>>(in, a, b, c, out, n);
}

} // namespace curvix::eval::batch
