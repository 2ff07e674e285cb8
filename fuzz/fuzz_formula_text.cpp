// The text procedures: RewriteLog10, MatchingParenPosition and the label's variable name.

#include "fuzz_text.h"

#include "eval/formula.h"

#include <algorithm>

using namespace curvix::eval;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = curvix::fuzz::textOf(data, size);

    // A found ")" stands where the position says; without one the position falls through
    // to the last character (1 for an empty text).
    const int close = MatchingParenPosition(text);
    if (close < 1 || close > std::max<qsizetype>(text.size(), 1))
        curvix::fuzz::fail("paren position outside the text", text);
    if (close < text.size() && text[close - 1] != QLatin1Char(')'))
        curvix::fuzz::fail("paren position not at a ')'", text);

    const QString rewritten = RewriteLog10(text);
    if (!text.contains(QStringLiteral("log10")) && rewritten != text)
        curvix::fuzz::fail("a text without log10 changed", text);

    const QString variable = VariableNameFromLabel(text);
    if (variable.size() > 1)
        curvix::fuzz::fail("a variable name of more than one character", text);
    return 0;
}
