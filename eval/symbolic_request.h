#pragma once

// Reading the symbolic library's requests ("DIFF(formula,x,1)", "INT(formula,x)") and the
// formula text in them; symbolic.cpp's helpers, apart for their size.

#include "eval/ast.h"
#include "eval/symbolic_cas.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace curvix::eval::symbolic_request {

struct Request {
    cas::Operation operation = cas::Operation::Derivative;
    QString formula;
    QString variable;
    int order = 1;
};

bool isAsciiLetter(QChar c);
// The request, or nothing when it is not one.
std::optional<Request> parseRequest(const QString& text);
// "pix" (the request's form of "¶x") as "pi*x", "pisin" as "pi*sin": runs of letters that are
// no name split into names (parameters among them: "pia" is pi*a).
QString splitGluedNames(const QString& formula, const QString& variable,
                        const QStringList& parameters = {});
// Whether a number in the tree was typed with a decimal point.
bool hasDecimals(const Node& node);

} // namespace curvix::eval::symbolic_request
