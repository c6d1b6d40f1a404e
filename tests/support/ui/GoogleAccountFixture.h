#pragma once

#include "support/SettableClock.h"
#include "support/http/AccountsBackend.h"
#include "support/http/FakeBackend.h"
#include "support/http/TasksBackend.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/identity/ScriptedBrowser.h"
#include "support/ui/AppFixture.h"

#include <QMutex>

#include <memory>

class GIDSignIn;
class SecretServiceKeychain;

// The application for a Google account: a local identity provider, the fake backend with the
// accounts and task resources, a sign-in client over both, and services composed over them.
class GoogleAccountFixture {
public:
    GoogleAccountFixture();
    ~GoogleAccountFixture();

    AppFixture& app() { return *m_app; }
    FakeBackend& backend() { return *m_backend; }
    TasksBackend& tasks() { return *m_tasks; }
    AccountsBackend& accounts() { return *m_accounts; }
    LocalIdentityProvider& provider() { return *m_provider; }
    // The backend's id of the account signed in last.
    QUuid backendUser() const;

    // Signs in through the browser and registers the user, as the account chip does.
    LoginResultEntity signIn();

private:
    std::shared_ptr<SettableClock> m_clock;
    std::shared_ptr<SecretServiceKeychain> m_keychain;
    std::unique_ptr<LocalIdentityProvider> m_provider;
    std::unique_ptr<FakeBackend> m_backend;
    std::unique_ptr<AccountsBackend> m_accounts;
    std::unique_ptr<TasksBackend> m_tasks;
    std::shared_ptr<ScriptedBrowser> m_browser;
    std::unique_ptr<GIDSignIn> m_client;
    std::unique_ptr<AppFixture> m_app;
    mutable QMutex m_mutex;
    QUuid m_backendUser;
};
