#pragma once

#include "meetings/entities/EventKitCalendarInfoEntity.h"

#include <QList>
#include <QString>

// One account of the calendar store (an online account, or a parent source such as "On This
// Computer") with all of its calendars, hidden ones included.
struct EventKitAccountCalendarsEntity {
    QString eacId;
    QString eacAccountTitle;
    QString eacAccountType;
    QList<EventKitCalendarInfoEntity> eacCalendars;

    friend bool operator==(const EventKitAccountCalendarsEntity&, const EventKitAccountCalendarsEntity&) = default;
};
