#include "transfer/LocalTasksStores.h"

#include "storage/RealmTable.h"
#include "storage/RealmValue.h"
#include "tasks/database/BitacoraEntryRealmModel.h"
#include "tasks/database/DailyTaskRealmModel.h"
#include "tasks/database/ProjectRealmModel.h"
#include "tasks/database/TaskListRealmModel.h"
#include "tasks/database/TaskRealmModel.h"
#include "tasks/reminders/RemindingTaskRepository.h"
#include "tasks/repositories/local/LocalBitacoraRepositoryImpl.h"
#include "tasks/repositories/local/LocalDailyTaskRepositoryImpl.h"
#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"
#include "tasks/repositories/local/LocalStore.h"
#include "tasks/repositories/local/LocalTaskListRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace {

struct Stop {
    ResultEntity result;
};

template <typename Model> QList<Model> allOf(const RealmConfiguration& store)
{
    QList<Model> records;
    const ResultEntity read = LocalStore::withDatabase(store, [&](RealmDatabase& database) {
        records = RealmTable<Model>(database).objects(QStringLiteral("1"), {});
        return ResultEntity::success();
    });
    if (!read.result)
        throw Stop {read};
    return records;
}

template <typename Entity, typename Model>
QHash<QUuid, QList<Entity>> byParent(const RealmConfiguration& store, QUuid Entity::*parent)
{
    QHash<QUuid, QList<Entity>> grouped;
    for (const Model& record : allOf<Model>(store)) {
        Entity entity = record.toEntity();
        grouped[entity.*parent].append(std::move(entity));
    }
    return grouped;
}

// Adds the records whose primary key the store lacks, one transaction per batch, on one handle.
// A record whose key is there already is left as it is ("OR IGNORE") and counted as skipped.
template <typename Model, typename Entity>
void addMissing(const RealmConfiguration& store, const QList<Entity>& records, LocalTasksStores::Written& written,
    TransferControl& control, qint64& done, qint64 total, const QString& cancelledMessage)
{
    if (records.isEmpty())
        return;
    const RealmObjectType type = Model::objectType();
    const qsizetype columns = type.propertyNames().size();
    // SQLite takes at most 999 values per statement.
    const qsizetype rowsPerStatement = 999 / columns;
    const QString row
        = QStringLiteral("(") + QStringList(columns, QStringLiteral("?")).join(QLatin1Char(',')) + QStringLiteral(")");
    // A store found damaged on the way is set aside and the work runs again on a new one.
    const LocalTasksStores::Written writtenBefore = written;
    const qint64 doneBefore = done;
    const ResultEntity result = LocalStore::perform(store, [&](RealmDatabase& database) {
        written = writtenBefore;
        done = doneBefore;
        // Records arrive in random key order; with the default small page cache a batch spills
        // into the journal again and again.
        database.execute(QStringLiteral("PRAGMA cache_size = -65536"));
        for (qsizetype first = 0; first < records.size(); first += LocalTasksStores::batchSize) {
            const qsizetype end = std::min(records.size(), first + LocalTasksStores::batchSize);
            // A cancel rolls back what the batch has written so far; earlier batches stay.
            database.write([&] {
                for (qsizetype from = first; from < end; from += rowsPerStatement) {
                    if (control.isCancelled())
                        throw Stop {ResultEntity::applicationFailure(cancelledMessage)};
                    const qsizetype count = std::min(rowsPerStatement, end - from);
                    QVariantList values;
                    values.reserve(count * columns);
                    for (qsizetype i = from; i < from + count; ++i)
                        values.append(Model::fromEntity(records.at(i)).toRow());
                    database.execute(QStringLiteral("INSERT OR IGNORE INTO \"%1\" VALUES %2")
                                         .arg(type.name, QStringList(count, row).join(QLatin1Char(','))),
                        values);
                    written.created += database.changes();
                    written.skipped += count - database.changes();
                    control.report(done + (from + count - first), total);
                }
            });
            done = done + (end - first);
        }
        return TaskResultEntity::success();
    });
    if (!result.result)
        throw Stop {result};
}

} // namespace

