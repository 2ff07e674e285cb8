#include "eval/program.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>
#include <optional>

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

// ---- batch kernels: one tight loop per instruction, operand step and finishing step ------

template <Post P>
inline double finishAs(double v, double mul, double add, double acc)
{
    if constexpr (P == Post::Mul)
        return v * mul;
    else if constexpr (P == Post::Add)
        return v + add;
    else if constexpr (P == Post::MulAdd)
        return v * mul + add;
    else if constexpr (P == Post::Acc)
        return v + acc;
    else if constexpr (P == Post::MulAcc)
        return v * mul + acc;
    else
        return v;
}

constexpr bool readsC(Post p)
{
    return p == Post::Acc || p == Post::MulAcc;
}

// c is the slot that Acc and MulAcc add; the others do not read it.
template <bool PreA, Post P, class F>
void unaryLoop(const Instr& in, const double* __restrict__ a, const double* __restrict__ c,
               double* __restrict__ out, int n, F f)
{
    const double am = in.am, ac = in.ac, mul = in.mul, add = in.add;
    for (int i = 0; i < n; ++i) {
        const double u = PreA ? a[i] * am + ac : a[i];
        out[i] = finishAs<P>(f(u), mul, add, readsC(P) ? c[i] : 0);
    }
}

template <bool PreA, bool PreB, Post P, class F>
void binaryLoop(const Instr& in, const double* __restrict__ a, const double* __restrict__ b,
                const double* __restrict__ c, double* __restrict__ out, int n, F f)
{
    const double am = in.am, ac = in.ac, bm = in.bm, bc = in.bc, mul = in.mul, add = in.add;
    for (int i = 0; i < n; ++i) {
        const double u = PreA ? a[i] * am + ac : a[i];
        const double v = PreB ? b[i] * bm + bc : b[i];
        out[i] = finishAs<P>(f(u, v), mul, add, readsC(P) ? c[i] : 0);
    }
}

template <bool PreA, class F>
void unaryPost(const Instr& in, const double* a, const double* c, double* out, int n, F f)
{
    switch (in.post) {
    case Post::None: return unaryLoop<PreA, Post::None>(in, a, c, out, n, f);
    case Post::Mul: return unaryLoop<PreA, Post::Mul>(in, a, c, out, n, f);
    case Post::Add: return unaryLoop<PreA, Post::Add>(in, a, c, out, n, f);
    case Post::MulAdd: return unaryLoop<PreA, Post::MulAdd>(in, a, c, out, n, f);
    case Post::Acc: return unaryLoop<PreA, Post::Acc>(in, a, c, out, n, f);
    case Post::MulAcc: return unaryLoop<PreA, Post::MulAcc>(in, a, c, out, n, f);
    }
}

template <class F>
void unary(const Instr& in, const double* a, const double* c, double* out, int n, F f)
{
    if (in.preA)
        unaryPost<true>(in, a, c, out, n, f);
    else
        unaryPost<false>(in, a, c, out, n, f);
}

template <bool PreA, bool PreB, class F>
void binaryPost(const Instr& in, const double* a, const double* b, const double* c, double* out,
                int n, F f)
{
    switch (in.post) {
    case Post::None: return binaryLoop<PreA, PreB, Post::None>(in, a, b, c, out, n, f);
    case Post::Mul: return binaryLoop<PreA, PreB, Post::Mul>(in, a, b, c, out, n, f);
    case Post::Add: return binaryLoop<PreA, PreB, Post::Add>(in, a, b, c, out, n, f);
    case Post::MulAdd: return binaryLoop<PreA, PreB, Post::MulAdd>(in, a, b, c, out, n, f);
    case Post::Acc: return binaryLoop<PreA, PreB, Post::Acc>(in, a, b, c, out, n, f);
    case Post::MulAcc: return binaryLoop<PreA, PreB, Post::MulAcc>(in, a, b, c, out, n, f);
    }
}

template <class F>
void binary(const Instr& in, const double* a, const double* b, const double* c, double* out,
            int n, F f)
{
    if (in.preA && in.preB)
        binaryPost<true, true>(in, a, b, c, out, n, f);
    else if (in.preA)
        binaryPost<true, false>(in, a, b, c, out, n, f);
    else if (in.preB)
        binaryPost<false, true>(in, a, b, c, out, n, f);
    else
        binaryPost<false, false>(in, a, b, c, out, n, f);
}

