#include "eval/evaluator.h"

#include "eval/parser.h"
#include "eval/program.h"

#include <QStringList>

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace curvix::eval {

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
}

struct ExpressionEvaluator::Impl {
    QStringList names;
    std::vector<double> values;
    std::vector<Program> programs;
    CompileError error;
    QString errorText;
    AngleUnit unit = AngleUnit::Radians;

    // Parses and compiles text, remembering the outcome for HasError and ErrorText.
    std::optional<Program> compile(const QString& text)
    {
        const ParseResult parsed = parseFormula(text, names);
        error = parsed.error;
        errorText = parsed.message;
        if (!parsed.ok())
            return std::nullopt;
        return Program::compile(parsed.tree, unit);
    }

    const Program* program(int id) const
    {
        return id >= 0 && id < int(programs.size()) ? &programs[id] : nullptr;
    }
};

ExpressionEvaluator::ExpressionEvaluator() : d(std::make_unique<Impl>()) {}

ExpressionEvaluator::~ExpressionEvaluator() = default;

bool ExpressionEvaluator::HasError() const
{
    return d->error.code != CompileError::Code::None;
}

double ExpressionEvaluator::EvaluateText(const QString& text)
{
    const std::optional<Program> program = d->compile(text);
    return program ? program->evaluate(d->values) : kNaN;
}

int ExpressionEvaluator::SetExpression(const QString& text)
{
    std::optional<Program> program = d->compile(text);
    if (!program)
        return -1;
    d->programs.push_back(std::move(*program));
    return int(d->programs.size()) - 1;
}

double ExpressionEvaluator::Evaluate(int expressionId) const
{
    const Program* program = d->program(expressionId);
    return program ? program->evaluate(d->values) : kNaN;
}

int ExpressionEvaluator::DefineVariable(const QString& name)
{
    const qsizetype known = d->names.indexOf(name);
    if (known >= 0)
        return int(known);
    d->names.append(name);
    d->values.push_back(0);
    return int(d->names.size()) - 1;
}

void ExpressionEvaluator::Reset()
{
    d->names.clear();
    d->values.clear();
    d->programs.clear();
    d->error = {};
    d->errorText.clear();
}

void ExpressionEvaluator::SetAngleUnit(AngleUnit unit)
{
    d->unit = unit;
}

void ExpressionEvaluator::SetVariable(int variableId, double value)
{
    if (variableId >= 0 && variableId < int(d->values.size()))
        d->values[variableId] = value;
}

QString ExpressionEvaluator::ErrorText() const
{
    return d->errorText;
}

CompileError ExpressionEvaluator::LastError() const
{
    return d->error;
}

void ExpressionEvaluator::EvaluateBatch(int expressionId, int variableId,
                                        std::span<const double> xs, std::span<double> ys) const
{
    if (const Program* program = d->program(expressionId))
        program->evaluateBatch(d->values, variableId, xs, ys);
    else
        std::fill(ys.begin(), ys.end(), kNaN);
}

} // namespace curvix::eval
