#pragma once

// The batch loops for a vector instruction set, over a traits class T that each such set's
// source file defines (and compiles with its own flags, see batch_loops.h):
//   Vector, kWidth              the register type and how many doubles it holds
//   load, store, set1, mul, add unaligned load and store, broadcast, lane-wise arithmetic
//   sqrt                        the correctly rounded square root
//   lanesToRedo(x, r)           a bit per lane whose result f(x) = r the scalar function must
//                               give instead (see below)
//   function(Function)          SLEEF's vector version within 1 ulp, or nullptr

#include "eval/batch_loops.h"

namespace curvix::eval::batch {

namespace {

// x^power for power 2 to 4, with the roundings of powerOf.
template <class T>
typename T::Vector raised(typename T::Vector x, int power)
{
    const typename T::Vector square = T::mul(x, x);
    if (power == 2)
        return square;
    return power == 3 ? T::mul(square, x) : T::mul(square, square);
}

// The operand step, the function and the finishing step in one pass, in registers, with
// the steps' own roundings: without fused multiply-add they give the scalar code's bits.
// Lanes in redo take the scalar function on the argument after its operand step.
template <class T, bool Redo, class F, class Scalar>
void vectorCall(const Instr& in, const double* a, const double* c, double* out, int n, F f,
                Scalar scalar)
{
    using V = typename T::Vector;
    constexpr int w = T::kWidth;
    const bool pre = in.preA;
    const int power = pre ? in.aPower : 1;
    const bool hasMul = (in.post & kMul) != 0;
    const bool hasAcc = (in.post & kAcc) != 0;
    const bool hasAdd = (in.post & kAdd) != 0;
    const V am = T::set1(in.am), ac = T::set1(in.ac), mul = T::set1(in.mul), add = T::set1(in.add);
    int i = 0;
    for (; i + w <= n; i += w) {
        V x = T::load(a + i);
        if (power > 1)
            x = raised<T>(x, power);
        if (pre)
            x = T::add(T::mul(x, am), ac);
        V r = f(x);
        if constexpr (Redo) {
            const unsigned redo = T::lanesToRedo(x, r);
            if (redo != 0) {
                alignas(64) double xs[w];
                alignas(64) double rs[w];
                T::store(xs, x);
                T::store(rs, r);
                for (int lane = 0; lane < w; ++lane) {
                    if ((redo >> lane & 1U) != 0)
                        rs[lane] = scalar(xs[lane]);
                }
                r = T::load(rs);
            }
        }
        if (hasMul)
            r = T::mul(r, mul);
        if (hasAcc)
            r = T::add(r, T::load(c + i));
        if (hasAdd)
            r = T::add(r, add);
        T::store(out + i, r);
    }
    for (; i < n; ++i) {
        double u = a[i];
        if (power > 1)
            raise(a + i, power, &u, 1);
        if (pre)
            u = u * in.am + in.ac;
        double v = scalar(u);
        if (hasMul)
            v *= in.mul;
        if (hasAcc)
            v += c[i];
        if (hasAdd)
            v += in.add;
        out[i] = v;
    }
}

template <class T>
struct VectorSqrt {
    typename T::Vector operator()(typename T::Vector v) const { return T::sqrt(v); }
};

template <class T>
void vectorCallKernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    // Both square roots are correctly rounded: no lane needs the scalar one.
    if (in.function == Function::Sqrt) {
        return vectorCall<T, false>(in, a, c, out, n, VectorSqrt<T>(),
                                    [](double v) { return std::sqrt(v); });
    }
    const auto f = T::function(in.function);
    if (f == nullptr)
        return scalarCallKernel(in, a, c, out, n);
    const Function function = in.function;
    vectorCall<T, true>(in, a, c, out, n, f,
                        [function](double v) { return applyFunction(function, v); });
}

// x^0.5 is the square root except at -0 (+0) and -inf (+inf), which lanesToRedo hands to
// the scalar pow.
template <class T>
void vectorPowKKernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    if (in.k != 0.5)
        return scalarPowKKernel(in, a, c, out, n);
    vectorCall<T, true>(in, a, c, out, n, VectorSqrt<T>(),
                        [](double v) { return std::pow(v, 0.5); });
}

} // namespace

} // namespace curvix::eval::batch
