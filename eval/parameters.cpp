#include "eval/parameters.h"

#include "eval/ast.h"
#include "eval/formula.h"

namespace curvix::eval {

namespace {

bool isAsciiLetter(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z');
}

// A run of letters as the formula's lexer reads a name; log10 is the one name with digits,
// and its "log" is a function name anyway.
struct NameToken {
    qsizetype start = 0;
    qsizetype length = 0;
};

std::vector<NameToken> nameTokens(const QString& text)
{
    std::vector<NameToken> tokens;
    for (qsizetype i = 0; i < text.size();) {
        if (!isAsciiLetter(text[i])) {
            ++i;
            continue;
        }
        const qsizetype start = i;
        while (i < text.size() && isAsciiLetter(text[i]))
            ++i;
        tokens.push_back({start, i - start});
    }
    return tokens;
}

bool isReservedName(QStringView name)
{
    return functionByName(name).has_value() || name == u"pi";
}

// Whether a function's name or pi lies inside a longer name: "xsin" is a function written
// without its "*", not the product x·s·i·n.
bool hidesReservedName(QStringView name)
{
    for (qsizetype start = 0; start < name.size(); ++start) {
        for (qsizetype length = 2; start + length <= name.size(); ++length) {
            if (isReservedName(name.mid(start, length)))
                return true;
        }
    }
    return false;
}

// A name that is a product of the variable and declared parameters, one at least of them.
bool isParameterProduct(QStringView name, const QString& variable, const ParameterList& parameters)
{
    if (isReservedName(name))
        return false;
    bool anyParameter = false;
    for (QChar c : name) {
        const QString letter(c);
        if (parameterIndex(parameters, letter) >= 0)
            anyParameter = true;
        else if (letter != variable)
            return false;
    }
    return anyParameter;
}

// Whether the name stands right before "(" (blanks between): there it looks like a call.
bool beforeParenthesis(const QString& text, const NameToken& token)
{
    qsizetype i = token.start + token.length;
    while (i < text.size() && text[i].isSpace())
        ++i;
    return i < text.size() && text[i] == u'(';
}

} // namespace

bool isParameterName(const QString& name, const QString& variable)
{
    return name.size() == 1 && name[0].unicode() >= 'a' && name[0].unicode() <= 'z' &&
           name != variable && name != u"e";
}

int parameterIndex(const ParameterList& parameters, const QString& name)
{
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i].name == name)
            return int(i);
    }
    return -1;
}

QStringList parameterNames(const ParameterList& parameters)
{
    QStringList names;
    for (const Parameter& p : parameters)
        names << p.name;
    return names;
}

QString splitParameterProducts(const QString& text, const QString& variable,
                               const ParameterList& parameters)
{
    if (parameters.empty())
        return text;
    QString result;
    qsizetype done = 0;
    for (const NameToken& token : nameTokens(text)) {
        const QStringView name = QStringView(text).mid(token.start, token.length);
        if (token.length < 2 || !isParameterProduct(name, variable, parameters))
            continue;
        result += QStringView(text).mid(done, token.start - done);
        for (qsizetype i = 0; i < name.size(); ++i) {
            if (i > 0)
                result += u'*';
            result += name[i];
        }
        done = token.start + token.length;
    }
    return result.append(QStringView(text).mid(done));
}

QStringList parametersUsedBy(const QString& text, const QString& variable,
                             const ParameterList& parameters)
{
    std::vector<bool> used(parameters.size(), false);
    for (const NameToken& token : nameTokens(text)) {
        const QStringView name = QStringView(text).mid(token.start, token.length);
        if (!isParameterProduct(name, variable, parameters))
            continue;
        for (QChar c : name) {
            if (const int k = parameterIndex(parameters, QString(c)); k >= 0)
                used[std::size_t(k)] = true;
        }
    }
    QStringList names;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (used[i])
            names << parameters[i].name;
    }
    return names;
}

QStringList undeclaredLetters(const QString& text, const QString& variable,
                              const ParameterList& parameters)
{
    QStringList letters;
    for (const NameToken& token : nameTokens(text)) {
        const QStringView name = QStringView(text).mid(token.start, token.length);
        if (isReservedName(name) || name == u"e")
            continue;
        // A longer unknown name before "(", or one with a function's name in it, is a
        // misspelt function, not a product.
        if (name.size() > 1 && (beforeParenthesis(text, token) || hidesReservedName(name)))
            return {};
        for (QChar c : name) {
            const QString letter(c);
            // e inside a name is Euler's number; the trial compile below judges it.
            if (letter == variable || letter == u"e" || parameterIndex(parameters, letter) >= 0 ||
                letters.contains(letter))
                continue;
            if (!isParameterName(letter, variable))
                return {};
            letters << letter;
        }
    }
    if (letters.isEmpty())
        return {};
    ParameterList declared = parameters;
    for (const QString& letter : letters)
        declared.push_back(Parameter{letter});
    ExpressionEvaluator evaluator;
    const QString label = QStringLiteral("f(%1)").arg(variable);
    if (PrepareExpressionText(evaluator, text, label, {}, QLocale(), declared).isEmpty())
        return {};
    return letters;
}

} // namespace curvix::eval
