#include "meetings/templates/AlarmMessageTemplateEntity.h"

#include <QJsonDocument>
#include <QJsonObject>

QByteArray AlarmMessageTemplateEntity::toJson() const
{
    return QJsonDocument(QJsonObject {{QStringLiteral("amtText"), amtText}}).toJson(QJsonDocument::Compact);
}

std::optional<AlarmMessageTemplateEntity> AlarmMessageTemplateEntity::fromJson(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonValue text = document.object().value(QStringLiteral("amtText"));
    if (!document.isObject() || !text.isString())
        return std::nullopt;
    return AlarmMessageTemplateEntity {text.toString()};
}
