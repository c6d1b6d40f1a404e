#include "rituals/RollOver.h"

namespace RollOver {

QDateTime dateOf(const QDate& day)
{
    return QDateTime(day, QTime(12, 0));
}

TaskResultEntity unfinishedBefore(const DailyTasksApplication& dailyTasks, const QDate& today)
{
    QList<DailyTaskEntity> unfinished;
    for (int back = lookbackDays; back >= 1; --back) {
        const QDate day = today.addDays(-back);
        const TaskResultEntity listed = dailyTasks.list(dateOf(day));
        if (!listed.result)
            return listed;
        for (const DailyTaskEntity& item : *listed.dataAs<QList<DailyTaskEntity>>()) {
            if (!item.dtaIsDone)
                unfinished.append(item);
        }
    }
    return TaskResultEntity::success(unfinished);
}

Outcome moveToToday(const DailyTasksApplication& dailyTasks, const QList<DailyTaskEntity>& items, const QDate& today)
{
    Outcome outcome;
    for (const DailyTaskEntity& item : items) {
        const TaskResultEntity moved = dailyTasks.moveToDay(item, dateOf(today));
        if (!moved.result) {
            outcome.failure = moved.firstMessage().value_or(QString());
            break;
        }
        ++outcome.moved;
    }
    return outcome;
}

QString movedNotice(int moved)
{
    if (moved == 1) {
        //% "1 daily task moved to today."
        return qtTrId("rituals-moved-one");
    }
    //% "%1 daily tasks moved to today."
    return qtTrId("rituals-moved-many").arg(moved);
}

} // namespace RollOver
