#pragma once

#include <QDateTime>
#include <QJsonValue>
#include <QString>

// The body of a new event, and of the new state of one; every key is always sent.
struct CreateEventRequestDTO {
    QString evtTitle;
    QDateTime evtSchedule;
    qint64 evtDurationMinutes = 0;
    bool evtHasAlarm = false;
    QString evtDescription;
    QString evtRepeat;
    QString evtCustomRepeat;

    QJsonValue toJson() const;
};

struct UpdateEventRequestDTO : CreateEventRequestDTO { };
