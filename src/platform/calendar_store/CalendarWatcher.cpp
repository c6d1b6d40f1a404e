#include "platform/calendar_store/CalendarWatcher.h"

#include "platform/Logging.h"
#include "platform/calendar_store/CalendarStore.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <libecal/libecal.h>
#include <libedataserver/libedataserver.h>
#include <utility>

bool CalendarWatchScope::covers(const QDate& day) const
{
    return !isEmpty() && start <= QDateTime(day, QTime(0, 0)) && QDateTime(day.addDays(1), QTime(0, 0)) <= end;
}

CalendarWatchScope CalendarWatchScope::around(
    const QDate& day, const QStringList& calendarIdentifiers, const CalendarWatchScope& current)
{
    if (current.calendarIdentifiers == calendarIdentifiers && current.covers(day.addDays(-1))
        && current.covers(day.addDays(1)))
        return current;
    return {QDateTime(day.addDays(-10), QTime(0, 0)), QDateTime(day.addDays(11), QTime(0, 0)), calendarIdentifiers};
}

CalendarWatchScope CalendarWatchScope::untilAlarms(const QDate& today, const std::optional<QDateTime>& lastArmed,
    const QStringList& calendarIdentifiers, const CalendarWatchScope& current)
{
    if (!lastArmed || calendarIdentifiers.isEmpty())
        return {};
    const QDate last = std::max(today, lastArmed->toLocalTime().date());
    if (current.calendarIdentifiers == calendarIdentifiers && current.covers(today) && current.covers(last))
        return current;
    return {QDateTime(today, QTime(0, 0)), QDateTime(last.addDays(8), QTime(0, 0)), calendarIdentifiers};
}

// One round of watching: the views asked for under it report to owner until a new scope (or the
// watcher's end) clears it. Touched on the GUI thread only.
struct CalendarStoreWatcher::Watch {
    CalendarStoreWatcher* owner;
};

struct CalendarStoreWatcher::View {
    CalendarStoreWatcher* owner = nullptr;
    QString calendarIdentifier;
    ECalClientView* view = nullptr;

    ~View()
    {
        if (!view)
            return;
        g_signal_handlers_disconnect_by_data(view, this);
        e_cal_client_view_stop(view, nullptr);
        g_object_unref(view);
    }
};

namespace {

struct ViewRequest {
    std::shared_ptr<CalendarStoreWatcher::Watch> watch;
    QString calendarIdentifier;
};

void onObjects(ECalClientView*, gpointer, gpointer data);

void onRegistrySource(ESourceRegistry*, ESource* source, gpointer data);

} // namespace

CalendarStoreWatcher::CalendarStoreWatcher(CalendarStore& store, QObject* parent)
    : CalendarWatching(parent)
    , m_store(store)
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(settleMilliseconds);
    connect(&m_settle, &QTimer::timeout, this, [this] {
        bool calendars = std::exchange(m_calendarsChanged, false);
        if (calendars) {
            // The registry also says when a calendar merely connects or goes offline; only what
            // the screens show counts.
            QList<CalendarStoreCalendar> now = m_store.calendars();
            calendars = now != m_knownCalendars;
            m_knownCalendars = std::move(now);
        }
        const QSet<QString> changed = std::exchange(m_changedCalendars, {});
        if (calendars)
            Q_EMIT calendarsChanged();
        if (!changed.isEmpty())
            Q_EMIT eventsChanged(QStringList(changed.begin(), changed.end()));
    });
    m_knownCalendars = m_store.calendars();
    if (ESourceRegistry* registry = m_store.registry()) {
        for (const char* signal :
            {"source-added", "source-removed", "source-changed", "source-enabled", "source-disabled"})
            g_signal_connect(registry, signal, G_CALLBACK(onRegistrySource), this);
    }
}

CalendarStoreWatcher::~CalendarStoreWatcher()
{
    if (ESourceRegistry* registry = m_store.registry())
        g_signal_handlers_disconnect_by_data(registry, this);
    stopViews();
}

