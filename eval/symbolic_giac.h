#pragma once

// What the files over Giac share (symbolic_cas.cpp, symbolic_values.cpp, symbolic_print.cpp,
// symbolic_forms.cpp, symbolic_rules.cpp): the session, reading Giac's trees and their
// values, printing them in our formula language and the rewrites between equivalent forms. Needs C++17 and Giac's headers.

#include "eval/symbolic_cas.h"

#include <QString>

#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

#include <giac/config.h>
#include <giac/giac.h>

namespace curvix::eval::cas::detail {

using giac::gen;

// Thrown by our own code when interrupt() was called between two steps of the CAS.
struct Interrupted {};
// Thrown while printing when a result holds something our formula language cannot say.
struct Unprintable {};

void checkInterrupt();

// The CAS's state: one context, created by and used from the thread that solves. Never
// destroyed, so that nothing of Giac's is torn down at exit while another thread uses it.
struct Session {
    giac::context context;
    gen x{giac::identificateur("x")};
    std::ostream silent{nullptr}; // a stream without a buffer swallows everything
    gen angle = 1; // the problem's angle unit in radians: pi/180 for degrees
    // The problem's parameters: their symbols, their names in the answer, and the values
    // numericValue gives them (one set of parameterValue at a time).
    std::vector<gen> parameters;
    QStringList parameterNames;
    std::vector<double> parameterValues;

    Session();
    const giac::context* ctx() const { return &context; }
    // Makes the problem's parameters the symbols of names, at the first set of values.
    void setParameters(const QStringList& names);
    // Gives the parameters the values of one set.
    void useParameterSet(std::size_t set);
    std::size_t parameterSets() const { return parameterSetCount(parameterNames.size()); }
    // The index of a parameter's symbol, or -1.
    int parameterIndex(const gen& g) const;
};

Session& session();

// --- reading Giac's trees (symbolic_cas.cpp) -----------------------------------------------

std::optional<Function> knownFunction(const giac::symbolic& s);
bool isSymbOf(const gen& g, const giac::unary_function_ptr* f);
// The arguments of a symbolic node: a sequence for + * ^, the one argument otherwise.
const giac::vecteur& arguments(const gen& g, giac::vecteur& single);
// exp(1), which the answer writes as e.
bool isEuler(const gen& g);
bool isNumber(const gen& g);
bool isNegativeNumber(const gen& g);
bool hasAny(const gen& g, std::initializer_list<const giac::unary_function_ptr*> functions);

// --- Giac -> numbers (symbolic_values.cpp) -------------------------------------------------

// The value of g at x in doubles, the way our evaluator would compute it; nothing when g
// holds something our language lacks (a complex unit, erf, ...).
std::optional<double> numericValue(const gen& g, double x, const Session& s);
// The values at every sample point for every set of parameter values.
std::optional<std::vector<SampleValues>> sampleValues(const gen& g, Session& s);

// --- products and printing (symbolic_print.cpp) --------------------------------------------

struct Factor {
    gen base;
    gen exponent;      // a positive number, or an expression
    bool flip = false; // a sum printed with every sign turned (the term's sign turns too)
};

// A term: numeric coefficient times the factors over the factors of den.
struct Product {
    gen coefficient = 1;
    std::vector<Factor> num;
    std::vector<Factor> den;
};

void collect(const gen& g, bool inverted, Product& p);
// The calls of f in g on half an angle: f(u) where u has an even denominator, as Giac's
// integrator writes tan(x/2).
void halfAngleCalls(const gen& g, const giac::unary_function_ptr* f, giac::vecteur& found);
bool hasHalfAngles(const gen& g);
// g in the function box's language, or nothing when it cannot be said there.
std::optional<QString> printForBox(const gen& g, const Session& s, const Problem& problem);

// --- equivalent forms (symbolic_forms.cpp, symbolic_identities.cpp) ------------------------

bool dependsOn(const gen& g, const gen& x);
// f(argument), not evaluated.
gen call(const giac::unary_function_ptr* f, const gen& argument);
// The sum of terms and the product of factors, not evaluated (0 and 1 for none).
gen sumOf(const giac::vecteur& terms);
gen productOf(const giac::vecteur& factors);
// A term as its numeric coefficient and the rest: -2ln(x) is (-2, ln(x)).
std::pair<gen, gen> splitCoefficient(const gen& term);

// Forms of a sum with a factor common to several terms taken out: exp(x)ln(x)+exp(x)/x as
// (ln(x)+1/x)exp(x); one form for each such factor.
std::vector<gen> commonFactorsOut(const gen& g, const Session& s);
// sin(u)/cos(u) as tan(u), sinh(u)cosh(u) as sinh(2u)/2, x^2*sign(x) as x*abs(x), and the
// arguments of functions in normal form ((2x)^2+1 as 4x^2+1).
gen withIdentities(const gen& g, const Session& s);

// A copy of g with f applied to every subexpression, children first; f returns nothing to
// keep a node as it is (rebuilt from its changed children, not evaluated).
template <class F>
gen mapBottomUp(const gen& g, const F& f)
{
    gen rebuilt = g;
    if (g.type == giac::_SYMB) {
        const gen& leaf = g._SYMBptr->feuille;
        gen newLeaf;
        if (leaf.type == giac::_VECT) {
            giac::vecteur args;
            for (const gen& a : *leaf._VECTptr)
                args.push_back(mapBottomUp(a, f));
            newLeaf = gen(args, leaf.subtype);
        } else {
            newLeaf = mapBottomUp(leaf, f);
        }
        rebuilt = gen(giac::symbolic(g._SYMBptr->sommet, newLeaf));
    }
    if (std::optional<gen> replaced = f(rebuilt))
        return *replaced;
    return rebuilt;
}

// g with its trigonometric functions in the session's angle unit: sin(pi*x/180) as the
// degrees' sin(x), atan(x) as pi/180 times the degrees' atan(x). Printing it gives the text
// in that unit.
gen inAngleUnit(const gen& g, const Session& s);

// Equivalent forms of a result, the result first; a primitive's may differ from it by a
// constant.
std::vector<gen> equivalentForms(const gen& result, bool hyperbolic, bool primitive, Session& s);
// Rewrites tan(u/2) as sin(u)/(1+cos(u)), which has the same domain.
gen withoutHalfAngles(const gen& g, const giac::vecteur& tangents, Session& s);

// --- cheap routes to a primitive (symbolic_rules.cpp) ---------------------------------------

// A primitive by the table of trigonometric integrals, by parts or by a substitution, checked
// by differentiation; nothing when none applies (the CAS's integrator then has its turn).
std::optional<gen> primitiveByRules(const gen& f, Session& s);

} // namespace curvix::eval::cas::detail
