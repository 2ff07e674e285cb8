// Giac's trees in the function box's language: the printer.

#include "eval/symbolic_giac.h"

#include "eval/numtext.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <string>

namespace curvix::eval::cas::detail {

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

    int piCount = 0; // pi written anywhere
    int gluedPi = 0; // pi written right after a numeric coefficient ("2pi")

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
        if (isNumber(f.base) || isEuler(f.base) || m_session.parameterIndex(f.base) >= 0)
            return 1; // sqrt(3), e, a parameter: 2a*x
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
            if (const int p = m_session.parameterIndex(g); p >= 0)
                return m_session.parameterNames[p];
            throw Unprintable{};
        }
        if (isNumber(g))
            return number(g);
        if (g.type != giac::_SYMB)
            throw Unprintable{};
        if (isSymbOf(g, giac::at_plus))
            return u'(' + sum(g) + u')';
        if (isEuler(g))
            return QStringLiteral("e");
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

} // namespace curvix::eval::cas::detail
