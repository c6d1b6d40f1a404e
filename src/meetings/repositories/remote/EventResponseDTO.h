#pragma once

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

    // Every key is required; throws DecodingError.
    static EventResponseDTO fromJson(const QJsonValue& json);
};
