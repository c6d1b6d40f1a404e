#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

#include <optional>

// The body of POST /v0/task-lists; the backend assigns talId.
struct CreateTaskListRequestDTO {
    QString prjId;
    QString talName;
    QString talDescription;
    bool talIsDefault = false;
    // The identifier the client chose (an undone delete brings the list back under its old one);
    // empty: the backend chooses.
    std::optional<QString> talId;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static CreateTaskListRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
