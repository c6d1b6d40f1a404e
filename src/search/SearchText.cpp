#include "search/SearchText.h"

#include <algorithm>

namespace {

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber();
}

// Appends the folded form of one non-ASCII character (or surrogate pair) at original index at.
void foldUnusual(QStringView piece, int at, QString& out, QList<int>& origin)
{
    const QString decomposed = piece.toString().normalized(QString::NormalizationForm_D);
    for (int i = 0; i < decomposed.size(); ++i) {
        const QChar c = decomposed.at(i);
        const QChar::Category category = c.category();
        if (category == QChar::Mark_NonSpacing || category == QChar::Mark_SpacingCombining
            || category == QChar::Mark_Enclosing)
            continue;
        if (c.isHighSurrogate() && i + 1 < decomposed.size()) {
            out.append(c);
            out.append(decomposed.at(++i));
            origin.append(at);
            origin.append(at + int(piece.size()) - 1);
            continue;
        }
        out.append(c.toCaseFolded());
        origin.append(at);
    }
}

} // namespace

FoldedText foldForSearch(QStringView original)
{
    FoldedText folded;
    folded.text.reserve(original.size());
    QList<int> origin;
    origin.reserve(original.size());
    const int size = int(original.size());
    for (int i = 0; i < size; ++i) {
        const QChar c = original.at(i);
        if (c.unicode() < 0x80) {
            const char16_t u = c.unicode();
            folded.text.append(QChar(u >= 'A' && u <= 'Z' ? char16_t(u + 32) : u));
            origin.append(i);
            continue;
        }
        const int length = (c.isHighSurrogate() && i + 1 < size && original.at(i + 1).isLowSurrogate()) ? 2 : 1;
        foldUnusual(original.mid(i, length), i, folded.text, origin);
        i += length - 1;
    }
    bool identity = origin.size() == size;
    for (int i = 0; identity && i < origin.size(); ++i)
        identity = origin.at(i) == i;
    if (!identity)
        folded.origin = std::move(origin);
    return folded;
}

QStringList searchTerms(QStringView query)
{
    QStringList terms;
    const QString folded = foldForSearch(query).text.simplified();
    for (const QStringView word : QStringView(folded).split(u' ', Qt::SkipEmptyParts)) {
        const QString term = word.toString();
        if (!terms.contains(term))
            terms.append(term);
    }
    // Longer terms first: a short one that lies inside a longer one is highlighted with it.
    std::stable_sort(
        terms.begin(), terms.end(), [](const QString& a, const QString& b) { return a.size() > b.size(); });
    return terms;
}

SearchMatch matchFolded(const FoldedText& folded, int originalLength, const QStringList& terms, bool highlights)
{
    SearchMatch match;
    if (terms.isEmpty())
        return match;
    const QStringView text(folded.text);
    QList<SearchHighlight> found;
    int score = 0;
    for (const QString& term : terms) {
        qsizetype first = text.indexOf(term);
        if (first < 0)
            return match;
        // The first occurrence that starts a word, if any.
        qsizetype at = first;
        while (at > 0 && isWordCharacter(text.at(at - 1)))
            at = text.indexOf(term, at + 1);
        const bool startsWord = at >= 0;
        if (!startsWord)
            at = first;
        score += at == 0 ? 300 : (startsWord ? 200 : 100);
        if (!highlights)
            continue;
        const int start = folded.originOf(int(at));
        const int lastFolded = int(at + term.size() - 1);
        // Up to where the next folded character starts, so that the accents of a decomposed
        // original and every part of a character that folded into several are included.
        int end = folded.originOf(lastFolded) + 1;
        if (lastFolded + 1 < folded.text.size())
            end = std::max(end, folded.originOf(lastFolded + 1));
        else
            end = originalLength;
        found.append({start, end - start});
    }
    std::sort(found.begin(), found.end(), [](const SearchHighlight& a, const SearchHighlight& b) {
        return a.start < b.start || (a.start == b.start && a.length > b.length);
    });
    for (const SearchHighlight& piece : std::as_const(found)) {
        if (!match.highlights.isEmpty()) {
            SearchHighlight& last = match.highlights.last();
            if (piece.start <= last.start + last.length) {
                last.length = std::max(last.length, piece.start + piece.length - last.start);
                continue;
            }
        }
        match.highlights.append(piece);
    }
    match.matches = true;
    // Every term's quality first, then how much of the text the query covers.
    match.score = score * 1000 + std::max(0, 999 - std::min(999, originalLength));
    return match;
}

SearchMatch matchText(QStringView original, QStringView query)
{
    return matchFolded(foldForSearch(original), int(original.size()), searchTerms(query));
}
