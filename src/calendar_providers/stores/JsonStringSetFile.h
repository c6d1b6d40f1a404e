#pragma once

#include "calendar_providers/entities/AccountProviderEnum.h"

#include <QSet>
#include <QString>

// The small preference files of the calendar stores: a JSON array of strings, one per member,
// in no meaningful order.
namespace JsonStringSetFile {

// A missing or unreadable file, or anything but an array made only of strings, is the empty set.
QSet<QString> load(const QString& path);
// Replaces the file whole through a temporary file and a rename, so a reader never sees half a
// file and a failed write leaves the previous one; creates the directory when missing. False
// when nothing was written.
bool save(const QString& path, const QSet<QString>& members);

// The same for kinds of account, stored by raw value; strings that name no kind are dropped.
AccountProviderSet loadKinds(const QString& path);
bool saveKinds(const QString& path, const AccountProviderSet& kinds);

} // namespace JsonStringSetFile
