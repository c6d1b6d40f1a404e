#pragma once

#include "networking/APIClient.h"

#include <QString>
#include <QUrl>
#include <QUuid>

#include <memory>

class LocalIdentityProvider;

// The real backend for the app's remote code: tolvane-server put together as its main() does,
// in this process on a port of its own, over a throwaway PostgreSQL cluster, believing the ID
// tokens of a local identity provider on loopback. One per test executable is plenty; tests
// keep apart by using subjects (users) of their own.
class ServerBackend {
public:
    ServerBackend();
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

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
