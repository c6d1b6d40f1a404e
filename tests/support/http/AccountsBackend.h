#pragma once

#include "support/http/FakeBackend.h"

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QUuid>

#include <memory>
#include <optional>

// The backend's users and support messages, installed on a FakeBackend and kept per user (the
// user of each request's bearer token):
//
// - POST /v0/users {usrFirstName, usrLastName, usrEmail} registers the caller: 201 with the user
//   record, whose usrId is the caller's id (upper-case UUID) and usrIsGoogleAccount true. A caller
//   already registered gets 200 with the record as it stands.
// - PUT /v0/users/{id} with the same body replaces the three fields: 200 with the record; 404 when
//   id is not the caller's or the caller never registered.
// - POST /v0/support {supMessage} stores the message: 201 {supId, supUserId, supType "support",
//   supDate, supMessage}.
// A body that is not an object with those keys as strings is 400 with a plain-text reason.
class AccountsBackend {
public:
    struct SupportMessage {
        QUuid userId;
        QString message;
    };

    explicit AccountsBackend(FakeBackend& backend);

    // The caller's record in the response form, if registered.
    std::optional<QJsonObject> user(const QUuid& userId) const;
    QList<SupportMessage> supportMessages() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};