// Exponents above 4 never come with an operand step (the compiler computes it first).
void intPowKernel(const Instr& in, const double* __restrict__ a, const double* c,
                  double* __restrict__ out, int n)
{
    const int power = in.n;
    switch (power) {
    case 2: return unary(in, a, c, out, n, [](double v) { return v * v; });
    case 3: return unary(in, a, c, out, n, [](double v) { return v * v * v; });
    case 4:
        return unary(in, a, c, out, n, [](double v) {
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
    for (int i = 0; i < n; ++i) {
        switch (in.post) {
        case Post::None: break;
        case Post::Mul: out[i] *= in.mul; break;
        case Post::Add: out[i] += in.add; break;
        case Post::MulAdd: out[i] = out[i] * in.mul + in.add; break;
        case Post::Acc: out[i] += c[i]; break;
        case Post::MulAcc: out[i] = out[i] * in.mul + c[i]; break;
        }
    }
}

void callKernel(const Instr& in, const double* a, const double* c, double* out, int n)
{
    switch (in.function) {
    case Function::Sqrt: return unary(in, a, c, out, n, [](double v) { return std::sqrt(v); });
    case Function::Sin: return unary(in, a, c, out, n, [](double v) { return std::sin(v); });
    case Function::Cos: return unary(in, a, c, out, n, [](double v) { return std::cos(v); });
    case Function::Tan: return unary(in, a, c, out, n, [](double v) { return std::tan(v); });
    case Function::Asin: return unary(in, a, c, out, n, [](double v) { return std::asin(v); });
    case Function::Acos: return unary(in, a, c, out, n, [](double v) { return std::acos(v); });
    case Function::Atan: return unary(in, a, c, out, n, [](double v) { return std::atan(v); });
    case Function::Exp: return unary(in, a, c, out, n, [](double v) { return std::exp(v); });
    case Function::Ln: return unary(in, a, c, out, n, [](double v) { return std::log(v); });
    case Function::Log10: return unary(in, a, c, out, n, [](double v) { return std::log10(v); });
    case Function::Abs: return unary(in, a, c, out, n, [](double v) { return std::fabs(v); });
    case Function::Sign:
        return unary(in, a, c, out, n, [](double v) { return v > 0 ? 1.0 : (v < 0 ? -1.0 : v); });
    case Function::Sinh: return unary(in, a, c, out, n, [](double v) { return std::sinh(v); });
    case Function::Cosh: return unary(in, a, c, out, n, [](double v) { return std::cosh(v); });
    case Function::Tanh: return unary(in, a, c, out, n, [](double v) { return std::tanh(v); });
    case Function::Asinh: return unary(in, a, c, out, n, [](double v) { return std::asinh(v); });
    case Function::Acosh: return unary(in, a, c, out, n, [](double v) { return std::acosh(v); });
    case Function::Atanh: return unary(in, a, c, out, n, [](double v) { return std::atanh(v); });
    }
}

void runKernel(const Instr& in, const double* a, const double* b, const double* c, double* out,
               int n)
{
    const double k = in.k;
    switch (in.op) {
    case Op::Copy: return unary(in, a, c, out, n, [](double v) { return v; });
    case Op::Add: return binary(in, a, b, c, out, n, [](double u, double v) { return u + v; });
    case Op::Sub: return binary(in, a, b, c, out, n, [](double u, double v) { return u - v; });
    case Op::Mul: return binary(in, a, b, c, out, n, [](double u, double v) { return u * v; });
    case Op::Div: return binary(in, a, b, c, out, n, [](double u, double v) { return u / v; });
    case Op::Pow:
        return binary(in, a, b, c, out, n, [](double u, double v) { return std::pow(u, v); });
    case Op::DivK: return unary(in, a, c, out, n, [k](double v) { return v / k; });
    case Op::KDiv: return unary(in, a, c, out, n, [k](double v) { return k / v; });
    case Op::PowK: return unary(in, a, c, out, n, [k](double v) { return std::pow(v, k); });
    case Op::KPow: return unary(in, a, c, out, n, [k](double v) { return std::pow(k, v); });
    case Op::IntPow: return intPowKernel(in, a, c, out, n);
    case Op::Call: return callKernel(in, a, c, out, n);
    }
}

inline double operandA(const Instr& in, const double* variables, const double* r)
{
    const double a = in.aVariable >= 0 ? variables[in.aVariable] : r[in.a];
    return in.preA ? a * in.am + in.ac : a;
}

inline double operandB(const Instr& in, const double* variables, const double* r)
{
    const double b = in.bVariable >= 0 ? variables[in.bVariable] : r[in.b];
    return in.preB ? b * in.bm + in.bc : b;
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
// while its finishing step is still free to take more (-1 for a variable's slot). A
// variable's slot may carry a pending step, slot * m + c (2x, x-2, -x), that the
// instruction reading it applies, so that it costs no pass of its own.
struct Value {
    bool constant = false;
    double k = 0;
    int slot = -1;
    int instr = -1;
    bool hasMul = false;
    bool hasAdd = false;
    double m = 1;
    double c = -0.0; // x + -0 is x, also for x = -0
    bool pending() const { return hasMul || hasAdd; }
    bool sameAs(const Value& o) const
    {
        return !constant && !o.constant && slot == o.slot && hasMul == o.hasMul &&
               hasAdd == o.hasAdd && m == o.m && c == o.c;
    }
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
            result = computed(result);
            // The batch lets the last instruction write the result straight into the output.
            if (program_.code_.empty() || program_.code_.back().dst != result.slot)
                result = push(Op::Copy, result);
            program_.result_ = result.slot;
        }
        program_.slots_ = int(slotVariable_.size());
        program_.variableCount_ = int(variableSlots_.size());
        return std::move(program_);
    }

private:
    static Value constant(double k) { return {true, k}; }

    int allocate()
    {
        if (!free_.empty()) {
            const int slot = free_.back();
            free_.pop_back();
            return slot;
        }
        slotVariable_.push_back(-1);
        return int(slotVariable_.size()) - 1;
    }

    void release(const Value& v)
    {
        if (!v.constant && v.slot >= 0 && slotVariable_[v.slot] < 0)
            free_.push_back(v.slot);
    }

    Instr* open(const Value& v) { return v.instr >= 0 ? &program_.code_[v.instr] : nullptr; }

    bool isVariable(const Value& v) const
    {
        return !v.constant && slotVariable_[v.slot] >= 0 && !v.pending();
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
        in.aVariable = slotVariable_[a.slot];
        in.preA = a.pending();
        in.am = a.m;
        in.ac = a.c;
        if (b.slot >= 0) {
            in.b = b.slot;
            in.bVariable = slotVariable_[b.slot];
            in.preB = b.pending();
            in.bm = b.m;
            in.bc = b.c;
        }
        in.k = k;
        release(a);
        release(b);
        program_.code_.push_back(in);
        return {false, 0, in.dst, int(program_.code_.size()) - 1};
    }

    // The value itself in a slot: a pending step becomes an instruction of its own, which
    // is still open for a finishing step ((x+1)*3 is one instruction).
    Value computed(Value v)
    {
        return v.pending() ? push(Op::Copy, v) : v;
    }

    // v * m
    Value scaled(Value v, double m)
    {
        if (isVariable(v)) {
            v.hasMul = true;
            v.m = m;
            return v;
        }
        v = computed(v);
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
        if (isVariable(v) || (v.pending() && !v.hasAdd)) {
            v.hasAdd = true;
            v.c = c;
            return v;
        }
        v = computed(v);
        Instr* in = open(v);
        if (!in || (in->post != Post::None && in->post != Post::Mul))
            v = push(Op::Copy, v);
        in = open(v);
        in->post = in->post == Post::Mul ? Post::MulAdd : Post::Add;
        in->add = c;
        return v;
    }

    // -v; negation is exact, so -(f*m + c) is f*(-m) + (-c) bit for bit. Without an
    // addition there is nothing to negate there: -(f*m) is f*(-m), and -0 stays the
    // neutral addend.
    Value negated(Value v)
    {
        if (isVariable(v) || v.pending()) {
            v.m = v.hasMul ? -v.m : -1;
            v.hasMul = true;
            if (v.hasAdd)
                v.c = -v.c;
            return v;
        }
        Instr* in = open(v);
        if (!in || readsC(in->post))
            return scaled(v, -1);
        switch (in->post) {
        case Post::None: in->mul = -1; in->post = Post::Mul; break;
        case Post::Mul: in->mul = -in->mul; break;
        case Post::Add: in->mul = -1; in->add = -in->add; in->post = Post::MulAdd; break;
        case Post::MulAdd: in->mul = -in->mul; in->add = -in->add; break;
        case Post::Acc:
        case Post::MulAcc: break;
        }
        return v;
    }

    // term * sign + sum, folded into the instruction of term when it is still open (an
    // Add or Sub of two slots then costs no pass of its own). term must be the later of
    // the two, or sum a variable, so that sum is ready when term's instruction runs.
    std::optional<Value> accumulated(Value term, Value sum, double sign)
    {
        Instr* in = open(term);
        if (!in || sum.pending() || (in->post != Post::None && in->post != Post::Mul))
            return std::nullopt;
        in->mul = in->post == Post::Mul ? in->mul * sign : sign;
        in->post = in->mul == 1 ? Post::Acc : Post::MulAcc;
        in->c = sum.slot;
        in->cVariable = slotVariable_[sum.slot];
        release(sum);
        return term;
    }

    Value variable(int id)
    {
        if (id >= int(variableSlots_.size()))
            variableSlots_.resize(id + 1, -1);
        if (variableSlots_[id] < 0) {
            slotVariable_.push_back(id);
            variableSlots_[id] = int(slotVariable_.size()) - 1;
            program_.loads_.emplace_back(id, variableSlots_[id]);
        }
        Value v;
        v.slot = variableSlots_[id];
        return v;
    }

    Value intPower(Value base, int n)
    {
        if (n > 4)
            base = computed(base);
        Value v = push(Op::IntPow, base);
        program_.code_[v.instr].n = n;
        return v;
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
        Value magnitude = n == 1 ? base : intPower(base, n);
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
            if (const std::optional<Value> v = accumulated(r, l, 1))
                return *v;
            if (isVariable(r)) {
                if (const std::optional<Value> v = accumulated(l, r, 1))
                    return *v;
            }
            return push(Op::Add, l, r);
        case Kind::Subtract:
            // a - c is a + (-c), and c - a is (-a) + c, exactly.
            if (r.constant)
                return shifted(l, -r.k);
            if (l.constant)
                return shifted(negated(r), l.k);
            // l - f*m is f*(-m) + l.
            if (const std::optional<Value> v = accumulated(r, l, -1))
                return *v;
            return push(Op::Sub, l, r);
        case Kind::Multiply:
            if (r.constant)
                return scaled(l, r.k);
            if (l.constant)
                return scaled(r, l.k);
            if (l.sameAs(r)) // x*x, (x+1)(x+1): the same slot read twice
                return intPower(l, 2);
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
    std::vector<int> slotVariable_; // per slot: the variable it holds (never reused), or -1
    std::vector<int> free_;
    std::vector<int> variableSlots_;
};

Program Program::compile(const Node& tree)
{
    return Compiler().run(tree);
}

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
        case Op::Call: v = applyFunction(in.function, a); break;
        }
        if (readsC(in.post))
            v = v * in.mul + (in.cVariable >= 0 ? variables[in.cVariable] : r[in.c]);
        else if (in.post != Post::None)
            v = v * in.mul + in.add; // mul 1 and add -0 leave v as it is
        r[in.dst] = v;
    }
    return v;
}

double Program::evaluate(std::span<const double> variables) const
{
    if (constant_)
        return value_;
    std::vector<double> padded;
    if (int(variables.size()) < variableCount_) {
        padded.assign(variables.begin(), variables.end());
        padded.resize(variableCount_, kNaN);
        variables = padded;
    }
    constexpr int kLocalSlots = 16;
    if (slots_ <= kLocalSlots) {
        double r[kLocalSlots];
        return run(variables.data(), r);
    }
    std::vector<double> r(slots_);
    return run(variables.data(), r.data());
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
            const double* c = readsC(instr.post) ? in[instr.c] : nullptr;
            runKernel(instr, in[instr.a], b, c, out, n);
            in[instr.dst] = out;
        }
    }
}

} // namespace curvix::eval
