#pragma once

#include "eval/angle_unit.h"

#include <QString>

#include <memory>
#include <span>

namespace curvix::eval {

// A compile error of a formula: what went wrong and where (1-based position into the
// text that was compiled, and the length of the offending piece).
struct CompileError {
    enum class Code {
        None,
        Empty,             // nothing but blanks
        UnexpectedEnd,     // the formula stops where an operand or ")" is needed
        UnexpectedChar,    // a character that no token starts with
        UnexpectedToken,   // a valid token in a place where it cannot stand
        UnknownName,       // a name that is neither a function, a constant nor a defined variable
        MissingParen,      // "(" without its ")"
        ExtraParen,        // ")" without its "("
        BadNumber,         // "1.2.3" and the like
        NumberAfterName,   // "x3.14": a name followed directly by a number
        MissingArgument,   // a function name not followed by "("
    };
    Code code = Code::None;
    int position = 0;
    int length = 0;
};

// Compiles formula texts in named variables and evaluates them. Formulas are compiled once
// into a flat program and evaluated by id, one point at a time or over an array of values.
// Evaluation never throws: outside a function's domain the result is NaN or an infinity.
class ExpressionEvaluator {
public:
    ExpressionEvaluator();
    ~ExpressionEvaluator();
    ExpressionEvaluator(const ExpressionEvaluator&) = delete;
    ExpressionEvaluator& operator=(const ExpressionEvaluator&) = delete;

    // True when the last SetExpression or EvaluateText failed to compile.
    bool HasError() const;
    // Compiles and evaluates a text with the current variable values; NaN on a compile error.
    double EvaluateText(const QString& text);
    // Compiles a text; returns its id (>= 0), or -1 with HasError() set.
    int SetExpression(const QString& text);
    // The value of a compiled expression for the current variable values; NaN for an unknown id.
    double Evaluate(int expressionId) const;
    // Makes a variable known by name (returns the existing id for a known name).
    int DefineVariable(const QString& name);
    // Forgets all expressions and variables; the angle unit stays.
    void Reset();
    // The unit trigonometric functions work in for the expressions compiled from now on
    // (radians until set); expressions compiled earlier keep theirs.
    void SetAngleUnit(AngleUnit unit);
    void SetVariable(int variableId, double value);
    // A message for the last compile error, e.g. "Unknown name 'xsin' at position 3".
    QString ErrorText() const;
    CompileError LastError() const;

    // Evaluates a compiled expression with variableId taking each value of xs in turn;
    // ys must be as long as xs. Other variables keep their current values.
    void EvaluateBatch(int expressionId, int variableId, std::span<const double> xs,
                       std::span<double> ys) const;

private:
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace curvix::eval
