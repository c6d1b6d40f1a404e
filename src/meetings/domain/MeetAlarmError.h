#pragma once

#include "meetings/domain/MeetingsError.h"

#include <QDateTime>

#include <optional>

struct MeetEntity;

// Why a meet cannot get an alarm, in words the user can act on.
class MeetAlarmError : public MeetingsError {
public:
    enum class Case { alreadyStarted, allDay, calendarNotEnabled, noNotificationService, notScheduled };

    static MeetAlarmError alreadyStarted();
    static MeetAlarmError allDay();
    static MeetAlarmError calendarNotEnabled();
    static MeetAlarmError noNotificationService();
    static MeetAlarmError notScheduled(const QString& reason);

    // The first alarm rule the meet breaks at now; none when it may be armed. Whether its calendar
    // allows alarms depends on stored choices, so the caller works it out.
    static std::optional<MeetAlarmError> refusal(
        const MeetEntity& meet, const QDateTime& now, bool calendarAllowsAlarms);

    Case kind() const { return m_case; }
    friend bool operator==(const MeetAlarmError& lhs, const MeetAlarmError& rhs) { return lhs.m_case == rhs.m_case; }

private:
    MeetAlarmError(Case kind, QString description)
        : MeetingsError(std::move(description))
        , m_case(kind)
    {
    }

    Case m_case;
};
