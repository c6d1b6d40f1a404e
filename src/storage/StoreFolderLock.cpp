#include "storage/StoreFolderLock.h"

#include "storage/RealmError.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

// flock() locks belong to an open file description, so a second open() in the same thread would
// wait for itself; the folders this thread holds are remembered instead.
thread_local QSet<QString> heldByThisThread;

} // namespace

StoreFolderLock::StoreFolderLock(const QString& folder)
    : m_folder(folder)
{
    if (heldByThisThread.contains(folder))
        return;
    const QByteArray path = QFile::encodeName(folder + QLatin1Char('/') + fileName);
    m_descriptor = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    // A folder that does not exist holds no store to protect; whatever comes next fails on its own.
    if (m_descriptor < 0 && errno == ENOENT)
        return;
    if (m_descriptor < 0) {
        throw RealmError(QStringLiteral("Unable to lock the stores in '%1': %2")
                             .arg(folder, QString::fromLocal8Bit(std::strerror(errno))));
    }
    int status;
    do
        status = ::flock(m_descriptor, LOCK_EX);
    while (status != 0 && errno == EINTR);
    if (status != 0) {
        const int error = errno;
        ::close(m_descriptor);
        throw RealmError(QStringLiteral("Unable to lock the stores in '%1': %2")
                             .arg(folder, QString::fromLocal8Bit(std::strerror(error))));
    }
    heldByThisThread.insert(folder);
}

StoreFolderLock::~StoreFolderLock()
{
    if (m_descriptor < 0)
        return;
    heldByThisThread.remove(m_folder);
    ::close(m_descriptor);
}

QString StoreFolderLock::folderOf(const QString& storeFile)
{
    return QFileInfo(storeFile).absolutePath();
}
