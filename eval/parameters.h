#pragma once

#include <QString>

#include <vector>

namespace curvix::eval {

// A named number the user declares, the a of a·sin(b·x+c): not a second variable, but a
// value a formula reads as it reads a number, moved with a slider between its bounds.
struct Parameter {
    QString name; // one lower-case letter, neither the drawing's variable nor e
    double value = 1;
    double minimum = -5;
    double maximum = 5;
    double step = 0.1;

    friend bool operator==(const Parameter&, const Parameter&) = default;
};

using ParameterList = std::vector<Parameter>;

} // namespace curvix::eval
