#include "eval/compiled_formula.h"

#include "eval/parser.h"

namespace curvix::eval {

namespace {
// The formula's one variable has id 0; its stored value is never read by a batch and is
// what a fresh evaluator holds.
constexpr double kUnsetVariable = 0;

// Every parameter in the tree becomes its value, so that the compiler folds and fuses it
// as it does a typed number.
void substituteParameters(Node& node, const ParameterList& parameters)
{
    if (node.kind == Node::Kind::Variable && node.variable > 0) {
        node.kind = Node::Kind::Number;
        node.value = parameters[std::size_t(node.variable - 1)].value;
        node.variable = -1;
        return;
    }
    for (Node& arg : node.args)
        substituteParameters(arg, parameters);
}
} // namespace

std::shared_ptr<const CompiledFormula> CompiledFormula::compile(const QString& preparedText,
                                                                const QString& variable,
                                                                AngleUnit unit,
                                                                CompileError* error,
                                                                QString* message,
                                                                const ParameterList& parameters)
{
    const QStringList names = QStringList{variable} + parameterNames(parameters);
    ParseResult parsed = parseFormula(preparedText, names);
    if (error)
        *error = parsed.error;
    if (message)
        *message = parsed.message;
    if (!parsed.ok())
        return nullptr;
    if (!parameters.empty())
        substituteParameters(parsed.tree, parameters);
    return std::shared_ptr<const CompiledFormula>(
        new CompiledFormula(Program::compile(parsed.tree, unit), unit));
}

double CompiledFormula::evaluate(double x) const
{
    const double variables[1] = {x};
    return m_program.evaluate(variables);
}

void CompiledFormula::evaluateBatch(std::span<const double> xs, std::span<double> ys) const
{
    const double variables[1] = {kUnsetVariable};
    m_program.evaluateBatch(variables, 0, xs, ys);
}

} // namespace curvix::eval
