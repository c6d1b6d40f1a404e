#pragma once

#include <QDateTime>
#include <QJsonValue>
#include <QString>

struct SupportRequestDTO {
    QString supMessage;
    QJsonValue toJson() const;
};

struct SupportResponseDTO {
    QString supId;
    QString supUserId;
    QString supType;
    QDateTime supDate;
    QString supMessage;
    static SupportResponseDTO fromJson(const QJsonValue& json);
};
