#include "transfer/TasksImporter.h"

#include "tasks/domain/TaskMessages.h"
#include "transfer/LocalTasksStores.h"

namespace {

struct Stop {
    ResultEntity result;
};

// Whether a find said "no such record" (locally, or the backend's 404) rather than failing.
bool isNotFound(const ResultEntity& found, const QString& localText, const QString& remoteText)
{
    return found.applicationMessage == localText || found.infrastructureMessage == remoteText;
}

class Run {
public:
    Run(const TasksRepositories& target, const QUuid& userId, TransferControl& control, qint64 total)
        : target(target)
        , userId(userId)
        , control(control)
        , total(total)
    {
    }

    // Creates the record unless find says it exists; returns the id it has in the account.
    template <typename Entity, typename Find, typename Create>
    QUuid place(const QUuid& id, Find&& find, Create&& create, const QString& localText, const QString& remoteText,
        QUuid Entity::*idMember)
    {
        if (control.isCancelled())
            throw Stop {ResultEntity::applicationFailure(TasksImporter::cancelledMessage)};
        const ResultEntity found = find(id);
        QUuid placed = id;
        if (found.result) {
            ++outcome.skipped;
        } else if (isNotFound(found, localText, remoteText)) {
            const ResultEntity created = create();
            if (!created.result)
                throw Stop {created};
            if (const Entity* entity = created.template dataAs<Entity>())
                placed = entity->*idMember;
            ++outcome.created;
        } else {
            throw Stop {found};
        }
        control.report(++done, total);
        return placed;
    }

    static void check(const ResultEntity& result)
    {
        if (!result.result)
            throw Stop {result};
    }

    QUuid mapped(const QUuid& id) const { return ids.value(id, id); }

    const TasksRepositories& target;
    QUuid userId;
    TransferControl& control;
    qint64 total;
    qint64 done = 0;
    QHash<QUuid, QUuid> ids;
    TasksImporter::Outcome outcome;
};

} // namespace

TasksImporter::TasksImporter(TasksRepositories target, QUuid userId, bool repositoriesOnly)
    : m_target(std::move(target))
    , m_userId(userId)
    , m_repositoriesOnly(repositoriesOnly)
{
}

ResultEntity TasksImporter::importIntoStores(const TasksSnapshot& snapshot, TransferControl& control) const
{
    // The local stores keep the ids they are given, so children need no remapping.
    TasksSnapshot owned = snapshot;
    for (ProjectEntity& project : owned.projects)
        project.prjUserId = m_userId;
    for (DailyTaskEntity& daily : owned.dailyTasks)
        daily.dtaUserId = m_userId;
    for (BitacoraEntryEntity& entry : owned.bitacora)
        entry.bteUserId = m_userId;
    const ResultEntity written = LocalTasksStores::of(m_target)->write(owned, control, cancelledMessage);
    if (!written.result)
        return written;
    const auto counts = *written.dataAs<LocalTasksStores::Written>();
    return ResultEntity::success(Outcome {counts.created, counts.skipped});
}

ResultEntity TasksImporter::import(const TasksSnapshot& snapshot, TransferControl& control) const
{
    if (!m_repositoriesOnly && LocalTasksStores::of(m_target))
        return importIntoStores(snapshot, control);
    namespace M = TaskMessages;
    Run run(m_target, m_userId, control, snapshot.itemCount());
    try {
        for (ProjectEntity project : snapshot.projects) {
            project.prjUserId = m_userId;
            run.ids.insert(project.prjId,
                run.place<ProjectEntity>(
                    project.prjId, [&](const QUuid& id) { return m_target.projects->find(id); },
                    [&] { return m_target.projects->create(project); }, M::Project::notFound,
                    M::Project::remoteNotFound, &ProjectEntity::prjId));
        }
        for (TaskListEntity list : snapshot.taskLists) {
            list.prjId = run.mapped(list.prjId);
            run.ids.insert(list.talId,
                run.place<TaskListEntity>(
                    list.talId, [&](const QUuid& id) { return m_target.taskLists->find(id); },
                    [&] { return m_target.taskLists->create(list); }, M::TaskList::notFound,
                    M::TaskList::remoteNotFound, &TaskListEntity::talId));
        }
        for (TaskEntity task : snapshot.tasks) {
            task.prjId = run.mapped(task.prjId);
            task.talId = run.mapped(task.talId);
            run.place<TaskEntity>(
                task.tasId, [&](const QUuid& id) { return m_target.tasks->find(id); },
                [&]() -> ResultEntity {
                    ResultEntity created = m_target.tasks->create(task);
                    const TaskEntity* made = created.dataAs<TaskEntity>();
                    if (!made)
                        return created;
                    // Done and the quadrant only change through their own operations on the
                    // backend; set them when the creation did not keep them.
                    if (made->tasIsDone != task.tasIsDone)
                        Run::check(m_target.tasks->setDone(made->tasId, task.tasIsDone));
                    if (made->tasEisenhowerTag != task.tasEisenhowerTag)
                        Run::check(m_target.tasks->setTag(made->tasId, task.tasEisenhowerTag));
                    return created;
                },
                M::Task::notFound, M::Task::remoteNotFound, &TaskEntity::tasId);
        }
        for (DailyTaskEntity daily : snapshot.dailyTasks) {
            daily.dtaUserId = m_userId;
            run.place<DailyTaskEntity>(
                daily.dtaId, [&](const QUuid& id) { return m_target.dailyTasks->find(id); },
                [&]() -> ResultEntity {
                    ResultEntity created = m_target.dailyTasks->create(daily);
                    const DailyTaskEntity* made = created.dataAs<DailyTaskEntity>();
                    if (made && made->dtaIsDone != daily.dtaIsDone)
                        Run::check(m_target.dailyTasks->setDone(made->dtaId, daily.dtaIsDone));
                    return created;
                },
                M::DailyTask::notFound, M::DailyTask::remoteNotFound, &DailyTaskEntity::dtaId);
        }
        for (BitacoraEntryEntity entry : snapshot.bitacora) {
            entry.bteUserId = m_userId;
            entry.prjId = run.mapped(entry.prjId);
            run.place<BitacoraEntryEntity>(
                entry.bteId, [&](const QUuid& id) { return m_target.bitacora->find(id); },
                [&] { return m_target.bitacora->create(entry); }, M::Bitacora::notFound, M::Bitacora::remoteNotFound,
                &BitacoraEntryEntity::bteId);
        }
    } catch (const Stop& stop) {
        return stop.result;
    }
    return ResultEntity::success(run.outcome);
}
