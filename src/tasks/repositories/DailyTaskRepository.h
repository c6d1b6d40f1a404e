#pragma once

#include "tasks/entities/DailyTaskEntity.h"
#include "tasks/entities/TaskResultEntity.h"

// Where the daily checklist is kept: the encrypted local store or the backend.
class DailyTaskRepository {
public:
    virtual ~DailyTaskRepository() = default;

    // data: the stored DailyTaskEntity.
    virtual TaskResultEntity create(const DailyTaskEntity& dailyTask) = 0;
    // Renames; data: the updated DailyTaskEntity.
    virtual TaskResultEntity update(const DailyTaskEntity& dailyTask) = 0;
    // Flips dtaIsDone; no payload (the backend's answer is not read).
    virtual TaskResultEntity toggle(const QUuid& dailyTaskId) = 0;
    // No payload.
    virtual TaskResultEntity delete_(const QUuid& dailyTaskId) = 0;
    // data: the DailyTaskEntity.
    virtual TaskResultEntity find(const QUuid& dailyTaskId) = 0;
    // data: QList<DailyTaskEntity>, the items of the day of date. Locally that is the local
    // calendar day; the backend is asked for the UTC calendar day of the instant.
    virtual TaskResultEntity list(const QDateTime& date) = 0;
    // Makes the item done or not done whatever it was, so that a check box clicked twice in a
    // row cannot end up flipped the wrong way; no payload. On the backend: find, then toggle
    // only when the flag differs.
    virtual TaskResultEntity setDone(const QUuid& dailyTaskId, bool isDone) = 0;
    // Puts the item on the day of date, keeping its title and done flag, after the items already
    // there. data: the moved DailyTaskEntity, whose identifier may be a new one.
    virtual TaskResultEntity moveToDay(const DailyTaskEntity& dailyTask, const QDateTime& date) = 0;
};
