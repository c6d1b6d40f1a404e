#pragma once

#include "meetings/alarms/MeetAlarmModeEnum.h"
#include "meetings/alarms/MeetAlarmVoiceLanguageEnum.h"
#include "platform/UserDefaults.h"

#include <QSet>
#include <QString>

// The alarm preferences, each a small value in the user defaults. A missing or unknown value
// reads as the default; an array that is missing reads as empty.

// The metId strings of armed meets.
class ArmedAlarmsStore {
public:
    static inline const QString key = QStringLiteral("armedAlarmIdentifiers");

    explicit ArmedAlarmsStore(UserDefaults defaults);

    QSet<QString> load() const;
    bool contains(const QString& identifier) const;
    void add(const QString& identifier);
    void remove(const QString& identifier);
    void remove(const QSet<QString>& identifiers);
    void clear();

private:
    void save(const QSet<QString>& identifiers);

    UserDefaults m_defaults;
};

// Calendar-store events this program created: they may ring whatever their calendar.
class AppCreatedEventIdentifiersStore {
public:
    static inline const QString key = QStringLiteral("appCreatedEventIdentifiers");

    explicit AppCreatedEventIdentifiersStore(UserDefaults defaults);

    QSet<QString> load() const;
    void add(const QString& eventIdentifier);

private:
    UserDefaults m_defaults;
};

class MeetAlarmModeStore {
public:
    static inline const QString key = QStringLiteral("meetAlarmMode");

    explicit MeetAlarmModeStore(UserDefaults defaults);

    MeetAlarmModeEnum load() const;
    void save(MeetAlarmModeEnum mode);

private:
    UserDefaults m_defaults;
};

class MeetAlarmVoiceLanguageStore {
public:
    static inline const QString key = QStringLiteral("meetAlarmVoiceLanguage");

    explicit MeetAlarmVoiceLanguageStore(UserDefaults defaults);

    MeetAlarmVoiceLanguageEnum load() const;
    void save(MeetAlarmVoiceLanguageEnum language);

private:
    UserDefaults m_defaults;
};
