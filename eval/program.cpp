#include "eval/program.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>

namespace curvix::eval {

namespace {

using Op = Program::Op;
using Post = Program::Post;
using Instr = Program::Instr;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Values per chunk of a batch: every slot of a chunk stays in the L1 cache while the
// instructions run over it one after the other.
constexpr int kChunk = 256;

// Integer exponents up to this size become multiplications.
constexpr double kMaxIntPower = 64;

double fold(Node::Kind kind, double a, double b)
{
    switch (kind) {
    case Node::Kind::Add: return a + b;
    case Node::Kind::Subtract: return a - b;
    case Node::Kind::Multiply: return a * b;
    case Node::Kind::Divide: return a / b;
    case Node::Kind::Power: return std::pow(a, b);
    default: return kNaN;
    }
}

// a^n for n >= 2, left to right over the bits of n; the batch kernel takes the same steps.
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

inline double finish(const Instr& in, double v)
{
    switch (in.post) {
    case Post::None: return v;
    case Post::Mul: return v * in.mul;
    case Post::Add: return v + in.add;
    case Post::MulAdd: return v * in.mul + in.add;
    }
    return v;
}

// ---- batch kernels: one tight loop per instruction and finishing step -----------------

template <Post P>
inline double finishAs(double v, double mul, double add)
{
    if constexpr (P == Post::Mul)
        return v * mul;
    else if constexpr (P == Post::Add)
        return v + add;
    else if constexpr (P == Post::MulAdd)
        return v * mul + add;
    else
        return v;
}

template <Post P, class F>
void unaryLoop(const double* __restrict__ a, double* __restrict__ out, int n, double mul,
               double add, F f)
{
    for (int i = 0; i < n; ++i)
        out[i] = finishAs<P>(f(a[i]), mul, add);
}

template <Post P, class F>
void binaryLoop(const double* __restrict__ a, const double* __restrict__ b,
                double* __restrict__ out, int n, double mul, double add, F f)
{
    for (int i = 0; i < n; ++i)
        out[i] = finishAs<P>(f(a[i], b[i]), mul, add);
}

template <class F>
void unary(const Instr& in, const double* a, double* out, int n, F f)
{
    switch (in.post) {
    case Post::None: unaryLoop<Post::None>(a, out, n, in.mul, in.add, f); break;
    case Post::Mul: unaryLoop<Post::Mul>(a, out, n, in.mul, in.add, f); break;
    case Post::Add: unaryLoop<Post::Add>(a, out, n, in.mul, in.add, f); break;
    case Post::MulAdd: unaryLoop<Post::MulAdd>(a, out, n, in.mul, in.add, f); break;
    }
}

template <class F>
void binary(const Instr& in, const double* a, const double* b, double* out, int n, F f)
{
    switch (in.post) {
    case Post::None: binaryLoop<Post::None>(a, b, out, n, in.mul, in.add, f); break;
    case Post::Mul: binaryLoop<Post::Mul>(a, b, out, n, in.mul, in.add, f); break;
    case Post::Add: binaryLoop<Post::Add>(a, b, out, n, in.mul, in.add, f); break;
    case Post::MulAdd: binaryLoop<Post::MulAdd>(a, b, out, n, in.mul, in.add, f); break;
    }
}

void intPowKernel(const Instr& in, const double* __restrict__ a, double* __restrict__ out, int n)
{
    const int power = int(in.k);
    switch (power) {
    case 2: return unary(in, a, out, n, [](double v) { return v * v; });
    case 3: return unary(in, a, out, n, [](double v) { return v * v * v; });
    case 4:
        return unary(in, a, out, n, [](double v) {
            const double s = v * v;
            return s * s;
        });
    default: break;
    }
    // Same steps as intPow, each over the whole chunk; the finishing step comes last.
    int bit = 1;
    while (bit * 2 <= power)
        bit *= 2;
    std::copy(a, a + n, out);
    for (bit /= 2; bit > 0; bit /= 2) {
        for (int i = 0; i < n; ++i)
            out[i] *= out[i];
        if (power & bit) {
            for (int i = 0; i < n; ++i)
                out[i] *= a[i];
        }
    }
    switch (in.post) {
    case Post::None: break;
    case Post::Mul:
        for (int i = 0; i < n; ++i)
            out[i] *= in.mul;
        break;
    case Post::Add:
        for (int i = 0; i < n; ++i)
            out[i] += in.add;
        break;
    case Post::MulAdd:
        for (int i = 0; i < n; ++i)
            out[i] = out[i] * in.mul + in.add;
        break;
    }
}

void callKernel(const Instr& in, const double* a, double* out, int n)
{
    switch (in.function) {
    case Function::Sqrt: return unary(in, a, out, n, [](double v) { return std::sqrt(v); });
    case Function::Sin: return unary(in, a, out, n, [](double v) { return std::sin(v); });
    case Function::Cos: return unary(in, a, out, n, [](double v) { return std::cos(v); });
    case Function::Tan: return unary(in, a, out, n, [](double v) { return std::tan(v); });
    case Function::Asin: return unary(in, a, out, n, [](double v) { return std::asin(v); });
    case Function::Acos: return unary(in, a, out, n, [](double v) { return std::acos(v); });
    case Function::Atan: return unary(in, a, out, n, [](double v) { return std::atan(v); });
    case Function::Exp: return unary(in, a, out, n, [](double v) { return std::exp(v); });
    case Function::Ln: return unary(in, a, out, n, [](double v) { return std::log(v); });
    case Function::Log10: return unary(in, a, out, n, [](double v) { return std::log10(v); });
    case Function::Abs: return unary(in, a, out, n, [](double v) { return std::fabs(v); });
    case Function::Sign:
        return unary(in, a, out, n, [](double v) { return v > 0 ? 1.0 : (v < 0 ? -1.0 : v); });
    case Function::Sinh: return unary(in, a, out, n, [](double v) { return std::sinh(v); });
    case Function::Cosh: return unary(in, a, out, n, [](double v) { return std::cosh(v); });
    case Function::Tanh: return unary(in, a, out, n, [](double v) { return std::tanh(v); });
    case Function::Asinh: return unary(in, a, out, n, [](double v) { return std::asinh(v); });
    case Function::Acosh: return unary(in, a, out, n, [](double v) { return std::acosh(v); });
    case Function::Atanh: return unary(in, a, out, n, [](double v) { return std::atanh(v); });
    }
}

void runKernel(const Instr& in, const double* a, const double* b, double* out, int n)
{
    const double k = in.k;
    switch (in.op) {
    case Op::Copy: return unary(in, a, out, n, [](double v) { return v; });
    case Op::Add: return binary(in, a, b, out, n, [](double u, double v) { return u + v; });
    case Op::Sub: return binary(in, a, b, out, n, [](double u, double v) { return u - v; });
    case Op::Mul: return binary(in, a, b, out, n, [](double u, double v) { return u * v; });
    case Op::Div: return binary(in, a, b, out, n, [](double u, double v) { return u / v; });
    case Op::Pow:
        return binary(in, a, b, out, n, [](double u, double v) { return std::pow(u, v); });
    case Op::DivK: return unary(in, a, out, n, [k](double v) { return v / k; });
    case Op::KDiv: return unary(in, a, out, n, [k](double v) { return k / v; });
    case Op::PowK: return unary(in, a, out, n, [k](double v) { return std::pow(v, k); });
    case Op::KPow: return unary(in, a, out, n, [k](double v) { return std::pow(k, v); });
    case Op::IntPow: return intPowKernel(in, a, out, n);
    case Op::Call: return callKernel(in, a, out, n);
    }
}

bool readsTwoSlots(Op op)
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

} // namespace

// ---- compiling ---------------------------------------------------------------------------

namespace {

// A compiled operand: a constant, or a slot. instr is the instruction that writes the slot
// while its finishing step is still free to take more (-1 for a variable's slot).
struct Value {
    bool constant = false;
    double k = 0;
    int slot = -1;
    int instr = -1;
};

} // namespace

class Compiler {
public:
    Program run(const Node& tree)
    {
        Value result = compile(tree);
        program_.constant_ = result.constant;
        program_.value_ = result.k;
        if (!result.constant) {
            // The batch lets the last instruction write the result straight into the output.
            if (program_.code_.empty() || program_.code_.back().dst != result.slot)
                result = push(Op::Copy, result);
            program_.result_ = result.slot;
        }
        program_.slots_ = int(pinned_.size());
        return std::move(program_);
    }

private:
    static Value constant(double k) { return {true, k, -1, -1}; }

