#pragma once

#include "eval/angle_unit.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace curvix::eval {

// The functions a formula may call. "Exp" and "exp" are one function, "log" and "log10" another.
enum class Function {
    Sqrt,
    Sin,
    Cos,
    Tan,
    Asin,
    Acos,
    Atan,
    Exp,
    Ln,
    Log10,
    Abs,
    Sign,
    Sinh,
    Cosh,
    Tanh,
    Asinh,
    Acosh,
    Atanh,
};

// The function a name stands for (case-sensitive), or nothing.
std::optional<Function> functionByName(QStringView name);
// The usual name of a function: "sqrt", "exp", "ln", "log10", ...
const char* functionName(Function function);
// The function's value; NaN or an infinity outside its domain, never a trap.
double applyFunction(Function function, double value);
// The same with sin, cos and tan taking angles in unit and asin, acos and atan answering in
// it. Whole right angles are exact: in degrees sin(180) and cos(90) are 0, tan(45) is 1.
double applyFunction(Function function, double value, AngleUnit unit);
// True for the six functions that take or give an angle.
bool isAngleFunction(Function function);

// One node of a parsed formula. The tree keeps the formula as written: no folding, pi stays
// pi, "log" stays a call of Log10 with its own spelling in text. Parentheses and a unary
// plus leave no node of their own.
struct Node {
    enum class Kind {
        Number,   // value, text holds the digits as typed
        Variable, // variable is the index into the names the parser was given, text the name
        Pi,       // the constant pi
        Negate,   // unary minus: args[0]
        Add,      // args[0] + args[1]
        Subtract,
        Multiply, // implicit is set when no "*" was written ("2x", "(x+1)(x-1)")
        Divide,
        Power,    // args[0] ^ args[1]
        Call,     // function(args[0]), text holds the name as typed
    };
    Kind kind = Kind::Number;
    double value = 0;
    int variable = -1;
    Function function = Function::Sqrt;
    bool implicit = false;
    QString text;
    // 1-based position and length of the token that made this node (the operator for the
    // operations, the name for a call).
    int position = 0;
    int length = 0;
    std::vector<Node> args;
};

} // namespace curvix::eval
