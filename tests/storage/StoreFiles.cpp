#include "storage/StoreFiles.h"

#include "storage/RealmDatabase.h"

#include <QFile>
#include <QUuid>

#include <sys/stat.h>

namespace StoreFiles {

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void overwrite(const QString& path, qint64 offset, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::ReadWrite) && file.seek(offset))
        file.write(bytes);
}

int mode(const QString& path)
{
    struct stat info { };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return -1;
    return int(info.st_mode & 07777);
}

void addProject(const RealmConfiguration& configuration, const QString& name)
{
    const auto database = RealmDatabase::open(configuration);
    database->write([&] {
        database->execute(QStringLiteral("INSERT INTO ProjectRealmModel VALUES (?, ?, ?, ?, ?)"),
            {QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(),
                QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(), name, QString(), false});
    });
}

QStringList projectNames(const RealmConfiguration& configuration)
{
    const auto database = RealmDatabase::open(configuration);
    QStringList names;
    for (const RealmRow& row : database->query(QStringLiteral("SELECT prjName FROM ProjectRealmModel")))
        names.append(row.constFirst().toString());
    return names;
}

} // namespace StoreFiles