    int allocate()
    {
        if (!free_.empty()) {
            const int slot = free_.back();
            free_.pop_back();
            return slot;
        }
        pinned_.push_back(false);
        return int(pinned_.size()) - 1;
    }

    void release(const Value& v)
    {
        if (!v.constant && !pinned_[v.slot])
            free_.push_back(v.slot);
    }

    // The output slot is taken before the operands are given back, so that no instruction
    // writes a slot it reads; the batch kernels rely on that.
    Value push(Op op, Value a, Value b = {}, double k = 0, Function function = Function::Sqrt)
    {
        Instr in;
        in.op = op;
        in.function = function;
        in.dst = allocate();
        in.a = a.slot;
        in.b = b.slot;
        in.k = k;
        release(a);
        if (!b.constant && b.slot >= 0)
            release(b);
        program_.code_.push_back(in);
        return {false, 0, in.dst, int(program_.code_.size()) - 1};
    }

    Instr* open(const Value& v) { return v.instr >= 0 ? &program_.code_[v.instr] : nullptr; }

    // v * m
    Value scaled(Value v, double m)
    {
        Instr* in = open(v);
        if (!in || in->post != Post::None)
            v = push(Op::Copy, v);
        in = open(v);
        in->post = Post::Mul;
        in->mul = m;
        return v;
    }

