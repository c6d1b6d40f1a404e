#include "platform/notifications/UserNotificationCenter.h"

#include <QJsonArray>

UserNotificationTrigger UserNotificationTrigger::calendar(const QDateTime& at)
{
    const QDateTime local = at.toLocalTime();
    const QTime time = local.time();
    return {Kind::calendar, local.date(), QTime(time.hour(), time.minute(), time.second()), 0};
}

UserNotificationTrigger UserNotificationTrigger::afterInterval(double seconds)
{
    return {Kind::timeInterval, {}, {}, seconds};
}

namespace UserNotificationCoding {

namespace {
const QString dateFormat = QStringLiteral("yyyy-MM-dd");
const QString timeFormat = QStringLiteral("HH:mm:ss");
} // namespace

QJsonObject toJson(const UserNotificationRequest& request, const QDateTime& fireDate)
{
    QJsonObject trigger;
    if (request.trigger.kind == UserNotificationTrigger::Kind::calendar) {
        trigger = {{QStringLiteral("kind"), QStringLiteral("calendar")},
            {QStringLiteral("date"), request.trigger.date.toString(dateFormat)},
            {QStringLiteral("time"), request.trigger.time.toString(timeFormat)}};
    } else {
        trigger = {{QStringLiteral("kind"), QStringLiteral("timeInterval")},
            {QStringLiteral("timeInterval"), request.trigger.timeInterval}};
    }
    QJsonArray actions;
    for (const UserNotificationAction& action : request.content.actions)
        actions.append(
            QJsonObject {{QStringLiteral("identifier"), action.identifier}, {QStringLiteral("title"), action.title}});
    return {{QStringLiteral("identifier"), request.identifier}, {QStringLiteral("title"), request.content.title},
        {QStringLiteral("body"), request.content.body},
        {QStringLiteral("userInfo"), QJsonObject::fromVariantMap(request.content.userInfo)},
        {QStringLiteral("soundName"), request.content.soundName}, {QStringLiteral("actions"), actions},
        {QStringLiteral("trigger"), trigger},
        {QStringLiteral("fireDate"), fireDate.toUTC().toString(Qt::ISODateWithMs)}};
}

std::optional<std::pair<UserNotificationRequest, QDateTime>> fromJson(const QJsonObject& json)
{
    UserNotificationRequest request;
    request.identifier = json.value(QStringLiteral("identifier")).toString();
    request.content.title = json.value(QStringLiteral("title")).toString();
    request.content.body = json.value(QStringLiteral("body")).toString();
    request.content.userInfo = json.value(QStringLiteral("userInfo")).toObject().toVariantMap();
    request.content.soundName = json.value(QStringLiteral("soundName")).toString();
    // Absent from files written before notifications had buttons.
    for (const QJsonValue& action : json.value(QStringLiteral("actions")).toArray()) {
        const QJsonObject object = action.toObject();
        request.content.actions.append(
            {object.value(QStringLiteral("identifier")).toString(), object.value(QStringLiteral("title")).toString()});
    }
    const QJsonObject trigger = json.value(QStringLiteral("trigger")).toObject();
    QDateTime fireDate = QDateTime::fromString(json.value(QStringLiteral("fireDate")).toString(), Qt::ISODateWithMs);
    if (trigger.value(QStringLiteral("kind")).toString() == QStringLiteral("calendar")) {
        request.trigger.kind = UserNotificationTrigger::Kind::calendar;
        request.trigger.date = QDate::fromString(trigger.value(QStringLiteral("date")).toString(), dateFormat);
        request.trigger.time = QTime::fromString(trigger.value(QStringLiteral("time")).toString(), timeFormat);
        if (!request.trigger.date.isValid() || !request.trigger.time.isValid())
            return std::nullopt;
        // The wall-clock time wins over the stored instant: the zone may have changed since.
        fireDate = QDateTime(request.trigger.date, request.trigger.time, Qt::LocalTime);
    } else {
        request.trigger.kind = UserNotificationTrigger::Kind::timeInterval;
        request.trigger.timeInterval = trigger.value(QStringLiteral("timeInterval")).toDouble();
    }
    if (request.identifier.isEmpty() || !fireDate.isValid())
        return std::nullopt;
    return std::pair {request, fireDate};
}

} // namespace UserNotificationCoding
