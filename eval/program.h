#pragma once

#include "eval/ast.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace curvix::eval {

// A compiled formula: a flat list of instructions over numbered slots. Every instruction
// reads one or two slots (or a slot and a constant) and writes a slot of its own. Around
// its operation it may take two cheap steps, so that common shapes cost one instruction:
// before it, an operand that is a variable may be scaled and shifted (2x, x-2), and after
// it the result may be scaled, added to another slot and shifted (2x^2+1, 3x^3-2x^2+x-5).
class Program {
public:
    enum class Op : std::uint8_t {
        Copy,    // a
        Add,     // a + b
        Sub,     // a - b
        Mul,     // a * b
        Div,     // a / b
        Pow,     // pow(a, b)
        DivK,    // a / k
        KDiv,    // k / a
        PowK,    // pow(a, k)
        KPow,    // pow(k, a)
        IntPow,  // a^n by repeated squaring, n >= 2
        Powers2, // a^n * k + a^n2 * k2, n and n2 from 1 to 4: two terms of a polynomial
        Call,    // function(a)
        // function(a) with its angle in the unit n (an AngleUnit): sin, cos, tan, asin,
        // acos and atan outside radians
        AngleCall,
    };
    // The finishing step ((v * mul) + c) + add, each part present when its bit is set.
    enum Post : std::uint8_t { PostNone = 0, PostMul = 1, PostAcc = 2, PostAdd = 4 };

    struct Instr {
        Op op = Op::Copy;
        std::uint8_t post = PostNone;
        Function function = Function::Sqrt;
        int dst = 0;
        int a = 0;
        int b = -1;
        int c = -1;         // the slot PostAcc adds
        int aVariable = -1; // the variable id that slot a (b, c) holds, or -1
        int bVariable = -1;
        int cVariable = -1;
        int n = 0;
        int n2 = 0;
        double k = 0;
        double k2 = 0;
        // Unused parts of the finishing step are 1 and -0: v * 1 + -0 is v for every v.
        double mul = 1;
        double add = -0.0;
        // The operand steps a * am + ac and b * bm + bc, when preA and preB are set.
        bool preA = false;
        bool preB = false;
        // With preA, slot a is first raised to this power (2 to 4; only a Call or a Div):
        // sqrt(x^2+1) and (x^2+1)/(x-2) are one instruction each.
        int aPower = 1;
        double am = 1;
        double ac = -0.0;
        double bm = 1;
        double bc = -0.0;
        // The step c * cm + cc on the slot PostAcc adds; only a Powers2 takes it (x^4-3x^2+2x).
        bool preC = false;
        double cm = 1;
        double cc = -0.0;
    };

    // Compiles a parsed formula; variable indices of the tree are the ids into the values
    // given to evaluate. Angles of trigonometric functions are in unit.
    static Program compile(const Node& tree, AngleUnit unit = AngleUnit::Radians);

    // variables holds the value of every variable id the formula uses.
    double evaluate(std::span<const double> variables) const;
    // ys[i] = the formula with variable `variable` at xs[i], for the common length of both;
    // the rest of ys becomes NaN.
    void evaluateBatch(std::span<const double> variables, int variable,
                       std::span<const double> xs, std::span<double> ys) const;

    // The instructions evaluateBatch runs on, chosen on first use: the widest the processor
    // has of AVX-512 (F and DQ), AVX2 (with FMA) and the baseline of every x86-64.
    // CURVIX_BATCH_ISA in the environment (baseline, avx2) caps the choice, to compare them
    // on one machine.
    enum class InstructionSet { Baseline, Avx2, Avx512 };
    static InstructionSet batchInstructionSet();

    int instructionCount() const { return int(code_.size()); }

private:
    friend class Compiler;

    double run(const double* variables, double* registers) const;

    std::vector<Instr> code_;
    std::vector<std::pair<int, int>> loads_; // (variable id, slot), loaded before the code
    int slots_ = 0;
    int variableCount_ = 0; // 1 + the highest variable id used
    int result_ = 0;
    bool constant_ = false;
    double value_ = 0;
};

} // namespace curvix::eval
