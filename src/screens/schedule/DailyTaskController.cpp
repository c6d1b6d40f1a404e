#include "screens/schedule/DailyTaskController.h"

#include "screens/common/ActionRunner.h"

DailyTaskController::DailyTaskController(DailyTasksApplication application, ErrorConsoleStore& console, QObject* parent)
    : QObject(parent)
    , application(std::move(application))
    , m_console(console)
{
}

QDateTime DailyTaskController::dateOf(const QDate& day)
{
    return QDateTime(day, QTime(12, 0));
}

template <typename Work> void DailyTaskController::run(const QString& action, Work&& work)
{
    runAction(this, m_console, QStringLiteral("DailyTaskController.") + action, std::forward<Work>(work),
        [this](const ResultEntity& result) {
            if (result.result)
                Q_EMIT saved();
            else
                Q_EMIT failed(result.firstMessage().value_or(QString()));
        });
}

void DailyTaskController::add(const QUuid& userId, const QDate& day, const QString& title)
{
    const DailyTaskEntity task {.dtaUserId = userId, .dtaDate = dateOf(day), .dtaTitle = title};
    run(QStringLiteral("add"), [app = application, task] { return app.create(task); });
}

void DailyTaskController::rename(const DailyTaskEntity& task, const QString& title)
{
    DailyTaskEntity renamed = task;
    renamed.dtaTitle = title;
    run(QStringLiteral("rename"), [app = application, renamed] { return app.rename(renamed); });
}

void DailyTaskController::setDone(const DailyTaskEntity& task, bool isDone)
{
    run(QStringLiteral("setDone"), [app = application, id = task.dtaId, isDone] { return app.setDone(id, isDone); });
}

void DailyTaskController::delete_(const DailyTaskEntity& task)
{
    run(QStringLiteral("delete"), [app = application, id = task.dtaId] { return app.delete_(id); });
}