    // v + c
    Value shifted(Value v, double c)
    {
        Instr* in = open(v);
        if (!in || in->post == Post::Add || in->post == Post::MulAdd)
            v = push(Op::Copy, v);
        in = open(v);
        in->post = in->post == Post::Mul ? Post::MulAdd : Post::Add;
        in->add = c;
        return v;
    }

    // -v; negation is exact, so -(f*m + c) is f*(-m) + (-c) bit for bit.
    Value negated(Value v)
    {
        Instr* in = open(v);
        if (!in)
            return scaled(v, -1);
        switch (in->post) {
        case Post::None: in->mul = -1; in->post = Post::Mul; break;
        case Post::Mul: in->mul = -in->mul; break;
        case Post::Add: in->mul = -1; in->add = -in->add; in->post = Post::MulAdd; break;
        case Post::MulAdd: in->mul = -in->mul; in->add = -in->add; break;
        }
        return v;
    }

    Value variable(int id)
    {
        if (id >= int(variableSlots_.size()))
            variableSlots_.resize(id + 1, -1);
        if (variableSlots_[id] < 0) {
            pinned_.push_back(true);
            variableSlots_[id] = int(pinned_.size()) - 1;
            program_.loads_.emplace_back(id, variableSlots_[id]);
        }
        return {false, 0, variableSlots_[id], -1};
    }

    Value power(Value base, double exponent)
    {
        if (exponent != std::trunc(exponent) || std::fabs(exponent) > kMaxIntPower)
            return push(Op::PowK, base, {}, exponent);
        const int n = int(std::fabs(exponent));
        if (n == 0) {
            release(base); // pow(x, 0) is 1 even for NaN
            return constant(1);
        }
        Value magnitude = n == 1 ? base : push(Op::IntPow, base, {}, n);
        return exponent > 0 ? magnitude : push(Op::KDiv, magnitude, {}, 1);
    }

    Value compile(const Node& node)
    {
        using Kind = Node::Kind;
        switch (node.kind) {
        case Kind::Number: return constant(node.value);
        case Kind::Pi: return constant(std::numbers::pi);
        case Kind::Variable: return variable(node.variable);
        case Kind::Negate: {
            const Value v = compile(node.args[0]);
            return v.constant ? constant(-v.k) : negated(v);
        }
        case Kind::Call: {
            const Value v = compile(node.args[0]);
            if (v.constant)
                return constant(applyFunction(node.function, v.k));
            return push(Op::Call, v, {}, 0, node.function);
        }
        default: break;
        }

        const Value l = compile(node.args[0]);
        const Value r = compile(node.args[1]);
        if (l.constant && r.constant)
            return constant(fold(node.kind, l.k, r.k));
        switch (node.kind) {
        case Kind::Add:
            if (r.constant)
                return shifted(l, r.k);
            if (l.constant)
                return shifted(r, l.k);
            return push(Op::Add, l, r);
        case Kind::Subtract:
            // a - c is a + (-c), and c - a is (-a) + c, exactly.
            if (r.constant)
                return shifted(l, -r.k);
            if (l.constant)
                return shifted(negated(r), l.k);
            return push(Op::Sub, l, r);
        case Kind::Multiply:
            if (r.constant)
                return scaled(l, r.k);
            if (l.constant)
                return scaled(r, l.k);
            if (l.slot == r.slot) // only a variable's slot is read twice: x*x
                return push(Op::IntPow, l, {}, 2);
            return push(Op::Mul, l, r);
        case Kind::Divide:
            if (r.constant) {
                // Dividing by a power of two is multiplying by its reciprocal, bit for bit.
                int e = 0;
                const double reciprocal = 1 / r.k;
                if (std::frexp(r.k, &e) == 0.5 && std::isnormal(reciprocal) && std::isnormal(r.k))
                    return scaled(l, reciprocal);
                return push(Op::DivK, l, {}, r.k);
            }
            if (l.constant)
                return push(Op::KDiv, r, {}, l.k);
            return push(Op::Div, l, r);
        case Kind::Power:
            if (r.constant)
                return power(l, r.k);
            if (l.constant)
                return push(Op::KPow, r, {}, l.k);
            return push(Op::Pow, l, r);
        default: return constant(kNaN);
        }
    }

