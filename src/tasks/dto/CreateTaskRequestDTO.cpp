#include "tasks/dto/CreateTaskRequestDTO.h"

#include "networking/JSONCoding.h"

#include <QJsonObject>

CreateTaskRequestDTO CreateTaskRequestDTO::from(const TaskEntity& task)
{
    CreateTaskRequestDTO dto {JSONCoding::encodeUUID(task.prjId), JSONCoding::encodeUUID(task.talId), task.tasTitle,
        task.tasDueDate, std::nullopt};
    if (task.tasEisenhowerTag)
        dto.tasEisenhowerTag = EisenhowerTag::apiValue(*task.tasEisenhowerTag);
    return dto;
}

QJsonValue CreateTaskRequestDTO::toJson() const
{
    QJsonObject json {
        {QStringLiteral("prjId"), prjId}, {QStringLiteral("talId"), talId}, {QStringLiteral("tasTitle"), tasTitle}};
    if (tasDueDate)
        json.insert(QStringLiteral("tasDueDate"), JSONCoding::encodeDate(*tasDueDate));
    if (tasEisenhowerTag)
        json.insert(QStringLiteral("tasEisenhowerTag"), *tasEisenhowerTag);
    return json;
}
