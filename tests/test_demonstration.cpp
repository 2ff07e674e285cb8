#include "model/graph_list.h"
#include "model/strings.h"
#include "plot/colors.h"
#include "plot/coordinates.h"
#include "plot/demonstration.h"
#include "plot/render.h"
#include "scripted_prompter.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace curvix;
using model::ViewWindow;

namespace {

constexpr quint32 kGreen = 0x0000FF00; // the demonstration, unlike the list's curve

struct Drawing {
    model::AppState state;
    ScriptedPrompter prompter;

    explicit Drawing(const QString& formula)
    {
        plot::InitPlotDefaults(state);
        state.view = ViewWindow{-5, 5, 1, 1, -5, 5, 1, 1};
        model::SymbolicLinkCheck links{{}};
        model::addFunction(state, prompter, links, formula, QStringLiteral("f(x)"));
        state.functionColor = kGreen;
    }
    bool start(const plot::DemoPlan& plan, bool fromList, bool withDerivative = true, int entry = 0)
    {
        return plot::startDemonstration(state, entry, plan.xs, fromList, withDerivative,
                                        [this](const QString& m) { prompter.messages << m; });
    }
};

// The true derivative from its formula text, in x.
double valueOf(const QString& formula, double x)
{
    eval::ExpressionEvaluator evaluator;
    const QString prepared = eval::PrepareExpressionText(evaluator, formula, "f(x)", {});
    return eval::CompiledFormula::compile(prepared, QStringLiteral("x"))->evaluate(x);
}

} // namespace

class TestDemonstration : public QObject {
    Q_OBJECT

private slots:
    void plan_data();
    void plan();
    void walkFollowsTheDerivative_data();
    void walkFollowsTheDerivative();
    void theDerivativeBecomesAnItemOfItsSource();
    void startRefusesWithoutAFunction();
};

void TestDemonstration::plan_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("step");
    QTest::addColumn<QList<double>>("list");
    QTest::addColumn<int>("count");   // of x values; 0 with a problem
    QTest::addColumn<int>("problem"); // string number, 0 for none
    QTest::newRow("step divides the range") << 0.0 << 1.0 << 0.1 << QList<double>{} << 11 << 0;
    QTest::newRow("last step shorter") << -1.0 << 1.0 << 0.3 << QList<double>{} << 7 << 0;
    QTest::newRow("list wins over a bad range") << 2.0 << 2.0 << 0.0 << QList<double>{3, -1} << 2 << 0;
    QTest::newRow("from equals to") << 2.0 << 2.0 << 0.5 << QList<double>{} << 0 << 4021;
    QTest::newRow("zero step") << 0.0 << 1.0 << 0.0 << QList<double>{} << 0 << 4022;
    QTest::newRow("too many steps") << 0.0 << 1.0 << 1e-5 << QList<double>{} << 0 << 4023;
}

void TestDemonstration::plan()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, step);
    QFETCH(QList<double>, list);
    QFETCH(int, count);
    QFETCH(int, problem);
    const plot::DemoPlan plan =
        plot::planDemonstration(from, to, step, std::vector<double>(list.begin(), list.end()));
    QCOMPARE(int(plan.xs.size()), count);
    QCOMPARE(plan.problem.isEmpty(), problem == 0);
    if (problem)
        QVERIFY(plan.problem.startsWith(model::LoadResString(problem).left(10)));
    if (!list.isEmpty())
        QCOMPARE(QList<double>(plan.xs.begin(), plan.xs.end()), list);
    else if (count)
        QCOMPARE(plan.xs.back(), from + (count - 1) * step); // the last whole step
}

void TestDemonstration::walkFollowsTheDerivative_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QString>("derivative");
    QTest::addColumn<QList<double>>("list"); // empty: from -2 to 2 in steps of 0.5
    QTest::newRow("cubic") << "x^3-2x" << "3x^2-2" << QList<double>{};
    QTest::newRow("sine") << "sin(x)" << "cos(x)" << QList<double>{};
    QTest::newRow("exponential, listed") << "exp(x/2)" << "exp(x/2)/2" << QList<double>{1.5, -2, 0};
    QTest::newRow("root, listed") << "sqrt(x)" << "1/(2sqrt(x))" << QList<double>{0.5, 3, -1};
}

