#pragma once

// Turns the fuzzer's bytes into the texts the entry points take.

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstdio>

namespace curvix::fuzz {

// The bytes as UTF-8 (a broken sequence becomes U+FFFD, as when pasting from elsewhere),
// so that "¶" and other non-ASCII characters are reachable.
inline QString textOf(const std::uint8_t* data, std::size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
}

// The text cut at line breaks into exactly n parts (missing parts are empty; the last part
// keeps any further line breaks).
inline QStringList partsOf(const QString& text, int n)
{
    QStringList parts;
    qsizetype from = 0;
    for (int i = 0; i < n - 1; ++i) {
        const qsizetype end = text.indexOf(QLatin1Char('\n'), from);
        if (end < 0) {
            parts << text.mid(from);
            from = text.size();
        } else {
            parts << text.mid(from, end - from);
            from = end + 1;
        }
    }
    parts << text.mid(from);
    return parts;
}

// A broken property: say which and stop, so that libFuzzer keeps the input.
[[noreturn]] inline void fail(const char* what, const QString& detail = QString())
{
    std::fprintf(stderr, "property broken: %s %s\n", what, qPrintable(detail));
    std::abort();
}

} // namespace curvix::fuzz
