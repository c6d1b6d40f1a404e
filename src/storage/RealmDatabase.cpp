#include "storage/RealmDatabase.h"

#include "platform/Logging.h"
#include "storage/StoreFolderLock.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <openssl/crypto.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qsizetype keyLength = 64;
// SQLCipher takes a raw 256-bit key; the first half of the 64 stored bytes.
constexpr qsizetype rawKeyLength = 32;
constexpr int busyTimeoutMilliseconds = 5000;

QString errorText(sqlite3* connection)
{
    return QString::fromUtf8(sqlite3_errmsg(connection));
}

// The connection's last error as a RealmError of the kind its code says.
RealmError failureOf(sqlite3* connection)
{
    switch (sqlite3_extended_errcode(connection) & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        // Another process holds the file longer than the busy timeout: the records are fine.
        return RealmError(RealmDatabase::busyMessage, RealmError::Kind::busy);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return RealmError(errorText(connection), RealmError::Kind::damaged);
    default:
        return RealmError(errorText(connection));
    }
}

qint64 fileSize(const QString& path)
{
    struct stat info { };
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? qint64(info.st_size) : -1;
}

QString systemErrorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// New store files are created owner-only before SQLite opens them; SQLite gives its journal
// files the mode of the main file.
void createOwnerOnlyFile(const QString& path)
{
    const QByteArray native = QFile::encodeName(path);
    const int fd = ::open(native.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd >= 0) {
        ::close(fd);
        return;
    }
    if (errno != EEXIST)
        throw RealmError(QStringLiteral("Unable to open a realm at path '%1': %2").arg(path, systemErrorText(errno)));
}

class Statement {
public:
    Statement(sqlite3* connection, const QString& sql)
        : m_connection(connection)
    {
        const QByteArray text = sql.toUtf8();
        if (sqlite3_prepare_v2(connection, text.constData(), int(text.size()), &m_statement, nullptr) != SQLITE_OK)
            throw failureOf(connection);
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void bind(const QVariantList& values)
    {
        for (int i = 0; i < values.size(); ++i)
            bindOne(i + 1, values.at(i));
    }

    // True while there is a row to read.
    bool step()
    {
        const int status = sqlite3_step(m_statement);
        if (status == SQLITE_ROW)
            return true;
        if (status == SQLITE_DONE)
            return false;
        throw failureOf(m_connection);
    }

    RealmRow row() const
    {
        RealmRow values;
        const int count = sqlite3_column_count(m_statement);
        values.reserve(count);
        for (int column = 0; column < count; ++column)
            values.append(columnValue(column));
        return values;
    }

private:
    void bindOne(int index, const QVariant& value)
    {
        int status = SQLITE_OK;
        if (value.isNull()) {
            status = sqlite3_bind_null(m_statement, index);
        } else {
            switch (value.metaType().id()) {
            case QMetaType::Bool:
            case QMetaType::Int:
            case QMetaType::UInt:
            case QMetaType::LongLong:
            case QMetaType::ULongLong:
                status = sqlite3_bind_int64(m_statement, index, value.toLongLong());
                break;
            case QMetaType::Double:
            case QMetaType::Float:
                status = sqlite3_bind_double(m_statement, index, value.toDouble());
                break;
            case QMetaType::QByteArray: {
                const QByteArray bytes = value.toByteArray();
                status = sqlite3_bind_blob64(
                    m_statement, index, bytes.constData(), sqlite3_uint64(bytes.size()), SQLITE_TRANSIENT);
                break;
            }
            default: {
                // UTF-8 has no form for a lone surrogate; it would come back as "?".
                const QString string = value.toString();
                if (!string.isValidUtf16())
                    throw RealmError(QStringLiteral("Text with an unpaired surrogate cannot be stored"));
                const QByteArray text = string.toUtf8();
                status = sqlite3_bind_text64(
                    m_statement, index, text.constData(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
                break;
            }
            }
        }
        if (status != SQLITE_OK)
            throw failureOf(m_connection);
    }

    QVariant columnValue(int column) const
    {
        switch (sqlite3_column_type(m_statement, column)) {
        case SQLITE_INTEGER:
            return qlonglong(sqlite3_column_int64(m_statement, column));
        case SQLITE_FLOAT:
            return sqlite3_column_double(m_statement, column);
        case SQLITE_TEXT:
            return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column)),
                sqlite3_column_bytes(m_statement, column));
        case SQLITE_BLOB:
            return QByteArray(static_cast<const char*>(sqlite3_column_blob(m_statement, column)),
                sqlite3_column_bytes(m_statement, column));
        default:
            return QVariant();
        }
    }

