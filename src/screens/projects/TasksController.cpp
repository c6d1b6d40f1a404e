#include "screens/projects/TasksController.h"

#include "quickadd/QuickAddParser.h"
#include "screens/common/ActionRunner.h"

TasksController::TasksController(TasksApplication application, ErrorConsoleStore& console, QObject* parent)
    : QObject(parent)
    , application(std::move(application))
    , m_console(console)
{
}

template <typename Work>
void TasksController::run(const QString& action, const QUuid& taskListId, const QUuid& taskId, Work&& work,
    std::function<void(bool)> finished)
{
    runAction(this, m_console, QStringLiteral("TasksController.") + action, std::forward<Work>(work),
        [this, taskListId, taskId, finished = std::move(finished)](const ResultEntity& result) {
            if (result.result)
                Q_EMIT saved(taskListId, taskId);
            else
                Q_EMIT failed(result.firstMessage().value_or(QString()));
            if (finished)
                finished(result.result);
        });
}

void TasksController::add(const TaskListEntity& taskList, const QString& title, std::function<void(bool)> added)
{
    TaskEntity task {.prjId = taskList.prjId, .talId = taskList.talId, .tasTitle = title};
    // "Pay rent tomorrow !1": the day, time, rule, quadrant and reminder come out of the line.
    QuickAddParser::parse(title).applyTo(task);
    run(
        QStringLiteral("add"), task.talId, task.tasId, [app = application, task] { return app.create(task); },
        std::move(added));
}

void TasksController::rename(const TaskEntity& task, const QString& title)
{
    TaskEntity renamed = task;
    renamed.tasTitle = title;
    run(QStringLiteral("rename"), task.talId, task.tasId, [app = application, renamed] { return app.rename(renamed); });
}

void TasksController::setDone(const TaskEntity& task, bool isDone)
{
    run(QStringLiteral("setDone"), task.talId, task.tasId,
        [app = application, id = task.tasId, isDone] { return isDone ? app.markDone(id) : app.markNotDone(id); });
}

void TasksController::setTag(const TaskEntity& task, std::optional<EisenhowerTagEnum> tag)
{
    run(QStringLiteral("setTag"), task.talId, task.tasId,
        [app = application, id = task.tasId, tag] { return app.setTag(id, tag); });
}

void TasksController::schedule(const TaskEntity& task)
{
    run(QStringLiteral("schedule"), task.talId, task.tasId, [app = application, task] { return app.schedule(task); });
}

void TasksController::skipOccurrence(const TaskEntity& task)
{
    run(QStringLiteral("skipOccurrence"), task.talId, task.tasId,
        [app = application, id = task.tasId] { return app.skipOccurrence(id); });
}

void TasksController::delete_(const TaskEntity& task)
{
    run(QStringLiteral("delete"), task.talId, task.tasId,
        [app = application, id = task.tasId] { return app.delete_(id); });
}

void TasksController::deleteCompleted(const QUuid& taskListId)
{
    run(QStringLiteral("deleteCompleted"), taskListId, QUuid(),
        [app = application, taskListId] { return app.deleteCompleted(taskListId); });
}
