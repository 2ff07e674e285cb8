#include "plot/render.h"

#include "model/graph_list.h"

#include <QThread>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentMap>

#include <algorithm>
#include <cmath>
#include <span>

namespace curvix::plot {

namespace {

// Every curve is sampled at about this many x positions, whatever the zoom.
constexpr double kSamplesPerRange = 7000;
// A sample step that would give more points than this is not sampled at all (a range of
// zero width, or an absurd step), so that no redraw can hang.
constexpr std::size_t kMaxSamples = 1'000'000;

// An entry made without its compiled formula, or compiled for another angle unit, gets it
// here, once; a text that does not compile is reported on every redraw and keeps no points.
const eval::CompiledFormula* entryFormula(model::GraphEntry& entry, const model::AppState& state,
                                          const eval::Report& report)
{
    const model::AngleUnit unit = state.angleUnit;
    if (!entry.formula || entry.formula->angleUnit() != unit) {
        QString message;
        entry.formula = eval::CompiledFormula::compile(entry.expression, state.variable(), unit,
                                                       nullptr, &message, state.parameters);
        if (!entry.formula && report)
            report(message);
    }
    return entry.formula.get();
}

} // namespace

double sampleStepFor(const model::ViewWindow& view)
{
    return std::abs(view.XMax - view.XMin) / kSamplesPerRange;
}

namespace {

// The x positions of a curve's samples: from XMin to XMax in steps of step, the steps added
// up as a counted floating loop does. Empty for a step that would give too many.
const std::vector<double>& sampleXs(const model::ViewWindow& view, double step)
{
    // The buffer lives on: a redraw samples many curves of about the same length.
    thread_local std::vector<double> xs;
    xs.clear();
    if (!(step > 0) || !std::isfinite(step) || !(view.XMin <= view.XMax) ||
        (view.XMax - view.XMin) / step > double(kMaxSamples))
        return xs;
    for (double x = view.XMin; x <= view.XMax && xs.size() < kMaxSamples; x += step) {
        xs.push_back(x);
        if (x + step == x) // the step is lost in x: no further sample would differ
            break;
    }
    return xs;
}

const std::vector<double>& sampleYs(const eval::CompiledFormula& formula, std::span<const double> xs)
{
    thread_local std::vector<double> ys;
    ys.resize(xs.size());
    formula.evaluateBatch(xs, ys);
    return ys;
}

// Fills in a smooth curve between neighbouring samples: more points where it is steep, the
// last defined points before a domain edge, and a break where the curve does not go on.
class CurveRefiner {
public:
    CurveRefiner(const eval::CompiledFormula& formula, const model::ViewWindow& view,
                 SampledCurve& curve, std::size_t budget)
        : m_formula(formula), m_curve(curve), m_budget(budget)
    {
        const double low = std::min(view.YMin, view.YMax);
        const double high = std::max(view.YMin, view.YMax);
        // A thousandth of the view's height: about a pixel on a screen.
        m_tolerance = (high - low) / 1000;
        m_below = low - std::abs(view.YStep);
        m_above = high + std::abs(view.YStep);
    }

    void add(eval::PointD p)
    {
        if (!std::isfinite(p.y)) {
            m_breakPending = true;
            return;
        }
        if (m_breakPending && !m_curve.points.empty())
            m_curve.breaks.push_back(m_curve.points.size());
        m_breakPending = false;
        m_curve.points.push_back(p);
    }

    // Adds what lies strictly between two neighbouring samples, a already added.
    void fillBetween(eval::PointD a, eval::PointD b, int depth)
    {
        const bool aDefined = std::isfinite(a.y);
        const bool bDefined = std::isfinite(b.y);
        if (!aDefined && !bDefined)
            return;
        if (aDefined && bDefined) {
            if (!(std::abs(b.y - a.y) > m_tolerance))
                return; // close enough to be joined
            if ((a.y > m_above && b.y > m_above) || (a.y < m_below && b.y < m_below))
                return; // both beyond one edge: whatever lies between cannot be seen
            if (m_budget == 0)
                return; // a wild curve spent its points: the rest is joined as sampled
        }
        const double x = a.x + (b.x - a.x) / 2;
        const int limit = aDefined && bDefined ? kSteepDepth : kEdgeDepth;
        if (depth >= limit || !(a.x < x && x < b.x)) {
            // Still steep on an interval too small to hold a pixel: a pole or a jump. At a
            // domain edge this is where the search for the last defined point ends.
            m_breakPending = true;
            return;
        }
        --m_budget;
        const eval::PointD middle{x, m_formula.evaluate(x)};
        fillBetween(a, middle, depth + 1);
        add(middle);
        fillBetween(middle, b, depth + 1);
    }

private:
    // A continuous curve falls below the tolerance long before this many halvings of a
    // sample step; a pole or a jump never does.
    static constexpr int kSteepDepth = 30;
    // Halvings of a step spent finding where the domain ends.
    static constexpr int kEdgeDepth = 24;

