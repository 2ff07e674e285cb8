#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace curvix::app {

// The text as the manual's search compares it: small letters without accents, so that
// "Rutnat" finds "rutnät". Each character stays one character, so a position in the folded
// text is the same position in the original.
QString foldForSearch(const QString& text);

// The words of a search, folded; quotes are dropped, since the words are tried as a phrase
// anyway.
QStringList searchWords(const QString& typed);

enum class HelpMatchKind { None, Words, Phrase };

struct HelpMatch {
    HelpMatchKind kind = HelpMatchKind::None;
    int phrases = 0; // how often the words stand together
    int words = 0; // how often each word begins a word, summed
};

// How a page's text answers the words: as a phrase when they stand together in their order
// (each a word beginning, separated by blanks or hyphens), as words when each begins at
// least one word of the text, or not at all.
HelpMatch matchText(const QString& foldedText, const QStringList& words);

// Whether a page answers better than another: a phrase before words alone, then the more
// phrases, then the more words.
bool answersBetter(const HelpMatch& a, const HelpMatch& b);

struct TextSpan {
    int start = 0;
    int length = 0;
    bool operator==(const TextSpan&) const = default;
};

// The places to mark in a page for the words: the phrases, and the word beginnings outside
// them, in the order of the text.
QList<TextSpan> matchSpans(const QString& foldedText, const QStringList& words);

} // namespace curvix::app
