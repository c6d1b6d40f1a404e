#include "tasks/dto/CreateBitacoraEntryRequestDTO.h"

#include "networking/JSONCoding.h"

#include <QJsonObject>

CreateBitacoraEntryRequestDTO CreateBitacoraEntryRequestDTO::from(const BitacoraEntryEntity& entry)
{
    return {JSONCoding::encodeUUID(entry.prjId), entry.bteDate, entry.bteContent};
}

QJsonValue CreateBitacoraEntryRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("prjId"), prjId}, {QStringLiteral("bteDate"), JSONCoding::encodeDate(bteDate)},
        {QStringLiteral("bteContent"), bteContent}};
}