void TestDemonstration::walkFollowsTheDerivative()
{
    QFETCH(QString, formula);
    QFETCH(QString, derivative);
    QFETCH(QList<double>, list);
    Drawing d(formula);
    const plot::DemoPlan plan =
        plot::planDemonstration(-2, 2, 0.5, std::vector<double>(list.begin(), list.end()));
    QVERIFY(d.start(plan, !list.isEmpty()));
    const model::Demonstration& demo = d.state.demonstration;

    // A slope by central difference: a one-sided one would be off by about h·f''/2.
    const auto close = [&](double slope, double x) {
        const double truth = valueOf(derivative, x);
        return std::isfinite(truth) ? std::abs(slope - truth) < 1e-7 : !std::isfinite(slope);
    };
    for (std::size_t i = 0; i < plan.xs.size(); ++i) {
        const plot::DemoStepResult step = plot::demonstrationStep(d.state);
        QVERIFY(step.stepped);
        QCOMPARE(step.x, plan.xs[i]);
        QCOMPARE(step.finished, i + 1 == plan.xs.size());
        QVERIFY2(close(step.slope, step.x), qPrintable(QString::number(step.x)));
        QVERIFY(demo.tangent && demo.tangent->x == step.x);
    }
    QVERIFY(!plot::demonstrationStep(d.state).stepped); // the walk is over
    QVERIFY(demo.running && !demo.curve.empty());

    // Every point of the derivative's graph is true; along a range the graph has no gaps,
    // a listed x gets only a short piece around it.
    QVERIFY(!demo.derivative.empty());
    const double pieceHalf = 5 * 10.0 / 1000 + 1e-9;
    for (const eval::PointD& p : demo.derivative) {
        QVERIFY2(close(p.y, p.x), qPrintable(QString::number(p.x)));
        if (!list.isEmpty())
            QVERIFY(std::any_of(list.begin(), list.end(), [&](double x) { return std::abs(p.x - x) <= pieceHalf; }));
    }
    if (list.isEmpty()) {
        auto xs = demo.derivative;
        std::sort(xs.begin(), xs.end(), [](auto a, auto b) { return a.x < b.x; });
        // The first x gets a piece of its own, the rest grow from the last x.
        QVERIFY(std::abs(xs.front().x - (-2 - pieceHalf)) < 1e-3);
        QCOMPARE(xs.back().x, 2.0);
        for (std::size_t i = 1; i < xs.size(); ++i)
            QVERIFY(xs[i].x - xs[i - 1].x <= 10.0 / 7000 * 1.01);
    }
    QCOMPARE(d.state.graphs.size(), std::size_t(1)); // the walk itself adds no entry
}

void TestDemonstration::theDerivativeBecomesAnItemOfItsSource()
{
    Drawing d(QStringLiteral("x^3-2x"));
    QVERIFY(d.start(plot::planDemonstration(-2, 2, 1, {}), false));
    plot::demonstrationStep(d.state);
    // Start after a pause goes on with this function's walk; at its end it begins anew.
    QVERIFY(plot::resumesDemonstration(d.state, QStringLiteral("x^3-2x")));
    QVERIFY(!plot::resumesDemonstration(d.state, QStringLiteral("x^2")));
    const std::vector<eval::PointD> curve = d.state.demonstration.curve;
    while (plot::demonstrationStep(d.state).stepped) {
    }
    QVERIFY(!plot::resumesDemonstration(d.state, QStringLiteral("x^3-2x")));
    // A redraw of another view resamples the list, never the demonstrated curve.
    QImage picture(500, 500, QImage::Format_ARGB32_Premultiplied);
    d.state.view = ViewWindow{-3, 3, 1, 1, -3, 3, 1, 1};
    plot::redraw(d.state, picture, {});
    QCOMPARE(d.state.demonstration.curve.front().x, curve.front().x);

    struct : model::LinkCheck {
        bool isDerivativeOf(const QString&, const QString&, const QString&) override { return true; }
        bool isPrimitiveOf(const QString&, const QString&, const QString&) override { return false; }
    } links;
    QCOMPARE(plot::keepDerivative(d.state, d.prompter, links, QStringLiteral("x^3-2x"), QStringLiteral("3x^2-2")),
             model::AddResult::Added);
    QVERIFY(d.state.demonstration.derivative.empty());
    QCOMPARE(model::derivativeOf(d.state, 0), 1);
    QCOMPARE(d.state.functionItems[1], (model::FunctionItem{QStringLiteral("3x^2-2"), 1}));
    plot::stopDemonstration(d.state);
    QVERIFY(!d.state.demonstration.running && d.state.demonstration.curve.empty());

    // A colour of its own: the derivative at x = 1 is 1, the curve -1.
    plot::redraw(d.state, picture, {});
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(picture.size()), d.state.view);
    auto colorNear = [&](double x, double y, quint32 color) {
        const QPoint at = scale.toPixel(x, y).toPoint();
        for (int dy = -2; dy <= 2; ++dy)
            for (int dx = -2; dx <= 2; ++dx)
                if (picture.pixelColor(at + QPoint(dx, dy)) == plot::colorFromValue(color))
                    return true;
        return false;
    };
    const quint32 fColor = d.state.graphs[0].color;
    QVERIFY(d.state.graphs[1].color != fColor);
    QVERIFY(colorNear(1, 1, d.state.graphs[1].color) && colorNear(1, -1, fColor));
    // It goes with its source.
    QVERIFY(model::deleteFunctionItem(d.state, 1));
    QVERIFY(plot::dropOrphanedDerivatives(d.state));
    QVERIFY(d.state.graphs.empty() && d.state.functionItems.empty());
}

void TestDemonstration::startRefusesWithoutAFunction()
{
    Drawing d(QStringLiteral("x^2"));
    const plot::DemoPlan plan = plot::planDemonstration(0, 1, 0.5, {});
    QVERIFY(d.start(plan, false));
    plot::demonstrationStep(d.state);
    const std::size_t derivative = d.state.demonstration.derivative.size();
    QVERIFY(!d.start(plan, false, true, -1));
    QVERIFY(!d.start(plan, false, true, 1));
    QCOMPARE(d.prompter.messages.size(), 2);
    // A refused start leaves the running demonstration as it was.
    QVERIFY(d.state.demonstration.running);
    QCOMPARE(d.state.demonstration.derivative.size(), derivative);
    // Without the derivative nothing grows.
    QVERIFY(d.start(plan, false, false));
    QVERIFY(plot::demonstrationStep(d.state).stepped);
    QVERIFY(d.state.demonstration.derivative.empty());
}

QTEST_MAIN(TestDemonstration)
#include "test_demonstration.moc"
