#include "tasks/dto/UpdateBitacoraEntryRequestDTO.h"

#include <QJsonObject>

UpdateBitacoraEntryRequestDTO UpdateBitacoraEntryRequestDTO::from(const BitacoraEntryEntity& entry)
{
    return {entry.bteContent};
}

QJsonValue UpdateBitacoraEntryRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("bteContent"), bteContent}};
}
