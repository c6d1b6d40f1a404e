#include "backup/StoreCopy.h"

#include "storage/RealmDatabase.h"
#include "storage/RealmError.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

namespace {

RealmConfiguration fileWithKey(const QString& file, const QByteArray& key, bool readOnly)
{
    RealmConfiguration configuration;
    configuration.fileURL = file;
    configuration.encryptionKey = key;
    configuration.readOnly = readOnly;
    return configuration;
}

qint64 countOf(const QString& file, const QByteArray& key)
{
    const auto database = RealmDatabase::openKeyed(fileWithKey(file, key, true));
    return database->read([&] {
        // Walks every page of every table and index, each page checked against its
        // authentication code as it is read; unlike integrity_check it does not match each
        // index against its table again, which on a page-for-page copy finds nothing more and
        // took most of a backup's time.
        const QList<RealmRow> check = database->query(QStringLiteral("PRAGMA quick_check"));
        if (check.isEmpty() || check.constFirst().constFirst().toString() != QStringLiteral("ok"))
            throw RealmError(QStringLiteral("it failed its integrity check"), RealmError::Kind::damaged);
        qint64 count = 0;
        const QList<RealmRow> tables = database->query(
            QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'"));
        for (const RealmRow& table : tables) {
            const QString name = table.constFirst().toString().replace(QLatin1Char('"'), QStringLiteral("\"\""));
            count += database->query(QStringLiteral("SELECT count(*) FROM \"%1\"").arg(name))
                         .constFirst()
                         .constFirst()
                         .toLongLong();
        }
        return count;
    });
}

void flushToDisk(const QString& file)
{
    const int fd = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
    const bool flushed = fd >= 0 && ::fsync(fd) == 0;
    if (fd >= 0)
        ::close(fd);
    if (!flushed)
        throw RealmError(QStringLiteral("Unable to write the backup file '%1' to the disk").arg(file));
}

} // namespace

namespace StoreCopy {

void copyStore(const RealmConfiguration& store, const QString& target)
{
    const int fd = ::open(QFile::encodeName(target).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0)
        throw RealmError(QStringLiteral("Unable to create the backup file '%1'").arg(target));
    ::close(fd);
    // Read-write, as the program opens it: a journal left by a crash is rolled back first.
    const auto from = RealmDatabase::openKeyed(store);
    const auto to = RealmDatabase::openKeyed(fileWithKey(target, store.encryptionKey, false));
    // A new file that only counts once it has been checked needs no journal; it is flushed to
    // the disk whole before it is checked.
    to->execute(QStringLiteral("PRAGMA journal_mode = OFF"));
    to->execute(QStringLiteral("PRAGMA synchronous = OFF"));
    from->copyInto(*to);
    flushToDisk(target);
}

qint64 checkedCount(const QString& file, const QByteArray& key)
{
    try {
        return countOf(file, key);
    } catch (const RealmError& error) {
        throw RealmError(QStringLiteral("The copy '%1' is damaged: %2").arg(file, error.localizedDescription()),
            RealmError::Kind::damaged);
    }
}

void replaceStore(const QString& source, const RealmConfiguration& store)
{
    const auto from = RealmDatabase::openKeyed(fileWithKey(source, store.encryptionKey, true));
    RealmConfiguration live = store;
    live.readOnly = false;
    // open() creates a missing store with its tables before the copy replaces them.
    const auto to = RealmDatabase::open(live);
    from->copyInto(*to);
}

} // namespace StoreCopy
