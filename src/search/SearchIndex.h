#pragma once

#include "search/SearchItem.h"
#include "search/SearchText.h"

#include <QList>
#include <QStringList>

#include <vector>

// One found item: where it is in the index, how well it matched and what to highlight.
struct SearchResult {
    int itemIndex = -1;
    int score = 0;
    QList<SearchHighlight> highlights;
};

struct SearchResults {
    // Per kind, in allSearchKinds' order; best first, at most the limit asked for.
    QList<SearchResult> groups[std::size(allSearchKinds)];
    // Per kind, how many matched in all.
    int totals[std::size(allSearchKinds)] = {};

    int size() const;
};

// The searchable items with their folded text. It lives in memory only: nothing of it is ever
// written to disk, because it holds the plain text of stores that are kept encrypted. Built off
// the GUI thread, then queried on it: a query reads the index without changing it, except for
// the narrowing cache below, so one index is queried from one thread at a time.
class SearchIndex {
public:
    SearchIndex() = default;
    explicit SearchIndex(QList<SearchItem> items);

    const QList<SearchItem>& items() const { return m_items; }
    const SearchItem& item(int index) const { return m_items.at(index); }

    // The items matching every word of query, grouped by kind. Typing on narrows: a query that
    // extends the previous one only looks among what that one matched.
    SearchResults query(const QString& query, int limitPerKind = 8);

private:
    QList<SearchItem> m_items;
    std::vector<FoldedText> m_folded;
    QStringList m_lastTerms;
    QString m_lastFoldedQuery;
    std::vector<int> m_lastMatches;
};
