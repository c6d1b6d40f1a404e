#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// The body of DELETE /v0/task-lists/{id}/completed-tasks. The backend wants the bulk deletion
// confirmed explicitly, so a stray request without it removes nothing.
struct DeleteCompletedTasksRequestDTO {
    bool confirm = true;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static DeleteCompletedTasksRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
