#include "tasks/applications/DailyTasksApplication.h"

#include "tasks/domain/DailyTaskDomain.h"

namespace {

template <typename Work>
TaskResultEntity recordedDailyTasks(
    const DailyTasksApplication& app, TaskChangeVerbEnum verb, const QUuid& id, Work&& work)
{
    return TaskChanges::recorded<DailyTaskEntity>(
        app.recorder, verb, {id}, [&](const QUuid& found) { return app.dailyTaskRepository->find(found); },
        std::forward<Work>(work));
}

} // namespace

DailyTasksApplication::DailyTasksApplication(std::shared_ptr<DailyTaskRepository> dailyTaskRepository)
    : dailyTaskRepository(std::move(dailyTaskRepository))
{
}

TaskResultEntity DailyTasksApplication::create(const DailyTaskEntity& dailyTask) const
{
    if (TaskResultEntity valid = DailyTaskDomain::validateTitle(dailyTask); !valid.result)
        return valid;
    return recordedDailyTasks(
        *this, TaskChangeVerbEnum::add, dailyTask.dtaId, [&] { return dailyTaskRepository->create(dailyTask); });
}

TaskResultEntity DailyTasksApplication::rename(const DailyTaskEntity& dailyTask) const
{
    if (TaskResultEntity valid = DailyTaskDomain::validateTitle(dailyTask); !valid.result)
        return valid;
    return recordedDailyTasks(
        *this, TaskChangeVerbEnum::edit, dailyTask.dtaId, [&] { return dailyTaskRepository->update(dailyTask); });
}

TaskResultEntity DailyTasksApplication::toggle(const QUuid& dailyTaskId) const
{
    return recordedDailyTasks(
        *this, TaskChangeVerbEnum::edit, dailyTaskId, [&] { return dailyTaskRepository->toggle(dailyTaskId); });
}

TaskResultEntity DailyTasksApplication::setDone(const QUuid& dailyTaskId, bool isDone) const
{
    return recordedDailyTasks(*this, isDone ? TaskChangeVerbEnum::complete : TaskChangeVerbEnum::reopen, dailyTaskId,
        [&] { return dailyTaskRepository->setDone(dailyTaskId, isDone); });
}

TaskResultEntity DailyTasksApplication::delete_(const QUuid& dailyTaskId) const
{
    return recordedDailyTasks(
        *this, TaskChangeVerbEnum::delete_, dailyTaskId, [&] { return dailyTaskRepository->delete_(dailyTaskId); });
}

TaskResultEntity DailyTasksApplication::find(const QUuid& dailyTaskId) const
{
    return dailyTaskRepository->find(dailyTaskId);
}

TaskResultEntity DailyTasksApplication::list(const QDateTime& date) const
{
    return dailyTaskRepository->list(date);
}

TaskResultEntity DailyTasksApplication::moveToDay(const DailyTaskEntity& dailyTask, const QDateTime& date) const
{
    return recordedDailyTasks(*this, TaskChangeVerbEnum::move, dailyTask.dtaId,
        [&] { return dailyTaskRepository->moveToDay(dailyTask, date); });
}
