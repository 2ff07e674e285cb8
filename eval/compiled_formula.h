#pragma once

#include "eval/evaluator.h"
#include "eval/parameters.h"
#include "eval/program.h"

#include <QString>

#include <memory>
#include <span>

namespace curvix::eval {

// A prepared formula in one variable, compiled once. It never changes after compiling, so
// const code and several threads may evaluate one instance at the same time; the values are
// those ExpressionEvaluator gives for the same text, variable and angle unit.
class CompiledFormula {
public:
    // Nothing when the text does not compile; error and message then say why and where.
    // sin, cos and tan take angles in unit, asin, acos and atan answer in it. A name of
    // parameters reads as that parameter's value of the moment: a new value needs a new
    // compile, which keeps every compiled formula constant and free to share.
    static std::shared_ptr<const CompiledFormula> compile(const QString& preparedText,
                                                          const QString& variable,
                                                          AngleUnit unit = AngleUnit::Radians,
                                                          CompileError* error = nullptr,
                                                          QString* message = nullptr,
                                                          const ParameterList& parameters = {});

    double evaluate(double x) const;
    // ys[i] = the formula at xs[i]; ys must be as long as xs.
    void evaluateBatch(std::span<const double> xs, std::span<double> ys) const;
    // The unit the formula was compiled for: a change of unit needs a new compile.
    AngleUnit angleUnit() const { return m_unit; }

private:
    CompiledFormula(Program program, AngleUnit unit) : m_program(std::move(program)), m_unit(unit)
    {
    }

    Program m_program;
    AngleUnit m_unit;
};

} // namespace curvix::eval
