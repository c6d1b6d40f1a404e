#pragma once

#include "wire/JSONWriter.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

// An event as the backend returns it.
struct EventResponseDTO {
    QString evtId;
    QString evtTitle;
    QDateTime evtSchedule;
    qint64 evtDurationMinutes = 0;
    QString evtDescription;
    QString evtRepeat;
    QString evtCustomRepeat;

    // The client's reading: every key is required unless optional; throws DecodingError.
    static EventResponseDTO fromJson(const QJsonValue& json);
    // The server's writing.
    void writeJson(JSONWriter& out) const;

    friend bool operator==(const EventResponseDTO&, const EventResponseDTO&) = default;
};
