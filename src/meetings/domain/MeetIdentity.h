#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

// Identities of meets, derived rather than stored so that every fetch gives the same ones: the
// 16 bytes of an MD5 digest taken in order as a UUID.
namespace MeetIdentity {

// The digest of "<event identifier>|<start in seconds since 1970>", the seconds written as a
// double ("1767258000.0"): each occurrence of a series has its own identity.
QUuid forOccurrence(const QString& eventIdentifier, const QDateTime& start);
// The digest of the backend's identifier alone.
QUuid forBackendEvent(const QString& evtId);

// How the start is written into the digest: a whole number keeps a ".0".
QString secondsText(const QDateTime& start);

} // namespace MeetIdentity