    const eval::CompiledFormula& m_formula;
    SampledCurve& m_curve;
    std::size_t m_budget;
    double m_tolerance = 0;
    double m_below = 0;
    double m_above = 0;
    bool m_breakPending = false;
};

} // namespace

namespace {

// The curve's defined points at the given x positions.
std::vector<eval::PointD> pointsAt(const eval::CompiledFormula& formula, std::span<const double> xs)
{
    const std::vector<double>& ys = sampleYs(formula, xs);
    std::vector<eval::PointD> points;
    points.reserve(xs.size());
    for (std::size_t i = 0; i < xs.size(); ++i)
        if (std::isfinite(ys[i]))
            points.push_back({xs[i], ys[i]});
    return points;
}

SampledCurve smoothPointsAt(const eval::CompiledFormula& formula, const model::ViewWindow& view,
                            std::span<const double> xs)
{
    const std::vector<double>& ys = sampleYs(formula, xs);
    SampledCurve curve;
    curve.points.reserve(xs.size() + xs.size() / 4);
    // Oscillation too fast to draw takes at most four extra points a sample.
    CurveRefiner refiner(formula, view, curve, 4 * xs.size());
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (i > 0)
            refiner.fillBetween({xs[i - 1], ys[i - 1]}, {xs[i], ys[i]}, 0);
        refiner.add({xs[i], ys[i]});
    }
    return curve;
}

} // namespace

std::vector<eval::PointD> sampleCurve(const eval::CompiledFormula& formula,
                                      const model::ViewWindow& view, double step)
{
    return pointsAt(formula, sampleXs(view, step));
}

SampledCurve sampleSmoothCurve(const eval::CompiledFormula& formula, const model::ViewWindow& view,
                               double step)
{
    return smoothPointsAt(formula, view, sampleXs(view, step));
}

const eval::CompiledFormula* exactDerivative(const model::GraphEntry& entry)
{
    // The library's derivative is taken in radians: in other units the difference decides.
    const eval::CompiledFormula* d = entry.slopeFormula.get();
    return d && entry.formula && d->angleUnit() == entry.formula->angleUnit() ? d : nullptr;
}

model::GraphMark tangentMark(const eval::CompiledFormula& curve, const QString& variable, double x,
                             const model::ViewWindow& view, double step,
                             const eval::CompiledFormula* derivative)
{
    const eval::TangentLine line = eval::TangentLineText(curve, variable, x, step);
    model::GraphMark mark;
    mark.x = x;
    mark.text = line.variable;
    mark.slope = line.slope;
    mark.line = line.text;
    mark.y = line.y;
    // Outside the function's domain, or at a vertical tangent, nothing is drawn or said.
    const eval::CurveSlope exact = eval::SlopeAt(curve, x, derivative);
    if (exact.kind != eval::SlopeKind::Finite || !std::isfinite(mark.slope))
        return mark;
    mark.label = eval::TangentEquationText(exact.slope, x, exact.y, variable);
    // The line's text is a formula like any typed one: prepared (decimal comma) and compiled.
    eval::ExpressionEvaluator evaluator;
    const QString prepared = eval::PrepareExpressionText(
        evaluator, line.text, QStringLiteral("f(%1)").arg(variable), {});
    if (const auto formula = eval::CompiledFormula::compile(prepared, variable))
        mark.points = sampleCurve(*formula, view, step);
    return mark;
}

