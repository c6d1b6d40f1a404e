#include "transfer/AccountMove.h"

#include "transfer/TasksImporter.h"
#include "transfer/TasksSnapshotReader.h"

#include <QHash>
#include <QLocale>

#include <algorithm>

namespace {

// One of the three steps (read, copy, check back) as a share of the whole move's progress, with
// the whole move's cancel passed on to it.
class StepControl {
public:
    StepControl(TransferControl& whole, int step)
        : m_control([this, &whole, step](qint64 done, qint64 total) {
            if (whole.isCancelled())
                m_control.cancel();
            if (total > 0)
                whole.report(step * stepSize + done * stepSize / total, steps * stepSize);
        })
    {
        if (whole.isCancelled())
            m_control.cancel();
    }

    TransferControl& control() { return m_control; }

private:
    static constexpr qint64 steps = 3;
    static constexpr qint64 stepSize = 1000;
    TransferControl m_control;
};

template <typename Entity, typename Id, typename Same, typename Describe>
void compare(const QList<Entity>& expected, const QList<Entity>& found, Id id, Same same, Describe describe,
    QStringList& differences)
{
    QHash<QUuid, const Entity*> byId;
    for (const Entity& entity : found)
        byId.insert(id(entity), &entity);
    for (const Entity& entity : expected) {
        const Entity* other = byId.value(id(entity));
        if (!other || !same(entity, *other))
            differences.append(describe(entity));
    }
}

} // namespace

AccountMove::AccountMove(Side source, Side target, QDate firstDay, QDate lastDay)
    : m_source(std::move(source))
    , m_target(std::move(target))
    , m_firstDay(firstDay)
    , m_lastDay(lastDay)
{
}

ResultEntity AccountMove::run(TransferControl& control) const
{
    const auto stopped = [&control](const ResultEntity& result) {
        return control.isCancelled() ? ResultEntity::applicationFailure(cancelledMessage) : result;
    };
    StepControl reading(control, 0);
    const ResultEntity read = TasksSnapshotReader(m_source.repositories)
                                  .read({m_source.userId, std::nullopt, m_firstDay, m_lastDay}, reading.control());
    if (!read.result)
        return stopped(read);
    const TasksSnapshot source = *read.dataAs<TasksSnapshot>();

    StepControl copying(control, 1);
    const ResultEntity imported
        = TasksImporter(m_target.repositories, m_target.userId).import(source, copying.control());
    if (!imported.result)
        return stopped(imported);
    const auto counts = *imported.dataAs<TasksImporter::Outcome>();

    // Read back only the days that hold something, so that a backend is asked as little as needed.
    QDate firstDaily, lastDaily;
    for (const DailyTaskEntity& daily : source.dailyTasks) {
        const QDate day = daily.dtaDate.toLocalTime().date();
        firstDaily = firstDaily.isValid() ? std::min(firstDaily, day) : day;
        lastDaily = lastDaily.isValid() ? std::max(lastDaily, day) : day;
    }
    StepControl checking(control, 2);
    const ResultEntity readBack = TasksSnapshotReader(m_target.repositories)
                                      .read({m_target.userId, std::nullopt, firstDaily, lastDaily}, checking.control());
    if (!readBack.result)
        return stopped(readBack);
    const QStringList differing = differences(source, *readBack.dataAs<TasksSnapshot>());
    if (!differing.isEmpty()) {
        // clang-format off
        //% "Records did not arrive as they were sent (%1 of them, among them “%2”). Nothing was deleted; try again."
        // clang-format on
        return ResultEntity::applicationFailure(
            qtTrId("account-move-differs").arg(differing.size()).arg(differing.constFirst()));
    }
    control.report(1, 1);
    return ResultEntity::success(Outcome {counts.created, counts.skipped, source.itemCount()});
}

QStringList AccountMove::differences(const TasksSnapshot& expected, const TasksSnapshot& found)
{
    QStringList out;
    compare(
        expected.projects, found.projects, [](const ProjectEntity& p) { return p.prjId; },
        [](ProjectEntity a, const ProjectEntity& b) {
            a.prjUserId = b.prjUserId;
            return a == b;
        },
        [](const ProjectEntity& p) { return p.prjName; }, out);
    compare(
        expected.taskLists, found.taskLists, [](const TaskListEntity& l) { return l.talId; },
        [](const TaskListEntity& a, const TaskListEntity& b) { return a == b; },
        [](const TaskListEntity& l) { return l.talName; }, out);
    compare(
        expected.tasks, found.tasks, [](const TaskEntity& t) { return t.tasId; },
        [](const TaskEntity& a, const TaskEntity& b) { return a == b; }, [](const TaskEntity& t) { return t.tasTitle; },
        out);
    // A day is a day wherever it is kept: one side may store its noon, the other its midnight.
    compare(
        expected.dailyTasks, found.dailyTasks, [](const DailyTaskEntity& d) { return d.dtaId; },
        [](DailyTaskEntity a, const DailyTaskEntity& b) {
            a.dtaUserId = b.dtaUserId;
            const bool sameDay = a.dtaDate.toLocalTime().date() == b.dtaDate.toLocalTime().date();
            a.dtaDate = b.dtaDate;
            return sameDay && a == b;
        },
        [](const DailyTaskEntity& d) { return d.dtaTitle; }, out);
    compare(
        expected.bitacora, found.bitacora, [](const BitacoraEntryEntity& e) { return e.bteId; },
        [](BitacoraEntryEntity a, const BitacoraEntryEntity& b) {
            a.bteUserId = b.bteUserId;
            const bool sameDay = a.bteDate.toLocalTime().date() == b.bteDate.toLocalTime().date();
            a.bteDate = b.bteDate;
            return sameDay && a == b;
        },
        [](const BitacoraEntryEntity& e) {
            return QLocale().toString(e.bteDate.toLocalTime().date(), QLocale::ShortFormat);
        },
        out);
    return out;
}
