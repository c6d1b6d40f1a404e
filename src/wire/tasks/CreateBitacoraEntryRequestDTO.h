#pragma once

#include "wire/JSONWriter.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

#include <optional>

// The body of POST /v0/bitacora-entries. The author is whoever the bearer token names, so no
// user id travels.
struct CreateBitacoraEntryRequestDTO {
    QString prjId;
    QDateTime bteDate;
    QString bteContent;
    // The identifier the client chose (an undone delete brings the entry back under its old one);
    // empty: the backend chooses.
    std::optional<QString> bteId;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static CreateBitacoraEntryRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
