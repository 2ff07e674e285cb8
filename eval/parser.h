#pragma once

#include "eval/ast.h"
#include "eval/evaluator.h"

#include <QString>
#include <QStringList>

namespace curvix::eval {

struct ParseResult {
    Node tree;          // meaningful only when ok()
    CompileError error; // Code::None on success
    QString message;    // e.g. "Unknown name 'xsin' at position 3"; empty on success
    bool ok() const { return error.code == CompileError::Code::None; }
};

// Parses a formula in the evaluator's language. A name in variables is a variable; its
// Node::variable is its index in the list. Functions and pi take precedence over variables.
ParseResult parseFormula(const QString& text, const QStringList& variables);

} // namespace curvix::eval
