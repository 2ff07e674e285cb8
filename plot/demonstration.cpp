#include "plot/demonstration.h"

#include "model/strings.h"
#include "plot/render.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace curvix::plot {

namespace {

constexpr double kMaxDemoSteps = 10000;
// A listed x gets a piece of the derivative's graph this many thousandths of the range
// wide to each side.
constexpr double kListedPieceHalfWidth = 5;
// A piece of the derivative's graph is never sampled at more points than this.
constexpr double kMaxPiecePoints = 1e6;

// The slope at x by a central difference: far closer to the derivative than the tangent's
// forward difference, so the derivative's graph is true.
double slopeAt(const eval::CompiledFormula& curve, double x)
{
    const double h = 1e-5 * std::max(1.0, std::abs(x));
    return (curve.evaluate(x + h) - curve.evaluate(x - h)) / (2 * h);
}

void growDerivative(model::AppState& state, double x, double slope)
{
    model::Demonstration& demo = state.demonstration;
    const model::ViewWindow& view = state.view;
    const double pixel = (view.XMax - view.XMin) / 1000;
    double a = x - kListedPieceHalfWidth * pixel;
    double b = x + kListedPieceHalfWidth * pixel;
    if (demo.hasLast && !demo.fromList) {
        a = std::min(demo.lastX, x);
        b = std::max(demo.lastX, x);
    }
    const double step = sampleStepFor(view);
    const double spacing = step > 0 ? std::min(pixel, step) : pixel;
    if (spacing > 0 && (b - a) / spacing <= kMaxPiecePoints) {
        for (double t = a; t < b && t + spacing != t; t += spacing) {
            const double s = slopeAt(*demo.formula, t);
            if (std::isfinite(s))
                demo.derivative.push_back({t, s});
        }
    }
    if (std::isfinite(slope))
        demo.derivative.push_back({x, slope});
}

} // namespace

DemoPlan planDemonstration(double from, double to, double step, const std::vector<double>& list)
{
    if (!list.empty())
        return {list, {}};
    if (!(from < to))
        return {{}, model::LoadResString(4021)};
    if (!(step > 0))
        return {{}, model::LoadResString(4022)};
    const double steps = (to - from) / step;
    if (!(steps <= kMaxDemoSteps))
        return {{}, model::LoadResString(4023).arg(kMaxDemoSteps)};
    // Multiplied, not accumulated, so that x to is met exactly when the step divides the
    // range; the small margin keeps a last step lost to rounding.
    const auto n = static_cast<long long>(std::floor(steps + 1e-9));
    DemoPlan plan;
    for (long long i = 0; i <= n; ++i)
        plan.xs.push_back(std::min(to, from + double(i) * step));
    return plan;
}

bool startDemonstration(model::AppState& state, int sourceEntry, std::vector<double> xs,
                        bool fromList, bool withDerivative, const eval::Report& report)
{
    if (sourceEntry < 0 || sourceEntry >= int(state.graphs.size()) ||
        !state.graphs[std::size_t(sourceEntry)].formula) {
        if (report)
            report(model::LoadResString(2090));
        return false;
    }
    const model::GraphEntry& source = state.graphs[std::size_t(sourceEntry)];
    model::Demonstration demo;
    demo.running = true;
    demo.xs = std::move(xs);
    demo.fromList = fromList;
    demo.text = source.text;
    demo.formula = source.formula;
    demo.color = state.functionColor;
    // The curve is sampled once: the walk shows it as it stood at the start.
    demo.curve = sampleCurve(*demo.formula, state.view, sampleStepFor(state.view));
    demo.withDerivative = withDerivative;
    demo.derivativeColor = state.functionColor == model::kDemoDerivativeColor
                               ? model::kDemoDerivativeSecondColor
                               : model::kDemoDerivativeColor;
    demo.keptDerivatives = std::move(state.demonstration.keptDerivatives);
    state.demonstration = std::move(demo);
    return true;
}

bool resumesDemonstration(const model::AppState& state, const QString& function)
{
    const model::Demonstration& demo = state.demonstration;
    return demo.running && demo.text == function && demo.next > 0 && demo.next < demo.xs.size();
}

model::AddResult keepDerivative(model::AppState& state, model::Prompter& prompter,
                                model::LinkCheck& links, const QString& sourceText,
                                const QString& derivativeText)
{
    model::Demonstration& demo = state.demonstration;
    const int source = model::findGraphByText(state, sourceText);
    if (source < 0 || derivativeText.isEmpty())
        return model::AddResult::Rejected;
    demo.derivative.clear();
    const QString variable = state.variable();
    state.pendingDerivativeOf = source;
    const model::AddResult result = model::addFunction(
        state, prompter, links, derivativeText, QStringLiteral("f(%1)").arg(variable));
    if (result == model::AddResult::Added) {
        state.graphs.back().color = demo.derivativeColor;
        demo.keptDerivatives.emplace_back(sourceText, derivativeText);
    }
    return result;
}

bool dropOrphanedDerivatives(model::AppState& state)
{
    std::vector<std::pair<QString, QString>>& kept = state.demonstration.keptDerivatives;
    bool dropped = false;
    for (auto it = kept.begin(); it != kept.end();) {
        if (model::graphExists(state, it->first)) {
            ++it;
            continue;
        }
        const int item = model::findItemByText(state, it->second);
        dropped = (item > 0 && model::deleteFunctionItem(state, item)) || dropped;
        it = kept.erase(it);
    }
    return dropped;
}

DemoStepResult demonstrationStep(model::AppState& state)
{
    model::Demonstration& demo = state.demonstration;
    if (!demo.running || !demo.formula || demo.next >= demo.xs.size())
        return {};
    const double x = demo.xs[demo.next++];
    const double slope = slopeAt(*demo.formula, x);
    const QString variable = state.variable();
    demo.tangent = tangentMark(*demo.formula, variable, x, state.view, sampleStepFor(state.view));
    if (demo.withDerivative)
        growDerivative(state, x, slope);
    demo.hasLast = true;
    demo.lastX = x;
    return {true, x, slope, demo.next >= demo.xs.size()};
}

void stopDemonstration(model::AppState& state)
{
    model::Demonstration& demo = state.demonstration;
    if (!demo.running)
        return;
    model::Demonstration after;
    after.color = demo.color;
    after.derivativeColor = demo.derivativeColor;
    after.keptDerivatives = std::move(demo.keptDerivatives);
    demo = std::move(after);
}

} // namespace curvix::plot
