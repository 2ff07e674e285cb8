// The one translation unit that includes Giac (its headers are slow to compile and need
// C++17). It turns our parse tree into a Giac expression, differentiates or integrates it,
// and writes the result back in our formula language.

#include "eval/symbolic_cas.h"

#include "eval/numtext.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

#include <giac/config.h>
#include <giac/giac.h>

namespace curvix::eval::cas {

namespace {

using giac::gen;

// Thrown by our own code when interrupt() was called between two steps of the CAS.
struct Interrupted {};
// Thrown while printing when a result holds something our formula language cannot say.
struct Unprintable {};

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

// The CAS's state: one context, created by and used from the thread that solves. Never
// destroyed, so that nothing of Giac's is torn down at exit while another thread uses it.
struct Session {
    giac::context context;
    gen x{giac::identificateur("x")};
    std::ostream silent{nullptr}; // a stream without a buffer swallows everything

    Session()
    {
        giac::logptr(&silent, &context);
        giac::debug_infolevel = 0;
        giac::threads = 1;
        giac::complex_mode(false, &context);
        giac::angle_radian(true, &context);
    }
    const giac::context* ctx() const { return &context; }
};

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
        {giac::at_sqrt, Function::Sqrt},   {giac::at_sin, Function::Sin},
        {giac::at_cos, Function::Cos},     {giac::at_tan, Function::Tan},
        {giac::at_asin, Function::Asin},   {giac::at_acos, Function::Acos},
        {giac::at_atan, Function::Atan},   {giac::at_exp, Function::Exp},
        {giac::at_ln, Function::Ln},       {giac::at_log10, Function::Log10},
        {giac::at_abs, Function::Abs},     {giac::at_sign, Function::Sign},
        {giac::at_sinh, Function::Sinh},   {giac::at_cosh, Function::Cosh},
        {giac::at_tanh, Function::Tanh},   {giac::at_asinh, Function::Asinh},
        {giac::at_acosh, Function::Acosh}, {giac::at_atanh, Function::Atanh},
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
    case Node::Kind::Variable: return node.variable == 0 ? s.x : giac::exp(gen(1), ctx);
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
        const gen a = arg(0);
        return applyKnown(node.function, isSymbOf(a, giac::at_plus) ? giac::ratnormal(a, ctx) : a,
                          ctx);
    }
    }
    throw std::runtime_error("unknown node");
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

std::optional<SampleValues> sampleValues(const gen& g, const Session& s)
{
    SampleValues values{};
    for (std::size_t i = 0; i < kSamplePoints.size(); ++i) {
        const auto value = numericValue(g, kSamplePoints[i], s);
        if (!value)
            return std::nullopt;
        values[i] = *value;
    }
    return values;
}

// --- products as the printer sees them ----------------------------------------------------

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

void collectFactors(const gen& g, bool inverted, Product& p);

