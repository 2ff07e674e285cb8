// Equivalent forms of a CAS result: the CAS's cheap simplifiers and rewrites of our own.

#include "eval/symbolic_giac.h"

#include <algorithm>
#include <stdexcept>

namespace curvix::eval::cas::detail {

// exp(x)^2 is exp(2x) and 1/exp(x) is exp(-x): the CAS's normal form of exponentials is
// not the one a student writes.
gen foldExponentials(const gen& g, const giac::context* ctx)
{
    return mapBottomUp(g, [&](const gen& node) -> std::optional<gen> {
        if (node.type != giac::_SYMB)
            return std::nullopt;
        giac::vecteur single;
        const giac::vecteur& args = arguments(node, single);
        if (isSymbOf(node, giac::at_pow) && args.size() == 2 && isSymbOf(args[0], giac::at_exp) &&
            isNumber(args[1]))
            return gen(giac::symbolic(giac::at_exp,
                                      giac::ratnormal(args[1] * args[0]._SYMBptr->feuille, ctx)));
        if (isSymbOf(node, giac::at_inv) && args.size() == 1 && isSymbOf(args[0], giac::at_exp))
            return gen(giac::symbolic(giac::at_exp, -args[0]._SYMBptr->feuille));
        return std::nullopt;
    });
}

// exp(u) as cosh(u)+sinh(u), so that a hyperbolic problem gets a hyperbolic answer: the
// CAS integrates sinh(x) to (exp(x)+exp(-x))/2, which this turns into cosh(x).
gen exponentialsAsHyperbolic(const gen& g, const giac::context* ctx)
{
    return mapBottomUp(g, [&](const gen& node) -> std::optional<gen> {
        if (!isSymbOf(node, giac::at_exp))
            return std::nullopt;
        const gen& u = node._SYMBptr->feuille;
        return giac::cosh(u, ctx) + giac::sinh(u, ctx);
    });
}


// Equivalent forms of a result, from the CAS's cheap simplifiers and a few rewrites of our
// own. Giac's full simplify() is left out: it rewrites trigonometric results in tangents of
// half angles and recurses without end on some of them.
std::vector<gen> equivalentForms(const gen& result, bool hyperbolic, Session& s)
{
    const giac::context* ctx = s.ctx();
    std::vector<gen> forms{result};
    auto add = [&](auto make) {
        checkInterrupt();
        try {
            forms.push_back(make());
        } catch (const std::runtime_error&) {
            checkInterrupt(); // a simplifier that fails costs one form, not the answer
        }
    };
    add([&] { return giac::ratnormal(result, ctx); });
    const gen rational = forms.back();
    add([&] { return giac::normal(result, ctx); });
    add([&] { return giac::_factor(rational, ctx); });
    // A quotient with only its denominator factored: (1-x^2)/(x^2+1)^2.
    add([&] {
        const gen den = giac::_denom(rational, ctx);
        if (isNumber(den))
            return rational;
        return giac::_numer(rational, ctx) / giac::_factor(den, ctx);
    });
    if (hasAny(result, {giac::at_sin, giac::at_cos, giac::at_tan})) {
        // sin(x)^2+cos(x)^2 is 1 once either is written in the other.
        add([&] { return giac::ratnormal(giac::_trigcos(result, ctx), ctx); });
        add([&] { return giac::ratnormal(giac::_trigsin(result, ctx), ctx); });
    }
    if (giac::has_op(result, *giac::at_exp)) {
        const std::size_t count = forms.size();
        for (std::size_t i = 0; i < count; ++i) {
            const gen form = forms[i];
            add([&] { return foldExponentials(form, ctx); });
        }
        if (hyperbolic) {
            const std::size_t withFolded = forms.size();
            for (std::size_t i = count; i < withFolded; ++i) {
                const gen folded = forms[i];
                add([&] { return giac::ratnormal(exponentialsAsHyperbolic(folded, ctx), ctx); });
            }
        }
    }
    return forms;
}

// Rewrites tan(u/2) as sin(u)/(1+cos(u)), which has the same domain.
gen withoutHalfAngles(const gen& g, const giac::vecteur& tangents, Session& s)
{
    const giac::context* ctx = s.ctx();
    giac::vecteur replacements;
    for (const gen& t : tangents) {
        const gen angle = giac::ratnormal(gen(2) * t._SYMBptr->feuille, ctx);
        replacements.push_back(giac::sin(angle, ctx) / (gen(1) + giac::cos(angle, ctx)));
    }
    return giac::subst(g, tangents, replacements, false, ctx);
}

} // namespace curvix::eval::cas::detail
