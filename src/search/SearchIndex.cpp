#include "search/SearchIndex.h"

#include <algorithm>

int SearchResults::size() const
{
    int count = 0;
    for (const QList<SearchResult>& group : groups)
        count += int(group.size());
    return count;
}

SearchIndex::SearchIndex(QList<SearchItem> items)
    : m_items(std::move(items))
{
    m_folded.reserve(m_items.size());
    for (const SearchItem& item : std::as_const(m_items))
        m_folded.push_back(foldForSearch(item.text));
}

SearchResults SearchIndex::query(const QString& query, int limitPerKind)
{
    SearchResults results;
    const QStringList terms = searchTerms(query);
    const QString typed = foldForSearch(query).text.simplified();
    if (terms.isEmpty()) {
        m_lastFoldedQuery.clear();
        m_lastMatches.clear();
        return results;
    }
    // Every item matching the longer query matched the shorter one it extends: each of the old
    // words is part of a new one.
    const bool narrows = !m_lastFoldedQuery.isEmpty() && typed.startsWith(m_lastFoldedQuery);
    std::vector<int> candidates;
    if (narrows) {
        candidates = std::move(m_lastMatches);
    } else {
        candidates.resize(m_items.size());
        for (int i = 0; i < int(candidates.size()); ++i)
            candidates[i] = i;
    }
    std::vector<int> matched;
    matched.reserve(candidates.size());
    std::vector<SearchResult> found[std::size(allSearchKinds)];
    for (const int index : candidates) {
        const SearchItem& item = m_items.at(index);
        const SearchMatch match = matchFolded(m_folded[index], int(item.text.size()), terms, false);
        if (!match.matches)
            continue;
        matched.push_back(index);
        found[int(item.kind)].push_back({index, match.score, {}});
    }
    m_lastMatches = std::move(matched);
    m_lastFoldedQuery = typed;
    for (size_t kind = 0; kind < std::size(allSearchKinds); ++kind) {
        std::vector<SearchResult>& group = found[kind];
        results.totals[kind] = int(group.size());
        const auto better = [this](const SearchResult& a, const SearchResult& b) {
            if (a.score != b.score)
                return a.score > b.score;
            const SearchItem& left = m_items.at(a.itemIndex);
            const SearchItem& right = m_items.at(b.itemIndex);
            // Logbook entries and meets: the latest first; the rest by name.
            if (left.date != right.date)
                return left.date > right.date;
            const int order = m_folded[a.itemIndex].text.compare(m_folded[b.itemIndex].text);
            return order != 0 ? order < 0 : a.itemIndex < b.itemIndex;
        };
        const size_t kept = std::min(group.size(), size_t(std::max(0, limitPerKind)));
        std::partial_sort(group.begin(), group.begin() + qsizetype(kept), group.end(), better);
        // Where they matched, for the few shown only.
        for (size_t i = 0; i < kept; ++i) {
            SearchResult& shown = group[i];
            shown.highlights
                = matchFolded(m_folded[shown.itemIndex], int(m_items.at(shown.itemIndex).text.size()), terms)
                      .highlights;
            results.groups[kind].append(std::move(shown));
        }
    }
    return results;
}
