// Rewrites that make a result read as a textbook writes it: common factors taken out of
// sums, and a few identities of products.

#include "eval/symbolic_giac.h"

#include <algorithm>

namespace curvix::eval::cas::detail {

namespace {

// The factors of a term without its numeric coefficient.
giac::vecteur factorsOf(const gen& rest)
{
    giac::vecteur factors;
    if (rest == gen(1))
        return factors;
    if (isSymbOf(rest, giac::at_prod) && rest._SYMBptr->feuille.type == giac::_VECT) {
        for (const gen& f : *rest._SYMBptr->feuille._VECTptr)
            factors.push_back(f);
        return factors;
    }
    factors.push_back(rest);
    return factors;
}

// The factor's base and exponent: sin(u)^-1 is (sin(u), -1), inv(sin(u)) too.
std::pair<gen, gen> powerOf(const gen& f)
{
    if (isSymbOf(f, giac::at_inv)) {
        const auto [base, exponent] = powerOf(f._SYMBptr->feuille);
        return {base, -exponent};
    }
    giac::vecteur single;
    if (isSymbOf(f, giac::at_pow) && arguments(f, single).size() == 2 &&
        arguments(f, single)[1].type == giac::_INT_)
        return {arguments(f, single)[0], arguments(f, single)[1]};
    return {f, gen(1)};
}

// One product identity on the factors of a term, or false.
bool rewriteFactors(giac::vecteur& factors, gen& coefficient, const giac::context* ctx)
{
    for (std::size_t i = 0; i < factors.size(); ++i) {
        const auto [bi, ei] = powerOf(factors[i]);
        for (std::size_t j = 0; j < factors.size(); ++j) {
            if (i == j)
                continue;
            const auto [bj, ej] = powerOf(factors[j]);
            if (isSymbOf(bj, giac::at_sign) && ej == gen(1) && bi == bj._SYMBptr->feuille &&
                ei.type == giac::_INT_ && ei.val >= 1) {
                // u^n*sign(u) is u^(n-1)*abs(u)
                const gen abs = call(giac::at_abs, bi);
                const gen lower = call(giac::at_pow, giac::makesequence(bi, ei - 1));
                factors[i] =
                    ei.val == 1 ? abs : call(giac::at_prod, giac::makesequence(lower, abs));
                factors.erase(factors.begin() + std::ptrdiff_t(j));
                return true;
            }
            // x*x^(x-1) is x^x.
            giac::vecteur sp;
            if (ei.type == giac::_INT_ && isSymbOf(bj, giac::at_pow) && ej == gen(1) &&
                arguments(bj, sp).size() == 2 && arguments(bj, sp)[0] == bi &&
                !isNumber(arguments(bj, sp)[1])) {
                const gen exponent = giac::ratnormal(arguments(bj, sp)[1] + ei, ctx);
                factors[i] = call(giac::at_pow, giac::makesequence(bi, exponent));
                factors.erase(factors.begin() + std::ptrdiff_t(j));
                return true;
            }
            if (bi.type != giac::_SYMB || bj.type != giac::_SYMB)
                continue;
            // sqrt(a)*sqrt(b) is sqrt(ab) wherever both are defined.
            if (i < j && isSymbOf(bi, giac::at_pow) && isSymbOf(bj, giac::at_pow) && ei == gen(1) &&
                ej == gen(1)) {
                giac::vecteur si, sj;
                const giac::vecteur& ai = arguments(bi, si);
                const giac::vecteur& aj = arguments(bj, sj);
                if (ai.size() == 2 && aj.size() == 2 && ai[1] == gen(1) / gen(2) &&
                    aj[1] == ai[1]) {
                    const gen product = giac::ratnormal(ai[0] * aj[0], ctx);
                    factors[i] = call(giac::at_pow, giac::makesequence(product, ai[1]));
                    factors.erase(factors.begin() + std::ptrdiff_t(j));
                    return true;
                }
            }
            const gen& u = bi._SYMBptr->feuille;
            const bool sameArgument = bj._SYMBptr->feuille == u;
            gen replacement;
            if (sameArgument && ei == gen(1) && ej == gen(-1) && isSymbOf(bi, giac::at_sin) &&
                isSymbOf(bj, giac::at_cos)) {
                replacement = call(giac::at_tan, u); // sin/cos
            } else if (sameArgument && ei == gen(1) && ej == gen(-1) &&
                       isSymbOf(bi, giac::at_cos) && isSymbOf(bj, giac::at_sin)) {
                replacement = call(giac::at_inv, call(giac::at_tan, u)); // cos/sin
            } else if (sameArgument && ei == gen(1) && ej == gen(1) && i < j &&
                       ((isSymbOf(bi, giac::at_sinh) && isSymbOf(bj, giac::at_cosh)) ||
                        (isSymbOf(bi, giac::at_sin) && isSymbOf(bj, giac::at_cos)))) {
                const auto* doubled = isSymbOf(bi, giac::at_sinh) ? giac::at_sinh : giac::at_sin;
                replacement = call(doubled, giac::ratnormal(gen(2) * u, ctx));
                coefficient = coefficient / gen(2);
            } else {
                continue;
            }
            factors[i] = replacement;
            factors.erase(factors.begin() + std::ptrdiff_t(j));
            return true;
        }
    }
    return false;
}

// exp(x*ln(2)) as 2^x and exp(ln(x)+x) as x*exp(x): powers that the CAS writes through
// exponentials; nothing when the exponent holds no logarithm to take out.
std::optional<gen> exponentialAsPowers(const gen& node)
{
    const gen& exponent = node._SYMBptr->feuille;
    giac::vecteur single;
    const giac::vecteur terms =
        isSymbOf(exponent, giac::at_plus) ? arguments(exponent, single) : giac::vecteur(1, exponent);
    giac::vecteur factors;
    giac::vecteur rest;
    for (const gen& t : terms) {
        const auto [c, r] = splitCoefficient(t);
        giac::vecteur parts = factorsOf(r);
        const auto ln = std::find_if(parts.begin(), parts.end(),
                                     [](const gen& f) { return isSymbOf(f, giac::at_ln); });
        // exp(k*ln(v)) is v^k wherever ln(v) is defined.
        if (ln == parts.end()) {
            rest.push_back(t);
            continue;
        }
        const gen base = ln->_SYMBptr->feuille;
        parts.erase(ln);
        factors.push_back(call(giac::at_pow, giac::makesequence(base, c * productOf(parts))));
    }
    if (factors.empty())
        return std::nullopt;
    if (!rest.empty())
        factors.push_back(call(giac::at_exp, sumOf(rest)));
    return productOf(factors);
}

} // namespace

std::vector<gen> commonFactorsOut(const gen& g, const Session& s)
{
    const giac::context* ctx = s.ctx();
    if (!isSymbOf(g, giac::at_plus))
        return {};
    giac::vecteur single;
    const giac::vecteur terms = arguments(g, single);
    // The candidates: factors that depend on the variable and are no polynomial.
    giac::vecteur candidates;
    for (const gen& t : terms) {
        for (const gen& f : factorsOf(splitCoefficient(t).second)) {
            if (dependsOn(f, s.x) && f.type == giac::_SYMB && !isSymbOf(f, giac::at_plus) &&
                std::find(candidates.begin(), candidates.end(), f) == candidates.end())
                candidates.push_back(f);
        }
    }
    std::vector<gen> forms;
    for (const gen& common : candidates) {
        if (forms.size() >= 6)
            break;
        giac::vecteur cofactors;
        giac::vecteur others;
        for (const gen& t : terms) {
            const auto [c, rest] = splitCoefficient(t);
            giac::vecteur factors = factorsOf(rest);
            const auto at = std::find(factors.begin(), factors.end(), common);
            if (at == factors.end()) {
                others.push_back(t);
                continue;
            }
            factors.erase(at);
            cofactors.push_back(c * productOf(factors));
        }
        if (cofactors.size() < 2)
            continue;
        // The cofactor as it comes ((ln(x)+1/x)exp(x)) and over one denominator.
        for (const gen& collected : {sumOf(cofactors), giac::ratnormal(sumOf(cofactors), ctx)}) {
            giac::vecteur all = others;
            all.push_back(call(giac::at_prod, giac::makesequence(collected, common)));
            forms.push_back(sumOf(all));
        }
    }
    return forms;
}

gen withIdentities(const gen& g, const Session& s)
{
    const giac::context* ctx = s.ctx();
    return mapBottomUp(g, [&](const gen& node) -> std::optional<gen> {
        if (isSymbOf(node, giac::at_prod)) {
            auto [coefficient, rest] = splitCoefficient(node);
            giac::vecteur factors = factorsOf(rest);
            bool changed = false;
            while (rewriteFactors(factors, coefficient, ctx))
                changed = true;
            if (!changed)
                return std::nullopt;
            giac::vecteur all(1, coefficient);
            for (const gen& f : factors)
                all.push_back(f);
            return productOf(all);
        }
        if (isSymbOf(node, giac::at_exp))
            return exponentialAsPowers(node);
        // The arguments of functions in normal form: ln((2x)^2+1) as ln(4x^2+1).
        if (node.type == giac::_SYMB && knownFunction(*node._SYMBptr) &&
            isSymbOf(node._SYMBptr->feuille, giac::at_plus))
            return gen(giac::symbolic(node._SYMBptr->sommet,
                                      giac::ratnormal(node._SYMBptr->feuille, ctx)));
        return std::nullopt;
    });
}

gen inAngleUnit(const gen& g, const Session& s)
{
    if (s.angle == gen(1))
        return g;
    const giac::context* ctx = s.ctx();
    return mapBottomUp(g, [&](const gen& node) -> std::optional<gen> {
        for (const giac::unary_function_ptr* f : {giac::at_sin, giac::at_cos, giac::at_tan}) {
            if (isSymbOf(node, f))
                return call(f, giac::ratnormal(node._SYMBptr->feuille / s.angle, ctx));
        }
        for (const giac::unary_function_ptr* f : {giac::at_asin, giac::at_acos, giac::at_atan}) {
            if (isSymbOf(node, f))
                return call(giac::at_prod, giac::makesequence(s.angle, node));
        }
        return std::nullopt;
    });
}

} // namespace curvix::eval::cas::detail
