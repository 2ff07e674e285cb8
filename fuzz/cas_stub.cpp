// Stands in for the computer-algebra side (symbolic_cas.cpp) in the symbolic fuzz target, so
// that the request is read, split and parsed in full while Giac is never called.

#include "eval/symbolic_cas.h"

namespace curvix::eval::cas {

Answer solve(const Problem&)
{
    Answer answer;
    answer.failure = QStringLiteral("no computer algebra in the fuzz target");
    return answer;
}

void interrupt() {}
void clearInterrupt() {}

} // namespace curvix::eval::cas
