#include "app/help_search.h"

#include <QRegularExpression>

#include <algorithm>

namespace curvix::app {

namespace {

bool isWordChar(QChar c)
{
    return c.isLetterOrNumber();
}

bool beginsWord(const QString& text, qsizetype at)
{
    return at == 0 || !isWordChar(text.at(at - 1));
}

qsizetype endOfWord(const QString& text, qsizetype from)
{
    while (from < text.size() && isWordChar(text.at(from)))
        ++from;
    return from;
}

// The words in their order, each the beginning of a word of the text, with blanks or
// hyphens between them: "flood fill" also finds "flood-filling".
QRegularExpression phrasePattern(const QStringList& words)
{
    QStringList parts;
    for (const QString& word : words)
        parts << QRegularExpression::escape(word);
    return QRegularExpression(QStringLiteral("(?<![\\p{L}\\p{N}])") +
                                  parts.join(QStringLiteral("[\\p{L}\\p{N}]*[\\s\\-\\x{2010}\\x{2013}]+")),
                              QRegularExpression::UseUnicodePropertiesOption);
}

QList<TextSpan> phraseSpans(const QString& text, const QStringList& words)
{
    QList<TextSpan> spans;
    if (words.size() < 2)
        return spans;
    auto it = phrasePattern(words).globalMatch(text);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        const qsizetype start = match.capturedStart();
        spans.append({int(start), int(endOfWord(text, match.capturedEnd()) - start)});
    }
    return spans;
}

QList<TextSpan> wordSpans(const QString& text, const QString& word)
{
    QList<TextSpan> spans;
    for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1))
        if (beginsWord(text, at))
            spans.append({int(at), int(endOfWord(text, at + word.size()) - at)});
    return spans;
}

} // namespace

QString foldForSearch(const QString& text)
{
    QString folded = text;
    for (QChar& c : folded) {
        if (c.decompositionTag() == QChar::Canonical)
            c = c.decomposition().at(0);
        c = c.toLower();
    }
    return folded;
}

QStringList searchWords(const QString& typed)
{
    static const QRegularExpression gaps(QStringLiteral("[^\\p{L}\\p{N}]+"),
                                         QRegularExpression::UseUnicodePropertiesOption);
    return foldForSearch(typed).split(gaps, Qt::SkipEmptyParts);
}

HelpMatch matchText(const QString& foldedText, const QStringList& words)
{
    HelpMatch match;
    if (words.isEmpty())
        return match;
    for (const QString& word : words) {
        const auto n = int(wordSpans(foldedText, word).size());
        if (n == 0)
            return {};
        match.words += n;
    }
    match.phrases = int(phraseSpans(foldedText, words).size());
    match.kind = match.phrases > 0 ? HelpMatchKind::Phrase : HelpMatchKind::Words;
    return match;
}

bool answersBetter(const HelpMatch& a, const HelpMatch& b)
{
    if (a.kind != b.kind)
        return a.kind > b.kind;
    return a.phrases != b.phrases ? a.phrases > b.phrases : a.words > b.words;
}

QList<TextSpan> matchSpans(const QString& foldedText, const QStringList& words)
{
    QList<TextSpan> spans = phraseSpans(foldedText, words);
    const qsizetype phrases = spans.size();
    for (const QString& word : words)
        for (const TextSpan& span : wordSpans(foldedText, word)) {
            const bool inPhrase = std::any_of(spans.begin(), spans.begin() + phrases, [&](const TextSpan& p) {
                return span.start >= p.start && span.start < p.start + p.length;
            });
            if (!inPhrase && !spans.contains(span))
                spans.append(span);
        }
    std::sort(spans.begin(), spans.end(), [](const TextSpan& a, const TextSpan& b) { return a.start < b.start; });
    return spans;
}

} // namespace curvix::app
