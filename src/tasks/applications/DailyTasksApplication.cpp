#include "tasks/applications/DailyTasksApplication.h"

#include "tasks/domain/DailyTaskDomain.h"

DailyTasksApplication::DailyTasksApplication(std::shared_ptr<DailyTaskRepository> dailyTaskRepository)
    : dailyTaskRepository(std::move(dailyTaskRepository))
{
}

TaskResultEntity DailyTasksApplication::create(const DailyTaskEntity& dailyTask) const
{
    if (TaskResultEntity valid = DailyTaskDomain::validateTitle(dailyTask); !valid.result)
        return valid;
    return dailyTaskRepository->create(dailyTask);
}

TaskResultEntity DailyTasksApplication::rename(const DailyTaskEntity& dailyTask) const
{
    if (TaskResultEntity valid = DailyTaskDomain::validateTitle(dailyTask); !valid.result)
        return valid;
    return dailyTaskRepository->update(dailyTask);
}

TaskResultEntity DailyTasksApplication::toggle(const QUuid& dailyTaskId) const
{
    return dailyTaskRepository->toggle(dailyTaskId);
}

TaskResultEntity DailyTasksApplication::setDone(const QUuid& dailyTaskId, bool isDone) const
{
    return dailyTaskRepository->setDone(dailyTaskId, isDone);
}

TaskResultEntity DailyTasksApplication::delete_(const QUuid& dailyTaskId) const
{
    return dailyTaskRepository->delete_(dailyTaskId);
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
    return dailyTaskRepository->moveToDay(dailyTask, date);
}
