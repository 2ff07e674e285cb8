// Compiled with -mavx512f -mavx512dq -mavx2 -mfma -ffp-contract=off: the compiler may widen
// every loop to eight values, but never fuse a multiplication and an addition, so that sums and
// products come out as on the baseline, bit for bit.

#include "eval/batch_vector.h"

#include <immintrin.h>
#include <sleef.h>

#include <cfloat>
#include <cstdint>

namespace curvix::eval::batch {

namespace {

struct Avx512 {
    using Vector = __m512d;
    static constexpr int kWidth = 8;

    static Vector load(const double* p) { return _mm512_loadu_pd(p); }
    static void store(double* p, Vector v) { _mm512_storeu_pd(p, v); }
    static Vector set1(double v) { return _mm512_set1_pd(v); }
    static Vector mul(Vector a, Vector b) { return _mm512_mul_pd(a, b); }
    static Vector add(Vector a, Vector b) { return _mm512_add_pd(a, b); }
    // (The masked form: GCC 12 warns about the plain one's undefined pass-through.)
    static Vector sqrt(Vector v) { return _mm512_maskz_sqrt_pd(0xFF, v); }

    // As for AVX2: arguments that are not finite, results that are not normal numbers; the
    // classes of AVX-512 DQ tell both in one step each.
    static unsigned lanesToRedo(Vector x, Vector r)
    {
        constexpr int kNan = 0x01 | 0x80;
        constexpr int kInfinite = 0x08 | 0x10;
        constexpr int kZero = 0x02 | 0x04;
        constexpr int kSubnormal = 0x20;
        return unsigned(_mm512_fpclass_pd_mask(x, kNan | kInfinite)) |
               unsigned(_mm512_fpclass_pd_mask(r, kNan | kInfinite | kZero | kSubnormal));
    }

    // SLEEF's versions within 1 ulp; the rest stay one value at a time.
    // (SLEEF declares them with a const return type, hence the type of one of them.)
    using VectorFunction = decltype(&Sleef_sind8_u10avx512f);
    static VectorFunction function(Function function)
    {
        switch (function) {
        case Function::Sin: return Sleef_sind8_u10avx512f;
        case Function::Cos: return Sleef_cosd8_u10avx512f;
        case Function::Tan: return Sleef_tand8_u10avx512f;
        case Function::Asin: return Sleef_asind8_u10avx512f;
        case Function::Acos: return Sleef_acosd8_u10avx512f;
        case Function::Atan: return Sleef_atand8_u10avx512f;
        case Function::Exp: return Sleef_expd8_u10avx512f;
        case Function::Ln: return Sleef_logd8_u10avx512f;
        case Function::Log10: return Sleef_log10d8_u10avx512f;
        case Function::Sinh: return Sleef_sinhd8_u10avx512f;
        case Function::Cosh: return Sleef_coshd8_u10avx512f;
        case Function::Tanh: return Sleef_tanhd8_u10avx512f;
        case Function::Asinh: return Sleef_asinhd8_u10avx512f;
        case Function::Acosh: return Sleef_acoshd8_u10avx512f;
        case Function::Atanh: return Sleef_atanhd8_u10avx512f;
        default: return nullptr;
        }
    }
};

} // namespace

void runAvx512(const Program::Instr& in, const double* a, const double* b, const double* c,
               double* out, int n)
{
    runKernel<vectorCallKernel<Avx512>, vectorPowKKernel<Avx512>>(in, a, b, c, out, n);
}

} // namespace curvix::eval::batch
