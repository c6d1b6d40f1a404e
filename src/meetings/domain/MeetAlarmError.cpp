#include "meetings/domain/MeetAlarmError.h"

#include "meetings/entities/MeetEntity.h"

MeetAlarmError MeetAlarmError::alreadyStarted()
{
    return {Case::alreadyStarted,
        QStringLiteral("The meet has already started: an alarm needs a meet whose start is at or after now")};
}

MeetAlarmError MeetAlarmError::allDay()
{
    return {Case::allDay, QStringLiteral("An all-day meet has no start time to ring at")};
}

MeetAlarmError MeetAlarmError::calendarNotEnabled()
{
    return {Case::calendarNotEnabled,
        QStringLiteral("Alarms are off for this meet's calendar: turn them on in Settings, Calendars")};
}

MeetAlarmError MeetAlarmError::noNotificationService()
{
    return {Case::noNotificationService,
        QStringLiteral("No notification service is running, so alarms cannot ring. Start your desktop's "
                       "notification daemon (for example dunst or the one of your desktop) and try again.")};
}

MeetAlarmError MeetAlarmError::notScheduled(const QString& reason)
{
    return {Case::notScheduled, QStringLiteral("The alarm could not be scheduled: ") + reason};
}

std::optional<MeetAlarmError> MeetAlarmError::refusal(
    const MeetEntity& meet, const QDateTime& now, bool calendarAllowsAlarms)
{
    if (!calendarAllowsAlarms)
        return calendarNotEnabled();
    if (meet.metIsAllDay)
        return allDay();
    // The alarm rings at the start; one already passed would never ring.
    if (meet.metDate < now)
        return alreadyStarted();
    return std::nullopt;
}