void CalendarStoreWatcher::stopViews()
{
    if (m_watch)
        m_watch->owner = nullptr;
    m_watch.reset();
    m_views.clear();
}

QStringList CalendarStoreWatcher::watchedCalendars() const
{
    QStringList watched;
    for (const std::shared_ptr<View>& view : m_views)
        watched.append(view->calendarIdentifier);
    return watched;
}

void CalendarStoreWatcher::watch(const CalendarWatchScope& scope)
{
    if (scope == m_scope)
        return;
    stopViews();
    m_scope = scope;
    if (scope.isEmpty() || !m_store.registry())
        return;
    m_watch = std::make_shared<Watch>(Watch {this});
    const std::shared_ptr<Watch> watch = m_watch;
    const QByteArray query = m_store.rangeQuery(scope.start, scope.end);
    CalendarStore* store = &m_store;
    for (const QString& calendarIdentifier : scope.calendarIdentifiers) {
        // Opening a calendar blocks (a remote one may take seconds); the view is then asked for
        // on the GUI thread, so that its signals arrive there.
        QThreadPool::globalInstance()->start([store, watch, calendarIdentifier, query] {
            ECalClient* client = store->client(calendarIdentifier);
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [watch, calendarIdentifier, query, client] {
                    if (!watch->owner || !client)
                        return;
                    auto* request = new ViewRequest {watch, calendarIdentifier};
                    e_cal_client_get_view(
                        client, query.constData(), nullptr,
                        [](GObject* source, GAsyncResult* result, gpointer data) {
                            std::unique_ptr<ViewRequest> request(static_cast<ViewRequest*>(data));
                            ECalClientView* made = nullptr;
                            GError* error = nullptr;
                            if (!e_cal_client_get_view_finish(E_CAL_CLIENT(source), result, &made, &error)) {
                                qCWarning(lcCalendar) << "cannot watch calendar" << request->calendarIdentifier
                                                      << (error ? error->message : "");
                                g_clear_error(&error);
                                return;
                            }
                            CalendarStoreWatcher* owner = request->watch->owner;
                            if (!owner) {
                                g_object_unref(made);
                                return;
                            }
                            auto view = std::make_shared<View>();
                            view->owner = owner;
                            view->calendarIdentifier = request->calendarIdentifier;
                            view->view = made;
                            // What is there already was just read; only what changes from now on
                            // matters.
                            e_cal_client_view_set_flags(made, E_CAL_CLIENT_VIEW_FLAGS_NONE, nullptr);
                            for (const char* signal : {"objects-added", "objects-modified", "objects-removed"})
                                g_signal_connect(made, signal, G_CALLBACK(onObjects), view.get());
                            e_cal_client_view_start(made, &error);
                            if (error) {
                                qCWarning(lcCalendar)
                                    << "cannot watch calendar" << request->calendarIdentifier << error->message;
                                g_clear_error(&error);
                                return;
                            }
                            owner->m_views.append(std::move(view));
                            // What changed between the screen's last read and now went unseen.
                            owner->noteEvents(request->calendarIdentifier);
                        },
                        request);
                },
                Qt::QueuedConnection);
        });
    }
}

void CalendarStoreWatcher::noteEvents(const QString& calendarIdentifier)
{
    m_changedCalendars.insert(calendarIdentifier);
    if (!m_settle.isActive())
        m_settle.start();
}

void CalendarStoreWatcher::noteCalendars()
{
    m_calendarsChanged = true;
    if (!m_settle.isActive())
        m_settle.start();
}

namespace {

void onObjects(ECalClientView*, gpointer, gpointer data)
{
    auto* view = static_cast<CalendarStoreWatcher::View*>(data);
    view->owner->noteEvents(view->calendarIdentifier);
}

void onRegistrySource(ESourceRegistry*, ESource* source, gpointer data)
{
    if (!e_source_has_extension(source, E_SOURCE_EXTENSION_CALENDAR))
        return;
    static_cast<CalendarStoreWatcher*>(data)->noteCalendars();
}

} // namespace
