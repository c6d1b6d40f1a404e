#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>

// The application-wide change notifications, posted by name.
namespace NotificationName {
inline const QString calendarAccountsDidChange = QStringLiteral("calendarAccountsDidChange");
inline const QString hiddenCalendarsDidChange = QStringLiteral("hiddenCalendarsDidChange");
inline const QString alarmScheduleDidChange = QStringLiteral("alarmScheduleDidChange");
inline const QString openMeetFromAlarm = QStringLiteral("openMeetFromAlarm");
// A clicked task reminder: the object is the task's TaskNavigationPayload.
inline const QString openTaskFromReminder = QStringLiteral("openTaskFromReminder");
inline const QString userAccountDidChange = QStringLiteral("userAccountDidChange");
inline const QString showUserSettings = QStringLiteral("showUserSettings");
// Tasks, lists, projects, daily tasks or logbook entries changed behind the screens' back (an
// undo or a redo): what shows them reloads.
inline const QString tasksDidChange = QStringLiteral("tasksDidChange");
// A local store's migration to this version's schema began (object true) or ended (false).
inline const QString storeMigrationRunning = QStringLiteral("storeMigrationRunning");
// A local store could not be read and was moved aside; the object is the line for the console.
inline const QString storeSetAside = QStringLiteral("storeSetAside");
} // namespace NotificationName

// A process-wide broadcast of named notifications. Any thread may post; each observer runs in
// the thread of its context object (queued when that is another thread) and is disconnected
// when the context is destroyed.
class NotificationCenter final : public QObject {
    Q_OBJECT

public:
    // The one instance the application composes with; code below the composition receives it.
    static NotificationCenter& defaultCenter();

    using Observer = std::function<void(const QVariant& object)>;

    void post(const QString& name, const QVariant& object = {});
    QMetaObject::Connection addObserver(const QString& name, const QObject* context, Observer observer);

Q_SIGNALS:
    void posted(const QString& name, const QVariant& object);
};
