#pragma once

#include "storage/RealmConfiguration.h"
#include "storage/RealmError.h"

#include <QList>
#include <QVariant>

#include <functional>
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
    // What a store that another process holds for longer than the busy timeout answers.
    static inline const QString busyMessage = QStringLiteral("The data is in use by another Tolvane window; try again");

    // Opens and keys the store, creating its file and tables when they are missing, and checks
    // that the key reads the file.
    static std::shared_ptr<RealmDatabase> open(const RealmConfiguration& configuration);
    // Opens and keys an existing file without reading it: for salvaging what can still be read
    // from a damaged store.
    static std::shared_ptr<RealmDatabase> openKeyed(const RealmConfiguration& configuration);

    ~RealmDatabase();
    RealmDatabase(const RealmDatabase&) = delete;
    RealmDatabase& operator=(const RealmDatabase&) = delete;

    void execute(const QString& sql, const QVariantList& bindings = {});
    QList<RealmRow> query(const QString& sql, const QVariantList& bindings = {});
    // Hands over each row as soon as it is read, so that the rows before a failing one are kept.
    void forEachRow(
        const QString& sql, const QVariantList& bindings, const std::function<void(const RealmRow&)>& receive);
    // Rows changed by the last INSERT, UPDATE or DELETE.
    int changes() const;

    // Replaces everything destination holds with this store's pages, through SQLite's online
    // backup: the copy is one committed state of this store even while other connections write
    // to it, and other connections to destination see the replacement as one transaction. Both
    // handles must be keyed with the same key; the pages stay encrypted.
    void copyInto(RealmDatabase& destination);

    // Runs body in one write transaction (BEGIN IMMEDIATE ... COMMIT); an exception from body
    // rolls the transaction back and propagates.
    template <typename Body> decltype(auto) write(Body&& body)
    {
        return inTransaction(QStringLiteral("BEGIN IMMEDIATE"), std::forward<Body>(body));
    }

    // Runs body in one read transaction, so that all its reads see the same state of the file
    // and a page that failed its check anywhere in them is noticed.
    template <typename Body> decltype(auto) read(Body&& body)
    {
        return inTransaction(QStringLiteral("BEGIN"), std::forward<Body>(body));
    }

    // The text of a RealmError::Kind::damaged met as a page that failed its check.
    static inline const QString unauthenticatedPage
        = QStringLiteral("a page of the file failed its authentication check");

    // False when a page read in the current transaction failed SQLCipher's authentication check.
    // SQLCipher 3.4 hands such a page over as zeros and only marks the connection as failed
    // until the transaction ends, so a read can end "successfully" with wrong values (the end of
    // a long text, typically). The mark shows on the next page read, which this makes.
    bool isIntact();

    void beginWrite();
    void commitWrite();
    // Rolls back whatever transaction is open; nothing when none is.
    void cancelWrite();
    bool isInTransaction() const;

private:
    template <typename Body> decltype(auto) inTransaction(const QString& begin, Body&& body)
    {
        execute(begin);
        try {
            if constexpr (std::is_void_v<decltype(body())>) {
                body();
                finishTransaction();
            } else {
                auto value = body();
                finishTransaction();
                return value;
            }
        } catch (const RealmError& error) {
            // Checked before the rollback clears the mark of a failed page.
            const bool damaged = error.kind() == RealmError::Kind::other && !isIntact();
            cancelWrite();
            if (damaged)
                throw RealmError(error.localizedDescription(), RealmError::Kind::damaged);
            throw;
        } catch (...) {
            cancelWrite();
            throw;
        }
    }

    // Commits, unless a page read in the transaction failed its check.
    void finishTransaction();

    explicit RealmDatabase(sqlite3* connection);
    static std::shared_ptr<RealmDatabase> openExisting(const RealmConfiguration& configuration);
    void migrateSchema(const RealmConfiguration& configuration, quint64 fileVersion);

    sqlite3* m_connection;
};
