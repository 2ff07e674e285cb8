#include "eval/symbolic_request.h"

#include "eval/formula.h"
#include "eval/parser.h"
#include "eval/symbolic.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace curvix::eval {

namespace symbolic_request {

// --- reading a request --------------------------------------------------------------------

bool isAsciiLetter(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z');
}

std::optional<Request> parseRequest(const QString& text)
{
    const QString request = text.trimmed();
    Request parsed;
    QString body;
    if (request.startsWith(QLatin1String("DIFF(")) && request.endsWith(u')')) {
        body = request.mid(5, request.size() - 6);
        const qsizetype comma = body.lastIndexOf(u',');
        if (comma < 0)
            return std::nullopt;
        const QString order = body.mid(comma + 1);
        if (order.isEmpty() || order.size() > 5 ||
            !std::all_of(order.begin(), order.end(), [](QChar c) { return c.isDigit(); }))
            return std::nullopt;
        parsed.order = order.toInt();
        if (parsed.order > 32767)
            return std::nullopt;
        body.truncate(comma);
    } else if (request.startsWith(QLatin1String("INT(")) && request.endsWith(u')')) {
        parsed.operation = cas::Operation::Primitive;
        body = request.mid(4, request.size() - 5);
    } else {
        return std::nullopt;
    }
    const qsizetype comma = body.lastIndexOf(u',');
    if (comma < 0)
        return std::nullopt;
    parsed.variable = body.mid(comma + 1);
    parsed.formula = body.left(comma);
    if (parsed.variable.size() != 1 || !isAsciiLetter(parsed.variable[0]))
        return std::nullopt;
    return parsed;
}

bool isKnownName(const QString& name, const QString& variable, const QStringList& parameters)
{
    return functionByName(name) || name == u"pi" || name == variable || name == u"e" ||
           parameters.contains(name);
}

// A run of letters that is no name but a product of names: "pix" (the request's form of
// "¶x") is pi times x, "pisin" pi times sin. A function name can only end the run.
std::optional<QStringList> splitRun(const QString& run, const QString& variable,
                                    const QStringList& parameters)
{
    const int n = int(run.size());
    // from[i]: the piece that ends a split of run[0, i), or empty when there is none.
    std::vector<QString> from(std::size_t(n) + 1);
    std::vector<bool> reachable(std::size_t(n) + 1, false);
    reachable[0] = true;
    const QStringList names =
        QStringList{QStringLiteral("pi"), variable, QStringLiteral("e")} + parameters;
    for (int i = 0; i < n; ++i) {
        if (!reachable[std::size_t(i)])
            continue;
        for (const QString& piece : names) {
            const int end = i + int(piece.size());
            if (end <= n && QStringView(run).mid(i, piece.size()) == piece &&
                !reachable[std::size_t(end)]) {
                reachable[std::size_t(end)] = true;
                from[std::size_t(end)] = piece;
            }
        }
        const QString rest = run.mid(i);
        if (functionByName(rest) && !reachable[std::size_t(n)]) {
            reachable[std::size_t(n)] = true;
            from[std::size_t(n)] = rest;
        }
    }
    if (!reachable[std::size_t(n)])
        return std::nullopt;
    QStringList pieces;
    for (int end = n; end > 0; end -= int(from[std::size_t(end)].size()))
        pieces.prepend(from[std::size_t(end)]);
    return pieces;
}

QString splitGluedNames(const QString& formula, const QString& variable,
                        const QStringList& parameters)
{
    QString out;
    const int n = int(formula.size());
    int i = 0;
    while (i < n) {
        if (!isAsciiLetter(formula[i])) {
            out += formula[i++];
            continue;
        }
        int j = i;
        while (j < n && isAsciiLetter(formula[j]))
            ++j;
        const QString run = formula.mid(i, j - i);
        const std::optional<QStringList> pieces =
            isKnownName(run, variable, parameters) ? std::nullopt
                                                   : splitRun(run, variable, parameters);
        out += pieces ? pieces->join(u'*') : run;
        i = j;
    }
    return out;
}

bool hasDecimals(const Node& node)
{
    if (node.kind == Node::Kind::Number && node.text.contains(u'.'))
        return true;
    return std::any_of(node.args.begin(), node.args.end(), hasDecimals);
}

// The index just past the parenthesis that closes the one at open, or -1.
qsizetype closingParenthesis(const QString& text, qsizetype open)
{
    int depth = 0;
    for (qsizetype i = open; i < text.size(); ++i) {
        if (text[i] == u'(')
            ++depth;
        else if (text[i] == u')' && --depth == 0)
            return i + 1;
    }
    return -1;
}


} // namespace symbolic_request

QString AngleTextInRadians(const QString& text, int angleUnit)
{
    using symbolic_request::closingParenthesis;
    using symbolic_request::isAsciiLetter;
    if (angleUnit != 2 && angleUnit != 3)
        return text;
    const QString size = angleUnit == 2 ? QStringLiteral("180") : QStringLiteral("200");
    static const QStringList direct{QStringLiteral("sin"), QStringLiteral("cos"),
                                    QStringLiteral("tan")};
    static const QStringList inverse{QStringLiteral("asin"), QStringLiteral("acos"),
                                     QStringLiteral("atan")};
    QString out;
    qsizetype i = 0;
    while (i < text.size()) {
        qsizetype j = i;
        while (j < text.size() && isAsciiLetter(text[j]))
            ++j;
        if (j == i) {
            out += text[i++];
            continue;
        }
        const QString name = text.mid(i, j - i);
        const qsizetype end = j < text.size() && text[j] == u'(' ? closingParenthesis(text, j) : -1;
        if (end < 0 || (!direct.contains(name) && !inverse.contains(name))) {
            out += name;
            i = j;
            continue;
        }
        const QString inner = AngleTextInRadians(text.mid(j + 1, end - j - 2), angleUnit);
        if (direct.contains(name))
            out += QStringLiteral("%1((%2/%3)*(%4))").arg(name, QString(kPiChar), size, inner);
        else
            out += QStringLiteral("(%1/%2)*%3(%4)").arg(size, QString(kPiChar), name, inner);
        i = end;
    }
    return out;
}

} // namespace curvix::eval
