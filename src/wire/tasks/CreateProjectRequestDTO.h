#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// The body of POST /v0/projects. It names no prjId: the backend assigns one.
struct CreateProjectRequestDTO {
    QString prjUserId;
    QString prjName;
    QString prjDescription;
    bool prjShowEveryDay = false;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static CreateProjectRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
