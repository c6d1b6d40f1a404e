#include "platform/calendar_store/CalendarStore.h"

#include "platform/Logging.h"

#include <QCoreApplication>
#include <QThread>

#include <libedataserver/libedataserver.h>

CalendarStore& CalendarStore::shared()
{
    // Never destroyed: EDS keeps its registry for the whole process anyway, and releasing it
    // after the event loop and GLib's main context are gone would only risk a crash at exit.
    static CalendarStore* store = new CalendarStore;
    return *store;
}

CalendarStore::CalendarStore()
{
    if (QCoreApplication* application = QCoreApplication::instance();
        application && QThread::currentThread() != application->thread()) {
        qCWarning(lcCalendar) << "calendar store created off the GUI thread; EDS calls will stall";
    }
    GError* error = nullptr;
    m_registry = e_source_registry_new_sync(nullptr, &error);
    if (!m_registry) {
        m_connectionError = error ? QString::fromUtf8(error->message) : QStringLiteral("unknown error");
        qCWarning(lcCalendar) << "cannot reach the calendar store:" << m_connectionError;
    }
    g_clear_error(&error);
}

CalendarStore::~CalendarStore()
{
    g_clear_object(&m_registry);
}

int CalendarStore::authorizationStatus() const
{
    return m_registry ? CalendarAuthorizationStatus::fullAccess : CalendarAuthorizationStatus::denied;
}

bool CalendarStore::requestFullAccessToEvents()
{
    return authorizationStatus() == CalendarAuthorizationStatus::fullAccess;
}
