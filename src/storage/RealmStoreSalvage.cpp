#include "storage/RealmStoreSalvage.h"

#include "platform/Logging.h"
#include "storage/RealmDatabase.h"

#include <QMap>

namespace {

// Rows of one table by rowid, read on a fresh handle each time: after a page fails its check
// the connection is in an error state for the rest of the transaction.
void readRows(const RealmConfiguration& damaged, const QString& sql, const QVariantList& bindings,
    QMap<qlonglong, RealmRow>& rows, qlonglong& lastRowId)
{
    try {
        const auto database = RealmDatabase::openKeyed(damaged);
        database->execute(QStringLiteral("BEGIN"));
        database->forEachRow(sql, bindings, [&](const RealmRow& row) {
            // A row whose text ran onto a page that failed its check came back with zeros in it.
            if (!database->isIntact())
                throw RealmError(RealmDatabase::unauthenticatedPage, RealmError::Kind::damaged);
            lastRowId = row.constFirst().toLongLong();
            rows.insert(lastRowId, row.mid(1));
        });
    } catch (const RealmError& error) {
        qCInfo(lcStorage) << "salvage stopped reading at" << lastRowId << ":" << error.localizedDescription();
    }
}

} // namespace

namespace RealmStoreSalvage {

int copyReadable(const RealmConfiguration& damaged, RealmDatabase& target)
{
    // Records of another schema version are not ours to reinterpret; that file stays aside whole.
    try {
        const quint64 version = RealmDatabase::openKeyed(damaged)
                                    ->query(QStringLiteral("PRAGMA user_version"))
                                    .constFirst()
                                    .constFirst()
                                    .toULongLong();
        if (version != damaged.schemaVersion)
            return 0;
    } catch (const RealmError&) {
        // A header that does not read says nothing; the tables may still.
    }

    int copied = 0;
    for (const RealmObjectType& type : damaged.objectTypes) {
        const QString columns = type.propertyNames().join(QStringLiteral(", "));
        const QString select = QStringLiteral("SELECT rowid, %1 FROM \"%2\"").arg(columns, type.name);
        QMap<qlonglong, RealmRow> rows;
        qlonglong forward = std::numeric_limits<qlonglong>::min();
        readRows(damaged, select + QStringLiteral(" ORDER BY rowid"), {}, rows, forward);
        qlonglong backward = std::numeric_limits<qlonglong>::max();
        readRows(damaged, select + QStringLiteral(" WHERE rowid > ? ORDER BY rowid DESC"), {forward}, rows, backward);
        if (rows.isEmpty())
            continue;

        QStringList marks;
        marks.fill(QStringLiteral("?"), type.propertyNames().size());
        const QString insert = QStringLiteral("INSERT OR IGNORE INTO \"%1\" (%2) VALUES (%3)")
                                   .arg(type.name, columns, marks.join(QStringLiteral(", ")));
        // In rowid order, so the records keep the order they were added in.
        target.write([&] {
            for (const RealmRow& row : std::as_const(rows)) {
                target.execute(insert, row);
                copied += target.changes();
            }
        });
    }
    return copied;
}

} // namespace RealmStoreSalvage
