#include "tasks/dto/UpdateTaskRequestDTO.h"

#include "networking/JSONCoding.h"

#include <QJsonObject>

UpdateTaskRequestDTO UpdateTaskRequestDTO::from(const TaskEntity& task)
{
    UpdateTaskRequestDTO dto {task.tasTitle, task.tasIsDone, task.tasDueDate, std::nullopt};
    if (task.tasEisenhowerTag)
        dto.tasEisenhowerTag = EisenhowerTag::apiValue(*task.tasEisenhowerTag);
    return dto;
}

QJsonValue UpdateTaskRequestDTO::toJson() const
{
    QJsonObject json {{QStringLiteral("tasTitle"), tasTitle}, {QStringLiteral("tasIsDone"), tasIsDone}};
    if (tasDueDate)
        json.insert(QStringLiteral("tasDueDate"), JSONCoding::encodeDate(*tasDueDate));
    if (tasEisenhowerTag)
        json.insert(QStringLiteral("tasEisenhowerTag"), *tasEisenhowerTag);
    return json;
}