    Program program_;
    std::vector<bool> pinned_; // per slot: a variable's slot, never reused
    std::vector<int> free_;
    std::vector<int> variableSlots_;
};

Program Program::compile(const Node& tree)
{
    return Compiler().run(tree);
}

// ---- running ---------------------------------------------------------------------------

double Program::evaluate(std::span<const double> variables) const
{
    if (constant_)
        return value_;
    double local[32];
    std::vector<double> heap;
    double* r = local;
    if (slots_ > 32) {
        heap.resize(slots_);
        r = heap.data();
    }
    for (const auto& [id, slot] : loads_)
        r[slot] = id < int(variables.size()) ? variables[id] : kNaN;
    for (const Instr& in : code_) {
        const double a = r[in.a];
        double v = 0;
        switch (in.op) {
        case Op::Copy: v = a; break;
        case Op::Add: v = a + r[in.b]; break;
        case Op::Sub: v = a - r[in.b]; break;
        case Op::Mul: v = a * r[in.b]; break;
        case Op::Div: v = a / r[in.b]; break;
        case Op::Pow: v = std::pow(a, r[in.b]); break;
        case Op::DivK: v = a / in.k; break;
        case Op::KDiv: v = in.k / a; break;
        case Op::PowK: v = std::pow(a, in.k); break;
        case Op::KPow: v = std::pow(in.k, a); break;
        case Op::IntPow: v = intPow(a, int(in.k)); break;
        case Op::Call: v = applyFunction(in.function, a); break;
        }
        r[in.dst] = finish(in, v);
    }
    return r[result_];
}

void Program::evaluateBatch(std::span<const double> variables, int variable,
                            std::span<const double> xs, std::span<double> ys) const
{
    const std::size_t count = std::min(xs.size(), ys.size());
    std::fill(ys.begin() + count, ys.end(), kNaN);
    if (constant_) {
        std::fill(ys.begin(), ys.begin() + count, value_);
        return;
    }
    if (overlaps(xs, ys)) {
        const std::vector<double> copy(xs.begin(), xs.begin() + count);
        evaluateBatch(variables, variable, copy, ys.first(count));
        return;
    }

    const auto buffer = std::make_unique_for_overwrite<double[]>(std::size_t(slots_) * kChunk);
    std::vector<const double*> in(slots_);
    int batchSlot = -1;
    for (const auto& [id, slot] : loads_) {
        double* values = buffer.get() + std::size_t(slot) * kChunk;
        in[slot] = values;
        if (id == variable)
            batchSlot = slot;
        else
            std::fill(values, values + kChunk, id < int(variables.size()) ? variables[id] : kNaN);
    }

    const std::size_t last = code_.size() - 1;
    for (std::size_t offset = 0; offset < count; offset += kChunk) {
        const int n = int(std::min<std::size_t>(kChunk, count - offset));
        if (batchSlot >= 0)
            in[batchSlot] = xs.data() + offset;
        for (std::size_t j = 0; j <= last; ++j) {
            const Instr& instr = code_[j];
            double* out = j == last ? ys.data() + offset
                                    : buffer.get() + std::size_t(instr.dst) * kChunk;
            const double* b = readsTwoSlots(instr.op) ? in[instr.b] : nullptr;
            runKernel(instr, in[instr.a], b, out, n);
            in[instr.dst] = out;
        }
    }
}

} // namespace curvix::eval
