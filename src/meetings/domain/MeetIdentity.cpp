#include "meetings/domain/MeetIdentity.h"

#include <QCryptographicHash>
#include <QLocale>

#include <cmath>

namespace {

QUuid digestUuid(const QString& text)
{
    return QUuid::fromRfc4122(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5));
}

} // namespace

namespace MeetIdentity {

QString secondsText(const QDateTime& start)
{
    const double seconds = double(start.toMSecsSinceEpoch()) / 1000.0;
    if (seconds == std::trunc(seconds) && std::fabs(seconds) < 1e16)
        return QString::number(qint64(seconds)) + QStringLiteral(".0");
    return QString::number(seconds, 'g', QLocale::FloatingPointShortest);
}

QUuid forOccurrence(const QString& eventIdentifier, const QDateTime& start)
{
    return digestUuid(eventIdentifier + QLatin1Char('|') + secondsText(start));
}

QUuid forBackendEvent(const QString& evtId)
{
    return digestUuid(evtId);
}

} // namespace MeetIdentity
