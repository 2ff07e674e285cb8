// The computation over Giac (its headers are slow to compile and need C++17): our parse tree
// as a Giac expression, the derivative or primitive, and the choice of forms to print.
// Printing is in symbolic_print.cpp, the rewrites in symbolic_forms.cpp.

#include "eval/symbolic_giac.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

namespace curvix::eval::cas {

namespace detail {

void checkInterrupt()
{
    if (giac::ctrl_c)
        throw Interrupted{};
}

// --- Giac's chatter -------------------------------------------------------------------

// Giac writes warnings ("Simplification assuming x near 0", "Warning, integration of abs
// ...") straight to std::cout and std::cerr. The standard streams are wrapped once so that
// whatever the CAS thread writes is dropped, while other threads print as before.
thread_local bool tQuiet = false;

class QuietBuffer final : public std::streambuf {
public:
    explicit QuietBuffer(std::streambuf* target) : m_target(target) {}

protected:
    int overflow(int c) override
    {
        if (tQuiet || !m_target || traits_type::eq_int_type(c, traits_type::eof()))
            return traits_type::not_eof(c);
        return m_target->sputc(traits_type::to_char_type(c));
    }
    std::streamsize xsputn(const char* s, std::streamsize n) override
    {
        if (tQuiet || !m_target)
            return n;
        return m_target->sputn(s, n);
    }
    int sync() override { return tQuiet || !m_target ? 0 : m_target->pubsync(); }

private:
    std::streambuf* m_target;
};

void quietStandardStreams()
{
    static std::once_flag once;
    std::call_once(once, [] {
        for (std::ostream* stream : {&std::cout, &std::cerr, &std::clog})
            stream->rdbuf(new QuietBuffer(stream->rdbuf()));
    });
}

Session::Session()
{
    giac::logptr(&silent, &context);
    giac::debug_infolevel = 0;
    giac::threads = 1;
    giac::complex_mode(false, &context);
    giac::angle_radian(true, &context);
}

Session& session()
{
    static Session* s = new Session;
    return *s;
}

// --- the functions both sides know ------------------------------------------------------

struct KnownFunction {
    const giac::unary_function_ptr* giacFunction;
    Function function;
};

const std::vector<KnownFunction>& knownFunctions()
{
    static const std::vector<KnownFunction> table{
        {giac::at_sqrt, Function::Sqrt},
        {giac::at_sin, Function::Sin},
        {giac::at_cos, Function::Cos},
        {giac::at_tan, Function::Tan},
        {giac::at_asin, Function::Asin},
        {giac::at_acos, Function::Acos},
        {giac::at_atan, Function::Atan},
        {giac::at_exp, Function::Exp},
        {giac::at_ln, Function::Ln},
        {giac::at_log10, Function::Log10},
        {giac::at_abs, Function::Abs},
        {giac::at_sign, Function::Sign},
        {giac::at_sinh, Function::Sinh},
        {giac::at_cosh, Function::Cosh},
        {giac::at_tanh, Function::Tanh},
        {giac::at_asinh, Function::Asinh},
        {giac::at_acosh, Function::Acosh},
        {giac::at_atanh, Function::Atanh},
    };
    return table;
}

std::optional<Function> knownFunction(const giac::symbolic& s)
{
    for (const KnownFunction& known : knownFunctions()) {
        if (s.sommet == known.giacFunction)
            return known.function;
    }
    return std::nullopt;
}

bool isSymbOf(const gen& g, const giac::unary_function_ptr* f)
{
    return g.type == giac::_SYMB && g._SYMBptr->sommet == f;
}

// The arguments of a symbolic node: a sequence for + * ^, the one argument otherwise.
const giac::vecteur& arguments(const gen& g, giac::vecteur& single)
{
    const gen& leaf = g._SYMBptr->feuille;
    if (leaf.type == giac::_VECT)
        return *leaf._VECTptr;
    single = giac::vecteur(1, leaf);
    return single;
}

// exp(1), which the answer writes as e.
bool isEuler(const gen& g)
{
    return isSymbOf(g, giac::at_exp) && g._SYMBptr->feuille == gen(1);
}

bool isNumber(const gen& g)
{
    return g.type == giac::_INT_ || g.type == giac::_ZINT || g.type == giac::_FRAC ||
           g.type == giac::_DOUBLE_;
}

// --- our tree -> Giac ---------------------------------------------------------------------

// A number as typed, exactly: "2.5" is 5/2, so that answers carry no rounding.
gen exactNumber(const QString& digits)
{
    gen value = 0;
    gen scale = 1;
    bool afterPoint = false;
    for (QChar c : digits) {
        if (c == u'.') {
            afterPoint = true;
            continue;
        }
        value = value * gen(10) + gen(int(c.unicode() - u'0'));
        if (afterPoint)
            scale = scale * gen(10);
    }
    return value / scale;
}

gen applyKnown(Function function, const gen& a, const giac::context* ctx)
{
    switch (function) {
    case Function::Sqrt: return giac::sqrt(a, ctx);
    case Function::Sin: return giac::sin(a, ctx);
    case Function::Cos: return giac::cos(a, ctx);
    case Function::Tan: return giac::tan(a, ctx);
    case Function::Asin: return giac::asin(a, ctx);
    case Function::Acos: return giac::acos(a, ctx);
    case Function::Atan: return giac::atan(a, ctx);
    case Function::Exp: return giac::exp(a, ctx);
    case Function::Ln: return giac::ln(a, ctx);
    // As the request rewrites log10 for the CAS: a quotient of natural logarithms.
    case Function::Log10: return giac::ln(a, ctx) / giac::ln(gen(10), ctx);
    case Function::Abs: return giac::abs(a, ctx);
    case Function::Sign: return giac::sign(a, ctx);
    case Function::Sinh: return giac::sinh(a, ctx);
    case Function::Cosh: return giac::cosh(a, ctx);
    case Function::Tanh: return giac::tanh(a, ctx);
    case Function::Asinh: return giac::asinh(a, ctx);
    case Function::Acosh: return giac::acosh(a, ctx);
    case Function::Atanh: return giac::atanh(a, ctx);
    }
    throw std::runtime_error("unknown function");
}

gen toGiac(const Node& node, Session& s)
{
    const giac::context* ctx = s.ctx();
    auto arg = [&](int i) { return toGiac(node.args[std::size_t(i)], s); };
    switch (node.kind) {
    case Node::Kind::Number: return exactNumber(node.text);
    case Node::Kind::Variable:
        if (node.variable >= 2)
            return s.parameters.at(std::size_t(node.variable - 2));
        return node.variable == 0 ? s.x : giac::exp(gen(1), ctx);
    case Node::Kind::Pi: return giac::cst_pi;
    case Node::Kind::Negate: return -arg(0);
    case Node::Kind::Add: return arg(0) + arg(1);
    case Node::Kind::Subtract: return arg(0) - arg(1);
    case Node::Kind::Multiply: return arg(0) * arg(1);
    case Node::Kind::Divide: return arg(0) / arg(1);
    case Node::Kind::Power: return giac::pow(arg(0), arg(1), ctx);
    case Node::Kind::Call: {
        // The CAS leaves a function's argument as typed; "sin(x+x-1+1)" should answer with
        // cos(2x), so sums in arguments are collected.
        gen a = arg(0);
        if (isSymbOf(a, giac::at_plus))
            a = giac::ratnormal(a, ctx);
        switch (node.function) {
        case Function::Sin:
        case Function::Cos:
        case Function::Tan: return applyKnown(node.function, giac::ratnormal(a * s.angle, ctx), ctx);
        case Function::Asin:
        case Function::Acos:
        case Function::Atan: return applyKnown(node.function, a, ctx) / s.angle;
        default: return applyKnown(node.function, a, ctx);
        }
    }
    }
    throw std::runtime_error("unknown node");
}

bool isNegativeNumber(const gen& g)
{
    switch (g.type) {
    case giac::_INT_: return g.val < 0;
    case giac::_ZINT: return mpz_sgn(*g._ZINTptr) < 0;
    case giac::_DOUBLE_: return g._DOUBLE_val < 0;
    case giac::_FRAC: return isNegativeNumber(g._FRACptr->num) != isNegativeNumber(g._FRACptr->den);
    default: return false;
    }
}

bool hasAny(const gen& g, std::initializer_list<const giac::unary_function_ptr*> functions)
{
    return std::any_of(functions.begin(), functions.end(),
                       [&](const giac::unary_function_ptr* f) { return giac::has_op(g, *f); });
}

} // namespace detail

namespace {

using namespace detail;

// --- the computation ----------------------------------------------------------------------

// Whether every name in g is the variable, a parameter or pi: a formula such as 1/0 becomes
// infinity or undef, which has no derivative or primitive.
bool onlyKnownNames(const gen& g, const Session& s)
{
    if (g.type == giac::_IDNT)
        return g == s.x || g == giac::cst_pi || s.parameterIndex(g) >= 0;
    if (g.type == giac::_SYMB)
        return onlyKnownNames(g._SYMBptr->feuille, s);
    if (g.type == giac::_VECT) {
        return std::all_of(g._VECTptr->begin(), g._VECTptr->end(),
                           [&](const gen& e) { return onlyKnownNames(e, s); });
    }
    return g.type != giac::_CPLX;
}

gen derivative(const gen& f, int order, Session& s)
{
    gen result = f;
    for (int k = 0; k < order; ++k) {
        checkInterrupt();
        result = giac::derive(result, s.x, s.ctx());
        // Higher derivatives grow fast unless each step is tidied.
        if (k + 1 < order)
            result = giac::ratnormal(result, s.ctx());
    }
    if (giac::has_op(result, *giac::at_derive))
        throw std::runtime_error("unevaluated derivative");
    return result;
}

// (u'v-uv')/v^2 with v as the formula writes it: the quotient rule keeps (x^2-1)^2 where
// the CAS's normal forms expand it.
std::optional<gen> quotientRule(const gen& f, Session& s)
{
    const giac::context* ctx = s.ctx();
    Product p;
    try {
        collect(f, false, p);
    } catch (const Unprintable&) {
        return std::nullopt;
    }
    if (p.den.empty())
        return std::nullopt;
    gen u = p.coefficient;
    for (const Factor& factor : p.num)
        u = u * giac::pow(factor.base, factor.exponent, ctx);
    gen v = 1;
    for (const Factor& factor : p.den)
        v = v * giac::pow(factor.base, factor.exponent, ctx);
    const gen top =
        giac::ratnormal(giac::derive(u, s.x, ctx) * v - u * giac::derive(v, s.x, ctx), ctx);
    return top * gen(giac::symbolic(giac::at_inv,
                                    gen(giac::symbolic(giac::at_pow, giac::makesequence(v, 2)))));
}

gen primitive(const gen& f, Session& s)
{
    if (const std::optional<gen> cheap = primitiveByRules(f, s))
        return *cheap;
    const gen result = giac::_integrate(giac::makesequence(f, s.x), s.ctx());
    if (giac::has_op(result, *giac::at_integrate))
        throw std::runtime_error("no elementary primitive found");
    return result;
}

bool callsHyperbolic(const Node& node)
{
    if (node.kind == Node::Kind::Call &&
        (node.function == Function::Sinh || node.function == Function::Cosh ||
         node.function == Function::Tanh))
        return true;
    return std::any_of(node.args.begin(), node.args.end(), callsHyperbolic);
}

// Equivalent forms of a result, from the CAS's cheap simplifiers and a few rewrites of our
// own. Giac's full simplify() is left out: it rewrites trigonometric results in tangents of
} // namespace

Answer solve(const Problem& problem)
{
    Answer answer;
    tQuiet = true;
    quietStandardStreams();
    try {
        Session& s = session();
        s.angle = problem.angleUnit == 2   ? giac::cst_pi / gen(180)
                  : problem.angleUnit == 3 ? giac::cst_pi / gen(200)
                                           : gen(1);
        s.setParameters(problem.parameters);
        const gen f = toGiac(problem.formula, s);
        if (!onlyKnownNames(f, s))
            throw std::runtime_error("the formula has no finite real value");
        checkInterrupt();
        gen result = problem.operation == Operation::Derivative ? derivative(f, problem.order, s)
                                                                : primitive(f, s);
        checkInterrupt();
        // Never a tangent of half an angle that the problem did not have: the integrator
        // writes some primitives so, and the trigonometric rewrites then make sin(x/2) and
        // cos(x/2) of it.
        // (In degrees and gradians the angles are x*pi/180 and the like: they are judged in
        // the unit, and a half angle stays.)
        const auto halfAngled = [&](const gen& g) { return hasHalfAngles(inAngleUnit(g, s)); };
        giac::vecteur tangents;
        if (problem.angleUnit == 1)
            halfAngleCalls(result, giac::at_tan, tangents);
        if (!tangents.empty())
            result = withoutHalfAngles(result, tangents, s);
        const bool halfAngles = halfAngled(result);
        std::vector<gen> forms = equivalentForms(result, callsHyperbolic(problem.formula),
                                                 problem.operation == Operation::Primitive, s);
        if (problem.operation == Operation::Derivative && problem.order == 1) {
            if (const std::optional<gen> quotient = quotientRule(f, s))
                forms.push_back(*quotient);
        }
        if (!halfAngles)
            forms.erase(std::remove_if(forms.begin(), forms.end(), halfAngled), forms.end());

        answer.upToConstant = problem.operation == Operation::Primitive;
        bool haveValues = false;
        for (const gen& form : forms) {
            checkInterrupt();
            if (!haveValues) {
                if (const auto values = sampleValues(form, s)) {
                    answer.values = *values;
                    haveValues = true;
                }
            }
            if (const auto text = printForBox(inAngleUnit(form, s), s, problem)) {
                if (std::find(answer.forms.begin(), answer.forms.end(), *text) ==
                    answer.forms.end())
                    answer.forms.push_back(*text);
            }
        }
        if (!haveValues || answer.forms.empty()) {
            answer.forms.clear();
            answer.failure = QStringLiteral("the result is not in the formula language");
        }
    } catch (const Interrupted&) {
        answer.forms.clear();
        answer.failure = QStringLiteral("interrupted");
    } catch (const std::exception& e) {
        answer.forms.clear();
        answer.failure = giac::ctrl_c ? QStringLiteral("interrupted") : QString::fromUtf8(e.what());
    } catch (...) {
        answer.forms.clear();
        answer.failure = QStringLiteral("the CAS failed");
    }
    return answer;
}

void interrupt()
{
    giac::ctrl_c = true;
}

void clearInterrupt()
{
    giac::ctrl_c = false;
    giac::interrupted = false;
}

} // namespace curvix::eval::cas