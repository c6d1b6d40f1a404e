#pragma once

#include <QJsonValue>

// The body of DELETE /v0/task-lists/{id}/completed-tasks. The backend wants the bulk deletion
// confirmed explicitly, so a stray request without it removes nothing.
struct DeleteCompletedTasksRequestDTO {
    bool confirm = true;

    QJsonValue toJson() const;
};
