#pragma once

#include "wire/JSONWriter.h"

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

    // The client's reading: every key is required unless optional; throws DecodingError.
    static BitacoraEntryResponseDTO fromJson(const QJsonValue& json);
    // The server's writing.
    void writeJson(JSONWriter& out) const;
};
