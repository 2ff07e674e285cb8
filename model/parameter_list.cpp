#include "model/parameter_list.h"

#include "eval/formula.h"

#include <QCoreApplication>

#include <cmath>

namespace curvix::model {

namespace {

struct ParameterText {
    Q_DECLARE_TR_FUNCTIONS(ParameterText)
};

// "a", "a and b", "a, b and c".
QString namesText(const QStringList& names)
{
    if (names.size() < 2)
        return names.value(0);
    const QString allButLast = names.first(names.size() - 1).join(QStringLiteral(", "));
    return ParameterText::tr("%1 and %2").arg(allButLast, names.last());
}

bool refuse(Prompter& prompter, const QString& message)
{
    prompter.message(message);
    return false;
}

bool validIndex(const AppState& state, int index)
{
    return index >= 0 && index < int(state.parameters.size());
}

} // namespace

std::optional<QString> parameterProblem(const AppState& state, const eval::Parameter& parameter,
                                        int index)
{
    const QString& name = parameter.name;
    if (!eval::isParameterName(name, state.variable()))
        return ParameterText::tr("'%1' cannot be a parameter: a parameter is one small letter "
                                 "from a to z, neither e nor the variable %2")
            .arg(name, state.variable());
    const int taken = eval::parameterIndex(state.parameters, name);
    if (taken >= 0 && taken != index)
        return ParameterText::tr("There is a parameter %1 already.").arg(name);
    if (!std::isfinite(parameter.value) || !std::isfinite(parameter.minimum) ||
        !std::isfinite(parameter.maximum) || !std::isfinite(parameter.step))
        return ParameterText::tr("The value, the bounds and the step of %1 must be numbers.")
            .arg(name);
    if (!(parameter.minimum < parameter.maximum))
        return ParameterText::tr("The minimum of %1 must be less than its maximum.").arg(name);
    if (!(parameter.step > 0))
        return ParameterText::tr("The step of %1 must be greater than 0.").arg(name);
    return std::nullopt;
}

void compileEntry(const AppState& state, GraphEntry& entry)
{
    const QString variable = state.variable();
    entry.formula = eval::CompiledFormula::compile(entry.expression, variable, state.angleUnit,
                                                   nullptr, nullptr, state.parameters);
    // The library's derivative is taken in radians.
    entry.slopeFormula = entry.slopeText.isEmpty()
                             ? nullptr
                             : eval::CompiledFormula::compile(entry.slopeText, variable,
                                                              AngleUnit::Radians, nullptr,
                                                              nullptr, state.parameters);
}

bool addParameter(AppState& state, Prompter& prompter, const eval::Parameter& parameter)
{
    if (const std::optional<QString> problem = parameterProblem(state, parameter))
        return refuse(prompter, *problem);
    state.parameters.push_back(parameter);
    state.documentChanged = true;
    return true;
}

bool changeParameter(AppState& state, Prompter& prompter, int index,
                     const eval::Parameter& parameter)
{
    if (!validIndex(state, index))
        return false;
    const eval::Parameter old = state.parameters[std::size_t(index)];
    if (const std::optional<QString> problem = parameterProblem(state, parameter, index))
        return refuse(prompter, *problem);
    if (parameter.name != old.name) {
        const QStringList users = functionsUsingParameter(state, old.name);
        if (!users.isEmpty())
            return refuse(prompter, (users.size() == 1
                                         ? ParameterText::tr("%1 cannot be renamed: %2 uses it")
                                         : ParameterText::tr("%1 cannot be renamed: %2 use it"))
                                        .arg(old.name, namesText(users)));
    }
    state.parameters[std::size_t(index)] = parameter;
    if (parameter.value != old.value)
        setParameterValue(state, index, parameter.value);
    state.documentChanged = true;
    return true;
}

void setParameterValue(AppState& state, int index, double value)
{
    if (!validIndex(state, index))
        return;
    eval::Parameter& parameter = state.parameters[std::size_t(index)];
    parameter.value = value;
    for (GraphEntry& entry : state.graphs) {
        if (entry.parameters.contains(parameter.name))
            compileEntry(state, entry);
    }
    state.documentChanged = true;
}

bool removeParameter(AppState& state, Prompter& prompter, int index)
{
    if (!validIndex(state, index))
        return false;
    const QString name = state.parameters[std::size_t(index)].name;
    const QStringList users = functionsUsingParameter(state, name);
    if (!users.isEmpty())
        return refuse(prompter, (users.size() == 1
                                     ? ParameterText::tr("%1 cannot be deleted: %2 uses it")
                                     : ParameterText::tr("%1 cannot be deleted: %2 use it"))
                                    .arg(name, namesText(users)));
    state.parameters.erase(state.parameters.begin() + index);
    state.documentChanged = true;
    return true;
}

QStringList functionsUsingParameter(const AppState& state, const QString& name)
{
    QStringList texts;
    for (const GraphEntry& entry : state.graphs) {
        if (entry.parameters.contains(name))
            texts << entry.text;
    }
    return texts;
}

bool offerParameters(AppState& state, Prompter& prompter, const QString& text,
                     const QString& variable)
{
    const QStringList letters = eval::undeclaredLetters(text, variable, state.parameters);
    if (letters.isEmpty())
        return true;
    const eval::Parameter defaults;
    const QString range = ParameterText::tr("the value %1, from %2 to %3 in steps of %4")
                              .arg(eval::readoutNumber(defaults.value),
                                   eval::readoutNumber(defaults.minimum),
                                   eval::readoutNumber(defaults.maximum),
                                   eval::readoutNumber(defaults.step));
    const QString question =
        letters.size() == 1
            ? ParameterText::tr("The formula uses %1, which is not a parameter yet. Make %1 a "
                                "parameter with %2?")
                  .arg(letters.first(), range)
            : ParameterText::tr("The formula uses %1, which are not parameters yet. Make them "
                                "parameters with %2?")
                  .arg(namesText(letters), range);
    if (prompter.ask(question, Prompter::Buttons::YesNo) != Prompter::Button::Yes)
        return false;
    for (const QString& letter : letters)
        state.parameters.push_back(eval::Parameter{letter});
    state.documentChanged = true;
    return true;
}

} // namespace curvix::model
