#include "storage/RealmStoreSetAside.h"

#include "platform/Logging.h"
#include "storage/RealmError.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

const QStringList companions {QStringLiteral("-journal"), QStringLiteral("-wal"), QStringLiteral("-shm")};

QString systemErrorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

bool renameFile(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

QString unusedName(const QString& file)
{
    QDateTime time = QDateTime::currentDateTimeUtc();
    QString target;
    do {
        target = file + RealmStoreSetAside::marker + time.toString(QStringLiteral("yyyyMMdd'T'HHmmss.zzz'Z'"));
        time = time.addMSecs(1);
    } while (QFileInfo::exists(target));
    return target;
}

} // namespace

namespace RealmStoreSetAside {

std::optional<QString> move(const QString& file)
{
    const QFileInfo info(file);
    if (!info.exists() && !info.isSymLink())
        return std::nullopt;
    // Only a file is a store; a folder in its place is someone else's and is left alone.
    if (info.isDir())
        throw RealmError(QStringLiteral("Unable to set '%1' aside: %2").arg(file, systemErrorText(EISDIR)));
    const QString target = unusedName(file);
    if (!renameFile(file, target))
        throw RealmError(QStringLiteral("Unable to set '%1' aside: %2").arg(file, systemErrorText(errno)));
    for (const QString& suffix : companions) {
        if (QFileInfo::exists(file + suffix) && !renameFile(file + suffix, target + suffix))
            qCWarning(lcStorage) << "could not move" << file + suffix << "aside:" << systemErrorText(errno);
    }
    return target;
}

void prune(const QString& file)
{
    const QFileInfo info(file);
    const QString prefix = info.fileName() + marker;
    QStringList copies;
    for (const QString& name : info.dir().entryList({prefix + QLatin1Char('*')}, QDir::Files | QDir::Hidden)) {
        if (std::none_of(companions.cbegin(), companions.cend(), [&](const QString& s) { return name.endsWith(s); }))
            copies.append(name);
    }
    // The UTC time in the name sorts them oldest first.
    copies.sort();
    for (qsizetype i = 0; i + keptCopies < copies.size(); ++i) {
        const QString path = info.dir().filePath(copies.at(i));
        for (const QString& suffix : QStringList {QString()} + companions)
            QFile::remove(path + suffix);
        qCInfo(lcStorage) << "removed the old copy" << path;
    }
}

} // namespace RealmStoreSetAside