std::optional<LocalTasksStores> LocalTasksStores::of(const TasksRepositories& repositories)
{
    const auto projects = std::dynamic_pointer_cast<LocalProjectRepositoryImpl>(repositories.projects);
    const auto lists = std::dynamic_pointer_cast<LocalTaskListRepositoryImpl>(repositories.taskLists);
    const auto reminding = std::dynamic_pointer_cast<RemindingTaskRepository>(repositories.tasks);
    const auto tasks
        = std::dynamic_pointer_cast<LocalTaskRepositoryImpl>(reminding ? reminding->store() : repositories.tasks);
    const auto daily = std::dynamic_pointer_cast<LocalDailyTaskRepositoryImpl>(repositories.dailyTasks);
    const auto bitacora = std::dynamic_pointer_cast<LocalBitacoraRepositoryImpl>(repositories.bitacora);
    if (!projects || !lists || !tasks || !daily || !bitacora)
        return std::nullopt;
    LocalTasksStores stores;
    stores.m_projects = projects->database.configuration;
    stores.m_taskLists = lists->database.configuration;
    stores.m_tasks = tasks->database.configuration;
    stores.m_dailyTasks = daily->database.configuration;
    stores.m_bitacora = bitacora->database.configuration;
    stores.m_reminding = reminding;
    return stores;
}

ResultEntity LocalTasksStores::read(
    const QUuid& userId, const std::optional<QUuid>& projectId, const QDate& firstDay, const QDate& lastDay) const
{
    TasksSnapshot snapshot;
    try {
        for (const ProjectRealmModel& record : allOf<ProjectRealmModel>(m_projects)) {
            ProjectEntity project = record.toEntity();
            if (project.prjUserId == userId && (!projectId || *projectId == project.prjId))
                snapshot.projects.append(std::move(project));
        }
        const auto lists = byParent<TaskListEntity, TaskListRealmModel>(m_taskLists, &TaskListEntity::prjId);
        const auto tasks = byParent<TaskEntity, TaskRealmModel>(m_tasks, &TaskEntity::talId);
        const auto entries
            = byParent<BitacoraEntryEntity, BitacoraEntryRealmModel>(m_bitacora, &BitacoraEntryEntity::prjId);
        for (const ProjectEntity& project : std::as_const(snapshot.projects)) {
            for (const TaskListEntity& list : lists.value(project.prjId)) {
                snapshot.taskLists.append(list);
                snapshot.tasks.append(tasks.value(list.talId));
            }
            snapshot.bitacora.append(entries.value(project.prjId));
        }
        if (!projectId && firstDay.isValid() && lastDay >= firstDay) {
            const QDateTime start = firstDay.startOfDay();
            const QDateTime end = lastDay.addDays(1).startOfDay();
            for (const DailyTaskRealmModel& record : allOf<DailyTaskRealmModel>(m_dailyTasks)) {
                DailyTaskEntity daily = record.toEntity();
                if (daily.dtaDate >= start && daily.dtaDate < end)
                    snapshot.dailyTasks.append(std::move(daily));
            }
            // Day by day, each day in store order: as reading the days one at a time gives them.
            std::stable_sort(snapshot.dailyTasks.begin(), snapshot.dailyTasks.end(),
                [](const DailyTaskEntity& a, const DailyTaskEntity& b) {
                    return a.dtaDate.toLocalTime().date() < b.dtaDate.toLocalTime().date();
                });
        }
    } catch (const Stop& stop) {
        return stop.result;
    }
    return ResultEntity::success(snapshot);
}

ResultEntity LocalTasksStores::write(
    const TasksSnapshot& snapshot, TransferControl& control, const QString& cancelledMessage) const
{
    Written written;
    qint64 done = 0;
    const qint64 total = snapshot.itemCount();
    try {
        addMissing<ProjectRealmModel>(m_projects, snapshot.projects, written, control, done, total, cancelledMessage);
        addMissing<TaskListRealmModel>(
            m_taskLists, snapshot.taskLists, written, control, done, total, cancelledMessage);
        addMissing<TaskRealmModel>(m_tasks, snapshot.tasks, written, control, done, total, cancelledMessage);
        addMissing<DailyTaskRealmModel>(
            m_dailyTasks, snapshot.dailyTasks, written, control, done, total, cancelledMessage);
        addMissing<BitacoraEntryRealmModel>(
            m_bitacora, snapshot.bitacora, written, control, done, total, cancelledMessage);
    } catch (const Stop& stop) {
        return stop.result;
    }
    if (m_reminding && !snapshot.tasks.isEmpty()) {
        // Read back through the reminders, which arm what the store now holds.
        QSet<QUuid> lists;
        for (const TaskEntity& task : snapshot.tasks)
            lists.insert(task.talId);
        m_reminding->listOfLists(lists.values());
    }
    return ResultEntity::success(written);
}
