#pragma once

#include "eval/evaluator.h"
#include "eval/program.h"

#include <QString>

#include <memory>
#include <span>

namespace curvix::eval {

// A prepared formula in one variable, compiled once. It never changes after compiling, so
// const code and several threads may evaluate one instance at the same time; the values are
// those ExpressionEvaluator gives for the same text and variable.
class CompiledFormula {
public:
    // Nothing when the text does not compile; error and message then say why and where.
    static std::shared_ptr<const CompiledFormula> compile(const QString& preparedText,
                                                          const QString& variable,
                                                          CompileError* error = nullptr,
                                                          QString* message = nullptr);

    double evaluate(double x) const;
    // ys[i] = the formula at xs[i]; ys must be as long as xs.
    void evaluateBatch(std::span<const double> xs, std::span<double> ys) const;

private:
    explicit CompiledFormula(Program program) : m_program(std::move(program)) {}

    Program m_program;
};

} // namespace curvix::eval
