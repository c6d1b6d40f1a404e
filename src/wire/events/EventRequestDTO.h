#pragma once

#include "wire/JSONWriter.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

#include <optional>

// The body of a new event (POST /v0/events) and of the new state of one (PUT /v0/events/{id});
// every key is always sent.
struct EventRequestDTO {
    QString evtTitle;
    QDateTime evtSchedule;
    qint64 evtDurationMinutes = 0;
    bool evtHasAlarm = false;
    QString evtDescription;
    QString evtRepeat;
    QString evtCustomRepeat;
    // On a new event only: the identifier the client chose (an undone delete brings the event back
    // under its old one); empty: the backend chooses.
    std::optional<QString> evtId;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static EventRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
