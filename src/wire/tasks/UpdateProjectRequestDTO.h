#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// The body of PUT /v0/projects/{id}: the project's editable fields; the owner never changes.
struct UpdateProjectRequestDTO {
    QString prjName;
    QString prjDescription;
    bool prjShowEveryDay = false;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static UpdateProjectRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
