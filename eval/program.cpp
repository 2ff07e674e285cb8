#include "eval/program.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

namespace curvix::eval {

namespace {

using Op = Program::Op;
using Instr = Program::Instr;
constexpr std::uint8_t kMul = Program::PostMul;
constexpr std::uint8_t kAcc = Program::PostAcc;
constexpr std::uint8_t kAdd = Program::PostAdd;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

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

// ---- compiling ---------------------------------------------------------------------------

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
    int power = 1;   // slot^power * m + c: only as the operand an instruction takes in
    bool pending() const { return hasMul || hasAdd || power > 1; }
    bool sameAs(const Value& o) const
    {
        return !constant && !o.constant && slot == o.slot && hasMul == o.hasMul &&
               hasAdd == o.hasAdd && m == o.m && c == o.c;
    }
};

// c * x^n of a variable's slot, as a term of Powers2.
struct Monomial {
    int slot = -1;
    int n = 1;
    double m = 1;
};

} // namespace

class Compiler {
public:
    explicit Compiler(AngleUnit unit) : unit_(unit) {}

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

    void release(int slot)
    {
        if (slot >= 0 && slotVariable_[slot] < 0)
            free_.push_back(slot);
    }
    void release(const Value& v)
    {
        if (!v.constant)
            release(v.slot);
    }

    Instr* open(const Value& v) { return v.instr >= 0 ? &program_.code_[v.instr] : nullptr; }

    bool isVariable(const Value& v) const
    {
        return !v.constant && slotVariable_[v.slot] >= 0 && !v.pending();
    }

    // An open x^n (n up to 4) of a variable, written last and followed by no more than a
    // scale and a shift, taken back to become the operand step of the instruction that
    // reads it: (x^n * m + c), with the same roundings as the two steps apart.
    void foldPower(Value& v)
    {
        if (v.constant || v.instr < 0 || v.instr != int(program_.code_.size()) - 1)
            return;
        const Instr& in = program_.code_.back();
        if (in.op != Op::IntPow || in.n > 4 || in.preA || in.aVariable < 0 ||
            (in.post & kAcc) != 0)
            return;
        Value folded;
        folded.slot = in.a;
        folded.power = in.n;
        folded.hasMul = true;
        folded.m = in.mul;
        folded.hasAdd = true;
        folded.c = in.add;
        release(in.dst);
        program_.code_.pop_back();
        v = folded;
    }

    // The output slot is taken before the operands are given back, so that no instruction
    // writes a slot it reads; the batch kernels rely on that.
    Value push(Op op, Value a, Value b = {}, double k = 0, Function function = Function::Sqrt)
    {
        if (op == Op::Call || op == Op::Div)
            foldPower(a);
        Instr in;
        in.op = op;
        in.function = function;
        in.dst = allocate();
        in.a = a.slot;
        in.aVariable = slotVariable_[a.slot];
        in.preA = a.pending();
        in.aPower = a.power;
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
    Value computed(Value v) { return v.pending() ? push(Op::Copy, v) : v; }

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
        if (!in || in->post != Program::PostNone)
            v = push(Op::Copy, v);
        in = open(v);
        in->post = kMul;
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
        if (!in || (in->post & kAdd) != 0)
            v = push(Op::Copy, v);
        in = open(v);
        in->post |= kAdd;
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
        if (!in || (in->post & kAcc) != 0)
            return scaled(v, -1);
        in->mul = (in->post & kMul) != 0 ? -in->mul : -1;
        if ((in->post & kAdd) != 0)
            in->add = -in->add;
        in->post |= kMul;
        return v;
    }

    // term * sign + sum, folded into the instruction of term when it is still open (an
    // Add or Sub of two slots then costs no pass of its own). term must be the later of
    // the two, or sum a variable, so that sum is ready when term's instruction runs.
    std::optional<Value> accumulated(Value term, Value sum, double sign)
    {
        Instr* in = open(term);
        if (!in || sum.pending() || (in->post & ~kMul) != 0)
            return std::nullopt;
        in->mul = (in->post & kMul) != 0 ? in->mul * sign : sign;
        in->post = in->mul == 1 ? kAcc : (kMul | kAcc);
        in->c = sum.slot;
        in->cVariable = slotVariable_[sum.slot];
        release(sum);
        return term;
    }

