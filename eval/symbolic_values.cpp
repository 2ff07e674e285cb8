// Giac's results as numbers: their values at the sample points, with the problem's
// parameters at one set of values at a time.

#include "eval/symbolic_giac.h"

#include <cmath>
#include <string>

namespace curvix::eval::cas::detail {

// --- the parameters ------------------------------------------------------------------------

void Session::setParameters(const QStringList& names)
{
    parameterNames = names;
    parameters.clear();
    for (const QString& name : names) {
        // Apart from x and the CAS's own names: a parameter may be called x when the
        // variable is t.
        parameters.push_back(giac::identificateur("curvix_p_" + name.toStdString()));
    }
    useParameterSet(0);
}

void Session::useParameterSet(std::size_t set)
{
    parameterValues.resize(parameters.size());
    for (std::size_t i = 0; i < parameters.size(); ++i)
        parameterValues[i] = parameterValue(set, i);
}

int Session::parameterIndex(const gen& g) const
{
    if (g.type != giac::_IDNT)
        return -1;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (g == parameters[i])
            return int(i);
    }
    return -1;
}

// --- Giac -> numbers ----------------------------------------------------------------------

// The value of a result at x in doubles, the way our evaluator would compute it; nothing
// when the result holds something our language lacks (a complex unit, erf, ...).
std::optional<double> numericValue(const gen& g, double x, const Session& s)
{
    switch (g.type) {
    case giac::_INT_: return double(g.val);
    case giac::_DOUBLE_: return g._DOUBLE_val;
    case giac::_ZINT: return mpz_get_d(*g._ZINTptr);
    case giac::_FRAC: {
        const auto n = numericValue(g._FRACptr->num, x, s);
        const auto d = numericValue(g._FRACptr->den, x, s);
        if (!n || !d)
            return std::nullopt;
        return *n / *d;
    }
    case giac::_IDNT:
        if (g == s.x)
            return x;
        if (g == giac::cst_pi)
            return M_PI;
        if (const int p = s.parameterIndex(g); p >= 0)
            return s.parameterValues[std::size_t(p)];
        return std::nullopt;
    case giac::_SYMB: break;
    default: return std::nullopt;
    }
    giac::vecteur single;
    const giac::vecteur& args = arguments(g, single);
    std::vector<double> v;
    v.reserve(args.size());
    for (const gen& a : args) {
        const auto value = numericValue(a, x, s);
        if (!value)
            return std::nullopt;
        v.push_back(*value);
    }
    const giac::symbolic& symb = *g._SYMBptr;
    if (symb.sommet == giac::at_plus) {
        double sum = 0;
        for (double d : v)
            sum += d;
        return sum;
    }
    if (symb.sommet == giac::at_prod) {
        double product = 1;
        for (double d : v)
            product *= d;
        return product;
    }
    if (v.size() == 2 && symb.sommet == giac::at_pow)
        return std::pow(v[0], v[1]);
    if (v.size() == 2 && symb.sommet == giac::at_division)
        return v[0] / v[1];
    if (v.size() != 1)
        return std::nullopt;
    if (symb.sommet == giac::at_neg)
        return -v[0];
    if (symb.sommet == giac::at_inv)
        return 1 / v[0];
    if (const auto function = knownFunction(symb))
        return applyFunction(*function, v[0]);
    return std::nullopt;
}

std::optional<std::vector<SampleValues>> sampleValues(const gen& g, Session& s)
{
    std::vector<SampleValues> sets(s.parameterSets());
    for (std::size_t set = 0; set < sets.size(); ++set) {
        s.useParameterSet(set);
        for (std::size_t i = 0; i < kSamplePoints.size(); ++i) {
            const auto value = numericValue(g, kSamplePoints[i], s);
            if (!value) {
                s.useParameterSet(0);
                return std::nullopt;
            }
            sets[set][i] = *value;
        }
    }
    s.useParameterSet(0);
    return sets;
}

} // namespace curvix::eval::cas::detail
