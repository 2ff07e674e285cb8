// Products as the printer sees them: a numeric coefficient, factors over factors; and the
// calls on half angles that the answer avoids.

#include "eval/symbolic_giac.h"

#include <algorithm>

namespace curvix::eval::cas::detail {

// --- products as the printer sees them ----------------------------------------------------

void collectFactors(const gen& g, bool inverted, Product& p);

// x^(1/3)*x is x^(4/3), x/x^3 is 1/x^2: powers of one base with numeric exponents merge.
void mergePowers(Product& p)
{
    std::vector<Factor> all;
    for (Factor& f : p.num)
        all.push_back(std::move(f));
    for (Factor& f : p.den)
        all.push_back({f.base, isNumber(f.exponent) ? gen(-f.exponent) : f.exponent});
    const std::size_t numCount = p.num.size();
    p.num.clear();
    p.den.clear();
    std::vector<Factor> merged;
    std::vector<bool> wasDen;
    for (std::size_t i = 0; i < all.size(); ++i) {
        Factor& f = all[i];
        const bool den = i >= numCount;
        if (isNumber(f.exponent)) {
            const auto same = std::find_if(merged.begin(), merged.end(), [&](const Factor& m) {
                return isNumber(m.exponent) && m.base == f.base;
            });
            if (same != merged.end()) {
                same->exponent = same->exponent + f.exponent;
                continue;
            }
        }
        merged.push_back(std::move(f));
        wasDen.push_back(den);
    }
    for (std::size_t i = 0; i < merged.size(); ++i) {
        Factor& f = merged[i];
        if (isNumber(f.exponent)) {
            if (giac::is_zero(f.exponent))
                continue;
            if (isNegativeNumber(f.exponent))
                p.den.push_back({f.base, gen(-f.exponent)});
            else
                p.num.push_back(std::move(f));
        } else {
            (wasDen[i] ? p.den : p.num).push_back(std::move(f));
        }
    }
}

void collect(const gen& g, bool inverted, Product& p)
{
    collectFactors(g, inverted, p);
    mergePowers(p);
}

void collectFactors(const gen& g, bool inverted, Product& p)
{
    if (isNumber(g)) {
        if (giac::is_zero(g) && inverted)
            throw Unprintable{};
        p.coefficient = inverted ? p.coefficient / g : p.coefficient * g;
        return;
    }
    if (g.type == giac::_SYMB) {
        giac::vecteur single;
        const giac::vecteur& args = arguments(g, single);
        const giac::symbolic& symb = *g._SYMBptr;
        if (symb.sommet == giac::at_neg && args.size() == 1) {
            p.coefficient = -p.coefficient;
            collectFactors(args[0], inverted, p);
            return;
        }
        if (symb.sommet == giac::at_prod) {
            for (const gen& a : args)
                collectFactors(a, inverted, p);
            return;
        }
        if (symb.sommet == giac::at_inv && args.size() == 1) {
            collectFactors(args[0], !inverted, p);
            return;
        }
        if (symb.sommet == giac::at_division && args.size() == 2) {
            collectFactors(args[0], inverted, p);
            collectFactors(args[1], !inverted, p);
            return;
        }
        if (symb.sommet == giac::at_pow && args.size() == 2) {
            if (!isNumber(args[1])) {
                (inverted ? p.den : p.num).push_back({args[0], args[1]});
                return;
            }
            if (giac::is_zero(args[1]))
                return;
            // (x^(1/2))^-1 is x^(-1/2): an integer power of a power multiplies exponents.
            if (args[1].type == giac::_INT_ && isSymbOf(args[0], giac::at_pow)) {
                giac::vecteur inner;
                const giac::vecteur& baseArgs = arguments(args[0], inner);
                if (baseArgs.size() == 2 && isNumber(baseArgs[1])) {
                    collectFactors(giac::symbolic(giac::at_pow,
                                                  giac::makesequence(baseArgs[0],
                                                                     baseArgs[1] * args[1])),
                                   inverted, p);
                    return;
                }
            }
            const bool negative = isNegativeNumber(args[1]);
            const gen exponent = negative ? -args[1] : args[1];
            (negative != inverted ? p.den : p.num).push_back({args[0], exponent});
            return;
        }
    }
    (inverted ? p.den : p.num).push_back({g, gen(1)});
}

// The calls of f in g on half an angle: f(u) where u has an even denominator, as Giac's
// integrator writes tan(x/2).
void halfAngleCalls(const gen& g, const giac::unary_function_ptr* f, giac::vecteur& found)
{
    if (g.type == giac::_VECT) {
        for (const gen& e : *g._VECTptr)
            halfAngleCalls(e, f, found);
        return;
    }
    if (g.type != giac::_SYMB)
        return;
    if (isSymbOf(g, f)) {
        Product p;
        try {
            collect(g._SYMBptr->feuille, false, p);
        } catch (const Unprintable&) {
            return;
        }
        const gen den = p.coefficient.type == giac::_FRAC ? p.coefficient._FRACptr->den : gen(1);
        if (den.type == giac::_INT_ && den.val % 2 == 0) {
            if (std::find(found.begin(), found.end(), g) == found.end())
                found.push_back(g);
        }
    }
    halfAngleCalls(g._SYMBptr->feuille, f, found);
}

bool hasHalfAngles(const gen& g)
{
    giac::vecteur found;
    for (const giac::unary_function_ptr* f : {giac::at_sin, giac::at_cos, giac::at_tan})
        halfAngleCalls(g, f, found);
    return !found.empty();
}

} // namespace curvix::eval::cas::detail
