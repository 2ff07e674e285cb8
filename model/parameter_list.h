#pragma once

#include "eval/parameters.h"
#include "model/app_state.h"
#include "model/prompter.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace curvix::model {

// The parameters of the drawing: declared, changed and removed here, so that every
// function that uses one follows it. A refusal is told through the prompter and changes
// nothing. A value outside the bounds is kept as typed: the user chose it, and the slider
// simply stands at its nearer end.

// What is wrong with a parameter in place `index` of the state's list (-1 for a new one):
// a name that is not one lower-case letter, is e or the variable, or is taken; a number
// that is not finite; a minimum not below its maximum; a step not above 0.
std::optional<QString> parameterProblem(const AppState& state, const eval::Parameter& parameter,
                                        int index = -1);

bool addParameter(AppState& state, Prompter& prompter, const eval::Parameter& parameter);

// New bounds, step and value; a new name only while no function uses the old one.
bool changeParameter(AppState& state, Prompter& prompter, int index,
                     const eval::Parameter& parameter);

// The slider's fast path: the value only, and the functions that use the parameter (and
// their derivative formulas for the slopes) compiled again. The caller redraws.
void setParameterValue(AppState& state, int index, double value);

// Refused, with a message naming them, while functions use the parameter.
bool removeParameter(AppState& state, Prompter& prompter, int index);

// The texts of the functions that use the named parameter, in list order.
QStringList functionsUsingParameter(const AppState& state, const QString& name);

// Before a typed formula is refused for letters that are not declared, offers to make them
// parameters with the defaults of Parameter. True when there was nothing to offer or the
// user agreed (they are then declared); false when the user declined, after which the
// formula is refused without a second message.
bool offerParameters(AppState& state, Prompter& prompter, const QString& text,
                     const QString& variable);

// The entry's formula and its derivative's, compiled with the state's parameter values.
void compileEntry(const AppState& state, GraphEntry& entry);

} // namespace curvix::model
