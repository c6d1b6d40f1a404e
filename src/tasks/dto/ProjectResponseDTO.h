#pragma once

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

    // Every key is required; throws DecodingError.
    static ProjectResponseDTO fromJson(const QJsonValue& json);
};
