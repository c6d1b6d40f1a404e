#include "undo/TasksRestore.h"

#include "transfer/LocalTasksStores.h"

#include <QHash>

namespace {

using Applications = TasksApplicationFactory::Applications;

template <typename Entity> QHash<QUuid, Entity> byId(const QList<Entity>& entities)
{
    QHash<QUuid, Entity> indexed;
    for (const Entity& entity : entities)
        indexed.insert(TaskChanges::EntityTraits<Entity>::id(entity), entity);
    return indexed;
}

// Whether every entity of expected and target is where expected says it is.
template <typename Entity, typename Find>
bool stillAsExpected(const QList<Entity>& expected, const QList<Entity>& target, Find&& find)
{
    using Traits = TaskChanges::EntityTraits<Entity>;
    const QHash<QUuid, Entity> expectedById = byId(expected);
    QList<QUuid> ids = expectedById.keys();
    for (const Entity& entity : target) {
        if (!expectedById.contains(Traits::id(entity)))
            ids.append(Traits::id(entity));
    }
    for (const QUuid& id : ids) {
        const TaskResultEntity found = find(id);
        const Entity* current = found.result ? found.dataAs<Entity>() : nullptr;
        const auto wanted = expectedById.constFind(id);
        if (wanted == expectedById.constEnd() ? current != nullptr : (!current || !(*current == *wanted)))
            return false;
    }
    return true;
}

// The tasks of the lists that expected and target name, by id: one read per list rather than one
// per task (a list brought back with its tasks checks them all at once).
QHash<QUuid, TaskEntity> currentTasks(
    const Applications& apps, const QList<TaskEntity>& expected, const QList<TaskEntity>& target)
{
    QList<QUuid> listIds;
    for (const QList<TaskEntity>* side : {&expected, &target}) {
        for (const TaskEntity& task : *side) {
            if (!listIds.contains(task.talId))
                listIds.append(task.talId);
        }
    }
    QHash<QUuid, TaskEntity> current;
    for (const QUuid& listId : listIds) {
        const TaskResultEntity listed = apps.tasks.list(listId);
        if (const auto* tasks = listed.result ? listed.dataAs<QList<TaskEntity>>() : nullptr) {
            for (const TaskEntity& task : *tasks)
                current.insert(task.tasId, task);
        }
    }
    return current;
}

TasksRestore::Outcome failed(const TaskResultEntity& result)
{
    return {TasksRestore::OutcomeEnum::failed, result.firstMessage().value_or(QString())};
}

// The entities of target that expected lacks, that expected has and target lacks, and those
// that differ (as target has them).
template <typename Entity> struct Difference {
    QList<Entity> created;
    QList<Entity> deleted;
    QList<Entity> rewritten;
};

template <typename Entity> Difference<Entity> difference(const QList<Entity>& expected, const QList<Entity>& target)
{
    using Traits = TaskChanges::EntityTraits<Entity>;
    const QHash<QUuid, Entity> expectedById = byId(expected);
    const QHash<QUuid, Entity> targetById = byId(target);
    Difference<Entity> result;
    for (const Entity& entity : target) {
        const auto before = expectedById.constFind(Traits::id(entity));
        if (before == expectedById.constEnd())
            result.created.append(entity);
        else if (!(*before == entity))
            result.rewritten.append(entity);
    }
    for (const Entity& entity : expected) {
        if (!targetById.contains(Traits::id(entity)))
            result.deleted.append(entity);
    }
    return result;
}

// A task written whole, then its done state and tag through their own writes, which some
// stores do not take from a new task. The done state goes back as it was, with its completion
// time: completing the task again would stamp it now and start a repeating one over.
TaskResultEntity settleTask(const Applications& apps, const TaskEntity& task)
{
    const TaskResultEntity found = apps.tasks.find(task.tasId);
    const TaskEntity* current = found.result ? found.dataAs<TaskEntity>() : nullptr;
    if (!current)
        return found;
    if (current->tasIsDone != task.tasIsDone || current->tasCompletedAt != task.tasCompletedAt) {
        TaskEntity settled = *current;
        settled.tasIsDone = task.tasIsDone;
        settled.tasCompletedAt = task.tasCompletedAt;
        if (const TaskResultEntity done = apps.tasks.taskRepository->update(settled); !done.result)
            return done;
    }
    if (current->tasEisenhowerTag != task.tasEisenhowerTag) {
        if (TaskResultEntity tagged = apps.tasks.setTag(task.tasId, task.tasEisenhowerTag); !tagged.result)
            return tagged;
    }
    return TaskResultEntity::success();
}

TaskResultEntity settleDailyTask(const Applications& apps, const DailyTaskEntity& dailyTask)
{
    const TaskResultEntity found = apps.dailyTasks.find(dailyTask.dtaId);
    const DailyTaskEntity* current = found.result ? found.dataAs<DailyTaskEntity>() : nullptr;
    if (!current)
        return found;
    if (current->dtaDate != dailyTask.dtaDate) {
        if (TaskResultEntity moved = apps.dailyTasks.moveToDay(*current, dailyTask.dtaDate); !moved.result)
            return moved;
    }
    if (current->dtaTitle != dailyTask.dtaTitle) {
        if (TaskResultEntity renamed = apps.dailyTasks.rename(dailyTask); !renamed.result)
            return renamed;
    }
    if (current->dtaIsDone != dailyTask.dtaIsDone)
        return apps.dailyTasks.setDone(dailyTask.dtaId, dailyTask.dtaIsDone);
    return TaskResultEntity::success();
}

// Writes back the entities that exist on both sides but differ.
TasksRestore::Outcome rewrite(const Applications& apps, const QList<ProjectEntity>& projects,
    const QList<TaskListEntity>& taskLists, const QList<TaskEntity>& tasks, const QList<DailyTaskEntity>& dailyTasks,
    const QList<BitacoraEntryEntity>& entries)
{
    for (const ProjectEntity& project : projects) {
        if (TaskResultEntity done = apps.projects.update(project); !done.result)
            return failed(done);
    }
    for (const TaskListEntity& taskList : taskLists) {
        if (TaskResultEntity done = apps.taskLists.update(taskList); !done.result)
            return failed(done);
    }
    for (const TaskEntity& task : tasks) {
        TaskResultEntity done = apps.tasks.rename(task);
        if (done.result)
            done = settleTask(apps, task);
        if (!done.result)
            return failed(done);
    }
    for (const DailyTaskEntity& dailyTask : dailyTasks) {
        if (TaskResultEntity done = settleDailyTask(apps, dailyTask); !done.result)
            return failed(done);
    }
    for (const BitacoraEntryEntity& entry : entries) {
        if (TaskResultEntity done = apps.bitacora.update(entry, entry.bteUserId); !done.result)
            return failed(done);
    }
    return {};
}

} // namespace

