#pragma once

#include "tasks/entities/BitacoraEntryEntity.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

// The body of POST /v0/bitacora-entries. The author is whoever the bearer token names, so no
// user id travels.
struct CreateBitacoraEntryRequestDTO {
    QString prjId;
    QDateTime bteDate;
    QString bteContent;

    static CreateBitacoraEntryRequestDTO from(const BitacoraEntryEntity& entry);
    QJsonValue toJson() const;
};
