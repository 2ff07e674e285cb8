#pragma once

#include "eval/ast.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace curvix::eval {

// A compiled formula: a flat list of instructions over numbered slots. Every instruction
// reads one or two slots (or a slot and a constant), writes a slot of its own, and may
// finish its result with a multiplication and an addition by constants, so that common
// shapes such as 2x^2+1 take a single instruction.
class Program {
public:
    enum class Op : std::uint8_t {
        Copy,   // a
        Add,    // a + b
        Sub,    // a - b
        Mul,    // a * b
        Div,    // a / b
        Pow,    // pow(a, b)
        DivK,   // a / k
        KDiv,   // k / a
        PowK,   // pow(a, k)
        KPow,   // pow(k, a)
        IntPow, // a^n by repeated squaring, n = k >= 2
        Call,   // function(a)
    };
    // The finishing step: none, * mul, + add, or * mul + add.
    enum class Post : std::uint8_t { None = 0, Mul = 1, Add = 2, MulAdd = 3 };

    struct Instr {
        Op op = Op::Copy;
        Post post = Post::None;
        Function function = Function::Sqrt;
        int dst = 0;
        int a = 0;
        int b = 0;
        double k = 0;
        double mul = 1;
        double add = 0;
    };

    // Compiles a parsed formula; variable indices of the tree are the ids into the values
    // given to evaluate.
    static Program compile(const Node& tree);

    // variables holds the value of every variable id the formula uses.
    double evaluate(std::span<const double> variables) const;
    // ys[i] = the formula with variable `variable` at xs[i]; xs and ys have the same length.
    void evaluateBatch(std::span<const double> variables, int variable,
                       std::span<const double> xs, std::span<double> ys) const;

    int instructionCount() const { return int(code_.size()); }

private:
    friend class Compiler;

    std::vector<Instr> code_;
    std::vector<std::pair<int, int>> loads_; // (variable id, slot), loaded before the code
    int slots_ = 0;
    int result_ = 0;
    bool constant_ = false;
    double value_ = 0;
};

} // namespace curvix::eval
