#pragma once

#include <QMetaType>
#include <QUuid>

// The task an opened reminder asks to show, where it lives.
struct TaskNavigationPayload {
    QUuid projectId;
    QUuid taskListId;
    QUuid taskId;
};

Q_DECLARE_METATYPE(TaskNavigationPayload)
