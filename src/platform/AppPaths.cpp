#include "platform/AppPaths.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

bool ensureDirectory(const QString& path, QFile::Permissions permissions)
{
    if (!QDir().mkpath(path))
        return false;
    return QFile::setPermissions(path, permissions);
}

QString subdirectory(const QString& name)
{
    return AppPaths::applicationSupportDirectory() + QLatin1Char('/') + name;
}

} // namespace

namespace AppPaths {

QString applicationSupportDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString tolvaneDataDirectory()
{
    const QString path = subdirectory(QStringLiteral("Tolvane"));
    ensureDirectory(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

QString appGroupContainer()
{
    const QString path = subdirectory(QStringLiteral("group.tolvane"));
    if (ensureDirectory(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
        return path;
    return QDir::tempPath();
}

QString userSoundsDirectory()
{
    const QString path = subdirectory(QStringLiteral("sounds"));
    QDir().mkpath(path);
    return path;
}

} // namespace AppPaths
