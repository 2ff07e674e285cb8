// Equivalent forms of a CAS result: the CAS's cheap simplifiers and rewrites of our own.

#include "eval/symbolic_giac.h"

#include <algorithm>
#include <tuple>
#include <utility>
#include <stdexcept>

namespace curvix::eval::cas::detail {

bool dependsOn(const gen& g, const gen& x)
{
    if (g == x)
        return true;
    if (g.type == giac::_SYMB)
        return dependsOn(g._SYMBptr->feuille, x);
    if (g.type == giac::_VECT) {
        return std::any_of(g._VECTptr->begin(), g._VECTptr->end(),
                           [&](const gen& e) { return dependsOn(e, x); });
    }
    return false;
}

gen call(const giac::unary_function_ptr* f, const gen& argument)
{
    return gen(giac::symbolic(f, argument));
}

gen applied(const giac::unary_function_ptr* operation, const giac::vecteur& operands,
            const gen& none)
{
    if (operands.empty())
        return none;
    if (operands.size() == 1)
        return operands.front();
    return call(operation, gen(operands, giac::_SEQ__VECT));
}

gen sumOf(const giac::vecteur& terms)
{
    return applied(giac::at_plus, terms, gen(0));
}

gen productOf(const giac::vecteur& factors)
{
    return applied(giac::at_prod, factors, gen(1));
}

// A term as its numeric coefficient and the rest: -2ln(x) is (-2, ln(x)).
std::pair<gen, gen> splitCoefficient(const gen& term)
{
    if (isNumber(term))
        return {term, gen(1)};
    if (isSymbOf(term, giac::at_neg)) {
        const auto [c, rest] = splitCoefficient(term._SYMBptr->feuille);
        return {-c, rest};
    }
    if (!isSymbOf(term, giac::at_prod))
        return {gen(1), term};
    gen c = 1;
    giac::vecteur rest;
    giac::vecteur single;
    for (const gen& f : arguments(term, single)) {
        if (isNumber(f))
            c = c * f;
        else if (isSymbOf(f, giac::at_inv) && isNumber(f._SYMBptr->feuille))
            c = c / f._SYMBptr->feuille;
        else
            rest.push_back(f);
    }
    return {c, productOf(rest)};
}

namespace {

bool isSquareOf(const gen& g, const giac::unary_function_ptr* f)
{
    giac::vecteur single;
    return isSymbOf(g, giac::at_pow) && arguments(g, single).size() == 2 &&
           arguments(g, single)[1] == gen(2) && isSymbOf(arguments(g, single)[0], f);
}

// 1+tan(u)^2 as 1/cos(u)^2 and 1-tanh(u)^2 as 1/cosh(u)^2: the CAS differentiates tangents
// so, a textbook writes the other.
gen tangentsAsSecants(const gen& g)
{
    return mapBottomUp(g, [&](const gen& node) -> std::optional<gen> {
        if (!isSymbOf(node, giac::at_plus))
            return std::nullopt;
        giac::vecteur single;
        const giac::vecteur& terms = arguments(node, single);
        if (terms.size() != 2 || terms[0] != gen(1))
            return std::nullopt;
        const auto [c, rest] = splitCoefficient(terms[1]);
        for (const auto& [f, secant, sign] :
             {std::tuple{giac::at_tan, giac::at_cos, 1},
              std::tuple{giac::at_tanh, giac::at_cosh, -1}}) {
            if (c == gen(sign) && isSquareOf(rest, f)) {
                const gen u = rest._SYMBptr->feuille._VECTptr->front()._SYMBptr->feuille;
                const gen square = call(giac::at_pow, giac::makesequence(call(secant, u), 2));
                return call(giac::at_inv, square);
            }
        }
        return std::nullopt;
    });
}

// ln(abs(sqrt(A)-B)) is ln(abs(A-B^2))-ln(abs(sqrt(A)+B)): where A-B^2 is a constant, the
// primitive drops it and so loses the cancellation of sqrt(x^10-2)-x^5 for large x.
gen withoutRootCancellation(const gen& g, bool keepAbs, const Session& s)
{
    const giac::context* ctx = s.ctx();
    return mapBottomUp(g, [&](const gen& node) -> std::optional<gen> {
        if (!isSymbOf(node, giac::at_ln))
            return std::nullopt;
        const gen& arg = node._SYMBptr->feuille;
        const gen v = isSymbOf(arg, giac::at_abs) ? arg._SYMBptr->feuille : arg;
        if (!isSymbOf(v, giac::at_plus))
            return std::nullopt;
        giac::vecteur single;
        const giac::vecteur& terms = arguments(v, single);
        if (terms.size() != 2)
            return std::nullopt;
        for (int i = 0; i < 2; ++i) {
            const auto [c, root] = splitCoefficient(terms[std::size_t(i)]);
            giac::vecteur inner;
            if (!isSymbOf(root, giac::at_pow) || arguments(root, inner).size() != 2 ||
                arguments(root, inner)[1] != gen(1) / gen(2))
                continue;
            const gen& other = terms[std::size_t(1 - i)];
            const gen a = arguments(root, inner)[0];
            const gen constant = giac::ratnormal(c * c * a - other * other, ctx);
            if (giac::is_zero(constant) || dependsOn(constant, s.x))
                return std::nullopt;
            const gen conjugate = c * root - other;
            return -call(giac::at_ln, keepAbs ? call(giac::at_abs, conjugate) : conjugate);
        }
        return std::nullopt;
    });
}

// c*ln(a)-c*ln(b) as c*ln(a/b), with abs(a)/abs(b) as abs(a/b), and with sameSigns
// c*ln(a)+c*ln(b) as c*ln(ab): partial fractions as a textbook writes them.
gen combinedLogarithms(const gen& g, bool sameSigns)
{
    return mapBottomUp(g, [&](const gen& node) -> std::optional<gen> {
        if (!isSymbOf(node, giac::at_plus))
            return std::nullopt;
        giac::vecteur single;
        giac::vecteur terms = arguments(node, single);
        bool changed = false;
        for (std::size_t i = 0; i < terms.size(); ++i) {
            const auto [ci, li] = splitCoefficient(terms[i]);
            if (!isSymbOf(li, giac::at_ln))
                continue;
            for (std::size_t j = i + 1; j < terms.size(); ++j) {
                const auto [cj, lj] = splitCoefficient(terms[j]);
                const bool opposite = ci == -cj;
                if (!isSymbOf(lj, giac::at_ln) || !(opposite || (sameSigns && ci == cj)))
                    continue;
                // The term with the positive coefficient gives the numerator.
                const bool swap = opposite && isNegativeNumber(ci);
                const gen& a = (swap ? lj : li)._SYMBptr->feuille;
                const gen& b = (swap ? li : lj)._SYMBptr->feuille;
                const bool abs = isSymbOf(a, giac::at_abs) && isSymbOf(b, giac::at_abs);
                const gen u = abs ? a._SYMBptr->feuille : a;
                const gen w = abs ? b._SYMBptr->feuille : b;
                const gen inner = opposite ? u / w : u * w;
                const gen ln = call(giac::at_ln, abs ? call(giac::at_abs, inner) : inner);
                terms[i] = (swap ? cj : ci) * ln;
                terms.erase(terms.begin() + std::ptrdiff_t(j));
                changed = true;
                break;
            }
        }
        return changed ? std::optional<gen>(sumOf(terms)) : std::nullopt;
    });
}

bool hasRootOfTranscendental(const gen& g)
{
    if (g.type != giac::_SYMB)
        return false;
    giac::vecteur single;
    const giac::vecteur& args = arguments(g, single);
    if (isSymbOf(g, giac::at_pow) && args.size() == 2 && args[1].type == giac::_FRAC &&
        hasAny(args[0], {giac::at_ln, giac::at_exp, giac::at_sin, giac::at_cos, giac::at_tan}))
        return true;
    return std::any_of(args.begin(), args.end(), hasRootOfTranscendental);
}

// c*(a+b) as c*a+c*b for a number c: 2(w+ln(v)/2) is 2w+ln(v).
gen distributedCoefficients(const gen& g)
{
    return mapBottomUp(g, [&](const gen& node) -> std::optional<gen> {
        if (!isSymbOf(node, giac::at_prod))
            return std::nullopt;
        giac::vecteur single;
        const giac::vecteur& factors = arguments(node, single);
        if (factors.size() != 2)
            return std::nullopt;
        const int number = isNumber(factors[0]) ? 0 : isNumber(factors[1]) ? 1
                                                                           : -1;
        if (number < 0 || !isSymbOf(factors[std::size_t(1 - number)], giac::at_plus))
            return std::nullopt;
        giac::vecteur terms;
        for (const gen& t : arguments(factors[std::size_t(1 - number)], single))
            terms.push_back(factors[std::size_t(number)] * t);
        return sumOf(terms);
    });
}

// (a+b)*f as a*f+b*f at the top: -(sqrt(x^2+1)+x)/x is -sqrt(x^2+1)/x-1, whose constant a
// primitive drops.
gen distributedProduct(const gen& g)
{
    const auto [c, rest] = splitCoefficient(g);
    if (!isSymbOf(rest, giac::at_prod))
        return g;
    giac::vecteur single;
    const giac::vecteur& factors = arguments(rest, single);
    const auto sum = std::find_if(factors.begin(), factors.end(),
                                  [](const gen& f) { return isSymbOf(f, giac::at_plus); });
    if (sum == factors.end())
        return g;
    gen others = c;
    for (auto f = factors.begin(); f != factors.end(); ++f) {
        if (f != sum)
            others = others * *f;
    }
    giac::vecteur terms;
    for (const gen& t : arguments(*sum, single))
        terms.push_back(t * others);
    return sumOf(terms);
}

// A primitive without its constant terms.
gen withoutConstantTerms(const gen& g, const Session& s)
{
    if (!isSymbOf(g, giac::at_plus))
        return g;
    giac::vecteur single;
    giac::vecteur kept;
    for (const gen& t : arguments(g, single)) {
        // x*x^-1, left unevaluated by a rewrite, is a constant too.
        const bool constant =
            !dependsOn(t, s.x) || !dependsOn(giac::ratnormal(t, s.ctx()), s.x);
        if (!constant)
            kept.push_back(t);
    }
    return sumOf(kept);
}

} // namespace

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


namespace {

// Whether two trees are the same, node for node and number for number: 1/2 is not 0.5.
bool identical(const gen& a, const gen& b)
{
    if (a.type != b.type)
        return false;
    if (a.type == giac::_SYMB) {
        return a._SYMBptr == b._SYMBptr ||
               (a._SYMBptr->sommet == b._SYMBptr->sommet &&
                identical(a._SYMBptr->feuille, b._SYMBptr->feuille));
    }
    if (a.type == giac::_VECT) {
        const giac::vecteur& u = *a._VECTptr;
        const giac::vecteur& v = *b._VECTptr;
        return a.subtype == b.subtype && u.size() == v.size() &&
               std::equal(u.begin(), u.end(), v.begin(), identical);
    }
    return a == b;
}

// The forms found so far, each once: most rewrites give back a form that is already there,
// and every copy would be rewritten and printed again for nothing.
class FormList {
public:
    explicit FormList(const gen& first) : m_forms{first}, m_last(first) {}

