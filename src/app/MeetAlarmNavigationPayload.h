#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

// The meet an opened alarm asks to show.
struct MeetAlarmNavigationPayload {
    QString metName;
    QDateTime metDate;
};

Q_DECLARE_METATYPE(MeetAlarmNavigationPayload)