TasksRestore::Outcome TasksRestore::apply(
    const Applications& apps, const TasksState& expected, const TasksState& target)
{
    const bool unchanged = stillAsExpected(expected.projects, target.projects,
                               [&](const QUuid& id) { return apps.projects.projectRepository->find(id); })
        && stillAsExpected(
            expected.taskLists, target.taskLists, [&](const QUuid& id) { return apps.taskLists.find(id); })
        && stillAsExpected(expected.tasks, target.tasks,
            [&, current = currentTasks(apps, expected.tasks, target.tasks)](const QUuid& id) {
                const auto task = current.constFind(id);
                return task == current.constEnd() ? TaskResultEntity::applicationFailure(QString())
                                                  : TaskResultEntity::success(*task);
            })
        && stillAsExpected(
            expected.dailyTasks, target.dailyTasks, [&](const QUuid& id) { return apps.dailyTasks.find(id); })
        && stillAsExpected(
            expected.bitacoraEntries, target.bitacoraEntries, [&](const QUuid& id) { return apps.bitacora.find(id); });
    if (!unchanged)
        return {OutcomeEnum::changedElsewhere, {}};

    const auto projects = difference(expected.projects, target.projects);
    const auto taskLists = difference(expected.taskLists, target.taskLists);
    const auto tasks = difference(expected.tasks, target.tasks);
    const auto dailyTasks = difference(expected.dailyTasks, target.dailyTasks);
    const auto entries = difference(expected.bitacoraEntries, target.bitacoraEntries);

    // Children go first, so that a list or a project is empty when its turn comes.
    for (const BitacoraEntryEntity& entry : entries.deleted) {
        if (TaskResultEntity done = apps.bitacora.delete_(entry.bteId, entry.bteUserId); !done.result)
            return failed(done);
    }
    for (const DailyTaskEntity& dailyTask : dailyTasks.deleted) {
        if (TaskResultEntity done = apps.dailyTasks.delete_(dailyTask.dtaId); !done.result)
            return failed(done);
    }
    for (const TaskEntity& task : tasks.deleted) {
        if (TaskResultEntity done = apps.tasks.delete_(task.tasId); !done.result)
            return failed(done);
    }
    for (const TaskListEntity& taskList : taskLists.deleted) {
        if (TaskResultEntity done = apps.taskLists.delete_(taskList.talId); !done.result)
            return failed(done);
    }
    for (const ProjectEntity& project : projects.deleted) {
        if (TaskResultEntity done = apps.projects.delete_(project.prjId, project.prjUserId); !done.result)
            return failed(done);
    }

    // Parents go first on the way back. Locally, what comes back whole (a list with its tasks)
    // is written in one transaction per store: the records were valid when they were taken away.
    const TasksRepositories repositories {apps.projects.projectRepository, apps.taskLists.taskListRepository,
        apps.tasks.taskRepository, apps.dailyTasks.dailyTaskRepository, apps.bitacora.bitacoraRepository};
    if (const std::optional<LocalTasksStores> stores = LocalTasksStores::of(repositories)) {
        const TasksSnapshot created {
            projects.created, taskLists.created, tasks.created, dailyTasks.created, entries.created};
        if (created.itemCount() > 0) {
            TransferControl control;
            const ResultEntity written = stores->write(created, control, QString());
            if (!written.result)
                return failed(written);
            if (written.dataAs<LocalTasksStores::Written>()->skipped > 0)
                return {OutcomeEnum::changedElsewhere, {}};
        }
        return rewrite(
            apps, projects.rewritten, taskLists.rewritten, tasks.rewritten, dailyTasks.rewritten, entries.rewritten);
    }
    for (const ProjectEntity& project : projects.created) {
        if (TaskResultEntity done = apps.projects.create(project); !done.result)
            return failed(done);
    }
    for (const TaskListEntity& taskList : taskLists.created) {
        if (TaskResultEntity done = apps.taskLists.create(taskList); !done.result)
            return failed(done);
    }
    for (const TaskEntity& task : tasks.created) {
        TaskResultEntity done = apps.tasks.create(task);
        if (done.result)
            done = settleTask(apps, task);
        if (!done.result)
            return failed(done);
    }
    for (const DailyTaskEntity& dailyTask : dailyTasks.created) {
        TaskResultEntity done = apps.dailyTasks.create(dailyTask);
        if (done.result)
            done = settleDailyTask(apps, dailyTask);
        if (!done.result)
            return failed(done);
    }
    for (const BitacoraEntryEntity& entry : entries.created) {
        if (TaskResultEntity done = apps.bitacora.create(entry); !done.result)
            return failed(done);
    }
    return rewrite(
        apps, projects.rewritten, taskLists.rewritten, tasks.rewritten, dailyTasks.rewritten, entries.rewritten);
}
