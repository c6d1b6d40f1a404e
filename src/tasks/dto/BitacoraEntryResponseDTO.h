#pragma once

#include <QDateTime>
#include <QJsonValue>
#include <QString>

// A logbook entry as the backend returns it, with its author; identifiers stay text until the
// repository reads them.
struct BitacoraEntryResponseDTO {
    QString bteId;
    QString bteUserId;
    QString prjId;
    QDateTime bteDate;
    QString bteContent;

    // Every key is required; throws DecodingError.
    static BitacoraEntryResponseDTO fromJson(const QJsonValue& json);
};
