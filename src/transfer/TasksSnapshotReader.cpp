#include "transfer/TasksSnapshotReader.h"

#include "transfer/LocalTasksStores.h"

namespace {

struct Failed {
    ResultEntity result;
};

template <typename T> QList<T> listed(const ResultEntity& result)
{
    if (!result.result)
        throw Failed {result};
    return *result.dataAs<QList<T>>();
}

} // namespace

TasksSnapshotReader::TasksSnapshotReader(TasksRepositories repositories, bool repositoriesOnly)
    : m_repositories(std::move(repositories))
    , m_repositoriesOnly(repositoriesOnly)
{
}

ResultEntity TasksSnapshotReader::read(const Scope& scope, TransferControl& control) const
{
    if (const std::optional<LocalTasksStores> stores = LocalTasksStores::of(m_repositories);
        stores && !m_repositoriesOnly) {
        ResultEntity read = stores->read(scope.userId, scope.projectId, scope.firstDay, scope.lastDay);
        control.report(1, 1);
        return read;
    }
    TasksSnapshot snapshot;
    try {
        const QList<ProjectEntity> projects = listed<ProjectEntity>(m_repositories.projects->list(scope.userId));
        for (const ProjectEntity& project : projects) {
            if (!scope.projectId || *scope.projectId == project.prjId)
                snapshot.projects.append(project);
        }
        const bool withDays = !scope.projectId && scope.firstDay.isValid() && scope.lastDay >= scope.firstDay;
        const qint64 days = withDays ? scope.firstDay.daysTo(scope.lastDay) + 1 : 0;
        const qint64 total = snapshot.projects.size() + days;
        qint64 done = 0;
        for (const ProjectEntity& project : std::as_const(snapshot.projects)) {
            if (control.isCancelled())
                return ResultEntity::applicationFailure(cancelledMessage);
            const QList<TaskListEntity> lists = listed<TaskListEntity>(m_repositories.taskLists->list(project.prjId));
            snapshot.taskLists.append(lists);
            for (const TaskListEntity& list : lists)
                snapshot.tasks.append(listed<TaskEntity>(m_repositories.tasks->list(list.talId)));
            snapshot.bitacora.append(listed<BitacoraEntryEntity>(m_repositories.bitacora->list(project.prjId)));
            control.report(++done, total);
        }
        for (QDate day = scope.firstDay; withDays && day <= scope.lastDay; day = day.addDays(1)) {
            if (control.isCancelled())
                return ResultEntity::applicationFailure(cancelledMessage);
            snapshot.dailyTasks.append(
                listed<DailyTaskEntity>(m_repositories.dailyTasks->list(QDateTime(day, QTime(12, 0)))));
            control.report(++done, total);
        }
    } catch (const Failed& failed) {
        return failed.result;
    }
    return ResultEntity::success(snapshot);
}
