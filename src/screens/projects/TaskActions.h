#pragma once

#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskListEntity.h"

#include <QObject>

class TaskRowView;

// Where every task row of the workspace sends what the user asked for; the workspace answers
// each through its controllers.
class TaskActions final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Routes a row's requests here.
    void attach(TaskRowView* row);

Q_SIGNALS:
    void toggleDone(const TaskEntity& task, bool isDone);
    void rename(const TaskEntity& task, const QString& title);
    void deleteRequested(const TaskEntity& task);
    void setTag(const TaskEntity& task, std::optional<EisenhowerTagEnum> tag);
    void addTask(const TaskListEntity& taskList, const QString& title);
    void schedule(const TaskEntity& task);
    void skipOccurrence(const TaskEntity& task);
};