    // Adds g unless an identical form is there; last() is g either way.
    void add(const gen& g)
    {
        m_last = g;
        if (std::none_of(m_forms.begin(), m_forms.end(),
                         [&](const gen& f) { return identical(f, g); }))
            m_forms.push_back(g);
    }
    // Adds what make gives, or nothing when it fails; true when it gave something.
    template <class Make>
    bool tryAdd(const Make& make)
    {
        checkInterrupt();
        try {
            add(make());
            return true;
        } catch (const std::runtime_error&) {
            checkInterrupt(); // a simplifier that fails costs one form, not the answer
            return false;
        }
    }
    // The form added last, whether it was new or not.
    const gen& last() const { return m_last; }
    std::size_t size() const { return m_forms.size(); }
    const gen& operator[](std::size_t i) const { return m_forms[i]; }
    std::vector<gen>& forms() { return m_forms; }

private:
    std::vector<gen> m_forms;
    gen m_last;
};

// Our own rewrites of every form so far: identities and common factors, and for primitives
// the logarithms and constants as a textbook writes them.
void addTextbookForms(FormList& forms, const gen& result, bool primitive, Session& s)
{
    auto add = [&](auto make) { forms.tryAdd(make); };
    add([&] { return distributedCoefficients(result); });
    const std::size_t count = forms.size();
    for (std::size_t i = 0; i < count; ++i) {
        const gen form = forms[i];
        if (primitive)
            add([&] { return distributedProduct(form); });
        // The identities leave a form without one unchanged, so the common factors are
        // taken out of that one only.
        add([&] { return withIdentities(form, s); });
        const gen identities = forms.last();
        try {
            for (const gen& collected : commonFactorsOut(identities, s))
                forms.add(collected);
        } catch (const std::runtime_error&) {
            checkInterrupt();
        }
    }
    if (primitive && giac::has_op(result, *giac::at_ln)) {
        const std::size_t rewritten = forms.size();
        for (std::size_t i = 0; i < rewritten; ++i) {
            const gen form = forms[i];
            for (bool keepAbs : {true, false})
                add([&] { return withoutRootCancellation(form, keepAbs, s); });
            for (bool sameSigns : {false, true})
                add([&] { return combinedLogarithms(form, sameSigns); });
        }
    }
    if (primitive) {
        for (gen& form : forms.forms())
            form = withoutConstantTerms(form, s);
    }
}

} // namespace

// Equivalent forms of a result, from the CAS's cheap simplifiers and a few rewrites of our
// own. Giac's full simplify() is left out: it rewrites trigonometric results in tangents of
// half angles and recurses without end on some of them.
std::vector<gen> equivalentForms(const gen& result, bool hyperbolic, bool primitive, Session& s)
{
    const giac::context* ctx = s.ctx();
    FormList forms(result);
    auto add = [&](auto make) { return forms.tryAdd(make); };
    // The CAS's normal forms take seconds over roots of logarithms and the like, and
    // gain nothing there.
    if (!hasRootOfTranscendental(result)) {
        add([&] { return giac::ratnormal(result, ctx); });
        const gen rational = forms.last();
        add([&] { return giac::normal(result, ctx); });
        add([&] { return giac::_factor(rational, ctx); });
        // A rational function in partial fractions: 1-1/x^2.
        if (giac::lvar(rational) == giac::vecteur(1, s.x))
            add([&] { return giac::_partfrac(rational, ctx); });
        // A quotient with only its denominator factored: (1-x^2)/(x^2+1)^2.
        add([&] {
            const gen den = giac::_denom(rational, ctx);
            if (isNumber(den))
                return rational;
            return giac::_numer(rational, ctx) / giac::_factor(den, ctx);
        });
    }
    if (hasAny(result, {giac::at_tan, giac::at_tanh}))
        add([&] { return tangentsAsSecants(result); });
    if (hasAny(result, {giac::at_sin, giac::at_cos, giac::at_tan})) {
        // sin(x)^2 as 1/2-cos(2x)/2, 2sin(x)cos(x) as sin(2x).
        add([&] { return giac::_tcollect(result, ctx); });
        // sin(x)^2+cos(x)^2 is 1 once either is written in the other.
        add([&] { return giac::ratnormal(giac::_trigcos(result, ctx), ctx); });
        add([&] { return giac::_tcollect(forms.last(), ctx); });
        add([&] { return giac::ratnormal(giac::_trigsin(result, ctx), ctx); });
    }
    if (giac::has_op(result, *giac::at_exp)) {
        const std::size_t count = forms.size();
        std::vector<gen> folded;
        for (std::size_t i = 0; i < count; ++i) {
            const gen form = forms[i];
            if (add([&] { return foldExponentials(form, ctx); }))
                folded.push_back(forms.last());
        }
        if (hyperbolic) {
            for (const gen& g : folded)
                add([&] { return giac::ratnormal(exponentialsAsHyperbolic(g, ctx), ctx); });
        }
    }
    addTextbookForms(forms, result, primitive, s);
    return std::move(forms.forms());
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
