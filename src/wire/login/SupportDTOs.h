#pragma once

#include "wire/JSONWriter.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

// The body of POST /v0/support. The client writes it, the server reads it strictly.
struct SupportRequestDTO {
    QString supMessage;

    static SupportRequestDTO fromJson(const QJsonValue& json);
    void writeJson(JSONWriter& out) const;
};

// The stored message as the backend answers it. The server writes it, the client reads it.
struct SupportResponseDTO {
    QString supId;
    QString supUserId;
    QString supType;
    QDateTime supDate;
    QString supMessage;

    static SupportResponseDTO fromJson(const QJsonValue& json);
    void writeJson(JSONWriter& out) const;
};
