#pragma once

#include <QString>

typedef struct _ESourceRegistry ESourceRegistry;

// Authorisation answers for reading and writing events, numbered as the rest of the program
// expects them.
namespace CalendarAuthorizationStatus {
inline constexpr int notDetermined = 0;
inline constexpr int restricted = 1;
inline constexpr int denied = 2;
inline constexpr int fullAccess = 3;
inline constexpr int writeOnly = 4;
} // namespace CalendarAuthorizationStatus

// The desktop's calendar store: the Evolution Data Server behind the session bus, the same
// calendars and accounts GNOME Calendar and Evolution show.
//
// The object owns the connection to the EDS source registry. The registry serves its D-Bus
// traffic on the GLib main context that is current where it is created, so a CalendarStore must
// be constructed on the GUI thread (whose Qt event loop iterates that context); once built, its
// const operations may be called from any thread. Connecting happens once, in the constructor:
// a store that could not reach EDS stays unreachable for the life of the object.
//
// There is no permission prompt on the desktop: the user's calendars are readable whenever EDS
// answers, so access is full when the registry connected and denied when it did not.
class CalendarStore {
public:
    // The one instance the application composes with, created on first use; the first call must
    // come from the GUI thread.
    static CalendarStore& shared();

    CalendarStore();
    ~CalendarStore();
    CalendarStore(const CalendarStore&) = delete;
    CalendarStore& operator=(const CalendarStore&) = delete;

    // CalendarAuthorizationStatus::fullAccess when the registry connected, denied otherwise.
    int authorizationStatus() const;
    // Nothing can be granted beyond what the session allows: true exactly when access is full.
    bool requestFullAccessToEvents();

    // Why EDS could not be reached; empty when it was.
    const QString& connectionError() const { return m_connectionError; }

private:
    ESourceRegistry* m_registry = nullptr;
    QString m_connectionError;
};