namespace {

// The threads that sample the curves of a redraw. A few are enough: the curves are many
// small jobs, and painting waits for all of them.
QThreadPool& samplingPool()
{
    static QThreadPool* pool = [] {
        auto* p = new QThreadPool;
        p->setMaxThreadCount(std::clamp(QThread::idealThreadCount(), 1, 8));
        p->setExpiryTimeout(-1); // threads that stay make the next redraw start at once
        return p;
    }();
    return *pool;
}

struct EntryJob {
    model::GraphEntry* entry;
    const eval::CompiledFormula* formula;
};

// One entry's curve and tangent marks. It writes only its own entry and reads the compiled
// formula, so entries may be sampled on several threads at once.
void sampleEntry(const EntryJob& job, const model::AppState& state, const QString& variable,
                 std::span<const double> xs)
{
    model::GraphEntry& entry = *job.entry;
    const eval::CompiledFormula* formula = job.formula;
    const model::ViewWindow& view = state.view;
    const double step = state.sampleStep;
    SampledCurve curve;
    if (formula && state.smoothCurves)
        curve = smoothPointsAt(*formula, view, xs);
    else if (formula)
        curve.points = pointsAt(*formula, xs);
    entry.points = std::move(curve.points);
    entry.breaks = std::move(curve.breaks);
    for (model::GraphMark& mark : entry.marks) {
        if (formula)
            mark = tangentMark(*formula, variable, mark.x, view, step, exactDerivative(entry));
        else
            mark.points.clear();
    }
}

} // namespace

void sampleDrawing(model::AppState& state, const eval::Report& report, Sampling sampling)
{
    const model::ViewWindow& view = state.view;
    state.sampleStep = sampleStepFor(view);
    const double step = state.sampleStep;
    const QString variable = state.variable();
    // Compiling reports in order, on this thread; only the sampling itself is shared out.
    std::vector<EntryJob> jobs;
    jobs.reserve(state.graphs.size());
    for (model::GraphEntry& entry : state.graphs)
        jobs.push_back({&entry, entryFormula(entry, state, report)});
    // Every curve is sampled at the same x positions: worked out once, read by every thread.
    const std::vector<double> xs = sampleXs(view, step);
    const auto sampleOne = [&](const EntryJob& job) { sampleEntry(job, state, variable, xs); };
    if (sampling == Sampling::Automatic)
        sampling = QThread::idealThreadCount() >= 4 ? Sampling::Parallel : Sampling::Serial;
    if (sampling == Sampling::Parallel && jobs.size() > 1)
        QtConcurrent::blockingMap(&samplingPool(), jobs, sampleOne);
    else
        std::for_each(jobs.begin(), jobs.end(), sampleOne);
    model::Demonstration& demo = state.demonstration;
    if (demo.formula) {
        // The walk goes on along its curve as a new unit or parameter value draws it.
        const int k = model::findGraphByText(state, demo.text);
        if (k >= 0 && state.graphs[std::size_t(k)].formula &&
            state.graphs[std::size_t(k)].formula != demo.formula) {
            demo.formula = state.graphs[std::size_t(k)].formula;
            demo.curve = sampleCurve(*demo.formula, view, step);
        }
    }
    if (demo.tangent && demo.formula)
        demo.tangent = tangentMark(*demo.formula, variable, demo.tangent->x, view, step);
    if (state.trace.on)
        PlaceTracePoint(state);
}

bool PlaceTracePoint(model::AppState& state)
{
    model::AppState::Trace& trace = state.trace;
    trace.found = false;
    if (trace.entry < 0 || trace.entry >= int(state.graphs.size()))
        return false;
    const model::GraphEntry& entry = state.graphs[std::size_t(trace.entry)];
    const double exactY = trace.exact && entry.formula ? entry.formula->evaluate(trace.x) : qQNaN();
    if (std::isfinite(exactY)) {
        trace.y = exactY;
    } else {
        const std::vector<eval::PointD>& points = entry.points;
        const double tolerance = state.sampleStep / 2;
        const auto at = std::lower_bound(points.begin(), points.end(), trace.x - tolerance,
                                         [](const eval::PointD& p, double x) { return p.x < x; });
        if (at == points.end())
            return false;
        trace.x = at->x;
        trace.y = at->y;
    }
    trace.found = true;
    trace.hasSlope = false;
    if (entry.formula) {
        const eval::CurveSlope slope = eval::SlopeAt(*entry.formula, trace.x, exactDerivative(entry));
        trace.hasSlope = slope.kind == eval::SlopeKind::Finite;
        trace.slope = slope.slope;
    }
    return true;
}

} // namespace curvix::plot
