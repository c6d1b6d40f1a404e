#pragma once

#include "networking/APIClient.h"
#include "tasks/repositories/DailyTaskRepository.h"

// The daily checklist on the backend, under "/v0/daily-tasks" (its JSON speaks of `tas` keys).
// The backend files items by UTC day, so a day is asked for as the UTC calendar day of the
// instant given, which near midnight away from UTC is the neighbouring local day.
class RemoteDailyTaskRepositoryImpl final : public DailyTaskRepository {
public:
    explicit RemoteDailyTaskRepositoryImpl(APIClient client);

    TaskResultEntity create(const DailyTaskEntity& dailyTask) override;
    TaskResultEntity update(const DailyTaskEntity& dailyTask) override;
    TaskResultEntity toggle(const QUuid& dailyTaskId) override;
    TaskResultEntity delete_(const QUuid& dailyTaskId) override;
    TaskResultEntity find(const QUuid& dailyTaskId) override;
    TaskResultEntity list(const QDateTime& date) override;
    TaskResultEntity setDone(const QUuid& dailyTaskId, bool isDone) override;
    TaskResultEntity moveToDay(const DailyTaskEntity& dailyTask, const QDateTime& date) override;

    const APIClient client;
};
