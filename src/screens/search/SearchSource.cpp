#include "screens/search/SearchSource.h"

#include "calendar_providers/stores/HiddenCalendarsStore.h"
#include "meetings/applications/MeetingsApplication.h"
#include "meetings/repositories/CompositeMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "platform/SystemClock.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"

#include <QLocale>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcSearch, "tolvane.search")

namespace {

template <typename T> QList<T> listed(const ResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

QString dayText(const QDate& day)
{
    return QLocale().toString(day, QLocale::ShortFormat);
}

QString joined(const QString& first, const QString& second)
{
    return first + QStringLiteral(" · ") + second;
}

} // namespace

SearchSource::SearchSource(const AppServices& services, QObject* parent, std::shared_ptr<const Clock> clock,
    std::shared_ptr<EventKitStoring> eventStore)
    : QObject(parent)
    , m_services(services)
    , m_clock(clock ? std::move(clock) : std::make_shared<SystemClock>())
    , m_eventStore(std::move(eventStore))
{
}

QList<SearchItem> SearchSource::taskItems(
    const TasksApplicationFactory::Applications& apps, const QUuid& userId, const Range& range)
{
    QList<SearchItem> items;
    // Every task in one read where the store can, grouped by list.
    std::optional<QHash<QUuid, QList<TaskEntity>>> allTasks;
    const ResultEntity everyTask = apps.tasks.taskRepository->listAll();
    if (const auto* tasks = everyTask.result ? everyTask.dataAs<QList<TaskEntity>>() : nullptr) {
        allTasks.emplace();
        for (const TaskEntity& task : *tasks)
            (*allTasks)[task.talId].append(task);
    }
    std::optional<QHash<QUuid, QList<BitacoraEntryEntity>>> allEntries;
    const ResultEntity everyEntry = apps.bitacora.bitacoraRepository->listAll();
    if (const auto* entries = everyEntry.result ? everyEntry.dataAs<QList<BitacoraEntryEntity>>() : nullptr) {
        allEntries.emplace();
        for (const BitacoraEntryEntity& entry : *entries)
            (*allEntries)[entry.prjId].append(entry);
    }
    for (const ProjectEntity& project : listed<ProjectEntity>(apps.projects.list(userId))) {
        items.append({.kind = SearchKind::project,
            .text = project.prjName,
            .context = project.prjDescription.simplified(),
            .projectId = project.prjId});
        for (const TaskListEntity& list : listed<TaskListEntity>(apps.taskLists.list(project.prjId))) {
            items.append({.kind = SearchKind::taskList,
                .text = list.talName,
                .context = project.prjName,
                .projectId = project.prjId,
                .taskListId = list.talId});
            const QString where = joined(project.prjName, list.talName);
            for (const TaskEntity& task :
                allTasks ? allTasks->value(list.talId) : listed<TaskEntity>(apps.tasks.list(list.talId))) {
                items.append({.kind = SearchKind::task,
                    .text = task.tasTitle,
                    .context = where,
                    .projectId = project.prjId,
                    .taskListId = list.talId,
                    .itemId = task.tasId});
            }
        }
        for (const BitacoraEntryEntity& entry : allEntries
                ? allEntries->value(project.prjId)
                : listed<BitacoraEntryEntity>(apps.bitacora.list(project.prjId))) {
            if (entry.bteContent.trimmed().isEmpty())
                continue;
            items.append({.kind = SearchKind::logbook,
                .text = entry.bteContent,
                .context = joined(project.prjName, dayText(entry.bteDate.toLocalTime().date())),
                .projectId = project.prjId,
                .itemId = entry.bteId,
                .date = entry.bteDate});
        }
    }
    for (QDate day = range.from; day <= range.to; day = day.addDays(1)) {
        // Noon: the same calendar day locally and in UTC, which the backend asks for.
        for (const DailyTaskEntity& task :
            listed<DailyTaskEntity>(apps.dailyTasks.list(QDateTime(day, QTime(12, 0))))) {
            items.append({.kind = SearchKind::dailyTask,
                .text = task.dtaTitle,
                .context = dayText(day),
                .itemId = task.dtaId,
                .date = QDateTime(day, QTime(12, 0))});
        }
    }
    return items;
}

QList<SearchItem> SearchSource::meetItems(const MeetingsApplication& meetings, const Range& range)
{
    QList<SearchItem> items;
    const QDateTime start(range.from, QTime(0, 0), meetings.calendar());
    const QDateTime end(range.to.addDays(1), QTime(0, 0), meetings.calendar());
    for (const MeetEntity& meet : meetings.fetchMeets()) {
        // The backend answers with every event of the user.
        if (meet.metDate >= end || meet.endDate() < start)
            continue;
        const QDateTime local = meet.metDate.toTimeZone(meetings.calendar());
        const QString when = meet.metIsAllDay ? dayText(local.date()) : QLocale().toString(local, QLocale::ShortFormat);
        items.append({.kind = SearchKind::meet,
            .text = meet.metName,
            .context = meet.metCalendarName.isEmpty() ? when : joined(when, meet.metCalendarName),
            .itemId = meet.metId,
            .date = meet.metDate});
    }
    return items;
}

void SearchSource::refresh()
{
    if (m_isLoading) {
        m_isStale = true;
        return;
    }
    m_isLoading = true;
    m_isStale = false;
    const AppServices* services = &m_services;
    const Range range = Range::around(m_clock->now().toLocalTime().date());
    const std::shared_ptr<const Clock> clock = m_clock;
    std::shared_ptr<EventKitStoring> eventStore = m_eventStore;
    NotificationCenter* center = &m_services.notificationCenter();
    runAsync(
        this,
        [services, range, clock, eventStore, center]() mutable {
            QList<SearchItem> items;
            const AppServices::TasksSession session = services->tasksSession();
            if (!session.user)
                return std::make_shared<SearchIndex>();
            if (const auto* apps = session.applications.dataAs<TasksApplicationFactory::Applications>())
                items = taskItems(*apps, QUuid::fromString(session.user->usrId), range);
            if (!eventStore)
                eventStore = LiveEventKitStore::shared();
            const int status = eventStore->authorizationStatus();
            const bool mayRead = status == CalendarAuthorizationStatus::fullAccess
                || (status == CalendarAuthorizationStatus::notDetermined && eventStore->requestFullAccessToEvents());
            const QTimeZone zone = QTimeZone::systemTimeZone();
            const QDate today = clock->now().toTimeZone(zone).date();
            std::vector<std::shared_ptr<MeetRepository>> sources;
            if (mayRead) {
                sources.push_back(std::make_shared<EventKitMeetRepositoryImpl>(eventStore, zone,
                    int(range.from.daysTo(today)), int(today.daysTo(range.to)) + 1,
                    HiddenCalendarsStore::standard(*center).load(), std::nullopt, clock));
            }
            if (session.user->usrIsGoogleAccount) {
                if (const std::optional<APIClient> client = services->apiClient())
                    sources.push_back(std::make_shared<RemoteEventRepositoryImpl>(*client));
            }
            try {
                if (!sources.empty()) {
                    items += meetItems(
                        MeetingsApplication(std::make_shared<CompositeMeetRepositoryImpl>(std::move(sources)), zone),
                        range);
                }
            } catch (const std::exception& error) {
                // Search still finds everything else.
                qCWarning(lcSearch) << "meets not searchable:" << error.what();
            }
            return std::make_shared<SearchIndex>(std::move(items));
        },
        [this](const std::shared_ptr<SearchIndex>& index) {
            m_index = index;
            m_isLoading = false;
            Q_EMIT loaded();
            if (m_isStale)
                refresh();
        });
}
