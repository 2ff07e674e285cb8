#include "eval/program.h"

#include "eval/batch_kernels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>

namespace curvix::eval {

namespace {

using Op = Program::Op;
using Instr = Program::Instr;
constexpr std::uint8_t kMul = Program::PostMul;
constexpr std::uint8_t kAcc = Program::PostAcc;
constexpr std::uint8_t kAdd = Program::PostAdd;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr int kChunk = batch::kChunk;

// a^n for n >= 1, left to right over the bits of n; the batch kernels take the same steps.
inline double intPow(double a, int n)
{
    int bit = 1;
    while (bit * 2 <= n)
        bit *= 2;
    double r = a;
    for (bit /= 2; bit > 0; bit /= 2) {
        r *= r;
        if (n & bit)
            r *= a;
    }
    return r;
}


// The widest set both the processor and CURVIX_BATCH_ISA allow.
Program::InstructionSet detectInstructionSet()
{
    using Set = Program::InstructionSet;
    Set cap = Set::Avx512;
    if (const char* name = std::getenv("CURVIX_BATCH_ISA")) {
        if (std::strcmp(name, "baseline") == 0)
            cap = Set::Baseline;
        else if (std::strcmp(name, "avx2") == 0)
            cap = Set::Avx2;
    }
#ifdef CURVIX_HAVE_VECTOR_BATCH
    __builtin_cpu_init();
    if (cap >= Set::Avx512 && __builtin_cpu_supports("avx512f") &&
        __builtin_cpu_supports("avx512dq"))
        return Set::Avx512;
    if (cap >= Set::Avx2 && __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        return Set::Avx2;
#endif
    return Set::Baseline;
}

bool readsB(Op op)
{
    switch (op) {
    case Op::Add:
    case Op::Sub:
    case Op::Mul:
    case Op::Div:
    case Op::Pow: return true;
    default: return false;
    }
}

bool overlaps(std::span<const double> xs, std::span<double> ys)
{
    const std::less<const double*> before;
    return before(xs.data(), ys.data() + ys.size()) && before(ys.data(), xs.data() + xs.size());
}

// ---- one point -------------------------------------------------------------------------

inline double operandA(const Instr& in, const double* variables, const double* r)
{
    const double a = in.aVariable >= 0 ? variables[in.aVariable] : r[in.a];
    if (!in.preA)
        return a;
    return (in.aPower > 1 ? intPow(a, in.aPower) : a) * in.am + in.ac;
}

inline double operandB(const Instr& in, const double* variables, const double* r)
{
    const double b = in.bVariable >= 0 ? variables[in.bVariable] : r[in.b];
    return in.preB ? b * in.bm + in.bc : b;
}

inline double finish(const Instr& in, double v, const double* variables, const double* r)
{
    if ((in.post & kMul) != 0)
        v *= in.mul;
    if ((in.post & kAcc) != 0) {
        const double c = in.cVariable >= 0 ? variables[in.cVariable] : r[in.c];
        v += in.preC ? c * in.cm + in.cc : c;
    }
    if ((in.post & kAdd) != 0)
        v += in.add;
    return v;
}

} // namespace

// ---- running ---------------------------------------------------------------------------

// One point: operands that are variables are read where they are, and the value of the
// last instruction, which is the result, stays in a register.
double Program::run(const double* variables, double* r) const
{
    double v = 0;
    for (const Instr& in : code_) {
        const double a = operandA(in, variables, r);
        switch (in.op) {
        case Op::Copy: v = a; break;
        case Op::Add: v = a + operandB(in, variables, r); break;
        case Op::Sub: v = a - operandB(in, variables, r); break;
        case Op::Mul: v = a * operandB(in, variables, r); break;
        case Op::Div: v = a / operandB(in, variables, r); break;
        case Op::Pow: v = std::pow(a, operandB(in, variables, r)); break;
        case Op::DivK: v = a / in.k; break;
        case Op::KDiv: v = in.k / a; break;
        case Op::PowK: v = std::pow(a, in.k); break;
        case Op::KPow: v = std::pow(in.k, a); break;
        case Op::IntPow: v = in.n == 2 ? a * a : intPow(a, in.n); break;
        case Op::Powers2: v = intPow(a, in.n) * in.k + intPow(a, in.n2) * in.k2; break;
        case Op::Call: v = applyFunction(in.function, a); break;
        case Op::AngleCall: v = applyFunction(in.function, a, AngleUnit(in.n)); break;
        }
        if (in.post != PostNone)
            v = finish(in, v, variables, r);
        r[in.dst] = v;
    }
    return v;
}

Program::InstructionSet Program::batchInstructionSet()
{
    static const InstructionSet set = detectInstructionSet();
    return set;
}

double Program::evaluate(std::span<const double> variables) const
{
    if (constant_)
        return value_;
    constexpr int kLocalSlots = 16;
    if (slots_ <= kLocalSlots && int(variables.size()) >= variableCount_) {
        double r[kLocalSlots];
        return run(variables.data(), r);
    }
    // Rare: many slots, or variables that were never given (they read as NaN).
    std::vector<double> known(variables.begin(), variables.end());
    known.resize(std::max<std::size_t>(known.size(), std::size_t(variableCount_)), kNaN);
    std::vector<double> r(slots_);
    return run(known.data(), r.data());
}

void Program::evaluateBatch(std::span<const double> variables, int variable,
                            std::span<const double> xs, std::span<double> ys) const
{
    const std::size_t count = std::min(xs.size(), ys.size());
    std::fill(ys.subspan(count).begin(), ys.end(), kNaN);
    if (constant_) {
        std::fill(ys.first(count).begin(), ys.first(count).end(), value_);
        return;
    }
    if (overlaps(xs, ys)) {
        const std::vector<double> copy(xs.first(count).begin(), xs.first(count).end());
        evaluateBatch(variables, variable, copy, ys.first(count));
        return;
    }

    // Small programs keep their slots on the stack: a curve is only a few thousand points,
    // and allocating would cost as much as a cheap formula's whole run.
    constexpr int kStackSlots = 4;
    double stackBuffer[kStackSlots * kChunk];
    const double* stackIn[kStackSlots];
    std::unique_ptr<double[]> heapBuffer;
    std::vector<const double*> heapIn;
    double* buffer = stackBuffer;
    const double** in = stackIn;
    if (slots_ > kStackSlots) {
        heapBuffer = std::make_unique_for_overwrite<double[]>(std::size_t(slots_) * kChunk);
        heapIn.resize(slots_);
        buffer = heapBuffer.get();
        in = heapIn.data();
    }

    int batchSlot = -1;
    for (const auto& [id, slot] : loads_) {
        double* values = buffer + std::size_t(slot) * kChunk;
        in[slot] = values;
        if (id == variable)
            batchSlot = slot;
        else
            std::fill(values, values + kChunk, id < int(variables.size()) ? variables[id] : kNaN);
    }

    batch::Kernel kernel = batch::runBaseline;
#ifdef CURVIX_HAVE_VECTOR_BATCH
    switch (batchInstructionSet()) {
    case InstructionSet::Avx512: kernel = batch::runAvx512; break;
    case InstructionSet::Avx2: kernel = batch::runAvx2; break;
    case InstructionSet::Baseline: break;
    }
#endif
    const std::size_t last = code_.size() - 1;
    // One instruction that reads nothing but xs keeps no slots between steps: it runs over
    // the whole span at once, without a call per chunk (most curves are such polynomials).
    const bool whole = last == 0 && batchSlot >= 0 && loads_.size() == 1 &&
                       count <= std::size_t(std::numeric_limits<int>::max());
    const std::size_t chunk = whole ? std::max<std::size_t>(count, 1) : std::size_t(kChunk);
    for (std::size_t offset = 0; offset < count; offset += chunk) {
        const int n = int(std::min(chunk, count - offset));
        if (batchSlot >= 0)
            in[batchSlot] = xs.data() + offset;
        for (std::size_t j = 0; j <= last; ++j) {
            const Instr& instr = code_[j];
            double* out =
                j == last ? ys.data() + offset : buffer + std::size_t(instr.dst) * kChunk;
            const double* b = readsB(instr.op) ? in[instr.b] : nullptr;
            const double* c = (instr.post & kAcc) != 0 ? in[instr.c] : nullptr;
            kernel(instr, in[instr.a], b, c, out, n);
            in[instr.dst] = out;
        }
    }
}

} // namespace curvix::eval
