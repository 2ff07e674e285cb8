// The cheap routes to a primitive, tried before the CAS's integrator: the table of
// trigonometric integrals a textbook gives (with 1/cos, 1/sin and 1/tan as they are
// written, where the integrator would go through tangents of half angles), integration by
// parts against a polynomial, and the substitutions a student makes (u = ln(x),
// u = a+b*x^(1/n)). Every result is checked by differentiating it.

#include "eval/symbolic_giac.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

namespace curvix::eval::cas::detail {

namespace {

// A product split the way the table reads it: constant * polynomial * sin(u)^m * cos(u)^n,
// with one argument u for every trigonometric factor.
struct TrigProduct {
    gen constant = 1;
    gen polynomial = 1;
    gen angle;
    int sinPower = 0;
    int cosPower = 0;
    bool hyperbolic = false; // sinh, cosh and tanh instead
    bool ok = true;
};

bool isPolynomialIn(const gen& g, const gen& x)
{
    if (g == x || !dependsOn(g, x))
        return true;
    if (isSymbOf(g, giac::at_plus) || isSymbOf(g, giac::at_prod) || isSymbOf(g, giac::at_neg)) {
        giac::vecteur single;
        const giac::vecteur& args = arguments(g, single);
        return std::all_of(args.begin(), args.end(),
                           [&](const gen& a) { return isPolynomialIn(a, x); });
    }
    if (isSymbOf(g, giac::at_pow)) {
        giac::vecteur single;
        const giac::vecteur& args = arguments(g, single);
        return args.size() == 2 && args[1].type == giac::_INT_ && args[1].val > 0 &&
               isPolynomialIn(args[0], x);
    }
    return false;
}

void gather(const gen& g, int power, TrigProduct& p, const Session& s)
{
    if (!p.ok)
        return;
    if (!dependsOn(g, s.x)) {
        p.constant = p.constant * giac::pow(g, gen(power), s.ctx());
        return;
    }
    giac::vecteur single;
    if (isSymbOf(g, giac::at_prod)) {
        for (const gen& a : arguments(g, single))
            gather(a, power, p, s);
        return;
    }
    if (isSymbOf(g, giac::at_neg)) {
        p.constant = -p.constant;
        gather(g._SYMBptr->feuille, power, p, s);
        return;
    }
    if (isSymbOf(g, giac::at_inv)) {
        gather(g._SYMBptr->feuille, -power, p, s);
        return;
    }
    if (isSymbOf(g, giac::at_pow)) {
        const giac::vecteur& args = arguments(g, single);
        if (args.size() == 2 && args[1].type == giac::_INT_ && !isPolynomialIn(g, s.x)) {
            gather(args[0], power * args[1].val, p, s);
            return;
        }
    }
    const bool circular = isSymbOf(g, giac::at_sin) || isSymbOf(g, giac::at_cos) ||
                          isSymbOf(g, giac::at_tan);
    const bool hyperbolic = isSymbOf(g, giac::at_sinh) || isSymbOf(g, giac::at_cosh) ||
                            isSymbOf(g, giac::at_tanh);
    if (circular || hyperbolic) {
        const gen& u = g._SYMBptr->feuille;
        if (!is_undef(p.angle) && (p.angle != u || p.hyperbolic != hyperbolic)) {
            p.ok = false;
            return;
        }
        p.angle = u;
        p.hyperbolic = hyperbolic;
        if (isSymbOf(g, giac::at_sin) || isSymbOf(g, giac::at_sinh)) {
            p.sinPower += power;
        } else if (isSymbOf(g, giac::at_cos) || isSymbOf(g, giac::at_cosh)) {
            p.cosPower += power;
        } else {
            p.sinPower += power;
            p.cosPower -= power;
        }
        return;
    }
    if (power > 0 && isPolynomialIn(g, s.x)) {
        p.polynomial = p.polynomial * giac::pow(g, gen(power), s.ctx());
        return;
    }
    p.ok = false;
}

// The table: the primitive of sin(u)^m*cos(u)^n over u, in the functions a textbook uses;
// nothing where the integrator's own answer is as good.
std::optional<gen> trigIntegral(int m, int n, const gen& u, const giac::context* ctx)
{
    const gen sin = call(giac::at_sin, u);
    const gen cos = call(giac::at_cos, u);
    const gen tan = call(giac::at_tan, u);
    const gen secant = call(giac::at_inv, cos);
    const gen cotangent = call(giac::at_inv, tan);
    const gen lnSecTan = call(giac::at_ln, call(giac::at_abs, secant + tan));
    const gen lnCscCot = call(giac::at_ln, call(giac::at_abs, call(giac::at_inv, sin) + cotangent));
    const auto pow = [&](const gen& b, int e) {
        return call(giac::at_pow, giac::makesequence(b, e));
    };
    const gen half = gen(1) / gen(2);
    // sin and cos alone and sin^m*cos^n with an odd positive power are left to the
    // integrator, which writes them well.
    static const std::map<std::pair<int, int>, int> index{
        {{0, -1}, 2},
        {{-1, 0}, 3},
        {{1, -1}, 4},
        {{-1, 1}, 5},
        {{0, -2}, 6},
        {{-2, 0}, 7},
        {{1, -2}, 8},
        {{-2, 1}, 9},
        {{2, -2}, 10},
        {{-2, 2}, 11},
        {{1, -3}, 12},
        {{-3, 1}, 13},
        {{3, -3}, 14},
        {{-3, 3}, 15},
        {{0, -3}, 16},
        {{-1, -1}, 17},
        {{0, -4}, 18},
        {{2, -4}, 19},
        {{2, -1}, 20},
        {{-1, 2}, 21},
    };
    const auto found = index.find({m, n});
    if (found == index.end())
        return std::nullopt;
    switch (found->second) {
    case 2: return lnSecTan;
    case 3: return -lnCscCot;
    case 4: return -call(giac::at_ln, call(giac::at_abs, cos));
    case 5: return call(giac::at_ln, call(giac::at_abs, sin));
    case 6: return tan;
    case 7: return -cotangent;
    case 8: return secant;
    case 9: return -call(giac::at_inv, sin);
    case 10: return tan - u;
    case 11: return -cotangent - u;
    case 12: return half * pow(tan, 2);
    case 13: return -half * call(giac::at_inv, pow(tan, 2));
    case 14: return half * pow(tan, 2) + call(giac::at_ln, call(giac::at_abs, cos));
    case 15:
        return -half * call(giac::at_inv, pow(tan, 2)) - call(giac::at_ln, call(giac::at_abs, sin));
    case 16: return half * (tan * secant + lnSecTan);
    case 17: return call(giac::at_ln, call(giac::at_abs, tan));
    case 18: return tan + pow(tan, 3) / gen(3);
    case 19: return pow(tan, 3) / gen(3);
    case 20: return lnSecTan - sin;
    case 21: return cos - lnCscCot;
    }
    (void)ctx;
    return std::nullopt;
}

// The same for sinh(u)^m*cosh(u)^n, where the integrator answers in exponentials.
std::optional<gen> hyperbolicIntegral(int m, int n, const gen& u, const giac::context* ctx)
{
    const gen sinh = call(giac::at_sinh, u);
    const gen cosh = call(giac::at_cosh, u);
    const gen tanh = call(giac::at_tanh, u);
    const gen twice = call(giac::at_sinh, giac::ratnormal(gen(2) * u, ctx)) / gen(4);
    const gen half = u / gen(2);
    if (m == 1 && n == 0)
        return cosh;
    if (m == 0 && n == 1)
        return sinh;
    if (m == 1 && n == -1)
        return call(giac::at_ln, cosh);
    if (m == -1 && n == 1)
        return call(giac::at_ln, call(giac::at_abs, sinh));
    if (m == 0 && n == -2)
        return tanh;
    if (m == 2 && n == -2)
        return u - tanh;
    if (m == 0 && n == 2)
        return half + twice;
    if (m == 2 && n == 0)
        return twice - half;
    if (m == 1 && n == 1)
        return call(giac::at_pow, giac::makesequence(sinh, 2)) / gen(2);
    return std::nullopt;
}

std::optional<gen> byTable(const gen& f, Session& s, int depth);

// constant * P(x) * T(u) with u = a*x+b: the table for T, and by parts when P is not
// constant: the integral of P*T is P*V minus the integral of P'*V, V the table's answer.
std::optional<gen> byTable(const gen& f, Session& s, int depth)
{
    checkInterrupt();
    const giac::context* ctx = s.ctx();
    if (depth > 6)
        return std::nullopt;
    TrigProduct p;
    p.angle = giac::undef;
    gather(f, 1, p, s);
    if (!p.ok || is_undef(p.angle))
        return std::nullopt;
    const gen slope = giac::derive(p.angle, s.x, ctx);
    if (dependsOn(slope, s.x) || giac::is_zero(slope))
        return std::nullopt;
    const std::optional<gen> table =
        p.hyperbolic ? hyperbolicIntegral(p.sinPower, p.cosPower, p.angle, ctx)
                     : trigIntegral(p.sinPower, p.cosPower, p.angle, ctx);
    if (!table)
        return std::nullopt;
    const gen v = *table / slope;
    if (!dependsOn(p.polynomial, s.x))
        return p.constant * p.polynomial * v;
    const gen rest = giac::ratnormal(giac::derive(p.polynomial, s.x, ctx), ctx) * v;
    const std::optional<gen> restPrimitive = byTable(rest, s, depth + 1);
    if (!restPrimitive)
        return std::nullopt;
    return p.constant * (p.polynomial * v - *restPrimitive);
}

// c/(a+b*sin(u)) with a = ±b: -(b/a)cos(u)/(a+b*sin(u)) over u', defined wherever the
// integrand is (the integrator goes through tan(u/2) and leaves its traces).
std::optional<gen> byHalfAngleQuotient(const gen& f, Session& s, int)
{
    const giac::context* ctx = s.ctx();
    const auto [c, rest] = splitCoefficient(f);
    gen sum;
    if (isSymbOf(rest, giac::at_inv)) {
        sum = rest._SYMBptr->feuille;
    } else {
        giac::vecteur single;
        const giac::vecteur& args = isSymbOf(rest, giac::at_pow) ? arguments(rest, single) : single;
        if (args.size() != 2 || args[1] != gen(-1))
            return std::nullopt;
        sum = args[0];
    }
    giac::vecteur single;
    const giac::vecteur& terms = isSymbOf(sum, giac::at_plus) ? arguments(sum, single) : single;
    if (terms.size() != 2 || !isNumber(terms[0]))
        return std::nullopt;
    const gen& a = terms[0];
    const auto [b, trig] = splitCoefficient(terms[1]);
    if (!isSymbOf(trig, giac::at_sin) && !isSymbOf(trig, giac::at_cos))
        return std::nullopt;
    const gen& u = trig._SYMBptr->feuille;
    const gen slope = giac::derive(u, s.x, ctx);
    if (dependsOn(slope, s.x) || giac::is_zero(slope) || giac::is_zero(a))
        return std::nullopt;
    if (!isNegativeNumber(a) && giac::is_strictly_greater(a * a, b * b, ctx)) {
        // c/(a+b*cos(u)) with a > |b|: (u-2atan(b*sin(u)/(a+k+b*cos(u))))/k, k = sqrt(a^2-b^2),
        // continuous where the textbook's atan(tan(u/2)...) jumps; with sin, u-pi/2 for u:
        // (u+2atan(b*cos(u)/(a+k+b*sin(u))))/k.
        const bool cosine = isSymbOf(trig, giac::at_cos);
        const gen k = giac::sqrt(a * a - b * b, ctx);
        const gen other = call(cosine ? giac::at_sin : giac::at_cos, u);
        const gen angle = b * other * call(giac::at_inv, a + k + b * trig);
        return c / (k * slope) * (u + gen(cosine ? -2 : 2) * call(giac::at_atan, angle));
    }
    if (isSymbOf(trig, giac::at_cos))
        return std::nullopt;
    if (!(a == b || a == -b))
        return std::nullopt;
    return -c * (b / a) / slope * call(giac::at_cos, u) * call(giac::at_inv, sum);
}

// --- substitution ----------------------------------------------------------------------------

// u = g(v) with v as a function of u, for ln(a*v+b), c+d*v^(1/n) and (a*v+b)^(1/n).
std::optional<gen> inverse(const gen& g, const gen& v, const gen& u, const Session& s)
{
    const giac::context* ctx = s.ctx();
    const auto linear = [&](const gen& l) {
        const gen slope = giac::derive(l, v, ctx);
        return !dependsOn(slope, v) && !giac::is_zero(slope);
    };
    const auto valueAt0 = [&](const gen& e) { return giac::subst(e, v, gen(0), false, ctx); };
    if (isSymbOf(g, giac::at_ln)) {
        const gen& l = g._SYMBptr->feuille;
        if (!linear(l))
            return std::nullopt;
        return (giac::exp(u, ctx) - valueAt0(l)) / giac::derive(l, v, ctx);
    }
    giac::vecteur single;
    const giac::vecteur& args = isSymbOf(g, giac::at_pow) ? arguments(g, single) : single;
    if (args.size() == 2 && args[1].type == giac::_FRAC && args[1]._FRACptr->num == gen(1) &&
        linear(args[0])) {
        const gen n = args[1]._FRACptr->den;
        return (giac::pow(u, n, ctx) - valueAt0(args[0])) / giac::derive(args[0], v, ctx);
    }
    // c + d*v^(1/n): v*g'/(g-c) is the constant 1/n (tried at one point, as the CAS does not
    // always cancel the roots).
    const gen c = valueAt0(g);
    const auto cValue = numericValue(c, 0, s);
    if (!cValue || !std::isfinite(*cValue) || dependsOn(c, v))
        return std::nullopt;
    const gen rest = g - c;
    const gen ratio = giac::derive(rest, v, ctx) * v / rest;
    const auto at = [&](double x) {
        return numericValue(giac::subst(ratio, v, gen(x), false, ctx), 0, s);
    };
    const auto r1 = at(1.7);
    const auto r2 = at(2.9);
    if (!r1 || !r2 || !std::isfinite(*r1) || std::fabs(*r1 - *r2) > 1e-12 || *r1 <= 0)
        return std::nullopt;
    const double n = std::round(1 / *r1);
    if (n < 2 || n > 12 || std::fabs(1 / *r1 - n) > 1e-9)
        return std::nullopt;
    // d is rest at v = 1, exactly.
    const gen d = giac::subst(rest, v, gen(1), false, ctx);
    const auto dValue = numericValue(d, 0, s);
    if (!dValue || !std::isfinite(*dValue) || *dValue == 0 || dependsOn(d, v))
        return std::nullopt;
    return giac::pow((u - c) / d, gen(int(n)), ctx);
}

// The arguments of functions and the bases of roots in f, and the logarithms themselves:
// where a substitution may start.
void substitutionCandidates(const gen& g, const gen& v, giac::vecteur& found)
{
    if (g.type != giac::_SYMB)
        return;
    giac::vecteur single;
    for (const gen& a : arguments(g, single))
        substitutionCandidates(a, v, found);
    const auto add = [&](const gen& c) {
        if (dependsOn(c, v) && std::find(found.begin(), found.end(), c) == found.end())
            found.push_back(c);
    };
    if (isSymbOf(g, giac::at_ln))
        add(g);
    const giac::vecteur& args = arguments(g, single);
    if (isSymbOf(g, giac::at_pow) && args.size() == 2) {
        if (args[1].type == giac::_FRAC)
            add(g);
        add(args[0]);
    } else if (knownFunction(*g._SYMBptr) && args.size() == 1) {
        add(args[0]);
    }
}

// A substitution u = g(v) that turns f into a function of u alone, integrated (by a second
// substitution first, then by the integrator) and written back in v.
std::optional<gen> bySubstitution(const gen& f, const gen& v, Session& s, int depth)
{
    const giac::context* ctx = s.ctx();
    giac::vecteur candidates;
    substitutionCandidates(f, v, candidates);
    // The outermost first: u = 1+sqrt(x) turns (1+sqrt(x))^8 into a short sum, u = sqrt(x)
    // into nine terms.
    std::reverse(candidates.begin(), candidates.end());
    const gen u = giac::identificateur(depth == 0 ? "curvix_u" : "curvix_w");
    for (const gen& g : candidates) {
        checkInterrupt();
        if (giac::is_zero(giac::derive(giac::derive(g, v, ctx), v, ctx)))
            continue; // linear: nothing to gain
        const std::optional<gen> inverted = inverse(g, v, u, s);
        if (!inverted)
            continue;
        const gen inU = giac::subst(f, g, u, false, ctx);
        const gen h = giac::ratnormal(
            giac::subst(inU, v, *inverted, false, ctx) * giac::derive(*inverted, u, ctx), ctx);
        // Only a substitution that leaves no trace of v (exp(u) for ln(v)) pays.
        if (dependsOn(h, v) || (giac::has_op(h, *giac::at_exp) && !giac::has_op(f, *giac::at_exp)))
            continue;
        std::optional<gen> hu = depth == 0 ? bySubstitution(h, u, s, 1) : std::nullopt;
        if (!hu) {
            hu = giac::_integrate(giac::makesequence(h, u), ctx);
            if (giac::has_op(*hu, *giac::at_integrate))
                continue;
        }
        return giac::subst(*hu, u, g, true, ctx); // quoted: evaluating would expand ln(x) for x < 0
    }
    return std::nullopt;
}

// Whether F' is f at the sample points where f is defined, for every set of parameter values.
bool differentiatesTo(const gen& F, const gen& f, Session& s)
{
    const gen derivative = giac::derive(F, s.x, s.ctx());
    int compared = 0;
    bool holds = true;
    for (std::size_t set = 0; holds && set < s.parameterSets(); ++set) {
        s.useParameterSet(set);
        for (double x : kSamplePoints) {
            const auto want = numericValue(f, x, s);
            if (!want || !std::isfinite(*want))
                continue;
            const auto got = numericValue(derivative, x, s);
            if (!got || !std::isfinite(*got) ||
                std::fabs(*got - *want) > 1e-7 * std::max(1.0, std::fabs(*want))) {
                holds = false;
                break;
            }
            ++compared;
        }
    }
    s.useParameterSet(0);
    return holds && compared > 0;
}

} // namespace

std::optional<gen> primitiveByRules(const gen& f, Session& s)
{
    for (auto strategy : {&byTable, &byHalfAngleQuotient, +[](const gen&g, Session&session, int) {
                              return bySubstitution(g, session.x, session, 0);
                          }}) {
        try {
            const std::optional<gen> found = strategy(f, s, 0);
            if (found && differentiatesTo(*found, f, s))
                return found;
        } catch (const std::runtime_error&) {
            checkInterrupt(); // a rule the CAS cannot follow costs nothing but time
        }
    }
    return std::nullopt;
}

} // namespace curvix::eval::cas::detail
