#include "screens/projects/TaskListsController.h"

#include "screens/common/ActionRunner.h"

TaskListsController::TaskListsController(TaskListsApplication application, ErrorConsoleStore& console, QObject* parent)
    : QObject(parent)
    , application(std::move(application))
    , m_console(console)
{
}

template <typename Work>
void TaskListsController::run(
    const QString& action, const QUuid& taskListId, Work&& work, std::function<void(bool)> finished)
{
    runAction(this, m_console, QStringLiteral("TaskListsController.") + action, std::forward<Work>(work),
        [this, taskListId, finished = std::move(finished)](const ResultEntity& result) {
            if (result.result)
                Q_EMIT saved(taskListId);
            else
                Q_EMIT failed(result.firstMessage().value_or(QString()));
            if (finished)
                finished(result.result);
        });
}

void TaskListsController::add(
    const ProjectEntity& project, const QString& name, bool isDefault, std::function<void(bool)> added)
{
    const TaskListEntity taskList {.prjId = project.prjId, .talName = name, .talIsDefault = isDefault};
    run(
        QStringLiteral("add"), taskList.talId, [app = application, taskList] { return app.create(taskList); },
        std::move(added));
}

void TaskListsController::rename(const TaskListEntity& taskList, const QString& name)
{
    TaskListEntity renamed = taskList;
    renamed.talName = name;
    run(QStringLiteral("update"), taskList.talId, [app = application, renamed] { return app.update(renamed); });
}

void TaskListsController::setDefault(const TaskListEntity& taskList)
{
    run(QStringLiteral("setDefault"), taskList.talId,
        [app = application, taskList] { return app.setDefault(taskList); });
}

void TaskListsController::delete_(const TaskListEntity& taskList)
{
    run(QStringLiteral("delete"), taskList.talId, [app = application, id = taskList.talId] { return app.delete_(id); });
}
