#pragma once

#include "storage/RealmConfiguration.h"

#include <QByteArray>
#include <QString>

// Small file helpers for store tests.
namespace StoreFiles {

QByteArray read(const QString& path);
void overwrite(const QString& path, qint64 offset, const QByteArray& bytes);
// Permission bits of a file or directory, as in "ls -l" (0600, 0700, ...).
int mode(const QString& path);
// Adds one ProjectRealmModel row named name through a fresh handle, as a repository would.
void addProject(const RealmConfiguration& configuration, const QString& name);
QStringList projectNames(const RealmConfiguration& configuration);

} // namespace StoreFiles
