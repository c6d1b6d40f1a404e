#include "search/SearchIndex.h"
#include "search/SearchText.h"
#include "support/TestMain.h"

#include <QTest>

namespace {

// The highlighted parts of text, joined with '|'.
QString highlighted(const QString& text, const QList<SearchHighlight>& highlights)
{
    QStringList parts;
    for (const SearchHighlight& piece : highlights)
        parts.append(text.mid(piece.start, piece.length));
    return parts.join(u'|');
}

SearchItem named(SearchKind kind, const QString& text, QDateTime date = {})
{
    SearchItem item;
    item.kind = kind;
    item.text = text;
    item.date = date;
    return item;
}

QStringList texts(const SearchIndex& index, const QList<SearchResult>& group)
{
    QStringList shown;
    for (const SearchResult& result : group)
        shown.append(index.item(result.itemIndex).text);
    return shown;
}

} // namespace

class SearchMatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Accents, case, the Spanish letters and several words: whether a text is found, and what of
    // the original text lights up.
    void matchesLikeAPersonReads_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("query");
        QTest::addColumn<bool>("matches");
        QTest::addColumn<QString>("lit");

        QTest::newRow("accent in text") << "Bitácora del lunes"
                                        << "bitacora" << true << "Bitácora";
        QTest::newRow("accent in query") << "Bitacora"
                                         << "BITÁCORA" << true << "Bitacora";
        QTest::newRow("upper case name") << "Llamar a Ana"
                                         << "ANA" << true << "Ana";
        QTest::newRow("eñe folds to n") << "Año nuevo en España"
                                        << "espana" << true << "España";
        QTest::newRow("eñe typed") << "Campaña de otoño"
                                   << "otoño" << true << "otoño";
        QTest::newRow("capital eñe") << "PEÑA"
                                     << "peña" << true << "PEÑA";
        QTest::newRow("diaeresis") << "Pingüino"
                                   << "pinguino" << true << "Pingüino";
        QTest::newRow("decomposed original keeps its accent lit")
            << QString::fromUtf8("cafe\xcc\x81 solo") << "cafe" << true << QString::fromUtf8("cafe\xcc\x81");
        QTest::newRow("every word must occur") << "Revisar presupuesto"
                                               << "presu rev" << true << "Rev|presu";
        QTest::newRow("a missing word fails") << "Revisar presupuesto"
                                              << "presu ana" << false << "";
        QTest::newRow("inside a word") << "Presupuesto"
                                       << "supu" << true << "supu";
        QTest::newRow("overlapping words lit once") << "Banana"
                                                    << "ban nan" << true << "Banan";
        QTest::newRow("spaces only") << "Anything"
                                     << "   " << false << "";
        QTest::newRow("no such text") << "Comprar pan"
                                      << "leche" << false << "";
        QTest::newRow("sharp s stays itself") << "Straße"
                                              << "strass" << false << "";
    }

    void matchesLikeAPersonReads()
    {
        QFETCH(QString, text);
        QFETCH(QString, query);
        QFETCH(bool, matches);
        QFETCH(QString, lit);
        const SearchMatch match = matchText(text, query);
        QCOMPARE(match.matches, matches);
        if (matches)
            QCOMPARE(highlighted(text, match.highlights), lit);
    }

    // A word that starts with what was typed beats a word that only contains it, the start of the
    // text beats both, and shorter texts win a tie.
    void ranksPrefixesOfWordsFirst()
    {
        SearchIndex index({named(SearchKind::task, "Reunión de presupuesto"),
            named(SearchKind::task, "Preparar la sala"), named(SearchKind::task, "Comprender"),
            named(SearchKind::task, "Presentar informe"), named(SearchKind::task, "Imprimir presentación final")});
        const SearchResults found = index.query("pre");
        QCOMPARE(texts(index, found.groups[int(SearchKind::task)]),
            QStringList({"Preparar la sala", "Presentar informe", "Reunión de presupuesto",
                "Imprimir presentación final", "Comprender"}));
        QCOMPARE(found.totals[int(SearchKind::task)], 5);
    }

    // Results come grouped by kind, each group cut at the limit while its total says how many
    // there are; the latest logbook entry of equal rank comes first.
    void groupsByKindWithinTheLimit()
    {
        QList<SearchItem> items;
        for (int i = 0; i < 20; ++i)
            items.append(named(SearchKind::task, QStringLiteral("Plan %1").arg(i, 2, 10, QChar('0'))));
        items.append(named(SearchKind::project, "Planta baja"));
        items.append(named(SearchKind::logbook, "Planificado", QDateTime(QDate(2026, 1, 5), QTime(12, 0))));
        items.append(named(SearchKind::logbook, "Planificado", QDateTime(QDate(2026, 3, 5), QTime(12, 0))));
        items.append(named(SearchKind::meet, "Sin relación"));
        SearchIndex index(items);
        const SearchResults found = index.query("plan", 5);
        QCOMPARE(texts(index, found.groups[int(SearchKind::project)]), QStringList({"Planta baja"}));
        QCOMPARE(found.groups[int(SearchKind::task)].size(), 5);
        QCOMPARE(found.totals[int(SearchKind::task)], 20);
        QCOMPARE(texts(index, found.groups[int(SearchKind::task)]).first(), QStringLiteral("Plan 00"));
        QCOMPARE(index.item(found.groups[int(SearchKind::logbook)].first().itemIndex).date.date(), QDate(2026, 3, 5));
        QVERIFY(found.groups[int(SearchKind::meet)].isEmpty());
        QCOMPARE(found.size(), 1 + 5 + 2);
    }

    // Typing on narrows the previous results, deleting widens them again, and a new query
    // starting elsewhere finds what the last one had left out.
    void typingOnAndBackAgreeWithAFreshQuery()
    {
        const QList<SearchItem> items {named(SearchKind::task, "Llamar a Ana"),
            named(SearchKind::task, "Anotar gastos"), named(SearchKind::task, "Banana split"),
            named(SearchKind::project, "Ánimo")};
        SearchIndex typing(items);
        for (const QString& query : QStringList {"a", "an", "ana", "ana ", "ana s", "ana", "an", "x", "ani"}) {
            SearchIndex fresh(items);
            const SearchResults expected = fresh.query(query);
            const SearchResults got = typing.query(query);
            for (const SearchKind kind : allSearchKinds)
                QCOMPARE(texts(typing, got.groups[int(kind)]), texts(fresh, expected.groups[int(kind)]));
        }
    }
};

TOLVANE_TEST_MAIN(SearchMatcherTest)
#include "SearchMatcherTest.moc"
