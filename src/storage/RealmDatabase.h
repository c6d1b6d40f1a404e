#pragma once

#include "storage/RealmConfiguration.h"
#include "storage/RealmError.h"

#include <QList>
#include <QVariant>

#include <memory>

struct sqlite3;

using RealmRow = QVariantList;

// An open, keyed handle on one encrypted store file. It belongs to the thread that opened it
// and lives for one repository operation. Every failure throws RealmError.
//
// Values bind and read as: QString <-> TEXT, QByteArray <-> BLOB, bool and integers -> INTEGER
// (read back as qlonglong), double <-> REAL, a null QVariant <-> NULL.
class RealmDatabase {
public:
    static std::shared_ptr<RealmDatabase> open(const RealmConfiguration& configuration);
    static void deleteFiles(const RealmConfiguration& configuration);

    ~RealmDatabase();
    RealmDatabase(const RealmDatabase&) = delete;
    RealmDatabase& operator=(const RealmDatabase&) = delete;

    void execute(const QString& sql, const QVariantList& bindings = {});
    QList<RealmRow> query(const QString& sql, const QVariantList& bindings = {});
    // Rows changed by the last INSERT, UPDATE or DELETE.
    int changes() const;

    // Runs body in one write transaction (BEGIN IMMEDIATE ... COMMIT); an exception from body
    // rolls the transaction back and propagates.
    template <typename Body> decltype(auto) write(Body&& body)
    {
        beginWrite();
        try {
            if constexpr (std::is_void_v<decltype(body())>) {
                body();
                commitWrite();
            } else {
                auto value = body();
                commitWrite();
                return value;
            }
        } catch (...) {
            cancelWrite();
            throw;
        }
    }

    void beginWrite();
    void commitWrite();
    // Rolls back whatever transaction is open; nothing when none is.
    void cancelWrite();
    bool isInTransaction() const;

private:
    explicit RealmDatabase(sqlite3* connection);
    void migrateSchema(const RealmConfiguration& configuration, quint64 fileVersion);

    sqlite3* m_connection;
};
