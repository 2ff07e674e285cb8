#pragma once

// The loops of the batch evaluator, one per instruction. Each instruction set's source file
// includes this header and compiles them with its own flags; the unnamed namespace gives every
// such file its own copy, so the linker never hands code for one set to the other. For the
// same reason the loops use no std:: templates, which would be shared between the files.

#include "eval/batch_kernels.h"

#include <cmath>
#include <cstdint>

namespace curvix::eval::batch {

namespace {

using Op = Program::Op;
using Instr = Program::Instr;
constexpr std::uint8_t kMul = Program::PostMul;
constexpr std::uint8_t kAcc = Program::PostAcc;
constexpr std::uint8_t kAdd = Program::PostAdd;

using UnaryKernel = void (*)(const Instr& in, const double* a, const double* c, double* out,
                             int n);

template <int N>
inline double powerOf(double u)
{
    if constexpr (N == 1) {
        return u;
    } else if constexpr (N == 2) {
        return u * u;
    } else if constexpr (N == 3) {
        return u * u * u;
    } else {
        const double s = u * u;
        return s * s;
    }
}

// ---- batch kernels: one tight loop per instruction, operand step and finishing step ------

template <std::uint8_t P>
inline double finishAs(double v, double mul, double acc, double add)
{
    if constexpr ((P & kMul) != 0)
        v *= mul;
    if constexpr ((P & kAcc) != 0)
        v += acc;
    if constexpr ((P & kAdd) != 0)
        v += add;
    return v;
}

// c is the slot that kAcc adds; without it c is not read.
template <bool PreA, std::uint8_t P, class F>
void unaryLoop(const Instr& in, const double* __restrict__ a, const double* __restrict__ c,
               double* __restrict__ out, int n, F f)
{
    const double am = in.am, ac = in.ac, mul = in.mul, add = in.add;
    for (int i = 0; i < n; ++i) {
        const double u = PreA ? a[i] * am + ac : a[i];
        out[i] = finishAs<P>(f(u), mul, (P & kAcc) != 0 ? c[i] : 0, add);
    }
}

// The operand step of a: none (PreA 0), a * am + ac (1), or a^PreA * am + ac (2 to 4).
template <int PreA>
inline double steppedA(double a, double am, double ac)
{
    if constexpr (PreA == 0)
        return a;
    else
        return powerOf<PreA>(a) * am + ac;
}

template <int PreA, bool PreB, std::uint8_t P, class F>
void binaryLoop(const Instr& in, const double* __restrict__ a, const double* __restrict__ b,
                const double* __restrict__ c, double* __restrict__ out, int n, F f)
{
    const double am = in.am, ac = in.ac, bm = in.bm, bc = in.bc, mul = in.mul, add = in.add;
    for (int i = 0; i < n; ++i) {
        const double u = steppedA<PreA>(a[i], am, ac);
        const double v = PreB ? b[i] * bm + bc : b[i];
        out[i] = finishAs<P>(f(u, v), mul, (P & kAcc) != 0 ? c[i] : 0, add);
    }
}

template <bool PreA, class F>
void unaryPost(const Instr& in, const double* a, const double* c, double* out, int n, F f)
{
    switch (in.post) {
    case 0: return unaryLoop<PreA, 0>(in, a, c, out, n, f);
    case 1: return unaryLoop<PreA, 1>(in, a, c, out, n, f);
    case 2: return unaryLoop<PreA, 2>(in, a, c, out, n, f);
    case 3: return unaryLoop<PreA, 3>(in, a, c, out, n, f);
    case 4: return unaryLoop<PreA, 4>(in, a, c, out, n, f);
    case 5: return unaryLoop<PreA, 5>(in, a, c, out, n, f);
    case 6: return unaryLoop<PreA, 6>(in, a, c, out, n, f);
    default: return unaryLoop<PreA, 7>(in, a, c, out, n, f);
    }
}

// For cheap operations, where the operand step is worth a loop of its own.
template <class F>
void unary(const Instr& in, const double* a, const double* c, double* out, int n, F f)
{
    if (in.preA)
        unaryPost<true>(in, a, c, out, n, f);
    else
        unaryPost<false>(in, a, c, out, n, f);
}

// For library functions, which dominate their loop: the operand step is always taken
// (1 and -0 leave the operand as it is).
template <class F>
void unaryCall(const Instr& in, const double* a, const double* c, double* out, int n, F f)
{
    unaryPost<true>(in, a, c, out, n, f);
}

template <int PreA, bool PreB, class F>
void binaryPost(const Instr& in, const double* a, const double* b, const double* c, double* out,
                int n, F f)
{
    switch (in.post) {
    case 0: return binaryLoop<PreA, PreB, 0>(in, a, b, c, out, n, f);
    case 1: return binaryLoop<PreA, PreB, 1>(in, a, b, c, out, n, f);
    case 2: return binaryLoop<PreA, PreB, 2>(in, a, b, c, out, n, f);
    case 3: return binaryLoop<PreA, PreB, 3>(in, a, b, c, out, n, f);
    case 4: return binaryLoop<PreA, PreB, 4>(in, a, b, c, out, n, f);
    case 5: return binaryLoop<PreA, PreB, 5>(in, a, b, c, out, n, f);
    case 6: return binaryLoop<PreA, PreB, 6>(in, a, b, c, out, n, f);
    default: return binaryLoop<PreA, PreB, 7>(in, a, b, c, out, n, f);
    }
}

template <class F>
void binary(const Instr& in, const double* a, const double* b, const double* c, double* out,
            int n, F f)
{
    if (in.preA && in.preB)
        binaryPost<1, true>(in, a, b, c, out, n, f);
    else if (in.preA)
        binaryPost<1, false>(in, a, b, c, out, n, f);
    else if (in.preB)
        binaryPost<0, true>(in, a, b, c, out, n, f);
    else
        binaryPost<0, false>(in, a, b, c, out, n, f);
}

template <int PreA>
void divideRaised(const Instr& in, const double* a, const double* b, const double* c,
                  double* out, int n)
{
    const auto f = [](double u, double v) { return u / v; };
    if (in.preB)
        binaryPost<PreA, true>(in, a, b, c, out, n, f);
    else
        binaryPost<PreA, false>(in, a, b, c, out, n, f);
}

// A division whose dividend may be a power of its slot (x^2+1)/(x-2).
void divideKernel(const Instr& in, const double* a, const double* b, const double* c,
                  double* out, int n)
{
    switch (in.preA ? in.aPower : 1) {
    case 2: return divideRaised<2>(in, a, b, c, out, n);
    case 3: return divideRaised<3>(in, a, b, c, out, n);
    case 4: return divideRaised<4>(in, a, b, c, out, n);
    default: return binary(in, a, b, c, out, n, [](double u, double v) { return u / v; });
    }
}

// a^n over n values, for an operand step that raises its slot, taken apart from the
// linear part where the loop that follows calls a library function anyway.
void raise(const double* a, int power, double* out, int n)
{
    switch (power) {
    case 2:
        for (int i = 0; i < n; ++i)
            out[i] = powerOf<2>(a[i]);
        break;
    case 3:
        for (int i = 0; i < n; ++i)
            out[i] = powerOf<3>(a[i]);
        break;
    default:
        for (int i = 0; i < n; ++i)
            out[i] = powerOf<4>(a[i]);
        break;
    }
}

// Exponents above 4 never come with an operand step (the compiler computes it first).
void intPowKernel(const Instr& in, const double* __restrict__ a, const double* c,
                  double* __restrict__ out, int n)
{
    switch (in.n) {
    case 2: return unary(in, a, c, out, n, [](double v) { return powerOf<2>(v); });
    case 3: return unary(in, a, c, out, n, [](double v) { return powerOf<3>(v); });
    case 4: return unary(in, a, c, out, n, [](double v) { return powerOf<4>(v); });
    default: break;
    }
    // Same steps as intPow, each over the whole chunk; the finishing step comes last.
    int bit = 1;
    while (bit * 2 <= in.n)
        bit *= 2;
    for (int i = 0; i < n; ++i)
        out[i] = a[i];
    for (bit /= 2; bit > 0; bit /= 2) {
        for (int i = 0; i < n; ++i)
            out[i] *= out[i];
        if (in.n & bit) {
            for (int i = 0; i < n; ++i)
                out[i] *= a[i];
        }
    }
    if (in.post == Program::PostNone)
        return;
    for (int i = 0; i < n; ++i)
        out[i] = (out[i] * in.mul + ((in.post & kAcc) != 0 ? c[i] : -0.0)) + in.add;
}

// Two terms of one variable, never with an operand step; the finishing step runs with
// its neutral parts rather than in eight variants, and may add a third term (preC).
template <int N1, int N2>
void powers2Loop(const Instr& in, const double* __restrict__ a, const double* __restrict__ c,
                 double* __restrict__ out, int n)
{
    const double k1 = in.k, k2 = in.k2, mul = in.mul, add = in.add;
    const auto f = [=](double u) { return powerOf<N1>(u) * k1 + powerOf<N2>(u) * k2; };
    if (in.post == Program::PostNone) {
        for (int i = 0; i < n; ++i)
            out[i] = f(a[i]);
    } else if ((in.post & kAcc) == 0) {
        for (int i = 0; i < n; ++i)
            out[i] = f(a[i]) * mul + add;
    } else if (!in.preC) {
        for (int i = 0; i < n; ++i)
            out[i] = (f(a[i]) * mul + c[i]) + add;
    } else {
        const double cm = in.cm, cc = in.cc;
        for (int i = 0; i < n; ++i)
            out[i] = (f(a[i]) * mul + (c[i] * cm + cc)) + add;
    }
}

template <int N1>
void powers2Second(const Instr& in, const double* a, const double* c, double* out, int n)
{
    switch (in.n2) {
    case 1: return powers2Loop<N1, 1>(in, a, c, out, n);
    case 2: return powers2Loop<N1, 2>(in, a, c, out, n);
    case 3: return powers2Loop<N1, 3>(in, a, c, out, n);
    default: return powers2Loop<N1, 4>(in, a, c, out, n);
    }
}

void powers2Kernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    switch (in.n) {
    case 1: return powers2Second<1>(in, a, c, out, n);
    case 2: return powers2Second<2>(in, a, c, out, n);
    case 3: return powers2Second<3>(in, a, c, out, n);
    default: return powers2Second<4>(in, a, c, out, n);
    }
}

inline double sign(double v)
{
    return v > 0 ? 1.0 : (v < 0 ? -1.0 : v); // keeps NaN and the sign of zero
}

void scalarFunctionKernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    switch (in.function) {
    case Function::Sqrt: return unaryCall(in, a, c, out, n, [](double v) { return std::sqrt(v); });
    case Function::Sin: return unaryCall(in, a, c, out, n, [](double v) { return std::sin(v); });
    case Function::Cos: return unaryCall(in, a, c, out, n, [](double v) { return std::cos(v); });
    case Function::Tan: return unaryCall(in, a, c, out, n, [](double v) { return std::tan(v); });
    case Function::Asin: return unaryCall(in, a, c, out, n, [](double v) { return std::asin(v); });
    case Function::Acos: return unaryCall(in, a, c, out, n, [](double v) { return std::acos(v); });
    case Function::Atan: return unaryCall(in, a, c, out, n, [](double v) { return std::atan(v); });
    case Function::Exp: return unaryCall(in, a, c, out, n, [](double v) { return std::exp(v); });
    case Function::Ln: return unaryCall(in, a, c, out, n, [](double v) { return std::log(v); });
    case Function::Log10:
        return unaryCall(in, a, c, out, n, [](double v) { return std::log10(v); });
    case Function::Abs: return unary(in, a, c, out, n, [](double v) { return std::fabs(v); });
    case Function::Sign: return unary(in, a, c, out, n, [](double v) { return sign(v); });
    case Function::Sinh: return unaryCall(in, a, c, out, n, [](double v) { return std::sinh(v); });
    case Function::Cosh: return unaryCall(in, a, c, out, n, [](double v) { return std::cosh(v); });
    case Function::Tanh: return unaryCall(in, a, c, out, n, [](double v) { return std::tanh(v); });
    case Function::Asinh:
        return unaryCall(in, a, c, out, n, [](double v) { return std::asinh(v); });
    case Function::Acosh:
        return unaryCall(in, a, c, out, n, [](double v) { return std::acosh(v); });
    case Function::Atanh:
        return unaryCall(in, a, c, out, n, [](double v) { return std::atanh(v); });
    }
}


void scalarCallKernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    if (!in.preA || in.aPower == 1)
        return scalarFunctionKernel(in, a, c, out, n);
    // The raised operand in pieces the stack holds; the linear step follows in the loop.
    double raised[kChunk];
    for (int start = 0; start < n; start += kChunk) {
        const int m = n - start < kChunk ? n - start : kChunk;
        raise(a + start, in.aPower, raised, m);
        scalarFunctionKernel(in, raised, c ? c + start : c, out + start, m);
    }
}

void scalarPowKKernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    const double k = in.k;
    unaryCall(in, a, c, out, n, [k](double v) { return std::pow(v, k); });
}

// One instruction over n values; calls of library functions and powers with a constant
// exponent go to the kernels given, which differ between instruction sets.
template <UnaryKernel CallKernel, UnaryKernel PowKKernel>
void runKernel(const Instr& in, const double* a, const double* b, const double* c, double* out,
               int n)
{
    const double k = in.k;
    switch (in.op) {
    case Op::Copy: return unary(in, a, c, out, n, [](double v) { return v; });
    case Op::Add: return binary(in, a, b, c, out, n, [](double u, double v) { return u + v; });
    case Op::Sub: return binary(in, a, b, c, out, n, [](double u, double v) { return u - v; });
    case Op::Mul: return binary(in, a, b, c, out, n, [](double u, double v) { return u * v; });
    case Op::Div: return divideKernel(in, a, b, c, out, n);
    case Op::Pow:
        return binaryPost<1, true>(in, a, b, c, out, n,
                                   [](double u, double v) { return std::pow(u, v); });
    case Op::DivK: return unary(in, a, c, out, n, [k](double v) { return v / k; });
    case Op::KDiv: return unary(in, a, c, out, n, [k](double v) { return k / v; });
    case Op::PowK: return PowKKernel(in, a, c, out, n);
    case Op::KPow: return unaryCall(in, a, c, out, n, [k](double v) { return std::pow(k, v); });
    case Op::IntPow: return intPowKernel(in, a, c, out, n);
    case Op::Powers2: return powers2Kernel(in, a, c, out, n);
    case Op::Call: return CallKernel(in, a, c, out, n);
    case Op::AngleCall: {
        const Function function = in.function;
        const auto unit = AngleUnit(in.n);
        return unaryCall(in, a, c, out, n,
                         [=](double v) { return applyFunction(function, v, unit); });
    }
    }
}
} // namespace

} // namespace curvix::eval::batch