// x^(1/3)*x is x^(4/3), x/x^3 is 1/x^2: powers of one base with numeric exponents merge.
void mergePowers(Product& p)
{
    std::vector<Factor> all;
    for (Factor& f : p.num)
        all.push_back(std::move(f));
    for (Factor& f : p.den)
        all.push_back({std::move(f.base), isNumber(f.exponent) ? gen(-f.exponent) : f.exponent});
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
                p.den.push_back({std::move(f.base), gen(-f.exponent)});
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

// --- Giac -> our formula language ---------------------------------------------------------

// Whole number text of a non-negative integer gen.
std::string integerText(const gen& g)
{
    if (g.type == giac::_INT_)
        return std::to_string(g.val);
    if (g.type == giac::_ZINT) {
        std::string text(mpz_sizeinbase(*g._ZINTptr, 10) + 2, '\0');
        mpz_get_str(text.data(), 10, *g._ZINTptr);
        text.resize(std::char_traits<char>::length(text.c_str()));
        return text;
    }
    throw Unprintable{};
}

void toMpz(const gen& g, mpz_t out)
{
    if (g.type == giac::_INT_)
        mpz_set_si(out, g.val);
    else if (g.type == giac::_ZINT)
        mpz_set(out, *g._ZINTptr);
    else
        throw Unprintable{};
}

// n/d (both positive) as a decimal when d divides a power of ten not above 10^15.
std::optional<std::string> decimalText(const gen& n, const gen& d)
{
    const auto isInteger = [](const gen& g) {
        return g.type == giac::_INT_ || g.type == giac::_ZINT;
    };
    if (!isInteger(n) || !isInteger(d))
        throw Unprintable{};
    mpz_t num, den, rest, two, five;
    mpz_inits(num, den, rest, nullptr);
    mpz_init_set_ui(two, 2);
    mpz_init_set_ui(five, 5);
    toMpz(n, num);
    toMpz(d, den);
    mpz_set(rest, den);
    const unsigned long twos = mpz_remove(rest, rest, two);
    const unsigned long fives = mpz_remove(rest, rest, five);
    std::optional<std::string> text;
    const unsigned long places = std::max(twos, fives);
    if (mpz_cmp_ui(rest, 1) == 0 && places <= 15) {
        mpz_ui_pow_ui(rest, 10, places);
        mpz_mul(num, num, rest);
        mpz_divexact(num, num, den);
        std::string digits(mpz_sizeinbase(num, 10) + 2, '\0');
        mpz_get_str(digits.data(), 10, num);
        digits.resize(std::char_traits<char>::length(digits.c_str()));
        if (places > 0) {
            if (digits.size() <= places)
                digits.insert(0, places + 1 - digits.size(), '0');
            digits.insert(digits.size() - places, ".");
        }
        text = digits;
    }
    mpz_clears(num, den, rest, two, five, nullptr);
    return text;
}

class Printer {
public:
    Printer(const Session& s, const QString& variable, bool decimals, bool gluePi)
        : m_session(s), m_variable(variable), m_decimals(decimals), m_gluePi(gluePi)
    {
    }

    // The text, or nothing when g holds something our language lacks.
    std::optional<QString> print(const gen& g)
    {
        try {
            return expression(g);
        } catch (const Unprintable&) {
            return std::nullopt;
        }
    }

    int piCount = 0;   // pi written anywhere
    int gluedPi = 0;   // pi written right after a numeric coefficient ("2pi")

private:
    struct Term {
        bool negative = false;
        QString text;
    };

    QString expression(const gen& g)
    {
        if (isSymbOf(g, giac::at_plus))
            return sum(g);
        const Term t = term(g);
        return t.negative ? QStringLiteral("-") + t.text : t.text;
    }

    static void flattenSumOf(const gen& g, giac::vecteur& terms)
    {
        if (isSymbOf(g, giac::at_plus)) {
            giac::vecteur single;
            for (const gen& a : arguments(g, single))
                flattenSumOf(a, terms);
        } else {
            terms.push_back(g);
        }
    }
    void flattenSum(const gen& g, giac::vecteur& terms) { flattenSumOf(g, terms); }

    QString sum(const gen& g, bool flip = false)
    {
        giac::vecteur parts;
        flattenSum(g, parts);
        std::vector<Term> terms;
        for (const gen& part : parts) {
            Term t = term(part);
            t.negative = t.negative != flip;
            if (t.text != u"0")
                terms.push_back(std::move(t));
        }
        if (terms.empty())
            return QStringLiteral("0");
        // "1-x^2" reads better than "-x^2+1": lead with a positive term where there is one.
        if (terms.front().negative) {
            const auto positive = std::find_if(terms.begin(), terms.end(),
                                               [](const Term& t) { return !t.negative; });
            if (positive != terms.end())
                std::rotate(terms.begin(), positive, positive + 1);
        }
        QString text;
        for (const Term& t : terms) {
            if (t.negative)
                text += u'-';
            else if (!text.isEmpty())
                text += u'+';
            text += t.text;
        }
        return text;
    }

    // Order of factors in a product: pi, roots of numbers, powers of the variable, sums, the
    // rest, other constants last (2pi x, sqrt(3)x, x^2(x+1)sin(x), 2^x*ln(2)).
    int rank(const Factor& f) const
    {
        if (f.base == giac::cst_pi)
            return 0;
        if (isNumber(f.base))
            return 1; // sqrt(3)
        if (f.base == m_session.x)
            return 2;
        if (!dependsOnVariable(f.base) && !dependsOnVariable(f.exponent))
            return 5; // ln(2)
        if (isSymbOf(f.base, giac::at_plus) && f.exponent == gen(1))
            return 3;
        return 4;
    }

    bool dependsOnVariable(const gen& g) const
    {
        if (g == m_session.x)
            return true;
        if (g.type == giac::_SYMB)
            return dependsOnVariable(g._SYMBptr->feuille);
        if (g.type == giac::_VECT) {
            for (const gen& e : *g._VECTptr) {
                if (dependsOnVariable(e))
                    return true;
            }
        }
        return false;
    }

    // The coefficient's digits, as a decimal where that is exact and wanted.
    struct CoefficientText {
        QString num; // empty for 1
        QString den; // empty for 1
    };

    CoefficientText coefficientText(const gen& c)
    {
        if (c.type == giac::_DOUBLE_) {
            if (!std::isfinite(c._DOUBLE_val))
                throw Unprintable{};
            const QString text = numberText(c._DOUBLE_val, QLocale::c());
            return {text == u"1" ? QString() : text, {}};
        }
        const gen n = c.type == giac::_FRAC ? c._FRACptr->num : c;
        const gen d = c.type == giac::_FRAC ? c._FRACptr->den : gen(1);
        if (m_decimals && d != gen(1)) {
            if (const auto decimal = decimalText(n, d))
                return {QString::fromStdString(*decimal), {}};
        }
        const QString numText = QString::fromStdString(integerText(n));
        const QString denText = QString::fromStdString(integerText(d));
        return {numText == u"1" ? QString() : numText, denText == u"1" ? QString() : denText};
    }

    Term term(const gen& g)
    {
        Product p;
        collect(g, false, p);
        if (giac::is_zero(p.coefficient))
            return {false, QStringLiteral("0")};
        Term t;
        t.negative = isNegativeNumber(p.coefficient);
        const bool coefficientNegative = t.negative;
        flipOneSum(p, t.negative);
        const CoefficientText c =
            coefficientText(coefficientNegative ? gen(-p.coefficient) : p.coefficient);
        QString numerator = product(c.num, p.num);
        if (numerator.isEmpty())
            numerator = QStringLiteral("1");
        const QString denominator = product(c.den, p.den);
        if (denominator.isEmpty()) {
            t.text = numerator;
        } else {
            const bool single = p.den.size() + (c.den.isEmpty() ? 0 : 1) == 1;
            t.text = numerator + u'/' +
                     (single ? denominator : QStringLiteral("(") + denominator + u')');
        }
        return t;
    }

    // -(cos(x)-sin(x)) reads better as (sin(x)-cos(x)), -1/(x^2-1) as 1/(1-x^2), and
    // (-x-1)exp(x) as -(x+1)exp(x): one sum factor may take the term's sign.
    static void flipOneSum(Product& p, bool& negative)
    {
        for (std::vector<Factor>* factors : {&p.num, &p.den}) {
            for (Factor& f : *factors) {
                if (!isSymbOf(f.base, giac::at_plus) || f.exponent != gen(1))
                    continue;
                giac::vecteur parts;
                flattenSumOf(f.base, parts);
                const auto negativeTerms =
                    std::count_if(parts.begin(), parts.end(), [](const gen& part) {
                        Product q;
                        collect(part, false, q);
                        return isNegativeNumber(q.coefficient);
                    });
                const bool flip = negative ? negativeTerms > 0
                                           : negativeTerms == qsizetype(parts.size());
                if (flip) {
                    f.flip = true;
                    negative = !negative;
                    return;
                }
            }
        }
    }

    static bool startsWithLetter(const QString& s)
    {
        return !s.isEmpty() && s[0].isLetter();
    }

    // The factors with implicit multiplication where it reads well and parses the same:
    // 3x^2, 2sin(x), x(x+1), sin(x)cos(x), but x*sin(x) and x^2*ln(x).
    QString product(const QString& coefficient, std::vector<Factor> factors)
    {
        std::stable_sort(factors.begin(), factors.end(),
                         [&](const Factor& a, const Factor& b) { return rank(a) < rank(b); });
        QString text = coefficient;
        bool onlyCoefficient = !coefficient.isEmpty();
        for (const Factor& f : factors) {
            const bool isPi = f.base == giac::cst_pi && f.exponent == gen(1);
            const QString piece = factor(f);
            if (text.isEmpty()) {
                text = piece;
            } else if (onlyCoefficient) {
                // A coefficient is followed by a name or "(" implicitly; pi only in the glued
                // style (the function box then writes it as 2*3.14...).
                const bool implicit = (startsWithLetter(piece) || piece.startsWith(u'(')) &&
                                      (!isPi || m_gluePi);
                if (isPi && implicit)
                    ++gluedPi;
                text += implicit ? piece : u'*' + piece;
            } else if (piece.startsWith(u'(') ||
                       ((text.endsWith(u')') || text.endsWith(QLatin1String("pi"))) &&
                        startsWithLetter(piece))) {
                text += piece;
            } else {
                text += u'*' + piece;
            }
            onlyCoefficient = false;
        }
        return text;
    }

    static bool isHalf(const gen& g)
    {
        return g.type == giac::_FRAC && g._FRACptr->num == gen(1) && g._FRACptr->den == gen(2);
    }

    QString factor(const Factor& f)
    {
        if (f.flip)
            return u'(' + sum(f.base, true) + u')';
        if (f.exponent == gen(1))
            return atom(f.base);
        if (isHalf(f.exponent))
            return QStringLiteral("sqrt(") + expression(f.base) + u')';
        return powerBase(f.base) + u'^' + exponent(f.exponent);
    }

    QString atom(const gen& g)
    {
        if (g.type == giac::_IDNT) {
            if (g == m_session.x)
                return m_variable;
            if (g == giac::cst_pi) {
                ++piCount;
                return QStringLiteral("pi");
            }
            throw Unprintable{};
        }
        if (isNumber(g))
            return number(g);
        if (g.type != giac::_SYMB)
            throw Unprintable{};
        if (isSymbOf(g, giac::at_plus))
            return u'(' + sum(g) + u')';
        if (const auto function = knownFunction(*g._SYMBptr)) {
            const gen& arg = g._SYMBptr->feuille;
            if (arg.type == giac::_VECT)
                throw Unprintable{};
            return QLatin1String(functionName(*function)) + u'(' + expression(arg) + u')';
        }
        throw Unprintable{};
    }

    QString number(const gen& g)
    {
        const bool negative = isNegativeNumber(g);
        const CoefficientText c = coefficientText(negative ? gen(-g) : g);
        QString text = c.num.isEmpty() ? QStringLiteral("1") : c.num;
        if (!c.den.isEmpty())
            text += u'/' + c.den;
        return negative ? QStringLiteral("-") + text : text;
    }

    QString powerBase(const gen& g)
    {
        if (g.type == giac::_IDNT)
            return atom(g);
        if (g.type == giac::_INT_ && g.val > 0)
            return QString::number(g.val);
        if (g.type == giac::_SYMB && knownFunction(*g._SYMBptr))
            return atom(g);
        return u'(' + expression(g) + u')';
    }

    QString exponent(const gen& g)
    {
        if (g.type == giac::_IDNT)
            return atom(g);
        if ((g.type == giac::_INT_ || g.type == giac::_ZINT) && !isNegativeNumber(g))
            return QString::fromStdString(integerText(g));
        if (m_decimals && g.type == giac::_FRAC && !isNegativeNumber(g)) {
            if (const auto decimal = decimalText(g._FRACptr->num, g._FRACptr->den))
                return QString::fromStdString(*decimal);
        }
        return u'(' + expression(g) + u')';
    }

    const Session& m_session;
    QString m_variable;
    bool m_decimals;
    bool m_gluePi;
};

// Prints g so that the function box reads it back: it turns pi into its digits and puts a
// "*" in front of all of them when the first stands right after a digit. So either every
// pi is glued to a coefficient ("2pi x") or none is ("2*pi*x", "pi x").
std::optional<QString> printForBox(const gen& g, const Session& s, const Problem& problem)
{
    Printer glued(s, problem.variable, problem.decimals, true);
    std::optional<QString> text = glued.print(g);
    if (!text || glued.piCount == glued.gluedPi)
        return text;
    Printer plain(s, problem.variable, problem.decimals, false);
    return plain.print(g);
}

// --- the computation ----------------------------------------------------------------------

// Whether every name in g is the variable or pi: a formula such as 1/0 becomes infinity or
// undef, which has no derivative or primitive.
bool onlyKnownNames(const gen& g, const Session& s)
{
    if (g.type == giac::_IDNT)
        return g == s.x || g == giac::cst_pi;
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

gen primitive(const gen& f, Session& s)
{
    const gen result = giac::_integrate(giac::makesequence(f, s.x), s.ctx());
    if (giac::has_op(result, *giac::at_integrate))
        throw std::runtime_error("no elementary primitive found");
    return result;
}

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

bool hasAny(const gen& g, std::initializer_list<const giac::unary_function_ptr*> functions)
{
    return std::any_of(functions.begin(), functions.end(),
                       [&](const giac::unary_function_ptr* f) { return giac::has_op(g, *f); });
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

} // namespace

Answer solve(const Problem& problem)
{
    Answer answer;
    tQuiet = true;
    quietStandardStreams();
    try {
        Session& s = session();
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
        giac::vecteur tangents;
        halfAngleCalls(result, giac::at_tan, tangents);
        if (!tangents.empty())
            result = withoutHalfAngles(result, tangents, s);
        const bool halfAngles = hasHalfAngles(result);
        std::vector<gen> forms = equivalentForms(result, callsHyperbolic(problem.formula), s);
        if (!halfAngles)
            forms.erase(std::remove_if(forms.begin(), forms.end(), hasHalfAngles), forms.end());

        bool haveValues = false;
        for (const gen& form : forms) {
            checkInterrupt();
            if (!haveValues) {
                if (const auto values = sampleValues(form, s)) {
                    answer.values = *values;
                    haveValues = true;
                }
            }
            if (const auto text = printForBox(form, s, problem)) {
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