    // sum + term, term a variable with or without its step (2x, x-1), when sum is an open
    // Powers2 of the same variable: its finishing step adds the term, so that the third term
    // of a polynomial costs no pass of its own. For a difference the term comes negated,
    // which is exact: t - (x*m + c) is t + (x*(-m) + (-c)).
    std::optional<Value> powers2Plus(const Value& sum, Value term, double sign)
    {
        Instr* in = open(sum);
        if (!in || in->op != Op::Powers2 || in->post != Program::PostNone || term.constant ||
            term.instr >= 0 || slotVariable_[term.slot] < 0 || term.slot != in->a)
            return std::nullopt;
        if (sign < 0)
            term = negated(term);
        in->post = kAcc;
        in->c = term.slot;
        in->cVariable = slotVariable_[term.slot];
        in->preC = term.pending();
        in->cm = term.m;
        in->cc = term.c;
        return sum;
    }

    // v as c * x^n with n from 1 to 4: a variable, 2x, or an open x^n or x^n * c.
    std::optional<Monomial> monomial(const Value& v) const
    {
        if (v.constant)
            return std::nullopt;
        if (v.instr < 0) {
            if (slotVariable_[v.slot] < 0 || v.hasAdd)
                return std::nullopt;
            return Monomial{v.slot, 1, v.hasMul ? v.m : 1};
        }
        const Instr& in = program_.code_[v.instr];
        if (in.op != Op::IntPow || in.n > 4 || in.preA || in.aVariable < 0 ||
            (in.post & ~kMul) != 0)
            return std::nullopt;
        return Monomial{in.a, in.n, (in.post & kMul) != 0 ? in.mul : 1};
    }

    // l + r * sign as one Powers2 when both are terms of the same variable and their
    // instructions are the last ones written, which can then be taken back.
    std::optional<Value> powers2(const Value& l, const Value& r, double sign)
    {
        const std::optional<Monomial> left = monomial(l);
        const std::optional<Monomial> right = monomial(r);
        if (!left || !right || left->slot != right->slot)
            return std::nullopt;
        const int end = int(program_.code_.size());
        const int rightInstrs = r.instr >= 0 ? 1 : 0;
        if ((r.instr >= 0 && r.instr != end - 1) ||
            (l.instr >= 0 && l.instr != end - 1 - rightInstrs))
            return std::nullopt;
        for (const Value* v : {&r, &l}) {
            if (v->instr >= 0) {
                release(program_.code_.back().dst);
                program_.code_.pop_back();
            }
        }
        Value base;
        base.slot = left->slot;
        const Value v = push(Op::Powers2, base);
        Instr& in = program_.code_[v.instr];
        in.n = left->n;
        in.k = left->m;
        in.n2 = right->n;
        in.k2 = right->m * sign; // t - u*m is t + u*(-m), exactly
        return v;
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

    // Outside radians the six angle functions get an instruction that converts.
    Value call(Function function, const Value& v)
    {
        if (v.constant)
            return constant(applyFunction(function, v.k, unit_));
        if (unit_ == AngleUnit::Radians || !isAngleFunction(function))
            return push(Op::Call, v, {}, 0, function);
        const Value angle = push(Op::AngleCall, v, {}, 0, function);
        program_.code_[angle.instr].n = int(unit_);
        return angle;
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
        case Kind::Call: return call(node.function, compile(node.args[0]));
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
            if (const std::optional<Value> v = powers2(l, r, 1))
                return *v;
            if (const std::optional<Value> v = powers2Plus(l, r, 1))
                return *v;
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
            if (const std::optional<Value> v = powers2(l, r, -1))
                return *v;
            if (const std::optional<Value> v = powers2Plus(l, r, -1))
                return *v;
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

    AngleUnit unit_;
    Program program_;
    std::vector<int> slotVariable_; // per slot: the variable it holds (never reused), or -1
    std::vector<int> free_;
    std::vector<int> variableSlots_;
};

Program Program::compile(const Node& tree, AngleUnit unit)
{
    return Compiler(unit).run(tree);
}

} // namespace curvix::eval
