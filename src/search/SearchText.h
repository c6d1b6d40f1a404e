#pragma once

#include <QList>
#include <QString>
#include <QStringView>

// Text as search compares it: decomposed, without its accents and case-folded, so that
// "bitacora" finds "Bitácora" and "nino" finds "Niño". Each folded character remembers which
// character of the original it came from, so that a match can be shown on the original text.
struct FoldedText {
    QString text;
    // origin[i]: the index in the original of text[i]; empty when that is i itself (the usual
    // case: plain and precomposed letters fold one to one).
    QList<int> origin;

    int originOf(int foldedIndex) const { return origin.isEmpty() ? foldedIndex : origin.at(foldedIndex); }
};

FoldedText foldForSearch(QStringView original);

// A highlighted stretch of the original text.
struct SearchHighlight {
    int start = 0;
    int length = 0;

    friend bool operator==(const SearchHighlight&, const SearchHighlight&) = default;
};

// How well a query matches one text, and where.
struct SearchMatch {
    bool matches = false;
    // Higher is better.
    int score = 0;
    // In the original text, sorted by start, not overlapping.
    QList<SearchHighlight> highlights;
};

// The query's words, folded. Empty words are dropped.
QStringList searchTerms(QStringView query);

// Every term must occur in the text. A term that starts a word of the text ranks above one found
// inside a word; one that starts the text ranks higher still; among equals, shorter texts rank
// higher (the match is a larger part of them).
// highlights: whether to say where (a ranking alone does not need to know).
SearchMatch matchFolded(const FoldedText& folded, int originalLength, const QStringList& terms, bool highlights = true);
SearchMatch matchText(QStringView original, QStringView query);
