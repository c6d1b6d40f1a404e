#pragma once

#include "tasks/applications/TasksApplication.h"

#include <QObject>

#include <functional>

class ErrorConsoleStore;

// The workspace's task actions, run like ProjectsController's; saved carries the task's list
// and the task.
class TasksController final : public QObject {
    Q_OBJECT

public:
    TasksController(TasksApplication application, ErrorConsoleStore& console, QObject* parent = nullptr);

    // added hears whether the store took it, after saved or failed.
    void add(const TaskListEntity& taskList, const QString& title, std::function<void(bool)> added = {});
    void rename(const TaskEntity& task, const QString& title);
    void setDone(const TaskEntity& task, bool isDone);
    void setTag(const TaskEntity& task, std::optional<EisenhowerTagEnum> tag);
    // The due date, its time, the repetition and the reminder as task has them.
    void schedule(const TaskEntity& task);
    void skipOccurrence(const TaskEntity& task);
    void delete_(const TaskEntity& task);
    void deleteCompleted(const QUuid& taskListId);

    const TasksApplication application;

Q_SIGNALS:
    void saved(const QUuid& taskListId, const QUuid& taskId);
    void failed(const QString& message);

private:
    template <typename Work>
    void run(const QString& action, const QUuid& taskListId, const QUuid& taskId, Work&& work,
        std::function<void(bool)> finished = {});

    ErrorConsoleStore& m_console;
};