    sqlite3* m_connection;
    sqlite3_stmt* m_statement = nullptr;
};

} // namespace

std::shared_ptr<RealmDatabase> RealmDatabase::open(const RealmConfiguration& configuration)
{
    if (configuration.encryptionKey.size() != keyLength)
        throw RealmError(QStringLiteral("Encryption key must be 64 bytes."));

    const QString path = configuration.files().constFirst();
    if (!configuration.readOnly)
        createOwnerOnlyFile(path);
    if (fileSize(path) > 0)
        return openExisting(configuration);
    // SQLCipher takes the file's salt when the handle is keyed. A handle keyed while the file is
    // still empty takes a random salt of its own and reads the first page that another process
    // then writes as "not a database". The store is therefore created by one process at a time,
    // and a process that finds the file still empty waits for the one creating it.
    const StoreFolderLock lock(StoreFolderLock::folderOf(path));
    return openExisting(configuration);
}

std::shared_ptr<RealmDatabase> RealmDatabase::openExisting(const RealmConfiguration& configuration)
{
    const std::shared_ptr<RealmDatabase> database = openKeyed(configuration);
    // A wrong key or a damaged file shows on the first read. Both reads share one read
    // transaction: every transaction costs a lock, a hot-journal check and a header read.
    database->execute(QStringLiteral("BEGIN"));
    quint64 fileVersion = 0;
    try {
        database->query(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        fileVersion = database->query(QStringLiteral("PRAGMA user_version")).constFirst().constFirst().toULongLong();
        database->execute(QStringLiteral("COMMIT"));
    } catch (const RealmError&) {
        database->cancelWrite();
        throw;
    }
    if (fileVersion != configuration.schemaVersion)
        database->migrateSchema(configuration, fileVersion);
    return database;
}

std::shared_ptr<RealmDatabase> RealmDatabase::openKeyed(const RealmConfiguration& configuration)
{
    if (configuration.encryptionKey.size() != keyLength)
        throw RealmError(QStringLiteral("Encryption key must be 64 bytes."));
    const QString path = configuration.files().constFirst();
    sqlite3* connection = nullptr;
    const int flags = (configuration.readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_NOMUTEX;
    const int status = sqlite3_open_v2(QFile::encodeName(path).constData(), &connection, flags, nullptr);
    // The handle owns the connection from here on, even a failed one.
    std::shared_ptr<RealmDatabase> database(new RealmDatabase(connection));
    if (status != SQLITE_OK) {
        throw RealmError(
            QStringLiteral("Unable to open a realm at path '%1': %2")
                .arg(path, connection ? errorText(connection) : QString::fromUtf8(sqlite3_errstr(status))));
    }
    sqlite3_busy_timeout(connection, busyTimeoutMilliseconds);

    // The key's text is wiped as soon as SQLCipher has it (which wipes its own copy when the
    // connection closes), so no freed buffer of ours keeps it until the memory is reused.
    QByteArray hexKey = configuration.encryptionKey.first(rawKeyLength).toHex();
    QByteArray statement = "PRAGMA key = \"x'" + hexKey + "'\"";
    const int keyed = sqlite3_exec(connection, statement.constData(), nullptr, nullptr, nullptr);
    OPENSSL_cleanse(hexKey.data(), size_t(hexKey.size()));
    OPENSSL_cleanse(statement.data(), size_t(statement.size()));
    if (keyed != SQLITE_OK)
        throw failureOf(connection);
    // A plain SQLite ignores the key and would write the records in clear; refuse before
    // anything is written.
    if (database->query(QStringLiteral("PRAGMA cipher_version")).isEmpty())
        throw RealmError(QStringLiteral("The database library does not encrypt; refusing to open '%1'").arg(path));
    return database;
}

RealmDatabase::RealmDatabase(sqlite3* connection)
    : m_connection(connection)
{
}

RealmDatabase::~RealmDatabase()
{
    sqlite3_close_v2(m_connection);
}

void RealmDatabase::execute(const QString& sql, const QVariantList& bindings)
{
    Statement statement(m_connection, sql);
    statement.bind(bindings);
    while (statement.step()) { }
}

void RealmDatabase::forEachRow(
    const QString& sql, const QVariantList& bindings, const std::function<void(const RealmRow&)>& receive)
{
    Statement statement(m_connection, sql);
    statement.bind(bindings);
    while (statement.step())
        receive(statement.row());
}

QList<RealmRow> RealmDatabase::query(const QString& sql, const QVariantList& bindings)
{
    Statement statement(m_connection, sql);
    statement.bind(bindings);
    QList<RealmRow> rows;
    while (statement.step())
        rows.append(statement.row());
    return rows;
}

bool RealmDatabase::isIntact()
{
    try {
        query(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        return true;
    } catch (const RealmError& error) {
        // A busy file says nothing about its pages.
        return error.kind() == RealmError::Kind::busy;
    }
}

void RealmDatabase::copyInto(RealmDatabase& destination)
{
    sqlite3_backup* backup = sqlite3_backup_init(destination.m_connection, "main", m_connection, "main");
    if (!backup)
        throw failureOf(destination.m_connection);
    // Copying every page in one step holds one read transaction on this store, so the copy can
    // never mix two states. A writer elsewhere that holds the file makes the step busy; it is
    // tried again for as long as an ordinary statement would wait.
    int status = SQLITE_OK;
    for (int waited = 0;; waited += 20) {
        status = sqlite3_backup_step(backup, -1);
        if ((status != SQLITE_BUSY && status != SQLITE_LOCKED) || waited >= busyTimeoutMilliseconds)
            break;
        sqlite3_sleep(20);
    }
    sqlite3_backup_finish(backup);
    if (status == SQLITE_BUSY || status == SQLITE_LOCKED)
        throw RealmError(busyMessage, RealmError::Kind::busy);
    if (status != SQLITE_DONE) {
        const bool damaged = (status & 0xff) == SQLITE_CORRUPT || (status & 0xff) == SQLITE_NOTADB;
        throw RealmError(
            QString::fromUtf8(sqlite3_errstr(status)), damaged ? RealmError::Kind::damaged : RealmError::Kind::other);
    }
}

int RealmDatabase::changes() const
{
    return sqlite3_changes(m_connection);
}

void RealmDatabase::beginWrite()
{
    execute(QStringLiteral("BEGIN IMMEDIATE"));
}

void RealmDatabase::finishTransaction()
{
    if (!isIntact())
        throw RealmError(unauthenticatedPage, RealmError::Kind::damaged);
    commitWrite();
}

void RealmDatabase::commitWrite()
{
    execute(QStringLiteral("COMMIT"));
}

void RealmDatabase::cancelWrite()
{
    if (isInTransaction())
        sqlite3_exec(m_connection, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool RealmDatabase::isInTransaction() const
{
    return sqlite3_get_autocommit(m_connection) == 0;
}

// The file's schema version lives in user_version; a new file gets every table, an older one
// runs the migration step and gains the tables it lacks, a newer one cannot be opened.
void RealmDatabase::migrateSchema(const RealmConfiguration& configuration, quint64 fileVersion)
{
    if (fileVersion > configuration.schemaVersion) {
        // Its records may carry fields this version would drop on the next write: it is neither
        // opened nor set aside, so the newer version finds it as it left it.
        throw RealmError(QStringLiteral("The data in %1 was saved by a newer version of Tolvane (data version %2; "
                                        "this version reads up to %3). Update Tolvane to open it; the file was "
                                        "left untouched.")
                             .arg(QFileInfo(configuration.files().constFirst()).completeBaseName())
                             .arg(fileVersion)
                             .arg(configuration.schemaVersion),
            RealmError::Kind::newerVersion);
    }
    if (configuration.readOnly)
        throw RealmError(QStringLiteral("A read-only database cannot be migrated to schema version %1.")
                             .arg(configuration.schemaVersion));
    // A new file only gains its tables: quick, nothing to watch.
    const bool upgrading = fileVersion > 0;
    if (upgrading && configuration.migrationWatch)
        configuration.migrationWatch(true);
    const auto ended = qScopeGuard([&] {
        if (upgrading && configuration.migrationWatch)
            configuration.migrationWatch(false);
    });
    if (upgrading && configuration.beforeMigration)
        configuration.beforeMigration(configuration, fileVersion);
    write([&] {
        for (const RealmObjectType& type : configuration.objectTypes) {
            execute(QStringLiteral("CREATE TABLE IF NOT EXISTS \"%1\" (%2)").arg(type.name, type.columns));
            for (const QString& column : type.indexedColumns)
                execute(
                    QStringLiteral("CREATE INDEX IF NOT EXISTS \"%1_%2\" ON \"%1\" (\"%2\")").arg(type.name, column));
        }
        if (fileVersion > 0 && configuration.migrationBlock)
            configuration.migrationBlock(*this, fileVersion);
        execute(QStringLiteral("PRAGMA user_version = %1").arg(configuration.schemaVersion));
    });
    qCDebug(lcStorage) << "schema of" << configuration.files().constFirst() << "now at version"
                       << configuration.schemaVersion;
}
