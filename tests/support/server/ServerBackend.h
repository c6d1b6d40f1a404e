#pragma once

#include "networking/APIClient.h"

#include <QString>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <memory>

class Clock;
class LocalIdentityProvider;

// The real backend for the app's remote code: tolvane-server put together as its main() does,
// in this process on a port of its own, over a throwaway PostgreSQL cluster, believing the ID
// tokens of a local identity provider on loopback. One per test executable is plenty; tests
// keep apart by using subjects (users) of their own.
class ServerBackend {
public:
    // The provider's tokens are for clientId and expire by clock, as the app under test sees them.
    explicit ServerBackend(
        const QString& clientId = QStringLiteral("tolvane-app-test"), std::shared_ptr<const Clock> clock = nullptr);
    ~ServerBackend();
    ServerBackend(const ServerBackend&) = delete;
    ServerBackend& operator=(const ServerBackend&) = delete;

    // Whether everything started; when not, error() says what did not.
    bool isRunning() const;
    QString error() const;

    // "http://127.0.0.1:<port>", what TOLVANE_BACKEND_BASE_URL would say.
    QUrl baseURL() const;
    LocalIdentityProvider& identityProvider();

    // An ID token of the provider for subject, as a sign-in would get it.
    QString token(const QString& subject);
    // The API client the app would build for subject, logging off.
    APIClient client(const QString& subject);
    // Registers subject as the app does after a sign-in and answers the user id the backend
    // gave it (the same on every call).
    QUuid registerUser(const QString& subject);
    // The support messages the server stored for user, oldest first; the API has no way to
    // read them back, so they come straight from the database.
    QStringList supportMessages(const QUuid& user);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
