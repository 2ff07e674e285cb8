#pragma once

// The computer-algebra side of the symbolic derivative and primitive. Only
// symbolic_cas.cpp includes Giac; everything here is plain Qt and standard C++.

#include "eval/ast.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstddef>
#include <vector>

namespace curvix::eval::cas {

enum class Operation { Derivative, Primitive };

struct Problem {
    Operation operation = Operation::Derivative;
    // Parsed by parseFormula with the names {variable, "e", parameters...}: variable 0 is
    // the function's variable, variable 1 Euler's number, variable 2 + i parameters[i].
    Node formula;
    // Named numbers the answer keeps as symbols; every name one letter.
    QStringList parameters;
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

// The parameters' values at which answers with parameters are compared: every set must
// agree, so that a form right for one sign of a parameter only is refused. Values that look
// irrational, of both signs, none near 0 or 1.
inline constexpr std::size_t kParameterSets = 3;
inline double parameterValue(std::size_t set, std::size_t index)
{
    static constexpr double table[kParameterSets][6] = {
        {1.37, -0.73, 0.59, 2.21, -1.63, 0.87},
        {-0.83, 1.61, -2.17, 0.67, 1.19, -0.47},
        {2.53, 0.41, 1.83, -1.29, 0.31, 1.07},
    };
    // Beyond six parameters the values repeat, slightly apart.
    const std::size_t round = index / 6;
    return table[set][index % 6] * (1.0 + 0.07 * double(round));
}
// How many sets a problem with parameterCount parameters is checked at.
inline std::size_t parameterSetCount(qsizetype parameterCount)
{
    return parameterCount == 0 ? 1 : kParameterSets;
}

struct Answer {
    // Equivalent readable forms of the answer in the formula language, "pi" for pi; empty
    // when there is no answer.
    std::vector<QString> forms;
    // The answer's values at kSamplePoints, computed from the CAS's own result (NaN or an
    // infinity outside its domain), against which each form is checked: one array for each
    // set of parameter values (parameterSetCount of them).
    std::vector<SampleValues> values;
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
