#pragma once

// The symbolic derivative and primitive: the text interface of the symbolic library
// (symbolic_calculate) and the procedures that build its requests and read its answers.

#include "eval/formula.h"

#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>

namespace curvix::eval {

// The request buffer's length (blank-padded, longer requests are cut) and the result
// buffer's capacity.
inline constexpr int kSymbolicRequestLength = 1000;
inline constexpr int kSymbolicResultSize = 2000;

// The library's signature: request text (NUL-terminated), result buffer, its capacity;
// >= 1 on success, < 1 on failure.
using SymbolicLibrary = std::function<std::int32_t(const char*, char*, std::int32_t)>;

struct SymbolicOptions {
    // How long one computation may take; then the CAS is interrupted and the call fails.
    std::chrono::milliseconds timeout{3000};
    // Called about every 10 ms on the calling thread while the CAS works, so that a window
    // can stay responsive, e.g. [] { QCoreApplication::processEvents(
    // QEventLoop::ExcludeUserInputEvents); }. It must not start another computation that it
    // then waits for.
    std::function<void()> whileWaiting;
    // Stands in for symbolic_calculate when set (to watch requests or fake answers).
    SymbolicLibrary library;
};

// The library call. The request is "DIFF(formula,variable,order)" or "INT(formula,variable)",
// padded with blanks; formula is in the evaluator's language with "pi" for pi (and "pix" for
// pi times x). On success the result holds the answer in that language ("pi" for pi, "." as
// decimal point) followed by a NUL; an answer that does not fit in size characters fails.
// The computation runs on a worker thread, one at a time, for at most options.timeout.
std::int32_t symbolic_calculate(const char* request, char* result, std::int32_t size,
                                const SymbolicOptions& options = {});

// The derivative of the given order (the menu passes 1) with "¶" for pi, or "" after
// reporting "too long expression" or "Error in derivative calculation".
QString SymbolicDerivative(const QString& formula, const QString& variable, qint16 order,
                           const Report& report, const SymbolicOptions& options = {});
// A primitive function, or "" after reporting "too long expression" or, for a failed
// calculation, "Error in calculation of primitive function" and then
// "Error in primitive calculation".
QString SymbolicPrimitive(const QString& formula, const QString& variable, const Report& report,
                          const SymbolicOptions& options = {});

// 1-based position of the first NUL character, 0 when there is none.
qint32 NulPosition(const QString& text);

// True exactly when SymbolicDerivative(source, variable, 1) gives candidate, character for
// character (a failed calculation reports as SymbolicDerivative does).
bool IsDerivativeOf(const QString& source, const QString& candidate, const QString& variable,
                    const Report& report, const SymbolicOptions& options = {});
// The same with SymbolicPrimitive.
bool IsPrimitiveOf(const QString& source, const QString& candidate, const QString& variable,
                   const Report& report, const SymbolicOptions& options = {});

} // namespace curvix::eval
