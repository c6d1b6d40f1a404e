#pragma once

#include "support/http/FakeBackend.h"

#include <QJsonObject>
#include <QList>
#include <QUuid>

#include <memory>

// The backend's events ("/v0/events"), installed on a FakeBackend and kept in memory per user.
// POST makes an event (201) with a fresh upper-case UUID as evtId; PUT /v0/events/{id} replaces it
// (200); DELETE removes it (204); GET lists the user's events in the order they were made. A body
// must be a JSON object with exactly evtTitle, evtSchedule (ISO 8601), evtDurationMinutes
// (integer), evtHasAlarm (bool), evtDescription, evtRepeat and evtCustomRepeat, else 400; an
// unknown identifier is 404. Stored events carry evtHasAlarm too, which the response leaves out.
class EventsBackend {
public:
    explicit EventsBackend(FakeBackend& backend);

    // Stores event for userId as given; returns its evtId (a fresh one when it has none).
    QString seed(QJsonObject event, const QUuid& userId = FakeBackend::defaultUserId());
    QList<QJsonObject> events(const QUuid& userId = FakeBackend::defaultUserId()) const;

    struct State;

private:
    std::shared_ptr<State> m_state;
};
