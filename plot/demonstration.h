#pragma once

#include "eval/formula.h"
#include "model/app_state.h"
#include "model/graph_list.h"

#include <QString>

#include <vector>

namespace curvix::plot {

// The x values a demonstration walks through: the list when it has values (in its order),
// otherwise from, from + step, ... up to to. Nothing, with the reason, for values that
// cannot be walked (from not below to, a step of 0 or less, too many steps).
struct DemoPlan {
    std::vector<double> xs;
    QString problem;
};
DemoPlan planDemonstration(double from, double to, double step, const std::vector<double>& list);

// Starts a demonstration on graph entry sourceEntry: its curve is sampled once over the
// view, and the derivative's graph of an earlier demonstration goes. False, with the
// message reported, when there is no such entry. The first step is the caller's.
bool startDemonstration(model::AppState& state, int sourceEntry, std::vector<double> xs,
                        bool fromList, bool withDerivative, const eval::Report& report);

struct DemoStepResult {
    bool stepped = false; // false when nothing runs or the walk was already at its end
    double x = 0;
    double slope = 0;     // the derivative at x; NaN where it is undefined
    bool finished = true; // no step is left
};
// Moves the tangent to the walk's next x and grows the derivative's graph: along a range
// from the last x to this one, for a listed x a short piece of its own.
DemoStepResult demonstrationStep(model::AppState& state);

// Ends the walk: the curve, its tangent and the growing derivative's graph go (the
// derivative stays as an item when keepDerivative made it one).
void stopDemonstration(model::AppState& state);

// Whether Start on this function goes on with a paused walk rather than beginning anew:
// the walk runs on it and has steps left.
bool resumesDemonstration(const model::AppState& state, const QString& function);

// The derivative's graph of a walk on sourceText becomes an item of the function box,
// linked to its source as the Derivative command links it, in the derivative's colour;
// the grown points go. Duplicate when that text is drawn already (the points go all the
// same), Rejected when the source is gone or the text is empty.
model::AddResult keepDerivative(model::AppState& state, model::Prompter& prompter,
                                model::LinkCheck& links, const QString& sourceText,
                                const QString& derivativeText);
// Deletes the kept derivatives whose source is no longer drawn; true when one went.
bool dropOrphanedDerivatives(model::AppState& state);

} // namespace curvix::plot
