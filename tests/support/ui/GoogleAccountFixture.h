#pragma once

#include "support/SettableClock.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/identity/ScriptedBrowser.h"
#include "support/server/ServerBackend.h"
#include "support/ui/AppFixture.h"

#include <QMutex>

#include <memory>

class GIDSignIn;
class SecretServiceKeychain;

// The application for a Google account: the real tolvane-server on a throwaway PostgreSQL, the
// local identity provider it believes, a sign-in client over both, and services composed over
// them.
class GoogleAccountFixture {
public:
    // userNotificationCenter: where alarms and reminders go; null for the program's shared one.
    explicit GoogleAccountFixture(std::shared_ptr<UserNotificationCenter> userNotificationCenter = nullptr);
    ~GoogleAccountFixture();

    AppFixture& app() { return *m_app; }
    ServerBackend& server() { return *m_server; }
    LocalIdentityProvider& provider() { return m_server->identityProvider(); }
    // The sign-in subject of the account signed in last, and the server's id for it.
    QString backendSubject() const;
    QUuid backendUser();

    // Signs in through the browser and registers the user, as the account chip does.
    LoginResultEntity signIn();

private:
    std::shared_ptr<SettableClock> m_clock;
    std::shared_ptr<SecretServiceKeychain> m_keychain;
    std::unique_ptr<ServerBackend> m_server;
    std::shared_ptr<ScriptedBrowser> m_browser;
    std::unique_ptr<GIDSignIn> m_client;
    std::unique_ptr<AppFixture> m_app;
    mutable QMutex m_mutex;
    QString m_subject;
};
