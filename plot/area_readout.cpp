#include "plot/area.h"

#include "eval/formula.h"

#include <QCoreApplication>

#include <cmath>

// What the program makes of the areas' values: the texts, the dialog's default bounds and
// the state's read-outs.
namespace curvix::plot {

namespace {

using Kind = AreaValue::Kind;

// Cells of the scan for the domain's edges.
constexpr int kScanCells = 2048;

QString intervalText(double a, double b, const QLocale& locale)
{
    // A decimal comma would make "[0,5, 1]" ambiguous.
    const QString separator =
        locale.decimalPoint() == QLatin1String(",") ? QStringLiteral("; ") : QStringLiteral(", ");
    return QStringLiteral("[%1%2%3]").arg(eval::readoutNumber(a, locale), separator,
                                          eval::readoutNumber(b, locale));
}

} // namespace

QString areaMessage(const AreaValue& value, double a, double b, const QLocale& locale)
{
    switch (value.kind) {
    case Kind::Finite:
        return {};
    case Kind::Divergent:
        return QCoreApplication::translate("Area", "The integral diverges on %1.")
            .arg(intervalText(a, b, locale));
    case Kind::Undefined:
        break;
    }
    return QCoreApplication::translate("Area", "The function is not defined on the whole "
                                               "interval %1.")
        .arg(intervalText(a, b, locale));
}

std::pair<double, double> defaultAreaBounds(const eval::CompiledFormula& f,
                                            const model::ViewWindow& view)
{
    const double lo = view.XMin, hi = view.XMax, span = hi - lo;
    auto at = [&](int i) { return i == kScanCells ? hi : lo + i * span / kScanCells; };
    auto defined = [&](double x) { return !std::isnan(f.evaluate(x)); };
    int first = -1, last = -1;
    for (int i = 0; i <= kScanCells; ++i) {
        if (defined(at(i))) {
            first = first < 0 ? i : first;
            last = i;
        }
    }
    if (first < 0)
        return {lo, hi};
    // The domain's edge between an undefined and a defined scan point, rounded so that
    // sqrt(x) starts at 0 and not at 1e-17.
    auto edge = [&](double out, double in) {
        for (int i = 0; i < 200; ++i) {
            const double mid = 0.5 * (out + in);
            if (mid == out || mid == in)
                break;
            (defined(mid) ? in : out) = mid;
        }
        const double quantum = span * 1e-10;
        const double rounded = std::round(in / quantum) * quantum;
        return defined(rounded) ? rounded : in;
    };
    const double from = first == 0 ? lo : edge(at(first - 1), at(first));
    const double to = last == kScanCells ? hi : edge(at(last + 1), at(last));
    return {from, to};
}

QString areaLabelText(const AreaValue& value, const QLocale& locale)
{
    switch (value.kind) {
    case Kind::Divergent:
        return QCoreApplication::translate("Area", "\u222B diverges");
    case Kind::Undefined:
        return QCoreApplication::translate("Area", "\u222B not defined");
    case Kind::Finite:
        break;
    }
    QString text = QStringLiteral("\u222B = ") + eval::readoutNumber(value.integral, locale);
    // The two differ only where f changes sign.
    if (value.area - std::abs(value.integral) > 1e-9 * value.area)
        text += QCoreApplication::translate("Area", "   area = %1")
                    .arg(eval::readoutNumber(value.area, locale));
    return text;
}

QString areaStatusText(const AreaValue& value, double a, double b, const QLocale& locale)
{
    if (value.kind != Kind::Finite)
        return areaMessage(value, a, b, locale);
    return QCoreApplication::translate("Area", "\u222B from %1 to %2 = %3   area = %4")
        .arg(eval::readoutNumber(a, locale), eval::readoutNumber(b, locale),
             eval::readoutNumber(value.integral, locale), eval::readoutNumber(value.area, locale));
}

void computeAreas(model::AppState& state)
{
    state.areaReadouts.resize(state.areas.size());
    const QString variable =
        state.variable();
    for (std::size_t i = 0; i < state.areas.size(); ++i) {
        const model::AreaRegion& region = state.areas[i];
        model::AreaReadout& readout = state.areaReadouts[i];
        const bool known = region.curve >= 0 && std::size_t(region.curve) < state.graphs.size();
        const model::GraphEntry* entry = known ? &state.graphs[std::size_t(region.curve)] : nullptr;
        QString key = QStringLiteral("%1\n%2\n%3 %4 %5 %6")
                          .arg(entry ? entry->expression : QString(), readout.primitive, variable)
                          .arg(region.a, 0, 'g', 17)
                          .arg(region.b, 0, 'g', 17)
                          .arg(int(state.angleUnit));
        // Only the curve's own parameters move its area: another slider leaves it be.
        for (const eval::Parameter& p : state.parameters)
            if (entry && entry->parameters.contains(p.name))
                key += QStringLiteral(" %1=%2").arg(p.name).arg(p.value, 0, 'g', 17);
        if (key == readout.computedFor)
            continue;
        readout.computedFor = key;
        const auto f = !entry ? nullptr
                       : entry->formula
                           ? entry->formula
                           : eval::CompiledFormula::compile(entry->expression, variable,
                                                            state.angleUnit, nullptr, nullptr,
                                                            state.parameters);
        if (!f) {
            readout.value = AreaValue{};
            readout.value.message = areaMessage(readout.value, region.a, region.b);
            continue;
        }
        const auto primitive =
            readout.primitive.isEmpty()
                ? nullptr
                : eval::CompiledFormula::compile(readout.primitive, variable, state.angleUnit,
                                                 nullptr, nullptr, state.parameters);
        readout.value = integrateArea(*f, region.a, region.b, primitive.get());
    }
}

} // namespace curvix::plot
