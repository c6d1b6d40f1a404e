#pragma once

#include "tasks/entities/BitacoraEntryEntity.h"

#include <QJsonValue>
#include <QString>

// The body of PUT /v0/bitacora-entries/{id}: only the text changes.
struct UpdateBitacoraEntryRequestDTO {
    QString bteContent;

    static UpdateBitacoraEntryRequestDTO from(const BitacoraEntryEntity& entry);
    QJsonValue toJson() const;
};
