#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

#include <optional>

// The body of POST /v0/projects. It names no prjId: the backend assigns one.
struct CreateProjectRequestDTO {
    QString prjUserId;
    QString prjName;
    QString prjDescription;
    bool prjShowEveryDay = false;
    // The identifier the client chose (an undone delete brings the project back under its old one);
    // empty: the backend chooses.
    std::optional<QString> prjId;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static CreateProjectRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
