#pragma once

#include "tasks/applications/TaskListsApplication.h"

#include <QObject>

#include <functional>

class ErrorConsoleStore;

// The workspace's task list actions, run like ProjectsController's; saved carries the list.
class TaskListsController final : public QObject {
    Q_OBJECT

public:
    TaskListsController(TaskListsApplication application, ErrorConsoleStore& console, QObject* parent = nullptr);

    // added hears whether the store took it, after saved or failed.
    void add(const ProjectEntity& project, const QString& name, bool isDefault, std::function<void(bool)> added = {});
    void rename(const TaskListEntity& taskList, const QString& name);
    void setDefault(const TaskListEntity& taskList);
    void delete_(const TaskListEntity& taskList);

    const TaskListsApplication application;

Q_SIGNALS:
    void saved(const QUuid& taskListId);
    void failed(const QString& message);

private:
    template <typename Work>
    void run(const QString& action, const QUuid& taskListId, Work&& work, std::function<void(bool)> finished = {});

    ErrorConsoleStore& m_console;
};
