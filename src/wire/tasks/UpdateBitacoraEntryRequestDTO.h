#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// The body of PUT /v0/bitacora-entries/{id}: only the text changes.
struct UpdateBitacoraEntryRequestDTO {
    QString bteContent;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static UpdateBitacoraEntryRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
