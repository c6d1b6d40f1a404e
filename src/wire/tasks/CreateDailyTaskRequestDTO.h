#pragma once

#include "wire/JSONWriter.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

#include <optional>

// The body of POST /v0/daily-tasks. On the wire daily tasks use the `tas` prefix.
struct CreateDailyTaskRequestDTO {
    QString tasUserId;
    QDateTime tasDate;
    QString tasTitle;
    // The identifier the client chose (an undone delete brings the item back under its old one);
    // empty: the backend chooses.
    std::optional<QString> tasId;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static CreateDailyTaskRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
