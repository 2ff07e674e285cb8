#pragma once

// The symbolic derivative and primitive: the text interface of the symbolic library
// (symbolic_calculate) and the procedures that build its requests and read its answers.

#include "eval/formula.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

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
    // Raised by the caller (from any thread) to give up: the waiting call interrupts the CAS
    // as a time-out would, within about 10 ms, and fails without reporting anything. A
    // caller that raised it simply drops whatever comes back; see wasCancelled.
    std::shared_ptr<const std::atomic_bool> cancel;
    // Stands in for symbolic_calculate when set (to watch requests or fake answers).
    SymbolicLibrary library;
    // The angle unit of the formula and the answer: 1 radians, 2 degrees, 3 gradians. In
    // degrees the derivative of sin(x) is ¶cos(x)/180.
    int angleUnit = 1;
    // Names the formula may use besides its variable (one letter, neither the variable nor
    // e): parameters, kept as symbols in the answer, so that the derivative of a*x^2 is
    // 2a*x. Answers write every product between names with "*".
    QStringList parameters;
};

// The text with its trigonometric functions written for radians, when it is meant in the
// angle unit (as in SymbolicOptions): in degrees "sin(x)" is "sin((¶/180)*(x))" and
// "atan(x)" is "(180/¶)*atan(x)". Unit 1 leaves the text as it is.
QString AngleTextInRadians(const QString& text, int angleUnit);

// Whether the call's cancel flag is up. A call that ends without an answer while it is up
// was cancelled and reported nothing about the calculation; one that ends without an answer
// while it is down failed and said why through its Report.
bool wasCancelled(const SymbolicOptions& options);

// The functions below block the calling thread, waiting for the CAS, for at most
// options.timeout. They touch no GUI object and may run on any thread (QtConcurrent, for
// one); their messages go only to the Report, called on the calling thread. Computations
// from several threads are queued and run one at a time.

// The library call. The request is "DIFF(formula,variable,order)" or "INT(formula,variable)",
// padded with blanks; formula is in the evaluator's language with "pi" for pi (and "pix" for
// pi times x). On success the result holds the answer in that language ("pi" for pi, "." as
// decimal point) followed by a NUL; an answer that does not fit in size characters fails.
// The computation runs on a worker thread, one at a time, for at most options.timeout;
// a time-out or a cancel returns 0.
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
