// The symbolic interface without the computer algebra (cas_stub.cpp answers instead):
// - the library call reads any request text ("DIFF(formula,variable,order)",
//   "INT(formula,variable)"), splits glued names such as "pix" and parses the formula;
// - the derivative and primitive procedures build requests from any formula and variable
//   and read any answer the library gives back.
// Input: formula, variable and answer on the first three lines; the first byte picks the
// procedure and whether the library succeeds.

#include "fuzz_text.h"

#include "eval/symbolic.h"

#include <QByteArray>

#include <cstring>
#include <vector>

using namespace curvix::eval;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::uint8_t mode = data[0];

    // The raw request, as the library receives it: Latin-1 bytes up to the first NUL.
    {
        std::vector<char> request(data + 1, data + size);
        request.push_back('\0');
        char result[kSymbolicResultSize];
        const std::int32_t ok = symbolic_calculate(request.data(), result, sizeof result);
        if (ok >= 1)
            curvix::fuzz::fail("the stand-in algebra cannot succeed");
        if (result[0] != '\0')
            curvix::fuzz::fail("a failed call left a result");
    }

    const QStringList parts = curvix::fuzz::partsOf(curvix::fuzz::textOf(data + 1, size - 1), 3);
    const QString& formula = parts[0];
    const QString& variable = parts[1];
    const QByteArray answer = parts[2].toLatin1();

    SymbolicOptions options;
    options.library = [&](const char* request, char* result, std::int32_t capacity) {
        if (!request || std::strlen(request) > std::size_t(kSymbolicRequestLength))
            curvix::fuzz::fail("a request longer than the request buffer");
        if (capacity < 1)
            curvix::fuzz::fail("no room for the result");
        const qsizetype n = std::min<qsizetype>(answer.size(), capacity - 1);
        std::memcpy(result, answer.constData(), std::size_t(n));
        result[n] = '\0';
        return std::int32_t((mode & 2) ? 1 : 0);
    };
    int reports = 0;
    const Report report = [&](const QString&) { ++reports; };
    const QString found = (mode & 1)
                              ? SymbolicPrimitive(formula, variable, report, options)
                              : SymbolicDerivative(formula, variable, qint16(1 + (mode >> 2)),
                                                   report, options);
    if (!(mode & 2) && (!found.isEmpty() || reports == 0))
        curvix::fuzz::fail("a failed calculation without its report", formula);
    return 0;
}
