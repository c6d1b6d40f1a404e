#pragma once

#include "tasks/database/DailyTasksDatabase.h"
#include "tasks/repositories/DailyTaskRepository.h"

// The daily checklist in the store "Tasks.DailyTask", with a fresh handle per operation. A day
// is the local calendar day: an item belongs to the day its dtaDate falls on on this machine.
class LocalDailyTaskRepositoryImpl final : public DailyTaskRepository {
public:
    explicit LocalDailyTaskRepositoryImpl(DailyTasksDatabase database);

    TaskResultEntity create(const DailyTaskEntity& dailyTask) override;
    TaskResultEntity update(const DailyTaskEntity& dailyTask) override;
    TaskResultEntity toggle(const QUuid& dailyTaskId) override;
    TaskResultEntity delete_(const QUuid& dailyTaskId) override;
    TaskResultEntity find(const QUuid& dailyTaskId) override;
    TaskResultEntity list(const QDateTime& date) override;
    TaskResultEntity setDone(const QUuid& dailyTaskId, bool isDone) override;
    TaskResultEntity moveToDay(const DailyTaskEntity& dailyTask, const QDateTime& date) override;

    DailyTasksDatabase database;
};
