#pragma once

#include "platform/UserDefaults.h"

#include <QSet>
#include <QString>

// The calendars allowed to raise alarms, by calendar identifier: a string array in the user
// defaults. No key means no calendar, so alarms stay quiet until the user picks calendars.
class AlarmEnabledCalendarsStore {
public:
    static inline const QString key = QStringLiteral("alarmEnabledCalendarIdentifiers");

    explicit AlarmEnabledCalendarsStore(UserDefaults defaults);

    QSet<QString> load() const;
    void save(const QSet<QString>& calendarIdentifiers);
    void clear();

private:
    UserDefaults m_defaults;
};
