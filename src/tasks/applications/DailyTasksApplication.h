#pragma once

#include "tasks/applications/TaskChangeRecorder.h"
#include "tasks/repositories/DailyTaskRepository.h"

#include <memory>

// The daily checklist use cases the screens call.
class DailyTasksApplication {
public:
    explicit DailyTasksApplication(std::shared_ptr<DailyTaskRepository> dailyTaskRepository);

    TaskResultEntity create(const DailyTaskEntity& dailyTask) const;
    TaskResultEntity rename(const DailyTaskEntity& dailyTask) const;
    TaskResultEntity toggle(const QUuid& dailyTaskId) const;
    TaskResultEntity setDone(const QUuid& dailyTaskId, bool isDone) const;
    TaskResultEntity delete_(const QUuid& dailyTaskId) const;
    TaskResultEntity find(const QUuid& dailyTaskId) const;
    TaskResultEntity list(const QDateTime& date) const;
    TaskResultEntity moveToDay(const DailyTaskEntity& dailyTask, const QDateTime& date) const;

    std::shared_ptr<DailyTaskRepository> dailyTaskRepository;
    // Hears each change completed here; none while a change is being undone.
    std::shared_ptr<TaskChangeRecorder> recorder;
};
