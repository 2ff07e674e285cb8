#pragma once

// The computer-algebra side of the symbolic derivative and primitive. Only
// symbolic_cas.cpp includes Giac; everything here is plain Qt and standard C++.

#include "eval/ast.h"

#include <QString>

#include <array>
#include <cstddef>
#include <vector>

namespace curvix::eval::cas {

enum class Operation { Derivative, Primitive };

struct Problem {
    Operation operation = Operation::Derivative;
    // Parsed by parseFormula with the names {variable, "e"}: variable 0 is the function's
    // variable, variable 1 (when present) Euler's number.
    Node formula;
    QString variable = QStringLiteral("x"); // the name the answer writes for variable 0
    int order = 1;                           // derivatives only
    bool decimals = false; // the formula had decimals: write terminating fractions as decimals
    // The angle unit: 1 radians, 2 degrees, 3 gradians. The formula's and the answer's
    // trigonometric functions take it and their inverses give it.
    int angleUnit = 1;
};

// Where answers are compared numerically: spread over both signs and several scales, away
// from 0, the integers and the usual multiples of pi, where special cases hide.
inline constexpr std::array<double, 16> kSamplePoints{
    -7.3, -3.7, -2.3, -1.1, -0.61, -0.27, 0.13, 0.41,
    0.77, 1.3,  1.9,  2.6,  3.4,   5.3,   8.7,  13.1,
};
using SampleValues = std::array<double, kSamplePoints.size()>;

struct Answer {
    // Equivalent readable forms of the answer in the formula language, "pi" for pi; empty
    // when there is no answer.
    std::vector<QString> forms;
    // The answer's values at kSamplePoints, computed from the CAS's own result (NaN or an
    // infinity outside its domain), against which each form is checked.
    SampleValues values{};
    // The forms of a primitive may differ from those values by one constant.
    bool upToConstant = false;
    QString failure; // why there is no answer, for diagnostics
};

// Computes the answer. Call it from one thread at a time (the CAS keeps global state);
// never throws. Returns early with a failure when interrupt() was called.
Answer solve(const Problem& problem);

// Asks a running solve() to stop as soon as the CAS notices; safe from any thread.
void interrupt();
// Forgets an earlier interrupt(); call before starting the next solve().
void clearInterrupt();

} // namespace curvix::eval::cas
