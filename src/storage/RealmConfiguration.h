#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

class RealmDatabase;
struct RealmConfiguration;

// A stored record type: one table named after the type, with its column definitions
// (for example "prjId TEXT PRIMARY KEY NOT NULL, prjName TEXT NOT NULL").
struct RealmObjectType {
    QString name;
    QString columns;
    // Columns looked up often enough to be worth an index each.
    QStringList indexedColumns = {};

    // The column names in table order; the first one is the primary key.
    QStringList propertyNames() const;
};

// Runs inside the opening write transaction when the file's schema version is older than the
// configuration's; receives the old version.
using RealmMigrationBlock = std::function<void(RealmDatabase& database, quint64 oldSchemaVersion)>;

// Runs before an existing file is migrated to a newer schema version, outside any transaction,
// so that a copy of the file as it was can be kept; a RealmError it throws stops the migration.
using RealmBeforeMigrationBlock
    = std::function<void(const RealmConfiguration& configuration, quint64 oldSchemaVersion)>;

// Told, on the migrating thread, when the migration of an existing file begins (true, before
// the beforeMigration block) and when it has ended (false), however it ended: what a progress
// display follows. It must not throw, nor wait for the thread that shows the display.
using RealmMigrationWatch = std::function<void(bool running)>;

// Everything needed to open one encrypted store file.
struct RealmConfiguration {
    std::optional<QString> fileURL;
    QByteArray encryptionKey;
    bool readOnly = false;
    quint64 schemaVersion = 0;
    RealmMigrationBlock migrationBlock;
    RealmBeforeMigrationBlock beforeMigration;
    RealmMigrationWatch migrationWatch;
    bool deleteRealmIfMigrationNeeded = false;
    QList<RealmObjectType> objectTypes;

    // The stores' default location: "default.realm" in Tolvane's data directory.
    static RealmConfiguration defaultConfiguration();

    // The file and the files SQLite keeps beside it.
    QStringList files() const;
};
