#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// A project as the backend returns it. Identifiers stay text here; the repository decides what
// an unreadable one means.
struct ProjectResponseDTO {
    QString prjId;
    QString prjUserId;
    QString prjName;
    QString prjDescription;
    bool prjShowEveryDay = false;

    // The client's reading: every key is required unless optional; throws DecodingError.
    static ProjectResponseDTO fromJson(const QJsonValue& json);
    // The server's writing.
    void writeJson(JSONWriter& out) const;
};
